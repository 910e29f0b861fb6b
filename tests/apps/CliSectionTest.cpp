#include "tests/apps/CliFixture.h"
#include "tests/support/TestRecords.h"

#include <QImage>
#include <QRegularExpression>

#include <limits>
#include <vector>

namespace xov::cli {
namespace {

class CliSection : public CliTest {
protected:
  void SetUp() override {
    writeRecord("far.SAC", {.station = "FAR", .distanceDeg = 80, .azimuthDeg = 10, .arrival = 5, .second = 12});
    writeRecord("near.SAC", {.station = "NEAR", .distanceDeg = 10, .azimuthDeg = 90});
    writeRecord("odd.SAC", {.station = "ODD", .distanceDeg = kUndefinedValue, .azimuthDeg = kUndefinedValue});
  }

  std::optional<QString> textOfPlot(const QStringList& options) {
    return CliTest::textOfPlot(QStringList{"section"} + options);
  }

  /// The stations whose captions a text holds, in its order.
  static QStringList captions(const QString& text) {
    QStringList stations;
    QRegularExpressionMatchIterator matches = QRegularExpression("(\\w+) II BHZ").globalMatch(text);
    while (matches.hasNext())
      stations.append(matches.next().captured(1));
    return stations;
  }
};

TEST_F(CliSection, drawsCaptionsPicksAxisLabelAndTitle) {
  const auto text = textOfPlot({"far.SAC", "near.SAC"});
  if (!text) GTEST_SKIP() << "pdftotext is not installed";
  for (const char* piece : {"FAR II BHZ (80.00) (10.00)", "NEAR II BHZ (10.00) (90.00)", "UTC", "2 records"})
    EXPECT_TRUE(text->contains(piece)) << piece << " in\n" << qPrintable(*text);
  EXPECT_TRUE(QRegularExpression("\\bS\\b").match(*text).hasMatch()) << qPrintable(*text);
  EXPECT_TRUE(QRegularExpression("\\bA\\b").match(*text).hasMatch()) << qPrintable(*text);
}

// The records begin at 05:47:30.033 and last 20 s: two seconds have 84 of 840 points, enough for "05:47:32".
TEST_F(CliSection, showsUtcWhereFilesHaveTimesAndNoOrigin) {
  XOV_REQUIRE_TEXT(text, {"far.SAC", "near.SAC"});
  for (const char* piece : {"05:47:32", "05:47:48", "UTC", "2011-03-11"})
    EXPECT_TRUE(text.contains(piece)) << piece << " in\n" << qPrintable(text);
  XOV_REQUIRE_TEXT(seconds, {"far.SAC", "near.SAC", "--time-axis", "seconds"});
  EXPECT_TRUE(seconds.contains("Time (s)")) << qPrintable(seconds);
  EXPECT_FALSE(seconds.contains("05:47:32")) << qPrintable(seconds);
}

TEST_F(CliSection, saysOfSinglesBetweenMissingSamplesThatTheyMakeNoLine) {
  constexpr float kMissing = std::numeric_limits<float>::quiet_NaN();
  const auto errorsOf = [this](std::vector<float> samples) {
    SacHeader header;
    header.knetwk = "II";
    header.kstnm = "TLY";
    header.kcmpnm = "BHZ";
    header.b = 0;
    header.delta = 1;
    writeRecord("gaps.SAC", SacSeismogram(header, std::move(samples)));
    return xov({"section", "gaps.SAC", "-o", "plot.png"}).err;
  };
  EXPECT_EQ(errorsOf({1, kMissing, 2, kMissing, 3}),
            "xov: gaps.SAC: samples of II.TLY..BHZ: no two in a row are numbers, so there is no line to draw\n");
  EXPECT_EQ(errorsOf({1, kMissing, 2, 3, kMissing}), "");
}

TEST_F(CliSection, showsSecondsWhereAFileKnowsAnOrigin) {
  writeRecord("event.SAC", {.station = "TLY", .origin = -66});
  XOV_REQUIRE_TEXT(text, {"event.SAC"});
  EXPECT_TRUE(text.contains("Time (s)")) << qPrintable(text);
  XOV_REQUIRE_TEXT(utc, {"event.SAC", "--time-axis", "utc"});
  EXPECT_TRUE(utc.contains("05:47:32")) << qPrintable(utc);
}

TEST_F(CliSection, saysWhenRecordsHaveNoUtcToShow) {
  SacHeader header;
  header.delta = 1;
  header.b = 0;
  writeRecord("timeless.SAC", SacSeismogram(header, {0, 1, 0}));
  const Outcome outcome = xov({"section", "timeless.SAC", "--time-axis", "utc", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: the records have no time axis in common: it shows seconds\n");
}

TEST_F(CliSection, stacksRecordsFromTheBottomInTheGivenOrder) {
  const auto text = textOfPlot({"odd.SAC", "far.SAC", "near.SAC"});
  if (!text) GTEST_SKIP() << "pdftotext is not installed";
  EXPECT_EQ(captions(*text), (QStringList{"NEAR", "FAR", "ODD"}));
}

TEST_F(CliSection, sortsFromTheBottom) {
  const auto byDistance = textOfPlot({"odd.SAC", "far.SAC", "near.SAC", "--sort", "distance"});
  if (!byDistance) GTEST_SKIP() << "pdftotext is not installed";
  EXPECT_EQ(captions(*byDistance), (QStringList{"ODD", "FAR", "NEAR"}));
  const auto byAzimuth = textOfPlot({"odd.SAC", "near.SAC", "far.SAC", "--sort", "azimuth"});
  EXPECT_EQ(captions(*byAzimuth), (QStringList{"ODD", "NEAR", "FAR"}));
  const auto byName = textOfPlot({"odd.SAC", "near.SAC", "far.SAC", "--sort", "name"});
  EXPECT_EQ(captions(*byName), (QStringList{"ODD", "NEAR", "FAR"}));
}

TEST_F(CliSection, placesStripsAlongAnAxis) {
  XOV_REQUIRE_TEXT(degrees, {"far.SAC", "near.SAC", "--distance-axis", "degrees"});
  EXPECT_TRUE(degrees.contains("Distance (degrees)")) << qPrintable(degrees);
  XOV_REQUIRE_TEXT(km, {"far.SAC", "near.SAC", "--distance-axis", "km", "--scaling", "trace"});
  EXPECT_TRUE(km.contains("Distance (km)")) << qPrintable(km);
  XOV_REQUIRE_TEXT(azimuth, {"far.SAC", "near.SAC", "--azimuth-axis", "--wiggle-fill", "both"});
  EXPECT_TRUE(azimuth.contains("Azimuth (degrees)")) << qPrintable(azimuth);
}

TEST_F(CliSection, saysWhichRecordsKnowNoPlace) {
  const Outcome some = xov({"section", "far.SAC", "odd.SAC", "--distance-axis", "km", "-o", "plot.png"});
  EXPECT_EQ(some.status, 0);
  EXPECT_EQ(some.err, "xov: no distance of 1 of 2 records; left out: II.ODD\n");
  const Outcome none = xov({"section", "odd.SAC", "--azimuth-axis", "-o", "plot.png"});
  EXPECT_EQ(none.status, 0);
  EXPECT_EQ(none.err, "xov: no record knows its azimuth: the strips stand evenly\n");
}

TEST_F(CliSection, fillsLobesInTheColoursThatItIsGiven) {
  const auto colours = [this](const QStringList& options) {
    EXPECT_EQ(xov(QStringList{"section", "far.SAC", "-o", "plot.png"} + options).err, QString());
    const QImage image(at("plot.png"));
    QStringList found;
    for (const QRgb color : {0xFFD55E00U, 0xFF0072B2U, 0xFFFF0000U, 0xFF00FF00U}) {
      int pixels = 0;
      for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
          pixels += image.pixel(x, y) == color ? 1 : 0;
      if (pixels > 1000) found.append(QColor(color).name());
    }
    return found;
  };
  EXPECT_EQ(colours({}), QStringList());
  EXPECT_EQ(colours({"--wiggle-fill", "both"}), (QStringList{"#d55e00", "#0072b2"}));
  EXPECT_EQ(colours({"--wiggle-fill", "negative", "--wiggle-color", "#00ff00"}), (QStringList{"#00ff00"}));
  EXPECT_EQ(colours({"--wiggle-fill", "both", "--wiggle-color", "red,#0f0"}), (QStringList{"#ff0000", "#00ff00"}));
}

TEST_F(CliSection, refusesStylesThatDoNotFit) {
  for (const QStringList& wrong :
       {QStringList{"--wiggle-color", "red"}, QStringList{"--wiggle-fill", "negative", "--wiggle-color", "red,blue"},
        QStringList{"--wiggle-fill", "both", "--wiggle-color", "no-colour"},
        QStringList{"--distance-axis", "km", "--azimuth-axis"}, QStringList{"--distance-axis", "miles"}}) {
    const Outcome outcome = xov(QStringList{"section", "far.SAC", "-o", "plot.png"} + wrong);
    EXPECT_EQ(outcome.status, 2) << qPrintable(wrong.join(' '));
    EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
  }
}

TEST_F(CliSection, showsTheScaleOfAmplitudesWithTheirUnit) {
  SacHeader header;
  header.kstnm = "TLY";
  header.b = 0;
  header.delta = 1;
  header.idep = kSacVelocity;
  writeRecord("velocity.SAC", SacSeismogram(header, {-30, 30, -30, 30}));
  XOV_REQUIRE_TEXT(text, {"velocity.SAC", "--scale-bar"});
  // A record alone reaches half of 380 points: 30 units are 190 points with the margins, and 28 points hold 2.
  EXPECT_TRUE(text.contains("2 nm/s")) << qPrintable(text);
}

TEST_F(CliSection, takesTheTitleThatItIsGiven) {
  const auto given = textOfPlot({"far.SAC", "near.SAC", "--title", "[Tohoku 2011]"});
  if (!given) GTEST_SKIP() << "pdftotext is not installed";
  EXPECT_TRUE(given->contains("[Tohoku 2011]")) << qPrintable(*given);
  for (const QStringList& none : {QStringList{"--title", ""}, QStringList{"--title="}}) {
    const auto untitled = textOfPlot(QStringList{"far.SAC", "near.SAC"} + none);
    EXPECT_FALSE(untitled->contains("2 records")) << qPrintable(*untitled);
  }
}

TEST_F(CliSection, showsTheLabelsOfPicksOfASingleRecord) {
  const auto text = textOfPlot({"far.SAC", "--title="});
  if (!text) GTEST_SKIP() << "pdftotext is not installed";
  EXPECT_TRUE(QRegularExpression("\\bS\\b").match(*text).hasMatch()) << qPrintable(*text);
}

// Two records of one wave, of which one counts from its reference time ten minutes later: drawn over each other, they
// look the same as the first one twice.
TEST_F(CliSection, drawsRecordsOfOtherReferenceTimesOnOneAxis) {
  const auto first = makeRecord({.reference = onTheDay(5, 0), .begin = 600, .count = 100});
  writeRecord("a.SAC", *first);
  writeRecord("b.SAC", *makeRecord({.reference = onTheDay(5, 10), .count = 100}));
  const auto picture = [this](const QStringList& files) {
    EXPECT_EQ(xov(QStringList{"section", "-o", "plot.png"} + files).err, QString());
    return QImage(at("plot.png"));
  };
  EXPECT_EQ(picture({"a.SAC", "b.SAC"}), picture({"a.SAC", "a.SAC"}));
}

TEST_F(CliSection, saysWhenRecordsKeepTimesOfTheirOwn) {
  writeRecord("today.SAC", *makeRecord());
  writeRecord("before.SAC", *makeRecord({.reference = onTheDay(5, 0).addDays(-7)}));
  const Outcome outcome = xov({"section", "today.SAC", "before.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: the records lie far apart in time or have no reference time: seconds count from 2 "
                         "moments\n");
}

TEST_F(CliSection, takesMeansAwayUnlessTheyAreWanted) {
  const auto picture = [this](float offset, const QStringList& options) {
    const auto record = makeRecord({.count = 100});
    for (float& sample : record->samples())
      sample += offset;
    record->ComputeExtrema();
    writeRecord("offset.SAC", *record);
    EXPECT_EQ(xov(QStringList{"section", "offset.SAC", "-o", "plot.png"} + options).status, 0);
    return QImage(at("plot.png"));
  };
  EXPECT_EQ(picture(0, {}), picture(8192, {})) << "whole numbers, which have no rounding";
  EXPECT_NE(picture(0, {"--raw"}), picture(8192, {"--raw"}));
}

TEST_F(CliSection, drawsTheRecordsThatItCouldRead) {
  const Outcome outcome = xov({"section", "far.SAC", "missing.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: missing.SAC: cannot be opened: No such file or directory\n");
  EXPECT_TRUE(files().contains("plot.png"));
}

TEST_F(CliSection, writesNothingWithoutARecord) {
  const Outcome outcome = xov({"section", "missing.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_FALSE(files().contains("plot.png"));
}

TEST_F(CliSection, drawsDifferentlyWithZeroLinesAndGain) {
  const auto picture = [this](const QStringList& options) {
    EXPECT_EQ(xov(QStringList{"section", "far.SAC", "near.SAC", "-o", "plot.png"} + options).status, 0);
    return QImage(at("plot.png"));
  };
  // The sine fills the height between its extremes: a larger gain inks more rows.
  const auto inkedRows = [](const QImage& image) {
    int rows = 0;
    for (int y = 0; y < image.height(); ++y) {
      bool inked = false;
      for (int x = 100; x < 800 && !inked; ++x)
        inked = qRed(image.pixel(x, y)) < 64;
      rows += inked ? 1 : 0;
    }
    return rows;
  };
  const QImage plain = picture({});
  EXPECT_NE(plain, picture({"--zero-lines"}));
  EXPECT_LT(inkedRows(picture({"--gain", "0.1"})), inkedRows(plain) / 2);
}

TEST_F(CliSection, drawsThinnerLinesWhereTracesStandClose) {
  QStringList arguments = {"section"};
  for (int i = 0; i < 300; ++i) {
    writeRecord(QStringLiteral("%1.SAC").arg(i), *makeRecord({.count = 20}));
    arguments.append(QStringLiteral("%1.SAC").arg(i));
  }
  const auto darkness = [&](const QStringList& options) {
    EXPECT_EQ(xov(arguments + options + QStringList{"-o", "plot.png", "-q"}).status, 0);
    const QImage plot = QImage(at("plot.png")).convertToFormat(QImage::Format_Grayscale8);
    double sum = 0;
    for (int y = 100; y < 400; ++y)
      for (int x = 300; x < 600; ++x)
        sum += 255 - qGray(plot.pixel(x, y));
    return sum / (300 * 300 * 255.0);
  };
  // 300 traces on some 500 points: lines of 1 point leave little white between them.
  EXPECT_LT(darkness({}), 0.75 * darkness({"--line-width", "1"}));
}

} // namespace
} // namespace xov::cli
