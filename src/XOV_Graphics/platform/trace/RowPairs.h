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

} // namespace xov
