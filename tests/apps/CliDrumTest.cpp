#include "tests/apps/CliFixture.h"
#include "tests/support/TestRecords.h"

#include <QRegularExpression>

namespace xov::cli {
namespace {

class CliDrum : public CliTest {
protected:
  // A day from 2009-02-19T00:00:00.025, a sample every ten seconds.
  void writeDay() {
    const QDateTime start(QDate(2009, 2, 19), QTime(0, 0, 0, 25), Qt::UTC);
    writeRecord("day.SAC", *makeRecord({.reference = start, .interval = 10, .count = 8640}));
  }

  static QStringList hourLabels(const QString& text) {
    QStringList labels;
    QRegularExpressionMatchIterator matches = QRegularExpression("\\d\\d/\\d\\d \\d\\d\\b").globalMatch(text);
    while (matches.hasNext())
      labels.append(matches.next().captured());
    return labels;
  }
};

TEST_F(CliDrum, labelsTheHoursOfADay) {
  writeDay();
  XOV_REQUIRE_TEXT(text, {"drum", "day.SAC"});
  QStringList expected;
  for (int hour = 0; hour < 24; ++hour)
    expected.append(QStringLiteral("02/19 %1").arg(hour, 2, 10, QLatin1Char('0')));
  EXPECT_EQ(hourLabels(text), expected) << qPrintable(text);
  EXPECT_TRUE(text.contains("2009-02-19 - II TLY  BHZ") || text.contains("2009-02-19 - II TLY BHZ"))
      << qPrintable(text);
  EXPECT_TRUE(text.contains("Time (Minutes)")) << qPrintable(text);
}

TEST_F(CliDrum, takesRowsAndTheirDuration) {
  writeDay();
  XOV_REQUIRE_TEXT(text, {"drum", "day.SAC", "--rows", "3", "--row-duration", "7200", "--hours"});
  EXPECT_EQ(hourLabels(text), (QStringList{"02/19 00", "02/19 02", "02/19 04"})) << qPrintable(text);
  EXPECT_TRUE(text.contains("Time (Hours)")) << qPrintable(text);
}

TEST_F(CliDrum, drawsTwoCopiesOfAFileAsOneAndSaysSo) {
  writeDay();
  EXPECT_EQ(xov({"drum", "day.SAC", "-o", "once.png"}).err, QString());
  const Outcome outcome = xov({"drum", "day.SAC", "day.SAC", "-o", "twice.png"});
  EXPECT_EQ(outcome.err, "xov: II.TLY..BHZ: 1 of 2 records have the samples of another one; drawn once\n");
  EXPECT_EQ(contents("twice.png"), contents("once.png"));
}

TEST_F(CliDrum, startsWithTheDayWhoseFirstSampleLiesBeforeMidnight) {
  const QDateTime start = QDateTime(QDate(2009, 2, 19), QTime(0, 0), Qt::UTC).addMSecs(-15);
  writeRecord("early.SAC", *makeRecord({.reference = start, .interval = 0.015F, .count = 8001}));
  const Outcome outcome = xov({"drum", "early.SAC", "-o", "plot.pdf"});
  EXPECT_EQ(outcome.err, "xov: II.TLY..BHZ: less than a minute (0.015 s) before 2009-02-19T00:00:00Z left out\n");
  XOV_REQUIRE_TOOL(text, "pdftotext", {"-layout", at("plot.pdf"), "-"});
  EXPECT_EQ(hourLabels(text), QStringList{"02/19 00"}) << qPrintable(text);
  EXPECT_TRUE(text.contains("UTC")) << qPrintable(text);
}

TEST_F(CliDrum, joinsPiecesOfAChannelInAnyOrder) {
  writeRecord("b.SAC", *makeRecord({.reference = onTheDay(7, 30), .count = 600}));
  writeRecord("a.SAC", *makeRecord({.reference = onTheDay(5, 30), .count = 600}));
  XOV_REQUIRE_TEXT(text, {"drum", "b.SAC", "a.SAC"});
  EXPECT_EQ(hourLabels(text), (QStringList{"03/11 05", "03/11 06", "03/11 07"})) << qPrintable(text);
}

TEST_F(CliDrum, refusesSeveralChannels) {
  writeRecord("z.SAC", RecordSpec{.component = "BHZ"});
  writeRecord("n.SAC", RecordSpec{.component = "BHN"});
  const Outcome outcome = xov({"drum", "z.SAC", "n.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "xov: found 2 channels, expected one: II.TLY..BHZ, II.TLY..BHN; --channels or --page chooses\n");
  EXPECT_EQ(xov({"drum", "z.SAC", "n.SAC", "--channels", "BHN", "-o", "plot.png"}).status, 0);
}

TEST_F(CliDrum, drawsDifferentlyWithEachOption) {
  writeDay();
  writeFile("events.csv", "time,latitude,longitude,depth,magnitude,type\n2009-02-19T10:20:30Z,1,2,3,4.5,mb\n");
  const auto picture = [this](const QStringList& options) {
    EXPECT_EQ(xov(QStringList{"drum", "day.SAC", "-o", "plot.png"} + options).status, 0);
    return contents("plot.png");
  };
  const QByteArray plain = picture({});
  const QByteArray marked = picture({"--events", "events.csv"});
  const QByteArray unmarked = picture({"--events", "events.csv", "--mag", "4.6"});
  EXPECT_NE(marked, unmarked);
  EXPECT_EQ(picture({"--events", "events.csv", "--mag", "4.5"}), marked) << "as large as the smallest";
  EXPECT_NE(picture({"--zero-lines"}), plain);
  EXPECT_NE(picture({"--gain", "0.2"}), plain);
}

// The bytes of a picture tell which events were marked, whatever format they came in.
TEST_F(CliDrum, marksTheEventsOfCatalogues) {
  writeDay();
  writeFile("events.csv", "time,magnitude,type\n2009-02-19T10:20:30Z,4.5,mb\n");
  writeFile("events.dat", "HY20090219 102030.00 10.000N  20.000E  33.0\n"
                          "E  0.27   1.72   1.64   2.7 4.5  20\n");
  EXPECT_EQ(xov({"drum", "day.SAC", "-o", "plain.png"}).err, "");
  EXPECT_EQ(xov({"drum", "day.SAC", "--events", "events.csv", "-o", "table.png"}).err, "");
  EXPECT_EQ(xov({"drum", "day.SAC", "--events", "events.dat", "-o", "bulletin.png"}).err, "");
  EXPECT_EQ(contents("bulletin.png"), contents("table.png"));
  EXPECT_NE(contents("bulletin.png"), contents("plain.png"));
  writeFile("untyped.csv", "time,magnitude\n2009-02-19T10:20:30Z,4.5\n");
  EXPECT_EQ(xov({"drum", "day.SAC", "--events", "untyped.csv", "-o", "untyped.png"}).err, "");
  EXPECT_EQ(contents("untyped.png"), contents("table.png"));
}

TEST_F(CliDrum, drawsWithoutEventsThatItCannotRead) {
  writeDay();
  const Outcome outcome = xov({"drum", "day.SAC", "--events", "none.xml", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: none.xml: cannot be opened: No such file or directory\n");
  EXPECT_TRUE(files().contains("plot.png"));
}

TEST_F(CliDrum, notesEventsThatAreLeftOut) {
  writeDay();
  writeFile("events.csv", "time,latitude,longitude,depth,magnitude,type\n"
                          "2009-02-19T10:20:30Z,1,2,3,4.5,mb\nyesterday,1,2,3,4.5,mb\n");
  const Outcome outcome = xov({"drum", "day.SAC", "--events", "events.csv", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.err.startsWith("xov: events.csv: 1 of 2 ")) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
}

TEST_F(CliDrum, refusesARecordingWithoutATime) {
  writeRecord("none.SAC", *makeRecord({.reference = QDateTime()}));
  const Outcome outcome = xov({"drum", "none.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: found no record with samples and times, expected a reference time\n");
}

TEST_F(CliDrum, refusesNumbersOutOfRange) {
  writeDay();
  for (const QStringList& options :
       {QStringList{"--rows", "0"}, QStringList{"--rows", "2049"}, QStringList{"--row-duration", "0.5"},
        QStringList{"--gain", "0"}, QStringList{"--mag", "x"}}) {
    EXPECT_EQ(xov(QStringList{"drum", "day.SAC"} + options).status, 2) << qPrintable(options.join(' '));
  }
}

} // namespace
} // namespace xov::cli
