#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/UtcTime.h"
#include "apps/xov/commands/InfoCommand.h"
#include "tests/support/FakeRecord.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

using testing::FakeRecord;

constexpr qsizetype kCells = 19;
constexpr qsizetype kCount = 5;
constexpr qsizetype kEventDepth = 17;

std::shared_ptr<FakeRecord> record() {
  auto r = std::make_shared<FakeRecord>(std::vector<float>{-3, 100000, 0.25F}, 0.01F, 1.5F);
  r->network = "II";
  r->station = "TLY";
  r->location = "00";
  r->component = "BHZ";
  r->distanceDeg = 30.08553F;
  r->azimuthDeg = 309.0148F;
  r->reference = std::make_shared<UtcTime>(QDateTime(QDate(2011, 3, 11), QTime(5, 47, 30, 33), Qt::UTC));
  return r;
}

TEST(InfoTable, showsTheHeaderOfARecord) {
  auto r = record();
  r->originSeconds = -66.5F;
  r->picks = {{10, 301.5F}, {1, 802.25F}};
  r->labels = {{10, "P"}};
  // The first sample is 1.5 s after the reference time; three samples at 100 Hz last 0.02 s. The mean of -3, 100000
  // and 0.25 is 99997.25 / 3.
  EXPECT_EQ(infoCells(summaryOf(r)),
            (QStringList{"II", "TLY", "00", "BHZ", "2011-03-11T05:47:31.533Z", "3", "0.01", "0.020", "-3", "100000",
                         "30.09", "309.01", "33332.4", "", "", "", "", "0", "o=-66.5,t1=802.25,a=301.5(P)"}));
}

TEST(InfoTable, leavesUnknownValuesEmpty) {
  const auto r = std::make_shared<FakeRecord>();
  r->distanceDeg = r->azimuthDeg = kUndefinedValue;
  r->deltaSeconds = kUndefinedValue;
  QStringList nothing(kCells);
  nothing[kCount] = "0";
  nothing[kEventDepth] = "0"; // which a fake record always knows
  EXPECT_EQ(infoCells(summaryOf(r)), nothing);
}

TEST(InfoTable, givesTheDurationOfADayToTheMillisecond) {
  constexpr int kDurationColumn = 7;
  SacHeader header;
  header.delta = 0.05F;
  SacFooter precise;
  precise.b = 0;
  precise.delta = 0.05;
  const auto day = std::make_shared<SacSeismogram>(header, std::vector<float>(1728000), QString(), precise);
  EXPECT_EQ(infoCells(summaryOf(day))[kDurationColumn], "86399.950") << "1727999 intervals";
}

TEST(InfoTable, hasNoStartTimeForAnAbsurdBegin) {
  auto r = record();
  r->beginSeconds = 1e30F;
  EXPECT_EQ(infoCells(summaryOf(r))[4], "");
}

TEST(InfoTable, writesVeryLargeAndSmallNumbersWithExponents) {
  auto r = record();
  r->samples = {-1e-7F, 2.5e20F};
  r->ComputeExtrema();
  EXPECT_EQ(infoCells(summaryOf(r))[8], "-1e-07");
  EXPECT_EQ(infoCells(summaryOf(r))[9], "2.5e+20");
}

TEST(InfoTable, makesOneWordOfEachCell) {
  auto r = record();
  r->station = "T Y";
  r->picks = {{0, 1}};
  r->labels = {{0, "IP U0"}};
  EXPECT_EQ(infoCells(summaryOf(r))[1], "T_Y");
  EXPECT_EQ(picksText(*r), "t0=1(IP_U0)");
}

TEST(InfoTable, showsPlacesOfStationAndEvent) {
  SacHeader header;
  header.delta = 1;
  header.stla = 51.68F;
  header.stlo = 103.64F;
  header.evla = 38.3F;
  header.evlo = 142.37F;
  header.evdp = 24;
  const auto r = std::make_shared<SacSeismogram>(header, std::vector<float>{1, 2});
  EXPECT_EQ(infoCells(summaryOf(r)).mid(12, 6),
            (QStringList{"1.5", "51.6800", "103.6400", "38.3000", "142.3700", "24"}));
}

TEST(InfoTable, showsEvents) {
  HypocentreValues values;
  values.originTime = QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23, 700), Qt::UTC);
  values.latitudeDeg = 38.3F;
  values.longitudeDeg = 142.37F;
  values.depthKm = 24;
  values.preferredMagnitude = 9.1F;
  values.magnitudes = {{"mb", 7.2F}, {"Mww", 9.1F}};
  values.name = "near the coast";
  EXPECT_EQ(eventCells(Hypocentre(values)),
            (QStringList{"2011-03-11T05:46:23.700Z", "38.3000", "142.3700", "24", "9.1", "Mww", "near_the_coast"}));
  EXPECT_EQ(eventCells(Hypocentre()), QStringList(7));
}

TEST(InfoTable, hasAColumnForEachCellAndTheFile) {
  EXPECT_EQ(infoTable().text().simplified(),
            "net sta loc chan start npts delta duration min max dist az mean lat lon evlat evlon evdepth picks file");
  EXPECT_EQ(infoCells(summaryOf(record())).size(), kCells);
  EXPECT_EQ(eventTable().text().simplified(), "time lat lon depth mag type name file");
}

} // namespace
} // namespace xov::cli
