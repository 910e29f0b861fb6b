#include "tests/apps/CliFixture.h"

namespace xov::cli {
namespace {

class CliXy : public CliTest {
protected:
  std::optional<QString> textOfPlot(const QStringList& options, const QByteArray& input = {}) {
    const Outcome outcome = xov(QStringList{"xy", "-o", "plot.pdf"} + options, input);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return tool("pdftotext", {at("plot.pdf"), "-"});
  }
};

TEST_F(CliXy, labelsAxesByTheHeadingAndThePlotByTheFile) {
  writeFile("curve.csv", "Distance (deg),Time (s)\n0,0\n50,30\n100,60\n");
  const auto text = textOfPlot({"curve.csv"});
  if (!text) GTEST_SKIP() << "pdftotext is not installed";
  for (const char* piece : {"Distance (deg)", "Time (s)", "curve"})
    EXPECT_TRUE(text->contains(piece)) << piece << " in\n" << qPrintable(*text);
}

TEST_F(CliXy, takesLabelsTitleAndColumns) {
  writeFile("curve.csv", "a,b,c\n0,0,1\n50,30,2\n");
  const auto text = textOfPlot({"curve.csv", "--columns", "b", "3", "--xlabel", "Along", "--title", "Heading"});
  if (!text) GTEST_SKIP() << "pdftotext is not installed";
  for (const char* piece : {"Along", "c", "Heading"})
    EXPECT_TRUE(text->contains(piece)) << piece << " in\n" << qPrintable(*text);
  EXPECT_FALSE(text->contains("curve")) << qPrintable(*text);
}

TEST_F(CliXy, readsStandardInput) {
  const auto text = textOfPlot({"-", "--ylabel", "Velocity"}, "1 2\n3 4\n");
  if (!text) GTEST_SKIP() << "pdftotext is not installed";
  EXPECT_TRUE(text->contains("Velocity")) << qPrintable(*text);
}

TEST_F(CliXy, drawsOnePointAndAConstant) {
  writeFile("one.txt", "5 5\n");
  writeFile("flat.txt", "1 7\n2 7\n3 7\n");
  for (const char* file : {"one.txt", "flat.txt"}) {
    const Outcome outcome = xov({"xy", file, "-o", "plot.png"});
    EXPECT_EQ(outcome.status, 0) << file;
    EXPECT_EQ(outcome.err, "") << file;
  }
}

TEST_F(CliXy, aLogarithmicAxisSaysWhatHasNoPlaceOnIt) {
  writeFile("curve.txt", "1 1e-6\n2 0\n3 1e-3\n-4 nan\n");
  const Outcome outcome = xov({"xy", "curve.txt", "--log-y", "-o", "plot.pdf"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: curve.txt: 1 of 4 rows are not above 0 and have no place on a logarithmic axis\n");
  EXPECT_EQ(xov({"xy", "curve.txt", "--log-x", "-o", "plot.pdf"}).err,
            "xov: curve.txt: 1 of 4 rows are not above 0 and have no place on a logarithmic axis\n");
  writeFile("none.txt", "-1 1\n0 2\n");
  const Outcome none = xov({"xy", "none.txt", "--log-x", "-o", "none.pdf"});
  EXPECT_EQ(none.status, 1);
  EXPECT_TRUE(none.err.endsWith("xov: none.txt: holds no finite numbers to draw\n")) << qPrintable(none.err);
}

TEST_F(CliXy, aLogarithmicAxisIsLabelledByDecades) {
  writeFile("curve.txt", "1 1\n2 100\n3 10000\n");
  const auto text = textOfPlot({"curve.txt", "--log-y"});
  if (!text) GTEST_SKIP() << "pdftotext is not installed";
  EXPECT_TRUE(text->contains("10000")) << qPrintable(*text);
}

TEST_F(CliXy, failsInOneLineAndWritesNothing) {
  writeFile("text.txt", "1 2\n3 x\n");
  writeFile("gaps.txt", "nan 1\ninf 2\n");
  const struct {
    const char* file;
    const char* message;
  } faults[] = {
      {"text.txt", "xov: text.txt: line 2: column 2: found 'x', expected a number\n"},
      {"gaps.txt", "xov: gaps.txt: holds no finite numbers to draw\n"},
      {"missing.txt", "xov: missing.txt: cannot be opened: No such file or directory\n"},
      {".", "xov: .: is a folder, expected a file\n"},
  };
  for (const auto& fault : faults) {
    const Outcome outcome = xov({"xy", fault.file, "-o", "plot.png"});
    EXPECT_EQ(outcome.status, 1) << fault.file;
    EXPECT_EQ(outcome.err, fault.message);
  }
  EXPECT_FALSE(files().contains("plot.png"));
}

} // namespace
} // namespace xov::cli
