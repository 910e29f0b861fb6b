#include "XOV_Graphics/platform/trace/TraceLayers.h"

#include "XOV_Graphics/platform/trace/RowPairs.h"

#include <algorithm>
#include <utility>

namespace xov {

namespace {

constexpr int kFirstCapacity = 128; // layers, before lines of the same place are united early
constexpr int kShortPart = 4;       // lines of this part of a strip, or less, are then put in interval by interval
constexpr int kSharedTries = 4;     // layers that are looked at for room before a new one is begun
// When thousands of lines cross one column, gaps of this many rows between their ink are closed. It bounds how much a
// sub-column can hold, and so little of a pixel does not show.
constexpr float kClosedGap = 1.0F / 128;

constexpr std::size_t kMostKeptValues = std::size_t(1) << 18;

std::vector<float>& keptValues() {
  static thread_local std::vector<float> values;
  return values;
}

/// Unites sorted intervals of a sub-column in their place, and clears the rest. Returns how many remain.
int uniteSorted(float* lows, float* highs, int count) {
  int united = 0;
  for (int k = 0; k < count * kSortedTogether && lows[k] < kNothingLow; k += kSortedTogether) {
    const int last = (united - 1) * kSortedTogether;
    const float low = lows[k], high = highs[k];
    if (united > 0 && low <= highs[last] + kClosedGap) {
      highs[last] = high;
      continue;
    }
    lows[united * kSortedTogether] = low;
    highs[united * kSortedTogether] = high;
    ++united;
  }
  for (int layer = united; layer < count; ++layer) {
    lows[layer * kSortedTogether] = kNothingLow;
    highs[layer * kSortedTogether] = kNothingHigh;
  }
  return united;
}

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

TraceLayers::TraceLayers() : values_(std::exchange(keptValues(), {})) {}

TraceLayers::~TraceLayers() {
  if (values_.size() <= kMostKeptValues) keptValues() = std::move(values_);
}

void TraceLayers::reset(const TraceStrip& strip) {
  subColumns_ = strip.subColumns();
  begin_ = strip.firstUsed * strip.perColumn;
  end_ = strip.lastUsed * strip.perColumn;
  inkBegin_ = end_;
  inkEnd_ = begin_;
  rows_ = strip.rows;
  capacity_ = kFirstCapacity;
  usedUntil_.clear();
  middles_.clear();
  held_.clear();
  areWhole_ = false;
}

/// Adds a layer that is about to get a line in sub-columns begin <= j < end.
int TraceLayers::addLayer(int begin, int end) {
  const int layer = count();
  usedUntil_.push_back(0);
  middles_.push_back(0);
  held_.push_back({begin, end});
  const std::size_t needed = 2 * offset(layer + 1);
  if (values_.size() < needed) values_.resize(needed);
  return layer;
}

/// Lets a layer hold something, or nothing, in sub-columns around those where it does.
void TraceLayers::hold(int layer, int begin, int end) {
  Held& held = held_[static_cast<std::size_t>(layer)];
  clear(layer, begin, held.begin);
  clear(layer, held.end, end);
  held = {std::min(begin, held.begin), std::max(end, held.end)};
}

/// The same of all layers in all used sub-columns.
void TraceLayers::holdAll() {
  if (std::exchange(areWhole_, true)) return;
  for (int layer = 0; layer < count(); ++layer)
    hold(layer, begin_, end_);
}

/// Clears used sub-columns of a layer.
void TraceLayers::clear(int layer, int begin, int end) {
  if (begin < end) InkRows{lowOf(layer), lowOf(layer) + subColumns_, begin_, end_}.clear(begin, end);
}

void TraceLayers::narrowUsed(TraceStrip& strip) {
  strip.firstUsed = inkBegin_ / strip.perColumn;
  strip.lastUsed = std::max((inkEnd_ + strip.perColumn - 1) / strip.perColumn, strip.firstUsed);
  for (int layer = 0; layer < count(); ++layer)
    hold(layer, strip.firstUsed * strip.perColumn, strip.lastUsed * strip.perColumn);
}

InkRows TraceLayers::acquire(int begin, int end) {
  inkBegin_ = std::min(inkBegin_, begin);
  inkEnd_ = std::max(inkEnd_, end);
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
    layer = addLayer(begin, end);
    if (areWhole_) hold(layer, begin_, end_);
  } else {
    hold(layer, held_[static_cast<std::size_t>(layer)].begin, end);
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
  holdAll();
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
  const int layer = addLayer(begin_, begin_);
  hold(layer, begin_, end_);
  usedUntil_.back() = subColumns_;
  middles_.back() = subColumn;
  lowOf(layer)[subColumn] = from;
  lowOf(layer)[subColumns_ + subColumn] = to;
}

void TraceLayers::compact() {
  std::vector<const float*> lows, highs;
  holdAll();
  for (int layer = 0; layer < count(); ++layer) {
    lows.push_back(low(layer));
    highs.push_back(high(layer));
  }
  std::vector<float> sortedLows(lows.size() * kSortedTogether), sortedHighs(sortedLows.size());
  int kept = 0;
  for (int first = begin_; first < end_; first += kSortedTogether) {
    const int columns = std::min(kSortedTogether, end_ - first);
    sortIntervals(lows.data(), highs.data(), count(), first, columns, rows_, sortedLows.data(), sortedHighs.data());
    for (int j = 0; j < columns; ++j)
      kept = std::max(kept, uniteSorted(sortedLows.data() + j, sortedHighs.data() + j, count()));
    for (int layer = 0; layer < count(); ++layer) {
      std::copy_n(sortedLows.data() + layer * kSortedTogether, columns, lowOf(layer) + first);
      std::copy_n(sortedHighs.data() + layer * kSortedTogether, columns, lowOf(layer) + subColumns_ + first);
    }
  }
  usedUntil_.assign(static_cast<std::size_t>(kept), subColumns_);
  middles_.assign(static_cast<std::size_t>(kept), subColumns_ / 2);
  held_.assign(static_cast<std::size_t>(kept), {begin_, end_});
  capacity_ = std::max(kFirstCapacity, 2 * kept);
}

} // namespace xov
