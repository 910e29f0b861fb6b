#include "XOV_Graphics/views/seismic/MarkedPickDrawing.h"

#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/platform/Path.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kTriangle = 3; // points, half its width; it is as high as that twice
constexpr double kBarEnd = 2;   // points to both sides of the bar
constexpr double kPredictedDash = 3;

void strokeSegments(std::initializer_list<QLineF> segments) {
  Path path;
  for (const QLineF& segment : segments) {
    path.moveTo(segment.p1());
    path.lineTo(segment.p2());
  }
  GraphicsContext::current().strokePath(path);
}

} // namespace

PickSource::~PickSource() = default;

MarkedPickShape shapeOf(const MarkedPick& pick, const QLineF& line, double pointsPerSecond) {
  MarkedPickShape shape{line, {}, {}};
  if (pick.lowerSeconds || pick.upperSeconds) {
    const double y = line.center().y();
    const double left = line.x1() - pick.lowerSeconds.value_or(0) * pointsPerSecond;
    const double right = line.x1() + pick.upperSeconds.value_or(0) * pointsPerSecond;
    if (std::isfinite(left) && std::isfinite(right)) shape.range = QLineF(left, y, right, y);
  }
  const bool isUp = pick.polarity == PickPolarity::Positive;
  if (isUp || pick.polarity == PickPolarity::Negative) {
    const QPointF end = line.p2();
    const double base = isUp ? -2 * kTriangle : 0;
    const double apex = isUp ? 0 : -2 * kTriangle;
    shape.polarity = {end + QPointF(-kTriangle, base), end + QPointF(kTriangle, base), end + QPointF(0, apex)};
  }
  return shape;
}

void drawShape(const MarkedPick& pick, const MarkedPickShape& shape) {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(pick.color);
  Path path;
  path.moveTo(shape.line.p1());
  path.lineTo(shape.line.p2());
  if (pick.isPredicted) path.setDashes({kPredictedDash, kPredictedDash}, 0);
  context.strokePath(path);
  if (shape.range) {
    const QPointF tip(0, kBarEnd);
    const QLineF& bar = *shape.range;
    strokeSegments({bar, {bar.p1() - tip, bar.p1() + tip}, {bar.p2() - tip, bar.p2() + tip}});
  }
  if (shape.polarity.isEmpty()) return;
  Path triangle;
  triangle.moveTo(shape.polarity[0]);
  triangle.lineTo(shape.polarity[1]);
  triangle.lineTo(shape.polarity[2]);
  triangle.close();
  context.fillPath(triangle);
}

} // namespace xov
