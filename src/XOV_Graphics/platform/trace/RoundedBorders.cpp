#include "XOV_Graphics/platform/trace/RoundedBorders.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <bit>

namespace xov {

namespace {

template <class Vector>
using DoublesOf = typename LanesWith<double, kLanes<Vector>>::Vector;

/// The columns of samples, from single-precision products on.
template <class Vector>
XOV_INLINE void findColumns(const RoundedColumns& columns, const WordsOf<Vector>& samples, DoublesOf<Vector>& found) {
  Vector time = XOV_CONVERT(Vector, samples) * columns.step;
  time = time + columns.start;
  time = time - columns.origin;
  found = XOV_CONVERT(DoublesOf<Vector>, time) * columns.scale + columns.offset;
}

/// The samples of a vector of borders, cut by cut until one is left of each. False when one was out of reach.
template <class Vector>
XOV_INLINE bool cutVector(const RoundedColumns& columns, const BorderPlaces& places, const DoublesOf<Vector>& borders,
                          const DoublesOf<Vector>& guesses, std::int32_t* cuts, float* fraction) {
  using Words = WordsOf<Vector>;
  using Doubles = DoublesOf<Vector>;
  const Words lowest = Words{} + places.lowest, highest = Words{} + places.highest;
  Doubles guess = guesses;
  keepGreater(guess, Doubles{} + double(places.lowest));
  keepSmaller(guess, Doubles{} + double(places.highest));
  Words low = XOV_CONVERT(Words, guess) - places.reach, high = low + (2 * places.reach + 1);
  keepGreater(low, lowest);
  keepSmaller(high, highest);
  Doubles column;
  for (int rest = 2 * places.reach + 1; rest > 0; rest /= 2) {
    const Words middle = (low + high) >> 1;
    findColumns<Vector>(columns, middle + places.base, column);
    const auto isLeft = column < borders;
    const Words before = XOV_CONVERT(Words, isLeft) & (low < high);
    high = XOV_CHOOSE(before, high, middle);
    low = XOV_CHOOSE(before, middle + 1, low);
  }
  Doubles before;
  findColumns<Vector>(columns, low + (places.base - 1), before);
  findColumns<Vector>(columns, low + places.base, column);
  const auto isMissed = before >= borders, isShort = column < borders;
  const Words missed =
      (XOV_CONVERT(Words, isMissed) & (low > lowest)) | (XOV_CONVERT(Words, isShort) & (low < highest));
  bool isFound = true;
  for (int lane = 0; lane < kLanes<Vector>; ++lane)
    isFound = isFound && missed[lane] == 0;
  if (!isFound) return false;
  storeVector(low, cuts);
  if (fraction == nullptr) return true;
  const Doubles width = column - before, whole = Doubles{} + 1.0;
  Doubles along = XOV_CHOOSE(width > Doubles{}, (borders - before) / width, whole);
  keepGreater(along, Doubles{});
  keepSmaller(along, whole);
  const Vector part = XOV_CONVERT(Vector, along);
  storeVector(part, fraction);
  return true;
}

template <class Vector>
XOV_INLINE bool cutRoundedWith(const RoundedColumns& columns, const BorderPlaces& places, const double* borders,
                               int count, std::int32_t* cuts, float* fraction) {
  using Doubles = DoublesOf<Vector>;
  constexpr int kWidth = kLanes<Vector>;
  Doubles steps;
  for (int lane = 0; lane < kWidth; ++lane)
    steps[lane] = double(lane);
  for (int k = 0; k < count; k += kWidth) {
    const Doubles guesses = (steps + double(k)) * places.step + places.guess;
    Doubles some;
    if (k + kWidth <= count) {
      loadVector(borders + k, some);
      if (!cutVector<Vector>(columns, places, some, guesses, cuts + k, fraction == nullptr ? nullptr : fraction + k))
        return false;
      continue;
    }
    // The last one over and over where there are fewer borders than lanes.
    Doubles fewGuesses = guesses;
    std::int32_t fewCuts[kWidth];
    float fewFractions[kWidth];
    for (int lane = 0; lane < kWidth; ++lane) {
      const int border = std::min(k + lane, count - 1);
      some[lane] = borders[border];
      fewGuesses[lane] = double(border) * places.step + places.guess;
    }
    if (!cutVector<Vector>(columns, places, some, fewGuesses, fewCuts, fewFractions)) return false;
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
