#pragma once

#include "platform/TraceLayers.h"
#include "platform/TraceStrip.h"

#include <cstdint>
#include <vector>

namespace xov {

/// How much of each pixel in a strip is inked, 0 to 255: the union of all layers, exact along the rows.
class TraceCoverage {
public:
  TraceCoverage(int columns, int rows);

  /// Replaces the coverage by that of a strip's layers.
  void cover(const TraceStrip& strip, const TraceLayers& layers);

  /// The strip's pixels of a row, from left to right.
  const std::uint8_t* row(int row) const { return pixels_.data() + std::size_t(row) * std::size_t(columns_); }
  /// The rows that may hold ink: firstRow() <= row < lastRow().
  int firstRow() const { return firstRow_; }
  int lastRow() const { return lastRow_; }

private:
  void sortLayers(const TraceLayers& layers);
  void uniteOneByOne(int firstSub, int perColumn);

  int columns_ = 0;
  int rows_ = 0;
  int firstRow_ = 0;
  int lastRow_ = 0;
  std::vector<std::uint8_t> pixels_;
  std::vector<std::int64_t> changes_; // of the ink in one column of pixels, see TraceUnion.h
  std::vector<RowInterval> intervals_;
  struct Layer {
    const float* low = nullptr;
    const float* high = nullptr;
    float place = 0;
  };
  std::vector<Layer> order_;
  std::vector<const float*> lows_, highs_;
};

} // namespace xov
