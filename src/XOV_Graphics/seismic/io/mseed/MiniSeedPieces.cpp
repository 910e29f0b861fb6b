#include "XOV_Graphics/seismic/io/mseed/MiniSeedPieces.h"

#include <cmath>
#include <limits>
#include <map>

namespace xov {

namespace {

constexpr double kMicrosecondsPerSecond = 1e6;
constexpr std::int64_t kMicrosecondsPerMillisecond = 1000;
constexpr double kRateTolerance = 1e-4;
constexpr std::int64_t kMostSamples = std::numeric_limits<int>::max();
// Of pieces that all could go on with a record, this many are looked at: real files have one.
constexpr int kMostCandidates = 16;

std::int64_t duration(const RecordSpan& span) {
  return std::llround(span.sampleCount / span.rateHz * kMicrosecondsPerSecond);
}

std::int64_t halfSample(const RecordSpan& span) { return std::llround(kMicrosecondsPerSecond / 2 / span.rateHz); }

/// A piece that further records may continue.
struct OpenPiece {
  std::size_t number = 0;
  double rateHz = 0;
  std::int64_t sampleCount = 0;

  bool takes(const RecordSpan& span) const {
    return std::abs(1 - span.rateHz / rateHz) < kRateTolerance && sampleCount + span.sampleCount <= kMostSamples;
  }
};

/// Open pieces by the time at which the next record should start.
using OpenPieces = std::multimap<std::int64_t, OpenPiece>;

OpenPieces::iterator pieceBefore(OpenPieces& open, const RecordSpan& span) {
  const std::int64_t tolerance = halfSample(span);
  auto best = open.end();
  auto candidate = open.lower_bound(span.startUs - tolerance);
  for (int i = 0; i < kMostCandidates && candidate != open.end(); ++i, ++candidate) {
    if (candidate->first > span.startUs + tolerance) break;
    const auto distance = [&](auto piece) { return std::abs(piece->first - span.startUs); };
    if (candidate->second.takes(span) && (best == open.end() || distance(candidate) < distance(best)))
      best = candidate;
  }
  return best;
}

} // namespace

std::vector<std::vector<std::size_t>> joinRecords(const std::vector<RecordSpan>& spans) {
  std::vector<std::vector<std::size_t>> pieces;
  OpenPieces open;
  for (std::size_t i = 0; i < spans.size(); ++i) {
    const RecordSpan& span = spans[i];
    OpenPiece piece{pieces.size(), span.rateHz, 0};
    if (const auto before = pieceBefore(open, span); before != open.end()) {
      piece = before->second;
      open.erase(before);
    } else {
      pieces.emplace_back();
    }
    pieces[piece.number].push_back(i);
    piece.sampleCount += span.sampleCount;
    open.emplace(span.startUs + duration(span), piece);
  }
  return pieces;
}

PieceTimes pieceTimes(const std::vector<RecordSpan>& records, std::int64_t referenceMs) {
  if (records.empty()) return {};
  const RecordSpan& first = records.front();
  const double nominal = 1 / first.rateHz;
  std::int64_t before = 0;
  for (std::size_t i = 0; i + 1 < records.size(); ++i)
    before += records[i].sampleCount;
  const double elapsed = double(records.back().startUs - first.startUs) / kMicrosecondsPerSecond;
  const bool drifted = before > 0 && std::abs(elapsed - double(before) * nominal) > nominal / 2;
  return {double(first.startUs - referenceMs * kMicrosecondsPerMillisecond) / kMicrosecondsPerSecond,
          drifted ? elapsed / double(before) : nominal};
}

} // namespace xov
