#include "XOV_Graphics/graphics/AxisLabelFormat.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Room for a sign and the point beside the decimals.
constexpr int kSignAndPoint = 2;
// Labels of a Y axis are scaled from this many digits on.
constexpr int kFewestScaledDigits = 3;
constexpr int kNarrowestScaledX = 1;
constexpr int kNarrowestScaledY = 4;

AxisLabelFormat scaledBy(int exponent, int width) { return {width, 0, powerOfTen(-exponent), true}; }

int decimalsOf(const DigitEstimates& digits) { return digits.step < 0 ? towardZero(std::abs(digits.step)) : 0; }

AxisLabelFormat withRoomForDecimals(int width, int decimals) {
  if (decimals > 0) width = width + decimals + kSignAndPoint;
  return {width, decimals, 1, false};
}

// Values above 1 in steps below 1, or the other way round.
AxisLabelFormat mixedFormat(const DigitEstimates& digits) {
  return withRoomForDecimals(digits.value > 0 ? towardZero(digits.value) : 0, decimalsOf(digits));
}

// Whether the labels fit beside each other: a digit takes half the font size. Without a last tick above 1 they do.
bool labelsFit(float length, float fontSize, const TickRange& range) {
  const double digits = std::ceil(std::log10(double(range.last)));
  return !(double(length) - digits * double(range.count) * 0.5 * double(fontSize) <= 0);
}

AxisLabelFormat xLabelFormat(const LinearAxisRequest& request, float length, float fontSize,
                             const TickInterval& interval, const TickRange& range) {
  const DigitEstimates digits = digitEstimates(range, interval.step);
  if (!(digits.value * digits.step >= 0)) return mixedFormat(digits);
  if (request.mayScaleLabels && !labelsFit(length, fontSize, range)) {
    const int width = towardZero(digits.value) - towardZero(digits.step);
    return scaledBy(interval.exponent, std::max(kNarrowestScaledX, width));
  }
  // The negative width of small values puts blanks behind the number.
  const int width = digits.value < 1 ? towardZero(digits.value) : 1;
  return {width, decimalsOf(digits), 1, false};
}

AxisLabelFormat yLabelFormat(const LinearAxisRequest& request, const TickInterval& interval, const TickRange& range) {
  const DigitEstimates digits = digitEstimates(range, interval.step);
  if (digits.value * digits.step < 0) return mixedFormat(digits);
  const int scale = towardZero(digits.value < 0 ? digits.value : digits.step);
  if (request.mayScaleLabels && std::abs(scale) >= kFewestScaledDigits) {
    const int width = towardZero(digits.value) - towardZero(digits.step) + 2;
    return scaledBy(interval.exponent, std::max(kNarrowestScaledY, width));
  }
  return withRoomForDecimals(digits.value > 1 ? towardZero(digits.value) : 1, decimalsOf(digits));
}

} // namespace

AxisLabelFormat axisLabelFormat(const LinearAxisRequest& request, float length, float fontSize,
                                const TickInterval& interval, const TickRange& range) {
  return request.direction == AxisDirection::X ? xLabelFormat(request, length, fontSize, interval, range)
                                               : yLabelFormat(request, interval, range);
}

} // namespace xov
