#include "apps/xov/live/Replay.h"

#include <XOV_Graphics/seismic/prepare/Amplitudes.h>

namespace xov::cli {

namespace {

ReplayOptions options(const ReplaySettings& settings) {
  ReplayOptions options;
  options.speed = settings.speed;
  options.start = settings.start;
  return options;
}

} // namespace

Replay::Replay(const SeismogramArray& recorded, std::shared_ptr<const EventOriginArray> events,
               const ReplaySettings& settings)
    : recorded_(withoutMeans(recorded, MeanOf::Channel)),
      replayer_(recorded_, options(settings)),
      display_(std::move(events), settings.spanSeconds, settings.edge) {}

void Replay::attachTo(RealTimeDisplayView& view) {
  const float largest = largestAmplitude(recorded_);
  display_.attachTo(view);
  view.setYLimitsMinMax(-largest, largest);
  showAt(0, view);
}

void Replay::showAt(double clockSeconds, RealTimeDisplayView& view) {
  replayer_.advanceTo(clockSeconds, display_.feed());
  display_.showUntil(replayer_.now(), view);
}

} // namespace xov::cli
