#pragma once

#include "tests/colour/ColorReckoning.h"

#include <array>
#include <cmath>
#include <cstdint>

// What eyes make of colours, by the published formulas.

namespace xov::test {

using Linear = std::array<double, 3>; // red, green and blue light, 0 to 1
using Matrix = std::array<Linear, 3>;

inline double linearOf(std::uint32_t component) { // IEC 61966-2-1
  const double c = double(component) / 255;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

inline Linear lightOf(const Color& color) {
  return {linearOf(color.red), linearOf(color.green), linearOf(color.blue)};
}

inline Linear times(const Matrix& matrix, const Linear& vector) {
  Linear product{};
  for (std::size_t row = 0; row < product.size(); ++row) {
    for (std::size_t column = 0; column < vector.size(); ++column)
      product[row] += matrix[row][column] * vector[column];
  }
  return product;
}

// Light as it looks without cells for red, green or blue: Machado, Oliveira and Fernandes (2009), severity 1.
inline constexpr Matrix kProtanopia = {
    {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
inline constexpr Matrix kDeuteranopia = {
    {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};
inline constexpr Matrix kTritanopia = {
    {{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}};

/// Relative luminance.
inline double luminance(const Linear& light) { return 0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2]; }

} // namespace xov::test
