#pragma once

#include "XOV_Graphics/platform/trace/TraceProjection.h"

#include <cstdint>

namespace xov {

/// The rows of consecutive samples. Returns false when a sample is not finite; its row is then meaningless.
bool findRows(const float* samples, int count, const RowMap& toRow, float* rows);

/// Turns the extremes of values, low[k] to high[k], into those of rows. A block with low > high stays empty.
void orderRows(const RowMap& toRow, float* low, float* high, int count);

/// Where the curve through `rows` crosses the edges 1 <= k < blocks: `fraction[k]` of the way from the sample before
/// cuts[k] to that one, whose rows are kept in before[k] and after[k].
void findEdgeRows(const float* rows, const std::int32_t* cuts, const float* fraction, int blocks, float* before,
                  float* after, float* edges);

/// Widens the blocks' extremes to the curve's rows at their edges.
void includeEdgeRows(const float* edges, int blocks, float* low, float* high);

/// The extremes of blocks of at most two samples each, edges included; block 0 and the last one are left alone.
void findShortBlocks(const std::int32_t* cuts, const float* before, const float* after, const float* edges,
                     int blocks, float* low, float* high);

/// The most samples in a block, the first and the last one aside.
std::int32_t largestBlock(const std::int32_t* cuts, int blocks);

/// How much of the extent of consecutive blocks, low[k] to high[k], the next block covers too, 0 to 1: nothing of a
/// smooth curve, where one block begins as the other ends, and most of noise.
float findOverlap(const float* low, const float* high, int blocks);

} // namespace xov
