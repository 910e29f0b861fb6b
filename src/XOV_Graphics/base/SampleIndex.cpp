#include "XOV_Graphics/base/SampleIndex.h"

#include "XOV_Graphics/base/BlockExtremes.h"
#include "XOV_Graphics/base/TaskPool.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace xov {

namespace {

constexpr float kGap = std::numeric_limits<float>::quiet_NaN();
// Blocks whose extremes are found together.
constexpr std::int64_t kBatch = 64;
constexpr std::int64_t kTogether = 4096; // blocks that one thread looks through

constexpr std::array<std::int32_t, kBatch + 1> evenCuts() {
  std::array<std::int32_t, kBatch + 1> cuts{};
  for (std::size_t k = 0; k < cuts.size(); ++k)
    cuts[k] = std::int32_t(std::int64_t(k) * SampleIndex::kBlock);
  return cuts;
}

constexpr std::array<std::int32_t, kBatch + 1> kCuts = evenCuts();

// Blocks that follow each other; those that hold a gap are found one by one.
void findBlocks(const float* samples, std::int64_t blocks, float* lowest, float* highest) {
  if (findBlockExtremes(samples, kCuts.data(), int(blocks), lowest, highest)) return;
  for (std::int64_t k = 0; k < blocks; ++k) {
    if (!findBlockExtremes(samples + k * SampleIndex::kBlock, kCuts.data(), 1, lowest + k, highest + k))
      lowest[k] = highest[k] = kGap;
  }
}

} // namespace

void SampleIndex::build(std::span<const float> samples, std::int64_t firstNumber) {
  clear();
  number_ = std::max<std::int64_t>(firstNumber, 0);
  appended(samples, std::int64_t(samples.size()));
}

void SampleIndex::adopt(std::span<const float> samples, std::vector<float> lowest, std::vector<float> highest) {
  clear();
  const std::size_t blocks = samples.size() / std::size_t(kBlock);
  if (lowest.size() != blocks || highest.size() != blocks) return;
  samples_ = samples.data();
  count_ = std::int64_t(samples.size());
  lowest_ = std::move(lowest);
  highest_ = std::move(highest);
  isUnbroken_ = false; // samples that lie in no whole block may not even be in memory
}

void SampleIndex::changed(std::span<const float> samples, std::int64_t from, std::int64_t to) {
  samples_ = samples.data();
  from = std::max<std::int64_t>(from, 0);
  to = std::min(to, count_);
  if (from >= to) return;
  fill(samples, (number_ + from) / kBlock, (number_ + to - 1) / kBlock + 1);
  lookForGaps(samples, from, to);
}

void SampleIndex::appended(std::span<const float> samples, std::int64_t count) {
  samples_ = samples.data();
  const std::int64_t before = count_;
  count_ += std::max<std::int64_t>(count, 0);
  const std::int64_t whole = (number_ + count_) / kBlock;
  resize(std::max<std::int64_t>(whole - firstBlock(), 0));
  fill(samples, (number_ + before) / kBlock, whole);
  lookForGaps(samples, before, count_);
}

void SampleIndex::dropped(std::span<const float> samples, std::int64_t count) {
  samples_ = samples.data();
  count = std::clamp<std::int64_t>(count, 0, count_);
  const std::int64_t before = firstBlock();
  number_ += count;
  count_ -= count;
  dropped_ = std::min(dropped_ + std::size_t(firstBlock() - before), lowest_.size());
  if (dropped_ < lowest_.size() / 2 + 1) return;
  for (std::vector<float>* extremes : {&lowest_, &highest_})
    extremes->erase(extremes->begin(), extremes->begin() + std::ptrdiff_t(dropped_));
  dropped_ = 0;
}

void SampleIndex::truncated(std::span<const float> samples, std::int64_t count) {
  samples_ = samples.data();
  count_ -= std::clamp<std::int64_t>(count, 0, count_);
  resize(std::max<std::int64_t>((number_ + count_) / kBlock - firstBlock(), 0));
}

void SampleIndex::mapped(const std::function<float(float)>& increasing) {
  for (std::size_t k = dropped_; k < lowest_.size(); ++k) {
    const float low = increasing(lowest_[k]), high = increasing(highest_[k]);
    const bool isFinite = std::isfinite(low) && std::isfinite(high);
    lowest_[k] = isFinite ? low : kGap;
    highest_[k] = isFinite ? high : kGap;
  }
  // Of samples in no whole block nothing is known but that they are numbers.
  constexpr float kLargest = std::numeric_limits<float>::max();
  isUnbroken_ = isUnbroken_ && std::isfinite(increasing(-kLargest)) && std::isfinite(increasing(kLargest));
}

void SampleIndex::clear() { *this = SampleIndex(); }

void SampleIndex::resize(std::int64_t blocks) {
  for (std::vector<float>* extremes : {&lowest_, &highest_})
    extremes->resize(dropped_ + std::size_t(blocks), kGap);
}

// Of blocks with these numbers, the whole ones.
void SampleIndex::fill(std::span<const float> samples, std::int64_t fromBlock, std::int64_t toBlock) {
  const std::int64_t end = std::min(toBlock, (number_ + count_) / kBlock);
  const std::int64_t begin = std::max(fromBlock, firstBlock());
  runParts(end - begin, kTogether, [&](std::int64_t from, std::int64_t to) {
    for (std::int64_t block = begin + from; block < begin + to; block += kBatch) {
      const std::size_t place = dropped_ + std::size_t(block - firstBlock());
      findBlocks(samples.data() + (block * kBlock - number_), std::min(kBatch, begin + to - block), &lowest_[place],
                 &highest_[place]);
    }
  });
}

/// Of samples from <= i < to, whose whole blocks have been filled.
void SampleIndex::lookForGaps(std::span<const float> samples, std::int64_t from, std::int64_t to) {
  if (!isUnbroken_) return;
  const float* const first = samples.data();
  const Blocks inner = blocksWithin(first, from, to);
  isUnbroken_ = areFinite(first + from, inner.begin - from) && areFinite(inner.lowest, inner.count) &&
                areFinite(first + inner.end(), to - inner.end());
}

bool SampleIndex::covers(const float* samples, std::int64_t first, std::int64_t last) const {
  if (samples_ == nullptr || samples == nullptr || last < first) return false;
  const std::less_equal<const float*> isNotBehind;
  return isNotBehind(samples_, samples + first) && isNotBehind(samples + last, samples_ + count_);
}

bool SampleIndex::holdsNoGap(const float* samples, std::int64_t first, std::int64_t last) const {
  if (last <= first || isUnbroken_) return true;
  const std::int64_t shift = samples - samples_ + number_; // from places in the stretch to numbers
  const std::int64_t from = (first + shift) / kBlock, to = (last + shift - 1) / kBlock + 1;
  if (from < firstBlock() || to > (number_ + count_) / kBlock) return false;
  const float* const lowest = &lowest_[dropped_ + std::size_t(from - firstBlock())];
  return findFinite(lowest, 0, to - from, false) == to - from;
}

std::pair<float, float> SampleIndex::extremesAround(const float* samples, std::int64_t i) const {
  const std::int64_t block = (i + (samples - samples_) + number_) / kBlock;
  if (block < firstBlock() || block >= (number_ + count_) / kBlock) return {kGap, kGap};
  const std::size_t place = dropped_ + std::size_t(block - firstBlock());
  return {lowest_[place], highest_[place]};
}

SampleIndex::Blocks SampleIndex::blocksWithin(const float* samples, std::int64_t first, std::int64_t last) const {
  const std::int64_t shift = samples - samples_ + number_; // from places in the stretch to numbers
  const std::int64_t from = std::max((first + shift + kBlock - 1) / kBlock, firstBlock());
  const std::int64_t to = (last + shift) / kBlock;
  if (to <= from) return {.begin = last};
  const std::size_t place = dropped_ + std::size_t(from - firstBlock());
  return {from * kBlock - shift, to - from, &lowest_[place], &highest_[place]};
}

} // namespace xov
