#include "XOV_Graphics/views/image/SlownessCircles.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace xov {

namespace {

constexpr double kKilometresPerDegree = 6371 * std::numbers::pi / 180;
constexpr int kDigits = 3;
const QString kDegreeSign = QString(QChar(0x00b0));

} // namespace

QString circleText(double velocityKmPerS, CircleLabelUnit unit) {
  if (!(velocityKmPerS > 0) || !std::isfinite(velocityKmPerS)) return {};
  const double slowness = 1 / velocityKmPerS;
  switch (unit) {
  case CircleLabelUnit::KilometresPerSecond:
    return QString::number(velocityKmPerS, 'g', kDigits) + QStringLiteral(" km/s");
  case CircleLabelUnit::SecondsPerKilometre:
    return QString::number(slowness, 'g', kDigits) + QStringLiteral(" s/km");
  case CircleLabelUnit::SecondsPerDegree:
    return QString::number(slowness * kKilometresPerDegree, 'g', kDigits) + QStringLiteral(" s/") + kDegreeSign;
  }
  return {};
}

std::vector<PlacedCircleLabel> placeCircleLabels(std::span<const LabelledCircle> circles, QPointF center,
                                                 QPointF peak, const QRectF& frame) {
  // Upwards, unless the peak lies there; a text that leaves the frame at its side is rarer there than below.
  const QPointF away(peak.x() > center.x() ? -1 : 1, peak.y() > center.y() ? -1 : 1);
  std::vector<std::size_t> order(circles.size());
  std::iota(order.begin(), order.end(), std::size_t(0));
  std::ranges::stable_sort(order,
                           [&](std::size_t a, std::size_t b) { return circles[a].radius > circles[b].radius; });
  std::vector<PlacedCircleLabel> placed;
  for (const std::size_t i : order) {
    const LabelledCircle& circle = circles[i];
    if (!(circle.radius > 0) || circle.text.isEmpty()) continue;
    const QPointF middle = center + away * (circle.radius / std::numbers::sqrt2);
    const QRectF box(middle.x() - circle.text.width() / 2, middle.y() - circle.text.height() / 2, circle.text.width(),
                     circle.text.height());
    if (!frame.contains(box) || box.contains(center)) continue;
    if (std::ranges::any_of(placed, [&](const PlacedCircleLabel& other) { return other.box.intersects(box); }))
      continue;
    placed.push_back({i, box});
  }
  return placed;
}

} // namespace xov
