#include "tests/apps/CliFixture.h"

#include <QRegularExpression>

namespace xov::cli {
namespace {

class CliStack : public CliTest {
protected:
  void SetUp() override {
    writeRecord("one.SAC", RecordSpec{.station = "ONE"});
    writeRecord("two.sac", RecordSpec{.station = "TWO"});
  }
};

TEST_F(CliStack, overlaysTracesWithBothAxes) {
  XOV_REQUIRE_TEXT(text, {"stack", "one.SAC", "two.sac"});
  for (const char* piece : {"UTC", "Amplitude", "2 records"})
    EXPECT_TRUE(text.contains(piece)) << piece << " in\n" << qPrintable(text);
  EXPECT_FALSE(text.contains("one")) << qPrintable(text);
}

TEST_F(CliStack, namesTheFileOfEachBandTheFirstOnTop) {
  XOV_REQUIRE_TEXT(text, {"stack", "--style", "bands", "one.SAC", "two.sac"});
  EXPECT_TRUE(text.contains("one") && text.contains("two")) << qPrintable(text);
  EXPECT_LT(text.indexOf("one"), text.indexOf("two"));
  EXPECT_FALSE(text.contains(".sac", Qt::CaseInsensitive)) << qPrintable(text);
}

TEST_F(CliStack, takesFixedAxes) {
  XOV_REQUIRE_TEXT(text, {"stack", "one.SAC", "--fixed-x", "-100", "700", "--fixed-y", "-40000", "40000"});
  EXPECT_TRUE(QRegularExpression("0 +200 +400 +600").match(text).hasMatch()) << qPrintable(text);
  EXPECT_EQ(xov({"stack", "one.SAC", "-o", "a.png"}).status, 0);
  EXPECT_EQ(xov({"stack", "one.SAC", "-o", "b.png", "--fixed-x", "5", "10"}).status, 0);
  EXPECT_NE(contents("a.png"), contents("b.png"));
}

TEST_F(CliStack, fillsAnOverlayOnly) {
  EXPECT_EQ(xov({"stack", "one.SAC", "-o", "a.png"}).status, 0);
  EXPECT_EQ(xov({"stack", "one.SAC", "--fill", "-o", "b.png"}).status, 0);
  EXPECT_NE(contents("a.png"), contents("b.png"));
  const Outcome outcome = xov({"stack", "one.SAC", "--style", "bands", "--fill", "-o", "c.png"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "xov: stack: --fill: works with --style overlay only (see 'xov stack --help')\n");
}

TEST_F(CliStack, refusesRangesWithoutAWidth) {
  for (const char* option : {"--fixed-x", "--fixed-y"}) {
    const Outcome outcome = xov({"stack", "one.SAC", option, "3", "3"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.err.startsWith(QStringLiteral("xov: stack: %1: expected MIN below MAX").arg(option)))
        << qPrintable(outcome.err);
    EXPECT_EQ(xov({"stack", "one.SAC", option, "3"}).status, 2) << "one end only";
    EXPECT_EQ(xov({"stack", "one.SAC", option, "nan", "3"}).status, 2);
  }
}

TEST_F(CliStack, refusesAStyleThatItDoesNotKnow) {
  EXPECT_EQ(xov({"stack", "one.SAC", "--style", "waterfall"}).status, 2);
}

} // namespace
} // namespace xov::cli
