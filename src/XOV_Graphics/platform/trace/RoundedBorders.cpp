#include "XOV_Graphics/platform/trace/RoundedBorders.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <bit>
#include <type_traits>

namespace xov {

namespace {

template <class Vector>
using DoublesOf = typename LanesWith<double, kLanes<Vector>>::Vector;

/// Half of a register's lanes, of which each becomes a double: the compiler takes comparisons of doubles that fill
/// two registers apart, lane by lane.
template <class Vector>
using Searched = std::conditional_t<kLanes<Vector> == 16, Float8, Float4>;

/// The columns of samples, from single-precision products on.
template <class Vector>
XOV_INLINE void findColumns(const RoundedColumns& columns, const WordsOf<Vector>& samples, DoublesOf<Vector>& found) {
  Vector time = XOV_CONVERT(Vector, samples) * columns.step;
  time = time + columns.start;
  time = time - columns.origin;
  found = XOV_CONVERT(DoublesOf<Vector>, time) * columns.scale + columns.offset;
}

/// Vectors of borders whose samples are looked up side by side: each cut waits for the one before it.
constexpr int kTogether = 4;

/// The samples of some vectors of borders, cut by cut until one is left of each. False when one was out of reach.
template <class Vector>
XOV_INLINE bool cutVectors(const RoundedColumns& columns, const BorderPlaces& places,
                           const DoublesOf<Vector> (&borders)[kTogether],
                           const DoublesOf<Vector> (&guesses)[kTogether], std::int32_t* cuts, float* fraction) {
  using Words = WordsOf<Vector>;
  using Doubles = DoublesOf<Vector>;
  constexpr int kWidth = kLanes<Vector>;
  const Words lowest = Words{} + places.lowest, highest = Words{} + places.highest;
  Words low[kTogether], high[kTogether];
  for (int v = 0; v < kTogether; ++v) {
    Doubles guess = guesses[v];
    keepGreater(guess, Doubles{} + double(places.lowest));
    keepSmaller(guess, Doubles{} + double(places.highest));
    low[v] = XOV_CONVERT(Words, guess) - places.reach;
    high[v] = low[v] + (2 * places.reach + 1);
    keepGreater(low[v], lowest);
    keepSmaller(high[v], highest);
  }
  for (int rest = 2 * places.reach + 1; rest > 0; rest /= 2) {
    for (int v = 0; v < kTogether; ++v) {
      const Words middle = (low[v] + high[v]) >> 1;
      Doubles column;
      findColumns<Vector>(columns, middle + places.base, column);
      const auto isLeft = column < borders[v];
      const Words before = XOV_CONVERT(Words, isLeft) & (low[v] < high[v]);
      high[v] = XOV_CHOOSE(before, high[v], middle);
      low[v] = XOV_CHOOSE(before, middle + 1, low[v]);
    }
  }
  Words missed = {};
  for (int v = 0; v < kTogether; ++v) {
    Doubles before, column;
    findColumns<Vector>(columns, low[v] + (places.base - 1), before);
    findColumns<Vector>(columns, low[v] + places.base, column);
    const auto isMissed = before >= borders[v], isShort = column < borders[v];
    missed |= (XOV_CONVERT(Words, isMissed) & (low[v] > lowest)) | (XOV_CONVERT(Words, isShort) & (low[v] < highest));
    storeVector(low[v], cuts + v * kWidth);
    if (fraction == nullptr) continue;
    const Doubles width = column - before, whole = Doubles{} + 1.0;
    Doubles along = XOV_CHOOSE(width > Doubles{}, (borders[v] - before) / width, whole);
    keepGreater(along, Doubles{});
    keepSmaller(along, whole);
    const Vector part = XOV_CONVERT(Vector, along);
    storeVector(part, fraction + v * kWidth);
  }
  return inNoLane(missed);
}

template <class Widest>
XOV_INLINE bool cutRoundedWith(const RoundedColumns& columns, const BorderPlaces& places, const double* borders,
                               int count, std::int32_t* cuts, float* fraction) {
  using Vector = Searched<Widest>;
  using Doubles = DoublesOf<Vector>;
  constexpr int kWidth = kLanes<Vector>;
  constexpr int kGroup = kTogether * kWidth;
  Doubles steps;
  for (int lane = 0; lane < kWidth; ++lane)
    steps[lane] = double(lane);
  for (int k = 0; k < count; k += kGroup) {
    Doubles some[kTogether], guesses[kTogether];
    if (k + kGroup <= count) {
      for (int v = 0; v < kTogether; ++v) {
        loadVector(borders + k + v * kWidth, some[v]);
        guesses[v] = (steps + double(k + v * kWidth)) * places.step + places.guess;
      }
      if (!cutVectors<Vector>(columns, places, some, guesses, cuts + k, fraction == nullptr ? nullptr : fraction + k))
        return false;
      continue;
    }
    // The last one over and over where there are fewer borders than lanes.
    for (int i = 0; i < kGroup; ++i) {
      const int border = std::min(k + i, count - 1);
      some[i / kWidth][i % kWidth] = borders[border];
      guesses[i / kWidth][i % kWidth] = double(border) * places.step + places.guess;
    }
    std::int32_t fewCuts[kGroup];
    float fewFractions[kGroup];
    if (!cutVectors<Vector>(columns, places, some, guesses, fewCuts, fewFractions)) return false;
    std::copy_n(fewCuts, count - k, cuts + k);
    if (fraction != nullptr) std::copy_n(fewFractions, count - k, fraction + k);
  }
  return true;
}

} // namespace

XOV_VECTOR_FUNCTION(bool, cutRounded,
                    (const RoundedColumns& columns, const BorderPlaces& places, const double* borders, int count,
                     std::int32_t* cuts, float* fraction),
                    (columns, places, borders, count, cuts, fraction))

} // namespace xov
