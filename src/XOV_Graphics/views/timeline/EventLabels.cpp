#include "XOV_Graphics/views/timeline/EventLabels.h"

#include "XOV_Graphics/seismic/Hypocentre.h"

#include <algorithm>
#include <array>
#include <optional>

namespace xov {

namespace {

constexpr std::size_t kMostMarks = 1000;
constexpr double kGap = 3; // from the mark

bool isFree(const QRectF& box, const std::vector<EventLabel>& labels) {
  return std::ranges::none_of(labels, [&](const EventLabel& label) { return label.box.intersects(box); });
}

std::optional<QRectF> placeFor(const EventMark& mark, const QSizeF& size, const QRectF& frame,
                               const std::vector<EventLabel>& labels) {
  const double gap = kGap + mark.width / 2;
  const double right = mark.line.x2() + gap;
  const double left = mark.line.x2() - gap - size.width();
  const double upper = mark.line.y2() - size.height();
  const double lower = mark.line.y1();
  const std::array<QPointF, 6> corners = {QPointF(right, upper), {left, upper},           {right, lower},
                                          {left, lower},         {right, mark.line.y2()}, {left, mark.line.y2()}};
  for (const QPointF& corner : corners) {
    const QRectF box(corner, size);
    if (box.left() >= frame.left() && box.right() <= frame.right() && isFree(box, labels)) return box;
  }
  return std::nullopt;
}

} // namespace

float largestMagnitude(const EventOrigin& event) {
  return isDefined(double(event.magnitude())) ? event.magnitude() : std::max({event.mb(), event.Ms(), event.Mw()});
}

QString eventText(const EventOrigin& event) {
  QString text;
  if (const float magnitude = largestMagnitude(event); isDefined(double(magnitude)))
    text = QStringLiteral("M %1").arg(double(magnitude), 0, 'f', 1);
  const auto* const known = dynamic_cast<const Hypocentre*>(&event);
  if (known != nullptr && !known->values().name.isEmpty()) text += QLatin1Char(' ') + known->values().name;
  return text.simplified();
}

std::vector<EventLabel> layOutEventLabels(std::vector<EventMark> marks, const QRectF& frame,
                                          const TextAttributes& font) {
  std::ranges::stable_sort(marks, std::greater<>(), &EventMark::magnitude);
  if (marks.size() > kMostMarks) marks.resize(kMostMarks);
  std::vector<EventLabel> labels;
  for (const EventMark& mark : marks) {
    if (mark.text.isEmpty()) continue;
    if (const auto box = placeFor(mark, font.size(mark.text), frame, labels)) labels.push_back({mark.text, *box});
  }
  return labels;
}

} // namespace xov
