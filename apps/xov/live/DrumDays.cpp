#include "apps/xov/live/DrumDays.h"

#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

constexpr double kSecondsPerDay = 86400;
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kGraceSeconds = 300;                  // in which late packets find their place
constexpr double kHeldSeconds = kSecondsPerDay + 3600; // of each channel
constexpr qint64 kMostDaysHeld = 2;                    // that so many seconds reach into, besides the last one
constexpr double kFarthestDay = 1e7;                   // from 1970, some thirty thousand years
constexpr qint64 kRoundedMilliseconds = 6;

QDateTime midnight(qint64 day) { return QDateTime::fromSecsSinceEpoch(day * qint64(kSecondsPerDay), Qt::UTC); }

// The last moment of a day: midnight belongs to the one that begins. Further from it than single precision rounds the
// times of a day, within which a sample counts as on the border.
QDateTime endOf(qint64 day) { return midnight(day + 1).addMSecs(-kRoundedMilliseconds); }

qint64 dayAt(double seconds) {
  return qint64(std::clamp(std::floor(seconds / kSecondsPerDay), -kFarthestDay, kFarthestDay));
}

double secondsOf(const QDateTime& moment) { return double(moment.toMSecsSinceEpoch()) / kMillisecondsPerSecond; }

} // namespace

DrumDays::DrumDays(Keep keep) : keep_(std::move(keep)), feed_(kHeldSeconds) {}

std::size_t DrumDays::indexOf(const LiveRecord& record) {
  const SeismogramRecord* const known = &feed_.channel(record.header());
  const SeismogramArray& records = *feed_.records();
  const auto found = std::ranges::find(records, known, [](const auto& each) { return each.get(); });
  const auto index = std::size_t(found - records.begin());
  if (index == channels_.size()) {
    channels_.push_back(
        {std::make_shared<RecordWindow>(*found, QDateTime(), QDateTime()), dayAt(record.startSeconds())});
    showDay(channels_.back());
  }
  return index;
}

void DrumDays::expect(const LiveRecord& record) {
  Channel& channel = channels_[indexOf(record)];
  keepDays(channel, dayAt(record.arrival().sampleSeconds - kGraceSeconds));
}

void DrumDays::advanceTo(const QDateTime& present) {
  const double seconds = secondsOf(present);
  if (const qint64 day = dayAt(seconds); !day_ || day > *day_) {
    day_ = day;
    feed_.setBaseTime(midnight(day));
    for (Channel& channel : channels_)
      showDay(channel);
  }
  for (Channel& channel : channels_)
    keepDays(channel, dayAt(seconds - kGraceSeconds));
}

void DrumDays::keepAllBefore(const QDateTime& present) {
  for (Channel& channel : channels_)
    keepDays(channel, dayAt(secondsOf(present)));
}

// Keeps the days before `end` that were not kept yet, as far as the channel has samples of them.
void DrumDays::keepDays(Channel& channel, qint64 end) {
  const qint64 first = std::max(channel.firstUnkept, end - 1 - kMostDaysHeld);
  channel.firstUnkept = std::max(channel.firstUnkept, end);
  for (qint64 day = first; day < end; ++day) {
    // On a page the times count from its midnight.
    feed_.setBaseTime(midnight(day));
    channel.page->setSpan(midnight(day), endOf(day));
    if (channel.page->npts() > 0 && keep_) keep_({{channel.page}, midnight(day), midnight(day + 1)});
  }
  if (first >= end) return;
  if (day_) feed_.setBaseTime(midnight(*day_));
  showDay(channel);
}

void DrumDays::showDay(Channel& channel) const {
  if (day_) channel.page->setSpan(midnight(*day_), endOf(*day_));
}

QDateTime DrumDays::day() const { return day_ ? midnight(*day_) : QDateTime(); }

DrumSheet DrumDays::sheet(std::size_t channel) const { return {{channels_[channel].page}, day(), day().addDays(1)}; }

} // namespace xov::cli
