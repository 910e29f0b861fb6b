#include "XOV_Graphics/platform/trace/TraceSnippets.h"

#include "XOV_Graphics/base/BlockExtremes.h"
#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr int kBatch = 32;              // lines that are looked at together
constexpr double kStray = 0.5;          // of a sub-column, how far a line may reach into the next
constexpr float kWholeGap = 1.0F / 64;  // rows; less paper between lines does not show
constexpr float kInnerGap = 1.0F / 8;   // of the radius; a disc reaches as far across its neighbours
constexpr float kFlat = 1.0F / 16;      // rows; a segment alone that rises less is a dash, not an upright bar
constexpr std::size_t kMostOpen = 4096; // intervals of a sub-column, before they are united on the way

/// A line between two gaps.
struct Snippet {
  std::int64_t begin = 0, end = 0;
  float low = 0, high = 0;           // of all samples
  float innerLow = 0, innerHigh = 0; // without the first and the last; low > high where there are none
};

/// Finds lines of two samples or more from `begin` on, up to `room` of them, one of more than `longest` samples, or
/// one that ends at `end`. Returns how many, and where to go on: at the line that it stopped at, or behind the last
/// one that it found.
template <class Vector>
XOV_INLINE int findSnippetsWith(const float* samples, std::int64_t& begin, std::int64_t end, std::int64_t longest,
                                Snippet* found, int room) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  constexpr int kWidth = kLanes<Vector>;
  int count = 0;
  while (count < room) {
    while (begin < end && !(samples[begin] - samples[begin] == 0))
      ++begin;
    if (begin + 1 >= end) return count;
    const float first = samples[begin];
    std::int64_t i = begin + 1;            // an inner sample, if the next one is still there
    if (!(samples[i] - samples[i] == 0)) { // a sample alone
      begin = i;
      continue;
    }
    const std::int64_t limit = std::min(end, begin + longest + 1);
    float low = kInfinity, high = -kInfinity;
    if (i + kWidth < limit) {
      Vector lowest = Vector{} + kInfinity, highest = Vector{} - kInfinity;
      for (; i + kWidth < limit; i += kWidth) {
        Vector here, next;
        loadVector(samples + i, here);
        loadVector(samples + i + 1, next);
        next = next - next; // 0 for a number, NaN for everything else
        if (!inNoLane(next != Vector{})) break;
        keepSmaller(lowest, here);
        keepGreater(highest, here);
      }
      if (i > begin + 1) {
        for (int lane = 0; lane < kWidth; ++lane) {
          low = std::min(low, lowest[lane]);
          high = std::max(high, highest[lane]);
        }
      }
    }
    for (; i + 1 < limit && samples[i + 1] - samples[i + 1] == 0; ++i) {
      low = std::min(low, samples[i]);
      high = std::max(high, samples[i]);
    }
    if (i + 1 >= limit) return count; // cut off, or too long
    const float last = samples[i];
    found[count++] = {begin, i + 1, std::min(low, std::min(first, last)), std::max(high, std::max(first, last)),
                      low,   high};
    begin = i + 2;
  }
  return count;
}
XOV_VECTOR8_FUNCTION(int, findSnippets,
                     (const float* samples, std::int64_t& begin, std::int64_t end, std::int64_t longest,
                      Snippet* found, int room),
                     (samples, begin, end, longest, found, room))

} // namespace

TraceSnippets::TraceSnippets(const TraceStrip& strip, int reach) : strip_(strip), reach_(reach), padding_(reach + 2) {
  const auto size = static_cast<std::size_t>(strip.subColumns() + 2 * padding_ + 4 * reach + 2 + RoundPen::kSlack);
  low_.resize(size);
  high_.resize(size);
}

void TraceSnippets::reset(const TraceStrip& strip) {
  strip_ = strip;
  subColumn_ = -padding_;
  border_ = std::numeric_limits<std::int64_t>::min();
  for (Intervals* const intervals : {&wholes_, &inners_}) {
    intervals->open.clear();
    intervals->kept.clear();
  }
}

void TraceSnippets::Intervals::add(float low, float high) {
  if (!open.empty()) {
    RowInterval& latest = open.back();
    if (low <= latest.high + gap && high >= latest.low - gap) { // so it mostly is: lines overlap
      latest.low = std::min(latest.low, low);
      latest.high = std::max(latest.high, high);
      return;
    }
    if (open.size() >= kMostOpen)
      open.resize(static_cast<std::size_t>(uniteIntervals(open.data(), static_cast<int>(open.size()), gap)));
  }
  open.push_back({low, high});
}

void TraceSnippets::Intervals::endSubColumn(int subColumn) {
  const int count = uniteIntervals(open.data(), static_cast<int>(open.size()), gap);
  for (int depth = 0; depth < count; ++depth)
    kept.push_back({subColumn, depth, open[static_cast<std::size_t>(depth)]});
  open.clear();
}

void TraceSnippets::endSubColumn() {
  wholes_.endSubColumn(subColumn_);
  inners_.endSubColumn(subColumn_);
}

std::int64_t TraceSnippets::take(const TraceProjection& projection, const TraceExtremes& extremes, std::int64_t from,
                                 std::int64_t end) {
  const RowMap& toRow = projection.rows();
  const float valuesPerRow = 1 / std::max(std::abs(toRow.scale), std::numeric_limits<float>::min());
  wholes_.gap = kWholeGap * valuesPerRow;
  inners_.gap = kInnerGap * static_cast<float>(strip_.radius) * valuesPerRow;
  std::array<Snippet, kBatch> found;
  std::int64_t next = from;
  while (next < end) {
    if (next >= border_) {
      endSubColumn();
      subColumn_ = extremes.subColumnOf(projection.column(next));
      const bool isLast = subColumn_ + 1 >= strip_.subColumns() + padding_;
      border_ = isLast ? end : projection.firstAtOrAfter(strip_.curveBorder(subColumn_ + 1));
      border_ = std::max(border_, next + 1);
      longest_ = border_ - next;
    }
    const int count = findSnippets(projection.samples(), next, end, longest_, found.data(), kBatch);
    for (int k = 0; k < count; ++k) {
      const Snippet& line = found[static_cast<std::size_t>(k)];
      if (line.begin >= border_) { // another sub-column's
        next = line.begin;
        break;
      }
      const bool isDash = line.innerLow > line.innerHigh && line.high - line.low < kFlat * valuesPerRow;
      const bool strays = line.end > border_ && projection.column(line.end - 1) - projection.column(line.begin) >
                                                    kStray * strip_.subWidth();
      if (isDash || strays) return line.begin;
      wholes_.add(line.low, line.high);
      if (line.innerLow <= line.innerHigh) inners_.add(line.innerLow, line.innerHigh);
    }
    if (count == 0 && next < border_) return next;
  }
  return end;
}

/// Puts the intervals that have as many below them into the rows of a curve. False when there are none.
bool TraceSnippets::setLayer(const Intervals& intervals, int depth, const RowMap& toRow) {
  int first = std::numeric_limits<int>::max(), last = std::numeric_limits<int>::min();
  for (const Intervals::Kept& kept : intervals.kept) {
    if (kept.depth != depth) continue;
    first = std::min(first, kept.subColumn);
    last = std::max(last, kept.subColumn);
  }
  if (first > last) return false;
  const std::size_t from = slot(first) - static_cast<std::size_t>(2 * reach_);
  const std::size_t to = slot(last) + static_cast<std::size_t>(2 * reach_) + 1;
  std::fill(low_.begin() + std::ptrdiff_t(from), low_.begin() + std::ptrdiff_t(to), kNothingLow);
  std::fill(high_.begin() + std::ptrdiff_t(from), high_.begin() + std::ptrdiff_t(to), kNothingHigh);
  for (const Intervals::Kept& kept : intervals.kept) {
    if (kept.depth != depth) continue;
    low_[slot(kept.subColumn)] = kept.interval.low;
    high_[slot(kept.subColumn)] = kept.interval.high;
  }
  orderRows(toRow, &low_[slot(first)], &high_[slot(first)], last - first + 1);
  isSmooth_ = TraceExtremes::areSmooth(&low_[slot(first)], &high_[slot(first)], last - first + 1);
  begin_ = std::clamp(first - reach_, 0, strip_.subColumns());
  end_ = std::clamp(last + reach_ + 1, begin_, strip_.subColumns());
  return true;
}

void TraceSnippets::widenRound(RoundPen& pen, const InkRows& ink) const {
  const std::size_t from = slot(ink.begin);
  pen.widen(&low_[from], &high_[from], ink.end - ink.begin, ink.low + ink.begin, ink.high + ink.begin);
}

/// As a pen that is as wide everywhere widens a curve: without any height.
void TraceSnippets::widenFlat(const InkRows& ink) const {
  const int left = strip_.curveShift > 0 ? reach_ - 1 : reach_; // as many sub-columns as the round pen
  for (int j = ink.begin; j < ink.end; ++j) {
    const std::size_t from = slot(j - left), to = slot(j + reach_) + 1;
    ink.low[j] = *std::min_element(low_.begin() + std::ptrdiff_t(from), low_.begin() + std::ptrdiff_t(to));
    ink.high[j] = *std::max_element(high_.begin() + std::ptrdiff_t(from), high_.begin() + std::ptrdiff_t(to));
  }
}

} // namespace xov
