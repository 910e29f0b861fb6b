#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/signal/StaLta.h"

#include <memory>

namespace xov {

// Each makes a new record out of one that stays as it is. Samples that are not finite separate the others into
// stretches, which are treated each by itself, and stay.

/// The integral over time: integrate(). Acceleration becomes velocity, velocity displacement (SacHeader::idep); of
/// anything else the quantity is unknown. Take mean and trend away first. Refuses a record without an interval.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> integrated(const SeismogramRecord& record) noexcept;

/// The derivative with respect to time: differentiate(). Displacement becomes velocity, velocity acceleration.
/// Refuses a record without an interval.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> differentiated(const SeismogramRecord& record) noexcept;

/// The envelope, in the units of the record: applyEnvelope().
XOV_EXPORT std::shared_ptr<SacSeismogram> envelopeOf(const SeismogramRecord& record);

/// The characteristic function STA/LTA with averages over these times, to whole samples: applyStaLta(). Refuses
/// averages that do not last a sample, a short one that is not shorter than the long one, a record that is shorter
/// than the long one, and one without an interval.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> staLtaOf(const SeismogramRecord& record, double shortSeconds,
                                                           double longSeconds,
                                                           StaLtaKind kind = StaLtaKind::Classic) noexcept;

} // namespace xov
