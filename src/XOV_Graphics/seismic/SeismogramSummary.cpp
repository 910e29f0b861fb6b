#include "XOV_Graphics/seismic/SeismogramSummary.h"

#include <algorithm>
#include <cmath>

namespace xov {

void SampleTally::add(std::span<const float> samples) {
  count_ += std::int64_t(samples.size());
  for (const float sample : samples) {
    if (!std::isfinite(sample)) continue;
    min_ = finiteCount_ > 0 ? std::min(min_, sample) : sample;
    max_ = finiteCount_ > 0 ? std::max(max_, sample) : sample;
    sum_ += double(sample);
    ++finiteCount_;
  }
}

void SampleTally::add(const SampleTally& other) {
  count_ += other.count_;
  isRounded_ = isRounded_ || other.isRounded_;
  if (!other.hasFinite()) return;
  min_ = hasFinite() ? std::min(min_, other.min_) : other.min_;
  max_ = hasFinite() ? std::max(max_, other.max_) : other.max_;
  sum_ += other.sum_;
  finiteCount_ += other.finiteCount_;
}

SeismogramSummary summaryOf(std::shared_ptr<const SeismogramRecord> record) {
  SampleTally samples;
  const float* const first = record->GetSacSeis();
  if (first != nullptr && record->npts() > 0) samples.add({first, std::size_t(record->npts())});
  return {std::move(record), samples};
}

} // namespace xov
