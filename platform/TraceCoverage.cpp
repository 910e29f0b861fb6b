#include "platform/TraceCoverage.h"

#include "platform/TraceUnion.h"

#include <algorithm>

namespace xov {

TraceCoverage::TraceCoverage(int columns, int rows)
    : columns_(columns),
      rows_(rows),
      pixels_(std::size_t(columns) * std::size_t(rows)),
      changes_(std::size_t(rows) + 1) {}

void TraceCoverage::cover(const TraceStrip& strip, const TraceLayers& layers) {
  const auto at = [this](int row) { return pixels_.begin() + std::ptrdiff_t(row) * columns_; };
  std::fill(at(firstRow_), at(lastRow_), std::uint8_t(0));
  firstRow_ = rows_;
  lastRow_ = 0;
  sortLayers(layers);
  int first = rows_, last = 0;
  for (std::size_t layer = 0; layer < lows_.size(); ++layer) {
    int top = 0, bottom = 0;
    findInkedRows(lows_[layer], highs_[layer], strip.subColumns(), rows_, top, bottom);
    if (top >= bottom) continue;
    first = std::min(first, top);
    last = std::max(last, bottom);
  }
  if (first >= last) {
    firstRow_ = lastRow_ = 0;
    return;
  }
  for (int column = 0; column < strip.columns; ++column) {
    const int firstSub = column * strip.perColumn;
    if (!addUnion(lows_.data(), highs_.data(), layers.count(), firstSub, strip.perColumn, rows_, changes_.data())) {
      std::fill(changes_.begin(), changes_.end(), 0);
      uniteOneByOne(firstSub, strip.perColumn);
    }
    int top = 0, bottom = 0;
    finishUnion(changes_.data() + first, last - first, strip.perColumn,
                pixels_.data() + std::ptrdiff_t(first) * columns_ + column, columns_, top, bottom);
    firstRow_ = std::min(firstRow_, first + top);
    lastRow_ = std::max(lastRow_, first + bottom);
  }
  if (lastRow_ <= firstRow_) firstRow_ = lastRow_ = 0;
}

/// Puts the layers into their order down the page, as far as they have one.
void TraceCoverage::sortLayers(const TraceLayers& layers) {
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

/// Unites each sub-column's intervals after sorting them.
void TraceCoverage::uniteOneByOne(int firstSub, int perColumn) {
  const auto bottom = static_cast<float>(rows_);
  intervals_.resize(order_.size());
  for (int j = firstSub; j < firstSub + perColumn; ++j) {
    int found = 0;
    for (const Layer& layer : order_) {
      const RowInterval visible{std::max(layer.low[j], 0.0F), std::min(layer.high[j], bottom)};
      if (visible.low < visible.high) intervals_[static_cast<std::size_t>(found++)] = visible;
    }
    const int united = uniteIntervals(intervals_.data(), found, 0);
    for (int k = 0; k < united; ++k) {
      addEdge(changes_.data(), rowUnits(intervals_[static_cast<std::size_t>(k)].low), 1);
      addEdge(changes_.data(), rowUnits(intervals_[static_cast<std::size_t>(k)].high), -1);
    }
  }
}

} // namespace xov
