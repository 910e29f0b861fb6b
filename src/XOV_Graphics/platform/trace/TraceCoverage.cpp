#include "XOV_Graphics/platform/trace/TraceCoverage.h"

#include "XOV_Graphics/platform/trace/RowPairs.h"

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
    order_.push_back({layers.low(layer), layers.high(layer), layers.place(layer)});
  }
  if (order_.size() > 1) // which would take memory for it
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
  const int end = std::min(kInkColumns, strip.lastUsed - column);
  for (int c = std::max(0, strip.firstUsed - column); c < end; ++c)
    uniteColumn(strip, column + c, changes_.data() + c, inked);
  return inked;
}

void TraceCoverage::uniteColumn(const TraceStrip& strip, int column, std::int32_t* changes, RowRange& inked) {
  const auto layers = static_cast<int>(lows_.size());
  const int firstSub = column * strip.perColumn;
  if (sortedNext_ == 0) {
    if (addUnion(lows_.data(), highs_.data(), layers, firstSub, strip.perColumn, rows_, changes, inked)) return;
    for (int row = 0; row <= rows_; ++row)
      changes[row * kInkColumns] = 0;
    sortedAtOnce_ = std::min(2 * sortedAtOnce_, kInkColumns);
    sortedNext_ = sortedAtOnce_;
  }
  uniteSorted(firstSub, strip.perColumn, changes, inked);
  --sortedNext_;
}

/// Unites the intervals after sorting them: then none lies above one before it.
void TraceCoverage::uniteSorted(int firstSub, int perColumn, std::int32_t* changes, RowRange& inked) {
  const std::size_t layers = lows_.size();
  sortedLows_.resize(layers * kSortedTogether);
  sortedHighs_.resize(layers * kSortedTogether);
  sortedLayers_.resize(2 * layers);
  for (std::size_t layer = 0; layer < layers; ++layer) {
    sortedLayers_[layer] = sortedLows_.data() + layer * kSortedTogether;
    sortedLayers_[layers + layer] = sortedHighs_.data() + layer * kSortedTogether;
  }
  for (int j = firstSub; j < firstSub + perColumn; j += kSortedTogether) {
    sortIntervals(lows_.data(), highs_.data(), int(layers), j, kSortedTogether, rows_, sortedLows_.data(),
                  sortedHighs_.data());
    addUnion(sortedLayers_.data(), sortedLayers_.data() + layers, int(layers), 0, kSortedTogether, rows_, changes,
             inked);
  }
}

} // namespace xov
