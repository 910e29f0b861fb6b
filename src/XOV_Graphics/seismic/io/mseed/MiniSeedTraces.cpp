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

ChannelTraces::ChannelTraces(MiniSeedTraces& traces, const ChannelCodes& codes, std::int64_t startUs,
                             const QString& path)
    : traces_(traces),
      referenceMs_(millisecondsBefore(startUs)),
      path_(path),
      header_(channelHeader(codes)) {
  setReferenceTime(header_, QDateTime::fromMSecsSinceEpoch(referenceMs_, Qt::UTC));
}

/// What pieces share whose samples lie in the same memory: mostly that of the piece before.
const std::shared_ptr<const SacChannel>& ChannelTraces::channelWith(const std::shared_ptr<const void>& owner) {
  if (latest_ && latest_->owner() == owner) return latest_;
  auto& channel = channels_[owner.get()];
  if (!channel) channel = std::make_shared<SacChannel>(header_, path_, owner);
  return latest_ = channel;
}

void ChannelTraces::add(const PieceExtent& extent, const Stretch::SharedSamples& samples) {
  const PieceTiming times = pieceTiming(extent, referenceMs_);
  traces_.records.push_back(std::make_shared<SacSeismogram>(
      channelWith(samples.owner), times.b, times.delta, std::span(samples.samples, samples.count), samples.extrema));
}

void ChannelTraces::add(Stretch stretch) {
  if (stretch.shared.owner != nullptr) return add(stretch.extent, stretch.shared);
  const PieceTiming times = pieceTiming(stretch.extent, referenceMs_);
  SacHeader header = header_;
  header.b = float(times.b);
  header.delta = float(times.delta);
  SacFooter precise = footerFromHeader(header);
  precise.b = times.b;
  precise.delta = times.delta;
  if (!stretch.places.empty()) {
    traces_.located.push_back({header, precise, std::move(stretch.places), stretch.extent.sampleCount, {}, {}, {}});
    return;
  }
  if (stretch.samples.empty()) traces_.tallies.push_back(stretch.tally);
  traces_.records.push_back(std::make_shared<SacSeismogram>(header, std::move(stretch.samples), path_, precise));
}

void MiniSeedTraces::append(const ChannelCodes& codes, std::vector<Stretch> stretches, const QString& path) {
  if (stretches.empty()) return;
  ChannelTraces channel(*this, codes, stretches.front().extent.first.startUs, path);
  for (Stretch& stretch : stretches)
    channel.add(std::move(stretch));
}

void addToTally(SampleTally& tally, MiniSeedEncoding encoding, std::span<const float> samples) {
  SampleTally added;
  added.add(samples);
  const bool isLarge = std::max(-added.min(), added.max()) > kLargestExactInteger;
  added.setRounded(isLarge && encoding != MiniSeedEncoding::Float32);
  tally.add(added);
}

} // namespace xov
