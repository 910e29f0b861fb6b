#include "XOV_Graphics/seismic/realtime/Replayer.h"

#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <utility>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kShortestPacketSeconds = 0.1;
constexpr double kFarthestMs = 1e15;          // about 32000 years from 1970
constexpr double kRandomRange = 4294967296.0; // of the generator's 32 bits

/// Numbers that are the same on every machine, which the distributions of the standard library are not.
class Randomness {
public:
  explicit Randomness(std::uint32_t seed) : generator_(seed) {}

  /// A number from 0 to below 1.
  double fraction() { return double(generator_()) / kRandomRange; }
  double between(double low, double high) { return low + (high - low) * fraction(); }

private:
  std::mt19937 generator_;
};

/// How the packets of a channel come.
struct Delivery {
  double packetSeconds = 1;
  double latencySeconds = 0;
};

double notNegative(double value) { return value > 0 && std::isfinite(value) ? value : 0; }

Delivery drawDelivery(const ReplayOptions& options, Randomness& random) {
  const double shortest = std::max(notNegative(options.shortestPacketSeconds), kShortestPacketSeconds);
  const double longest = std::max(notNegative(options.longestPacketSeconds), shortest);
  const double packet = random.between(shortest, longest);
  return {packet, random.between(0, notNegative(options.longestLatencySeconds))};
}

int samplesPerPacket(double packetSeconds, double deltaSeconds, int npts) {
  const double count = std::round(packetSeconds / deltaSeconds);
  return count < double(npts) ? std::max(int(count), 1) : npts;
}

} // namespace

Replayer::Replayer(const SeismogramArray& recorded, const ReplayOptions& options)
    : speed_(notNegative(options.speed) > 0 ? options.speed : 1) {
  for (const auto& record : recorded) {
    if (!record || record->npts() < 1 || record->GetSacHeader() == nullptr) continue;
    const std::optional<double> start = startSeconds(*record);
    const double delta = intervalSeconds(*record);
    if (start && std::isfinite(*start) && delta > 0 && std::isfinite(delta))
      pieces_.push_back({record, *start, delta});
  }
  if (pieces_.empty()) return;
  startSeconds_ = options.start.isValid() ? double(options.start.toMSecsSinceEpoch()) / kMillisecondsPerSecond
                                          : std::ranges::min(pieces_, {}, &Piece::startSeconds).startSeconds;
  cutIntoPackets(options);
}

void Replayer::cutIntoPackets(const ReplayOptions& options) {
  Randomness random(options.seed);
  std::map<QString, Delivery> deliveries;
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    const Piece& piece = pieces_[i];
    const auto [known, isNew] = deliveries.try_emplace(piece.record->labelString());
    if (isNew) known->second = drawDelivery(options, random);
    const Delivery& delivery = known->second;
    const int npts = piece.record->npts();
    const int step = samplesPerPacket(delivery.packetSeconds, piece.deltaSeconds, npts);
    for (int first = 0; first < npts; first += std::min(step, npts - first)) {
      const int count = std::min(step, npts - first);
      const bool isLate = random.fraction() < options.lateShare;
      const double complete = piece.startSeconds + (double(first) + double(count)) * piece.deltaSeconds;
      const double delay = delivery.latencySeconds + (isLate ? notNegative(options.latenessSeconds) : 0);
      packets_.push_back({complete + delay, i, first, count});
    }
  }
  std::ranges::stable_sort(packets_, {}, &Packet::arrivalSeconds);
}

void Replayer::advanceTo(double clockSeconds, RealTimeFeed& feed) {
  if (!std::exchange(hasChannels_, true)) {
    for (const Piece& piece : pieces_)
      feed.channel(*piece.record->GetSacHeader());
  }
  if (std::isfinite(clockSeconds)) clockSeconds_ = std::max(clockSeconds_, clockSeconds);
  const double reached = startSeconds_ + clockSeconds_ * speed_;
  for (; next_ < packets_.size() && packets_[next_].arrivalSeconds <= reached; ++next_) {
    const Packet& packet = packets_[next_];
    const Piece& piece = pieces_[packet.piece];
    feed.append(*piece.record->GetSacHeader(), piece.startSeconds + double(packet.first) * piece.deltaSeconds,
                piece.deltaSeconds, {piece.record->GetSacSeis() + packet.first, std::size_t(packet.count)});
  }
}

QDateTime Replayer::now() const {
  if (pieces_.empty()) return {};
  const double reached = (startSeconds_ + clockSeconds_ * speed_) * kMillisecondsPerSecond;
  return QDateTime::fromMSecsSinceEpoch(qint64(std::floor(std::clamp(reached, -kFarthestMs, kFarthestMs))), Qt::UTC);
}

double Replayer::durationSeconds() const {
  if (packets_.empty()) return 0;
  return std::max((packets_.back().arrivalSeconds - startSeconds_) / speed_, 0.0);
}

} // namespace xov
