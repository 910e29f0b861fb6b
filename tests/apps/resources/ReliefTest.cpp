#include "apps/resources/Relief.h"

#include "apps/resources/Pictures.h"
#include "apps/resources/Tints.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <functional>

using namespace xov;
using namespace xov::maker;

namespace {

/// Grey values that rise from west to east, one a column.
QImage ramp() {
  QImage greys(256, 128, QImage::Format_Grayscale8);
  for (int y = 0; y < greys.height(); ++y) {
    for (int x = 0; x < greys.width(); ++x)
      greys.scanLine(y)[x] = uchar(x);
  }
  return greys;
}

/// A grid of the same columns, which begins half a turn later.
ElevationGrid gridOf(const std::function<int(int)>& metresOfGrey) {
  ElevationGrid grid{128, 256, {}};
  for (int row = 0; row < grid.rows; ++row) {
    for (int column = 0; column < grid.columns; ++column)
      grid.metres.push_back(std::int16_t(metresOfGrey((column + 128) % 256)));
  }
  return grid;
}

Relief slope(float eastward, float northward) {
  Relief relief{{0, 3, 0, 3}, 3, 3, {}};
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 3; ++x)
      relief.metres.push_back(1e6F + eastward * float(x) - northward * float(y));
  }
  return relief;
}

float lightOn(const Relief& relief) { return Hillshade(relief, 1, 1).at(1, 1); }

} // namespace

TEST(Relief, findsTheElevationOfEachGrey) {
  const ElevationTable table = fittedElevations(ramp(), gridOf([](int grey) { return 40 * grey - 5000; }));
  for (std::size_t grey = 0; grey < table.size(); ++grey)
    EXPECT_FLOAT_EQ(table.at(grey), 40 * float(grey) - 5000) << grey;
}

TEST(Relief, neverFallsWhereGreysRise) {
  // Grey 101 stands 200 m lower than 100: both take the mean, 4000 + (0 - 200) / 2.
  const ElevationTable table = fittedElevations(ramp(), gridOf([](int grey) {
                                                  return grey < 100 ? 0 : grey == 101 ? 3800 : 4000;
                                                }));
  EXPECT_FLOAT_EQ(table[99], 0);
  EXPECT_FLOAT_EQ(table[100], 3900);
  EXPECT_FLOAT_EQ(table[101], 3900);
  EXPECT_FLOAT_EQ(table[102], 4000);
}

TEST(Relief, takesTheMeanOverEachPixel) {
  // Two columns of the source, 200 and 201 of 256, make one pixel: (1000 + 1010) / 2.
  ElevationTable table{};
  for (std::size_t grey = 0; grey < table.size(); ++grey)
    table.at(grey) = 1000 + 10 * (float(grey) - 200);
  const ElevationGrid grid = gridOf([](int) { return 500; });
  const Relief relief = sampledRelief(ramp(), table, grid, kWholeGlobe, 128, 64);
  EXPECT_FLOAT_EQ(relief.at(100, 20), 1005);
}

TEST(Relief, takesTheSeaFloorMostlyFromTheGrid) {
  ElevationTable table{};
  table.fill(-4000);
  const Relief relief = sampledRelief(ramp(), table, gridOf([](int) { return -5000; }), kWholeGlobe, 64, 32);
  EXPECT_FLOAT_EQ(relief.at(30, 10), -4700); // 0.3 · -4000 + 0.7 · -5000
}

TEST(Relief, isLitFromTheNorthWest) {
  EXPECT_FLOAT_EQ(lightOn(slope(0, 0)), 1);
  const float steep = 20000;                       // metres a degree
  EXPECT_GT(lightOn(slope(steep, -steep)), 1.05F); // rises to the south-east, looks north-west
  EXPECT_LT(lightOn(slope(-steep, steep)), 0.9F);
  EXPECT_NEAR(lightOn(slope(steep, steep)), lightOn(slope(-steep, -steep)), 1e-3F); // across the light
}

TEST(Relief, saysWhichTileIsMissing) {
  const QTemporaryDir folder;
  EXPECT_EQ(readReliefTiles(folder.path()).error(),
            folder.path() + QStringLiteral("/000000/000000_000000.jpg: cannot be opened: No such file or directory"));
}

TEST(Relief, putsTilesWhereTheirNamesSay) {
  const QTemporaryDir folder;
  for (int row = 0; row < 8; ++row) {
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("00000%1").arg(row)));
    for (int column = 0; column < 16; ++column) {
      QImage tile(8, 8, QImage::Format_Grayscale8);
      for (int y = 0; y < 8; ++y)
        std::fill_n(tile.scanLine(y), 8, uchar(16 * row + column));
      const QString name = QStringLiteral("%1/00000%2/00000%2_%3.jpg")
                               .arg(folder.path())
                               .arg(row)
                               .arg(column, 6, 10, QLatin1Char('0'));
      ASSERT_TRUE(tile.save(name, "jpg", 100));
    }
  }
  const Result<QImage> mosaic = readReliefTiles(folder.path());
  ASSERT_TRUE(mosaic) << qPrintable(mosaic.error());
  EXPECT_EQ(mosaic->size(), QSize(128, 64));
  EXPECT_NEAR(mosaic->constScanLine(3 * 8 + 4)[11 * 8 + 4], 3 * 16 + 11, 1);
}

TEST(Tints, areInterpolatedBetweenStopsAndHoldBeyondThem) {
  constexpr ColourStop kStops[] = {{0, {0, 0, 0}}, {100, {1, 0.5F, 0}}};
  EXPECT_EQ(tint(kStops, -5).rounded(), qRgb(0, 0, 0));
  EXPECT_EQ(tint(kStops, 50).rounded(), qRgb(128, 64, 0)); // 127.5 and 63.75 rounded
  EXPECT_EQ(tint(kStops, 200).rounded(), qRgb(255, 128, 0));
}

TEST(Tints, leaveColoursInFullLightAsTheyAre) {
  EXPECT_EQ(lit({0.2F, 0.4F, 0.6F}, 1).rounded(), qRgb(51, 102, 153));
  EXPECT_EQ(lit({1, 1, 1}, 0).rounded(), qRgb(0, 0, 31)); // 0.12 · 255 of blue
}

TEST(LandColours, spreadOverTheSeaAndLeaveItsBlueOut) {
  // Land in the west, a blue sea in the east.
  QImage globe(16, 8, QImage::Format_RGB32);
  Relief relief{kWholeGlobe, 16, 8, {}};
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 16; ++x) {
      globe.setPixel(x, y, x < 8 ? qRgb(100, 150, 50) : qRgb(0, 0, 80));
      relief.metres.push_back(x < 8 ? 100 : -100);
    }
  }
  const LandColours land(globe, relief);
  EXPECT_EQ(land.at(-90, 0).rounded(), qRgb(100, 150, 50));
  EXPECT_EQ(land.at(90, 0).rounded(), qRgb(100, 150, 50));
}

TEST(WidePicture, repeatsTheWesternHalf) {
  QImage globe(4, 1, QImage::Format_RGB32);
  for (int x = 0; x < 4; ++x)
    globe.setPixel(x, 0, qRgb(x, 0, 0));
  const QImage wide = oneAndAHalfTimes(globe);
  ASSERT_EQ(wide.size(), QSize(6, 1));
  for (int x = 0; x < 6; ++x)
    EXPECT_EQ(qRed(wide.pixel(x, 0)), x % 4);
}
