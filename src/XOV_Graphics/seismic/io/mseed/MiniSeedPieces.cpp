#include "XOV_Graphics/seismic/io/mseed/MiniSeedPieces.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace xov {

namespace {

constexpr double kMicrosecondsPerSecond = 1e6;
constexpr double kLongestUs = 1e17; // three thousand years
constexpr std::int64_t kMicrosecondsPerMillisecond = 1000;
constexpr double kRateTolerance = 1e-4;
constexpr std::int64_t kMostSamples = std::numeric_limits<int>::max();
// Of pieces that all could go on with a record, this many are looked at: real files have one.
constexpr int kMostCandidates = 16;
// A piece goes on within half a sample of its end: so many samples and microseconds behind it, it is over.
constexpr double kReach = 0.51;
constexpr double kRoundingUs = 1000;

std::int64_t duration(const MiniSeedSpan& span) {
  return std::llround(std::min(span.sampleCount / span.rateHz * kMicrosecondsPerSecond, kLongestUs));
}

std::int64_t halfSample(const MiniSeedSpan& span) { return std::llround(kMicrosecondsPerSecond / 2 / span.rateHz); }

} // namespace

bool PieceJoiner::OpenPiece::takes(const PieceExtent& extent) const {
  return std::abs(1 - extent.first.rateHz / rateHz) < kRateTolerance &&
         sampleCount + extent.sampleCount <= kMostSamples;
}

PieceJoiner::OpenPieces::iterator PieceJoiner::pieceBefore(const PieceExtent& extent) {
  const MiniSeedSpan& span = extent.first;
  const std::int64_t tolerance = halfSample(span);
  auto best = open_.end();
  auto candidate = open_.lower_bound(span.startUs - tolerance);
  for (int i = 0; i < kMostCandidates && candidate != open_.end(); ++i, ++candidate) {
    if (candidate->first > span.startUs + tolerance) break;
    const auto distance = [&](auto piece) { return std::abs(piece->first - span.startUs); };
    if (candidate->second.takes(extent) && (best == open_.end() || distance(candidate) < distance(best)))
      best = candidate;
  }
  return best;
}

/// Sets those aside that end too long before a record for it, and so for all that come after it.
void PieceJoiner::forgetBefore(std::int64_t startUs) {
  const auto isOver = [startUs](const OpenPieces::value_type& piece) {
    const double reach = kReach * kMicrosecondsPerSecond / piece.second.rateHz + kRoundingUs;
    return double(piece.first) + reach < double(startUs);
  };
  while (!open_.empty() && isOver(*open_.begin()))
    spare_ = open_.extract(open_.begin());
}

std::size_t PieceJoiner::add(const MiniSeedSpan& span) { return add(PieceExtent{span, span, span.sampleCount}); }

std::size_t PieceJoiner::add(const PieceExtent& extent) {
  const std::int64_t endUs = extent.last.startUs + duration(extent.last);
  forgetBefore(extent.first.startUs);
  if (const auto before = pieceBefore(extent); before != open_.end()) {
    OpenPieces::node_type node = open_.extract(before);
    node.key() = endUs;
    node.mapped().sampleCount += extent.sampleCount;
    return open_.insert(std::move(node))->second.number;
  }
  const OpenPiece piece{count_, extent.first.rateHz, extent.sampleCount};
  if (spare_.empty()) {
    open_.emplace(endUs, piece);
  } else {
    spare_.key() = endUs;
    spare_.mapped() = piece;
    open_.insert(std::move(spare_));
  }
  return count_++;
}

void PieceExtent::add(const MiniSeedSpan& span) {
  if (sampleCount == 0) first = span;
  last = span;
  sampleCount += span.sampleCount;
}

void PieceExtent::add(const PieceExtent& next) {
  if (sampleCount == 0) first = next.first;
  last = next.last;
  sampleCount += next.sampleCount;
}

PieceTiming pieceTiming(const PieceExtent& extent, std::int64_t referenceMs) {
  const MiniSeedSpan& first = extent.first;
  if (extent.sampleCount == 0) return {};
  const double nominal = 1 / first.rateHz;
  const auto before = double(extent.sampleCount - extent.last.sampleCount);
  const double elapsed = double(extent.last.startUs - first.startUs) / kMicrosecondsPerSecond;
  const bool drifted = before > 0 && std::abs(elapsed - before * nominal) > nominal / 2;
  return {double(first.startUs - referenceMs * kMicrosecondsPerMillisecond) / kMicrosecondsPerSecond,
          drifted ? elapsed / before : nominal};
}

} // namespace xov
