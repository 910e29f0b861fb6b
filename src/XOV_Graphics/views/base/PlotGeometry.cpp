#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace xov {

namespace {

// A limit that is not above 0 lies that far from the other one.
constexpr double kDecadesToZero = 6;

// The share of a length that a justification code moves text back by: 2 half of it, 3 all of it.
double shift(int code, double length) {
  if (code == 2) return length / 2;
  return code == 3 ? length : 0;
}

} // namespace

QRectF PlotLimits::rect() const {
  const float width = xmax - xmin;
  const float height = ymax - ymin;
  return {xmin, ymin, width, height};
}

QPointF viewToData(QPointF point, const QRectF& frame, const PlotLimits& limits) {
  const double xRange = limits.xmax - limits.xmin;
  const double yRange = limits.ymax - limits.ymin;
  return {double(limits.xmin) + (point.x() - frame.x()) * (xRange / frame.width()),
          double(limits.ymin) + (point.y() - frame.y()) * (yRange / frame.height())};
}

QPointF dataToView(QPointF data, const QRectF& frame, const PlotLimits& limits) {
  const double xRange = limits.xmax - limits.xmin;
  const double yRange = limits.ymax - limits.ymin;
  return {frame.x() + (data.x() - double(limits.xmin)) * (frame.width() / xRange),
          frame.y() + (data.y() - double(limits.ymin)) * (frame.height() / yRange)};
}

LogRange logRange(float lower, float upper) {
  const double largest = double(std::max(lower, upper));
  if (!(largest > 0)) {
    constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();
    return {kNothing, kNothing};
  }
  const auto logarithm = [largest](float limit) {
    return limit > 0 ? std::log10(double(limit)) : std::log10(largest) - kDecadesToZero;
  };
  return {logarithm(lower), logarithm(upper)};
}

PlotLimits drawnLimits(const PlotLimits& limits, LogAxes axes) {
  PlotLimits drawn = limits;
  if (axes.x) {
    const LogRange x = logRange(limits.xmin, limits.xmax);
    drawn.xmin = float(x.lower);
    drawn.xmax = float(x.upper);
  }
  if (axes.y) {
    const LogRange y = logRange(limits.ymin, limits.ymax);
    drawn.ymin = float(y.lower);
    drawn.ymax = float(y.upper);
  }
  return drawn;
}

QPointF viewToData(QPointF point, const QRectF& frame, const PlotLimits& limits, LogAxes axes) {
  const QPointF drawn = viewToData(point, frame, drawnLimits(limits, axes));
  return {axes.x ? std::pow(10.0, drawn.x()) : drawn.x(), axes.y ? std::pow(10.0, drawn.y()) : drawn.y()};
}

QPointF dataToView(QPointF data, const QRectF& frame, const PlotLimits& limits, LogAxes axes) {
  const QPointF drawn(axes.x ? std::log10(data.x()) : data.x(), axes.y ? std::log10(data.y()) : data.y());
  return dataToView(drawn, frame, drawnLimits(limits, axes));
}

bool containsPoint(const QRectF& rect, QPointF point) {
  return point.x() >= rect.x() && point.x() <= rect.x() + rect.width() && point.y() >= rect.y() &&
         point.y() <= rect.y() + rect.height();
}

QPointF alignedTextOrigin(QPointF at, QSizeF size, int hjust, int vjust) {
  return {at.x() - shift(hjust, size.width()), at.y() - shift(vjust, size.height())};
}

QPointF rotatedTextOrigin(QPointF at, QSizeF size, int hjust, int vjust) {
  return {at.x() - shift(hjust, size.height()), at.y() - shift(vjust, size.width())};
}

QString zoneOffsetText(const QDateTime& dateTime) {
  const int offsetMinutes = dateTime.offsetFromUtc() / 60;
  const int size = std::abs(offsetMinutes);
  return QStringLiteral("%1%2%3")
      .arg(offsetMinutes < 0 ? QLatin1Char('-') : QLatin1Char('+'))
      .arg(size / 60, 2, 10, QLatin1Char('0'))
      .arg(size % 60, 2, 10, QLatin1Char('0'));
}

QString timeStampText(const QDateTime& dateTime) {
  return dateTime.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss ")) + zoneOffsetText(dateTime);
}

} // namespace xov
