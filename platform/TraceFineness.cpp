#include "platform/TraceFineness.h"

#include "platform/TraceVector.h"

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
constexpr double kEdgeError = 0.25; // of a sub-column, on average
// A curve's rows are exact along a slant, so that errors there mostly cancel, but for about this part.
constexpr float kOfSlant = 0.2F;

int roundedDown(double subColumns) { return std::max(static_cast<int>(subColumns) / kStep * kStep, kStep); }

template <class Vector>
XOV_INLINE void loadRows(const float* rows, float bottom, Vector& value) {
  loadVector(rows, value);
  keepGreater(value, Vector{});
  keepSmaller(value, Vector{} + bottom);
}

/// Adds how far three rows of neighbouring sub-columns are from one slope, and part of the slope.
template <class Vector>
XOV_INLINE void addJump(const Vector& before, const Vector& here, const Vector& next, Vector& jump) {
  const Vector slope = next - here, bend = slope - (here - before);
  Vector steep = slope, bent = bend;
  keepGreater(steep, -slope);
  keepGreater(bent, -bend);
  jump += bent * 0.5F + steep * kOfSlant; // a jump bends twice
}

template <class Vector>
XOV_INLINE void sumJumpsWith(const float* low, const float* high, int count, float bottom, float& jumps,
                             float& size) {
  Vector allJumps = {}, allSizes = {};
  for (int j = 1; j + kLanes<Vector> < count; j += kLanes<Vector>) {
    Vector lowBefore, lowHere, lowNext, highBefore, highHere, highNext;
    loadRows(low + j - 1, bottom, lowBefore);
    loadRows(low + j, bottom, lowHere);
    loadRows(low + j + 1, bottom, lowNext);
    loadRows(high + j - 1, bottom, highBefore);
    loadRows(high + j, bottom, highHere);
    loadRows(high + j + 1, bottom, highNext);
    Vector jump = {};
    addJump(lowBefore, lowHere, lowNext, jump);
    addJump(highBefore, highHere, highNext, jump);
    // A line that begins or ends has no jump there, and above or below the page there is none at all.
    jump = highBefore > lowBefore ? jump : Vector{};
    jump = highNext > lowNext ? jump : Vector{};
    allJumps += highHere > lowHere ? jump : Vector{};
    allSizes += highHere > lowHere ? highHere - lowHere + 1.0F : Vector{};
  }
  for (int lane = 0; lane < kLanes<Vector>; ++lane) {
    jumps += allJumps[lane];
    size += allSizes[lane];
  }
}

XOV_VECTOR8_FUNCTION(void, sumJumps,
                     (const float* low, const float* high, int count, float bottom, float& jumps, float& size),
                     (low, high, count, bottom, jumps, size))

} // namespace

void InkRoughness::include(const float* low, const float* high, int count, int rows) {
  float jumps = 0, size = 0;
  sumJumps(low, high, count, float(rows), jumps, size);
  jumps_ += double(jumps);
  size_ += double(size);
}

double InkRoughness::expectedError() const { return size_ > 0 ? kLevels * kEdgeError * jumps_ / size_ : 0; }

TraceFineness::TraceFineness(double radius, std::size_t lines, double samplesPerPixel) {
  struct Start {
    std::size_t lines;      // up to this many
    double samplesPerPixel; // with fewer than these
    int subColumns;         // with pens up to the radius
    double radius;
  };
  constexpr auto kAnyLines = std::numeric_limits<std::size_t>::max();
  constexpr double kAnySamples = std::numeric_limits<double>::infinity();
  // Few lines leave room for more than many do. Where a pixel holds few samples, much of its ink lies beside a steep
  // edge; where it holds dozens, little does, and less so for a wide pen.
  constexpr Start kStarts[] = {{4, 128, 64, 2},
                               {kAnyLines, 12, 40, 1},
                               {16, 128, 32, 1},
                               {kAnyLines, 128, 24, 2.0 / 3},
                               {kAnyLines, kAnySamples, 16, 1}};
  const Start& start = *std::find_if(std::begin(kStarts), std::end(kStarts), [=](const Start& s) {
    return lines <= s.lines && samplesPerPixel < s.samplesPerPixel;
  });
  finest_ = roundedDown(kMost * std::min(kMostRadius / radius, 1.0));
  coarsest_ = std::min(roundedDown(start.subColumns * std::min(start.radius / radius, 1.0)), finest_);
  subColumns_ = coarsest_;
}

bool TraceFineness::refine(const InkRoughness& ink) {
  const double wished = subColumns_ * ink.expectedError() / kLimit;
  const int needed = std::clamp(roundedDown(std::min(wished, double(kMost)) + kStep - 1), coarsest_, finest_);
  const bool isCoarse = needed > subColumns_;
  subColumns_ = needed;
  return isCoarse;
}

} // namespace xov
