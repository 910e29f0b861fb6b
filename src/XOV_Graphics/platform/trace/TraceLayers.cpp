#include "XOV_Graphics/platform/trace/TraceLayers.h"

#include "XOV_Graphics/platform/trace/RoundPen.h"

#include <algorithm>

namespace xov {

namespace {

constexpr int kFirstCapacity = 128; // layers, before lines of the same place are united early
constexpr int kShortPart = 4;       // lines of this part of a strip, or less, are then put in interval by interval
constexpr int kSharedTries = 4;     // layers that are looked at for room before a new one is begun
// When thousands of lines cross one column, gaps of this many rows between their ink are closed. It bounds how much a
// sub-column can hold, and so little of a pixel does not show.
constexpr float kClosedGap = 1.0F / 128;

} // namespace

int uniteIntervals(RowInterval* intervals, int count, float gap) {
  if (count < 2) return count;
  const auto higherUp = [](const RowInterval& a, const RowInterval& b) { return a.low < b.low; };
  // Lines mostly come in their order down or up the page.
  if (!std::is_sorted(intervals, intervals + count, higherUp)) {
    std::reverse(intervals, intervals + count);
    if (!std::is_sorted(intervals, intervals + count, higherUp)) std::sort(intervals, intervals + count, higherUp);
  }
  int last = 0;
  for (int i = 1; i < count; ++i) {
    if (intervals[i].low <= intervals[last].high + gap) {
      intervals[last].high = std::max(intervals[last].high, intervals[i].high);
    } else {
      intervals[++last] = intervals[i];
    }
  }
  return last + 1;
}

void TraceLayers::reset(int subColumns, int rows) {
  subColumns_ = subColumns;
  rows_ = rows;
  capacity_ = kFirstCapacity;
  usedUntil_.clear();
  middles_.clear();
}

int TraceLayers::addLayer() {
  const int layer = count();
  usedUntil_.push_back(0);
  middles_.push_back(0);
  const std::size_t needed = 2 * offset(layer + 1);
  if (values_.size() < needed) values_.resize(needed);
  return layer;
}

InkRows TraceLayers::acquire(int begin, int end) {
  if (count() >= capacity_) {
    if ((end - begin) * kShortPart <= subColumns_) {
      scratch_.resize(2 * static_cast<std::size_t>(subColumns_));
      return {scratch_.data(), scratch_.data() + subColumns_, begin, end};
    }
    compact();
  }
  int layer = -1;
  const int oldest = std::max(0, count() - kSharedTries);
  for (int candidate = count() - 1; candidate >= oldest && layer < 0; --candidate) {
    if (usedUntil_[static_cast<std::size_t>(candidate)] <= begin) layer = candidate;
  }
  if (layer < 0) {
    layer = addLayer();
    const InkRows whole{lowOf(layer), lowOf(layer) + subColumns_, 0, subColumns_};
    whole.clear(0, begin);
    whole.clear(end, subColumns_);
  }
  usedUntil_[static_cast<std::size_t>(layer)] = end;
  middles_[static_cast<std::size_t>(layer)] = begin + (end - begin) / 2;
  return {lowOf(layer), lowOf(layer) + subColumns_, begin, end};
}

void TraceLayers::commit(const InkRows& ink) {
  if (scratch_.empty() || ink.low != scratch_.data()) return;
  for (int j = ink.begin; j < ink.end; ++j) {
    const float from = ink.low[j], to = ink.high[j];
    if (from < to && to > 0 && from < static_cast<float>(rows_)) insert(j, from, to);
  }
}

/// Puts an interval into the first layer that has room for it or ink beside it.
void TraceLayers::insert(int subColumn, float from, float to) {
  for (int layer = 0; layer < count(); ++layer) {
    float& layerLow = lowOf(layer)[subColumn];
    float& layerHigh = lowOf(layer)[subColumns_ + subColumn];
    const bool empty = layerLow >= layerHigh;
    if (!empty && (from > layerHigh + kClosedGap || to < layerLow - kClosedGap)) continue;
    layerLow = empty ? from : std::min(layerLow, from);
    layerHigh = empty ? to : std::max(layerHigh, to);
    usedUntil_[static_cast<std::size_t>(layer)] = subColumns_; // no line may be laid over it unseen
    return;
  }
  const int layer = addLayer();
  InkRows{lowOf(layer), lowOf(layer) + subColumns_, 0, subColumns_}.clear(0, subColumns_);
  usedUntil_.back() = subColumns_;
  middles_.back() = subColumn;
  lowOf(layer)[subColumn] = from;
  lowOf(layer)[subColumns_ + subColumn] = to;
}

void TraceLayers::compact() {
  std::vector<RowInterval> intervals(static_cast<std::size_t>(count()));
  int kept = 0;
  const float bottom = static_cast<float>(rows_);
  for (int j = 0; j < subColumns_; ++j) {
    int found = 0;
    for (int layer = 0; layer < count(); ++layer) {
      const float from = low(layer)[j], to = high(layer)[j];
      if (from < to && to > 0 && from < bottom) intervals[static_cast<std::size_t>(found++)] = {from, to};
    }
    const int united = uniteIntervals(intervals.data(), found, kClosedGap);
    for (int layer = 0; layer < count(); ++layer) {
      const bool used = layer < united;
      lowOf(layer)[j] = used ? intervals[static_cast<std::size_t>(layer)].low : kNothingLow;
      lowOf(layer)[subColumns_ + j] = used ? intervals[static_cast<std::size_t>(layer)].high : kNothingHigh;
    }
    kept = std::max(kept, united);
  }
  usedUntil_.assign(static_cast<std::size_t>(kept), subColumns_);
  middles_.assign(static_cast<std::size_t>(kept), subColumns_ / 2);
  capacity_ = std::max(kFirstCapacity, 2 * kept);
}

} // namespace xov
