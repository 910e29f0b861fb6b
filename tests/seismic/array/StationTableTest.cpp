#include "XOV_Graphics/seismic/array/StationTable.h"

#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

QString errorOf(const char* text) { return parseStationTable(text, QStringLiteral("in")).error(); }

TEST(StationTable, takesCodesAndPlacesBetweenAnySeparators) {
  for (const char* text : {"AA1 10.5 -20.25\nXX.AA2\t-1 2", "AA1,10.5,-20.25\r\nXX.AA2,-1,2\r\n",
                           "AA1|10.5|-20.25|300 m\n\n# far away\n  XX.AA2 ; -1 ; 2 ; more"}) {
    const auto table = parseStationTable(text, QStringLiteral("in"));
    ASSERT_TRUE(table) << qPrintable(table.error());
    EXPECT_EQ(table->size(), 2);
    EXPECT_EQ(table->value(QStringLiteral("AA1")).latitudeDeg, 10.5);
    EXPECT_EQ(table->value(QStringLiteral("AA1")).longitudeDeg, -20.25);
    EXPECT_EQ(table->value(QStringLiteral("XX.AA2")).longitudeDeg, 2);
  }
}

TEST(StationTable, mayHaveAHeading) {
  const auto table =
      parseStationTable("# made by hand\nstation latitude longitude\nAA1 +1 2\n", QStringLiteral("in"));
  ASSERT_TRUE(table);
  EXPECT_EQ(table->size(), 1);
}

TEST(StationTable, refusesLinesWithoutAPlace) {
  EXPECT_EQ(errorOf("AA1 1 2\nAA2 3\n"),
            QStringLiteral("in: line 2: expected a station code, its latitude and its longitude"));
  EXPECT_EQ(errorOf("AA1 1 2\nAA2 3 x4\n"),
            QStringLiteral("in: line 2: expected a station code, its latitude and its longitude"));
  EXPECT_EQ(errorOf("AA1 1\n"),
            QStringLiteral("in: line 1: expected a station code, its latitude and its longitude"));
}

TEST(StationTable, refusesPlacesOffTheGlobe) {
  for (const char* text : {"AA1 90.1 0", "AA1 0 360.1", "AA1 nan 0"})
    EXPECT_EQ(errorOf(text), QStringLiteral("in: line 1: expected a latitude of -90 to 90 and a longitude of -360 to "
                                            "360"));
}

TEST(StationTable, knowsStationsOfNetworksByBothCodes) {
  const auto table = parseStationTable("XX|AA1|1|2\nYY|AA1|3|4\n", QStringLiteral("in"));
  ASSERT_TRUE(table) << qPrintable(table.error());
  EXPECT_EQ(table->size(), 2);
  EXPECT_EQ(table->value(QStringLiteral("XX.AA1")).latitudeDeg, 1);
  EXPECT_EQ(table->value(QStringLiteral("YY.AA1")).longitudeDeg, 4);
}

TEST(StationTable, refusesStationsWithoutCodes) {
  for (const char* text : {"1 2\n", "lat,lon\n1,2\n"})
    EXPECT_TRUE(errorOf(text).endsWith(QStringLiteral(": expected a station code, its latitude and its longitude")))
        << text;
}

TEST(StationTable, refusesAStationInTwoPlaces) {
  EXPECT_EQ(errorOf("AA1 1 2\nAA1 1 2\nAA1 1 3\n"),
            QStringLiteral("in: line 3: the station has another place further up"));
}

TEST(StationTable, refusesAFileWithoutStations) {
  EXPECT_EQ(errorOf("# nothing\n\n"), QStringLiteral("in: holds no stations"));
  EXPECT_EQ(errorOf("station latitude longitude\n"), QStringLiteral("in: holds no stations"));
}

TEST(StationTable, isReadFromAFile) {
  const test::TemporaryFiles files;
  EXPECT_EQ(readStationTable(files.write("a.txt", "AA1 1 2\n"))->size(), 1);
  const QString missing = files.path("missing.txt");
  EXPECT_TRUE(readStationTable(missing).error().startsWith(missing));
}

} // namespace
} // namespace xov
