#include "XOV_Graphics/platform/trace/TraceFineness.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace xov {

namespace {

constexpr int kStep = 8;  // sub-columns are a multiple of this
constexpr int kMost = 96; // of them for pens up to kMostRadius pixels
constexpr double kMostRadius = 1;
constexpr double kLimit = 1.05; // levels of 255
constexpr double kLevels = 255;
constexpr double kThinPen = 0.5;    // pixels
constexpr std::size_t kFew = 4;     // lines
constexpr double kDense = 128;      // samples a pixel
constexpr double kSegments = 1;     // samples a pixel, below which rows between samples are known exactly
constexpr double kCrowd = 1.5;      // layers of ink, between which little paper shows
constexpr double kEdgeError = 0.25; // of a sub-column, on average
/// How far edges are off, counted in jumps. Where one crosses several rows in a sub-column, it is off by as much as a
/// jump of that height. Below that errors of neighbouring rows cancel, the more the less the slant: what remains goes
/// with its square.
struct Edges {
  float slant; // of a row squared
  float steep; // of a row, where the square would be more
};
// Extremes that a pen widens are also off by what the curve does within a sub-column.
constexpr Edges kOfCurves = {0.6F, 1.2F};
constexpr Edges kOfExact = {0.3F, 1};
constexpr float kBend = 0.25F; // of a row by which a slant changes, where that is more

int roundedDown(double subColumns) { return std::max(static_cast<int>(subColumns) / kStep * kStep, kStep); }

int finestOf(double radius) { return roundedDown(kMost * std::min(kMostRadius / radius, 1.0)); }

// Sub-columns that are summed side by side at every width of vectors.
constexpr int kGroup = kLanes<Float8>;
template <class Vector>
constexpr int kParts = kGroup / kLanes<Vector>;

template <class Vector>
XOV_INLINE void loadRows(const float* rows, float bottom, Vector& value) {
  loadVector(rows, value);
  keepGreater(value, Vector{});
  keepSmaller(value, Vector{} + bottom);
}

/// Adds how far an edge is off, in rows: that of a slope through three rows of neighbouring sub-columns, or of a
/// jump, whichever is more.
template <class Vector>
XOV_INLINE void addJump(const Vector& before, const Vector& here, const Vector& next, const Edges& edges,
                        Vector& jump) {
  const Vector slope = next - here, bend = slope - (here - before);
  Vector steep = slope, bent = bend;
  keepGreater(steep, -slope);
  keepGreater(bent, -bend);
  Vector slant = steep * steep * edges.slant;
  keepSmaller(slant, steep * edges.steep);
  bent *= kBend;
  keepGreater(bent, slant);
  jump += bent;
}

template <class Vector>
XOV_INLINE void sumJumpsWith(const float* low, const float* high, int count, float bottom, const Edges& edges,
                             float& jumps, float& size) {
  Vector allJumps[kParts<Vector>] = {}, allSizes[kParts<Vector>] = {};
  for (int first = 1; first + kGroup < count; first += kGroup) {
    for (int part = 0; part < kParts<Vector>; ++part) {
      const int j = first + part * kLanes<Vector>;
      Vector lowBefore, lowHere, lowNext, highBefore, highHere, highNext;
      loadRows(low + j - 1, bottom, lowBefore);
      loadRows(low + j, bottom, lowHere);
      loadRows(low + j + 1, bottom, lowNext);
      loadRows(high + j - 1, bottom, highBefore);
      loadRows(high + j, bottom, highHere);
      loadRows(high + j + 1, bottom, highNext);
      Vector jump = {};
      addJump(lowBefore, lowHere, lowNext, edges, jump);
      addJump(highBefore, highHere, highNext, edges, jump);
      const Vector none = {}, extent = highHere - lowHere; // where a line begins or ends, all of it is an edge
      jump = XOV_CHOOSE(highBefore > lowBefore, jump, extent);
      jump = XOV_CHOOSE(highNext > lowNext, jump, extent);
      allJumps[part] += XOV_CHOOSE(extent > none, jump, none);
      allSizes[part] += XOV_CHOOSE(extent > none, extent + 1.0F, none);
    }
  }
  jumps += sumOfLanes(allJumps);
  size += sumOfLanes(allSizes);
}
XOV_VECTOR8_FUNCTION(void, sumJumps,
                     (const float* low, const float* high, int count, float bottom, const Edges& edges, float& jumps,
                      float& size),
                     (low, high, count, bottom, edges, jumps, size))

/// The rows of ink, about: one group in four is looked at.
template <class Vector>
XOV_INLINE float sumInkedWith(const float* low, const float* high, int count, float bottom) {
  constexpr int kEvery = 4;
  Vector all[kParts<Vector>] = {};
  int looks = 0;
  for (int first = 0; first + kGroup <= count; first += kEvery * kGroup, ++looks) {
    for (int part = 0; part < kParts<Vector>; ++part) {
      Vector from, to;
      loadRows(low + first + part * kLanes<Vector>, bottom, from);
      loadRows(high + first + part * kLanes<Vector>, bottom, to);
      to -= from;
      keepGreater(to, Vector{});
      all[part] += to;
    }
  }
  float inked = sumOfLanes(all);
  if (looks > 0) return inked * float(count) / float(looks * kGroup);
  for (int j = 0; j < count; ++j)
    inked += std::max(std::min(high[j], bottom) - std::max(low[j], 0.0F), 0.0F);
  return inked;
}
XOV_VECTOR8_FUNCTION(float, sumInked, (const float* low, const float* high, int count, float bottom),
                     (low, high, count, bottom))

} // namespace

void InkRoughness::include(const float* low, const float* high, int count, int rows, Judged judged) {
  inked_ += double(sumInked(low, high, count, float(rows)));
  if (judged == Judged::Not) return;
  isExact_ = isExact_ && judged == Judged::Exact;
  float jumps = 0, size = 0;
  sumJumps(low, high, count, float(rows), judged == Judged::Exact ? kOfExact : kOfCurves, jumps, size);
  jumps_ += double(jumps);
  size_ += double(size);
}

bool InkRoughness::isCrowded(double place) const { return inked_ > kCrowd * place; }

double InkRoughness::expectedError(double place) const {
  if (!(size_ > 0) || !(place > 0)) return 0;
  const double error = kLevels * kEdgeError * jumps_ / size_;
  // Other ink that lies anywhere leaves exp(-layers) of the place free: so many of the edges show, on the rest of it.
  const double layers = std::max(inked_ / place - 1, 0.0);
  return layers > 0 ? error * layers / std::expm1(layers) : error;
}

TraceFineness::TraceFineness(double radius)
    : coarsest_(kStep),
      coarsestInCrowd_(kStep),
      finest_(finestOf(radius)),
      subColumns_(kStep) {}

TraceFineness::TraceFineness(double radius, std::size_t lines, double samplesPerPixel) : finest_(finestOf(radius)) {
  struct Start {
    std::size_t lines;      // up to this many
    double samplesPerPixel; // with fewer than these
    int subColumns;         // with pens up to the radius
    double radius;
  };
  constexpr auto kAnyLines = std::numeric_limits<std::size_t>::max();
  constexpr double kAnySamples = std::numeric_limits<double>::infinity();
  // Few lines leave room for more than many do. Segments longer than a pixel are judged well by what they look like.
  // Where a pixel holds few samples, much of its ink lies beside a steep
  // edge; where it holds dozens, little does, and less so for a wide pen.
  constexpr Start kStarts[] = {
      {kFew, kDense, 64, 2}, {kAnyLines, kSegments, 8, 1},     {kAnyLines, 12, 40, 1},
      {16, kDense, 32, 1},   {kAnyLines, kDense, 24, 2.0 / 3}, {kAnyLines, kAnySamples, 16, 1}};
  const Start& start = *std::find_if(std::begin(kStarts), std::end(kStarts), [=](const Start& s) {
    return lines <= s.lines && samplesPerPixel < s.samplesPerPixel;
  });
  subColumns_ = std::min(roundedDown(start.subColumns * std::min(start.radius / radius, 1.0)), finest_);
  coarsest_ = subColumns_;
  const double inCrowd = (samplesPerPixel < kDense ? 2 : 1) * kStep * std::min(kThinPen / radius, 1.0);
  coarsestInCrowd_ = lines <= kFew ? coarsest_ : std::min(coarsest_, roundedDown(inCrowd));
}

bool TraceFineness::refine(const InkRoughness& ink, double place) {
  const double excess = ink.expectedError(place) / kLimit;
  const double wished = subColumns_ * (ink.isExact() && excess < 1 ? std::sqrt(excess) : excess);
  const int coarsest = ink.isCrowded(place) ? coarsestInCrowd_ : coarsest_;
  const int needed = std::clamp(roundedDown(std::min(wished, double(kMost)) + kStep - 1), coarsest, finest_);
  const bool isCoarse = needed > subColumns_;
  subColumns_ = needed;
  return isCoarse;
}

} // namespace xov
