#include "XOV_Graphics/base/Resources.h"
#include "XOV_Graphics/map/plateBoundaryController.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <cmath>
#include <cstring>
#include <vector>

using namespace xov;

namespace {

const QString kFolder = QStringLiteral(XOV_SHIPPED_RESOURCES);
constexpr const char* kWidePictures[] = {"nasa_satellite_wide.tif", "natural_wide.jpg", "noaa_image_wide.jpg",
                                         "living_earth_wide.jpg"};
constexpr const char* kTexts[] = {"trench.txt", "ridge.txt", "transform.txt", "PB2002_boundaries.txt"};

QString pathOf(const char* name) { return kFolder + QLatin1Char('/') + QLatin1StringView(name); }

QByteArray contentsOf(const char* name) {
  QFile file(pathOf(name));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
  return file.readAll();
}

/// The 30-minute grid: 360 rows from the north, 720 columns from Greenwich.
struct Grid {
  Grid() {
    const QByteArray bytes = contentsOf("etopo30.i2");
    metres.resize(std::size_t(360) * 720);
    std::memcpy(metres.data(), bytes.constData(), std::min(std::size_t(bytes.size()), 2 * metres.size()));
  }
  int at(double longitude, double latitude) const {
    const double east = longitude < 0 ? longitude + 360 : longitude;
    return metres[std::size_t((90 - latitude) * 2) * 720 + std::size_t(east * 2)];
  }
  std::vector<std::int16_t> metres;
};

struct Place {
  const char* name;
  double longitude;
  double latitude;
};

constexpr Place kLand[] = {{"Colorado", -106, 39},    {"Amazonas", -62, -5},   {"Sahara", 10, 24},
                           {"Siberia", 100, 62},      {"Australia", 134, -25}, {"Greenland", -40, 72},
                           {"Honshu", 138.2, 36.2},   {"South Pole", 30, -85}, {"Denver", -105, 39.7},
                           {"Madagascar", 46.7, -19}, {"Florida", -81.5, 28.2}};
constexpr Place kSea[] = {{"Pacific", -140, 10},       {"Atlantic", -30, 30},    {"Indian Ocean", 80, -20},
                          {"Gulf of Mexico", -90, 25}, {"Tasman Sea", 160, -38}, {"Bay of Biscay", -5, 45.5},
                          {"Japan Sea", 134.5, 40},    {"Bengal", 89, 15},       {"Drake Passage", -62, -58}};

/// The pixel of a place in a picture from -180 to 360 degrees.
QRgb pixelOf(const QImage& wide, const Place& place) {
  return wide.pixel(int((place.longitude + 180) * wide.width() / 540),
                    int((90 - place.latitude) * wide.height() / 180));
}

/// Points of a text, as they are written.
std::vector<QPointF> pointsIn(const char* name) {
  std::vector<QPointF> points;
  for (const QByteArray& line : contentsOf(name).split('\n')) {
    const QByteArrayList fields = line.split(' ');
    bool isX = false;
    bool isY = false;
    const QPointF point(fields.value(0).toDouble(&isX), fields.value(1).toDouble(&isY));
    if (fields.size() == 2 && isX && isY) points.push_back(point);
  }
  return points;
}

class ShippedBoundaries : public ::testing::Test {
protected:
  ShippedBoundaries() { setHostResourceFolder(kFolder); }
  ~ShippedBoundaries() override { setHostResourceFolder({}); }

  /// The largest step in longitude between the points of a segment, in degrees.
  static float largestStep(const XOVPolygonArray& boundaries, bool countsFromMinus180) {
    float largest = 0;
    for (const auto& segment : boundaries) {
      for (std::size_t i = 1; i < segment->xp().size(); ++i) {
        const auto longitude = [&](std::size_t at) {
          const float x = segment->xp()[at];
          return countsFromMinus180 && x > 180 ? x - 360 : x;
        };
        largest = std::max(largest, std::abs(longitude(i) - longitude(i - 1)));
      }
    }
    return largest;
  }

  plateBoundaryController controller;
};

} // namespace

TEST(ShippedGrid, hasHalfADegree) { EXPECT_EQ(QFileInfo(pathOf("etopo30.i2")).size(), 360 * 720 * 2); }

TEST(ShippedGrid, hasMountainsAndTrenchesWhereTheyAre) {
  const Grid grid;
  EXPECT_GT(grid.at(86.9, 28.2), 4500) << "Himalaya";
  EXPECT_GT(grid.at(88, 33), 4500) << "Tibet";
  EXPECT_GT(grid.at(-68, -20), 3500) << "Altiplano";
  EXPECT_LT(grid.at(142.2, 11.3), -7000) << "Mariana Trench";
  EXPECT_LT(grid.at(-174.5, -23), -6000) << "Tonga Trench";
  EXPECT_LT(grid.at(-150, 20), -4000) << "abyssal plain";
}

TEST(ShippedGrid, hasLandAndSeaWhereTheyAre) {
  const Grid grid;
  for (const Place& place : kLand)
    EXPECT_GT(grid.at(place.longitude, place.latitude), 0) << place.name;
  for (const Place& place : kSea)
    EXPECT_LT(grid.at(place.longitude, place.latitude), 0) << place.name;
}

TEST(ShippedPictures, haveTheirSizes) {
  for (const char* name : kWidePictures)
    EXPECT_EQ(QImage(pathOf(name)).size(), QSize(1620, 540)) << name;
  EXPECT_EQ(QImage(pathOf("wusGray.tif")).size(), QSize(613, 540));
}

TEST(ShippedPictures, repeatAfterAWholeTurn) {
  for (const char* name : kWidePictures) {
    const QImage picture(pathOf(name));
    double sum = 0;
    for (int y = 0; y < 540; ++y) {
      for (int x = 0; x < 540; ++x)
        sum += std::abs(qGreen(picture.pixel(x, y)) - qGreen(picture.pixel(x + 1080, y)));
    }
    // The pictures are compressed with loss, in blocks that lie differently there.
    EXPECT_LT(sum / (540 * 540), 4) << name;
  }
}

TEST(ShippedPictures, haveABlueSeaAndLandThatIsNot) {
  for (const char* name : kWidePictures) {
    const QImage picture(pathOf(name));
    for (const Place& place : kSea)
      EXPECT_GT(qBlue(pixelOf(picture, place)), qRed(pixelOf(picture, place)) + 20) << name << ' ' << place.name;
    for (const Place& place : kLand)
      EXPECT_LT(qBlue(pixelOf(picture, place)), qRed(pixelOf(picture, place)) + 20) << name << ' ' << place.name;
  }
}

TEST(ShippedPictures, showTheWesternStatesAndTheSeaBesideThem) {
  const QImage picture(pathOf("wusGray.tif"));
  const auto grey = [&](double longitude, double latitude) {
    return qGray(picture.pixel(int((longitude + 130) * 613 / 25), int((52 - latitude) * 540 / 22)));
  };
  EXPECT_LT(grey(-128, 40), 160) << "Pacific";
  EXPECT_GT(grey(-119.9, 36.5), 160) << "San Joaquin Valley";
  EXPECT_GT(grey(-106, 49), 160) << "Great Plains";
}

TEST_F(ShippedBoundaries, areRead) {
  EXPECT_TRUE(controller.loadUTPlateBoundaries());
  EXPECT_GT(controller.boundaries()->size(), 300U);
  for (const auto& segment : *controller.boundaries())
    EXPECT_GE(segment->pointCount(), 2) << segment->title().toStdString();
}

TEST_F(ShippedBoundaries, sayThatTheyStandInForTheModel) {
  EXPECT_TRUE(controller.loadBirdPlateBoundaries());
  for (const auto& segment : *controller.boundaries())
    EXPECT_TRUE(segment->title().contains(QStringLiteral("generalised, not PB2002")));
}

TEST_F(ShippedBoundaries, haveNoStepAcrossAMapHoweverLongitudesAreCounted) {
  ASSERT_TRUE(controller.loadUTPlateBoundaries());
  ASSERT_TRUE(controller.loadBirdPlateBoundaries());
  EXPECT_LT(largestStep(*controller.boundaries(), false), 30);
  EXPECT_LT(largestStep(*controller.boundaries(), true), 30);
}

TEST_F(ShippedBoundaries, passWhereTheyShould) {
  ASSERT_TRUE(controller.loadUTPlateBoundaries());
  const auto passesNear = [&](double longitude, double latitude) {
    for (const auto& segment : *controller.boundaries()) {
      for (std::size_t i = 0; i < segment->xp().size(); ++i) {
        if (std::hypot(double(segment->xp()[i]) - longitude, double(segment->yp()[i]) - latitude) < 2) return true;
      }
    }
    return false;
  };
  EXPECT_TRUE(passesNear(143.5, 38)) << "Japan Trench";
  EXPECT_TRUE(passesNear(360 - 33.5, 36.5)) << "Mid-Atlantic Ridge";
  EXPECT_TRUE(passesNear(360 - 73, -33)) << "Chile Trench";
  EXPECT_FALSE(passesNear(100, 62)) << "Siberia";
}

TEST_F(ShippedBoundaries, areWrittenWithinHalfATurn) {
  for (const char* name : kTexts) {
    const std::vector<QPointF> points = pointsIn(name);
    EXPECT_GT(points.size(), 300U) << name;
    for (const QPointF& point : points)
      EXPECT_TRUE(std::abs(point.x()) <= 180 && std::abs(point.y()) <= 90) << name << ' ' << point.x();
  }
}

TEST(ShippedResources, areSmall) {
  qint64 bytes = 0;
  for (const QFileInfo& file : QDir(kFolder).entryInfoList(QDir::Files))
    bytes += file.size();
  EXPECT_LT(bytes, 1'700'000);
}
