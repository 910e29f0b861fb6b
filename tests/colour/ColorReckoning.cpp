#include "tests/colour/ColorReckoning.h"

#include "XOV_Graphics/colour/ColorValues.h"

#include <cmath>
#include <limits>

namespace xov::test {

namespace {

// clang-format off
constexpr int kRainbowRed[]   = {  0,   0,   0,   0,   0,   0,   0,   0,   0,   0,  51, 102, 153, 204, 255, 255, 255, 255, 255};
constexpr int kRainbowGreen[] = { 51, 102, 153, 204, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 204, 153, 102,  51};
constexpr int kRainbowBlue[]  = {255, 255, 255, 255, 255, 204, 153, 102,  51,   0,   0,   0,   0,   0,   0,   0,   0,   0,   0};

constexpr int kDivergingRed[]   = { 36,  24,  40,  61,  86, 117, 153, 188, 234, 255, 255, 255, 255, 255, 255, 255, 247, 216, 165};
constexpr int kDivergingGreen[] = {  0,  28,  87, 135, 176, 211, 234, 249, 255, 255, 255, 241, 214, 172, 120,  61,  39,  21,   0};
constexpr int kDivergingBlue[]  = {216, 247, 255, 255, 255, 255, 255, 255, 255, 255, 234, 188, 153, 117,  86,  61,  53,  47,  33};

constexpr int kTopoBound[] = {-8000, -7000, -6000, -5000, -4000, -3000, -2000, -1000, -500, 0,
                              30, 60, 122, 183, 244, 305, 457, 610, 702, 914, 1219, 1450, 1700,
                              1981, 2134, 2438, 2743, 3048, 3500, 4000, 4500, 5000, 6000};
constexpr int kTopoRed[]   = {1, 1, 1, 1, 25, 51, 102, 153, 204, 240,
                              100, 125, 150, 175, 200, 212, 255, 255, 255, 255, 200, 175, 150,
                              150, 125, 140, 165, 180, 195, 210, 225, 240, 255};
constexpr int kTopoGreen[] = {1, 1, 1, 1, 51, 102, 153, 204, 230, 240,
                              150, 175, 200, 225, 255, 255, 255, 225, 225, 175, 150, 125, 100,
                              125, 125, 140, 165, 180, 195, 210, 225, 240, 255};
constexpr int kTopoBlue[]  = {100, 150, 200, 255, 255, 255, 255, 255, 255, 255,
                              100, 125, 150, 175, 200, 212, 225, 175, 125, 75, 50, 50, 50,
                              100, 125, 140, 165, 180, 195, 210, 225, 240, 255};
// clang-format on
constexpr int kTopoRows = 33;
static_assert(std::size(kTopoBound) == kTopoRows && std::size(kTopoRed) == kTopoRows);
static_assert(std::size(kTopoGreen) == kTopoRows && std::size(kTopoBlue) == kTopoRows);
static_assert(std::size(kRainbowRed) == 19 && std::size(kRainbowGreen) == 19 && std::size(kRainbowBlue) == 19);
static_assert(std::size(kDivergingRed) == 19 && std::size(kDivergingGreen) == 19 && std::size(kDivergingBlue) == 19);

Color opaque(int red, int green, int blue) {
  return {std::uint32_t(red), std::uint32_t(green), std::uint32_t(blue), 1};
}

// The quotient and the product of two single-precision numbers, reckoned in double precision and rounded once more,
// are the single-precision ones: 53 bits are at least twice 24 bits and two.
float quotient(float a, float b) { return float(double(a) / double(b)); }
float product(float a, float b) { return float(double(a) * double(b)); }

} // namespace

std::uint32_t reckonLevel(int nShades, float value) {
  if (nShades == 0 || std::isnan(value)) return 0;
  if (value < 0) return 0;
  const auto step = float(1.0 / nShades);
  const float lower = product(std::trunc(quotient(value, step)), step);
  const float scaled = std::trunc(product(lower, 255));
  return scaled >= 255 ? 255 : std::uint32_t(scaled);
}

Color rainbowRow(int row) { return opaque(kRainbowRed[row], kRainbowGreen[row], kRainbowBlue[row]); }

Color divergingRow(int row) { return opaque(kDivergingRed[row], kDivergingGreen[row], kDivergingBlue[row]); }

Color reckonPalette(int palette, std::uint32_t level) {
  const auto c = int(level);
  switch (palette) {
  case 0:
    return opaque(255 - c, 255 - c, 255 - c);
  case 1:
    if (c == 128) return opaque(255, 255, 255);
    return c < 128 ? opaque(255, 2 * c, 2 * c) : opaque(510 - 2 * c, 510 - 2 * c, 255);
  case 2:
    return rainbowRow(18 - 18 * c / 255);
  case 3:
    return rainbowRow(18 * c / 255);
  default:
    // The whole part of 18 - c / 18, over a common denominator.
    return divergingRow((18 * 18 - c) / 18);
  }
}

const std::vector<int>& topoBounds() {
  static const std::vector<int> bounds(std::begin(kTopoBound), std::end(kTopoBound));
  return bounds;
}

Color topoRow(int row) { return opaque(kTopoRed[row], kTopoGreen[row], kTopoBlue[row]); }

int reckonTopoRow(float elevation) {
  for (int row = 0; row < kTopoRows; ++row) {
    if (double(kTopoBound[row]) > double(elevation)) return row;
  }
  return kTopoRows - 1;
}

Color colorOf(int nShades, int palette, float value) {
  Color color{999, 999, 999, 999};
  getColorValues(nShades, palette, &color.red, &color.green, &color.blue, &color.alpha, value);
  return color;
}

Color topoColorOf(float elevation) {
  Color color{999, 999, 999, 999};
  getTopoColorValues(0, &color.red, &color.green, &color.blue, &color.alpha, elevation);
  return color;
}

std::vector<float> around(float value) {
  constexpr float kFar = std::numeric_limits<float>::infinity();
  return {std::nextafter(value, -kFar), value, std::nextafter(value, kFar)};
}

const std::vector<float>& oddFloats() {
  using Limits = std::numeric_limits<float>;
  static const std::vector<float> values = [] {
    std::vector<float> both;
    for (const float value :
         {Limits::quiet_NaN(), Limits::infinity(), Limits::max(), Limits::min(), Limits::denorm_min(), 0.0F, 1.0F,
          2.0F, 255.0F, 8388607.0F, 8388607.5F, 8388608.0F, 16777216.0F, 2147483648.0F, 4294967296.0F, 1e30F}) {
      both.push_back(value);
      both.push_back(-value);
    }
    return both;
  }();
  return values;
}

const std::vector<int>& shadeCounts() {
  static const std::vector<int> counts = [] {
    std::vector<int> all;
    for (int count = 1; count <= 300; ++count)
      all.push_back(count);
    for (const int count : {1000, 4095, 4096, 65536, 1 << 24, (1 << 24) + 1, std::numeric_limits<int>::max(), 0, -1,
                            -2, -64, -255, std::numeric_limits<int>::min()})
      all.push_back(count);
    return all;
  }();
  return counts;
}

} // namespace xov::test
