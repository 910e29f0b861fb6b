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

/// The times of samples from the origin on, of single-precision products.
template <class Vector>
XOV_INLINE void findTimesOf(const RoundedColumns& columns, const WordsOf<Vector>& samples, Vector& time) {
  time = XOV_CONVERT(Vector, samples) * columns.step;
  time = time + columns.start;
  time = time - columns.origin;
}

/// The columns of samples.
template <class Vector>
XOV_INLINE void findColumns(const RoundedColumns& columns, const WordsOf<Vector>& samples, DoublesOf<Vector>& found) {
  Vector time;
  findTimesOf(columns, samples, time);
  found = XOV_CONVERT(DoublesOf<Vector>, time) * columns.scale + columns.offset;
}

/// Vectors of borders whose samples are looked up side by side: each cut waits for the one before it.
constexpr int kTogether = 4;

/// Whole samples where borders are guessed, within the samples that there are.
template <class Vector>
XOV_INLINE void takeGuess(const BorderPlaces& places, const DoublesOf<Vector>& guessed, WordsOf<Vector>& sample) {
  DoublesOf<Vector> guess = guessed;
  keepGreater(guess, DoublesOf<Vector>{} + double(places.lowest));
  keepSmaller(guess, DoublesOf<Vector>{} + double(places.highest));
  sample = XOV_CONVERT(WordsOf<Vector>, guess);
}

/// Cuts what lies within reach of some vectors of guesses until one sample is left of each. `findLeft` finds which
/// samples of a vector lie left of its borders.
template <class Words, class FindLeft>
XOV_INLINE void cutAround(const BorderPlaces& places, Words (&samples)[kTogether], const FindLeft& findLeft) {
  Words high[kTogether];
  for (int v = 0; v < kTogether; ++v) {
    samples[v] -= places.reach;
    high[v] = samples[v] + (2 * places.reach + 1);
    keepGreater(samples[v], Words{} + places.lowest);
    keepSmaller(high[v], Words{} + places.highest);
  }
  for (int rest = 2 * places.reach + 1; rest > 0; rest /= 2) {
    for (int v = 0; v < kTogether; ++v) {
      const Words middle = (samples[v] + high[v]) >> 1;
      Words left;
      findLeft(v, middle, left);
      left &= samples[v] < high[v];
      high[v] = XOV_CHOOSE(left, high[v], middle);
      samples[v] = XOV_CHOOSE(left, middle + 1, samples[v]);
    }
  }
}

/// The samples of some vectors of borders by columns. False when one was out of reach.
template <class Vector>
XOV_INLINE bool cutVectors(const RoundedColumns& columns, const BorderPlaces& places,
                           const DoublesOf<Vector> (&borders)[kTogether],
                           const DoublesOf<Vector> (&guesses)[kTogether], std::int32_t* cuts, float* fraction) {
  using Words = WordsOf<Vector>;
  using Doubles = DoublesOf<Vector>;
  constexpr int kWidth = kLanes<Vector>;
  const Words lowest = Words{} + places.lowest, highest = Words{} + places.highest;
  Words low[kTogether];
  for (int v = 0; v < kTogether; ++v)
    takeGuess<Vector>(places, guesses[v], low[v]);
  cutAround(places, low, [&](int v, const Words& sample, Words& left) XOV_INLINE_LAMBDA {
    Doubles column;
    findColumns<Vector>(columns, sample + places.base, column);
    const auto isLeft = column < borders[v];
    left = XOV_CONVERT(Words, isLeft);
  });
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

/// The numbers of the lanes.
template <class Vector>
XOV_INLINE void takeLaneNumbers(DoublesOf<Vector>& numbers) {
  for (int lane = 0; lane < kLanes<Vector>; ++lane)
    numbers[lane] = double(lane);
}

/// The lowest times whose columns do not lie left of borders. False where one is not found beside what is computed,
/// as around time 0, whose neighbours are nearer than columns tell.
template <class Vector>
XOV_INLINE bool findLowestTimes(const RoundedColumns& columns, const double* borders, float* times) {
  using Words = WordsOf<Vector>;
  using Doubles = DoublesOf<Vector>;
  Doubles border;
  loadVector(borders, border);
  const Vector near = XOV_CONVERT(Vector, (border - columns.offset) * (1 / columns.scale));
  Doubles column = XOV_CONVERT(Doubles, near) * columns.scale + columns.offset;
  const auto isNearLeft = column < border;
  const Words isLeft = XOV_CONVERT(Words, isNearLeft);
  const Words bits = XOV_SAME_BITS(Words, near);
  const Words up = (bits >> 31) | 1; // to the next number
  const Words besideBits = bits + XOV_CHOOSE(isLeft, up, Words{} - up);
  const Vector beside = XOV_SAME_BITS(Vector, besideBits);
  column = XOV_CONVERT(Doubles, beside) * columns.scale + columns.offset;
  const auto isBesideLeft = column < border, isBesideRight = column >= border;
  const Words found = XOV_CHOOSE(isLeft, XOV_CONVERT(Words, isBesideRight), XOV_CONVERT(Words, isBesideLeft));
  const Vector lowest = XOV_CHOOSE(isLeft, beside, near);
  storeVector(lowest, times);
  return inNoLane(~found);
}

/// As cutVectors(), without fractions and by the samples' times, which are in single precision and so of twice as
/// many borders in a vector. False where that cannot be done, or one was out of reach.
template <class Widest, class Vector>
XOV_INLINE bool cutByTimes(const RoundedColumns& columns, const BorderPlaces& places, const double* borders,
                           int first, std::int32_t* cuts) {
  using Narrow = Searched<Widest>;
  using Words = WordsOf<Vector>;
  constexpr int kWidth = kLanes<Vector>;
  float times[kTogether * kWidth];
  std::int32_t guesses[kTogether * kWidth];
  DoublesOf<Narrow> numbers;
  takeLaneNumbers<Narrow>(numbers);
  for (int i = 0; i < kTogether * kWidth; i += kLanes<Narrow>) {
    if (!findLowestTimes<Narrow>(columns, borders + first + i, times + i)) return false;
    WordsOf<Narrow> guess;
    takeGuess<Narrow>(places, (numbers + double(first + i)) * places.step + places.guess, guess);
    storeVector(guess, guesses + i);
  }
  const Words lowest = Words{} + places.lowest, highest = Words{} + places.highest;
  Words low[kTogether];
  Vector border[kTogether];
  for (int v = 0; v < kTogether; ++v) {
    loadVector(times + v * kWidth, border[v]);
    loadVector(guesses + v * kWidth, low[v]);
  }
  cutAround(places, low, [&](int v, const Words& sample, Words& left) XOV_INLINE_LAMBDA {
    Vector time;
    findTimesOf(columns, sample + places.base, time);
    left = time < border[v];
  });
  Words missed = {};
  for (int v = 0; v < kTogether; ++v) {
    Vector before, time;
    findTimesOf(columns, low[v] + (places.base - 1), before);
    findTimesOf(columns, low[v] + places.base, time);
    missed |= ((before >= border[v]) & (low[v] > lowest)) | ((time < border[v]) & (low[v] < highest));
    storeVector(low[v], cuts + first + v * kWidth);
  }
  return inNoLane(missed);
}

/// Border `first` to the one before `count`, by columns.
template <class Vector>
XOV_INLINE bool cutByColumns(const RoundedColumns& columns, const BorderPlaces& places, const double* borders,
                             int first, int count, std::int32_t* cuts, float* fraction) {
  using Doubles = DoublesOf<Vector>;
  constexpr int kWidth = kLanes<Vector>;
  constexpr int kGroup = kTogether * kWidth;
  Doubles steps;
  takeLaneNumbers<Vector>(steps);
  for (int k = first; k < count; k += kGroup) {
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

template <class Widest>
XOV_INLINE bool cutRoundedWith(const RoundedColumns& columns, const BorderPlaces& places, const double* borders,
                               int count, std::int32_t* cuts, float* fraction) {
  using Vector = std::conditional_t<kLanes<Widest> == 4, Float4, Float8>;
  constexpr int kGroup = kTogether * kLanes<Vector>;
  if (fraction != nullptr || count < kGroup)
    return cutByColumns<Searched<Widest>>(columns, places, borders, 0, count, cuts, fraction);
  for (int k = 0; k < count; k += kGroup) {
    const int first = std::min(k, count - kGroup); // the last ones once more
    if (cutByTimes<Widest, Vector>(columns, places, borders, first, cuts)) continue;
    if (!cutByColumns<Searched<Widest>>(columns, places, borders, first, first + kGroup, cuts, nullptr)) return false;
  }
  return true;
}

} // namespace

XOV_VECTOR_FUNCTION(bool, cutRounded,
                    (const RoundedColumns& columns, const BorderPlaces& places, const double* borders, int count,
                     std::int32_t* cuts, float* fraction),
                    (columns, places, borders, count, cuts, fraction))

} // namespace xov
