#pragma once

#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace xov {

/// Samples in a row that one unbroken line runs through, begin <= i < end.
struct SampleRange {
  std::int64_t begin = 0;
  std::int64_t end = 0;

  std::int64_t size() const { return end - begin; }
};

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
  int subColumnOf(double column) const;

  /// Finds the extremes of a curve through samples, of which there must be some, from the sub-column of its first
  /// sample to that of its last. False when a sample is not finite.
  bool find(const TraceProjection& projection, SampleRange samples, int firstSub, int lastSub);

  /// Rows from a sub-column on: those of the curve, and nothing as far as the pen reaches in from both its ends.
  const float* low(int subColumn) const { return &low_[slot(subColumn)]; }
  const float* high(int subColumn) const { return &high_[slot(subColumn)]; }

  /// True where the curve leaves most sub-columns as it enters the next; false where it is made of tips.
  bool isSmooth() const { return isSmooth_; }

private:
  /// The curve at hand: its sub-columns are blocks of its samples.
  struct Curve {
    const TraceProjection& projection;
    SampleRange samples;
    int firstSub = 0;
    int blocks = 0;
    bool dense = false;

    const float* values() const { return projection.samples() + samples.begin; }
    std::int32_t count() const { return static_cast<std::int32_t>(samples.size()); }
  };

  void cut(const Curve& curve);
  void cutOneByOne(const Curve& curve);
  void cutStraight(const Curve& curve, int from, int count, const TimePiece& piece);
  void cutBetween(const Curve& curve, int border, std::int64_t sample);
  bool findDense(const Curve& curve, float* low, float* high) const;
  bool findCut(const Curve& curve, float* low, float* high);
  bool findUneven(const Curve& curve, float* low, float* high);

  /// The column of a border, counted within the curve.
  double columnOf(const Curve& curve, int border) const { return strip_.curveBorder(curve.firstSub + border); }
  std::size_t slot(int subColumn) const { return static_cast<std::size_t>(subColumn + padding_ + 2 * reach_); }

  TraceStrip strip_;
  int reach_ = 0;
  int padding_ = 0; // sub-columns left and right of the strip that the pen reaches in from
  bool isSmooth_ = false;
  std::vector<float> low_, high_;
  std::vector<std::int32_t> cuts_;                         // see BlockBorders.h
  std::vector<float> fraction_, before_, after_, borders_; // of the curve at its borders
  std::vector<float> rows_;                                // of its samples
};

} // namespace xov
