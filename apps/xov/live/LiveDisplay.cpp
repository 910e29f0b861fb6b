#include "apps/xov/live/LiveDisplay.h"

#include <algorithm>

namespace xov::cli {

namespace {

constexpr qint64 kMillisecondsBetweenFits = 1000;
constexpr std::size_t kMostBands = 1000; // more are thinner than a point on any screen

} // namespace

LiveDisplay::LiveDisplay(const SeedLinkSettings& settings, std::shared_ptr<const EventOriginArray> events,
                         double spanSeconds, Edge edge)
    : display_(std::move(events), spanSeconds, edge),
      live_(settings, display_.feed(), kMostBands) {}

void LiveDisplay::attachTo(RealTimeDisplayView& view) {
  display_.attachTo(view);
  show(view);
}

// Extremes only widen while samples arrive: what has left the display is forgotten once in a while.
void LiveDisplay::fitAmplitudes(RealTimeDisplayView& view) {
  if (sinceFit_.isValid() && sinceFit_.elapsed() < kMillisecondsBetweenFits) return;
  sinceFit_.start();
  float largest = 0;
  for (const auto& record : *display_.feed().records()) {
    record->ComputeExtrema();
    largest = std::max(largest, record->absMax());
  }
  if (largest == largest_ || !(largest > 0)) return;
  largest_ = largest;
  const std::optional<PlotPart> part = view.shownPart(); // which limits end
  view.setYLimitsMinMax(-largest, largest);
  view.showPart(part);
}

void LiveDisplay::show(RealTimeDisplayView& view) {
  display_.showUntil(live_.present(), view);
  fitAmplitudes(view);
}

} // namespace xov::cli
