#pragma once

#include <cstdint>

// Loops over the borders between blocks of samples: block k holds samples cuts[k] <= i < cuts[k + 1], and border k,
// 1 <= k < blocks, is the one between blocks k - 1 and k.

namespace xov {

/// Cuts at positions start + k · step, 0 <= k < count: cuts[k] is the whole number above, held between two bounds,
/// and fraction[k], unless it is null, how far the position has come towards it, 0 to 1.
void cutEvenly(double start, double step, int count, std::int32_t lowest, std::int32_t highest, std::int32_t* cuts,
               float* fraction);

/// Where the curve through `rows` crosses the borders: `fraction[k]` of the way from the sample before cuts[k] to
/// that one, whose rows are kept in before[k] and after[k].
void findBorderRows(const float* rows, const std::int32_t* cuts, const float* fraction, int blocks, float* before,
                    float* after, float* borders);

/// Widens the blocks' extremes to the curve's rows at their borders.
void includeBorderRows(const float* borders, int blocks, float* low, float* high);

/// The extremes of blocks of at most two samples each, borders included; block 0 and the last one are left alone.
void findShortBlocks(const std::int32_t* cuts, const float* before, const float* after, const float* borders,
                     int blocks, float* low, float* high);

/// The most samples in a block, the first and the last one aside.
std::int32_t largestBlock(const std::int32_t* cuts, int blocks);

/// How much of the extent of consecutive blocks, low[k] to high[k], the next block covers too, 0 to 1: nothing of a
/// smooth curve, where one block begins as the other ends, and most of noise.
float findOverlap(const float* low, const float* high, int blocks);

} // namespace xov
