// Pages of drums: their span, colours, local time and marks.
#include "tests/apps/CliFixture.h"

#include <QImage>

namespace xov::cli {
namespace {

// 20 s from 05:47:30 on.
class CliDrumPage : public CliTest {
protected:
  void SetUp() override { writeRecord("one.SAC"); }
};

TEST_F(CliDrumPage, startsAndEndsWhereItIsTold) {
  XOV_REQUIRE_TEXT(text, {"drum", "one.SAC", "--start", "2011-03-11T05:45:00", "--end", "2011-03-11T05:55:00",
                          "--row-duration", "300"});
  EXPECT_TRUE(text.contains("03/11 05:45") && text.contains("03/11 05:50")) << qPrintable(text);
  EXPECT_FALSE(text.contains("03/11 05:40") || text.contains("03/11 05:55")) << qPrintable(text);
}

TEST_F(CliDrumPage, countsSecondsFromTheFirstRecordsReference) {
  // 05:47:30.033, which labels of minutes round down.
  XOV_REQUIRE_TEXT(text, {"drum", "one.SAC", "--start", "0", "--row-duration", "60"});
  EXPECT_TRUE(text.contains("03/11 05:47")) << qPrintable(text);
}

TEST_F(CliDrumPage, writesLocalTimeAtTheRight) {
  XOV_REQUIRE_TEXT(text, {"drum", "one.SAC", "--local-time", "UTC+05:30"});
  EXPECT_TRUE(text.contains("03/11 05") && text.contains("03/11 10:30") && text.contains("UTC+05:30"))
      << qPrintable(text);
  EXPECT_EQ(
      xov({"drum", "one.SAC", "--local-time", "Europe/Atlantis"}).err,
      "xov: drum: --local-time: found 'Europe/Atlantis', expected a time zone as Europe/Berlin or UTC+05:30 (see "
      "'xov drum --help')\n");
  for (const char* bad : {"", "../../etc/passwd", "UTC+99:99"})
    EXPECT_EQ(xov({"drum", "one.SAC", "--local-time", bad}).status, 2) << bad;
}

TEST_F(CliDrumPage, showsTheScaleOfAmplitudes) {
  EXPECT_EQ(xov({"drum", "one.SAC", "-o", "plain.png"}).status, 0);
  EXPECT_EQ(xov({"drum", "one.SAC", "--scale-bar", "-o", "bar.png"}).status, 0);
  EXPECT_NE(contents("plain.png"), contents("bar.png"));
}

TEST_F(CliDrumPage, labelsEvents) {
  writeFile("events.csv",
            "time,latitude,longitude,depth,mag,magType,place\n2011-03-11T05:30:00,38,142,29,6.5,mww,Off Honshu\n");
  XOV_REQUIRE_TEXT(text, {"drum", "one.SAC", "--events", "events.csv", "--event-labels"});
  EXPECT_TRUE(text.contains("M 6.5")) << qPrintable(text);
}

TEST_F(CliDrumPage, coloursRowsAndHoldsTraces) {
  const auto drawn = [&](const QStringList& options, const char* name) {
    const Outcome outcome = xov(QStringList{"drum", "one.SAC", "-o", name} + options);
    EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
    return contents(name);
  };
  const QByteArray plain = drawn({}, "plain.png");
  EXPECT_NE(drawn({"--row-colors", "blue"}, "blue.png"), plain);
  EXPECT_NE(drawn({"--clip", "0.1", "--gain", "4"}, "clip.png"), drawn({"--gain", "4"}, "free.png"));
  EXPECT_EQ(drawn({"--day-colors"}, "days.png"), plain) << "a single day is black";
  EXPECT_EQ(xov({"drum", "one.SAC", "--clip", "0"}).status, 2);
  EXPECT_EQ(xov({"drum", "one.SAC", "--row-colors", "blau"}).status, 2);
}

} // namespace
} // namespace xov::cli
