#pragma once

#include "XOV_Graphics/platform/trace/TraceBorders.h"
#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace xov {

/// The lowest and highest row of a curve in every sub-column of a strip.
///
/// Where sub-columns hold few samples, the curve is cut at the borders between them; where they hold many, its
/// extremes are those of its samples.
class TraceExtremes {
public:
  /// For strips as wide as this one, and a pen that reaches so many sub-columns to either side.
  TraceExtremes(const TraceStrip& strip, int reach);

  /// Moves on to another strip of the same or of a smaller width.
  void moveTo(const TraceStrip& strip) { strip_ = strip; }

  /// The sub-column of the curve that holds a column of the picture. Far outside the strip it is the last one that
  /// the pen may reach in from.
  int subColumnOf(double column) const {
    const double position = std::clamp((column - strip_.left) * strip_.perColumn + strip_.curveShift,
                                       double(-padding_), double(strip_.subColumns() + padding_ - 1));
    const int whole = static_cast<int>(position);
    return position < whole ? whole - 1 : whole;
  }

  /// Finds the extremes of a curve through samples, of which there must be some, from the sub-column of its first
  /// sample to that of its last. False when a sample is not finite.
  bool find(const TraceProjection& projection, SampleRange samples, int firstSub, int lastSub);

  /// Rows from a sub-column on: those of the curve, and nothing as far as the pen reaches in from both its ends.
  const float* low(int subColumn) const { return &low_[slot(subColumn)]; }
  const float* high(int subColumn) const { return &high_[slot(subColumn)]; }

  /// True where the curve leaves most sub-columns as it enters the next; false where it is made of tips.
  bool isSmooth() const { return isSmooth_; }
  /// The same of extremes in neighbouring sub-columns.
  static bool areSmooth(const float* low, const float* high, int count);

private:
  bool findDense(const TraceCurve& curve, float* low, float* high) const;
  bool findCut(const TraceCurve& curve, float* low, float* high);
  bool findUneven(const TraceCurve& curve, float* low, float* high);

  std::size_t slot(int subColumn) const { return static_cast<std::size_t>(subColumn + padding_ + 2 * reach_); }

  TraceStrip strip_;
  int reach_ = 0;
  int padding_ = 0; // sub-columns left and right of the strip that the pen reaches in from
  bool isSmooth_ = false;
  std::vector<float> low_, high_;
  TraceBorders cut_;
  std::vector<float> before_, after_, borders_; // of the curve at its borders
  std::vector<float> rows_;                     // of its samples
};

} // namespace xov
