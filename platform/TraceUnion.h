#pragma once

#include <cstdint>

namespace xov {

/// The ink of a column of pixels is kept as what changes from row to row. An edge at `whole + part` rows, part in
/// 1/4096, adds 1 to the upper half of row `whole` and `part` to the lower half: the ink that starts there covers
/// 4096 - part of that row and all of those below.
inline constexpr int kRowBits = 12;
inline constexpr std::int32_t kRowUnit = 1 << kRowBits;
inline constexpr std::int64_t kOneEdge = std::int64_t(1) << 32;

/// A row in units of 1/4096.
inline std::int32_t rowUnits(float row) { return static_cast<std::int32_t>(row * kRowUnit + 0.5F); }

inline void addEdge(std::int64_t* changes, std::int32_t units, std::int64_t sign) {
  changes[units >> kRowBits] += sign * (kOneEdge + (units & (kRowUnit - 1)));
}

/// Adds the union of intervals in `count` sub-columns, a multiple of 8: layer k holds lows[k][j] to highs[k][j], from
/// the top of the page downwards by and large. What lies outside 0 to `rows` is cut off. Returns false, with the
/// changes in a state of no use, where the order is so wrong that ink may have been counted twice.
bool addUnion(const float* const* lows, const float* const* highs, int layers, int firstSub, int count, int rows,
              std::int64_t* changes);

/// The first row and one past the last row, within 0 to `rows`, that intervals of `count` sub-columns reach into;
/// what the changes of their union can lie in, with the row behind the last. Both 0 where there are none.
void findInkedRows(const float* low, const float* high, int count, int rows, int& firstRow, int& lastRow);

/// Turns the changes of a column into coverage, 0 to 255, and clears them. Full coverage is `perColumn` sub-columns.
/// Writes `rows` bytes that lie `stride` apart, from the first row that changes to the last; sets these two.
void finishUnion(std::int64_t* changes, int rows, int perColumn, std::uint8_t* pixels, int stride, int& firstRow,
                 int& lastRow);

} // namespace xov
