#include "XOV_Graphics/platform/trace/TraceLayers.h"

#include "XOV_Graphics/platform/trace/RoundPen.h"

#include <algorithm>

namespace xov {

namespace {

constexpr int kFirstCapacity = 128; // layers, before lines of the same place are united early
constexpr int kShortPart = 4;       // lines of this part of a strip, or less, are then put in interval by interval
constexpr int kTogether = 16;       // sub-columns, as many as one line of a cache holds
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
  // A layer's sub-columns lie side by side, so some of them are taken together.
  const auto layers = static_cast<std::size_t>(count());
  std::vector<RowInterval> intervals(kTogether * layers);
  int kept = 0;
  const float bottom = static_cast<float>(rows_);
  for (int first = 0; first < subColumns_; first += kTogether) {
    const int columns = std::min(kTogether, subColumns_ - first);
    int found[kTogether] = {};
    for (int layer = 0; layer < count(); ++layer) {
      const float* const lows = low(layer) + first;
      const float* const highs = high(layer) + first;
      for (int j = 0; j < columns; ++j) {
        const bool shows = lows[j] < highs[j] && highs[j] > 0 && lows[j] < bottom;
        if (shows)
          intervals[static_cast<std::size_t>(j) * layers + static_cast<std::size_t>(found[j]++)] = {lows[j],
                                                                                                    highs[j]};
      }
    }
    for (int j = 0; j < columns; ++j) {
      found[j] = uniteIntervals(intervals.data() + static_cast<std::size_t>(j) * layers, found[j], kClosedGap);
      kept = std::max(kept, found[j]);
    }
    for (int layer = 0; layer < count(); ++layer) {
      float* const lows = lowOf(layer) + first;
      for (int j = 0; j < columns; ++j) {
        const bool used = layer < found[j];
        const RowInterval interval =
            used ? intervals[static_cast<std::size_t>(j) * layers + static_cast<std::size_t>(layer)]
                 : RowInterval{kNothingLow, kNothingHigh};
        lows[j] = interval.low;
        lows[subColumns_ + j] = interval.high;
      }
    }
  }
  usedUntil_.assign(static_cast<std::size_t>(kept), subColumns_);
  middles_.assign(static_cast<std::size_t>(kept), subColumns_ / 2);
  capacity_ = std::max(kFirstCapacity, 2 * kept);
}

} // namespace xov
