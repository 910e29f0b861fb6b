#include "XOV_Graphics/colour/GridColors.h"

#include "XOV_Graphics/colour/ColorValues.h"
#include "tests/colour/ColorReckoning.h"
#include "tests/support/ThreadCounts.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>

using namespace xov;
using namespace xov::test;

namespace {

constexpr std::uint8_t kUntouched = 77;
constexpr std::uint32_t kUntouchedPixel = 0x4d4d4d4d;

/// The planes of `size` cells, with room behind each that must stay untouched.
struct Planes {
  explicit Planes(std::size_t cells) : size(cells), bytes(4 * (cells + kRoom), kUntouched) {}

  static constexpr std::size_t kRoom = 3;
  std::size_t size;
  std::vector<std::uint8_t> bytes;

  std::uint8_t* plane(std::size_t index) { return bytes.data() + index * (size + kRoom); }
  ColorPlanes planes() { return {{plane(0), size}, {plane(1), size}, {plane(2), size}, {plane(3), size}}; }
  Color color(std::size_t cell) { return {plane(0)[cell], plane(1)[cell], plane(2)[cell], plane(3)[cell]}; }
  bool roomIsUntouched() {
    for (std::size_t i = 0; i < 4 * kRoom; ++i) {
      if (plane(i / kRoom)[size + i % kRoom] != kUntouched) return false;
    }
    return true;
  }
};

std::uint32_t pixelOf(const Color& color) {
  return 0xff000000U | (color.red << 16) | (color.green << 8) | color.blue;
}

/// What the functions for single values make of a cell.
Color singleColor(float cell, const GridColoring& coloring) {
  Color color = coloring.meaning == CellMeaning::Elevation
                    ? topoColorOf(cell)
                    : colorOf(coloring.nShades, coloring.palette, (cell - coloring.minValue) / coloring.scaleFactor);
  if (coloring.inverted) color = {255 - color.red, 255 - color.green, 255 - color.blue, color.alpha};
  return color;
}

/// At every width of vectors.
template <class Cell>
void expectAgreement(const std::vector<Cell>& cells, const GridColoring& coloring) {
  std::vector<Color> expected;
  for (const Cell cell : cells)
    expected.push_back(singleColor(float(cell), coloring));
  xov::testing::forEachVectorWidth([&] {
    Planes planes(cells.size());
    colorGridPlanes(std::span<const Cell>(cells), coloring, planes.planes());
    std::vector<std::uint32_t> pixels(cells.size() + 1, kUntouchedPixel);
    colorGridPixels(std::span<const Cell>(cells), coloring, std::span(pixels).first(cells.size()));
    for (std::size_t i = 0; i < cells.size(); ++i) {
      ASSERT_EQ(planes.color(i), expected[i])
          << "cell " << i << ": " << cells[i] << ", shades " << coloring.nShades << ", palette " << coloring.palette;
      ASSERT_EQ(pixels[i], pixelOf(expected[i])) << "cell " << i << ": " << cells[i];
    }
    EXPECT_TRUE(planes.roomIsUntouched());
    EXPECT_EQ(pixels.back(), kUntouchedPixel);
  });
}

/// The ends of all bands with the numbers beside them, and odd numbers.
std::vector<float> valuesAtBandEnds(int nShades) {
  std::vector<float> cells = oddFloats();
  for (int k = 0; k <= nShades; ++k) {
    for (const float value : around(float(double(k) / nShades)))
      cells.push_back(value);
  }
  return cells;
}

std::vector<std::int16_t> everyShort() {
  std::vector<std::int16_t> cells;
  for (int value = -32768; value <= 32767; ++value)
    cells.push_back(std::int16_t(value));
  return cells;
}

/// Floats of every size, sign and kind: random bits.
std::vector<float> randomBits(std::size_t count) {
  std::mt19937 random(20);
  std::vector<float> cells(count);
  for (float& cell : cells)
    cell = std::bit_cast<float>(std::uint32_t(random()));
  return cells;
}

} // namespace

TEST(GridColors, agreeWithSingleValuesInEveryPalette) {
  GridColoring coloring;
  for (const int palette : {-1, 0, 1, 2, 3, 4, 5, kViridisPalette, kCividisPalette, kDawnPalette}) {
    coloring.palette = palette;
    for (coloring.nShades = 1; coloring.nShades <= 260; ++coloring.nShades)
      expectAgreement(valuesAtBandEnds(coloring.nShades), coloring);
  }
}

TEST(GridColors, agreeWithSingleValuesForSenselessShadeCounts) {
  GridColoring coloring;
  for (const int nShades : shadeCounts()) {
    coloring.nShades = nShades;
    expectAgreement(valuesAtBandEnds(64), coloring);
  }
}

TEST(GridColors, agreeWithSingleValuesForEveryScale) {
  GridColoring coloring;
  coloring.palette = 3;
  const std::vector<float> cells = randomBits(4000);
  for (const float scale : {16.0F, 0.1F, -3.0F, 1e-30F, 1e30F}) {
    for (const float least : {0.0F, -8.0F, 0.3F, 1e20F}) {
      coloring.minValue = least;
      coloring.scaleFactor = scale;
      expectAgreement(cells, coloring);
      expectAgreement(valuesAtBandEnds(100), coloring);
    }
  }
}

TEST(GridColors, agreeWithSingleElevationsAtAndBesideEveryBound) {
  std::vector<float> cells = oddFloats();
  for (const int bound : topoBounds()) {
    for (const float elevation : around(float(bound)))
      cells.push_back(elevation);
  }
  GridColoring coloring;
  coloring.meaning = CellMeaning::Elevation;
  expectAgreement(cells, coloring);
  expectAgreement(randomBits(100000), coloring);
}

TEST(GridColors, agreeWithSingleElevationsForEvery16BitNumber) {
  GridColoring coloring;
  coloring.meaning = CellMeaning::Elevation;
  expectAgreement(everyShort(), coloring);
}

TEST(GridColors, agreeWithSingleValuesForEvery16BitNumber) {
  GridColoring coloring;
  coloring.minValue = -10376;
  coloring.scaleFactor = 18209;
  for (const int palette : {0, 1, 2, 3, 4}) {
    coloring.palette = palette;
    expectAgreement(everyShort(), coloring);
  }
}

TEST(GridColors, invertTheColorsButNotAlpha) {
  Planes planes(2);
  GridColoring coloring;
  coloring.inverted = true;
  coloring.palette = 1;
  const std::vector<float> cells = {0, 1}; // red and blue
  colorGridPlanes(cells, coloring, planes.planes());
  EXPECT_EQ(planes.color(0), (Color{0, 255, 255, 1}));
  EXPECT_EQ(planes.color(1), (Color{255, 255, 0, 1}));
  expectAgreement(valuesAtBandEnds(64), coloring);
  coloring.meaning = CellMeaning::Elevation;
  expectAgreement(everyShort(), coloring);
}

TEST(GridColors, areOpaqueAsPixels) {
  const std::vector<float> cells = {0, 1};
  std::vector<std::uint32_t> pixels(2);
  colorGridPixels(cells, {}, pixels);
  EXPECT_EQ(pixels, (std::vector<std::uint32_t>{0xffffffff, 0xff000000}));
}

TEST(GridColors, colorGridsOfAnyLength) {
  std::vector<float> floats;
  std::vector<std::int16_t> shorts;
  GridColoring values;
  values.scaleFactor = 1000;
  GridColoring elevations;
  elevations.meaning = CellMeaning::Elevation;
  for (int length = 0; length <= 1100; ++length) {
    expectAgreement(floats, values);
    expectAgreement(shorts, elevations);
    floats.push_back(float(length));
    shorts.push_back(std::int16_t(37 * length - 9000));
  }
}

TEST(GridColors, arePlanesAndPixelsAtOnce) {
  for (const std::size_t length : {0U, 1U, 255U, 256U, 700U}) {
    std::vector<float> cells;
    for (std::size_t i = 0; i < length; ++i)
      cells.push_back(float(i) / 700);
    const GridColoring coloring{.palette = 3};
    Planes alone(length), both(length);
    std::vector<std::uint32_t> pixels(length), twice(length + 1, kUntouchedPixel);
    colorGridPlanes(cells, coloring, alone.planes());
    colorGridPixels(cells, coloring, pixels);
    colorGrid(cells, coloring, both.planes(), std::span(twice).first(length));
    EXPECT_EQ(both.bytes, alone.bytes) << length;
    EXPECT_EQ(twice.back(), kUntouchedPixel);
    twice.pop_back();
    EXPECT_EQ(twice, pixels) << length;
  }
}

TEST(GridColors, colorAsManyCellsAsThereIsRoomFor) {
  const std::vector<float> cells(700, 1.0F); // black
  Planes planes(700);
  ColorPlanes some = planes.planes();
  some.green = some.green.first(600);
  colorGridPlanes(cells, {}, some);
  for (std::size_t plane = 0; plane < 3; ++plane) {
    EXPECT_EQ(planes.plane(plane)[599], 0) << plane;
    EXPECT_EQ(planes.plane(plane)[600], kUntouched) << plane;
  }
  EXPECT_EQ(planes.plane(3)[599], 1);
  EXPECT_EQ(planes.plane(3)[600], kUntouched);

  std::vector<std::uint32_t> pixels(700, kUntouchedPixel);
  colorGridPixels(cells, {}, std::span(pixels).first(600));
  EXPECT_EQ(pixels[599], 0xff000000);
  EXPECT_EQ(pixels[600], kUntouchedPixel);
}

TEST(GridColors, leaveEverythingAloneWithoutCells) {
  Planes planes(5);
  colorGridPlanes(std::span<const float>(), {}, planes.planes());
  EXPECT_EQ(planes.color(0), (Color{kUntouched, kUntouched, kUntouched, kUntouched}));
  const std::vector<float> cells(300);
  colorGridPlanes(cells, {}, {});
  colorGridPixels(cells, {}, {});
}

TEST(GridColors, areTheSameWithAnyNumberOfThreads) {
  std::mt19937 random(5);
  std::vector<float> cells(140001); // three parts, and a rest that is no whole block
  for (float& cell : cells)
    cell = float(random() % 9000) - 3000;
  GridColoring coloring;
  coloring.minValue = -3000;
  coloring.scaleFactor = 9000;
  for (const CellMeaning meaning : {CellMeaning::Value, CellMeaning::Elevation}) {
    coloring.meaning = meaning;
    std::vector<Color> expected;
    for (const float cell : cells)
      expected.push_back(singleColor(cell, coloring));
    for (const int threads : kThreadCounts) {
      const WithThreads with(threads);
      Planes planes(cells.size());
      std::vector<std::uint32_t> pixels(cells.size());
      colorGrid(cells, coloring, planes.planes(), pixels);
      int wrong = 0;
      for (std::size_t i = 0; i < cells.size(); ++i) {
        wrong += planes.color(i) == expected[i] && pixels[i] == pixelOf(expected[i]) ? 0 : 1;
      }
      EXPECT_EQ(wrong, 0) << threads << " threads";
      EXPECT_TRUE(planes.roomIsUntouched());
    }
  }
}
