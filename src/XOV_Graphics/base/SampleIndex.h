#pragma once

#include "XOV_Graphics/base/Export.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <utility>
#include <vector>

namespace xov {

/// The lowest and highest of every 256 samples of a recording, and which of them hold a gap. With it, extremes of
/// long stretches are found without reading their samples: a picture of a month is drawn as fast as one of a day,
/// with the same pixels. It takes 0.8 % of the memory of the samples.
///
/// It borrows nothing: who changes samples tells the index, with all samples as they are then. Asked about samples
/// that it was not told of last, it answers for none.
///
/// Blocks are counted by numbers that samples keep when older ones are dropped, as a live display drops them: the
/// first sample indexed has number 0, or what build() is given.
///
/// Not locked: queries may come from several threads while nobody changes it.
class XOV_EXPORT SampleIndex {
public:
  /// Samples a block. In a shorter one the borders of a picture's columns would be found sooner, at more memory.
  static constexpr std::int64_t kBlock = 256;

  SampleIndex() = default;
  /// The index of samples, which may go away afterwards.
  explicit SampleIndex(std::span<const float> samples) { build(samples); }

  /// Indexes samples, the first of which has that number (0 or above).
  void build(std::span<const float> samples, std::int64_t firstNumber = 0);
  /// Takes over what was found of samples before, the first of which has number 0: the extremes of each whole block,
  /// NaN where one holds a gap. Nothing is known where these are not as many as the blocks.
  void adopt(std::span<const float> samples, std::vector<float> lowest, std::vector<float> highest);
  /// Samples from <= i < to, counted from the first one, have other values.
  void changed(std::span<const float> samples, std::int64_t from, std::int64_t to);
  /// `count` samples were added at the end; `samples` holds them.
  void appended(std::span<const float> samples, std::int64_t count);
  /// `count` samples are gone from the beginning; `samples` does not hold them any more.
  void dropped(std::span<const float> samples, std::int64_t count);
  /// `count` samples are gone from the end; `samples` does not hold them any more.
  void truncated(std::span<const float> samples, std::int64_t count);
  /// Each sample has become what `increasing` makes of it, which must not fall where samples grow: extremes stay
  /// those of the same samples.
  void mapped(const std::function<float(float)>& increasing);
  /// Forgets all samples.
  void clear();

  /// True when samples[first] … samples[last - 1] are among those that the index was told of last.
  bool covers(const float* samples, std::int64_t first, std::int64_t last) const;

  /// True when it is known that none of all samples is a gap.
  bool isUnbroken() const { return isUnbroken_; }
  /// True when it is known that none of samples[first] … samples[last - 1], which the index must cover, is a gap: no
  /// sample is one at all, or all of these lie in blocks without one, which reach beyond them.
  bool holdsNoGap(const float* samples, std::int64_t first, std::int64_t last) const;

  /// The lowest and the highest of the block around samples[i], which the index must cover; NaN where that holds a
  /// gap or is not whole.
  std::pair<float, float> extremesAround(const float* samples, std::int64_t i) const;

  /// Whole blocks within a stretch of samples: block k holds samples begin + k · kBlock to begin + (k + 1) · kBlock.
  struct Blocks {
    std::int64_t begin = 0;         ///< the first block's first sample, counted as the stretch is
    std::int64_t count = 0;         ///< how many blocks
    const float* lowest = nullptr;  ///< of each block; NaN where a sample of it is not finite
    const float* highest = nullptr; ///< the same
    /// The sample behind the last block, counted as the stretch is.
    std::int64_t end() const { return begin + count * kBlock; }
  };
  /// Those of samples[first] … samples[last - 1], which the index must cover.
  Blocks blocksWithin(const float* samples, std::int64_t first, std::int64_t last) const;

private:
  std::int64_t firstBlock() const { return (number_ + kBlock - 1) / kBlock; }
  void fill(std::span<const float> samples, std::int64_t fromBlock, std::int64_t toBlock);
  void lookForGaps(std::span<const float> samples, std::int64_t from, std::int64_t to);
  void resize(std::int64_t blocks);

  const float* samples_ = nullptr; // only compared
  std::int64_t number_ = 0;        // of the first sample
  std::int64_t count_ = 0;
  bool isUnbroken_ = true; // no sample is a gap: known of those in no whole block, too
  // Those of whole blocks, from firstBlock() on, behind `dropped_` that are cut off by and by.
  std::vector<float> lowest_, highest_;
  std::size_t dropped_ = 0;
};

} // namespace xov
