#include "XOV_Graphics/views/seismic/Captions.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>

namespace xov::testing {
namespace {

std::shared_ptr<FakeRecord> described() {
  auto record = std::make_shared<FakeRecord>();
  record->station = QStringLiteral("TLY");
  record->network = QStringLiteral("II");
  record->component = QStringLiteral("BHZ");
  record->user = QStringLiteral("raw");
  record->region = QStringLiteral("NEAR EAST COAST OF HONSHU, JAPAN");
  record->geographicRegion = QStringLiteral("Honshu");
  record->originTime = QStringLiteral("2011/03/11 05:46:23.7");
  record->depthKm = 24.4f;
  record->distanceDeg = 33.456f;
  record->azimuthDeg = 312.06f;
  record->backAzimuthDeg = 98.75f;
  return record;
}

std::string printed(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

TEST(Captions, nameTheEventWithRegionTimeAndDepthInWholeKilometres) {
  EXPECT_EQ(eventCaption(*described()),
            QStringLiteral("NEAR EAST COAST OF HONSHU, JAPAN\nOrigin Time:2011/03/11 05:46:23.7 / Depth =  24 km"));
  EXPECT_EQ(regionCaption(*described()), QStringLiteral("Honshu\nOrigin Time:2011/03/11 05:46:23.7 / Depth: 24"));
}

TEST(Captions, showAnAzimuthOfExactly99Point5WithTwoDigitsAndOneAboveWithThree) {
  const auto held = described();
  FakeRecord& record = *held;
  record.azimuthDeg = 99.49f;
  EXPECT_EQ(azimuthCaption(record), QStringLiteral("TLY II (99)"));
  record.azimuthDeg = 99.5f; // rounds to the even 100, which outgrows its two characters
  EXPECT_EQ(azimuthCaption(record), QStringLiteral("TLY II (100)"));
  record.azimuthDeg = 99.6f;
  EXPECT_EQ(azimuthCaption(record), QStringLiteral("TLY II (100)"));
  record.azimuthDeg = 5;
  EXPECT_EQ(azimuthCaption(record), QStringLiteral("TLY II ( 5)"));
  record.azimuthDeg = 245.2f;
  EXPECT_EQ(azimuthCaption(record), QStringLiteral("TLY II (245)"));
}

TEST(Captions, showADistanceLikeAnAzimuth) {
  const auto held = described();
  FakeRecord& record = *held;
  record.distanceDeg = 7.4f;
  EXPECT_EQ(distanceCaption(record), QStringLiteral("raw ( 7)"));
  record.distanceDeg = 99.4f;
  EXPECT_EQ(distanceCaption(record), QStringLiteral("raw (99)"));
  record.distanceDeg = 151.0f;
  EXPECT_EQ(distanceCaption(record), QStringLiteral("raw (151)"));
}

TEST(Captions, nameAStripWithStationDistanceAndAzimuth) {
  EXPECT_EQ(stripCaption(*described()), QStringLiteral("TLY II BHZ (33.46) (312.06)"));
}

TEST(Captions, giveTheGeometryWithOneDecimalInFieldsOfThreeAndFive) {
  EXPECT_EQ(geometryCaption(*described()), QStringLiteral("Station: TLY-II / GCARC:33.5 deg / AZ:312.1 / BAZ: 98.8"));
}

TEST(Captions, writeAPeakWithThreeDecimalsAndAnExponent) {
  FakeRecord record;
  record.peak = 123456;
  EXPECT_EQ(peakCaption(record), QStringLiteral("1.235e+05"));
  record.peak = 0;
  EXPECT_EQ(peakCaption(record), QStringLiteral("0.000e+00"));
}

TEST(Captions, roundNumbersAsPrintfDoes) {
  FakeRecord record;
  for (const float value : {0.5f, 1.5f, 2.5f, 12.5f, 98.5f, 99.5f, 100.5f, 0.125f, 0.375f, -0.5f, -12345.0f, 1e10f}) {
    record.azimuthDeg = record.distanceDeg = record.depthKm = record.backAzimuthDeg = record.peak = value;
    const char* const whole = value > 99.5f ? " (%3.0f)" : " (%2.0f)";
    EXPECT_EQ(azimuthCaption(record).toStdString(), " " + printed(whole, double(value)));
    EXPECT_EQ(distanceCaption(record).toStdString(), printed(whole, double(value)));
    EXPECT_EQ(stripCaption(record).toStdString(),
              "  " + printed(" (%.2f)", double(value)) + printed(" (%.2f)", double(value)));
    EXPECT_EQ(eventCaption(record).toStdString(),
              "\nOrigin Time: / Depth = " + printed("%3.0f", double(value)) + " km");
    EXPECT_EQ(regionCaption(record).toStdString(), "\nOrigin Time: / Depth:" + printed("%3.0f", double(value)));
    EXPECT_EQ(geometryCaption(record).toStdString(), "Station: - / GCARC:" + printed("%3.1f", double(value)) +
                                                         " deg / AZ:" + printed("%5.1f", double(value)) +
                                                         " / BAZ:" + printed("%5.1f", double(value)));
    EXPECT_EQ(peakCaption(record).toStdString(), printed("%9.3e", double(value)));
  }
}

TEST(Captions, keepMarksOfTheirOwnFormatInTheTexts) {
  const auto held = described();
  FakeRecord& record = *held;
  record.station = QStringLiteral("%2");
  record.network = QStringLiteral("%3");
  EXPECT_EQ(stripCaption(record), QStringLiteral("%2 %3 BHZ (33.46) (312.06)"));
}

TEST(Captions, showUnsetValuesAsTheyAre) {
  FakeRecord record;
  record.distanceDeg = record.azimuthDeg = -12345;
  EXPECT_EQ(stripCaption(record), QStringLiteral("   (-12345.00) (-12345.00)"));
  record.azimuthDeg = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(azimuthCaption(record), QStringLiteral("  (nan)"));
}

std::shared_ptr<SacSeismogram> sacRecord(const SacHeader& header) {
  return std::make_shared<SacSeismogram>(header, std::vector<float>{1, 2});
}

TEST(Captions, leaveOutWhatAHeaderDoesNotHave) {
  SacHeader header;
  header.kstnm = "TLY";
  header.kcmpnm = "BHZ";
  const auto bare = sacRecord(header);
  EXPECT_EQ(stripCaption(*bare), QStringLiteral("TLY BHZ"));
  EXPECT_EQ(azimuthCaption(*bare), QStringLiteral("TLY"));
  EXPECT_EQ(distanceCaption(*bare), QString());
  EXPECT_EQ(eventCaption(*bare), QString());
  EXPECT_EQ(regionCaption(*bare), QString());
  EXPECT_EQ(geometryCaption(*bare), QStringLiteral("Station: TLY"));
  header.gcarc = 33.456f;
  header.evdp = 24.4f;
  header.evla = 38.3f;
  header.evlo = 142.5f;
  const auto placed = sacRecord(header);
  EXPECT_EQ(stripCaption(*placed), QStringLiteral("TLY BHZ (33.46)"));
  EXPECT_EQ(geometryCaption(*placed), QStringLiteral("Station: TLY / GCARC:33.5 deg"));
  EXPECT_EQ(eventCaption(*placed), QString::fromUtf8("38.30°N 142.50°E\nDepth =  24 km"));
  EXPECT_EQ(regionCaption(*placed), QString::fromUtf8("38.30°N 142.50°E\nDepth: 24"));
}

TEST(Captions, ofACompleteHeaderReadLikeThoseOfAnyRecord) {
  SacHeader header;
  header.kstnm = "TLY";
  header.knetwk = "II";
  header.kcmpnm = "BHZ";
  header.kuser0 = "raw";
  header.gcarc = 33.456f;
  header.az = 312.06f;
  header.baz = 98.75f;
  header.evla = 38.3f;
  header.evlo = 142.5f;
  header.evdp = 24.4f;
  header.o = 0;
  setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23, 700), Qt::UTC));
  const auto sac = sacRecord(header);
  const auto record = described();
  record->region = record->geographicRegion = QString::fromUtf8("38.30°N 142.50°E");
  EXPECT_EQ(eventCaption(*sac), eventCaption(*record));
  EXPECT_EQ(regionCaption(*sac), regionCaption(*record));
  EXPECT_EQ(azimuthCaption(*sac), azimuthCaption(*record));
  EXPECT_EQ(distanceCaption(*sac), distanceCaption(*record));
  EXPECT_EQ(stripCaption(*sac), stripCaption(*record));
  EXPECT_EQ(geometryCaption(*sac), geometryCaption(*record));
}

TEST(Captions, nameAFileWithoutEveryOccurrenceOfSacWhateverItsCase) {
  EXPECT_EQ(fileCaption(QStringLiteral("/data/ANMO.BHZ.SAC")), QStringLiteral("ANMO.BHZ"));
  EXPECT_EQ(fileCaption(QStringLiteral("/data/ANMO.sac.BHZ")), QStringLiteral("ANMO.BHZ"));
  EXPECT_EQ(fileCaption(QStringLiteral("a.sac.SaC.b.sAC")), QStringLiteral("a.b"));
  EXPECT_EQ(fileCaption(QStringLiteral("/data.sac/x.y")), QStringLiteral("x.y"));
  EXPECT_EQ(fileCaption(QStringLiteral("ANMOsac")), QStringLiteral("ANMOsac"));
}

TEST(Captions, removeSacInOnePass) { EXPECT_EQ(fileCaption(QStringLiteral("a.s.sacac")), QStringLiteral("a.sac")); }

TEST(Captions, nameTheLastFolderOfAPathThatEndsInOne) {
  EXPECT_EQ(fileCaption(QStringLiteral("/data/day.SAC/")), QStringLiteral("day"));
  EXPECT_EQ(fileCaption(QString()), QString());
  EXPECT_EQ(fileCaption(QStringLiteral("///")), QString());
}

} // namespace
} // namespace xov::testing
