#pragma once

namespace xov {

/// Rows of sub-columns that hold nothing: far above any ink and far below it.
inline constexpr float kNothingLow = 1e30F;
inline constexpr float kNothingHigh = -1e30F;

/// A few columns of the picture, cut into sub-columns. Ink is found at the middle of each sub-column, exactly along
/// the rows. Sub-column j lies between left + j / perColumn and left + (j + 1) / perColumn.
struct TraceStrip {
  int left = 0;
  int columns = 0;
  int perColumn = 1;
  int rows = 0;
  double radius = 0;     ///< half the line width, in pixels
  double curveShift = 0; ///< sub-columns that the curve's own sub-columns lie further left, see RoundPen

  /// Columns first <= column < last, counted from the left one, that may have ink: work is done there alone.
  int firstUsed = 0;
  int lastUsed = 0;

  int subColumns() const { return columns * perColumn; }
  double subWidth() const { return 1.0 / perColumn; }
  /// The left border of a sub-column of the curve, in device pixels.
  double curveBorder(int j) const { return left + (j - curveShift) / perColumn; }
};

} // namespace xov
