#include "XOV_Graphics/views/seismic/PickMarks.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/Picks.h"

namespace xov {

namespace {

constexpr double kLabelGap = 4;

} // namespace

std::vector<PickMark> visiblePicks(const SeismogramRecord& record, float xmin, float xmax, PickLabelRule rule,
                                   double xOrigin) {
  std::vector<PickMark> marks;
  const auto add = [&](float time, const QColor& color, const QString& label) {
    if (!isDefined(double(time))) return;
    const auto since = float(double(time) - xOrigin);
    if (isPickDrawn(since, xmin, xmax)) marks.push_back({since, color, label});
  };
  const auto label = [&](int key, const QString& fallback, bool stored) {
    return stored ? pickLabelOr(record, key, fallback) : fallback;
  };
  add(record.originTimeOffset(), colors::blue, QStringLiteral("Origin"));
  if (!marks.empty()) marks.front().isOrigin = true;
  add(record.pTime(), colors::darkGray, label(kFirstArrivalKey, QStringLiteral("A"), rule.storedForFirstArrival));
  add(record.timePickKey(kEndOfSignalKey), colors::darkGray, QStringLiteral("F"));
  for (int key = 0; key < kTimePickCount; ++key) {
    add(record.timePickKey(key), colors::darkGray,
        label(key, QLatin1Char('T') + QString::number(key), rule.storedForKeys));
  }
  return marks;
}

double pickX(const QRectF& panel, float time, float xmin, float xmax) {
  return double(time - xmin) * panel.width() / double(xmax - xmin) + panel.x();
}

QLineF pickLine(const QRectF& panel, double x, const PickStyle& style) {
  return {x, panel.y() + style.lineAbove.of(panel), x, panel.y() + panel.height() - style.lineBelow.of(panel)};
}

QPointF pickLabelOrigin(const QRectF& panel, double x, QSizeF size, const PickStyle& style) {
  const double y = panel.y() + panel.height() - style.labelBelow.of(panel);
  if (style.labelPlace == PickStyle::LabelPlace::RightOfLine) return {x + kLabelGap, y - size.height()};
  return {x - size.width() / 2, y};
}

std::array<QPointF, 3> pickLabelPlaces(const QRectF& panel, double x, QSizeF size, const PickStyle& style) {
  const QPointF usual = pickLabelOrigin(panel, x, size, style);
  const QPointF left(x - kLabelGap - size.width(), usual.y());
  const QPointF right(x + kLabelGap, usual.y());
  return {usual, right, left};
}

} // namespace xov
