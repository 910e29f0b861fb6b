#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <cstdlib>

namespace xov {

namespace {

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

QString timeStampText(const QDateTime& dateTime) {
  const int offsetMinutes = dateTime.offsetFromUtc() / 60;
  const int size = std::abs(offsetMinutes);
  return dateTime.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss ")) +
         QStringLiteral("%1%2%3")
             .arg(offsetMinutes < 0 ? QLatin1Char('-') : QLatin1Char('+'))
             .arg(size / 60, 2, 10, QLatin1Char('0'))
             .arg(size % 60, 2, 10, QLatin1Char('0'));
}

} // namespace xov
