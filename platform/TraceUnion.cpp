#include "platform/TraceUnion.h"

#include "platform/TraceScan.h"
#include "platform/TraceVector.h"

#include <algorithm>

namespace xov {

namespace {

using UInt8 = std::uint32_t __attribute__((vector_size(32)));

constexpr int kGroup = 8; // sub-columns that are united together, and rows that are summed together
constexpr int kCoverageShift = 24;

XOV_INLINE unsigned laneBits(const Int8& mask) {
#if XOV_WIDE_VECTORS
  const Int4 low = __builtin_shufflevector(mask, mask, 0, 1, 2, 3),
             high = __builtin_shufflevector(mask, mask, 4, 5, 6, 7);
  return static_cast<unsigned>(__builtin_ia32_movmskps(Float4(low)) | (__builtin_ia32_movmskps(Float4(high)) << 4));
#else
  unsigned bits = 0;
  for (int lane = 0; lane < kGroup; ++lane)
    bits |= (mask[lane] < 0 ? 1U : 0U) << lane;
  return bits;
#endif
}

XOV_INLINE std::int32_t sumOfLanes(const Int8& value) {
  Int4 sum = __builtin_shufflevector(value, value, 0, 1, 2, 3) + __builtin_shufflevector(value, value, 4, 5, 6, 7);
  sum += __builtin_shufflevector(sum, sum, 2, 3, 0, 1);
  return sum[0] + sum[1];
}

/// Adds eight edges. Those of a quiet line lie in the same row or in two: they go there in one sum.
XOV_INLINE void addEdges(std::int64_t* changes, const Int8& units, std::int64_t sign) {
  const Int8 row = units >> kRowBits, part = units & (kRowUnit - 1);
  const std::int32_t some = row[0];
  const Int8 here = row == some;
  const unsigned hereBits = laneBits(here);
  if (hereBits == 0xFF) {
    changes[some] += sign * (kGroup * kOneEdge + sumOfLanes(part));
    return;
  }
  const std::int32_t other = row[__builtin_ctz(~hereBits)];
  if ((hereBits | laneBits(row == other)) == 0xFF) {
    const std::int32_t sums = sumOfLanes(here ? part : part << 16); // eight parts stay below 2^16
    const int count = __builtin_popcount(hereBits);
    changes[some] += sign * (count * kOneEdge + (sums & 0xFFFF));
    changes[other] += sign * ((kGroup - count) * kOneEdge + (sums >> 16));
    return;
  }
  std::int32_t each[kGroup];
  storeVector(units, each);
  for (const std::int32_t unit : each)
    addEdge(changes, unit, sign);
}

/// Adds the intervals of the lanes in `bits`.
XOV_INLINE void addIntervals(std::int64_t* changes, const Float8& low, const Float8& high, unsigned bits) {
  const Int8 from = __builtin_convertvector(low * float(kRowUnit) + 0.5F, Int8);
  const Int8 to = __builtin_convertvector(high * float(kRowUnit) + 0.5F, Int8);
  if (bits == 0xFF) {
    addEdges(changes, from, 1);
    addEdges(changes, to, -1);
    return;
  }
  std::int32_t froms[kGroup], tos[kGroup];
  storeVector(from, froms);
  storeVector(to, tos);
  if (__builtin_popcount(bits) > kGroup / 2) { // the others begin and end at once: no branch for each of them
    const Int8 lanes = {1, 2, 4, 8, 16, 32, 64, 128};
    const Int8 taken = (lanes & static_cast<std::int32_t>(bits)) != 0;
    const Int8 common = Int8{} + froms[__builtin_ctz(bits)];
    addEdges(changes, taken ? from : common, 1);
    addEdges(changes, taken ? to : common, -1);
    return;
  }
  for (; bits != 0; bits &= bits - 1) {
    const int lane = __builtin_ctz(bits);
    addEdge(changes, froms[lane], 1);
    addEdge(changes, tos[lane], -1);
  }
}

/// One interval a lane that may still grow; none where `high` is negative. `closed` is where the one before ended.
struct OpenIntervals {
  Float8 low = Float8{} - 1.0F;
  Float8 high = Float8{} - 1.0F;
  Float8 closed = Float8{} - 1.0F;
};

/// Lets the intervals of some lanes go.
XOV_INLINE void letGo(std::int64_t* changes, const OpenIntervals& open, unsigned lanes) {
  const unsigned held = lanes & laneBits(open.high >= Float8{});
  if (held != 0) addIntervals(changes, open.low, open.high, held);
}

/// Joins a layer's intervals to the open ones, which grow where they meet it and are let go where it begins below
/// them. False when a layer reaches back to what has been let go.
XOV_INLINE bool takeLayer(std::int64_t* changes, OpenIntervals& open, const Float8& low, const Float8& high) {
  const Int8 live = low < high;
  const unsigned liveBits = laneBits(live);
  if (liveBits == 0) return true;
  const Int8 apart = live & (low > open.high), joins = live & ~apart;
  Float8 joinedLow = low, joinedHigh = high;
  keepSmaller(joinedLow, open.low);
  keepGreater(joinedHigh, open.high);
  const unsigned apartBits = laneBits(apart);
  if (apartBits != liveBits && laneBits(joins & ((high < open.low) | (low <= open.closed))) != 0) return false;
  if (apartBits != 0) {
    letGo(changes, open, apartBits);
    open.closed = apart ? open.high : open.closed;
  }
  open.low = apart ? low : (joins ? joinedLow : open.low);
  open.high = apart ? high : (joins ? joinedHigh : open.high);
  return true;
}

XOV_INLINE bool addUnionIn8(const float* const* lows, const float* const* highs, int layers, int firstSub, int count,
                            int rows, std::int64_t* changes) {
  const Float8 top = {}, bottom = Float8{} + float(rows);
  for (int j = firstSub; j < firstSub + count; j += kGroup) {
    OpenIntervals open;
    for (int layer = 0; layer < layers; ++layer) {
      Float8 low, high;
      loadVector(lows[layer] + j, low);
      loadVector(highs[layer] + j, high);
      keepGreater(low, top);
      keepSmaller(high, bottom);
      if (!takeLayer(changes, open, low, high)) return false;
    }
    letGo(changes, open, ~0U);
  }
  return true;
}

constexpr std::uint32_t kHalfCoverage = 1U << (kCoverageShift - 1);

/// The running sum of a column's changes down to some row.
struct RunningSum {
  std::int32_t inked = 0;   // in units of a row of a sub-column
  std::int32_t carried = 0; // the parts of the row before, which that row did not cover
};

/// Sums a column's changes row by row, writes them as coverage and clears them.
XOV_INLINE void sumRows(std::int64_t* changes, int rows, std::uint32_t scale, RunningSum sum, std::uint8_t* pixels,
                        int stride) {
  for (int row = 0; row < rows; ++row, pixels += stride) {
    const auto part = static_cast<std::int32_t>(changes[row]);
    const auto edges = static_cast<std::int32_t>((changes[row] - part) >> 32);
    changes[row] = 0;
    sum.inked += edges * kRowUnit - part + sum.carried;
    sum.carried = part;
    *pixels =
        static_cast<std::uint8_t>((static_cast<std::uint32_t>(sum.inked) * scale + kHalfCoverage) >> kCoverageShift);
  }
}

/// The same for eight rows at a time.
XOV_INLINE void sumRowsIn8(std::int64_t* changes, int rows, std::uint32_t scale, std::uint8_t* pixels, int stride) {
  RunningSum before;
  int row = 0;
  for (; row + kGroup <= rows; row += kGroup) {
    Int8 first, second;
    loadVector(changes + row, first);
    loadVector(changes + row + kGroup / 2, second);
    storeVector(Int8{}, changes + row);
    storeVector(Int8{}, changes + row + kGroup / 2);
    const Int8 part = __builtin_shufflevector(first, second, 0, 2, 4, 6, 8, 10, 12, 14);
    const Int8 edges =
        __builtin_shufflevector(first, second, 1, 3, 5, 7, 9, 11, 13, 15) - (part < 0); // less the borrow
    Int8 sum =
        edges * kRowUnit - part + __builtin_shufflevector(part, Int8{} + before.carried, 8, 0, 1, 2, 3, 4, 5, 6);
    sum += __builtin_shufflevector(sum, Int8{}, 8, 0, 1, 2, 3, 4, 5, 6);
    sum += __builtin_shufflevector(sum, Int8{}, 8, 8, 0, 1, 2, 3, 4, 5);
    sum += __builtin_shufflevector(sum, Int8{}, 8, 8, 8, 8, 0, 1, 2, 3);
    sum += before.inked;
    before = {sum[kGroup - 1], part[kGroup - 1]};
    const UInt8 coverage = (UInt8(sum) * scale + kHalfCoverage) >> kCoverageShift;
    for (int k = 0; k < kGroup; ++k, pixels += stride)
      *pixels = static_cast<std::uint8_t>(coverage[k]);
  }
  sumRows(changes + row, rows - row, scale, before, pixels, stride);
}

#if XOV_WIDE_VECTORS
XOV_TARGET_AVX2 void sumRowsAvx2(std::int64_t* changes, int rows, std::uint32_t scale, std::uint8_t* pixels,
                                 int stride) {
  sumRowsIn8(changes, rows, scale, pixels, stride);
}
#endif

void sumChanges(std::int64_t* changes, int rows, std::uint32_t scale, std::uint8_t* pixels, int stride) {
#if XOV_WIDE_VECTORS
  if (vectorWidth() != VectorWidth::Baseline) return sumRowsAvx2(changes, rows, scale, pixels, stride);
#endif
  sumRows(changes, rows, scale, {}, pixels, stride);
}

} // namespace

XOV_VECTOR8_FUNCTION(bool, addUnion,
                     (const float* const* lows, const float* const* highs, int layers, int firstSub, int count,
                      int rows, std::int64_t* changes),
                     (lows, highs, layers, firstSub, count, rows, changes))

void findInkedRows(const float* low, const float* high, int count, int rows, int& firstRow, int& lastRow) {
  const std::int32_t all[] = {0, count};
  float top = 0, bottom = 0, unused = 0;
  if (!findBlockExtremes(low, all, 1, &top, &unused) || !findBlockExtremes(high, all, 1, &unused, &bottom)) {
    firstRow = 0;
    lastRow = rows;
    return;
  }
  const bool any = top < bottom && bottom > 0 && top < float(rows);
  firstRow = any ? static_cast<int>(std::max(top, 0.0F)) : 0;
  lastRow = any ? std::min(static_cast<int>(std::min(bottom, float(rows))) + 1, rows) : 0;
}

void finishUnion(std::int64_t* changes, int rows, int perColumn, std::uint8_t* pixels, int stride, int& firstRow,
                 int& lastRow) {
  int begin = 0;
  while (begin < rows && changes[begin] == 0)
    ++begin;
  int end = rows;
  if (changes[rows] == 0) { // else ink goes on to the last row
    while (end > begin && changes[end - 1] == 0)
      --end;
  }
  const auto full = static_cast<std::uint32_t>(perColumn * kRowUnit);
  const std::uint32_t scale = (255U << kCoverageShift) / full + 1;
  sumChanges(changes + begin, end - begin, scale, pixels + std::ptrdiff_t(begin) * stride, stride);
  changes[rows] = 0;
  firstRow = begin;
  lastRow = end;
}

} // namespace xov
