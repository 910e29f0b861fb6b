#include "XOV_Graphics/graphics/AxisScale.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr int kFewestIntervals = 5;

// From how much of the axis length between two major ticks on there are more secondary ticks.
constexpr float kSomeMinorsFrom = 0.1f;
constexpr float kManyMinorsFrom = 0.25f;
constexpr int kFewMinors = 1;
constexpr int kSomeMinors = 3;
constexpr int kSomeMinorsOfFive = 4; // steps of 5 are divided into whole units
constexpr int kManyMinors = 9;

// Tick numbers below this are exact and far from overflow. An axis that reaches it has more ticks than are drawn.
constexpr float kMostTickNumber = 0x1p53f;

// The power of ten of a number whose logarithm is given; for logarithms below zero, the one below.
int exponentOf(float logarithm) {
  if (logarithm < 0) logarithm = logarithm - 1.0f;
  return towardZero(logarithm);
}

// X labels stand side by side and need more room with larger type in both directions; Y labels need ten times the
// type's square, which leaves the fewest intervals on most axes.
int intervalCount(const LinearAxisRequest& request, float length, float fontSize) {
  if (request.direction == AxisDirection::X) {
    return std::max(kFewestIntervals, towardZero(length / (fontSize * fontSize)));
  }
  const float pointsPerInterval = (10.0f * float(request.fontSize)) * fontSize;
  return std::max(kFewestIntervals, towardZero(std::abs(length / pointsPerInterval)));
}

// Rounds the leading digit of an interval to 2 or 5, or to 1 of the next power of ten.
void roundMantissa(AxisDirection direction, int& mantissa, int& exponent) {
  const int oneAbove = direction == AxisDirection::X ? 10 : 5;
  const int fiveAbove = direction == AxisDirection::X ? 5 : 2;
  if (mantissa > oneAbove) {
    mantissa = 1;
    exponent = exponent + 1;
  } else {
    mantissa = mantissa > fiveAbove ? 5 : 2;
  }
}

} // namespace

TickInterval tickInterval(const LinearAxisRequest& request, float length, float fontSize) {
  TickInterval interval;
  if (request.interval != 0) {
    interval.step = request.interval;
    interval.exponent = exponentOf(log10Single(double(request.interval)));
    return interval;
  }
  const float raw = (request.upper - request.lower) / float(intervalCount(request, length, fontSize));
  interval.exponent = raw > 0 ? exponentOf(log10Single(double(raw))) : 0;
  interval.mantissa = towardZero(raw * powerOfTen(-interval.exponent));
  roundMantissa(request.direction, interval.mantissa, interval.exponent);
  interval.step = float(interval.mantissa) * powerOfTen(interval.exponent);
  return interval;
}

std::optional<TickRange> tickRange(float lower, float upper, float step) {
  const float lowerNumber = lower / step;
  const float upperNumber = upper / step;
  const bool countable = std::abs(lowerNumber) < kMostTickNumber && std::abs(upperNumber) < kMostTickNumber;
  if (!countable) return std::nullopt;

  auto firstNumber = std::int64_t(lowerNumber);
  float first = step * float(firstNumber);
  if (lower > first) {
    ++firstNumber;
    first = first + step;
  }
  auto lastNumber = std::int64_t(upperNumber);
  float last = step * float(lastNumber);
  if (last > upper) {
    --lastNumber;
    last = last - step;
  }
  if (!std::isfinite(first) || !std::isfinite(last)) return std::nullopt;
  return TickRange{first, last, lastNumber - firstNumber + 1};
}

DigitEstimates digitEstimates(const TickRange& range, float step) {
  // Keeps the logarithm finite when the only tick is at 0.
  constexpr double kAboveZero = 0.001;
  const auto awayFromZero = [](float logarithm) { return logarithm >= 0 ? logarithm + 1.001f : logarithm - 0.999f; };
  const float largest = std::max(std::abs(range.first), std::abs(range.last));
  return {awayFromZero(log10Single(double(largest) + kAboveZero)), awayFromZero(log10Single(double(step)))};
}

int minorTickCount(AxisDirection direction, float spacing, float length, int mantissa) {
  const bool isX = direction == AxisDirection::X;
  if (!isX) {
    spacing = std::abs(spacing);
    length = std::abs(length);
  }
  const float many = kManyMinorsFrom * length;
  if (isX ? spacing >= many : spacing > many) return kManyMinors;
  if (spacing >= kSomeMinorsFrom * length) return mantissa == 5 ? kSomeMinorsOfFive : kSomeMinors;
  return kFewMinors;
}

} // namespace xov
