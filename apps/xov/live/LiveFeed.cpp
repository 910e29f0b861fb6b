#include "apps/xov/live/LiveFeed.h"

#include "apps/xov/terminal/Messages.h"

#include <XOV_Graphics/base/TimeText.h>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace xov::cli {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kSecondsPerDay = 86400;
// Data that are further away than this are no live ones.
constexpr double kFarSeconds = 3600;

QDateTime momentAt(double seconds) {
  return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * kMillisecondsPerSecond), Qt::UTC);
}

} // namespace

LiveFeed::LiveFeed(const SeedLinkSettings& settings, RealTimeFeed& feed, std::size_t mostChannels)
    : feed_(feed),
      mostChannels_(mostChannels),
      tell_(noteToListener()),
      clock_([] { return QDateTime::currentDateTimeUtc(); }),
      client_(settings) {
  client_.onRecord([this](const LiveRecord& record) { take(record); });
  client_.onMessage(tell_);
}

double LiveFeed::nowSeconds() const { return double(clock_().toMSecsSinceEpoch()) / kMillisecondsPerSecond; }

bool LiveFeed::hasRoomFor(const QString& channel) {
  if (offsets_.contains(channel) || offsets_.size() < mostChannels_) return true;
  if (!isFull_) tell_(QStringLiteral("more than %1 channels; the others are left out").arg(mostChannels_));
  isFull_ = true;
  return false;
}

float LiveFeed::offsetOf(const LiveRecord& record) {
  const auto day = qint64(std::floor(record.startSeconds() / kSecondsPerDay));
  const auto [found, isNew] = offsets_.try_emplace(channelName(record.codes));
  Offset& offset = found->second;
  if (isNew || day > offset.day) {
    const double sum = std::accumulate(record.samples.begin(), record.samples.end(), 0.0);
    const auto mean = float(sum / double(record.samples.size()));
    offset = {day, mean, isNew ? mean : offset.now};
  }
  return day < offset.day ? offset.before : offset.now;
}

void LiveFeed::take(const LiveRecord& record) {
  if (record.samples.empty() || !hasRoomFor(channelName(record.codes))) return;
  const double end = record.arrival().sampleSeconds;
  const double ahead = end - nowSeconds();
  if (isLive_ && ahead > kFarSeconds) {
    if (const QString channel = channelName(record.codes); ahead_.insert(channel).second)
      tell_(QStringLiteral("%1: a record of %2 is more than an hour ahead; left out")
                .arg(channel, utcText(momentAt(record.startSeconds()))));
    return;
  }
  isLive_ = isLive_ || std::abs(ahead) <= kFarSeconds;
  const float offset = offsetOf(record);
  std::vector<float> samples = record.samples;
  for (float& sample : samples)
    sample -= offset;
  if (look_) look_(record);
  feed_.append(record.header(), record.startSeconds(), record.deltaSeconds(), samples, record.arrivalSeconds);
  newestSeconds_ = std::max(newestSeconds_.value_or(end), end);
}

QDateTime LiveFeed::present() {
  const double now = nowSeconds();
  if (!hasSamples()) return momentAt(now);
  const double next = isLive_ ? now : *newestSeconds_;
  const double last = presentSeconds_.value_or(next);
  const bool isSetBack = isLive_ && next < last - kFarSeconds;
  presentSeconds_ = isSetBack ? next : std::max(last, next);
  return momentAt(*presentSeconds_);
}

} // namespace xov::cli
