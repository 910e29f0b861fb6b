#include "XOV_Graphics/seismic/io/mseed/MiniSeedOutline.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeedIndex.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedNotes.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSearch.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace xov {

namespace {

constexpr double kMicrosecondsPerMillisecond = 1000;
constexpr double kMicrosecondsPerSecond = 1e6;

QDateTime momentOfUs(std::int64_t us) {
  return QDateTime::fromMSecsSinceEpoch(std::llround(double(us) / kMicrosecondsPerMillisecond), Qt::UTC);
}

/// The time of the last of so many samples.
std::int64_t lastUs(const MiniSeedSpan& span) {
  if (span.rateHz <= 0) return span.startUs;
  const double us = double(span.sampleCount - 1) / span.rateHz * kMicrosecondsPerSecond;
  constexpr double kMost = 1e17; // three thousand years
  return span.startUs + std::llround(std::clamp(us, 0.0, kMost));
}

/// Takes records that are there twice by their headers away; how many.
qint64 dropRepeated(std::vector<MiniSeedSpan>& spans) {
  const auto key = [](const MiniSeedSpan& span) {
    return std::make_tuple(span.startUs, span.sampleCount, span.rateHz);
  };
  if (!std::ranges::is_sorted(spans, {}, key)) std::ranges::sort(spans, {}, key);
  const auto same = [&key](const MiniSeedSpan& a, const MiniSeedSpan& b) { return key(a) == key(b); };
  const auto first = std::unique(spans.begin(), spans.end(), same);
  const qint64 count = spans.end() - first;
  spans.erase(first, spans.end());
  return count;
}

ChannelOutline outlineOfSpans(const ChannelCodes& codes, const std::vector<MiniSeedSpan>& spans) {
  ChannelOutline outline;
  outline.codes = codes;
  outline.rateHz = spans.front().rateHz;
  PieceJoiner joiner;
  std::size_t pieces = 0;
  std::int64_t endUs = spans.front().startUs;
  for (const MiniSeedSpan& span : spans) {
    pieces = std::max(pieces, joiner.add(span) + 1);
    endUs = std::max(endUs, lastUs(span));
    outline.sampleCount += span.sampleCount;
  }
  outline.pieceCount = int(pieces);
  outline.start = momentOfUs(spans.front().startUs);
  outline.end = momentOfUs(endUs);
  return outline;
}

} // namespace

Result<SeismogramOutline> outlineMiniSeedDevice(QIODevice& device, const QString& name, std::stop_token stop) {
  std::vector<std::vector<MiniSeedSpan>> spans;
  const RecordSink keep = [&](const IndexedRecord& record, QByteArrayView /*bytes*/, MiniSeedIndex& /*index*/) {
    if (record.channel >= spans.size()) spans.resize(record.channel + 1);
    spans[record.channel].push_back(record.span);
    return !stop.stop_requested();
  };
  FileWindow file(device);
  MiniSeedIndex index = indexMiniSeed(file, ChannelPatterns(), keep);
  if (stop.stop_requested()) return Error{name + QStringLiteral(": reading was stopped")};
  if (Status status = indexStatus(index, device, name); !status) return Error{status.error()};
  if (spans.empty()) return nothingRead(index, name);
  SeismogramOutline outline;
  for (std::size_t channel = 0; channel < spans.size(); ++channel) {
    index.repeatedCount += dropRepeated(spans[channel]);
    outline.channels.push_back(outlineOfSpans(index.channels[channel], spans[channel]));
  }
  outline.notes = miniSeedNotes(index, false, name);
  return outline;
}

std::optional<ChannelOutline> miniSeedEnds(QIODevice& device) {
  constexpr qsizetype kRead = 4096;
  FileWindow file(device, kRead);
  const auto recordAt = [&](qint64 offset) {
    return findAnyRecord(file.at(offset, kMiniSeedChainBytes), file.size() - offset);
  };
  const MiniSeedFinding first = recordAt(0);
  const qint64 length = first.record.format.length;
  if (first.kind != MiniSeedFinding::Kind::Record || length <= 0 || file.size() % length != 0) return {};
  const MiniSeedFinding last = recordAt(file.size() - length);
  if (last.kind != MiniSeedFinding::Kind::Record || last.record.format.length != length ||
      channelCodes(last.record) != channelCodes(first.record))
    return {};
  ChannelOutline ends;
  ends.codes = channelCodes(first.record);
  ends.rateHz = first.record.rateHz;
  ends.start = momentOfUs(first.record.startUs);
  ends.end = momentOfUs(lastUs({last.record.startUs, last.record.rateHz, last.record.sampleCount}));
  return ends;
}

} // namespace xov
