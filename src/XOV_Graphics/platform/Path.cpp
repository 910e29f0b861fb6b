#include "XOV_Graphics/platform/Path.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace xov {

namespace {

// Larger coordinates would overflow in the arithmetic of curves and strokes; NaN fails the comparison, too.
constexpr double kLargestCoordinate = 1e100;

bool isFinite(QPointF point) {
  return std::abs(point.x()) < kLargestCoordinate && std::abs(point.y()) < kLargestCoordinate;
}

bool isFinite(const QRectF& rect) { return isFinite(rect.topLeft()) && isFinite(rect.bottomRight()); }

// The polylines of one trace: a sample that breaks the line ends one and starts the next.
void appendPolylines(const Trace& trace, std::vector<QPolygonF>& lines) {
  QPolygonF line;
  trace.forEachPoint([&](QPointF point) {
    if (isFinite(point)) {
      line << point;
    } else if (!line.isEmpty()) {
      lines.push_back(std::exchange(line, {}));
    }
  });
  if (!line.isEmpty()) lines.push_back(line);
}

} // namespace

Path Path::rect(const QRectF& rect) {
  Path path;
  path.appendRect(rect);
  return path;
}

Path Path::fromShape(const QPainterPath& shape) {
  Path path;
  path.shape_ = shape;
  path.penUp_ = shape.isEmpty();
  return path;
}

// A point that is not finite lifts the pen; QPainterPath would drop it with a warning and draw on.
bool Path::accepts(QPointF point) {
  if (isFinite(point)) return true;
  penUp_ = true;
  return false;
}

void Path::moveTo(QPointF point) {
  if (!accepts(point)) return;
  shape_.moveTo(point);
  penUp_ = false;
}

void Path::lineTo(QPointF point) {
  if (!accepts(point)) return;
  if (penUp_) {
    moveTo(point);
  } else {
    shape_.lineTo(point);
  }
}

void Path::curveTo(QPointF control1, QPointF control2, QPointF point) {
  if (!accepts(control1) || !accepts(control2) || !accepts(point)) return;
  if (penUp_) moveTo(control1);
  shape_.cubicTo(control1, control2, point);
}

void Path::close() {
  if (!penUp_) shape_.closeSubpath();
}

void Path::appendRect(const QRectF& rect) {
  if (!isFinite(rect)) return;
  moveTo(rect.topLeft());
  lineTo(rect.topRight());
  lineTo(rect.bottomRight());
  lineTo(rect.bottomLeft());
  close();
}

void Path::appendOval(const QRectF& rect) {
  if (!isFinite(rect)) return;
  shape_.addEllipse(rect);
  penUp_ = false;
}

void Path::appendArc(QPointF center, double radius, double startDegrees, double endDegrees) {
  if (!isFinite(center) || !std::isfinite(radius) || !std::isfinite(startDegrees) || !std::isfinite(endDegrees))
    return;
  double sweep = std::fmod(endDegrees - startDegrees, 360.0);
  if (sweep <= 0) sweep += 360.0;
  // QPainterPath measures angles for y downwards; mirroring the rectangle's angles gives y upwards.
  const QRectF box(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius);
  if (penUp_) {
    shape_.arcMoveTo(box, -startDegrees);
    penUp_ = false;
  }
  shape_.arcTo(box, -startDegrees, -sweep);
}

void Path::appendTrace(const Trace& trace) {
  if (!trace.isEmpty()) traces_.push_back(trace);
}

void Path::removeAllPoints() {
  shape_ = QPainterPath();
  traces_.clear();
  penUp_ = true;
}

void Path::setLineWidth(double width) { lineWidth_ = std::isfinite(width) ? std::max(0.0, width) : 0.0; }

void Path::setDashes(const std::vector<double>& lengths, double phase) {
  const bool valid =
      std::all_of(lengths.begin(), lengths.end(), [](double l) { return std::isfinite(l) && l >= 0; }) &&
      std::accumulate(lengths.begin(), lengths.end(), 0.0) > 0;
  dashes_ = valid ? lengths : std::vector<double>();
  dashPhase_ = valid && std::isfinite(phase) ? phase : 0;
}

Path Path::transformed(const QTransform& t) const {
  if (t.isIdentity()) return *this;
  Path result = *this;
  result.shape_ = t.map(shape_);
  result.traces_.clear();
  for (Trace trace : traces_) {
    if (t.type() <= QTransform::TxScale) {
      trace.xScale *= t.m11();
      trace.xOffset = trace.xOffset * t.m11() + t.dx();
      trace.yScale *= t.m22();
      trace.yOffset = trace.yOffset * t.m22() + t.dy();
      result.traces_.push_back(trace);
      continue;
    }
    std::vector<QPolygonF> lines;
    appendPolylines(trace, lines);
    for (const QPolygonF& line : lines)
      result.shape_.addPolygon(t.map(line));
  }
  return result;
}

std::vector<QPolygonF> Path::polylines() const {
  std::vector<QPolygonF> lines;
  for (const QPolygonF& line : shape_.toSubpathPolygons())
    lines.push_back(line);
  for (const Trace& trace : traces_)
    appendPolylines(trace, lines);
  return lines;
}

} // namespace xov
