#include "XOV_Graphics/seismic/SeismogramSummary.h"

#include "XOV_Graphics/seismic/Extrema.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace xov {

namespace {

constexpr std::size_t kSums = 8; // sums that do not wait for each other

// The sum of a block of samples; not finite when one of them is not.
double sumOf(std::span<const float, kSums * kSums> block) {
  std::array<double, kSums> sums{};
  for (std::size_t i = 0; i < block.size(); i += kSums) {
    for (std::size_t lane = 0; lane < kSums; ++lane)
      sums[lane] += double(block[i + lane]);
  }
  return std::accumulate(sums.begin(), sums.end(), 0.0);
}

} // namespace

void SampleTally::add(std::span<const float> samples) {
  constexpr std::size_t blockSize = kSums * kSums;
  for (; samples.size() >= blockSize; samples = samples.subspan(blockSize)) {
    const auto block = samples.first<blockSize>();
    const double sum = sumOf(block);
    if (!std::isfinite(sum)) {
      addOneByOne(block);
      continue;
    }
    SampleTally whole;
    const Extrema extrema = finiteExtrema(block);
    whole.count_ = whole.finiteCount_ = std::int64_t(block.size());
    whole.min_ = extrema.min;
    whole.max_ = extrema.max;
    whole.sum_ = sum;
    add(whole);
  }
  addOneByOne(samples);
}

void SampleTally::addOneByOne(std::span<const float> samples) {
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
