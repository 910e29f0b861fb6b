#include "tests/apps/CliFixture.h"

#include <QImage>

namespace xov::cli {
namespace {

class CliHist : public CliTest {
protected:
  void SetUp() override { writeFile("values.csv", "Name,Residual (s)\n1,0\n1,1\n1,2\n1,2\n1,3\n1,10\n1,nan\n"); }

  Outcome hist(const QStringList& options) {
    return xov(QStringList{"hist", "values.csv", "--columns", "2"} + options);
  }
};

TEST_F(CliHist, dumpsBinsThatDivideTheRangeOfTheValues) {
  // Bins of (10 - 0) / 4 = 2.5: 0, 1, 2 and 2 in the first, 3 in the second, 10 in the last. The range ends one bin
  // above the values, at 12.5; all rows carry the edges of the first bin.
  const Outcome outcome = hist({"--bins", "4", "--dump"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, "nValues = 6, minValue = 0.000e+00 maxValue = 1.250e+01\n"
                         "nBins = 4, binWidth = 2.500e+00\n"
                         "leftEdge rightEdge Count\n"
                         "0.000e+00 2.500e+00 4\n"
                         "0.000e+00 2.500e+00 1\n"
                         "0.000e+00 2.500e+00 0\n"
                         "0.000e+00 2.500e+00 1\n");
  EXPECT_EQ(files(), QStringList{"values.csv"});
}

TEST_F(CliHist, takesTheRangeAndRemovesTheMean) {
  // The mean is 18 / 6 = 3: -3, -2, -1, -1, 0 and 7 remain. Bins of (10 - 0) / (4 + 1) = 2: the four below the range
  // and 0 in the first, 7 in the fourth, which starts at 6.
  const Outcome outcome = hist({"--bins", "4", "--min", "0", "--max=10", "--remove-mean", "--dump"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, "nValues = 6, minValue = 0.000e+00 maxValue = 1.000e+01\n"
                         "nBins = 4, binWidth = 2.000e+00\n"
                         "leftEdge rightEdge Count\n"
                         "0.000e+00 2.000e+00 5\n"
                         "0.000e+00 2.000e+00 0\n"
                         "0.000e+00 2.000e+00 0\n"
                         "0.000e+00 2.000e+00 1\n");
}

TEST_F(CliHist, binsOfALogarithmicAxisDivideTheDecades) {
  // 1 to 100 in two bins of a decade, and one more above; 0 has no place.
  const Outcome outcome = xov({"hist", "-", "--log-x", "--log-y", "--bins", "2", "--dump"}, "1\n2\n0\n50\n100\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: -: 1 of 5 rows are not above 0 and have no place on a logarithmic axis\n");
  EXPECT_EQ(outcome.out, "nValues = 4, minValue = 1.000e+00 maxValue = 1.000e+03\n"
                         "nBins = 2, binWidth = 1.000e+00\n"
                         "leftEdge rightEdge Count\n"
                         "1.000e+00 1.000e+01 2\n"
                         "1.000e+00 1.000e+01 2\n");
}

TEST_F(CliHist, endsOfALogarithmicAxisAreAboveZero) {
  for (const QStringList& options : {QStringList{"--min", "0"}, {"--max", "-1"}, {"--remove-mean"}}) {
    const Outcome outcome = hist(QStringList{"--log-x"} + options);
    EXPECT_EQ(outcome.status, 2) << qPrintable(options[0]);
    EXPECT_TRUE(outcome.err.startsWith("xov: hist: " + options[0] + ": ")) << qPrintable(outcome.err);
  }
}

TEST_F(CliHist, takesNegativeEnds) {
  // Bins of (-2 - -6) / (1 + 1) = 2; all six values lie above and count in the only one.
  const Outcome outcome = hist({"--bins", "1", "--min", "-6", "--max", "-2", "--dump"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.endsWith("\n-6.000e+00 -4.000e+00 6\n")) << qPrintable(outcome.out);
}

TEST_F(CliHist, dumpsAndDrawsWhenAFileIsNamedToo) {
  const Outcome outcome = hist({"--bins", "4", "--dump", "-o", "plot.png", "--size", "300", "200"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.startsWith("nValues = 6,")) << qPrintable(outcome.out);
  EXPECT_EQ(QImage(at("plot.png")).size(), QSize(300, 200));
}

TEST_F(CliHist, drawsWithoutADump) {
  const Outcome outcome = hist({});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "wrote hist.png\n");
  EXPECT_EQ(outcome.err, "");
}

TEST_F(CliHist, labelsAxesByHeadingAndCountAndThePlotByTheFile) {
  EXPECT_EQ(hist({"-o", "plot.pdf"}).status, 0);
  XOV_REQUIRE_TOOL(text, "pdftotext", {at("plot.pdf"), "-"});
  for (const char* piece : {"Residual (s)", "Count", "values"})
    EXPECT_TRUE(text.contains(piece)) << piece << " in\n" << qPrintable(text);
}

TEST_F(CliHist, countsOneValueAndValuesAllAlike) {
  // 7 widened by a twentieth is 6.65 to 7.35; in two bins of 0.35, the 7s count in the second or, by rounding, in the
  // first, but all in the same.
  const Outcome outcome = xov({"hist", "-", "--bins", "2", "--dump"}, "7\n7\n7\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.contains(" 3\n")) << qPrintable(outcome.out);
  const Outcome one = xov({"hist", "-", "--bins", "1", "--dump"}, "0\n");
  // 0 is widened by 1: one bin from -1 to 1.
  EXPECT_TRUE(one.out.endsWith("\n-1.000e+00 1.000e+00 1\n")) << qPrintable(one.out);
}

TEST_F(CliHist, failsInOneLineAndWritesNothing) {
  writeFile("gaps.txt", "nan\ninf\n");
  const struct {
    const char* file;
    const char* message;
  } faults[] = {
      {"gaps.txt", "xov: gaps.txt: holds no finite numbers to draw\n"},
      {"missing.txt", "xov: missing.txt: cannot be opened: No such file or directory\n"},
  };
  for (const auto& fault : faults) {
    const Outcome outcome = xov({"hist", fault.file, "--dump", "-o", "plot.png"});
    EXPECT_EQ(outcome.status, 1) << fault.file;
    EXPECT_EQ(outcome.out, "") << fault.file;
    EXPECT_EQ(outcome.err, fault.message);
  }
  EXPECT_FALSE(files().contains("plot.png"));
}

} // namespace
} // namespace xov::cli
