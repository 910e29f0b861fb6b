#include "XOV_Graphics/map/NxyText.h"
#include "XOV_Graphics/map/XOVPolygon.h"
#include "tests/map/CommaLocale.h"
#include "tests/map/MapPrinting.h"

#include <gtest/gtest.h>

#include <QDir>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

using namespace xov;
using namespace xov::test;

namespace {

const Points kTwoPoints = {{1.5F, 2.5F}, {3, 4}};

/// What printf writes in the C locale.
QByteArray printed(const Points& points) {
  QByteArray text = QByteArray::number(qint64(points.size())) + '\n';
  for (const auto& [x, y] : points) {
    std::array<char, 128> line;
    const int length = std::snprintf(line.data(), line.size(), "%f %f\n", double(x), double(y));
    text.append(line.data(), length);
  }
  return text;
}

Points randomPoints(int count) {
  std::mt19937 random(11);
  Points points;
  while (points.size() < std::size_t(count)) {
    const auto x = std::bit_cast<float>(std::uint32_t(random()));
    const auto y = float(random() % 360000) / 1000 - 180;
    if (std::isfinite(x)) points.emplace_back(x, y);
  }
  return points;
}

} // namespace

TEST(NxyFile, isWrittenWithSixDecimalsALineAPoint) {
  const TemporaryFiles files;
  ASSERT_TRUE(polygonOf(kTwoPoints).saveToPath(files.path("a.nxy")));
  EXPECT_EQ(files.read(files.path("a.nxy")), QByteArray("2\n1.500000 2.500000\n3.000000 4.000000\n"));
}

TEST(NxyFile, isWrittenAsPrintfWouldDo) {
  Points points = randomPoints(2000);
  const float largest = std::numeric_limits<float>::max();
  points.insert(points.end(), {{largest, -largest}, {0.0F, -0.0F}, {5e-7F, -5e-7F}, {0.1F, 1.0F / 3}});
  const TemporaryFiles files;
  ASSERT_TRUE(polygonOf(points).saveToPath(files.path("a.nxy")));
  EXPECT_EQ(files.read(files.path("a.nxy")), printed(points));
}

TEST(NxyFile, comesBackWithinSixDecimals) {
  const Points points = randomPoints(2000);
  const TemporaryFiles files;
  ASSERT_TRUE(polygonOf(points).saveToPath(files.path("a.nxy")));
  XOVPolygon back;
  ASSERT_TRUE(back.loadNXYFromPath(files.path("a.nxy")));
  ASSERT_EQ(back.npts(), 2000);
  for (std::size_t i = 0; i < points.size(); ++i) {
    // Half of the last decimal, and half of the distance to the next number.
    EXPECT_NEAR(back.xp()[i], points[i].first, 5.1e-7 + std::abs(double(points[i].first)) * 6e-8);
    EXPECT_NEAR(back.yp()[i], points[i].second, 5.1e-7 + 180 * 6e-8);
  }
  // What has six decimals comes back to the bit.
  ASSERT_TRUE(back.saveToPath(files.path("b.nxy")));
  EXPECT_EQ(files.read(files.path("a.nxy")), files.read(files.path("b.nxy")));
}

TEST(NxyFile, withoutPointsHoldsAZeroAndComesBack) {
  const TemporaryFiles files;
  ASSERT_TRUE(XOVPolygon().saveToPath(files.path("a.nxy")));
  EXPECT_EQ(files.read(files.path("a.nxy")), QByteArray("0\n"));
  XOVPolygon back = polygonOf(kTwoPoints);
  EXPECT_TRUE(back.loadNXYFromPath(files.path("a.nxy")));
  EXPECT_EQ(back.npts(), 0);
}

TEST(NxyFile, countsThePointsThatItHolds) {
  XOVPolygon polygon = polygonOf(kTwoPoints);
  polygon.setNpts(9);
  const TemporaryFiles files;
  ASSERT_TRUE(polygon.saveToPath(files.path("a.nxy")));
  EXPECT_TRUE(files.read(files.path("a.nxy")).startsWith("2\n"));
}

TEST(NxyFile, isReadAndWrittenAlikeInEveryLocale) {
  const TemporaryFiles files;
  const CommaLocale commas;
  ASSERT_EQ(QLocale().toString(1.5), QStringLiteral("1,5"));
  ASSERT_TRUE(polygonOf(kTwoPoints).saveToPath(files.path("a.nxy")));
  EXPECT_EQ(files.read(files.path("a.nxy")), QByteArray("2\n1.500000 2.500000\n3.000000 4.000000\n"));
  XOVPolygon back;
  ASSERT_TRUE(back.loadNXYFromPath(files.path("a.nxy")));
  EXPECT_EQ(pointsOf(back), kTwoPoints);
  EXPECT_FALSE(back.scanFromNXYString(QStringLiteral("1 1,5 2,5")));
}

TEST(NxyFile, leavesTitleFileNameAndBoxAlone) {
  const TemporaryFiles files;
  XOVPolygon polygon;
  polygon.setTitle(QStringLiteral("t"));
  polygon.setFileName(QStringLiteral("f"));
  ASSERT_TRUE(polygon.loadNXYFromPath(files.write("a.nxy", "1\n5 6\n")));
  EXPECT_EQ(polygon.title(), QStringLiteral("t"));
  EXPECT_EQ(polygon.fileName(), QStringLiteral("f"));
  EXPECT_EQ(polygon.bRect(), QRectF(0, 0, 0, 0));
}

TEST(NxyFile, thatIsMissingChangesNothing) {
  const TemporaryFiles files;
  XOVPolygon polygon = polygonOf(kTwoPoints);
  QString error;
  EXPECT_FALSE(polygon.loadNXYFromPath(files.path("none"), &error));
  EXPECT_EQ(error, files.path("none") + QStringLiteral(": cannot be opened: No such file or directory"));
  EXPECT_FALSE(polygon.loadNXYFromPath(QString(), &error));
  EXPECT_EQ(pointsOf(polygon), kTwoPoints);
}

TEST(NxyFile, isNoFolderAndNoDevice) {
  const TemporaryFiles files;
  XOVPolygon polygon;
  QString error;
  EXPECT_FALSE(polygon.loadNXYFromPath(files.folder(), &error));
  EXPECT_EQ(error, files.folder() + QStringLiteral(": is a folder, expected a file"));
  EXPECT_FALSE(polygon.loadNXYFromPath(QStringLiteral("/dev/zero")));
}

TEST(NxyFile, isNamedInTheErrorOfItsText) {
  const TemporaryFiles files;
  const QString path = files.write("bad.nxy", "2\n1 2\n3 four\n");
  XOVPolygon polygon;
  QString error;
  EXPECT_FALSE(polygon.loadNXYFromPath(path, &error));
  EXPECT_EQ(error, path + QStringLiteral(": y of point 2: found \"four\", expected a number"));
}

TEST(NxyFile, ofNothingIsRefused) {
  const TemporaryFiles files;
  XOVPolygon polygon;
  EXPECT_FALSE(polygon.loadNXYFromPath(files.write("empty.nxy", "")));
}

TEST(NxyFile, isWrittenWholeOrNotAtAll) {
  const TemporaryFiles files;
  const QString path = files.write("a.nxy", "the former contents");
  ASSERT_TRUE(polygonOf(kTwoPoints).saveToPath(path));
  EXPECT_EQ(QDir(files.folder()).entryList(QDir::Files), QStringList(QStringLiteral("a.nxy"))); // nothing left over
  QString error;
  EXPECT_FALSE(polygonOf(kTwoPoints).saveToPath(files.path("no/such/folder"), &error));
  EXPECT_TRUE(error.startsWith(files.path("no/such/folder"))) << error.toStdString();
  EXPECT_FALSE(polygonOf(kTwoPoints).saveToPath(files.folder()));
  EXPECT_FALSE(polygonOf(kTwoPoints).saveToPath(QStringLiteral("/dev/full")));
  EXPECT_FALSE(polygonOf(kTwoPoints).saveToPath(QString()));
}
