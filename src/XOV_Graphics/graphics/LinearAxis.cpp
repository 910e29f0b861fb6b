#include "XOV_Graphics/graphics/LinearAxis.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/SinglePrecision.h"
#include "XOV_Graphics/graphics/AxisLabelFormat.h"
#include "XOV_Graphics/graphics/AxisMeasures.h"
#include "XOV_Graphics/graphics/AxisScale.h"

#include <cmath>
#include <optional>

namespace xov {

namespace {

// The axis seen along its own direction. Ticks grow from the near line by the font size and from the far line against
// it.
//
//     X:  far  ┌┬──┬──┬┐ T        Y:  near        far
//              └┴──┴──┴┘ B near        T ├        ┤
//              L       R               B ├        ┤
//            start    end
struct Geometry {
  float start = 0;
  float end = 0;
  float nearLine = 0;
  float farLine = 0;
  float fontSize = 0; // negative on a right Y axis
  bool farTicks = true;

  float length() const { return end - start; }
};

Geometry geometryOf(const LinearAxisRequest& request) {
  const auto left = float(request.frame.left);
  const auto right = float(request.frame.right);
  const auto bottom = float(request.frame.bottom);
  const auto top = float(request.frame.top);
  const auto fontSize = float(request.fontSize);
  if (request.direction == AxisDirection::X) return {left, right, bottom, top, fontSize, top != bottom};
  if (request.line == AxisLine::AtStart) return {bottom, top, left, right, fontSize, true};
  return {bottom, top, right, right, -fontSize, true};
}

// The numbers that the ticks are drawn with.
struct TickSteps {
  float value = 0; // of the first tick, as its label shows it
  float valueStep = 0;
  float position = 0; // of the first tick along the axis
  float positionStep = 0;
  float minorStep = 0;
  AxisLabelFormat format;
};

// Lays out one axis; the members are what its steps share.
class AxisBuilder {
public:
  explicit AxisBuilder(const LinearAxisRequest& request) : request_(request), geometry_(geometryOf(request)) {}

  LinearAxis build() {
    appendSegment(axis_.frame, geometry_.start, geometry_.nearLine, geometry_.end, geometry_.nearLine);
    appendSegment(axis_.frame, geometry_.start, geometry_.farLine, geometry_.end, geometry_.farLine);
    const std::optional<TickSteps> steps = tickSteps();
    if (steps) appendTicks(*steps);
    return axis_;
  }

private:
  bool isX() const { return request_.direction == AxisDirection::X; }
  bool showsTicks() const { return request_.detail != AxisDetail::Frame; }
  bool showsLabels(float spacing) const {
    const int most = std::abs(spacing) < kClosestLabels ? kFewTickLabels : kMostTickLabels;
    return request_.detail == AxisDetail::Labels && axis_.majorCount <= most;
  }

  // None when the numbers leave nothing to draw.
  std::optional<TickSteps> tickSteps() {
    const float pointsPerUnit = geometry_.length() / (request_.upper - request_.lower);
    const TickInterval interval = tickInterval(request_, geometry_.length(), geometry_.fontSize);
    const std::optional<TickRange> range = tickRange(request_.lower, request_.upper, interval.step);
    if (!range || range->count > kMostMajorTicks) return std::nullopt;

    TickSteps steps;
    steps.format = axisLabelFormat(request_, geometry_.length(), geometry_.fontSize, interval, *range);
    steps.value = range->first * steps.format.factor;
    steps.position = (range->first - request_.lower) * pointsPerUnit + geometry_.start;
    steps.valueStep = interval.step * steps.format.factor;
    steps.positionStep = interval.step * pointsPerUnit;
    const bool drawable = std::isfinite(steps.value) && std::isfinite(steps.valueStep) &&
                          std::isfinite(steps.position) && std::isfinite(steps.positionStep);
    if (!drawable) return std::nullopt;

    axis_.step = interval.step;
    axis_.majorCount = range->count > 0 ? int(range->count) : 0;
    axis_.minorCount = minorTickCount(request_.direction, steps.positionStep, geometry_.length(), interval.mantissa);
    steps.minorStep = steps.positionStep / float(axis_.minorCount + 1);
    // A factor of one goes without saying on an X axis, but not on a Y axis.
    const bool factorShows = !isX() || interval.exponent != 0;
    if (steps.format.scaled && factorShows) axis_.suffix = powerOfTenSuffix(interval.exponent);
    return steps;
  }

  void appendTicks(const TickSteps& steps) {
    float value = steps.value;
    float position = steps.position;
    appendMinors(position - steps.positionStep, steps.minorStep, &AxisBuilder::showsMinorBelow);
    for (int i = 0; i < axis_.majorCount; ++i) {
      if (showsTicks()) appendTick(position, axis_measures::kMajorTick);
      if (showsLabels(steps.positionStep)) appendLabel(value, position, steps.format);
      appendMinors(position, steps.minorStep, &AxisBuilder::showsMinorAbove);
      value = value + steps.valueStep;
      position = position + steps.positionStep;
    }
  }

  // Secondary ticks at the edges of an X frame show, those at the edges of a Y frame do not.
  bool showsMinorBelow(float position) const {
    return isX() ? position >= geometry_.start : position > geometry_.start;
  }
  bool showsMinorAbove(float position) const {
    return isX() ? geometry_.end >= position : position > geometry_.start && geometry_.end > position;
  }

  void appendMinors(float position, float spacing, bool (AxisBuilder::*shows)(float) const) {
    if (!showsTicks() || !request_.minorTicks) return;
    for (int i = 0; i < axis_.minorCount; ++i) {
      position = position + spacing;
      if ((this->*shows)(position))
        appendTick(position, isX() ? axis_measures::kMinorTickX : axis_measures::kMinorTickY);
    }
  }

  void appendTick(float position, float length) {
    const float points = length * geometry_.fontSize;
    appendSegment(axis_.ticks, position, geometry_.nearLine, position, geometry_.nearLine + points);
    if (geometry_.farTicks) {
      appendSegment(axis_.ticks, position, geometry_.farLine, position, geometry_.farLine - points);
    }
  }

  void appendSegment(std::vector<AxisSegment>& segments, float along1, float across1, float along2, float across2) {
    segments.push_back(isX() ? AxisSegment{along1, across1, along2, across2}
                             : AxisSegment{across1, along1, across2, along2});
  }

  void appendLabel(float value, float position, const AxisLabelFormat& format) {
    const float fontSize = geometry_.fontSize;
    if (isX()) {
      axis_.labels.push_back({fixedText(value, format.width, format.decimals, Sign::WhenNegative),
                              towardZero(position),
                              towardZero(geometry_.nearLine - axis_measures::kLabelBelowX * fontSize)});
      return;
    }
    axis_.labels.push_back({yLabelText(request_.invertSigns ? -value : value, format),
                            towardZero(geometry_.nearLine - axis_measures::kLabelBesideY * fontSize),
                            towardZero(position - axis_measures::kLabelBelowTickY * fontSize)});
  }

  // Above a negative label, a blank in place of the sign keeps the digits in line. Minus zero is not negative here.
  std::string yLabelText(float value, const AxisLabelFormat& format) {
    if (value < 0) {
      negativeSeen_ = true;
      return fixedText(value, format.width + 1, format.decimals, Sign::WhenNegative);
    }
    const Sign sign = negativeSeen_ ? Sign::BlankWhenPositive : Sign::WhenNegative;
    return fixedText(value, format.width, format.decimals, sign);
  }

  const LinearAxisRequest& request_;
  const Geometry geometry_;
  LinearAxis axis_;
  bool negativeSeen_ = false;
};

} // namespace

AxisFrame axisFrame(float left, float right, float top, float bottom) {
  const auto as16Bits = [](float value) { return std::int16_t(towardZero(value)); };
  return {as16Bits(top), as16Bits(left), as16Bits(bottom), as16Bits(right)};
}

LinearAxis layoutLinearAxis(const LinearAxisRequest& request) { return AxisBuilder(request).build(); }

} // namespace xov
