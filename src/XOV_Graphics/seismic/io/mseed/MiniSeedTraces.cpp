#include "XOV_Graphics/seismic/io/mseed/MiniSeedTraces.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <QDateTime>

#include <algorithm>
#include <utility>

namespace xov {

namespace {

constexpr std::int64_t kMicrosecondsPerMillisecond = 1000;
constexpr float kLargestExactInteger = 16777216; // of single precision, that all smaller ones are exact to

std::int64_t millisecondsBefore(std::int64_t us) {
  return us / kMicrosecondsPerMillisecond - (us % kMicrosecondsPerMillisecond < 0 ? 1 : 0);
}

SacText<8> sacText(const QString& text) { return SacText<8>(std::string_view(text.toStdString())); }

SacHeader channelHeader(const ChannelCodes& codes) {
  const auto& [network, station, location, component] = codes;
  SacHeader header;
  header.knetwk = sacText(network);
  header.kstnm = sacText(station);
  header.khole = sacText(location);
  header.kcmpnm = sacText(component);
  header.iftype = kSacTimeSeries;
  header.leven = 1;
  return header;
}

} // namespace

std::size_t& Stretches::openOf(std::size_t piece) {
  if (piece >= open_.size()) open_.resize(piece + 1, kNone);
  return open_[piece];
}

Stretch& Stretches::add(std::size_t piece, const MiniSeedSpan& span) {
  std::size_t& open = openOf(piece);
  if (open == kNone) {
    open = all_.size();
    all_.emplace_back();
  }
  all_[open].extent.add(span);
  return all_[open];
}

void Stretches::breakOff(std::size_t piece) { openOf(piece) = kNone; }

std::vector<Stretch> Stretches::take() {
  const auto start = [](const Stretch& stretch) { return stretch.extent.first.startUs; };
  if (!std::ranges::is_sorted(all_, {}, start)) std::ranges::stable_sort(all_, {}, start);
  open_.clear();
  return std::exchange(all_, {});
}

void MiniSeedTraces::append(const ChannelCodes& codes, std::vector<Stretch> stretches, const QString& path) {
  if (stretches.empty()) return;
  const std::int64_t referenceMs = millisecondsBefore(stretches.front().extent.first.startUs);
  SacHeader header = channelHeader(codes);
  setReferenceTime(header, QDateTime::fromMSecsSinceEpoch(referenceMs, Qt::UTC));
  const auto channel = std::make_shared<const SacHeader>(header);
  const auto add = [this](std::shared_ptr<SacSeismogram> record, const Stretch& stretch) {
    records.push_back(std::move(record));
    tallies.push_back(stretch.tally);
  };
  for (Stretch& stretch : stretches) {
    const PieceTimes times = pieceTimes(stretch.extent, referenceMs);
    if (auto& [samples, count, owner] = stretch.shared; owner != nullptr) {
      add(std::make_shared<SacSeismogram>(channel, times.b, times.delta, std::span(samples, count), std::move(owner),
                                          path),
          stretch);
      continue;
    }
    header.b = float(times.b);
    header.delta = float(times.delta);
    SacFooter precise = footerFromHeader(header);
    precise.b = times.b;
    precise.delta = times.delta;
    if (!stretch.places.empty()) {
      located.push_back({header, precise, std::move(stretch.places), stretch.extent.sampleCount, {}, {}, {}});
      continue;
    }
    add(std::make_shared<SacSeismogram>(header, std::move(stretch.samples), path, precise), stretch);
  }
}

void addToTally(SampleTally& tally, MiniSeedEncoding encoding, std::span<const float> samples) {
  SampleTally added;
  added.add(samples);
  const bool isLarge = std::max(-added.min(), added.max()) > kLargestExactInteger;
  added.setRounded(isLarge && encoding != MiniSeedEncoding::Float32);
  tally.add(added);
}

} // namespace xov
