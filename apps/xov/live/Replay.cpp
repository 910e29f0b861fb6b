#include "apps/xov/inputs/Replay.h"

#include <XOV_Graphics/seismic/prepare/Amplitudes.h>
#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

constexpr double kMillisecondsPerSecond = 1000;

ReplayOptions options(const ReplaySettings& settings) {
  ReplayOptions options;
  options.speed = settings.speed;
  options.start = settings.start;
  return options;
}

} // namespace

Replay::Replay(const SeismogramArray& recorded, std::shared_ptr<const EventOriginArray> events,
               const ReplaySettings& settings)
    : events_(std::move(events)),
      settings_(settings),
      recorded_(withoutMeans(recorded, MeanOf::Channel)),
      replayer_(recorded_, options(settings)),
      feed_(settings.spanSeconds) {}

void Replay::attachTo(RealTimeDisplayView& view) {
  const float largest = largestAmplitude(recorded_);
  const std::shared_ptr<const SeismogramArray> shown = feed_.records(); // the feed keeps it
  view.setWvfrmsArray(shown);
  view.setEventOrigins(events_);
  view.setDrawOriginTimes(true);
  view.setOriginOnRight(settings_.edge == Edge::Right);
  view.setYLimitsMinMax(-largest, largest);
  showAt(0, view);
}

void Replay::showAt(double clockSeconds, RealTimeDisplayView& view) {
  replayer_.advanceTo(clockSeconds, feed_);
  QDateTime reference = replayer_.now();
  if (settings_.edge == Edge::Left)
    reference = reference.addMSecs(-std::llround(settings_.spanSeconds * kMillisecondsPerSecond));
  const RealTimeSpan span = feed_.show(reference, settings_.spanSeconds, settings_.edge);
  view.setXLimitsMinMax(span.xmin, span.xmax);
  view.setRefDate(reference);
}

} // namespace xov::cli
