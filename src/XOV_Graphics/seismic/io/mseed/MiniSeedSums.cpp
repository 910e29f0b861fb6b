#include "XOV_Graphics/seismic/io/mseed/MiniSeedSums.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeedAssembly.h"

#include <algorithm>
#include <utility>

namespace xov {

namespace {

constexpr std::size_t kMostRuns = 1 << 16; // some ten megabytes of them

} // namespace

bool RunningSums::add(const IndexedRecord& record, QByteArrayView bytes, MiniSeedIndex& index) {
  if (record.channel >= channels_.size()) channels_.resize(record.channel + 1);
  Runs& runs = channels_[record.channel];
  const std::int64_t startUs = record.span.startUs;
  if (runs.empty() || startUs <= runs.back().lastStartUs) {
    // Nothing continues a run once it is over: what it takes to join its pieces is not needed any more.
    if (!runs.empty()) runs.back().joiner = {};
    runs.emplace_back().firstStartUs = startUs;
    ++runCount_;
  }
  Run& run = runs.back();
  run.lastStartUs = startUs;
  const std::size_t piece = run.joiner.add(record.span);
  samples_.resize(std::size_t(record.span.sampleCount));
  const DecodedRecord decoded = decodeRecord(decoder_, record, bytes, samples_);
  noteLosses(record, decoded, index);
  if (decoded.isDecoded)
    addToTally(run.stretches.add(piece, record.span).tally, record.format.encoding, samples_);
  else
    run.stretches.breakOff(piece);
  return runCount_ <= kMostRuns;
}

/// Whether each of the runs, in time order, begins behind the one before.
bool RunningSums::areApart(const Runs& runs) {
  return std::ranges::adjacent_find(runs, [](const Run& before, const Run& next) {
           return next.firstStartUs <= before.lastStartUs;
         }) == runs.end();
}

/// The stretches of runs that are apart, in time order.
std::vector<Stretch> RunningSums::joined(Runs& runs) {
  if (runs.size() == 1) return runs.front().stretches.take();
  PieceJoiner joiner;
  std::vector<Stretch> all;
  for (Run& run : runs) {
    for (Stretch& stretch : run.stretches.take()) {
      const std::size_t piece = joiner.add(stretch.extent);
      if (piece == all.size()) {
        all.push_back(std::move(stretch));
      } else {
        all[piece].extent.add(stretch.extent);
        all[piece].tally.add(stretch.tally);
      }
    }
  }
  return all;
}

std::optional<MiniSeedTraces> RunningSums::take(const MiniSeedIndex& index, const QString& path) {
  if (runCount_ > kMostRuns) return {};
  MiniSeedTraces traces;
  for (std::size_t channel = 0; channel < channels_.size(); ++channel) {
    Runs& runs = channels_[channel];
    std::ranges::sort(runs, {}, &Run::firstStartUs);
    if (!areApart(runs)) return {};
    traces.append(index.channels[channel], joined(runs), path);
  }
  return traces;
}

} // namespace xov
