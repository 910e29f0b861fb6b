#include "XOV_Graphics/seismic/io/stations/StationText.h"

#include "tests/seismic/TemporaryFiles.h"

#include <QStringList>

namespace xov {
namespace {

QString errorOf(const char* text) { return parseStations(text, QStringLiteral("in")).error(); }

/// Each station as "NET.CODE latitude longitude"; the error alone where there is one.
QStringList stationsIn(const char* text) {
  const auto stations = parseStations(text, QStringLiteral("in"));
  if (!stations) return {stations.error()};
  QStringList list;
  for (const Station& station : *stations)
    list.append(QStringLiteral("%1.%2 %3 %4")
                    .arg(station.network, station.code)
                    .arg(station.latitudeDeg)
                    .arg(station.longitudeDeg));
  return list;
}

const QStringList kTwo = {".AA1 10.5 -20.25", ".AA2 -1 2"};
const QStringList kTwoOfNetworks = {"XX.AA1 10.5 -20.25", "YY.AA2 -1 2"};

TEST(StationText, takesCodesAndPlacesBetweenAnySeparators) {
  for (const char* text : {"AA1 10.5 -20.25\nAA2\t-1 2", "AA1,10.5,-20.25\r\nAA2,-1,2\r\n",
                           "AA1|10.5|-20.25|300 m\n\n# far away\n  AA2 ; -1 ; 2 ; more",
                           "\xEF\xBB\xBF\"AA1\",\"10.5\",\"-20.25\",\"Town, Country\"\nAA2, -1, 2, \"a b\""})
    EXPECT_EQ(stationsIn(text), kTwo) << text;
}

TEST(StationText, keepsTheFirstOfLinesWithWords) {
  EXPECT_EQ(stationsIn("AA1 10.5 -20.25 Tokyo, Japan\nAA2 -1 2 Oslo, Norway\n"), kTwo);
  EXPECT_EQ(stationsIn("AA1,10.5,-20.25,Tokyo\nAA2,-1,2,Oslo\n"), kTwo);
}

TEST(StationText, takesNetworksBeforeTheStations) {
  for (const char* text : {"XX,AA1,10.5,-20.25\nYY,AA2,-1,2\n", "XX AA1 10.5 -20.25 300\nYY AA2 -1 2 4\n",
                           "XX|AA1|10.5|-20.25\nYY|AA2|-1|2\n"})
    EXPECT_EQ(stationsIn(text), kTwoOfNetworks) << text;
  // One station with a name tells the columns of all.
  EXPECT_EQ(stationsIn("XX,001,10.5,-20.25\nXX,AA2,-1,2\n"), (QStringList{"XX.001 10.5 -20.25", "XX.AA2 -1 2"}));
}

TEST(StationText, readsTheTextOfWebServices) {
  const char* const heading =
      "#Network | Station | Latitude | Longitude | Elevation | SiteName | StartTime | EndTime\n";
  const QByteArray rows = "XX|AA1|10.5|-20.25|300.0|Town, Country|2010-01-01T00:00:00|\n"
                          "YY|AA2|-1|2|4.0|An \"inner\" place|2011-02-03T04:05:06.0000|2020-01-01T00:00:00\n";
  EXPECT_EQ(stationsIn(heading + rows), kTwoOfNetworks);
  EXPECT_EQ(stationsIn(rows), kTwoOfNetworks);
  EXPECT_EQ(stationsIn("XX|001|10.5|-20.25|300.0|Town|2010-01-01T00:00:00|\n"), QStringList("XX.001 10.5 -20.25"));
  EXPECT_EQ(stationsIn("#Network|Station|Location|Channel|Latitude|Longitude\nXX|AA1||BHZ|10.5|-20.25\n"),
            QStringList("XX.AA1 10.5 -20.25"));
}

TEST(StationText, findsColumnsByTheirHeadings) {
  for (const char* text :
       {"lon,lat,sta\n-20.25,10.5,AA1\n2,-1,AA2\n", "Station Lat Long\nAA1 10.5 -20.25\nAA2 -1 2\n",
        "name;\"Latitude (deg)\";Longitude (deg);STATION\nTown, a;10.5;-20.25;AA1\nb;-1;2;AA2\n",
        "# sta lat lon\nAA1,10.5,-20.25\nAA2,-1,2\n"})
    EXPECT_EQ(stationsIn(text), kTwo) << text;
  EXPECT_EQ(stationsIn("longitude latitude\n-20.25 10.5\n"), QStringList(". 10.5 -20.25"));
}

TEST(StationText, skipsAHeadingThatSaysNothing) {
  EXPECT_EQ(stationsIn("made by hand\nAA1 10.5 -20.25\nAA2 -1 2\n"), kTwo);
}

TEST(StationText, takesTwoNumbersForLongitudeAndLatitude) {
  EXPECT_EQ(stationsIn("-20.25 10.5\n2 -1\n"), (QStringList{". 10.5 -20.25", ". -1 2"}));
}

TEST(StationText, takesCodesThatLookLikeNumbers) {
  EXPECT_EQ(stationsIn("001 10.5 -20.25\nNAN 1 2\nINF 1 2\n1E5 1 2\n"),
            (QStringList{".001 10.5 -20.25", ".NAN 1 2", ".INF 1 2", ".1E5 1 2"}));
  EXPECT_EQ(stationsIn("XX NAN 1 2\n"), QStringList("XX.NAN 1 2"));
}

TEST(StationText, tellsTheLineOfEach) {
  const auto stations = parseStations("# by hand\nAA1 1 2\n\nAA2 3 4\n", QStringLiteral("in"));
  ASSERT_TRUE(stations);
  ASSERT_EQ(stations->size(), 2U);
  EXPECT_EQ((*stations)[0].line, 2);
  EXPECT_EQ((*stations)[1].line, 4);
}

TEST(StationText, refusesLinesThatAreNoStations) {
  const QString expected = QStringLiteral(": expected a station code, its latitude and its longitude");
  for (const char* text : {"AA1 1\n", "AA1,1,x\n", "AA1;x;1\n", "139.7 35.6 12\n", "-5 10 20 30\n", ",1,2\n"})
    EXPECT_EQ(errorOf(text), "in: line 1" + expected) << text;
  for (const char* text :
       {"AA1 1 2\nAA2 3\n", "AA1 1 2\nAA2 3 x4\n", "sta,lat,lon\nAA1,1\n", "sta,lat,lon\nAA1,x,y\n"})
    EXPECT_EQ(errorOf(text), "in: line 2" + expected) << text;
}

TEST(StationText, refusesPlacesOffTheGlobe) {
  for (const char* text : {"AA1 90.1 0", "AA1 0 360.1", "AA1 nan 0", "0 91", "AA1 inf 0"})
    EXPECT_EQ(errorOf(text), QStringLiteral("in: line 1: expected a latitude of -90 to 90 and a longitude of -360 to "
                                            "360"))
        << text;
}

TEST(StationText, refusesAFileWithoutStations) {
  for (const char* text : {"", "# nothing\n\n", "station latitude longitude\n", "words only\n"})
    EXPECT_EQ(errorOf(text), QStringLiteral("in: holds no stations")) << text;
}

TEST(StationText, isReadFromAFile) {
  const test::TemporaryFiles files;
  EXPECT_EQ(readStations(files.write("a.txt", "AA1 1 2\n"))->size(), 1U);
  const QString missing = files.path("missing.txt");
  EXPECT_EQ(readStations(missing).error(), missing + ": cannot be opened: No such file or directory");
}

} // namespace
} // namespace xov
