#include "apps/xov/live/LiveDrum.h"

#include <XOV_Graphics/platform/Colors.h>
#include <XOV_Graphics/seismic/prepare/DrumPage.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <algorithm>
#include <utility>

namespace xov::cli {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr std::size_t kMostDrums = 100; // each holds a day of samples: at 100 a second 36 MB

} // namespace

namespace {

void putPieces(const std::shared_ptr<const SeismogramArray>& pieces, std::optional<double> gain,
               helicorderView& view) {
  view.setWvfrmArray(pieces);
  view.setGainFactor(float(gain.value_or(drumGain(*pieces))));
}

} // namespace

void putPage(const std::shared_ptr<const SeismogramArray>& pieces, const QDateTime& day, std::optional<double> gain,
             helicorderView& view) {
  putPieces(pieces, gain, view); // without pieces there is no part to end
  view.setPageStart(day);
}

LiveDrum::LiveDrum(const SeedLinkSettings& settings, LiveDrumLook look, DrumDays::Keep keep)
    : look_(std::move(look)),
      days_(std::move(keep)),
      live_(settings, days_.feed(), kMostDrums) {
  live_.beforeEach([this](const LiveRecord& record) { days_.expect(record); });
}

void LiveDrum::show(helicorderView& view) {
  if (!live_.hasSamples()) return; // what day it is at the server is not known yet
  const QDateTime present = live_.present();
  days_.advanceTo(present);
  const DrumSheet sheet = days_.sheet(shown_);
  pieces_ = std::make_shared<const SeismogramArray>(sheet.records);
  // A day that begins anew ends what part of it is shown.
  const std::pair<const void*, QDateTime> shown{&view, sheet.start};
  if (std::exchange(shownOn_, shown) == shown && view.pageStart().isValid())
    putPieces(pieces_, look_.gain, view);
  else
    putPage(pieces_, sheet.start, look_.gain, view);
  view.setTitle(look_.title);
  view.setWindowTitle(days_.channelCount() == 1
                          ? QStringLiteral("xov drum")
                          : QStringLiteral("xov drum, page %1 of %2").arg(shown_ + 1).arg(days_.channelCount()));
  tellLatency(*days_.feed().records()->at(shown_), present, view);
}

// A drum has one channel: its latency stands under the title, and all of it turns grey.
void LiveDrum::tellLatency(const SeismogramRecord& record, const QDateTime& present, helicorderView& view) const {
  const double end = double(referenceTimeOf(record).msecsTo(present)) / kMillisecondsPerSecond;
  const double latency = end - double(record.e());
  if (look_.late.isShown) view.setSubtitle(QStringLiteral("latency ") + latencyText(latency));
  const bool isLate = look_.late.seconds > 0 && latency > look_.late.seconds;
  view.setRowColors(isLate ? std::vector<QColor>{colors::lightGray} : look_.rowColors);
}

void LiveDrum::turn(int channels) {
  const auto count = std::int64_t(days_.channelCount());
  shown_ =
      std::size_t(std::clamp<std::int64_t>(std::int64_t(shown_) + channels, 0, std::max<std::int64_t>(count, 1) - 1));
}

void LiveDrum::leave() {
  live_.stop();
  if (live_.hasSamples()) days_.keepAllBefore(live_.present());
}

} // namespace xov::cli
