#pragma once

#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/base/SampleSource.h"

#include <cstdint>

namespace xov {

/// Samples with the index of their extremes, where there is one that fits. What is found is the same either way.
class IndexedSamples {
public:
  IndexedSamples() = default;
  /// An index that does not cover samples[first] … samples[last - 1] is not used.
  IndexedSamples(const BorrowedSamples& borrowed, std::int64_t first, std::int64_t last);

  const float* data() const { return samples_; }

  /// As findBlockExtremes() of the samples from `begin` on.
  bool findBlockExtremes(std::int64_t begin, const std::int32_t* cuts, int blocks, float* lowest,
                         float* highest) const;

  /// The first index i, begin <= i < end, whose sample is not finite; `end` when there is none.
  std::int64_t findGap(std::int64_t begin, std::int64_t end) const;

  /// The first one whose sample is finite.
  std::int64_t findNumber(std::int64_t begin, std::int64_t end) const;

  /// The first index i, begin <= i < end, whose sample is `value`, an extreme of these samples; `end` when there is
  /// none.
  std::int64_t findExtreme(float value, std::int64_t begin, std::int64_t end) const;

private:
  bool holdsNoGap(const float* from, std::int64_t first, std::int64_t last) const;
  std::int64_t findFinite(std::int64_t begin, std::int64_t end, bool finite) const;
  void hold(const float* from, const std::int32_t* cuts, int blocks) const;
  void letGo(const float* from, const std::int32_t* cuts, int blocks) const;

  const float* samples_ = nullptr;
  const SampleIndex* index_ = nullptr;
  SampleSource* source_ = nullptr;
};

} // namespace xov
