#include "apps/xov/live/FeedDisplay.h"

#include <cmath>

namespace xov::cli {

namespace {

constexpr double kMillisecondsPerSecond = 1000;

} // namespace

FeedDisplay::FeedDisplay(std::shared_ptr<const EventOriginArray> events, double spanSeconds, Edge edge)
    : feed_(spanSeconds),
      events_(std::move(events)),
      spanSeconds_(spanSeconds),
      edge_(edge) {}

void FeedDisplay::attachTo(RealTimeDisplayView& view) const {
  view.setWvfrmsArray(feed_.records());
  view.setEventOrigins(events_);
  view.setDrawOriginTimes(true);
  view.setOriginOnRight(edge_ == Edge::Right);
}

void FeedDisplay::showUntil(const QDateTime& present, RealTimeDisplayView& view) {
  QDateTime reference = present;
  if (edge_ == Edge::Left) reference = reference.addMSecs(-std::llround(spanSeconds_ * kMillisecondsPerSecond));
  const RealTimeSpan span = feed_.show(reference, spanSeconds_, edge_);
  view.showSpan(span.xmin, span.xmax, reference);
}

} // namespace xov::cli
