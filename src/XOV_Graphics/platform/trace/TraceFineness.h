#pragma once

#include <cstddef>

namespace xov {

/// What decides how far the ink of a strip is from the exact one: jumps between the rows of neighbouring sub-columns,
/// which are found to a quarter of a sub-column on average, and how many pixels share that error.
class InkRoughness {
public:
  /// How a line's ink was found: along a curve's extremes, or segment by segment, which is exact at the middles of
  /// sub-columns. Of many lines only some need to be judged.
  enum class Judged { Not, Curve, Exact };

  /// Adds the ink of a line in some sub-columns; what lies outside 0 to `rows` does not count.
  void include(const float* low, const float* high, int count, int rows, Judged judged = Judged::Curve);

  /// The mean difference of the inked pixels from the exact ones that is to be expected, in levels of 255, when the
  /// ink is spread over a place of so many rows times sub-columns: where it covers that place several times over,
  /// most jumps are hidden.
  double expectedError(double place) const;
  /// True when the ink covers nearly all of that place.
  bool isCrowded(double place) const;
  /// True when all judged ink is exact at the middles of sub-columns: with half as many the errors of its slants are
  /// four times as large.
  bool isExact() const { return isExact_; }

private:
  double jumps_ = 0; // rows
  double size_ = 0;  // rows with ink and those that have part of it, summed over sub-columns
  double inked_ = 0; // rows of all lines, about
  bool isExact_ = true;
};

/// How many sub-columns a pixel is cut into. The more the more exact, and the more work: ink begins with as many as
/// suit most lines of its kind, and takes more where it turns out to have steep edges.
class TraceFineness {
public:
  /// For ink that is exact at the middles of sub-columns, and as large as that of a pen of a radius in pixels: its
  /// looks alone tell how many it needs.
  explicit TraceFineness(double radius);
  /// For a pen of a radius in pixels.
  TraceFineness(double radius, std::size_t lines, double samplesPerPixel);

  /// A multiple of eight.
  int subColumns() const { return subColumns_; }

  /// Judges ink that was found with subColumns() in a place of so many rows times sub-columns. True when it is to be
  /// found again with more, which subColumns() then is; else subColumns() becomes what suits the next ink if that is
  /// alike.
  bool refine(const InkRoughness& ink, double place);

private:
  int coarsest_ = 0;
  int coarsestInCrowd_ = 0;
  int finest_ = 0;
  int subColumns_ = 0;
};

} // namespace xov
