#include "XOV_Graphics/views/xy/HistogramBars.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kBarsPerPoint = 8;
constexpr double kBesideGap = 5;
constexpr double kBaselineWidth = 0.75;
// Bars that start further than this from their frame, in points, are beyond every view.
constexpr double kFarthest = 20000;

// Passes bars on as they come while they are spaced widely, else the tallest of each column.
class BarThinner {
public:
  explicit BarThinner(double spacing) : thins_(!(std::abs(spacing) * kBarsPerPoint >= 1)) {}

  template <typename Draw>
  void add(double position, std::size_t bar, std::int32_t count, Draw draw) {
    if (!thins_) return draw(position, bar);
    const double column = std::floor(position * kBarsPerPoint);
    if (pending_ && column != column_) flush(draw);
    if (pending_ && count <= count_) return;
    pending_ = true;
    column_ = column;
    position_ = position;
    bar_ = bar;
    count_ = count;
  }

  template <typename Draw>
  void flush(Draw draw) {
    if (pending_) draw(position_, bar_);
    pending_ = false;
  }

private:
  bool thins_;
  bool pending_ = false;
  double column_ = 0;
  double position_ = 0;
  std::size_t bar_ = 0;
  std::int32_t count_ = 0;
};

Path outline() {
  Path path;
  path.setLineWidth(HistogramBars::kOutlineWidth);
  return path;
}

std::size_t barCount(const HistogramBars& bars) {
  return std::min(bars.counts.size(), std::size_t(std::max(0, bars.bins.count)));
}

} // namespace

Path HistogramBars::overValues() const {
  const double left = frame.x();
  const double right = left + frame.width();
  const double bottom = frame.y();
  const double top = bottom + frame.height();
  const double width = barWidth();

  Path path = outline();
  double y = bottom;
  const auto draw = [&](double x, std::size_t bar) {
    const double height = std::min(bottom + heightOf(counts[bar]), top);
    const double end = std::min(x + width, right);
    path.moveTo({x, y});
    path.lineTo({x, height});
    path.lineTo({end, height});
    path.lineTo({end, left});
    y = left;
  };
  BarThinner thinner(width);
  for (std::size_t bar = 0; bar < barCount(*this); ++bar) {
    const double x = leftOf(bar);
    if (x >= left && x <= right) thinner.add(x, bar, counts[bar], draw);
  }
  thinner.flush(draw);
  return path;
}

double HistogramBars::leftOf(std::size_t bar) const {
  const double xScale = frame.width() / double(limits.xmax - limits.xmin);
  return frame.x() + double(bins.leftEdge(std::int32_t(bar)) - limits.xmin) * xScale;
}

double HistogramBars::barWidth() const {
  return double(bins.width) / double(limits.xmax - limits.xmin) * frame.width();
}

std::optional<std::size_t> HistogramBars::barAt(double x) const {
  const double right = frame.x() + frame.width();
  const double width = barWidth();
  const double place = (x - leftOf(0)) / width;
  const std::size_t count = barCount(*this);
  if (!(width > 0) || !(place > -1) || !(place < double(count) + 1)) return {};
  // Edges are rounded to single precision, so that a neighbour may be the one.
  const auto guess = std::size_t(std::max(place, 0.0));
  for (std::size_t bar = guess > 0 ? guess - 1 : 0; bar < std::min(guess + 2, count); ++bar) {
    const double left = leftOf(bar);
    if (left >= frame.x() && left <= right && x >= left && x < std::min(left + width, right)) return bar;
  }
  return {};
}

// On a linear axis bars grow from 0, wherever the axis begins.
double HistogramBars::heightOf(std::int32_t count) const {
  const double yScale = frame.height() / double(limits.ymax - limits.ymin);
  if (!logCounts) return count * yScale;
  return count > 0 ? std::max(0.0, (std::log10(double(count)) - double(limits.ymin)) * yScale) : 0;
}

Path HistogramBars::besideFrame() const {
  const double start = besideX();
  const double step = frame.height() / double(limits.ymax - limits.ymin);
  Path path = outline();
  const auto draw = [&](double y, std::size_t bar) {
    const double end = frame.height() * counts[bar] / maxCount + start;
    path.moveTo({start, y});
    path.lineTo({end, y});
    path.lineTo({end, y + step});
    path.lineTo({start, y + step});
  };
  BarThinner thinner(step);
  double y = frame.y();
  for (std::size_t bar = 0; bar < barCount(*this) && std::abs(y - frame.y()) <= kFarthest; ++bar, y += step) {
    thinner.add(y, bar, counts[bar], draw);
  }
  thinner.flush(draw);
  return path;
}

double HistogramBars::besideX() const { return frame.x() + frame.width() + kBesideGap; }

Path HistogramBars::baseline() const {
  Path path;
  path.setLineWidth(kBaselineWidth);
  path.moveTo({besideX(), frame.y()});
  path.lineTo({besideX(), frame.y() + frame.height()});
  return path;
}

} // namespace xov
