#include "tests/apps/CliFixture.h"

namespace xov::cli {
namespace {

class CliPanels : public CliTest {
protected:
  void SetUp() override {
    for (const char* station : {"A", "B", "C"})
      writeRecord(QString::fromLatin1(station) + ".SAC", RecordSpec{.station = station, .azimuthDeg = 45});
  }
};

TEST_F(CliPanels, captionsEachPairWithItsSecondRecord) {
  XOV_REQUIRE_TEXT(text, {"panels", "A.SAC", "B.SAC", "B.SAC", "C.SAC"});
  EXPECT_FALSE(text.contains("A II (45)")) << qPrintable(text);
  EXPECT_TRUE(text.contains("B II (45)")) << qPrintable(text);
  EXPECT_TRUE(text.contains("C II (45)")) << qPrintable(text);
  EXPECT_TRUE(text.contains("UTC")) << qPrintable(text);
}

TEST_F(CliPanels, saysThatALastRecordHasNoPartner) {
  const Outcome outcome = xov({"panels", "A.SAC", "B.SAC", "C.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: C.SAC: the last record has no partner; not drawn\n");
}

TEST_F(CliPanels, refusesARecordAlone) {
  const Outcome outcome = xov({"panels", "A.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: A.SAC: found one record, expected pairs\n");
  EXPECT_FALSE(files().contains("plot.png"));
}

TEST_F(CliPanels, writesATitleOnRequest) {
  XOV_REQUIRE_TEXT(text, {"panels", "A.SAC", "B.SAC", "--title", "Observed and computed"});
  EXPECT_TRUE(text.contains("Observed and computed")) << qPrintable(text);
}

} // namespace
} // namespace xov::cli
