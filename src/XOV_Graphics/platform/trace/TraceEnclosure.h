#pragma once

#include "XOV_Graphics/platform/trace/RowPairs.h"
#include "XOV_Graphics/platform/trace/TraceBorders.h"
#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <cstddef>
#include <span>
#include <vector>

namespace xov {

/// What traces enclose in a strip, each unbroken line of them closed from its last sample to its first: intervals of
/// rows at the middle of each sub-column, exactly along the rows.
///
/// A line whose times grow crosses the middle of a sub-column once, and so does the side that closes it: both are
/// looked up, however many samples the sub-column holds. Where lobes alone are filled, the side is their level, and
/// the curve counts on one side of it.
class TraceEnclosure {
public:
  /// Borrows the projections, whose columns must grow.
  TraceEnclosure(std::span<const TraceProjection> projections, InsideRule rule);

  /// A strip's sub-columns a pixel must be a power of two, and at most this many.
  static constexpr int kFinest = 128;

  void find(const TraceStrip& strip);

  /// The intervals of the strip by layers, which go down the page in every sub-column; empty while low >= high.
  std::span<const float* const> lows() const { return lows_; }
  std::span<const float* const> highs() const { return highs_; }

private:
  /// A line, and the side that leads back from its last sample to its first.
  struct Area {
    SampleRange samples;
    double left = 0;
    double right = 0;
    double row = 0;   ///< of the side at its left end
    double slope = 0; ///< rows a column; 0 for a level
  };
  /// Sub-columns first <= j < last.
  struct Span {
    int first = 0;
    int last = 0;
  };

  void addAreas(const TraceProjection& projection);
  Span middlesIn(const Area& area) const;
  void findAreas(std::size_t trace);
  void findCurve(const TraceProjection& projection, const Area& area, Span span, float* rows);
  static void keepLobes(bool upwards, Span span, float* curve, float* level);
  void findSide(const Area& area, Span span, float* rows) const;
  float* rowsOf(int border) {
    return rows_.data() + static_cast<std::size_t>(border) * static_cast<std::size_t>(strip_.subColumns());
  }

  std::span<const TraceProjection> projections_;
  InsideRule rule_;
  std::vector<Area> areas_;           // of all traces, one after the other
  std::vector<std::size_t> areaEnds_; // of each trace
  TraceStrip strip_;
  int layers_ = 0;
  std::vector<float> rows_; // see RowPairs.h
  std::vector<const float*> lows_, highs_;
  TraceBorders borders_;
  std::vector<float> before_, after_; // rows of the samples around the middles
};

} // namespace xov
