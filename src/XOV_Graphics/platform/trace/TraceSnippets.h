#pragma once

#include "XOV_Graphics/platform/trace/RoundPen.h"
#include "XOV_Graphics/platform/trace/TraceExtremes.h"
#include "XOV_Graphics/platform/trace/TraceLayers.h"
#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <cstdint>
#include <vector>

namespace xov {

/// Lines between gaps that are so short that many of them end within one sub-column. Their ink is found together.
///
/// Such a line runs up and down inside its sub-column, so it inks what lies between its extremes as wide as the pen;
/// the discs at its inner samples, which are those of the extremes without the first and the last sample, reach
/// further up and down. Both are united by sub-column, before the pen: few intervals remain of thousands of lines.
class TraceSnippets {
public:
  /// For strips as wide as this one, and a pen that reaches so many sub-columns to either side.
  TraceSnippets(const TraceStrip& strip, int reach);

  /// Begins anew, in a strip of the same or of a smaller width.
  void reset(const TraceStrip& strip);

  /// Takes the lines from sample `from` on, which must follow a gap, up to one that is too long, or is cut off at
  /// `end`. Returns where that one begins; `end` when there is none. Calls must go on along the trace.
  std::int64_t take(const TraceProjection& projection, const TraceExtremes& extremes, std::int64_t from,
                    std::int64_t end);

  /// Lays what has been taken into layers of its own, with the pen for curves that are smooth or the one for tips,
  /// and calls `judge` with the ink of each.
  template <class Judge>
  void ink(const RowMap& toRow, RoundPen& smooth, RoundPen& tips, TraceLayers& layers, const Judge& judge) {
    endSubColumn();
    for (Intervals* const intervals : {&wholes_, &inners_}) {
      for (int depth = 0; setLayer(*intervals, depth, toRow); ++depth) {
        if (begin_ == end_) continue; // none of it reaches into the strip
        const InkRows ink = layers.acquire(begin_, end_);
        if (intervals == &wholes_)
          widenFlat(ink);
        else
          widenRound(isSmooth_ ? smooth : tips, ink);
        judge(ink);
        layers.commit(ink);
      }
    }
  }

private:
  /// Intervals of values: those of the sub-column at hand, and what is left of those of others.
  struct Intervals {
    struct Kept {
      int subColumn = 0;
      int depth = 0; // how many lie below it in the sub-column
      RowInterval interval;
    };
    std::vector<RowInterval> open;
    std::vector<Kept> kept;
    float gap = 0; // of values, across which intervals are joined

    void add(float low, float high);
    void endSubColumn(int subColumn);
  };

  void endSubColumn();
  bool setLayer(const Intervals& intervals, int depth, const RowMap& toRow);
  void widenFlat(const InkRows& ink) const;
  void widenRound(RoundPen& pen, const InkRows& ink) const;
  std::size_t slot(int subColumn) const { return static_cast<std::size_t>(subColumn + padding_ + 2 * reach_); }

  TraceStrip strip_;
  int reach_ = 0;
  int padding_ = 0;
  int subColumn_ = 0;
  std::int64_t border_ = 0;  // the first sample beyond the sub-column
  std::int64_t longest_ = 0; // samples of a line that may lie in it
  Intervals wholes_, inners_;
  int begin_ = 0, end_ = 0; // of the ink of a layer
  bool isSmooth_ = false;
  std::vector<float> low_, high_;
};

} // namespace xov
