#pragma once

#include "XOV_Graphics/seismic/io/mseed/MiniSeedIndex.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSamples.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedTraces.h"

#include <limits>
#include <optional>

namespace xov {

/// Sums the records of a file up as they come. Memory is needed for pieces and for runs, not for records: a run of a
/// channel goes on as long as each record starts behind the one before.
class RunningSums {
public:
  /// Counts what is lost in the index. False when there are so many runs that knowing each record takes less.
  bool add(const IndexedRecord& record, QByteArrayView bytes, MiniSeedIndex& index);

  /// The sums. Nothing when there are too many runs, or those of a channel overlap: which of their records are there
  /// twice, and which belong together, shows only where each of them is known.
  std::optional<MiniSeedTraces> take(const MiniSeedIndex& index, const QString& path);

private:
  struct Run {
    std::int64_t firstStartUs = 0;
    std::int64_t lastStartUs = 0;
    PieceJoiner joiner;
    Stretches stretches;
  };
  using Runs = std::vector<Run>;

  static bool areApart(const Runs& runs);
  static std::vector<Stretch> joined(Runs& runs);

  MiniSeedSamples decoder_;
  std::vector<float> samples_;
  std::vector<Runs> channels_;
  std::size_t runCount_ = 0;
};

} // namespace xov
