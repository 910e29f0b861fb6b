#include "XOV_Graphics/platform/trace/RoundPen.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace xov {

namespace {

// A smooth curve has its extremes in a sub-column on the border that is further away. The disc that touches a slant
// there mostly stands within the sub-column: its tangent so many sub-columns before the border, carried on to there,
// is how high the slant's ink lies above the border.
constexpr double kTouch = 0.36;
constexpr double kSteepestTouch = 0.995; // of the pen's reach: the tangent of a slope of ten
// How much further away from a sub-column's middle than the middle of its neighbour the neighbour's tips are taken to
// lie, in sub-columns. They lie anywhere, so that the distance of the middles is right on average; a little more
// makes up for the disc being round.
constexpr double kTipDistance = 0.1;

// By how much the pen's half height may change within a run, in pixels. Tips show little of the outer part of a pen:
// there it is enough that a run lies near the outline on its two ends together. A slant's extreme within a run lies
// at its far end, so that a smooth curve's run is nearly as high as the pen is there.
constexpr float kLevelRun = 0.025F;
constexpr float kSmoothLevelRun = 0.0125F;
constexpr float kSmoothRun = 0.25F; // of the way from the height at the far end to that at the near one
constexpr float kNearRun = 0.036F;
constexpr float kOuterHeight = 0.8F; // of the radius, and below
constexpr int kMostLevels = 4;
// Sub-columns that are widened together, so that all of their extremes stay in the fastest cache.
constexpr int kChunk = 256;

/// Half the height of a disc at a distance from its middle.
double discHeight(double radius, double distance) {
  return std::sqrt(std::max(radius * radius - distance * distance, 0.0));
}

/// That of its tangent at a distance, which touches it a little nearer to the middle.
double tangentHeight(double radius, double distance) {
  const double touch = std::min(distance - kTouch, kSteepestTouch * radius);
  const double height = discHeight(radius, touch);
  return std::max(height - (distance - touch) * touch / height, 0.0);
}

/// Room for the extremes of a chunk and those that its ends reach.
int rowSize(int reach) { return kChunk + 2 * reach + 2 * kWidestVector; }

struct Pen {
  std::span<const RoundPen::Run> runs;
  int reach;
  int levels;
  bool even;
  float middleHeight;
};

/// Room for the terms of a chunk and for two rows of extremes a level.
struct Scratch {
  RoundPen::Term* terms;
  float* extremes;
};

/// Extremes of 2^level neighbours, the first of which is sub-column j, for every level up to the pen's longest run.
/// Level 0 is the curve itself.
struct Extremes {
  const float* low[kMostLevels + 1];
  const float* high[kMostLevels + 1];
};

template <class Vector>
XOV_INLINE void doubleExtremes(const float* low, const float* high, int step, int count, float* lowTo,
                               float* highTo) {
  for (int j = 0; j < count; j += kLanes<Vector>) {
    Vector lowest, highest, next;
    loadVector(low + j, lowest);
    loadVector(low + j + step, next);
    keepSmaller(lowest, next);
    storeVector(lowest, lowTo + j);
    loadVector(high + j, highest);
    loadVector(high + j + step, next);
    keepGreater(highest, next);
    storeVector(highest, highTo + j);
  }
}

/// The ink of some vectors of sub-columns, of which j is the first.
template <class Vector, int kVectors>
XOV_INLINE void widenVectors(const Pen& pen, const RoundPen::Term* terms, const float* curveLow,
                             const float* curveHigh, int j, float* low, float* high) {
  constexpr int kWidth = kLanes<Vector>;
  Vector lowest[kVectors], highest[kVectors], next, other;
  for (int v = 0; v < kVectors; ++v) {
    lowest[v] = Vector{} + kNothingLow;
    highest[v] = Vector{} + kNothingHigh;
    if (pen.even) continue;
    loadVector(curveLow + j + v * kWidth, lowest[v]);
    loadVector(curveHigh + j + v * kWidth, highest[v]);
    lowest[v] -= pen.middleHeight;
    highest[v] += pen.middleHeight;
  }
  for (const RoundPen::Term* term = terms; term != terms + pen.runs.size(); ++term) {
    const float* const termLow = term->low + j;
    const float* const termHigh = term->high + j;
    for (int v = 0; v < kVectors; ++v) {
      loadVector(termLow + v * kWidth, next);
      loadVector(termLow + v * kWidth + term->right, other);
      keepSmaller(next, other);
      next -= term->height;
      keepSmaller(lowest[v], next);
      loadVector(termHigh + v * kWidth, next);
      loadVector(termHigh + v * kWidth + term->right, other);
      keepGreater(next, other);
      next += term->height;
      keepGreater(highest[v], next);
    }
  }
  for (int v = 0; v < kVectors; ++v) {
    storeVector(lowest[v], low + j + v * kWidth);
    storeVector(highest[v], high + j + v * kWidth);
  }
}

/// Widens sub-columns 0 <= j < count, at most kChunk of them.
template <class Vector>
XOV_INLINE void widenChunk(const Pen& pen, const float* curveLow, const float* curveHigh, int count, float* low,
                           float* high, const Scratch& scratch) {
  constexpr int kWidth = kLanes<Vector>;
  RoundPen::Term* const terms = scratch.terms;
  const int inner = pen.even ? 0 : 1;
  const int before = pen.reach - 1 + inner;
  const int row = rowSize(pen.reach);
  Extremes curve{{curveLow}, {curveHigh}};
  for (int level = 1; level <= pen.levels; ++level) {
    const int step = 1 << (level - 1);
    // What the longer runs leave to be found right of the last sub-column becomes less from level to level.
    const int found = before + count + pen.reach + 1 - 2 * step;
    float* const lowTo = scratch.extremes + 2 * (level - 1) * row;
    float* const highTo = lowTo + row;
    doubleExtremes<Vector>(curve.low[level - 1] - before, curve.high[level - 1] - before, step, found, lowTo, highTo);
    curve.low[level] = lowTo + before;
    curve.high[level] = highTo + before;
  }
  for (std::size_t r = 0; r < pen.runs.size(); ++r) {
    const RoundPen::Run& run = pen.runs[r];
    const int left = -inner - run.nearest - (1 << run.level) + 1;
    terms[r] = {curve.low[run.level] + left, curve.high[run.level] + left, run.nearest + 1 - left, run.height};
  }
  int j = 0;
  for (; j + 2 * kWidth <= count; j += 2 * kWidth)
    widenVectors<Vector, 2>(pen, terms, curveLow, curveHigh, j, low, high);
  for (; j + kWidth <= count; j += kWidth)
    widenVectors<Vector, 1>(pen, terms, curveLow, curveHigh, j, low, high);
  if (j == count) return;
  // Some of them once more.
  if (count >= kWidth) return widenVectors<Vector, 1>(pen, terms, curveLow, curveHigh, count - kWidth, low, high);
  float rest[2][kWidth]; // the curves are readable beyond the count, the ink is not writable
  widenVectors<Vector, 1>(pen, terms, curveLow, curveHigh, 0, rest[0], rest[1]);
  std::copy_n(rest[0], count, low);
  std::copy_n(rest[1], count, high);
}

template <class Vector>
XOV_INLINE void widenCurveWith(const Pen& pen, const float* curveLow, const float* curveHigh, int count, float* low,
                               float* high, const Scratch& scratch) {
  for (int j = 0; j < count; j += kChunk) {
    widenChunk<Vector>(pen, curveLow + j, curveHigh + j, std::min(kChunk, count - j), low + j, high + j, scratch);
  }
}

XOV_VECTOR_FUNCTION(void, widenCurve,
                    (const Pen& pen, const float* curveLow, const float* curveHigh, int count, float* low,
                     float* high, const Scratch& scratch),
                    (pen, curveLow, curveHigh, count, low, high, scratch))

} // namespace

RoundPen::RoundPen(double radius, int perColumn, Curve curve) {
  const double reach = radius * perColumn;
  const int width = std::max(1, static_cast<int>(std::lround(2 * reach)));
  even_ = width % 2 == 0;
  middleHeight_ = static_cast<float>(radius);
  reach_ = width / 2;
  std::vector<float> heights(static_cast<std::size_t>(reach_));
  for (std::size_t k = 0; k < heights.size(); ++k) {
    const double distance = double(k) + (even_ ? 0.5 : 1.0);
    const double height =
        curve == Curve::Smooth ? tangentHeight(reach, distance + 0.5) : discHeight(reach, distance + kTipDistance);
    heights[k] = static_cast<float>(height / perColumn);
  }
  setRuns(heights, perColumn, curve);
}

/// Takes the longest runs that are level enough, at a height between those of their ends. The middle stands alone,
/// since its height is the width of a level line.
void RoundPen::setRuns(const std::vector<float>& heights, int perColumn, Curve curve) {
  for (int k = 0; k < reach_;) {
    int level = 0;
    const auto last = [&](int l) { return static_cast<std::size_t>(k + (1 << l) - 1); };
    const auto first = static_cast<std::size_t>(k);
    const auto isLevel = [&](int l) {
      if (last(l) >= heights.size()) return false;
      const float drop = heights[first] - heights[last(l)], width = float((1 << l) - 1) / float(perColumn);
      if (drop <= (curve == Curve::Smooth ? kSmoothLevelRun : kLevelRun)) return true;
      const bool isOuter = curve == Curve::Tips && heights[first] <= kOuterHeight * middleHeight_;
      return isOuter && drop * width <= kNearRun * std::hypot(drop, width);
    };
    while (k > 0 && level < kMostLevels && isLevel(level + 1))
      ++level;
    const float farther = heights[last(level)], nearness = curve == Curve::Smooth ? kSmoothRun : 0.5F;
    runs_.push_back({k, level, farther + nearness * (heights[first] - farther)});
    levels_ = std::max(levels_, level);
    k += 1 << level;
  }
  terms_.resize(runs_.size());
  extremes_.resize(static_cast<std::size_t>(2 * levels_ * rowSize(reach_)));
}

void RoundPen::widen(const float* curveLow, const float* curveHigh, int count, float* low, float* high) {
  const Pen pen{runs_, reach_, levels_, even_, middleHeight_};
  widenCurve(pen, curveLow, curveHigh, count, low, high, {terms_.data(), extremes_.data()});
}

} // namespace xov
