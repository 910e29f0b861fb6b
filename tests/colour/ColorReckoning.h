#pragma once

#include <cstdint>
#include <ostream>
#include <vector>

// A second way to every colour, which shares neither code nor tables with the library: whole numbers where the
// library uses floating point, double precision rounded after each step where it uses single precision, tables by
// component where it has them by colour. Slow, and easy to follow.

namespace xov::test {

struct Color {
  std::uint32_t red, green, blue, alpha;

  bool operator==(const Color&) const = default;
};

inline void PrintTo(const Color& color, std::ostream* out) {
  *out << '(' << color.red << ", " << color.green << ", " << color.blue << "; " << color.alpha << ')';
}

/// The level 0..255 of a value.
std::uint32_t reckonLevel(int nShades, float value);
/// The colour of a level.
Color reckonPalette(int palette, std::uint32_t level);
/// Row 0..18 of the rainbow and of the diverging colours.
Color rainbowRow(int row);
Color divergingRow(int row);
/// Upper bounds of the rows of the topography, and the colour of a row 0..32.
const std::vector<int>& topoBounds();
Color topoRow(int row);
/// The row that an elevation is in.
int reckonTopoRow(float elevation);

/// The library's answers.
Color colorOf(int nShades, int palette, float value);
Color topoColorOf(float elevation);

/// `value` and the numbers next to it.
std::vector<float> around(float value);
/// Numbers that invite mistakes: not finite, tiny, huge, of either sign.
const std::vector<float>& oddFloats();
/// Numbers of bands, few and many, senseless ones among them.
const std::vector<int>& shadeCounts();

} // namespace xov::test
