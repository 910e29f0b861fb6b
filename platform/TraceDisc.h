#pragma once

#include <vector>

namespace xov {

/// Rows of sub-columns that hold nothing: far above any ink and far below it.
inline constexpr float kNothingLow = 1e30F;
inline constexpr float kNothingHigh = -1e30F;

/// A round pen on a grid of sub-columns: turns the extremes that a curve takes in every sub-column into the ink of a
/// disc that follows it.
///
/// The pen is as many whole sub-columns wide as comes closest to its width. When that is an even number, the ink is
/// found at the borders between the curve's sub-columns, else at their middles: either way the pen is symmetric, and
/// a steep line gets its true width.
class TraceDisc {
public:
  /// What a curve is like inside a sub-column: smooth, so that its extremes lie on the borders, or made of tips that
  /// lie anywhere.
  enum class Curve { Smooth, Tips };

  TraceDisc(double radius, int perColumn, Curve curve);

  /// How many sub-columns to either side the disc reaches.
  int reach() const { return static_cast<int>(heights_.size()); }
  /// How far left of the sub-columns of ink those of the curve must lie, in sub-columns: 0 or 1/2.
  double curveShift() const { return even_ ? 0.5 : 0.0; }

  /// Finds the ink of `count` sub-columns: the largest of curveHigh[j + k] plus the pen's half height at distance k,
  /// the smallest of curveLow[j + k] less it. The curve arrays must be readable reach() further on
  /// both sides, and kSlack beyond that on the right.
  void widen(const float* curveLow, const float* curveHigh, int count, float* low, float* high) const;

  static constexpr int kSlack = 16;

private:
  bool even_ = false;
  float middleHeight_ = 0;     // at the middle of an odd pen
  std::vector<float> heights_; // of the pairs of sub-columns left and right of the middle, outwards
};

} // namespace xov
