#include "XOV_Graphics/views/image/XyzText.h"

#include "tests/map/CommaLocale.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace xov {
namespace {

QByteArray textOf(const std::vector<float>& buffer, int nr, int nc, const PlotLimits& limits) {
  QBuffer device;
  device.open(QIODevice::WriteOnly);
  EXPECT_TRUE(writeXyzText(device, limits, {-1.5F, 6}, GridNodes(limits, nr, nc), GridValues::held(buffer, nr, nc)));
  return device.data();
}

// 2 × 3 cells over x 0 … 6 (spacing 3), y −1 … 1 (spacing 2): row 1 starts with the value at index 2, as row 0 ended.
TEST(XyzText, readsItsCellsWithTheNumberOfRowsAsStride) {
  EXPECT_EQ(textOf({1, 2, 3, 4, 5, 6}, 2, 3, {0, 6, -1, 1}).toStdString(),
            "# xmin,xmax,dx = 0.000000, 6.000000 3.000000\n"
            "# ymin,ymax,dy = -1.000000, 1.000000 2.000000\n"
            "# zmin,zmax = -1.500000, 6.000000\n"
            "0.000000 1.000000 1.000000\n"
            "3.000000 1.000000 2.000000\n"
            "6.000000 1.000000 3.000000\n"
            "0.000000 -1.000000 3.000000\n"
            "3.000000 -1.000000 4.000000\n"
            "6.000000 -1.000000 5.000000\n");
}

// 3 × 2: the row at index 3 · 2 = 6 and beyond is not in the grid.
TEST(XyzText, writesNanForCellsBeyondTheGrid) {
  const QByteArray text = textOf({1, 2, 3, 4, 5, 6}, 3, 2, {0, 1, 0, 2});
  EXPECT_TRUE(text.endsWith("0.000000 1.000000 4.000000\n"
                            "1.000000 1.000000 5.000000\n"
                            "0.000000 0.000000 nan\n"
                            "1.000000 0.000000 nan\n"));
}

TEST(XyzText, writesNumbersAsPrintfDoes) {
  std::mt19937 random(20110311);
  std::vector<float> values = {0,      -0.0F,         0.5e-6F,        1.5e-6F,     2.5e-6F,
                               1e-45F, 3.4028235e38F, -3.4028235e38F, 1.0F / 3.0F, 1e10F,
                               0.1F,   16777216.0F,   123456.789F,    INFINITY};
  while (values.size() < 4000) {
    const float value = std::bit_cast<float>(std::uint32_t(random()));
    if (!std::isnan(value)) values.push_back(value);
  }
  const int count = int(values.size());
  const QList<QByteArray> lines = textOf(values, 1, count, {0, float(count - 1), 0, 0}).split('\n');
  for (int i = 0; i < count; ++i) {
    std::array<char, 128> printed;
    std::snprintf(printed.data(), printed.size(), "%f %f %f", double(i), 0.0, double(values[std::size_t(i)]));
    ASSERT_EQ(lines[3 + i].toStdString(), printed.data());
  }
}

TEST(XyzText, hasPointsInEveryLocale) {
  const test::CommaLocale locale;
  EXPECT_TRUE(textOf({0.25F}, 1, 1, {0, 1, 0, 1}).endsWith("0.000000 1.000000 0.250000\n"));
}

// As many lines as the buffer has values, and not as many as the counts claim.
TEST(XyzText, isBoundedByWhatTheBufferHolds) {
  const int most = std::numeric_limits<int>::max();
  EXPECT_EQ(textOf({1, 2, 3}, most, most, {0, 1, 0, 1}).count('\n'), 3 + 3);
}

TEST(XyzText, saysWhenTheDeviceIsFull) {
  QBuffer closed;
  closed.open(QIODevice::ReadOnly);
  const std::vector<float> buffer = {1};
  const PlotLimits limits{0, 1, 0, 1};
  EXPECT_FALSE(writeXyzText(closed, limits, {}, GridNodes(limits, 1, 1), GridValues::held(buffer, 1, 1)));
}

} // namespace
} // namespace xov
