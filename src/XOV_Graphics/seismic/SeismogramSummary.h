#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QStringList>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace xov {

/// Samples summed up piece by piece.
class XOV_EXPORT SampleTally {
public:
  /// Counts these samples in.
  void add(std::span<const float> samples);
  /// Counts in what another tally has counted.
  void add(const SampleTally& other);

  /// Of all samples.
  /// How many samples were added.
  std::int64_t count() const { return count_; }
  /// Of those that are no numbers or infinite.
  std::int64_t notFiniteCount() const { return count_ - finiteCount_; }
  /// Whether min(), max() and mean() are of any sample.
  bool hasFinite() const { return finiteCount_ > 0; }
  /// Of the finite samples; 0 when there is none.
  float min() const { return min_; }
  /// The largest of the finite samples; 0 when there is none.
  float max() const { return max_; }
  /// Whether some of them are not those of the file, which has more digits than single precision: whole numbers
  /// beyond 16777216, or double precision of that size.
  bool isRounded() const { return isRounded_; }
  /// Sets isRounded(): what a reader has found.
  void setRounded(bool rounded) { isRounded_ = rounded; }
  /// Of the finite samples; 0 when there is none.
  double mean() const { return hasFinite() ? sum_ / double(finiteCount_) : 0; }

private:
  void addOneByOne(std::span<const float> samples);

  std::int64_t count_ = 0;
  std::int64_t finiteCount_ = 0;
  float min_ = 0;
  float max_ = 0;
  double sum_ = 0;
  bool isRounded_ = false;
};

/// A trace without its samples: all that its header says, and what they amount to.
struct XOV_EXPORT SeismogramSummary {
  std::shared_ptr<const SeismogramRecord> record; ///< may have no samples, whatever their number was
  /// What the samples amount to.
  SampleTally samples;
};

/// What a record that is held in memory amounts to. The record must not be null.
XOV_EXPORT SeismogramSummary summaryOf(std::shared_ptr<const SeismogramRecord> record);

/// What a seismogram file holds, summed up.
struct XOV_EXPORT SeismogramFileSummary {
  std::vector<SeismogramSummary> records; ///< one a trace, in the order of the file
  QStringList notes;                      ///< as of a SeismogramFile
};

} // namespace xov
