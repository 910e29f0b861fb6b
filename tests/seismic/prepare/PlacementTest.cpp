#include "XOV_Graphics/seismic/prepare/Placement.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

// Stations of the network II on the equator, in the order of their codes' letters.
StationInventory inventory() {
  StationInventory known;
  known.name = "stations.xml";
  known.stations = {{.network = "II", .code = "TLY", .latitudeDeg = 0, .longitudeDeg = 90, .elevationM = 579},
                    {.network = "II", .code = "AAK", .latitudeDeg = 0, .longitudeDeg = -60}};
  return known;
}

std::shared_ptr<SacSeismogram> recordAt(double latitudeDeg, double longitudeDeg) {
  SacFooter precise;
  precise.stla = latitudeDeg;
  precise.stlo = longitudeDeg;
  return copyOfRecord(*makeRecord(), {.precise = precise});
}

HypocentreValues honshu() {
  HypocentreValues values;
  values.originTime = onTheDay(5, 46, 23, 700);
  values.latitudeDeg = 0;
  values.longitudeDeg = 0;
  values.depthKm = 24.5F;
  values.Mw = 9.1F;
  values.name = "Near the east coast of Honshu";
  return values;
}

Hypocentre event() { return Hypocentre(honshu()); }

Hypocentre eventAt(float latitudeDeg, float longitudeDeg) {
  HypocentreValues values;
  values.latitudeDeg = latitudeDeg;
  values.longitudeDeg = longitudeDeg;
  return Hypocentre(values);
}

const SacHeader& onlyHeader(const PreparedRecords& placed) {
  EXPECT_EQ(placed.records.size(), 1U);
  return headerOf(*placed.records.front());
}

TEST(Placement, stationsGetTheirPlaces) {
  const PreparedRecords placed = withStations({makeRecord(), makeRecord({.station = "AAK"})}, inventory());
  EXPECT_TRUE(placed.notes.isEmpty());
  ASSERT_EQ(placed.records.size(), 2U);
  const SacFooter first = preciseValuesOf(*placed.records[0]);
  EXPECT_EQ(first.stla, 0);
  EXPECT_EQ(first.stlo, 90);
  EXPECT_EQ(headerOf(*placed.records[0]).stel, 579);
  EXPECT_EQ(preciseValuesOf(*placed.records[1]).stlo, -60);
  EXPECT_EQ(headerOf(*placed.records[1]).stel, kUndefinedValue);
  EXPECT_EQ(placed.records[0]->npts(), 10);
}

TEST(Placement, theChannelsOwnPlaceAndOrientationComeFirst) {
  StationInventory known = inventory();
  known.channels.push_back({.codes = {"II", "TLY", "", "BHZ"},
                            .latitudeDeg = 0.5,
                            .longitudeDeg = 91,
                            .elevationM = 570,
                            .depthM = 8,
                            .azimuthDeg = 0,
                            .dipDeg = -90});
  const PreparedRecords placed = withStations({makeRecord()}, known);
  const SacHeader& header = onlyHeader(placed);
  EXPECT_EQ(header.stla, 0.5F);
  EXPECT_EQ(header.stlo, 91);
  EXPECT_EQ(header.stel, 570);
  EXPECT_EQ(header.stdp, 8);
  EXPECT_EQ(header.cmpaz, 0);
  EXPECT_EQ(header.cmpinc, 0) << "upwards, which is a dip of -90 degrees";
}

TEST(Placement, recordsWithoutAPlaceAreKeptAndNamedOnce) {
  const auto known = recordAt(10, 20);
  SacHeader renamed = headerOf(*known);
  renamed.kstnm = "ZZZ";
  const PreparedRecords placed =
      withStations({copyOfRecord(*known, {.header = renamed}), makeRecord({.station = "XXX"}),
                    makeRecord({.station = "XXX", .component = "BHN"}), makeRecord()},
                   inventory());
  ASSERT_EQ(placed.records.size(), 4U);
  EXPECT_EQ(placed.notes, QStringList("stations.xml: has no place of II.XXX"));
  EXPECT_EQ(preciseValuesOf(*placed.records[0]).stla, 10) << "kept from the header";
}

TEST(Placement, anEventGivesDistanceDirectionsDepthAndOriginTime) {
  // A quarter of the equator: 90 · π/180 · 6371 km = 10007.54 km.
  const PreparedRecords placed = withEvent({recordAt(0, 90)}, event());
  EXPECT_TRUE(placed.notes.isEmpty());
  const SeismogramRecord& record = *placed.records.front();
  EXPECT_FLOAT_EQ(record.gcarc(), 90);
  EXPECT_FLOAT_EQ(record.azimuth(), 90);
  EXPECT_FLOAT_EQ(record.backazimuth(), 270);
  EXPECT_EQ(record.evdp(), 24.5F);
  const SacHeader& header = headerOf(record);
  EXPECT_NEAR(header.dist, 10007.54, 0.01);
  EXPECT_FLOAT_EQ(header.gcarc, 90) << "written down, for files too";
  EXPECT_EQ(header.mag, 9.1F);
  EXPECT_EQ(header.kevnm.text(), "Near the east co") << "as much as the field holds";
  // 05:46:23.7 after 05:00.
  EXPECT_DOUBLE_EQ(preciseValuesOf(record).o, 46 * 60 + 23.7);
  EXPECT_EQ(record.oTimeString(), "2011/03/11 05:46:23.7");
}

TEST(Placement, stationsAndEventMayComeInEitherOrder) {
  const auto stationsFirst = withEvent(withStations({makeRecord()}, inventory()).records, event());
  const PreparedRecords eventFirst = withEvent({makeRecord()}, event());
  EXPECT_EQ(eventFirst.notes, QStringList("no coordinates of II.TLY: their distances are not known"));
  const auto both = withStations(eventFirst.records, inventory());
  EXPECT_FLOAT_EQ(headerOf(*stationsFirst.records.front()).gcarc, 90);
  EXPECT_FLOAT_EQ(headerOf(*both.records.front()).gcarc, 90);
}

TEST(Placement, nothingOfAnotherEventStaysButThePicks) {
  SacHeader header = headerOf(*makeRecord());
  header.gcarc = 30;
  header.az = 7;
  header.evdp = 600;
  header.o = -12;
  header.evla = header.evlo = 5;
  header.kevnm = "another";
  header.nevid = 77;
  header.a = 3;
  const auto record = copyOfRecord(*makeRecord(), {.header = header, .precise = footerFromHeader(header)});
  const PreparedRecords placed = withEvent({record}, eventAt(1, 2));
  const SacHeader& now = onlyHeader(placed);
  EXPECT_EQ(now.gcarc, kUndefinedValue);
  EXPECT_EQ(now.az, kUndefinedValue);
  EXPECT_EQ(now.evdp, kUndefinedValue);
  EXPECT_EQ(now.o, kUndefinedValue);
  EXPECT_EQ(preciseValuesOf(*placed.records.front()).o, double(kUndefinedValue));
  EXPECT_EQ(now.evla, 1);
  EXPECT_EQ(now.kevnm.text(), "");
  EXPECT_EQ(now.nevid, kSacUndefinedInteger);
  EXPECT_EQ(now.a, 3);
  EXPECT_EQ(header.gcarc, 30);
  EXPECT_EQ(record->gcarc(), 30) << "the record that was given stays";
}

TEST(Placement, whatIsNotKnownIsSaid) {
  const PreparedRecords noTime = withEvent({recordAt(0, 90)}, eventAt(0, 0));
  EXPECT_EQ(noTime.notes, QStringList("the event has no origin time"));
  EXPECT_FLOAT_EQ(noTime.records.front()->gcarc(), 90);

  HypocentreValues timeOnly;
  timeOnly.originTime = onTheDay(5, 1);
  const PreparedRecords noPlace = withEvent({recordAt(0, 90)}, Hypocentre(timeOnly));
  EXPECT_EQ(noPlace.notes, QStringList("the event has no coordinates: distances are not known"));
  EXPECT_EQ(preciseValuesOf(*noPlace.records.front()).o, 60);

  const PreparedRecords noReference =
      withEvent(withStations({makeRecord({.reference = {}})}, inventory()).records, event());
  EXPECT_EQ(noReference.notes,
            QStringList("no reference time of II.TLY: the origin time is not known on their axes"));
  EXPECT_FLOAT_EQ(noReference.records.front()->gcarc(), 90);
}

TEST(Placement, absurdPlacesMakeNoDistance) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double latitude : {nan, 91.0, -12345.0, std::numeric_limits<double>::infinity()}) {
    const PreparedRecords placed = withEvent({recordAt(latitude, 0)}, event());
    EXPECT_EQ(onlyHeader(placed).gcarc, kUndefinedValue) << latitude;
    EXPECT_EQ(placed.notes.size(), 1) << latitude;
  }
}

TEST(StationsText, namesFiveStationsAndCountsTheRest) {
  SeismogramArray records;
  for (const char* station : {"A", "B", "A", "C", "D", "E"})
    records.push_back(makeRecord({.station = station}));
  EXPECT_EQ(stationsText(records), "II.A, II.B, II.C, II.D, II.E");
  records.push_back(makeRecord({.station = "F"}));
  records.push_back(makeRecord({.station = "G"}));
  EXPECT_EQ(stationsText(records), "II.A, II.B, II.C, II.D, II.E and 2 more");
}

} // namespace
} // namespace xov
