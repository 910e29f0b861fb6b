#pragma once

namespace xov {

/// Which places lie inside of lines that cross each other.
enum class InsideRule {
  NonZero, ///< those about which the lines wind
  Odd,     ///< those that lie inside of an odd number of them
};

/// Turns the rows at which the borders of areas cross sub-columns into the intervals of rows that lie inside.
///
/// Area k begins at rows[2k · stride + j] in sub-column j, 0 <= j < count, and ends at rows[(2k + 1) · stride + j],
/// or the other way around, which winds the other way. Where it has nothing, both are the same. Afterwards the
/// intervals stand there, the lower row first, and go down the page: neither end of one lies above that of the one
/// before.
///
/// `count` must be a multiple of 8. A place between areas of opposite windings is outside: with a the number of
/// first borders above it and b that of second ones, lines wind about it a - b times. That is not 0 exactly between
/// the k-th first border and the k-th second one from above, for some k.
void pairRows(float* rows, int areas, int stride, int count, InsideRule rule);

/// Sub-columns that are sorted side by side.
inline constexpr int kSortedTogether = 8;

/// Sorts the intervals of `count` sub-columns, at most kSortedTogether: layer k holds lows[k][first + j] to
/// highs[k][first + j]. The k-th lower end from above goes to sortedLows[k · kSortedTogether + j], and so do the
/// higher ends: one at a time these bound intervals of the same union, and any two of them have a gap between them
/// where, and only where, the union has one. What does not reach into 0 to `rows` is kNothingLow at both ends, behind
/// the rest.
void sortIntervals(const float* const* lows, const float* const* highs, int layers, int first, int count, int rows,
                   float* sortedLows, float* sortedHighs);

} // namespace xov
