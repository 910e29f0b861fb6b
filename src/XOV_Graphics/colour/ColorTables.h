#pragma once

#include <array>
#include <cstdint>

namespace xov {

struct Rgb {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
};

/// A colour and the elevation that it ends below.
struct TopoRow {
  std::int16_t boundMeters;
  Rgb color;
};

inline constexpr int kSteps = 19; ///< colours of a stepped palette
inline constexpr int kLastStep = kSteps - 1;

/// Blue, cyan, green, yellow, red.
inline constexpr std::array<Rgb, kSteps> kRainbow = {{
    {0, 51, 255},  {0, 102, 255}, {0, 153, 255}, {0, 204, 255}, {0, 255, 255}, {0, 255, 204}, {0, 255, 153},
    {0, 255, 102}, {0, 255, 51},  {0, 255, 0},   {51, 255, 0},  {102, 255, 0}, {153, 255, 0}, {204, 255, 0},
    {255, 255, 0}, {255, 204, 0}, {255, 153, 0}, {255, 102, 0}, {255, 51, 0},
}};

/// Dark blue, white, dark red.
inline constexpr std::array<Rgb, kSteps> kDiverging = {{
    {36, 0, 216},    {24, 28, 247},   {40, 87, 255},   {61, 135, 255},  {86, 176, 255},
    {117, 211, 255}, {153, 234, 255}, {188, 249, 255}, {234, 255, 255}, {255, 255, 255},
    {255, 255, 234}, {255, 241, 188}, {255, 214, 153}, {255, 172, 117}, {255, 120, 86},
    {255, 61, 61},   {247, 39, 53},   {216, 21, 47},   {165, 0, 33},
}};

/// Ocean depths, lowland, mountains. The step from near-white to green at 0 m draws the coastline; the grey of 2134 m
/// is darker than its neighbours on purpose.
inline constexpr std::array<TopoRow, 33> kTopography = {{
    {-8000, {1, 1, 100}},    {-7000, {1, 1, 150}},    {-6000, {1, 1, 200}},     {-5000, {1, 1, 255}},
    {-4000, {25, 51, 255}},  {-3000, {51, 102, 255}}, {-2000, {102, 153, 255}}, {-1000, {153, 204, 255}},
    {-500, {204, 230, 255}}, {0, {240, 240, 255}},    {30, {100, 150, 100}},    {60, {125, 175, 125}},
    {122, {150, 200, 150}},  {183, {175, 225, 175}},  {244, {200, 255, 200}},   {305, {212, 255, 212}},
    {457, {255, 255, 225}},  {610, {255, 225, 175}},  {702, {255, 225, 125}},   {914, {255, 175, 75}},
    {1219, {200, 150, 50}},  {1450, {175, 125, 50}},  {1700, {150, 100, 50}},   {1981, {150, 125, 100}},
    {2134, {125, 125, 125}}, {2438, {140, 140, 140}}, {2743, {165, 165, 165}},  {3048, {180, 180, 180}},
    {3500, {195, 195, 195}}, {4000, {210, 210, 210}}, {4500, {225, 225, 225}},  {5000, {240, 240, 240}},
    {6000, {255, 255, 255}},
}};

} // namespace xov
