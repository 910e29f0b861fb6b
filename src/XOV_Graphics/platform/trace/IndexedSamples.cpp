#include "XOV_Graphics/platform/trace/IndexedSamples.h"

#include "XOV_Graphics/base/BlockExtremes.h"
#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
// With fewer samples a block, those outside whole blocks of the index are most of them.
constexpr std::int64_t kWorthAnIndex = 2 * SampleIndex::kBlock;
// So many borders ahead, the samples around them are asked from memory.
constexpr int kBordersAhead = 8;
// Of more samples, looking at all of them costs little, and brings them from memory in their order.
constexpr std::int64_t kFew = 4096;
constexpr std::int64_t kHeldTogether = std::int64_t(1) << 16;

void prefetchAround(const float* samples, std::int64_t border, std::int64_t first, std::int64_t last) {
  const std::int64_t from = std::max(border - SampleIndex::kBlock, first);
  const std::int64_t to = std::min(border + SampleIndex::kBlock, last);
  for (std::int64_t i = from; i < to; i += kCacheLine)
    XOV_PREFETCH(samples + i);
}

template <class Vector>
XOV_INLINE bool findIndexedExtremesWith(const SampleIndex& index, const float* samples, const std::int32_t* cuts,
                                        int blocks, float* lowest, float* highest) {
  constexpr int kWidth = kLanes<Vector>;
  Vector broken = {};
  float rest = 0;
  for (int k = 0; k < blocks; ++k) {
    if (k + kBordersAhead <= blocks) prefetchAround(samples, cuts[k + kBordersAhead], cuts[0], cuts[blocks]);
    Vector lows = Vector{} + kInfinity, highs = Vector{} - kInfinity;
    float low = kInfinity, high = -kInfinity;
    const auto takeVector = [&](const float* lower, const float* higher) XOV_INLINE_LAMBDA {
      Vector next;
      loadVector(lower, next);
      keepSmaller(lows, next);
      addUnlessFinite(next, broken);
      loadVector(higher, next);
      keepGreater(highs, next);
    };
    // The extremes of samples, or of blocks of them.
    const auto take = [&](const float* lower, const float* higher, std::int64_t count) XOV_INLINE_LAMBDA {
      std::int64_t i = 0;
      for (; i + kWidth <= count; i += kWidth)
        takeVector(lower + i, higher + i);
      if (i < count && count >= kWidth) { // some of them once more
        takeVector(lower + count - kWidth, higher + count - kWidth);
        i = count;
      }
      for (; i < count; ++i) {
        low = std::min(low, lower[i]);
        high = std::max(high, higher[i]);
        addUnlessFinite(lower[i], rest);
      }
    };
    const std::int64_t begin = cuts[k], end = cuts[k + 1];
    const SampleIndex::Blocks inner = index.blocksWithin(samples, begin, end);
    take(samples + begin, samples + begin, inner.begin - begin);
    take(inner.lowest, inner.highest, inner.count);
    take(samples + inner.end(), samples + inner.end(), end - inner.end());
    for (int lane = 0; lane < kWidth; ++lane) {
      low = std::min(low, float(lows[lane]));
      high = std::max(high, float(highs[lane]));
    }
    lowest[k] = low;
    highest[k] = high;
  }
  return rest + sumOfLanes(broken) == 0;
}

XOV_VECTOR_FUNCTION(bool, findIndexedExtremes,
                    (const SampleIndex& index, const float* samples, const std::int32_t* cuts, int blocks,
                     float* lowest, float* highest),
                    (index, samples, cuts, blocks, lowest, highest))

} // namespace

IndexedSamples::IndexedSamples(const BorrowedSamples& borrowed, std::int64_t first, std::int64_t last)
    : samples_(borrowed.samples),
      index_(borrowed.index != nullptr && borrowed.index->covers(samples_, first, last) ? borrowed.index : nullptr),
      source_(borrowed.source) {}

bool IndexedSamples::findBlockExtremes(std::int64_t begin, const std::int32_t* cuts, int blocks, float* lowest,
                                       float* highest) const {
  const float* const from = samples_ + begin;
  if (index_ == nullptr || cuts[blocks] - cuts[0] < kWorthAnIndex * blocks) {
    const HeldSamples held(source_, from + cuts[0], from + cuts[blocks]);
    if (index_ == nullptr || !holdsNoGap(from, cuts[0], cuts[blocks]))
      return xov::findBlockExtremes(from, cuts, blocks, lowest, highest);
    findFiniteBlockExtremes(from, cuts, blocks, lowest, highest);
    return true;
  }
  if (source_ == nullptr) return findIndexedExtremes(*index_, from, cuts, blocks, lowest, highest);
  hold(from, cuts, blocks);
  const bool finite = findIndexedExtremes(*index_, from, cuts, blocks, lowest, highest);
  letGo(from, cuts, blocks);
  return finite;
}

/// True when the index, and a look at what lies in none of its whole blocks, tell that there is no gap.
bool IndexedSamples::holdsNoGap(const float* from, std::int64_t first, std::int64_t last) const {
  if (index_->holdsNoGap(from, first, last)) return true;
  if (last - first < SampleIndex::kBlock || last - first > kFew) return false;
  const SampleIndex::Blocks inner = index_->blocksWithin(from, first, last);
  return inner.count > 0 && index_->holdsNoGap(from, inner.begin, inner.end()) &&
         areFinite(from + first, inner.begin - first) && areFinite(from + inner.end(), last - inner.end());
}

/// Holds the samples around each cut that lie in no whole block of the index on either side of it.
void IndexedSamples::hold(const float* from, const std::int32_t* cuts, int blocks) const {
  for (int k = 0; k <= blocks; ++k)
    source_->hold(from + std::max(cuts[k] - SampleIndex::kBlock, std::int64_t(cuts[0])),
                  from + std::min(cuts[k] + SampleIndex::kBlock, std::int64_t(cuts[blocks])));
}

void IndexedSamples::letGo(const float* from, const std::int32_t* cuts, int blocks) const {
  for (int k = 0; k <= blocks; ++k)
    source_->letGo(from + std::max(cuts[k] - SampleIndex::kBlock, std::int64_t(cuts[0])),
                   from + std::min(cuts[k] + SampleIndex::kBlock, std::int64_t(cuts[blocks])));
}

/// As xov::findFinite() of these samples, of which so many are held at a time.
std::int64_t IndexedSamples::findFinite(std::int64_t begin, std::int64_t end, bool finite) const {
  if (source_ == nullptr) return xov::findFinite(samples_, begin, end, finite);
  for (std::int64_t next = 0; begin < end; begin = next) {
    next = std::min(end, begin + kHeldTogether);
    const HeldSamples held(source_, samples_ + begin, samples_ + next);
    const std::int64_t found = xov::findFinite(samples_, begin, next, finite);
    if (found < next) return found;
  }
  return end;
}

std::int64_t IndexedSamples::findNumber(std::int64_t begin, std::int64_t end) const {
  return findFinite(begin, end, true);
}

std::int64_t IndexedSamples::findGap(std::int64_t begin, std::int64_t end) const {
  if (index_ == nullptr || begin >= end) return findFinite(begin, end, false);
  if (index_->isUnbroken()) return end;
  const SampleIndex::Blocks inner = index_->blocksWithin(samples_, begin, end);
  const std::int64_t before = findFinite(begin, inner.begin, false);
  if (before < inner.begin) return before;
  const float* const broken =
      std::find_if(inner.lowest, inner.lowest + inner.count, [](float low) { return !std::isfinite(low); });
  return findFinite(inner.begin + (broken - inner.lowest) * SampleIndex::kBlock, end, false);
}

std::int64_t IndexedSamples::findExtreme(float value, std::int64_t begin, std::int64_t end) const {
  const auto findWithin = [&](std::int64_t from, std::int64_t to) {
    const HeldSamples held(source_, samples_ + from, samples_ + to);
    return std::find(samples_ + from, samples_ + to, value) - samples_;
  };
  if (index_ == nullptr || begin >= end) return findWithin(begin, end);
  const SampleIndex::Blocks inner = index_->blocksWithin(samples_, begin, end);
  const std::int64_t before = findWithin(begin, inner.begin);
  if (before < inner.begin) return before;
  for (std::int64_t k = 0; k < inner.count; ++k) {
    if (inner.lowest[k] == value || inner.highest[k] == value)
      return findWithin(inner.begin + k * SampleIndex::kBlock, inner.begin + (k + 1) * SampleIndex::kBlock);
  }
  return findWithin(inner.end(), end);
}

} // namespace xov
