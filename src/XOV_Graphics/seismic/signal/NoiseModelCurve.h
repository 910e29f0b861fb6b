#pragma once

#include "XOV_Graphics/seismic/signal/NoiseModels.h"

#include <vector>

namespace xov {

/// A noise model as a line between two frequencies, whichever is the higher one, as far as it knows them; without
/// points where they are not above 0.
struct NoiseModelCurve {
  NoiseModelCurve(NoiseModel model, double fromHz, double toHz);

  std::vector<float> hz; ///< rising, equally far apart on a logarithmic axis
  std::vector<float> decibels;
};

} // namespace xov
