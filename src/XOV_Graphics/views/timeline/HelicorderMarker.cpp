#include "XOV_Graphics/views/timeline/HelicorderMarker.h"

#include "XOV_Graphics/platform/Colors.h"

#include <cmath>

namespace xov {

namespace {

constexpr std::int64_t kMillisecondsPerSecond = 1000;

struct MarkerStyle {
  float magnitude; ///< from this one on
  QColor color;
  double width;
};

bool reaches(const EventOrigin& event, float magnitude) {
  return event.mb() >= magnitude || event.Ms() >= magnitude || event.Mw() >= magnitude;
}

void applyStyle(HelicorderMarker& marker, const EventOrigin& event) {
  static const MarkerStyle kStyles[] = {{5, colors::orange, 2}, {6, colors::red, 4}, {7, colors::red, 6}};
  marker.color = colors::lightGray;
  marker.width = 2;
  for (const MarkerStyle& style : kStyles) {
    if (!reaches(event, style.magnitude)) continue;
    marker.color = style.color;
    marker.width = style.width;
  }
}

} // namespace

std::int64_t wholeSecondsSince(const QDateTime& start, const QDateTime& date) {
  return start.msecsTo(date) / kMillisecondsPerSecond;
}

std::optional<HelicorderMarker> helicorderMarker(const HelicorderPage& page, const PageTime& time,
                                                 const EventOrigin& event, float magThreshold) {
  const QDateTime date = event.oDate();
  if (!date.isValid() || !time.start.isValid()) return std::nullopt;
  const auto seconds = double(wholeSecondsSince(time.start, date));
  if (!(seconds >= 0 && seconds <= time.duration) || !reaches(event, magThreshold)) return std::nullopt;
  const double placed = seconds + double(time.offset);
  const double rowDuration = page.rowDuration;
  const double rowStart = std::floor(placed / rowDuration) * rowDuration;
  const double top = page.rowTop(rowStart / rowDuration);
  const double x = page.xAt(placed - rowStart);
  HelicorderMarker marker;
  marker.line = {x, top - page.rowHeight(), x, top};
  applyStyle(marker, event);
  return marker;
}

} // namespace xov
