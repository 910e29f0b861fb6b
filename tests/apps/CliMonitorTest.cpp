#include "tests/apps/CliFixture.h"
#include "tests/support/TestRecords.h"

#include <QRegularExpression>

namespace xov::cli {
namespace {

class CliMonitor : public CliTest {
protected:
  void SetUp() override {
    environment_.insert("TZ", "Asia/Tokyo");
    for (const char* component : {"BHZ", "BHN"})
      writeRecord(QString::fromLatin1(component) + ".SAC",
                  *makeRecord({.component = component, .reference = onTheDay(5, 46), .count = 900}));
  }
};

TEST_F(CliMonitor, writesTheMomentAtWhichEverythingHasArrived) {
  XOV_REQUIRE_TEXT(text, {"monitor", "BHZ.SAC", "BHN.SAC"});
  // 900 s after 05:46:00, and up to three seconds of latency.
  EXPECT_TRUE(QRegularExpression("06:01:0[0-3] UTC").match(text).hasMatch()) << qPrintable(text);
  EXPECT_TRUE(QRegularExpression("03:01:0[0-3] PM").match(text).hasMatch()) << qPrintable(text);
  for (const char* piece : {"11 March, 2011", "II.TLY..BHZ", "II.TLY..BHN", "II.TLY", "Time (Minutes)"})
    EXPECT_TRUE(text.contains(piece)) << piece << " in\n" << qPrintable(text);
}

TEST_F(CliMonitor, writesAMomentOfChoice) {
  XOV_REQUIRE_TEXT(text, {"monitor", "BHZ.SAC", "--at", "2011-03-11T05:50:07"});
  EXPECT_TRUE(text.contains("05:50:07 UTC")) << qPrintable(text);
}

TEST_F(CliMonitor, saysWhenTheMomentLiesOutsideTheRecording) {
  // 900 samples a second apart: the last one 899 s after 05:46:00.
  for (const char* inside : {"2011-03-11T05:46:00", "2011-03-11T06:00:59"})
    EXPECT_EQ(xov({"monitor", "BHZ.SAC", "--at", inside, "-o", "plot.png"}).err, "") << inside;
  for (const char* outside : {"2011-03-11T05:45:59", "2011-03-11T06:01:00"}) {
    const Outcome outcome = xov({"monitor", "BHZ.SAC", "--at", outside, "-o", "plot.png"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err,
              QStringLiteral("xov: --at: found %1, but the recording lasts from 2011-03-11T05:46:00.000Z "
                             "to 2011-03-11T06:00:59.000Z\n")
                  .arg(outside));
  }
}

TEST_F(CliMonitor, countsFromTheBeginningOfTheSpanOnTheLeft) {
  XOV_REQUIRE_TEXT(text, {"monitor", "BHZ.SAC", "--at", "2011-03-11T05:50:07", "--origin", "left", "--span", "120"});
  EXPECT_TRUE(text.contains("05:48:07 UTC")) << qPrintable(text);
}

TEST_F(CliMonitor, namesTheZoneOnRequest) {
  XOV_REQUIRE_TEXT(text, {"monitor", "BHZ.SAC", "--at", "2011-03-11T05:50:07", "--zone-name"});
  EXPECT_TRUE(text.contains("14:50:07 JST")) << qPrintable(text);
  EXPECT_TRUE(text.contains("11 Mar, 2011")) << qPrintable(text);
}

TEST_F(CliMonitor, takesItsFilesAfterAnOptionToo) {
  EXPECT_EQ(xov({"monitor", "BHZ.SAC", "BHN.SAC", "-o", "a.png"}).status, 0);
  EXPECT_EQ(xov({"monitor", "-o", "b.png", "--replay", "BHZ.SAC", "BHN.SAC"}).status, 0);
  EXPECT_EQ(contents("a.png"), contents("b.png"));
}

TEST_F(CliMonitor, marksEvents) {
  writeFile("events.csv", "time,latitude,longitude,depth,magnitude,type\n2011-03-11T05:55:00Z,38,142,24,9.1,mww\n");
  EXPECT_EQ(xov({"monitor", "BHZ.SAC", "-o", "a.png"}).status, 0);
  EXPECT_EQ(xov({"monitor", "BHZ.SAC", "--events", "events.csv", "-o", "b.png"}).status, 0);
  EXPECT_NE(contents("a.png"), contents("b.png"));
}

TEST_F(CliMonitor, drawsTheSameWhateverItsSpeed) {
  EXPECT_EQ(xov({"monitor", "BHZ.SAC", "-o", "a.png"}).status, 0);
  EXPECT_EQ(xov({"monitor", "BHZ.SAC", "--speed", "1000", "-o", "b.png"}).status, 0);
  EXPECT_EQ(contents("a.png"), contents("b.png"));
}

TEST_F(CliMonitor, refusesWhatHasNoTime) {
  writeRecord("none.SAC", *makeRecord({.reference = QDateTime()}));
  const Outcome outcome = xov({"monitor", "none.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: none.SAC: found no samples with times, expected a reference time\n");
}

TEST_F(CliMonitor, refusesOptionsThatMakeNoSense) {
  for (const QStringList& options :
       {QStringList{"--speed", "0"}, QStringList{"--speed", "-1"}, QStringList{"--span", "0"},
        QStringList{"--origin", "top"}, QStringList{"--at", "noon"}}) {
    EXPECT_EQ(xov(QStringList{"monitor", "BHZ.SAC"} + options).status, 2) << qPrintable(options.join(' '));
  }
}

} // namespace
} // namespace xov::cli
