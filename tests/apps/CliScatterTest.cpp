#include "tests/apps/CliFixture.h"

#include <QImage>

namespace xov::cli {
namespace {

using CliScatter = CliTest;

// Pixels of the circles' fill, which nothing else in the plot has.
int fillPixels(const QImage& image) {
  constexpr int kGray = 128;
  constexpr int kTolerance = 1;
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor color = image.pixelColor(x, y);
      count +=
          std::abs(color.red() - kGray) <= kTolerance && color.red() == color.green() && color.red() == color.blue();
    }
  }
  return count;
}

TEST_F(CliScatter, takesLogarithmicAxes) {
  writeFile("points.txt", "1 1\n10 100\n100 0\n");
  const Outcome outcome = xov({"scatter", "points.txt", "--log-x", "--log-y", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: points.txt: 1 of 3 rows are not above 0 and have no place on a logarithmic axis\n");
}

TEST_F(CliScatter, drawsEachRowWholeTheFirstIncluded) {
  // Four circles in the corners of the data, 40 points across. At most 2 of these are outline, so each has between
  // pi * 18^2 = 1018 and pi * 20^2 = 1257 grey pixels; three circles, or four that the frame cuts in half, have fewer
  // than four times the former.
  writeFile("corners.txt", "0 0\n0 1\n1 0\n1 1\n");
  const Outcome outcome =
      xov({"scatter", "corners.txt", "--diameter", "40", "--size", "920", "900", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const int pixels = fillPixels(QImage(at("plot.png")));
  EXPECT_GT(pixels, 4 * 1018);
  EXPECT_LT(pixels, 4 * 1257);
}

TEST_F(CliScatter, drawsOnePoint) {
  // 40 points across as above.
  const Outcome outcome = xov({"scatter", "-", "--diameter", "40", "-o", "plot.png"}, "5 5\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_GT(fillPixels(QImage(at("plot.png"))), 1018);
}

TEST_F(CliScatter, labelsAxesByTheHeadingAndThePlotByTheFile) {
  writeFile("events.csv", "Magnitude,Moment,Duration (s)\n5,17,2\n7,20,30\n");
  EXPECT_EQ(xov({"scatter", "events.csv", "--columns", "Magnitude", "3", "-o", "plot.pdf"}).status, 0);
  XOV_REQUIRE_TOOL(text, "pdftotext", {at("plot.pdf"), "-"});
  for (const char* piece : {"Magnitude", "Duration (s)", "events"})
    EXPECT_TRUE(text.contains(piece)) << piece << " in\n" << qPrintable(text);
}

TEST_F(CliScatter, leavesOutRowsThatAreNotFinite) {
  const Outcome outcome = xov({"scatter", "-", "-o", "plot.png"}, "nan 1\n1 2\n3 inf\n4 5\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
}

TEST_F(CliScatter, failsInOneLineAndWritesNothing) {
  writeFile("text.txt", "1 2\n3 x\n");
  writeFile("gaps.txt", "nan 1\ninf 2\n");
  const struct {
    const char* file;
    const char* message;
  } faults[] = {
      {"text.txt", "xov: text.txt: line 2: column 2: found 'x', expected a number\n"},
      {"gaps.txt", "xov: gaps.txt: holds no finite numbers to draw\n"},
      {"missing.txt", "xov: missing.txt: cannot be opened: No such file or directory\n"},
  };
  for (const auto& fault : faults) {
    const Outcome outcome = xov({"scatter", fault.file, "-o", "plot.png"});
    EXPECT_EQ(outcome.status, 1) << fault.file;
    EXPECT_EQ(outcome.err, fault.message);
  }
  EXPECT_FALSE(files().contains("plot.png"));
}

} // namespace
} // namespace xov::cli
