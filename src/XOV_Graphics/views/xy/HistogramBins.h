#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace xov {

/// Equal bins over a range of values, all in single precision.
struct HistogramBins {
  std::int32_t count = 0;
  float min = 0;
  float max = 0;
  float width = 0;

  /// (max − min) / (count + 1), one divisor more than there are bins.
  static float widthFor(std::int32_t count, float min, float max);
  /// The whole bins of a width that the range holds, held inside the range of the result; 0 where there is no number.
  static std::int32_t countFor(float width, float min, float max);

  /// The bin of a value: the first for values below the range, the last for values above it, else (value − min) /
  /// width truncated. Since the width divides the range by one more than the count, this points one or two bins past
  /// the end for the highest values: they go to the last. NaN has no bin. `count` must be positive.
  std::optional<std::int32_t> indexOf(float value) const;
  /// How many of the values fall into each bin, `count` numbers in all; a loop over indexOf(), but in the time of a
  /// few passes over the values. `count` must be positive.
  void countInto(std::span<const float> values, std::span<std::int32_t> counts) const;
  /// The lower edge of a bin.
  float leftEdge(std::int32_t bin) const { return min + float(bin) * width; }

private:
  bool isRegular() const;
};

/// The extremes of values; from +infinity down and −infinity up, so that these remain for no values at all.
struct ValueExtremes {
  float min;
  float max;
};
ValueExtremes valueExtremes(std::span<const float> values);

} // namespace xov
