#pragma once

#include "XOV_Graphics/platform/trace/TraceLayers.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"
#include "XOV_Graphics/platform/trace/TraceUnion.h"

#include <cstdint>
#include <span>
#include <vector>

namespace xov {

/// How much of each pixel is inked: the union of all layers of a strip, exact along the rows, in a few columns of
/// pixels at a time.
class TraceCoverage {
public:
  /// A picture of thousands of strokes would spend most of its time on clearing room for each: all of a thread share
  /// one.
  explicit TraceCoverage(int rows);
  TraceCoverage(const TraceCoverage&) = delete;
  TraceCoverage& operator=(const TraceCoverage&) = delete;
  ~TraceCoverage();

  /// Takes the layers of a strip, which must stay as they are until its columns have been united.
  void take(const TraceLayers& layers);
  /// The same for layers that go down the page in every sub-column, by the lower and the higher end of their
  /// intervals.
  void takeInOrder(std::span<const float* const> lows, std::span<const float* const> highs);

  /// Unites the ink of up to kInkColumns columns from `column` on, and returns the rows that may have some. Its
  /// changes then stand in changes(), and must be cleared by whoever sums them, in those rows and the one behind.
  RowRange unite(const TraceStrip& strip, int column);
  std::int32_t* changes() { return changes_.data(); }
  /// The same of one column, added to `changes` of the caller's, which are 0 in that column, and to the rows `inked`.
  void uniteColumn(const TraceStrip& strip, int column, std::int32_t* changes, RowRange& inked);

private:
  void uniteSorted(int firstSub, int perColumn, std::int32_t* changes, RowRange& inked);

  int rows_ = 0;
  // Where lines cross in one column, they mostly do in the next ones: so many of these are then sorted without a try.
  int sortedAtOnce_ = 1;
  int sortedNext_ = 0;
  std::vector<std::int32_t> changes_; // see TraceUnion.h; all 0 but between unite() and the sums
  std::vector<float> sortedLows_, sortedHighs_;
  std::vector<const float*> sortedLayers_;
  struct Layer {
    const float* low = nullptr;
    const float* high = nullptr;
    float place = 0;
  };
  std::vector<Layer> order_;
  std::vector<const float*> lows_, highs_;
};

} // namespace xov
