#pragma once

#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/platform/TraceTimeline.h"
#include "XOV_Graphics/platform/trace/IndexedSamples.h"
#include "XOV_Graphics/platform/trace/RoundedBorders.h"
#include "XOV_Graphics/platform/trace/RowMap.h"

#include <QTransform>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>

namespace xov {

/// Samples in a row that one unbroken line runs through, begin <= i < end.
struct SampleRange {
  std::int64_t begin = 0;
  std::int64_t end = 0;

  std::int64_t size() const { return end - begin; }
};

/// A trace as it lies on the picture: columns and rows in device pixels, rows counted downwards from the clip's top.
class TraceProjection {
public:
  /// `viewToDevice` must scale alike along both axes and may only mirror y.
  TraceProjection(const Trace& trace, const QTransform& viewToDevice, double clipTop, double clipHeight);

  /// False when columns do not grow with the index; such a trace must be stroked another way.
  bool grows() const { return grows_; }
  /// Nothing can show: no two samples in a row, or a scale that is not a number.
  bool isEmpty() const { return last_ - first_ < 2; }

  std::int64_t first() const { return first_; }
  std::int64_t last() const { return last_; }
  /// The samples as the host holds them, indexed like the trace. The first one may be overruled: see row().
  const float* samples() const { return trace_.samples; }
  const RowMap& rows() const { return rows_; }
  /// Those from <= i < to, in memory while what is given back lives.
  HeldSamples held(std::int64_t from, std::int64_t to) const { return trace_.held(from, to); }
  /// The same samples with the index that the trace may have.
  const IndexedSamples& indexed() const { return indexed_; }

  /// True unless sample i breaks the line.
  bool isFinite(std::int64_t i) const {
    return isPlain_ ? std::isfinite(trace_.samples[i]) : trace_.valueAt(i).has_value();
  }
  /// True when the value of sample i is not the one in samples().
  bool isOverruled(std::int64_t i) const { return i == trace_.first && trace_.firstValue.has_value(); }
  double column(std::int64_t i) const {
    return std::clamp(timeline_.since(trace_.tOrigin, i) * columnScale_ + columnOffset_, -kFarColumn, kFarColumn);
  }
  float row(std::int64_t i) const;

  /// The row that the lobes of a trace end at.
  float levelRow() const { return rowUnclamped(trace_.level); }
  /// Whether lobes alone are filled, and on which side of that row they lie.
  bool hasLobes() const { return trace_.area != TraceArea::Enclosed; }
  bool areLobesUpwards() const { return (trace_.area == TraceArea::AboveLevel) == (rows_.scale < 0); }

  /// The next unbroken line that begins at sample `from` or behind, cut off at `end`; empty where there is none.
  SampleRange nextLine(std::int64_t from, std::int64_t end) const;

  /// The first sample at or right of a column; last() when there is none.
  std::int64_t firstAtOrAfter(double wanted) const;

  /// The straight pieces that columns follow, see TraceTimeline.
  std::span<const TimePiece> pieces() const { return timeline_.pieces(); }
  std::size_t pieceAt(std::int64_t i) const { return timeline_.pieceAt(i); }
  /// The column of time t without the rounding of t - tOrigin.
  double columnOfTime(double t) const;
  double columnsPerTime() const { return columnScale_; }
  /// True when the columns of samples a <= i <= b lie within `tolerance` of the straight pieces.
  bool isStraight(std::int64_t a, std::int64_t b, double tolerance) const;
  /// How far, at most, the columns of samples a <= i <= b lie from the straight pieces, of which there must be some.
  double distanceFromPieces(std::int64_t a, std::int64_t b) const;
  /// How columns follow from indices where times are rounded products; nothing where they are not.
  std::optional<RoundedColumns> roundedColumns() const;
  /// True when the columns of samples a <= i <= b are straight and each lies at most `spacing` from the next.
  bool isDense(std::int64_t a, std::int64_t b, double spacing) const;

private:
  static constexpr double kFarColumn = 1e100; // beyond every picture, and its square is still a number

  float rowUnclamped(float value) const;
  void setRows(const QTransform& viewToDevice, double clipTop, double clipHeight);

  Trace trace_;
  TraceTimeline timeline_;
  IndexedSamples indexed_;
  RowMap rows_;
  double columnScale_ = 1;
  double columnOffset_ = 0;
  std::int64_t first_ = 0;
  std::int64_t last_ = 0;
  bool grows_ = true;
  bool isPlain_ = false; // samples are in memory, and are what is drawn
};

} // namespace xov
