#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/UtcTime.h"
#include "apps/xov/commands/InfoCommand.h"
#include "tests/support/FakeRecord.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

using testing::FakeRecord;

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
  // The first sample is 1.5 s after the reference time; three samples at 100 Hz last 0.02 s.
  EXPECT_EQ(infoCells(*r), (QStringList{"II", "TLY", "00", "BHZ", "2011-03-11T05:47:31.533Z", "3", "0.01", "0.020",
                                        "-3", "100000", "30.09", "309.01", "o=-66.5,t1=802.25,a=301.5(P)"}));
}

TEST(InfoTable, leavesUnknownValuesEmpty) {
  FakeRecord r;
  r.distanceDeg = r.azimuthDeg = kUndefinedValue;
  r.deltaSeconds = kUndefinedValue;
  EXPECT_EQ(infoCells(r), (QStringList{"", "", "", "", "", "0", "", "", "", "", "", "", ""}));
}

TEST(InfoTable, givesTheDurationOfADayToTheMillisecond) {
  constexpr int kDurationColumn = 7;
  SacHeader header;
  header.delta = 0.05F;
  SacFooter precise;
  precise.b = 0;
  precise.delta = 0.05;
  const SacSeismogram day(header, std::vector<float>(1728000), QString(), precise);
  EXPECT_EQ(infoCells(day)[kDurationColumn], "86399.950") << "1727999 intervals";
}

TEST(InfoTable, hasNoStartTimeForAnAbsurdBegin) {
  auto r = record();
  r->beginSeconds = 1e30F;
  EXPECT_EQ(infoCells(*r)[4], "");
}

TEST(InfoTable, writesVeryLargeAndSmallNumbersWithExponents) {
  auto r = record();
  r->samples = {-1e-7F, 2.5e20F};
  r->ComputeExtrema();
  EXPECT_EQ(infoCells(*r)[8], "-1e-07");
  EXPECT_EQ(infoCells(*r)[9], "2.5e+20");
}

TEST(InfoTable, makesOneWordOfEachCell) {
  auto r = record();
  r->station = "T Y";
  r->picks = {{0, 1}};
  r->labels = {{0, "IP U0"}};
  EXPECT_EQ(infoCells(*r)[1], "T_Y");
  EXPECT_EQ(picksText(*r), "t0=1(IP_U0)");
}

TEST(InfoTable, hasALineForEachRecordWithItsFile) {
  const QString table = infoTable({record(), std::make_shared<FakeRecord>()}, {"one.SAC", "two.SAC"});
  const QStringList lines = table.split('\n');
  ASSERT_EQ(lines.size(), 4);
  EXPECT_EQ(lines[0].simplified(), "net sta loc chan start npts delta duration min max dist az picks file");
  EXPECT_TRUE(lines[1].startsWith("II ")) << qPrintable(lines[1]);
  EXPECT_TRUE(lines[1].endsWith("  one.SAC")) << qPrintable(lines[1]);
  EXPECT_TRUE(lines[2].endsWith("  two.SAC")) << qPrintable(lines[2]);
}

} // namespace
} // namespace xov::cli
