#pragma once

#include "XOV_Graphics/seismic/array/BeamPower.h"

namespace xov {

/// The piece of each trace that a beam is made of.
struct BeamWindow {
  std::size_t samples = 0;
  std::vector<std::size_t> first; ///< for each trace, its first sample in the window
  std::vector<double> lateBy;     ///< for each trace, by how many seconds that sample is later than the window begins
};

/// The window of a search. Refuses fewer than two traces, and windows that not all traces fill.
Result<BeamWindow> beamWindow(std::span<const ArrayTrace> traces, const BeamSearch& search);

/// The samples of trace `n` in the window without their mean, with tapered ends. Refuses samples that are no numbers.
Result<std::vector<float>> windowedSamples(const ArrayTrace& trace, const BeamWindow& window, std::size_t n);

} // namespace xov
