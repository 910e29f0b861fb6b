#include "XOV_Graphics/platform/trace/TraceCoverage.h"

#include <algorithm>
#include <utility>

namespace xov {

namespace {

std::vector<std::int32_t>& keptChanges() {
  static thread_local std::vector<std::int32_t> changes;
  return changes;
}

} // namespace

TraceCoverage::TraceCoverage(int rows) : rows_(rows), changes_(std::exchange(keptChanges(), {})) {
  const std::size_t needed = (std::size_t(rows) + 1) * kInkColumns;
  if (changes_.size() < needed) changes_.resize(needed);
}

TraceCoverage::~TraceCoverage() { keptChanges() = std::move(changes_); }

/// Puts the layers into their order down the page, as far as they have one.
void TraceCoverage::take(const TraceLayers& layers) {
  order_.clear();
  for (int layer = 0; layer < layers.count(); ++layer) {
    order_.push_back({layers.low(layer), layers.high(layer), layers.low(layer)[layers.middle(layer)]});
  }
  std::stable_sort(order_.begin(), order_.end(), [](const Layer& a, const Layer& b) { return a.place < b.place; });
  lows_.clear();
  highs_.clear();
  for (const Layer& layer : order_) {
    lows_.push_back(layer.low);
    highs_.push_back(layer.high);
  }
}

void TraceCoverage::takeInOrder(std::span<const float* const> lows, std::span<const float* const> highs) {
  lows_.assign(lows.begin(), lows.end());
  highs_.assign(highs.begin(), highs.end());
}

RowRange TraceCoverage::unite(const TraceStrip& strip, int column) {
  RowRange inked;
  const auto layers = static_cast<int>(lows_.size());
  const int columns = std::min(kInkColumns, strip.columns - column);
  for (int c = 0; c < columns; ++c) {
    const int firstSub = (column + c) * strip.perColumn;
    std::int32_t* const changes = changes_.data() + c;
    if (addUnion(lows_.data(), highs_.data(), layers, firstSub, strip.perColumn, rows_, changes, inked)) continue;
    for (int row = 0; row <= rows_; ++row)
      changes[row * kInkColumns] = 0;
    uniteOneByOne(firstSub, strip.perColumn, changes, inked);
  }
  return inked;
}

/// Unites each sub-column's intervals after sorting them.
void TraceCoverage::uniteOneByOne(int firstSub, int perColumn, std::int32_t* changes, RowRange& inked) {
  const auto bottom = static_cast<float>(rows_);
  intervals_.resize(lows_.size());
  for (int j = firstSub; j < firstSub + perColumn; ++j) {
    int found = 0;
    for (std::size_t layer = 0; layer < lows_.size(); ++layer) {
      const RowInterval visible{std::max(lows_[layer][j], 0.0F), std::min(highs_[layer][j], bottom)};
      if (visible.low < visible.high) intervals_[static_cast<std::size_t>(found++)] = visible;
    }
    const int united = uniteIntervals(intervals_.data(), found, 0);
    for (int k = 0; k < united; ++k) {
      const RowInterval& interval = intervals_[static_cast<std::size_t>(k)];
      addEdge(changes, rowUnits(interval.low), 1);
      addEdge(changes, rowUnits(interval.high), -1);
      includeRows(inked, interval.low, interval.high, rows_);
    }
  }
}

} // namespace xov
