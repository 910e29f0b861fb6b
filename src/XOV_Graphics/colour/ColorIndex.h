#pragma once

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/colour/ColorTables.h"

#include <array>
#include <cstdint>
#include <limits>

// The way from a value to its colour has two halves: the value gives a small whole number (a level, or a metre and
// with it a row), and that gives the colour. Single values and whole grids share both, so that they cannot differ.
// The first halves are written for one float or a vector of them.

namespace xov {

inline constexpr int kLevels = 256;
inline constexpr std::uint32_t kHighestLevel = 255;
inline constexpr std::uint32_t kAlpha = 1;

/// The width of one of `nShades` bands of 0..1. An unlimited one stands for no bands: it leads to level 0.
inline float bandWidth(int nShades) {
  return nShades == 0 ? std::numeric_limits<float>::infinity() : float(1.0 / nShades);
}

/// Cuts the fractions off numbers that a 32-bit integer can hold.
XOV_INLINE void dropSmallFraction(float& value) { value = float(std::int32_t(value)); }
template <class Vector>
XOV_INLINE void dropSmallFraction(Vector& value) {
  value = XOV_CONVERT(Vector, XOV_CONVERT(WordsOf<Vector>, value));
}

/// Cuts the fraction off, as std::trunc does. From 2^23 on single precision holds whole numbers only.
template <class Float>
XOV_INLINE void dropFraction(Float& value) {
  const Float wholeFrom = Float{} + 8388608.0F;
  Float truncated = value;
  keepSmaller(truncated, wholeFrom);
  keepGreater(truncated, -wholeFrom);
  const auto isSmall = truncated == value;
  dropSmallFraction(truncated);
  value = XOV_CHOOSE(isSmall, truncated, value);
}

/// Turns a value into the level 0..255 of the lower end of its band, with a fraction still to be cut off. NaN ends up
/// at level 0. A negative value has a product that is not above 0, hence needs no test of its own.
template <class Float>
XOV_INLINE void toLevel(float band, Float& value) {
  value /= band;
  dropFraction(value);
  value *= band;
  value *= float(kHighestLevel);
  keepGreater(value, Float{});
  keepSmaller(value, Float{} + float(kHighestLevel));
}

/// The colour of a level in a palette. Palettes below 0 count as those from 4 on.
Rgb paletteColor(int palette, std::uint32_t level);

inline constexpr int kLowestBound = kTopography.front().boundMeters;
inline constexpr int kHighestBound = kTopography.back().boundMeters;
inline constexpr int kFirstMeter = kLowestBound - 1;
/// Every whole metre that can tell rows apart: the one below the lowest bound up to the highest bound.
inline constexpr int kMeters = kHighestBound - kFirstMeter + 1;

/// The row of each metre, from kFirstMeter on: the first whose bound is strictly greater, else the last.
inline constexpr std::array<std::uint8_t, kMeters> kRowOfMeter = [] {
  std::array<std::uint8_t, kMeters> rows{};
  std::uint8_t row = 0;
  for (int place = 0; place < kMeters; ++place) {
    while (row + 1U < kTopography.size() && kTopography[row].boundMeters <= kFirstMeter + place)
      ++row;
    rows[std::size_t(place)] = row;
  }
  return rows;
}();

/// Turns an elevation into its place in kRowOfMeter. A bound is a whole number, so it is greater than an elevation if
/// and only if it is greater than the whole metre below. NaN goes where the highest elevations go.
template <class Float>
XOV_INLINE void toMeterPlace(Float& elevation) {
  const Float zero{};
  keepSmaller(elevation, zero + float(kHighestBound));
  keepGreater(elevation, zero + float(kFirstMeter));
  Float meter = elevation;
  dropSmallFraction(meter);
  const Float below = meter - 1.0F;
  elevation = XOV_CHOOSE(elevation < meter, below, meter) - float(kFirstMeter);
}

} // namespace xov
