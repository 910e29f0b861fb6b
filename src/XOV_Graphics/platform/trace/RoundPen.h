#pragma once

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <cstddef>
#include <vector>

namespace xov {

/// A round pen on a grid of sub-columns: turns the extremes that a curve takes in every sub-column into the ink of a
/// disc that follows it.
///
/// The pen is as many whole sub-columns wide as comes closest to its width. When that is an even number, the ink is
/// found at the borders between the curve's sub-columns, else at their middles: either way the pen is symmetric, and
/// a steep line gets its true width.
class RoundPen {
public:
  /// What a curve is like inside a sub-column: smooth, so that its extremes lie on the borders, or made of tips that
  /// lie anywhere.
  enum class Curve { Smooth, Tips };

  RoundPen(double radius, int perColumn, Curve curve);

  /// How many sub-columns to either side the disc reaches.
  int reach() const { return reach_; }
  /// How far left of the sub-columns of ink those of the curve must lie, in sub-columns: 0 or 1/2.
  double curveShift() const { return even_ ? 0.5 : 0.0; }

  /// Finds the ink of `count` sub-columns: the largest of curveHigh[j + k] plus the pen's half height at distance k,
  /// the smallest of curveLow[j + k] less it. The curve arrays must be readable reach() further on
  /// both sides, and kSlack beyond that on the right.
  void widen(const float* curveLow, const float* curveHigh, int count, float* low, float* high);

  static constexpr int kSlack = kWidestVector;

  /// Neighbouring sub-columns where the pen is nearly as high: their extremes are found once for all sub-columns.
  struct Run {
    int nearest = 0; ///< the one nearest to the middle, counted outwards
    int level = 0;   ///< 2^level sub-columns
    float height = 0;
  };
  /// Where a run's extremes lie for sub-column 0: left of the middle, and so much further right of it.
  struct Term {
    const float* low = nullptr;
    const float* high = nullptr;
    std::ptrdiff_t right = 0;
    float height = 0;
  };

private:
  void setRuns(const std::vector<float>& heights, int perColumn, Curve curve);

  bool even_ = false;
  int reach_ = 0;
  int levels_ = 0;         // of the longest run
  float middleHeight_ = 0; // at the middle of an odd pen
  std::vector<Run> runs_;  // of the pairs of sub-columns left and right of the middle, outwards
  std::vector<Term> terms_;
  std::vector<float> extremes_; // of 2, 4, ... neighbours
};

} // namespace xov
