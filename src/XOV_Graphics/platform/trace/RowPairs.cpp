#include "XOV_Graphics/platform/trace/RowPairs.h"

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <vector>

namespace xov {

namespace {

constexpr int kTogether = kSortedTogether;

/// Sorts each lane of `count` rows of kTogether numbers, of which those of `Vector` are looked at. (Batcher's merge
/// exchange, which takes any count: Knuth, The Art of Computer Programming 3, 5.2.2, algorithm M.)
template <class Vector>
XOV_INLINE void sortLanes(float* rows, int count) {
  if (count < 2) return;
  const int top = static_cast<int>(std::bit_ceil(static_cast<unsigned>(count)) / 2);
  for (int step = top; step > 0; step /= 2) {
    int from = 0, distance = step;
    for (int reach = top;; reach /= 2) {
      for (int block = from; block + distance < count; block += 2 * step) {
        const int end = std::min(block + step, count - distance);
        for (int i = block; i < end; ++i) {
          float* const upper = rows + std::ptrdiff_t(i) * kTogether;
          float* const lower = upper + std::ptrdiff_t(distance) * kTogether;
          Vector a, b;
          loadVector(upper, a);
          loadVector(lower, b);
          Vector smaller = a;
          keepSmaller(smaller, b);
          keepGreater(b, a);
          storeVector(smaller, upper);
          storeVector(b, lower);
        }
      }
      if (reach == step) break;
      distance = reach - step;
      from = step;
    }
  }
}

/// Whether each lane is in order already, as those of lines are that come one below the other, like a drum's.
template <class Vector>
XOV_INLINE bool areSorted(const float* rows, int count) {
  Vector above, next;
  loadVector(rows, above);
  for (int k = 1; k < count; ++k) {
    loadVector(rows + std::ptrdiff_t(k) * kTogether, next);
    if (!inNoLane(next < above)) return false;
    above = next;
  }
  return true;
}

template <class Vector>
XOV_INLINE void pairAllRowsWith(float* rows, int areas, int stride, int count, InsideRule rule, float* scratch) {
  const auto borders = std::ptrdiff_t(areas) * 2;
  // First borders, then second ones; by the odd rule there is no difference.
  float* const firsts = scratch;
  float* const seconds = scratch + std::ptrdiff_t(areas) * kTogether;
  for (int j = 0; j < count; j += kTogether) {
    for (std::ptrdiff_t k = 0; k < borders; ++k) {
      const std::ptrdiff_t place = k % 2 == 0 ? k / 2 : k / 2 + areas;
      std::copy_n(rows + k * stride + j, kTogether, scratch + place * kTogether);
    }
    for (int lane = 0; lane < kTogether; lane += kLanes<Vector>) {
      if (rule == InsideRule::Odd) {
        sortLanes<Vector>(scratch + lane, 2 * areas);
      } else {
        sortLanes<Vector>(firsts + lane, areas);
        sortLanes<Vector>(seconds + lane, areas);
      }
      for (std::ptrdiff_t k = 0; k < areas; ++k) {
        const float* const one = rule == InsideRule::Odd ? scratch + 2 * k * kTogether : firsts + k * kTogether;
        const float* const other = rule == InsideRule::Odd ? one + kTogether : seconds + k * kTogether;
        Vector low, high, border;
        loadVector(one + lane, low);
        loadVector(other + lane, border);
        high = low;
        keepSmaller(low, border);
        keepGreater(high, border);
        storeVector(low, rows + 2 * k * stride + j + lane);
        storeVector(high, rows + (2 * k + 1) * stride + j + lane);
      }
    }
  }
}

template <class Vector>
XOV_INLINE void sortAllIntervalsWith(const float* const* lows, const float* const* highs, int layers, int first,
                                     int count, int rows, float* sortedLows, float* sortedHighs) {
  const Vector top = {}, bottom = Vector{} + float(rows), nothing = Vector{} + kNothingLow;
  for (int layer = 0; layer < layers; ++layer) {
    float* const low = sortedLows + std::ptrdiff_t(layer) * kTogether;
    float* const high = sortedHighs + std::ptrdiff_t(layer) * kTogether;
    const float* froms = lows[layer] + first;
    const float* tos = highs[layer] + first;
    if (count < kTogether) {
      std::fill_n(std::copy_n(froms, count, low), kTogether - count, kNothingLow);
      std::fill_n(std::copy_n(tos, count, high), kTogether - count, kNothingLow);
      froms = low;
      tos = high;
    }
    for (int lane = 0; lane < kTogether; lane += kLanes<Vector>) {
      Vector from, to;
      loadVector(froms + lane, from);
      loadVector(tos + lane, to);
      const auto shows = (from < to) & (to > top) & (from < bottom);
      storeVector(XOV_CHOOSE(shows, from, nothing), low + lane);
      storeVector(XOV_CHOOSE(shows, to, nothing), high + lane);
    }
  }
  for (int lane = 0; lane < kTogether; lane += kLanes<Vector>) {
    if (!areSorted<Vector>(sortedLows + lane, layers)) sortLanes<Vector>(sortedLows + lane, layers);
    if (!areSorted<Vector>(sortedHighs + lane, layers)) sortLanes<Vector>(sortedHighs + lane, layers);
  }
}

XOV_VECTOR8_FUNCTION(void, sortAllIntervals,
                     (const float* const* lows, const float* const* highs, int layers, int first, int count, int rows,
                      float* sortedLows, float* sortedHighs),
                     (lows, highs, layers, first, count, rows, sortedLows, sortedHighs))

XOV_VECTOR8_FUNCTION(void, pairAllRows,
                     (float* rows, int areas, int stride, int count, InsideRule rule, float* scratch),
                     (rows, areas, stride, count, rule, scratch))

} // namespace

void sortIntervals(const float* const* lows, const float* const* highs, int layers, int first, int count, int rows,
                   float* sortedLows, float* sortedHighs) {
  sortAllIntervals(lows, highs, layers, first, count, rows, sortedLows, sortedHighs);
}

void pairRows(float* rows, int areas, int stride, int count, InsideRule rule) {
  std::vector<float> scratch(2 * static_cast<std::size_t>(areas) * kTogether);
  pairAllRows(rows, areas, stride, count, rule, scratch.data());
}

} // namespace xov
