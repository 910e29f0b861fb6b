#pragma once

#include <QColor>

#include <vector>

namespace xov {

/// The largest number of colours in a ramp: finer ones could not be told apart.
inline constexpr int kMostRampColors = 1 << 20;

/// `nLevels` colours from red (1, 0, 0) to white; a single one is red, and none is made of a count that is not
/// positive. Counts beyond kMostRampColors end there.
std::vector<QColor> redToWhiteColors(int nLevels);
/// 16 colours: blue, cyan, yellow, red, without green.
std::vector<QColor> noGreenColors();
/// 21 colours: dark red, yellow, green, blue.
std::vector<QColor> seisColors();
/// 21 colours: blue, nearly white, red.
std::vector<QColor> polarColors();

} // namespace xov
