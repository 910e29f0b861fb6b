#pragma once

#include "XOV_Graphics/base/Export.h"

#include <span>

namespace xov {

/// The envelope √(x² + H²) of each finite stretch, with its Hilbert transform H from the Fourier transform. Zeros are
/// behind the stretch up to the next length without large prime factors, and the transform takes all of that as one
/// period: the ends want to be tapered, and the mean taken away before.
XOV_EXPORT void applyEnvelope(std::span<double> values);

} // namespace xov
