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
  void addColumn(const TraceStrip& strip, const TraceLayers& layers, int column);
  void addInterval(float low, float high);
  void finishColumn(int column, int perColumn);

  int columns_ = 0;
  int rows_ = 0;
  int firstRow_ = 0;
  int lastRow_ = 0;
  int columnTop_ = 0;
  int columnBottom_ = 0;
  std::vector<std::uint8_t> pixels_;
  std::vector<std::int32_t> changes_; // of the coverage from one row to the next, in one column of pixels
  std::vector<RowInterval> intervals_;
};

} // namespace xov
