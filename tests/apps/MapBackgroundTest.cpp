#include "apps/xov/map/MapBackground.h"

#include "apps/xov/options/Options.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <XOV_Graphics/base/Resources.h>
#include <array>
#include <cmath>
#include <string>
#include <vector>

// Whether base maps lie where they should, asked of places on both sides of coasts.
namespace xov::cli {
namespace {

struct Place {
  float lon;
  float lat;
  bool isLand;
};

// Each row of two faces a coast: about a degree inland, and a little more off it.
constexpr Place kPlaces[] = {
    {-69, -20, true},      {-71.5F, -20, false},    // Chile, Pisagua
    {-70.3F, -30, true},   {-72.8F, -30, false},    // Chile, Coquimbo
    {-122.8F, 44, true},   {-125.5F, 44, false},    // Oregon
    {-7.5F, 40, true},     {-10.2F, 40, false},     // Portugal
    {-14, 24, true},       {-17.5F, 24, false},     // the western Sahara
    {16, -23, true},       {12, -23, false},        // Namibia
    {30.3F, -29, true},    {33, -29, false},        // Natal
    {47.7F, 6, true},      {50.5F, 6, false},       // Somalia
    {75.5F, 15, true},     {72.7F, 15, false},      // India, Goa
    {78.8F, 15, true},     {81.5F, 15, false},      // India, Andhra Pradesh
    {108, 13, true},       {110.7F, 13, false},     // Vietnam
    {115.3F, -25, true},   {110.5F, -25, false},    // Western Australia
    {151.7F, -30, true},   {154.7F, -30, false},    // New South Wales
    {140.2F, 37.5F, true}, {142.4F, 37.5F, false},  // Honshu
    {-37.7F, -10, true},   {-34.7F, -10, false},    // Brazil, Alagoas
    {-55, -32.5F, true},   {-50.5F, -35.5F, false}, // Uruguay
    {-81.5F, 28, true},    {-79.3F, 28, false},     // Florida
    {10.5F, 62, true},     {3, 64.5F, false},       // Norway
    {22, 30, true},        {22, 34, false},         // Cyrenaica
    {-30, 70, true},       {-15, 70, false},        // Greenland
    {159, 55, true},       {165, 55, false},        // Kamchatka
};
static_assert(std::size(kPlaces) >= 40);

// Seas are bluer than red in every palette; land, ice and snow are not.
constexpr int kBluer = 25;
bool isSea(QRgb color) { return qBlue(color) - qRed(color) > kBluer; }

// Paper is a PDF file as another program shows it, a pixel a point.
enum class Medium { Screen, Paper };
constexpr char kPdfViewer[] = "pdftoppm";

QImage shownByViewer(const QByteArray& pdf) {
  const QTemporaryDir folder;
  QFile file(folder.filePath("map.pdf"));
  if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size()) return {};
  file.close();
  if (QProcess::execute(kPdfViewer, {"-r", "72", "-singlefile", "-png", file.fileName(), folder.filePath("map")}) !=
      0)
    return {};
  return QImage(folder.filePath("map.png"));
}

class Map {
public:
  Map(const std::vector<std::string>& options, const PlotLimits& limits, Medium medium)
      : view_(medium == Medium::Screen ? QRectF(0, 0, 900, 700) : QRectF(0, 0, 900, 480)) {
    CLI::App app;
    MapBackground background;
    background.addOptions(Options(app));
    app.parse(std::vector<std::string>(options.rbegin(), options.rend()));
    const MapRegion region(limits);
    background.checkRegion(region);
    EXPECT_TRUE(background.show(view_, region));
    image_ = medium == Medium::Screen ? view_.snapshot() : shownByViewer(view_.dataWithPDFInsideRect(view_.bounds()));
  }

  bool shows(const Place& place) const {
    const PlotLimits l = view_.limits();
    return l.xmin < inTurn(place) && inTurn(place) < l.xmax && l.ymin < place.lat && place.lat < l.ymax;
  }

  QRgb colorAt(const Place& place) {
    const PlotLimits l = view_.limits();
    const QRectF map = view_.mapRect();
    const double x = map.x() + double(inTurn(place) - l.xmin) / double(l.xmax - l.xmin) * map.width();
    const double y = map.y() + double(place.lat - l.ymin) / double(l.ymax - l.ymin) * map.height();
    return image_.pixel(int(x), image_.height() - 1 - int(y));
  }

private:
  float inTurn(const Place& place) const {
    return view_.limits().xmax > 180 && place.lon < view_.limits().xmin ? place.lon + 360 : place.lon;
  }

  geoMapView view_;
  QImage image_;
};

// How many of the places that the map shows have the colour of land where there is land, and of sea where there is
// sea; the others are named.
int countRight(const std::vector<std::string>& options, const PlotLimits& limits, Medium medium = Medium::Screen) {
  Map map(options, limits, medium);
  int right = 0;
  for (const Place& place : kPlaces) {
    if (!map.shows(place)) continue;
    const QRgb color = map.colorAt(place);
    EXPECT_EQ(isSea(color), !place.isLand)
        << options.back() << ": " << place.lon << " " << place.lat << " has the colour " << qRed(color) << " "
        << qGreen(color) << " " << qBlue(color) << " on a map of " << limits.xmin << " " << limits.xmax;
    right += isSea(color) != place.isLand ? 1 : 0;
  }
  return right;
}

class MapBackgrounds : public ::testing::TestWithParam<std::vector<std::string>> {};

TEST_P(MapBackgrounds, haveLandAndSeaWhereTheyAreOnMapsOfTheWorld) {
  const int all = int(std::size(kPlaces));
  EXPECT_EQ(countRight(GetParam(), {0, 360, -90, 90}), all);
  EXPECT_EQ(countRight(GetParam(), {-180, 180, -90, 90}), all);
  // Upper limits that meet the picture's, lower ones that do not.
  EXPECT_EQ(countRight(GetParam(), {-180, 180, -60, 90}), all);
}

TEST_P(MapBackgrounds, haveLandAndSeaWhereTheyAreOnPolarMapsAndAcrossTheDateLine) {
  EXPECT_EQ(countRight(GetParam(), {0, 360, 60, 90}), 4);
  EXPECT_EQ(countRight(GetParam(), {-180, 180, -90, -20}), 12);
  EXPECT_EQ(countRight(GetParam(), {100, 260, -60, 60}), 12);
}

TEST_P(MapBackgrounds, haveLandAndSeaWhereTheyAreOnRegionalAndTinyMaps) {
  for (std::size_t i = 0; i < std::size(kPlaces); i += 2) {
    const Place& land = kPlaces[i];
    const Place& sea = kPlaces[i + 1];
    const PlotLimits around{std::min(land.lon, sea.lon) - 1.13F, std::max(land.lon, sea.lon) + 1.17F,
                            std::min(land.lat, sea.lat) - 1.31F, std::max(land.lat, sea.lat) + 1.29F};
    EXPECT_EQ(countRight(GetParam(), around), 2);
  }
  // Smaller than a cell.
  for (std::size_t i = 0; i < std::size(kPlaces); i += 5) {
    const Place& place = kPlaces[i];
    EXPECT_EQ(countRight(GetParam(), {place.lon - 0.03F, place.lon + 0.03F, place.lat - 0.03F, place.lat + 0.03F}),
              1);
  }
}

TEST_P(MapBackgrounds, haveLandAndSeaWhereTheyAreOnPaper) {
  if (QStandardPaths::findExecutable(kPdfViewer).isEmpty()) GTEST_SKIP() << kPdfViewer << " is not installed";
  EXPECT_EQ(countRight(GetParam(), {0, 360, -90, 90}, Medium::Paper), int(std::size(kPlaces)));
  EXPECT_EQ(countRight(GetParam(), {-180, 180, 60, 90}, Medium::Paper), 4);
  EXPECT_EQ(countRight(GetParam(), {100, 260, -60, 60}, Medium::Paper), 12);
  EXPECT_EQ(countRight(GetParam(), {-130.13F, -117.17F, 40.31F, 47.29F}, Medium::Paper), 2); // Oregon
  EXPECT_EQ(countRight(GetParam(), {-122.83F, -122.77F, 43.97F, 44.03F}, Medium::Paper), 1); // a part of a cell
}

INSTANTIATE_TEST_SUITE_P(All, MapBackgrounds,
                         ::testing::Values(std::vector<std::string>{"--image", "1"},
                                           std::vector<std::string>{"--image", "2"},
                                           std::vector<std::string>{"--image", "3"},
                                           std::vector<std::string>{"--image", "4"},
                                           std::vector<std::string>{"--topo", "default"}));

// The grey picture: the sea is an even dark grey, land is lit.
TEST(MapBackgroundOfTheWesternUnitedStates, hasLandAndSeaWhereTheyAre) {
  constexpr Place kCoast[] = {{-125.5F, 44, false}, {-126, 47, false},   {-122.5F, 35, false}, {-120, 33, false},
                              {-122.8F, 44, true},  {-122.5F, 47, true}, {-120, 36, true},     {-116, 34, true}};
  constexpr int kBetween = 165;
  for (const PlotLimits& limits :
       {PlotLimits{-130, -105, 30, 52}, {-129.95F, -110, 31.02F, 52}, {-127.03F, -113.98F, 32.51F, 48.04F}}) {
    for (const Medium medium : {Medium::Screen, Medium::Paper}) {
      if (medium == Medium::Paper && QStandardPaths::findExecutable(kPdfViewer).isEmpty()) continue;
      Map map({"--image", "10"}, limits, medium);
      for (const Place& place : kCoast)
        EXPECT_EQ(qGreen(map.colorAt(place)) > kBetween, place.isLand) << place.lon << " " << place.lat;
    }
  }
}

} // namespace
} // namespace xov::cli
