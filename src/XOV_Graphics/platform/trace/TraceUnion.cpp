#include "XOV_Graphics/platform/trace/TraceUnion.h"

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <algorithm>
#include <bit>

namespace xov {

namespace {

template <class Vector>
inline constexpr unsigned kAllLanes = (1U << kLanes<Vector>)-1;

XOV_INLINE std::int32_t sumOfLanes(const Int4& value) {
  const Int4 sum = value + XOV_PICK(value, value, 2, 3, 0, 1);
  return sum[0] + sum[1];
}
XOV_INLINE std::int32_t sumOfLanes(const Int8& value) {
  return sumOfLanes(XOV_PICK(value, value, 0, 1, 2, 3) + XOV_PICK(value, value, 4, 5, 6, 7));
}

XOV_INLINE float smallestOfLanes(Float4 value) {
  keepSmaller(value, XOV_PICK(value, value, 2, 3, 0, 1));
  return std::min(float(value[0]), float(value[1]));
}
XOV_INLINE float smallestOfLanes(const Float8& value) {
  Float4 smaller = XOV_PICK(value, value, 0, 1, 2, 3);
  keepSmaller(smaller, XOV_PICK(value, value, 4, 5, 6, 7));
  return smallestOfLanes(smaller);
}

/// Adds an edge for each lane. Those of a quiet line lie in the same row or in two: they go there in one sum.
template <class Vector>
XOV_INLINE void addEdges(std::int32_t* changes, const WordsOf<Vector>& units, std::int32_t sign) {
  using Words = WordsOf<Vector>;
  const Words row = units >> kRowBits, edge = (units & (kRowUnit - 1)) + kOneEdge;
  const std::int32_t some = row[0];
  const Words here = row == some;
  const unsigned hereBits = laneBits(here);
  if (hereBits == kAllLanes<Vector>) {
    changes[some * kInkColumns] += sign * sumOfLanes(edge);
    return;
  }
  const std::int32_t other = row[lowestBit(~hereBits)];
  if ((hereBits | laneBits(row == other)) == kAllLanes<Vector>) {
    const std::int32_t sum = sumOfLanes(edge), ofSome = sumOfLanes(here & edge);
    changes[some * kInkColumns] += sign * ofSome;
    changes[other * kInkColumns] += sign * (sum - ofSome);
    return;
  }
  std::int32_t places[kLanes<Vector>], edges[kLanes<Vector>];
  storeVector(row * kInkColumns, places);
  storeVector(edge * sign, edges);
  for (int lane = 0; lane < kLanes<Vector>; ++lane)
    changes[places[lane]] += edges[lane];
}

/// Adds the intervals of the lanes in `bits`.
template <class Vector>
XOV_INLINE void addIntervals(std::int32_t* changes, const Vector& low, const Vector& high, unsigned bits) {
  using Words = WordsOf<Vector>;
  const Words from = XOV_CONVERT(Words, low * float(kRowUnit) + 0.5F);
  const Words to = XOV_CONVERT(Words, high * float(kRowUnit) + 0.5F);
  if (bits == kAllLanes<Vector>) {
    addEdges<Vector>(changes, from, 1);
    addEdges<Vector>(changes, to, -1);
    return;
  }
  std::int32_t froms[kLanes<Vector>], tos[kLanes<Vector>];
  storeVector(from, froms);
  storeVector(to, tos);
  if (std::popcount(bits) > kLanes<Vector> / 2) { // the others begin and end at once: no branch for each of them
    Words taken = {};
    for (int lane = 0; lane < kLanes<Vector>; ++lane)
      taken[lane] = (bits >> lane & 1) != 0 ? -1 : 0;
    const Words common = Words{} + froms[lowestBit(bits)];
    addEdges<Vector>(changes, XOV_CHOOSE(taken, from, common), 1);
    addEdges<Vector>(changes, XOV_CHOOSE(taken, to, common), -1);
    return;
  }
  for (; bits != 0; bits &= bits - 1) {
    const int lane = lowestBit(bits);
    addEdge(changes, froms[lane], 1);
    addEdge(changes, tos[lane], -1);
  }
}

/// Unites the intervals of a vector of sub-columns, one layer after the other.
template <class Vector>
class LaneUnion {
public:
  using Words = WordsOf<Vector>;

  XOV_INLINE explicit LaneUnion(std::int32_t* changes) : changes_(changes) {}

  /// Begins with other sub-columns.
  XOV_INLINE void reset() { low_ = high_ = closed_ = Vector{} - 1.0F; }

  /// Joins a layer's intervals to the open ones, which grow where they meet it and are let go where it begins below
  /// them. False when a layer reaches back to what has been let go.
  XOV_INLINE bool take(const Vector& low, const Vector& high) {
    const Words dead = low >= high, apart = low > high_, goesBack = (high < low_) | (low <= closed_);
    if (inNoLane(dead | apart | goesBack)) { // so it mostly is where lines overlap
      keepSmaller(low_, low);
      keepGreater(high_, high);
      return true;
    }
    const Words begins = apart & ~dead, joins = ~(apart | dead);
    if (!inNoLane(joins & goesBack)) return false;
    if (!inNoLane(begins)) {
      letGo(laneBits(begins));
      closed_ = XOV_CHOOSE(begins, high_, closed_);
    }
    Vector joinedLow = low, joinedHigh = high;
    keepSmaller(joinedLow, low_);
    keepGreater(joinedHigh, high_);
    low_ = XOV_CHOOSE(begins, low, XOV_CHOOSE(joins, joinedLow, low_));
    high_ = XOV_CHOOSE(begins, high, XOV_CHOOSE(joins, joinedHigh, high_));
    return true;
  }

  /// Adds the intervals of a layer that is the only one.
  XOV_INLINE void addAlone(const Vector& low, const Vector& high) {
    const Words live = low < high;
    const unsigned liveLanes = laneBits(live);
    if (liveLanes == 0) return;
    keepSmaller(lowest_, XOV_CHOOSE(live, low, lowest_));
    keepGreater(highest_, XOV_CHOOSE(live, high, highest_));
    const Vector none = {}; // where nothing is, far rows would not fit their units
    addIntervals(changes_, XOV_CHOOSE(live, low, none), XOV_CHOOSE(live, high, none), liveLanes);
  }

  /// Lets the intervals of some lanes go.
  XOV_INLINE void letGo(unsigned lanes) {
    const Words held = high_ >= Vector{};
    const unsigned heldLanes = lanes & laneBits(held);
    if (heldLanes == 0) return;
    // Lanes that stay may be counted, too: they end in the same place or further down.
    keepSmaller(lowest_, XOV_CHOOSE(held, low_, lowest_));
    keepGreater(highest_, high_);
    addIntervals(changes_, low_, high_, heldLanes);
  }

  XOV_INLINE void includeInked(RowRange& inked, int rows) const {
    const Vector upwards = -highest_;
    includeRows(inked, smallestOfLanes(lowest_), -smallestOfLanes(upwards), rows);
  }

private:
  std::int32_t* changes_;
  // One interval a lane that may still grow; none where it lies above the page. `closed` is where the one before
  // ended.
  Vector low_ = Vector{} - 1.0F, high_ = low_, closed_ = low_;
  Vector lowest_ = Vector{} + kNothingLow, highest_ = Vector{} + kNothingHigh; // of all that were let go
};

template <class Vector>
XOV_INLINE bool addUnionWith(const float* const* lows, const float* const* highs, int layers, int firstSub, int count,
                             int rows, std::int32_t* changes, RowRange& inked) {
  const Vector top = {}, bottom = Vector{} + float(rows);
  LaneUnion<Vector> all(changes);
  for (int j = firstSub; j < firstSub + count; j += kLanes<Vector>) {
    Vector low, high;
    const auto load = [&](int layer) XOV_INLINE_LAMBDA {
      loadVector(lows[layer] + j, low);
      loadVector(highs[layer] + j, high);
      keepGreater(low, top);
      keepSmaller(high, bottom);
    };
    if (layers == 1) { // as of a path of one line, which nothing can join
      load(0);
      all.addAlone(low, high);
      continue;
    }
    all.reset();
    for (int layer = 0; layer < layers; ++layer) {
      load(layer);
      if (!all.take(low, high)) return false;
    }
    all.letGo(kAllLanes<Vector>);
  }
  all.includeInked(inked, rows);
  return true;
}

} // namespace

XOV_VECTOR8_FUNCTION(bool, addUnion,
                     (const float* const* lows, const float* const* highs, int layers, int firstSub, int count,
                      int rows, std::int32_t* changes, RowRange& inked),
                     (lows, highs, layers, firstSub, count, rows, changes, inked))

void includeRows(RowRange& range, float top, float bottom, int rows) {
  const float from = std::max(top, 0.0F), to = std::min(bottom, float(rows));
  if (!(from < to)) return;
  const RowRange added{static_cast<int>(from), std::min(static_cast<int>(to) + 1, rows)};
  const bool none = range.last <= range.first;
  range = none ? added : RowRange{std::min(range.first, added.first), std::max(range.last, added.last)};
}

} // namespace xov
