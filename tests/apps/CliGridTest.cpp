#include "tests/apps/CliFixture.h"

#include <QImage>

namespace xov::cli {
namespace {

using CliGrid = CliTest;

constexpr char kGrid[] = "# made by hand\n0 1 1\n1 1 2\n0 0 3\n1 0 4\n";

TEST_F(CliGrid, drawsColouredCellsOnWhitePaper) {
  writeFile("values.txt", kGrid);
  const Outcome outcome = xov({"grid", "values.txt", "--size", "500", "400", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const QImage image(at("plot.png"));
  EXPECT_EQ(image.pixel(3, 3), qRgb(255, 255, 255));
  // The smallest value is white and the largest black: (64, 50) and 404 × 320 points, four cells.
  EXPECT_EQ(image.pixel(64 + 100, 400 - 50 - 240), qRgb(255, 255, 255));
  EXPECT_EQ(image.pixel(64 + 300, 400 - 50 - 80), qRgb(0, 0, 0));
}

// The missing value would be drawn in the colour of the smallest, which is black when inverted.
TEST_F(CliGrid, leavesMissingCellsToThePaper) {
  writeFile("values.txt", "0 1 1\n1 1 2\n0 0 nan\n1 0 4\n");
  EXPECT_EQ(xov({"grid", "values.txt", "--inverted", "--size", "500", "400", "-o", "plot.png"}).status, 0);
  const QImage image(at("plot.png"));
  EXPECT_EQ(image.pixel(64 + 100, 400 - 50 - 240), qRgb(0, 0, 0));
  EXPECT_EQ(image.pixel(64 + 100, 400 - 50 - 80), qRgb(255, 255, 255));
}

TEST_F(CliGrid, marksNoPeakWhereThereIsNoValue) {
  writeFile("values.txt", "0 1 nan\n1 1 nan\n0 0 nan\n1 0 nan\n");
  const QStringList arguments{"grid", "values.txt", "--size", "500", "400", "-o"};
  EXPECT_EQ(xov(arguments + QStringList{"plain.png"}).status, 0);
  EXPECT_EQ(xov(arguments + QStringList{"peak.png", "--peak"}).status, 0);
  EXPECT_EQ(QImage(at("peak.png")), QImage(at("plain.png")));
}

TEST_F(CliGrid, labelsAxesAndThePlot) {
  writeFile("values.txt", kGrid);
  EXPECT_EQ(xov({"grid", "values.txt", "--xlabel", "Longitude", "--ylabel", "Latitude", "-o", "plot.pdf"}).status, 0);
  XOV_REQUIRE_TOOL(text, "pdftotext", {at("plot.pdf"), "-"});
  for (const char* piece : {"Longitude", "Latitude", "values.txt"})
    EXPECT_TRUE(text.contains(piece)) << piece << " in\n" << qPrintable(text);
}

// Four 16-bit integers: −8000 m, 0 m, 6000 m and 6000 m.
TEST_F(CliGrid, drawsHeaderlessElevations) {
  writeFile("relief.i2", QByteArray("\xc0\xe0\0\0\x70\x17\x70\x17", 8));
  const Outcome outcome =
      xov({"grid", "relief.i2", "--rows", "2", "--columns", "2", "--topo", "--size", "500", "400", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const QImage image(at("plot.png"));
  EXPECT_EQ(image.pixel(64 + 100, 400 - 50 - 240), qRgb(1, 1, 150));
  EXPECT_EQ(image.pixel(64 + 300, 400 - 50 - 240), qRgb(100, 150, 100));
}

// The largest of 2 × 3 values is in the middle of the lower row: half across the 404 points of the frame, at its
// lower edge. The line from the upper half of the frame down to it would be red elsewhere.
TEST_F(CliGrid, marksThePeakOfAGridThatIsNotSquare) {
  writeFile("values.txt", "0 1 1\n1 1 2\n2 1 3\n0 0 4\n1 0 9\n2 0 5\n");
  EXPECT_EQ(xov({"grid", "values.txt", "--peak", "--size", "500", "400", "-o", "plot.png"}).status, 0);
  const QImage image(at("plot.png"));
  int red = 0;
  for (int y = 0; y < 350; ++y) {
    for (int x = 64; x < 468; ++x) {
      if (image.pixel(x, y) != qRgb(255, 0, 0)) continue;
      ++red;
      EXPECT_LE(x, 266 + 5);
      EXPECT_GE(y, 350 - 6);
    }
  }
  EXPECT_GT(red, 0);
}

TEST_F(CliGrid, drawsEveryPaletteAndASingleCell) {
  writeFile("one.txt", "3 4 5\n");
  for (const char* palette : {"0", "1", "2", "3", "4"}) {
    const Outcome outcome = xov({"grid", "one.txt", "--palette", palette, "--peak", "--inverted", "-o", "plot.png"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
  }
}

TEST_F(CliGrid, failsInOneLineAndWritesNothing) {
  writeFile("words.txt", "0 0 1\n1 zero 2\n");
  writeFile("short.i2", "abc");
  EXPECT_EQ(xov({"grid", "words.txt", "-o", "plot.png"}).err,
            "xov: words.txt: line 2: expected three numbers, x, y and value\n");
  EXPECT_EQ(xov({"grid", "short.i2", "--rows", "2", "--columns", "2", "-o", "plot.png"}).err,
            "xov: short.i2: 3 bytes, expected 8 for 2 rows of 2 columns\n");
  EXPECT_EQ(xov({"grid", "missing.txt", "-o", "plot.png"}).err,
            "xov: missing.txt: cannot be opened: No such file or directory\n");
  EXPECT_FALSE(files().contains("plot.png"));
}

TEST_F(CliGrid, refusesOptionsThatDoNotFit) {
  writeFile("values.txt", kGrid);
  for (const QStringList& options : {QStringList{"--rows", "2"}, QStringList{"--min", "3", "--max", "2"},
                                     QStringList{"--extent", "1", "0", "0", "1"}, QStringList{"--palette", "5"},
                                     QStringList{"--type", "int8"}, QStringList{"--shades", "0"}}) {
    const Outcome outcome = xov(QStringList{"grid", "values.txt", "-o", "plot.png"} + options);
    EXPECT_EQ(outcome.status, 2) << qPrintable(options.join(' '));
    EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
  }
}

} // namespace
} // namespace xov::cli
