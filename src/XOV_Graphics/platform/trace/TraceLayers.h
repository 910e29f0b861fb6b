#pragma once

#include "XOV_Graphics/platform/trace/TraceSegment.h"

#include <vector>

namespace xov {

/// The ink of all unbroken lines in a strip, still apart: in each layer every sub-column holds at most one interval
/// of rows. Lines that lie apart from each other along x share a layer.
class TraceLayers {
public:
  /// Takes what memory the last ones of this thread have left: a picture of thousands of strokes would spend much of
  /// its time on that of each.
  TraceLayers();
  TraceLayers(const TraceLayers&) = delete;
  TraceLayers& operator=(const TraceLayers&) = delete;
  ~TraceLayers();

  /// Forgets everything and takes the width of a strip. Only its used columns will have ink.
  void reset(const TraceStrip& strip);

  int count() const { return static_cast<int>(usedUntil_.size()); }
  int subColumns() const { return subColumns_; }

  /// Narrows the used columns of a strip to those where lines were laid, and has all layers hold something there.
  void narrowUsed(TraceStrip& strip);

  /// Room for a line in sub-columns begin <= j < end, which the caller fills and then commits.
  InkRows acquire(int begin, int end);
  void commit(const InkRows& ink);

  /// Rows by sub-column, of those that are used.
  const float* low(int layer) const { return values_.data() + 2 * offset(layer); }
  const float* high(int layer) const { return low(layer) + subColumns_; }

  /// Where down the page the layer lies, in a sub-column that its last line covers.
  float place(int layer) const {
    const int middle = middles_[static_cast<std::size_t>(layer)];
    return middle >= begin_ && middle < end_ ? low(layer)[middle] : kNothingLow;
  }

private:
  static constexpr std::size_t kApart = 8;

  std::size_t offset(int layer) const {
    // A little apart, so that the same sub-column of all layers does not share few places of a cache.
    return static_cast<std::size_t>(layer) * (static_cast<std::size_t>(subColumns_) + kApart);
  }
  float* lowOf(int layer) { return values_.data() + 2 * offset(layer); }
  /// The sub-columns of a layer that hold something.
  struct Held {
    int begin = 0;
    int end = 0;
  };
  int addLayer(int begin, int end);
  void hold(int layer, int begin, int end);
  void holdAll();
  void clear(int layer, int begin, int end);
  void insert(int subColumn, float from, float to);
  void compact();

  int subColumns_ = 0;
  int begin_ = 0; // sub-columns that are used
  int end_ = 0;
  int inkBegin_ = 0; // of these, where lines were laid
  int inkEnd_ = 0;
  int rows_ = 0;
  int capacity_ = 0;
  std::vector<float> values_;
  std::vector<int> usedUntil_; // the first free sub-column of each layer
  std::vector<int> middles_;
  std::vector<Held> held_;
  bool areWhole_ = false;      // all layers hold something in all used sub-columns
  std::vector<float> scratch_; // the ink of a short line on its way into the layers
};

/// Intervals of rows of one sub-column.
struct RowInterval {
  float low = 0;
  float high = 0;
};

/// Sorts intervals and joins those that touch or lie less than `gap` apart; returns how many remain, at the front.
int uniteIntervals(RowInterval* intervals, int count, float gap);

} // namespace xov
