#include "XOV_Graphics/graphics/LogAxis.h"

#include "XOV_Graphics/graphics/AxisMeasures.h"

#include <utility>

namespace xov {

namespace {

// Between two labels beside each other, in font sizes, and above each other.
constexpr double kGapX = 0.6;
constexpr double kGapY = 0.4;

class AxisMaker {
public:
  explicit AxisMaker(const LogAxisRequest& request) : request_(request), fontSize_(float(request.fontSize)) {}

  LogAxis make() {
    addSegment(axis_.frame, start(), near(), end(), near());
    if (near() != far()) addSegment(axis_.frame, start(), far(), end(), far());
    LogTicks ticks = logTicks({.lower = request_.lower,
                               .upper = request_.upper,
                               .length = double(end() - start()),
                               .gap = (isX() ? kGapX : kGapY) * request_.fontSize,
                               .extent = [this](const LogTick& tick) {
                                 return isX() ? request_.textWidth(tick) : double(request_.fontSize);
                               }});
    for (LogTick& tick : ticks.major) {
      const float at = positionOf(tick.log10);
      addTick(at, axis_measures::kMajorTick);
      addLabel(std::move(tick), at);
    }
    if (request_.minorTicks) {
      for (const double log10 : ticks.minor)
        addTick(positionOf(log10), isX() ? axis_measures::kMinorTickX : axis_measures::kMinorTickY);
    }
    return std::move(axis_);
  }

private:
  bool isX() const { return request_.direction == AxisDirection::X; }
  bool isAtEnd() const { return !isX() && request_.line == AxisLine::AtEnd; }
  // Along the axis, and across it the line with the labels and the other one.
  float start() const { return float(isX() ? request_.frame.left : request_.frame.bottom); }
  float end() const { return float(isX() ? request_.frame.right : request_.frame.top); }
  float near() const {
    if (isX()) return float(request_.frame.bottom);
    return float(isAtEnd() ? request_.frame.right : request_.frame.left);
  }
  float far() const {
    if (isX()) return float(request_.frame.top);
    return float(isAtEnd() ? request_.frame.left : request_.frame.right);
  }

  float positionOf(double log10) const {
    const double share = (log10 - request_.lower) / (request_.upper - request_.lower);
    return float(double(start()) + double(end() - start()) * share);
  }

  void addSegment(std::vector<AxisSegment>& segments, float along1, float across1, float along2,
                  float across2) const {
    segments.push_back(isX() ? AxisSegment{along1, across1, along2, across2}
                             : AxisSegment{across1, along1, across2, along2});
  }

  void addTick(float at, float fontSizes) {
    const float length = fontSizes * fontSize_ * (isAtEnd() ? -1 : 1);
    addSegment(axis_.ticks, at, near(), at, near() + length);
    if (near() != far()) addSegment(axis_.ticks, at, far(), at, far() - length);
  }

  void addLabel(LogTick tick, float at) {
    const double width = request_.textWidth(tick);
    const auto besideAxis = double(axis_measures::kLabelBesideY * fontSize_);
    const double level = double(at) - double(axis_measures::kLabelBelowTickY * fontSize_);
    if (isX()) {
      const double y = double(near()) - double(axis_measures::kLabelBelowX * fontSize_);
      axis_.labels.push_back({std::move(tick), double(at) - width / 2, y});
    } else if (isAtEnd()) {
      axis_.labels.push_back({std::move(tick), double(near()) + besideAxis, level});
    } else {
      axis_.labels.push_back({std::move(tick), double(near()) - besideAxis - width, level});
    }
  }

  const LogAxisRequest& request_;
  float fontSize_;
  LogAxis axis_;
};

} // namespace

LogAxis layoutLogAxis(const LogAxisRequest& request) { return AxisMaker(request).make(); }

} // namespace xov
