#include "XOV_Graphics/views/map/MapColors.h"

#include <algorithm>
#include <span>

namespace xov {

namespace {

struct Row {
  float red;
  float green;
  float blue;
};

constexpr Row kNoGreen[] = {
    {0.13F, 0.38F, 1}, {0.13F, 0.62F, 1}, {0.13F, 0.75F, 1}, {0, 0.81F, 1}, {0.16F, 1, 1}, {0.33F, 1, 1},
    {0.5F, 1, 1},      {0.67F, 1, 1},     {1, 1, 0.33F},     {1, 0.94F, 0}, {1, 0.75F, 0}, {1, 0.66F, 0},
    {1, 0.54F, 0},     {1, 0.44F, 0},     {1, 0.3F, 0},      {1, 0, 0},
};

// Two rows in the middle are the same yellow.
constexpr Row kSeis[] = {
    {0.67F, 0, 0},         {0.81F, 0, 0},     {0.95F, 0, 0},     {1, 0.09F, 0},
    {1, 0.24F, 0},         {1, 0.38F, 0},     {1, 0.52F, 0},     {1, 0.67F, 0},
    {1, 0.81F, 0},         {1, 0.95F, 0},     {1, 1, 0},         {1, 1, 0},
    {0.91F, 1, 0.02F},     {0.63F, 1, 0.07F}, {0.35F, 1, 0.12F}, {0.2F, 0.98F, 0.25F},
    {0.05F, 0.95F, 0.39F}, {0, 0.76F, 0.6F},  {0, 0.49F, 0.84F}, {0, 0.27F, 0.97F},
    {0, 0.13F, 0.89F},
};

constexpr Row kPolar[] = {
    {0, 0, 1},         {0.09F, 0.09F, 1}, {0.19F, 0.19F, 1}, {0.29F, 0.29F, 1}, {0.38F, 0.38F, 1}, {0.47F, 0.47F, 1},
    {0.57F, 0.57F, 1}, {0.67F, 0.67F, 1}, {0.76F, 0.76F, 1}, {0.86F, 0.86F, 1}, {0.95F, 0.95F, 1}, {1, 0.95F, 0.95F},
    {1, 0.86F, 0.86F}, {1, 0.76F, 0.76F}, {1, 0.67F, 0.67F}, {1, 0.57F, 0.57F}, {1, 0.47F, 0.47F}, {1, 0.38F, 0.38F},
    {1, 0.29F, 0.29F}, {1, 0.19F, 0.19F}, {1, 0.09F, 0.09F},
};

std::vector<QColor> colorsOf(std::span<const Row> rows) {
  std::vector<QColor> colors;
  colors.reserve(rows.size());
  for (const Row& row : rows)
    colors.push_back(QColor::fromRgbF(row.red, row.green, row.blue));
  return colors;
}

} // namespace

std::vector<QColor> redToWhiteColors(int nLevels) {
  std::vector<QColor> colors;
  const int count = std::clamp(nLevels, 0, kMostRampColors);
  colors.reserve(std::size_t(count));
  const float step = nLevels > 1 ? float(1.0 / (nLevels - 1)) : 0;
  for (int i = 0; i < count; ++i) {
    const float level = std::min(float(i) * step, 1.0F);
    colors.push_back(QColor::fromRgbF(1, level, level));
  }
  return colors;
}

std::vector<QColor> noGreenColors() { return colorsOf(kNoGreen); }

std::vector<QColor> seisColors() { return colorsOf(kSeis); }

std::vector<QColor> polarColors() { return colorsOf(kPolar); }

} // namespace xov
