#include "apps/xov/live/LiveDisplay.h"

#include "apps/xov/terminal/Messages.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace xov::cli {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
// Data that are further away than this are no live ones.
constexpr double kFarSeconds = 3600;
constexpr qint64 kMillisecondsBetweenFits = 1000;

} // namespace

LiveDisplay::LiveDisplay(const SeedLinkSettings& settings, std::shared_ptr<const EventOriginArray> events,
                         double spanSeconds, Edge edge)
    : feed_(spanSeconds),
      events_(std::move(events)),
      spanSeconds_(spanSeconds),
      edge_(edge),
      client_(settings) {
  client_.onRecord([this](const LiveRecord& record) { take(record); });
  client_.onMessage([](const QString& line) { note(line); });
}

void LiveDisplay::attachTo(RealTimeDisplayView& view) {
  view.setWvfrmsArray(feed_.records());
  view.setEventOrigins(events_);
  view.setDrawOriginTimes(true);
  view.setOriginOnRight(edge_ == Edge::Right);
  show(view);
}

void LiveDisplay::start() { client_.start(); }

void LiveDisplay::take(const LiveRecord& record) {
  const QString channel = channelName(record.codes);
  auto offset = offsets_.find(channel);
  if (offset == offsets_.end()) {
    const double sum = std::accumulate(record.samples.begin(), record.samples.end(), 0.0);
    offset = offsets_.emplace(channel, float(sum / double(record.samples.size()))).first;
  }
  std::vector<float> samples = record.samples;
  for (float& sample : samples)
    sample -= offset->second;
  feed_.append(record.header(), record.startSeconds(), record.deltaSeconds(), samples);
  newestSeconds_ =
      std::max(newestSeconds_, record.startSeconds() + double(record.samples.size()) * record.deltaSeconds());
}

QDateTime LiveDisplay::reference() const {
  const QDateTime now = QDateTime::currentDateTimeUtc();
  const double seconds = double(now.toMSecsSinceEpoch()) / kMillisecondsPerSecond;
  if (!hasSamples() || std::abs(seconds - newestSeconds_) <= kFarSeconds + spanSeconds_) return now;
  return QDateTime::fromMSecsSinceEpoch(std::llround(newestSeconds_ * kMillisecondsPerSecond), Qt::UTC);
}

// Extremes only widen while samples arrive: what has left the display is forgotten once in a while.
void LiveDisplay::fitAmplitudes(RealTimeDisplayView& view) {
  if (sinceFit_.isValid() && sinceFit_.elapsed() < kMillisecondsBetweenFits) return;
  sinceFit_.start();
  float largest = 0;
  for (const auto& record : *feed_.records()) {
    record->ComputeExtrema();
    largest = std::max(largest, record->absMax());
  }
  if (largest == largest_ || !(largest > 0)) return;
  largest_ = largest;
  view.setYLimitsMinMax(-largest, largest);
}

void LiveDisplay::show(RealTimeDisplayView& view) {
  QDateTime end = reference();
  if (edge_ == Edge::Left) end = end.addMSecs(-std::llround(spanSeconds_ * kMillisecondsPerSecond));
  const RealTimeSpan span = feed_.show(end, spanSeconds_, edge_);
  fitAmplitudes(view);
  view.setXLimitsMinMax(span.xmin, span.xmax);
  view.setRefDate(end);
}

} // namespace xov::cli
