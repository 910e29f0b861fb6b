#pragma once

#include "XOV_Graphics/base/Export.h"

#include <span>

namespace xov {

class SampleIndex;
class SampleSource;

/// Smallest and largest value of a series.
struct XOV_EXPORT Extrema {
  float min = 0; ///< the smallest
  float max = 0; ///< the largest
};

/// The extremes of the finite values; both 0 when there is none. One pass over the data, a second one only when it
/// holds an infinity.
XOV_EXPORT Extrema finiteExtrema(std::span<const float> values);

/// The same, from the index where there is one that covers the values: what it knows is not read. A source holds what
/// is read.
XOV_EXPORT Extrema finiteExtrema(std::span<const float> values, const SampleIndex* index,
                                 SampleSource* source = nullptr);

} // namespace xov
