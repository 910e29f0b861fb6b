#pragma once

#include <cstdint>

namespace xov {

/// The lowest and highest sample of each block cuts[k] <= i < cuts[k + 1], 0 <= k < blocks; lowest > highest in an
/// empty block. Reads every sample from cuts[0] to cuts[blocks] and none other. Returns false, and leaves the results
/// undefined, when a sample is not finite.
bool findBlockExtremes(const float* samples, const std::int32_t* cuts, int blocks, float* lowest, float* highest);

/// The same of samples that are known to be finite, which takes less.
void findFiniteBlockExtremes(const float* samples, const std::int32_t* cuts, int blocks, float* lowest,
                             float* highest);

/// Whether all samples are finite.
bool areFinite(const float* samples, std::int64_t count);

/// The first index i, begin <= i < end, whose sample is finite or is not, as asked; `end` when there is none.
std::int64_t findFinite(const float* samples, std::int64_t begin, std::int64_t end, bool finite);

} // namespace xov
