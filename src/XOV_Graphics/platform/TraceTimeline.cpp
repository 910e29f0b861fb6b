#include "XOV_Graphics/platform/TraceTimeline.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kHalfUlp = 0x1p-24; // of a single-precision number, relative to it

double evenTime(const TraceTime& time, std::int64_t i) {
  return double(time.start) + double(time.step) * double(i - time.origin);
}

/// The sign and the exponent of a number: two numbers that share it lie on the same grid.
std::uint32_t binadeOf(float value) { return std::bit_cast<std::uint32_t>(value) >> 23; }

/// The sum in single precision. The volatile keeps a compiler for a machine with wider registers honest.
float singleSum(float a, float b) {
  const volatile float sum = a + b;
  return sum;
}

/// How many further steps of `step` from `start` stay inside the power of two that `start` lies in.
std::int64_t stepsInsideBinade(float start, double step) {
  if (step == 0) return std::numeric_limits<std::int64_t>::max();
  const float magnitude = std::abs(start);
  const int exponent = magnitude < std::numeric_limits<float>::min() ? -127 : std::ilogb(magnitude);
  const double lower = exponent == -127 ? 0.0 : std::ldexp(1.0, exponent);
  const double upper = std::ldexp(1.0, exponent + 1);
  const bool outwards = (start > 0) == (step > 0);
  const double room = outwards ? upper - double(magnitude) : double(magnitude) - lower;
  const auto steps = static_cast<std::int64_t>(room / std::abs(step));
  // One step less than fits: the step that reaches the border is left to the addition itself.
  return std::max<std::int64_t>(steps - 1, 0);
}

} // namespace

TraceTimeline::TraceTimeline(const Trace& trace) : time_(trace.time) {
  if (trace.isEmpty()) return;
  first_ = trace.first;
  last_ = trace.last;
  switch (time_.rule) {
  case TraceTime::Rule::Uniform:
    setUniform();
    break;
  case TraceTime::Rule::Accumulated:
    setAccumulated();
    break;
  case TraceTime::Rule::Explicit:
    setExplicit();
    break;
  case TraceTime::Rule::Even:
    setEven();
    break;
  }
  if (last_ <= first_) {
    last_ = first_;
    hasOnePiece_ = false;
    pieces_.clear();
  }
}

void TraceTimeline::setOnePiece(double start, double step) {
  hasOnePiece_ = true;
  onePiece_ = {first_, last_ - first_, start, step};
}

void TraceTimeline::setUniform() {
  if (!std::isfinite(time_.start) || !std::isfinite(time_.step)) {
    last_ = first_;
    return;
  }
  // The times are monotone, so those that overflow lie at the two ends.
  const auto boundary = [this](auto&& belongsBefore) {
    std::int64_t low = first_, high = last_;
    while (low < high) {
      const std::int64_t middle = low + (high - low) / 2;
      if (belongsBefore(uniformTime(time_, middle)))
        low = middle + 1;
      else
        high = middle;
    }
    return low;
  };
  if (!std::isfinite(uniformTime(time_, first_)) || !std::isfinite(uniformTime(time_, last_ - 1))) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const float before = time_.step < 0 ? kInfinity : -kInfinity;
    const std::int64_t begin = boundary([before](float t) { return t == before; });
    const std::int64_t end = boundary([before](float t) { return t != -before; });
    first_ = begin;
    last_ = end;
    if (last_ <= first_) return;
  }
  decreases_ = uniformTime(time_, last_ - 1) < uniformTime(time_, first_);
  setOnePiece(double(time_.start) + double(time_.step) * double(first_), double(time_.step));
}

void TraceTimeline::setEven() {
  if (!std::isfinite(time_.start) || !std::isfinite(time_.step)) {
    last_ = first_;
    return;
  }
  decreases_ = time_.step < 0 && last_ - first_ > 1;
  setOnePiece(evenTime(time_, first_), double(time_.step));
}

void TraceTimeline::setAccumulated() {
  float t = time_.start;
  std::int64_t i = first_;
  while (i < last_ && std::isfinite(t)) {
    const float next = singleSum(t, time_.step);
    const float afterNext = singleSum(next, time_.step);
    const double step = double(next) - double(t);
    // Two equal steps inside one power of two settle the rest of it: the only step that may differ from those after
    // it is the first one out of an odd position when the step ends exactly half way between two grid points.
    const bool settled = binadeOf(t) == binadeOf(next) && binadeOf(next) == binadeOf(afterNext) &&
                         double(afterNext) - double(next) == step;
    const std::int64_t steps = settled ? stepsInsideBinade(t, step) : 0;
    const std::int64_t count = std::min(steps < last_ - i ? steps + 1 : last_ - i, last_ - i);
    pieces_.push_back({i, count, double(t), count > 1 ? step : 0.0});
    i += count;
    t = count > 1 ? singleSum(static_cast<float>(double(t) + double(count - 1) * step), time_.step) : next;
  }
  last_ = i;
  decreases_ = last_ - first_ > 1 && time(last_ - 1) < time(first_);
}

void TraceTimeline::setExplicit() {
  if (time_.values == nullptr) {
    last_ = first_;
    return;
  }
  const float* const values = time_.values;
  while (first_ < last_ && !std::isfinite(values[first_]))
    ++first_;
  while (last_ > first_ && !std::isfinite(values[last_ - 1]))
    --last_;
  if (last_ <= first_) return;
  bool allGrow = true;
  bool allFinite = true;
  for (std::int64_t i = first_ + 1; i < last_; ++i) {
    allGrow &= values[i] >= values[i - 1];
    allFinite &= values[i] - values[i] == 0.0F;
  }
  hasGaps_ = !allFinite;
  if (allGrow) return;
  float latest = values[first_];
  for (std::int64_t i = first_ + 1; i < last_; ++i) {
    if (!std::isfinite(values[i])) continue;
    if (values[i] < latest) decreases_ = true;
    latest = values[i];
  }
}

std::size_t TraceTimeline::pieceAt(std::int64_t i) const {
  if (hasOnePiece_) return 0;
  const auto after = std::upper_bound(pieces_.begin(), pieces_.end(), i,
                                      [](std::int64_t index, const TimePiece& piece) { return index < piece.first; });
  return static_cast<std::size_t>(after - pieces_.begin()) - 1;
}

double TraceTimeline::timeOfOtherRule(std::int64_t i) const {
  if (time_.rule == TraceTime::Rule::Explicit) return double(time_.values[i]);
  if (time_.rule == TraceTime::Rule::Even) return evenTime(time_, i);
  const TimePiece& piece = pieces_[pieceAt(i)];
  return piece.start + double(i - piece.first) * piece.step;
}

double TraceTimeline::pieceError(float origin, std::int64_t a, std::int64_t b) const {
  if (time_.rule == TraceTime::Rule::Even) return 0;
  const double farthest = std::max(std::abs(time(a) - double(origin)), std::abs(time(b) - double(origin)));
  if (farthest > double(std::numeric_limits<float>::max())) return std::numeric_limits<double>::infinity();
  double error = kHalfUlp * farthest; // of the difference
  if (time_.rule == TraceTime::Rule::Uniform) {
    const double largestIndex = double(std::max(std::abs(a), std::abs(b)));
    const double product = std::abs(double(time_.step)) * largestIndex;
    // The index, the product and the sum are rounded once each.
    error += kHalfUlp * (2 * product + std::abs(double(time_.start)) + product);
  }
  return error;
}

double TraceTimeline::distanceFrom(const TraceTime& even) const {
  double farthest = 0;
  // Along a piece the distance grows or shrinks evenly: its ends are the farthest.
  for (const TimePiece& piece : pieces()) {
    const std::int64_t last = piece.first + piece.count - 1;
    const double end = piece.start + double(piece.count - 1) * piece.step;
    farthest = std::max(
        {farthest, std::abs(piece.start - evenTime(even, piece.first)), std::abs(end - evenTime(even, last))});
  }
  return farthest;
}

} // namespace xov
