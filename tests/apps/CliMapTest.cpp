#include "tests/apps/CliFixture.h"

#include <QBuffer>
#include <QDir>
#include <QImage>

#include <cmath>
#include <cstdint>
#include <vector>

namespace xov::cli {
namespace {

// A data root of its own, with small pictures in place of those that come with the library.
class CliMap : public CliTest {
protected:
  CliMap() {
    environment_.insert("XOV_DATA_ROOT", at("root"));
    EXPECT_TRUE(QDir(at("")).mkpath("root/resources"));
    writePicture("root/resources/natural_wide.jpg", {540, 180}, "JPG");
    writePicture("root/resources/wusGray.tif", {250, 220}, "TIFF");
  }

  // Columns that change colour every hundredth of the width: red, then ever more blue.
  void writePicture(const QString& name, const QSize& size, const char* format) {
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
      for (int x = 0; x < size.width(); ++x)
        image.setPixelColor(x, y, QColor(255 - 255 * x / size.width(), 0, 255 * x / size.width()));
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(image.save(&buffer, format, 100));
    writeFile(name, bytes);
  }

  // A global grid, its rows from the north: land of 1500 m where the column is in the eastern half, else sea.
  void writeGrid(const QString& name, int rows, int columns) {
    std::vector<std::int16_t> cells;
    for (int i = 0; i < rows * columns; ++i)
      cells.push_back(i % columns < columns / 2 ? 1500 : -4500);
    writeFile(name, QByteArray(reinterpret_cast<const char*>(cells.data()), qsizetype(2 * cells.size())));
  }

  // The colour of a map of the default layout at a longitude and latitude.
  static QColor colorAt(const QImage& image, const QRectF& region, double lon, double lat) {
    const QRectF map = mapOf(image.size(), region);
    const double x = map.left() + (lon - region.left()) / region.width() * map.width();
    const double y = map.top() + (lat - region.top()) / region.height() * map.height();
    return image.pixelColor(int(x), image.height() - 1 - int(y));
  }
  // Regions about the equator only: a degree is as long both ways.
  static QRectF mapOf(const QSize& size, const QRectF& region) {
    const QRectF frame(64, 50, size.width() - 96, size.height() - 80);
    const double scale = std::min(frame.width() / region.width(), frame.height() / region.height());
    const QSizeF map(region.width() * scale, region.height() * scale);
    return {frame.left() + (frame.width() - map.width()) / 2, frame.top() + (frame.height() - map.height()) / 2,
            map.width(), map.height()};
  }

  // The longitude that a colour of the wide picture has.
  static double longitudeOf(const QColor& color) { return -180 + 540 * color.blue() / 255.0; }
};

TEST_F(CliMap, drawsTheWorldOnPicture2WithoutAnyOption) {
  const Outcome outcome = xov({"map", "-o", "map.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const QImage image(at("map.png"));
  // 804 / 2 + 80.
  EXPECT_EQ(image.size(), QSize(900, 482));
  for (const double lon : {20.0, 130.0, 250.0, 340.0})
    EXPECT_NEAR(longitudeOf(colorAt(image, {0, -90, 360, 180}, lon, 10)), lon, 6) << lon;
}

TEST_F(CliMap, placesPicturesInRegionsOfAnyTurn) {
  const struct {
    QStringList edges;
    QRectF region;
    std::vector<std::pair<double, double>> longitudes; // on the map, and of the picture
  } rows[] = {
      {{"-180", "180", "-90", "90"}, {-180, -90, 360, 180}, {{-150, -150}, {0, 0}, {150, 150}}},
      {{"120", "290", "-60", "60"}, {120, -60, 170, 120}, {{130, 130}, {180, 180}, {280, 280}}},
      {{"170", "-170", "-10", "10"}, {170, -10, 20, 20}, {{172, 172}, {188, 188}}},
      {{"340", "380", "-10", "10"}, {-20, -10, 40, 20}, {{-15, -15}, {15, 15}}},
  };
  for (const auto& row : rows) {
    const Outcome outcome = xov(QStringList{"map", "--image", "2", "-o", "map.png", "--region"} + row.edges);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    const QImage image(at("map.png"));
    for (const auto& [lon, shown] : row.longitudes)
      EXPECT_NEAR(longitudeOf(colorAt(image, row.region, lon, 5)), shown, 6) << qPrintable(row.edges.join(' '));
  }
}

// Ten pixels a degree: red from 10 E on, green from 20 N on.
void writeSteps(const QString& path) {
  QImage image(5400, 1800, QImage::Format_RGB32);
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x)
      image.setPixel(x, y, qRgb(x >= 1900 && x < 5400 - 100 ? 255 : 0, y < 700 ? 255 : 0, 0));
  }
  EXPECT_TRUE(image.save(path, "TIFF"));
}

// How many of the pixels from `first` on are red in a row, or green in a column, in parts of a pixel.
double redIn(const QImage& image, int first, int count, int row) {
  double sum = 0;
  for (int x = first; x < first + count; ++x)
    sum += image.pixelColor(x, row).red() / 255.0;
  return sum;
}
double greenIn(const QImage& image, int first, int count, int column) {
  double sum = 0;
  for (int y = first; y < first + count; ++y)
    sum += image.pixelColor(column, y).green() / 255.0;
  return sum;
}

TEST_F(CliMap, placesAPictureToATenthOfAPixel) {
  writeSteps(at("root/resources/nasa_satellite_wide.tif"));
  // 804 by 402 points for 160.8 by 80.4 degrees, 5 a degree. 10 E lies (10 - 0.07) * 5 = 49.65 from the left edge at
  // 64, and 20 N (40.37 - 20) * 5 = 101.85 below the upper edge, which is 30 from the top.
  const QStringList map = {"map",      "--image", "1",      "--size", "900",   "482",
                           "--region", "0.07",    "160.87", "-40.03", "40.37", "-o"};
  EXPECT_EQ(xov(map + QStringList{"map.png"}).status, 0);
  const QImage once(at("map.png"));
  EXPECT_NEAR(redIn(once, 64 + 10, 90, 300), 100 - 49.65, 0.1);
  EXPECT_NEAR(greenIn(once, 30 + 10, 190, 500), 101.85 - 10, 0.1);

  // The same lengths in pixels of half a point, of which one cell of the picture makes about one.
  EXPECT_EQ(xov(map + QStringList{"map.png", "--scale", "2"}).status, 0);
  const QImage twice(at("map.png"));
  EXPECT_NEAR(redIn(twice, 2 * (64 + 10), 180, 600), 2 * (100 - 49.65), 0.1);
  EXPECT_NEAR(greenIn(twice, 2 * (30 + 10), 380, 1000), 2 * (101.85 - 10), 0.1);

  EXPECT_EQ(xov(map + QStringList{"map.pdf"}).status, 0);
  XOV_REQUIRE_TOOL(nothing, "pdftoppm", {"-r", "144", "-singlefile", "-png", at("map.pdf"), at("page")});
  const QImage page(at("page.png"));
  // A viewer puts an image onto whole pixels of its own.
  EXPECT_NEAR(redIn(page, 2 * (64 + 10), 180, 600), 2 * (100 - 49.65), 1);
  EXPECT_NEAR(greenIn(page, 2 * (30 + 10), 380, 1000), 2 * (101.85 - 10), 1);
}

TEST_F(CliMap, fillsTheFrameUpToThePole) {
  writeSteps(at("root/resources/nasa_satellite_wide.tif"));
  EXPECT_EQ(xov({"map", "--image", "1", "--region", "-180", "180", "-60", "90", "-o", "map.png"}).status, 0);
  const QImage image(at("map.png"));
  for (const double lat : {-55.0, 15.0, 25.0, 60.0, 88.0}) {
    // The middle of the map, where a degree is cos(15) as long along x as along y: 804 points for 360 of the former.
    const double perDegree = 804 / (360 * std::cos(15 * 3.14159265 / 180));
    const double y = 50 + (image.height() - 80 - 150 * perDegree) / 2 + (lat + 60) * perDegree;
    EXPECT_EQ(image.pixelColor(600, image.height() - 1 - int(y)), lat > 20 ? QColor(255, 255, 0) : QColor(255, 0, 0))
        << lat;
  }
}

TEST_F(CliMap, showsTheCellsOfARegionThatIsSmallerThanOne) {
  writeSteps(at("root/resources/nasa_satellite_wide.tif"));
  // 0.04 by 0.04 degrees about 10 E, 20 N, where four cells meet in the middle of the map.
  EXPECT_EQ(xov({"map", "--image", "1", "--size", "500", "400", "--region", "9.98", "10.02", "19.98", "20.02", "-o",
                 "map.png"})
                .status,
            0);
  const QImage image(at("map.png"));
  const int x = 64 + 404 / 2;
  const int y = 30 + 320 / 2;
  EXPECT_EQ(image.pixelColor(x - 60, y - 60), QColor(0, 255, 0));
  EXPECT_EQ(image.pixelColor(x + 60, y - 60), QColor(255, 255, 0));
  EXPECT_EQ(image.pixelColor(x - 60, y + 60), QColor(0, 0, 0));
  EXPECT_EQ(image.pixelColor(x + 60, y + 60), QColor(255, 0, 0));
  EXPECT_NEAR(redIn(image, x - 50, 100, y + 60), 50, 0.6);
  EXPECT_NEAR(greenIn(image, y - 50, 100, x + 60), 50, 0.6);
}

TEST_F(CliMap, placesAGridInRegionsOfAnyTurn) {
  writeGrid("globe.i2", 90, 180);
  const QColor land(150, 100, 50); // up to 1700 m
  const QColor sea(25, 51, 255);   // up to -4000 m
  const struct {
    QStringList edges;
    QRectF region;
  } rows[] = {
      {{"0", "360", "-90", "90"}, {0, -90, 360, 180}},
      {{"-180", "180", "-90", "90"}, {-180, -90, 360, 180}},
      {{"120", "290", "-60", "60"}, {120, -60, 170, 120}},
      {{"-40", "40", "-20", "20"}, {-40, -20, 80, 40}},
  };
  for (const auto& row : rows) {
    const Outcome outcome = xov(QStringList{"map", "--topo", "globe.i2", "-o", "map.png", "--region"} + row.edges);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    const QImage image(at("map.png"));
    for (double lon = row.region.left() + 5; lon < row.region.right(); lon += 20) {
      const double turned = lon < 0 ? lon + 360 : lon;
      if (std::abs(turned - 180) < 5 || std::abs(turned) < 5) continue;
      EXPECT_EQ(colorAt(image, row.region, lon, 5), turned < 180 ? land : sea)
          << qPrintable(row.edges.join(' ')) << lon;
    }
  }
}

TEST_F(CliMap, takesARegionalGridWithItsExtent) {
  writeGrid("dem.i2", 10, 40);
  const Outcome outcome = xov({"map", "--topo", "dem.i2", "--topo-size", "10", "40", "--topo-extent", "10", "20",
                               "-1.25", "1.25", "-o", "map.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const QImage image(at("map.png"));
  EXPECT_EQ(colorAt(image, {10, -1.25, 10, 2.5}, 12, 0), QColor(150, 100, 50));
  EXPECT_EQ(colorAt(image, {10, -1.25, 10, 2.5}, 18, 0), QColor(25, 51, 255));
}

TEST_F(CliMap, loadsEtopo5FromTheDataRoot) {
  ASSERT_TRUE(QDir(at("root")).mkpath("DATA/Grids"));
  writeGrid("root/DATA/Grids/etopo5.i2", 2160, 4320);
  for (const QStringList& topo : {QStringList{"--topo"}, QStringList{"--topo", "default"}}) {
    const Outcome outcome = xov(QStringList{"map", "-o", "map.png"} + topo);
    EXPECT_EQ(outcome.status, 0);
    const QImage image(at("map.png"));
    EXPECT_EQ(colorAt(image, {0, -90, 360, 180}, 90, 5), QColor(150, 100, 50));
    EXPECT_EQ(colorAt(image, {0, -90, 360, 180}, 270, 5), QColor(25, 51, 255));
  }
}

TEST_F(CliMap, cutsTheRegionalPictureToTheRegion) {
  // Ten pixels a degree, red to blue from -130 to -105; a map of 10 degrees between.
  const Outcome outcome = xov({"map", "--image", "10", "--region", "-125", "-115", "30", "52", "-o", "map.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const QImage image(at("map.png"));
  const QColor middle = image.pixelColor(64 + (image.width() - 96) / 2, image.height() / 2);
  EXPECT_NEAR(middle.blue(), 255 * (130 - 120) / 25.0, 3);
}

TEST_F(CliMap, drawsEventsStationsVectorsAndLines) {
  writeFile("events.csv", "time,latitude,longitude,depth,magnitude\n2011-03-11T05:46:23Z,38,142,29,9\n"
                          "2011-03-11T06:00:00Z,10,-150,600,5\n2011-03-12T00:00:00Z,-10,20,,5\n");
  writeFile("stations.txt", "10 20\n200 -30\n-100 5\n");
  writeFile("vectors.txt", "30 0 1 2\n40 0 -3 4\n");
  writeFile("line.nxy", "3\n0 0\n10 10\n20 0\n");
  writeFile("other.nxy", "2\n100 0\n110 10\n");
  const QStringList features = {"map",       "--events",    "events.csv", "--stations", "stations.txt",
                                "--vectors", "vectors.txt", "--polygons", "line.nxy",   "other.nxy",
                                "--image",   "0",           "--no-legend"};
  for (const char* name : {"map.png", "map.pdf"}) {
    const Outcome outcome = xov(features + QStringList{"-o", name});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
  }
  XOV_REQUIRE_TOOL(text, "pdftotext", {at("map.pdf"), "-"});
  EXPECT_TRUE(text.contains("events")) << "the title\n" << qPrintable(text);
  EXPECT_TRUE(text.contains("45°W")) << qPrintable(text);
  // The large event's fill, 20 points around 142 E, 38 N: of depth 29 km, 20 · sqrt(29 / 700) = 4.07.
  EXPECT_EQ(QImage(at("map.png")).pixelColor(64 + int(142 / 360.0 * 804), 482 - 50 - int(128 / 180.0 * 402)),
            QColor(255, 61, 0)); // (1, 0.24, 0)
}

QByteArray quakeMlOfTwo() {
  const auto value = [](const char* name, const char* text) {
    return QByteArray("<") + name + "><value>" + text + "</value></" + name + ">";
  };
  const QByteArray time = value("time", "2011-03-11T05:46:23Z");
  const QByteArray strike = value("strike", "0") + value("dip", "45") + value("rake", "90");
  const auto event = [&](const char* latitude, const char* magnitude, const QByteArray& mechanism) {
    return "<event><origin>" + time + value("latitude", latitude) + value("longitude", "90") +
           value("depth", "10000") + "</origin><magnitude>" + value("mag", magnitude) + "</magnitude>" + mechanism +
           "</event>";
  };
  return "<quakeml xmlns=\"http://quakeml.org/xmlns/quakeml/1.2\"><eventParameters>" +
         event("0", "7",
               "<focalMechanism><nodalPlanes><nodalPlane1>" + strike +
                   "</nodalPlane1></nodalPlanes></focalMechanism>") +
         event("40", "6", "") + "</eventParameters></quakeml>";
}

TEST_F(CliMap, drawsBeachBallsForTheEventsWhoseMechanismIsKnown) {
  writeFile("events.xml", quakeMlOfTwo());
  const QStringList map = {"map", "--image", "0", "--events", "events.xml", "--no-legend", "-o", "map.png"};
  EXPECT_EQ(xov(map + QStringList{"--mechanisms", "--mechanism-color", "#0000ff", "--mechanism-size", "40"}).err, "");
  const QImage image(at("map.png"));
  const QRectF region(0, -90, 360, 180);
  // 40 points are 18 degrees; the middle of a thrust is compressional, its east side is not.
  EXPECT_EQ(colorAt(image, region, 90, 0), QColor(0, 0, 255));
  EXPECT_EQ(colorAt(image, region, 98, 0), QColor(255, 255, 255));
  // The other event is a circle: of 10 km, 20 · sqrt(10 / 700) = 2.4 in the table from dark red to blue.
  EXPECT_EQ(colorAt(image, region, 90, 40), QColor(242, 0, 0));
  EXPECT_EQ(xov(map + QStringList{"--mechanisms"}).err, "");
  EXPECT_EQ(colorAt(QImage(at("map.png")), region, 90, 0), QColor(242, 0, 0)) << "that of its depth";
}

TEST_F(CliMap, saysWhereAFileTellsNoMechanism) {
  writeFile("events.csv", "time,latitude,longitude,depth,magnitude\n2011-03-11T05:46:23Z,38,142,29,9\n");
  const Outcome outcome = xov({"map", "--image", "0", "--events", "events.csv", "--mechanisms", "-o", "map.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: events.csv: tells no mechanism of an event\n");
  EXPECT_EQ(xov({"map", "--mechanisms", "-o", "map.png"}).status, 2) << "without events";
  EXPECT_EQ(xov({"map", "--events", "events.csv", "--mechanisms", "--mechanism-color", "reddish"}).status, 2);
}

TEST_F(CliMap, explainsWhatItShows) {
  writeFile("events.csv", "time,latitude,longitude,depth,magnitude\n2011-03-11T05:46:23Z,38,12,29,6.8\n"
                          "2011-03-11T05:46:23Z,39,12,29,5.2\n");
  writeFile("stations.txt", "TLY 38.2 12.4\n");
  writeGrid("globe.i2", 90, 180);
  XOV_REQUIRE_TEXT(text, {"map", "--topo", "globe.i2", "--region", "10", "14", "36", "40", "--events", "events.csv",
                          "--stations", "stations.txt", "--station-names", "--plates", "types", "--color-bar",
                          "Elevation (m)"});
  for (const char* word : {"Magnitude", "Depth (km)", "700", "trenches", "ridges", "transform faults", "50 km", "TLY",
                           "°E", "38°N", "Elevation (m)"})
    EXPECT_TRUE(text.contains(QString::fromUtf8(word))) << word << "\n" << qPrintable(text);
  XOV_REQUIRE_TEXT(bare, {"map", "--image", "0", "--region", "10", "14", "36", "40", "--events", "events.csv",
                          "--no-legend", "--no-scale-bar", "--no-degree-signs"});
  for (const char* word : {"Magnitude", "km", "E", "N"})
    EXPECT_FALSE(bare.contains(QLatin1String(word))) << word << "\n" << qPrintable(bare);
}

TEST_F(CliMap, readsNamedColumns) {
  writeFile("stations.csv", "station,latitude,longitude\n1,20,10\n2,-30,200\n");
  writeFile("gps.csv", "lat,lon,ve,vn\n20,10,1,2\n");
  const Outcome outcome =
      xov({"map", "--stations", "stations.csv", "--station-columns", "longitude", "latitude", "--vectors", "gps.csv",
           "--vector-columns", "lon", "lat", "ve", "vn", "--vector-scale", "10", "-o", "map.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
}

TEST_F(CliMap, drawsEveryStationOfAFileInWhicheverForm) {
  const std::pair<const char*, const char*> forms[] = {
      {"codes.txt", "AA1 30 90 Town, Land\nAA2 -30 -90 b\n"},
      {"networks.csv", "XX,AA1,30,90\nXX,AA2,-30,-90\n"},
      {"fdsn.txt", "#Network|Station|Latitude|Longitude|Elevation|SiteName|StartTime|EndTime\n"
                   "XX|AA1|30|90|5|a|2010-01-01T00:00:00|\nXX|AA2|-30|-90|5|b|2010-01-01T00:00:00|\n"},
      {"headings.csv", "lon,lat,sta\n90,30,AA1\n-90,-30,AA2\n"},
      {"places.txt", "90 30\n-90 -30\n"},
  };
  QImage first;
  for (const auto& [name, text] : forms) {
    writeFile(name, text);
    const Outcome outcome = xov({"map", "--stations", name, "-o", "map.png"});
    EXPECT_EQ(outcome.err, "") << name;
    const QImage map(at("map.png"));
    if (first.isNull()) first = map;
    EXPECT_EQ(map, first) << name;
  }
  // With columns that are given, the first line is a station, too.
  writeFile("words.txt", "AA1 30 90 Town\nAA2 -30 -90 b\n");
  EXPECT_EQ(xov({"map", "--stations", "words.txt", "--station-columns", "3", "2", "-o", "map.png"}).err, "");
  EXPECT_EQ(QImage(at("map.png")), first);
  writeFile("one.txt", "AA2 -30 -90 b\n");
  EXPECT_EQ(xov({"map", "--stations", "one.txt", "-o", "map.png"}).err, "");
  EXPECT_NE(QImage(at("map.png")), first);
}

TEST_F(CliMap, drawsWhatItCanReadAndNamesTheRest) {
  writeFile("good.nxy", "2\n1 1\n2 2\n");
  writeFile("bad.nxy", "3\n1 1\n2 2\n3 x\n");
  writeFile("stations.txt", "1 x\n");
  writeFile("events.csv", "a,b\n1,2\n");
  const Outcome outcome = xov({"map", "--polygons", "good.nxy", "bad.nxy", "--stations", "stations.txt", "--events",
                               "events.csv", "--vectors", "none.txt", "-o", "map.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: bad.nxy: y of point 3: found \"x\", expected a number\n"
                         "xov: events.csv: unknown format, expected QuakeML, GCMT NDK, mchedr, Nordic, hypoDD, ZMAP "
                         "or a table of events\n"
                         "xov: stations.txt: line 1: expected a station code, its latitude and its longitude\n"
                         "xov: none.txt: cannot be opened: No such file or directory\n");
  EXPECT_FALSE(QImage(at("map.png")).isNull());
}

TEST_F(CliMap, failsForABackgroundThatCannotBeRead) {
  writeFile("short.i2", "123");
  const struct {
    QStringList arguments;
    QString message;
  } faults[] = {
      {{"--topo", "short.i2", "--topo-size", "2", "3"},
       "xov: short.i2: 3 bytes, expected 12 for 2 rows of 3 columns\n"},
      {{"--topo", "short.i2"},
       "xov: short.i2: found 3 bytes, which is no grid of 16-bit cells that is twice as wide as high; give its rows "
       "and "
       "columns with --topo-size\n"},
      {{"--topo", "none.i2"}, "xov: none.i2: cannot be opened: No such file or directory\n"},
  };
  for (const auto& fault : faults) {
    const Outcome outcome = xov(QStringList{"map", "-o", "map.png"} + fault.arguments);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.endsWith(fault.message)) << qPrintable(outcome.err);
  }
}

TEST_F(CliMap, refusesWhatMakesNoMapBeforeReadingAnything) {
  const struct {
    QStringList arguments;
    const char* message;
  } faults[] = {
      {{"--region", "0", "361", "-90", "90"}, "--region: found 0 361, expected at most 360 degrees"},
      {{"--region", "0", "10", "20", "10"}, "--region: found 20 10, expected a southern edge below"},
      {{"--region", "0", "10", "x", "10"}, "found 'x', expected a number"},
      {{"--image", "5"}, "--image"},
      {{"--image", "10", "--region", "0", "10", "0", "10"}, "expected a part of -130 -105 30 52"},
      {{"--plates", "all"}, "--plates"},
      {{"--colors", "blue"}, "--colors"},
      {{"--align", "left"}, "--align"},
      {{"--topo", "default", "--image", "2"}, "--image"},
      {{"--topo-size", "2", "3"}, "--topo"},
      {{"--vector-scale", "2"}, "--vectors"},
      {{"file.csv"}, "file.csv"},
  };
  for (const auto& fault : faults) {
    const Outcome outcome = xov(QStringList{"map", "-o", "map.png"} + fault.arguments);
    EXPECT_EQ(outcome.status, 2) << fault.message;
    EXPECT_TRUE(outcome.err.contains(fault.message)) << qPrintable(outcome.err);
    EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
  }
  EXPECT_FALSE(files().contains("map.png"));
}

TEST_F(CliMap, standsWhereItIsToldTo) {
  // A globe in 900 by 700 points is 402 high in a frame of 620, from 50 up: its frame's lower edge, 50 or 159 or 268.
  const std::pair<const char*, int> rows[] = {{"bottom", 50}, {"centre", 159}, {"top", 268}};
  for (const auto& [place, bottom] : rows) {
    const Outcome outcome = xov({"map", "--image", "0", "--align", place, "--size", "900", "700", "-o", "map.png"});
    EXPECT_EQ(outcome.status, 0);
    const QImage image(at("map.png"));
    EXPECT_EQ(image.pixelColor(450, 700 - bottom), QColor(0, 0, 0)) << place;
  }
}

} // namespace
} // namespace xov::cli
