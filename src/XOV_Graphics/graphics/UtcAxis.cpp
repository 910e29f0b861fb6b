#include "XOV_Graphics/graphics/UtcAxis.h"

#include "XOV_Graphics/base/SinglePrecision.h"
#include "XOV_Graphics/graphics/AxisMeasures.h"
#include "XOV_Graphics/graphics/UtcTicks.h"

#include <algorithm>

namespace xov {

namespace {

// Between two texts beside each other, in font sizes.
constexpr double kGap = 0.75;
// Between a text and the edge of the view, in points.
constexpr double kEdgeRoom = 2;

class AxisMaker {
public:
  explicit AxisMaker(const UtcAxisRequest& request) : request_(request), fontSize_(float(request.fontSize)) {}

  UtcAxis make() {
    addLine(request_.frame.bottom);
    addLine(request_.frame.top);
    const UtcTicks ticks = utcTicks({.reference = request_.reference,
                                     .lower = request_.lower,
                                     .upper = request_.upper,
                                     .length = length(),
                                     .gap = kGap * double(request_.fontSize),
                                     .textWidth = request_.textWidth});
    for (const UtcTick& tick : ticks.major) {
      addTick(tick.seconds, axis_measures::kMajorTick);
      addText(tick.label, labelX(tick), axis_measures::kLabelBelowX, AJustify::Center);
    }
    if (request_.minorTicks) {
      for (const double seconds : ticks.minor)
        addTick(seconds, axis_measures::kMinorTickX);
    }
    addTitleAndDates(ticks);
    return axis_;
  }

private:
  double length() const { return double(request_.frame.right) - double(request_.frame.left); }

  float xOf(double seconds) const {
    return float(request_.frame.left + length() * (seconds - request_.lower) / (request_.upper - request_.lower));
  }

  // Views begin at 0 and have as much room at the right of an axis as at the left, or enough. A label that would run
  // out of them moves as far as labels are apart, so that it touches no other.
  float labelX(const UtcTick& tick) const {
    const auto x = double(xOf(tick.seconds));
    const double half = request_.textWidth(tick.label) / 2 + kEdgeRoom;
    const double farthest = double(request_.frame.right) + double(request_.frame.left) - half;
    const double reach = kGap * double(request_.fontSize);
    if (x < half) return float(std::min(half, x + reach));
    return float(x > farthest ? std::max(farthest, x - reach) : x);
  }

  void addLine(std::int16_t y) {
    axis_.frame.push_back({float(request_.frame.left), float(y), float(request_.frame.right), float(y)});
  }

  void addTick(double seconds, float fontSizes) {
    const float x = xOf(seconds);
    const float length = fontSizes * fontSize_;
    const auto bottom = float(request_.frame.bottom);
    const auto top = float(request_.frame.top);
    axis_.ticks.push_back({x, bottom, x, bottom + length});
    if (top != bottom) axis_.ticks.push_back({x, top, x, top - length});
  }

  void addText(const QString& text, float x, float fontSizesBelow, AJustify justify) {
    const float y = float(request_.frame.bottom) - fontSizesBelow * fontSize_;
    axis_.texts.push_back({{text.toStdString(), towardZero(x), towardZero(y)}, justify});
  }

  void addTitleAndDates(const UtcTicks& ticks) {
    const auto left = float(request_.frame.left);
    const auto right = float(request_.frame.right);
    const auto below = [&](const QString& text, float x, AJustify justify) {
      if (!text.isEmpty()) addText(text, x, axis_measures::kTitleBelowX, justify);
    };
    if (ticks.firstDate.isEmpty()) return below(request_.title, (left + right) / 2, AJustify::Center);
    const double taken = 2 * request_.textWidth(ticks.lastDate) + request_.textWidth(request_.title);
    const bool hasRoom = taken + 2 * kGap * double(request_.fontSize) <= length();
    if (hasRoom)
      below(request_.title, (left + right) / 2, AJustify::Center);
    else
      below(request_.title, right, AJustify::Right);
    below(ticks.firstDate, left, AJustify::Left);
    if (hasRoom && ticks.lastDate != ticks.firstDate) below(ticks.lastDate, right, AJustify::Right);
  }

  const UtcAxisRequest& request_;
  float fontSize_;
  UtcAxis axis_;
};

} // namespace

UtcAxis layoutUtcAxis(const UtcAxisRequest& request) { return AxisMaker(request).make(); }

} // namespace xov
