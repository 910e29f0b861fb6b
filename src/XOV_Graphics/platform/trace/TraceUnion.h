#pragma once

#include <cstdint>

namespace xov {

// The ink of a few columns of pixels is kept as what changes from row to row. An edge at `whole + part` rows, part in
// 1/4096, adds 1 to the upper bits of row `whole` and `part` to the lower ones: the ink that starts there covers
// 4096 - part of that row and all of those below. Edges into and out of ink alternate down a sub-column, so that the
// parts of a row, and its edges, never add up to more than one for each sub-column.

/// Columns of pixels that are kept together: the changes of a row lie side by side.
inline constexpr int kInkColumns = 32;
/// Sub-columns of a pixel for which the sums have room.
inline constexpr int kMostSubColumns = 256;

inline constexpr int kRowBits = 12;
inline constexpr std::int32_t kRowUnit = 1 << kRowBits;
inline constexpr int kEdgeShift = 21;
inline constexpr std::int32_t kOneEdge = std::int32_t(1) << kEdgeShift;
static_assert(kMostSubColumns * kRowUnit <= kOneEdge / 2, "the parts of a row and their sign fit below its edges");

/// A row in units of 1/4096.
inline std::int32_t rowUnits(float row) { return static_cast<std::int32_t>(row * kRowUnit + 0.5F); }

/// Adds an edge to the changes of a column, of which `changes` is the first row's.
inline void addEdge(std::int32_t* changes, std::int32_t units, std::int32_t sign) {
  changes[(units >> kRowBits) * kInkColumns] += sign * (kOneEdge + (units & (kRowUnit - 1)));
}

/// Rows first <= row < last.
struct RowRange {
  int first = 0;
  int last = 0;
};

/// Adds the union of intervals in `count` sub-columns, a multiple of 8 and at most kMostSubColumns, to the changes of
/// a column: layer k holds lows[k][j] to highs[k][j], from the top of the page downwards by and large. What lies
/// outside 0 to `rows` is cut off. Widens `inked` to the rows that have ink; the row behind may have changes, too.
/// Returns false, with the changes in a state of no use, where the order is so wrong that ink may have been counted
/// twice.
bool addUnion(const float* const* lows, const float* const* highs, int layers, int firstSub, int count, int rows,
              std::int32_t* changes, RowRange& inked);

/// Widens a range of rows, which is empty while last <= first, to hold the rows from `top` to `bottom`.
void includeRows(RowRange& range, float top, float bottom, int rows);

} // namespace xov
