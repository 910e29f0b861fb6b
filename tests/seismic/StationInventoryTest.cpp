#include "XOV_Graphics/seismic/StationInventory.h"

#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "tests/seismic/TemporaryFiles.h"

namespace xov {
namespace {

StationChannel channel(const ChannelCodes& codes, const char* start = "", const char* end = "") {
  StationChannel made;
  made.codes = codes;
  made.epoch.start = parseUtcTime(QString::fromLatin1(start)).value_or(QDateTime());
  made.epoch.end = parseUtcTime(QString::fromLatin1(end)).value_or(QDateTime());
  return made;
}

SacSeismogram record(const ChannelCodes& codes, const char* time = "2011-03-11T05:46:24") {
  SacHeader header;
  header.knetwk = codes[0].toLatin1().constData();
  header.kstnm = codes[1].toLatin1().constData();
  header.khole = codes[2].toLatin1().constData();
  header.kcmpnm = codes[3].toLatin1().constData();
  header.delta = 1;
  header.b = 10;
  setReferenceTime(header, parseUtcTime(QString::fromLatin1(time)).value_or(QDateTime()));
  return SacSeismogram(header, {1, 2, 3});
}

/// Which channel is the record's, by its place in the inventory, or the error.
QString found(const StationInventory& inventory, const SeismogramRecord& record) {
  const auto channel = stationChannelOf(inventory, record);
  return channel ? QString::number(*channel - inventory.channels.data()) : channel.error();
}

TEST(StationInventory, findsTheChannelOfARecordByCodesAndTime) {
  const StationInventory inventory{"in",
                                   {},
                                   {channel({"IU", "ANMO", "00", "BHZ"}, "2000-01-01", "2011-03-11T05:46:30"),
                                    channel({"IU", "ANMO", "00", "BHZ"}, "2011-03-11T05:46:30", "2012-01-01"),
                                    channel({"IU", "ANMO", "10", "BHZ"}), channel({"IU", "ANMO", "", "LHZ"}),
                                    channel({"IU", "ANMO", "20", "LHZ"})},
                                   {}};
  // The first sample is ten seconds after the reference time.
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "00", "BHZ"}, "2011-03-11T05:46:19")), "0");
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "00", "BHZ"}, "2011-03-11T05:46:21")), "1");
  // Where one epoch begins as the other ends, the later one holds.
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "00", "BHZ"}, "2011-03-11T05:46:20")), "1");
  EXPECT_EQ(found(inventory, record({"", "ANMO", "10", "BHZ"})), "2");
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "", "LHZ"})), "3");
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "--", "LHZ"})), "3");
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "", "BHZ"})), "in: has several channels for IU.ANMO..BHZ");
  EXPECT_EQ(found(inventory, record({"IU", "TLY", "00", "BHZ"})), "in: has no channel IU.TLY.00.BHZ");
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "00", "BHZ"}, "1999-01-01T00:00:00")),
            "in: has nothing of 1999-01-01T00:00:10.000Z for IU.ANMO.00.BHZ");
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "00", "BHZ"}, "2013-01-01T00:00:00")),
            "in: has nothing of 2013-01-01T00:00:10.000Z for IU.ANMO.00.BHZ");
}

TEST(StationInventory, takesTheOnlyLocationForARecordWithoutOne) {
  const StationInventory inventory{"in", {}, {channel({"IU", "ANMO", "00", "BHZ"})}, {}};
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "", "BHZ"})), "0");
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "10", "BHZ"})), "in: has no channel IU.ANMO.10.BHZ");
}

TEST(StationInventory, hasOneChannelForAllWhereItNamesNone) {
  const StationInventory inventory{"in", {}, {channel({})}, {}};
  EXPECT_EQ(found(inventory, record({"IU", "ANMO", "10", "BHZ"})), "0");
}

TEST(StationInventory, findsTheStationOfARecord) {
  StationInventory inventory;
  inventory.stations.push_back({.network = "IU", .code = "ANMO", .latitudeDeg = 1});
  inventory.stations.push_back({.network = "IU", .code = "ANMO", .latitudeDeg = 2});
  inventory.stations[0].epoch.end = *parseUtcTime(u"2012-01-01");
  inventory.stations[1].epoch.start = *parseUtcTime(u"2012-01-01");
  const auto latitude = [&](const SeismogramRecord& wanted) {
    const InventoryStation* const station = stationOf(inventory, wanted);
    return station ? station->latitudeDeg : -1;
  };
  EXPECT_EQ(latitude(record({"IU", "ANMO", "", ""})), 1);
  EXPECT_EQ(latitude(record({"", "ANMO", "", ""}, "2013-01-01")), 2);
  EXPECT_EQ(latitude(record({"", "ANMO", "", ""}, "")), 2) << "of an unknown time";
  EXPECT_EQ(latitude(record({"XX", "ANMO", "", ""})), -1);
}

} // namespace
} // namespace xov
