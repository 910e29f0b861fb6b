#pragma once

namespace xov {

/// From a sample's value to the row it lies on, in single precision, with the origin moved to the picture so that
/// nothing that shows is lost to rounding:
///     row = ((v held inside [low, high]) - valueOrigin - middle) · scale + offset
struct RowMap {
  float low = 0;
  float high = 0;
  float valueOrigin = 0;
  float middle = 0;
  float scale = 0;
  float offset = 0;

  float operator()(float value) const;
};

/// Rows further away than this are the same as infinitely far; it keeps slopes and differences finite.
inline constexpr float kFarRow = 1e15F;

/// The rows of consecutive samples. Returns false when a sample is not finite; its row is then meaningless.
bool findRows(const float* samples, int count, const RowMap& toRow, float* rows);

/// Turns the extremes of values, low[k] to high[k], into those of rows. A block with low > high stays empty.
void orderRows(const RowMap& toRow, float* low, float* high, int count);

} // namespace xov
