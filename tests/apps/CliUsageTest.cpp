#include "tests/apps/CliFixture.h"

#include <QFile>
#include <QRegularExpression>

namespace xov::cli {
namespace {

using CliUsage = CliTest;

TEST_F(CliUsage, printsHelpAndVersion) {
  const Outcome help = xov({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.out.contains("Usage: xov")) << qPrintable(help.out);
  EXPECT_EQ(help.err, "");

  const Outcome sectionHelp = xov({"section", "--help"});
  EXPECT_EQ(sectionHelp.status, 0);
  EXPECT_TRUE(sectionHelp.out.contains("Usage: xov section [OPTIONS] FILES...")) << qPrintable(sectionHelp.out);

  for (const QStringList& arguments : {QStringList{"help"}, QStringList{"-h"}})
    EXPECT_EQ(xov(arguments).out, help.out) << qPrintable(arguments.join(' '));
  EXPECT_EQ(xov({"help", "section"}).out, sectionHelp.out);

  const Outcome version = xov({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_TRUE(QRegularExpression("^xov \\d+\\.\\d+\\.\\d+\n$").match(version.out).hasMatch())
      << qPrintable(version.out);
  EXPECT_EQ(xov({"-V"}).out, version.out);
}

struct WrongLine {
  QStringList arguments;
  const char* message;
};

TEST_F(CliUsage, refusesWrongLinesWithStatus2AndOneLine) {
  const WrongLine lines[] = {
      {{}, "xov: A subcommand is required (see 'xov --help')\n"},
      {{"sektion"}, "xov: there is no command 'sektion'; did you mean 'section'? (see 'xov --help')\n"},
      {{"help", "sektion"}, "xov: there is no command 'sektion'; did you mean 'section'? (see 'xov --help')\n"},
      {{"plot"}, "xov: there is no command 'plot' (see 'xov --help')\n"},
      {{"--verson"}, "xov: there is no option '--verson'; did you mean '--version'? (see 'xov --help')\n"},
      {{"--threads", "0", "section", "a"},
       "xov: --threads: found '0', expected a number from 1 to 256 (see 'xov --help')\n"},
      {{"section"}, "xov: section: FILES is required (see 'xov section --help')\n"},
      {{"section", "a", "--bogus"}, "xov: section: there is no option '--bogus' (see 'xov section --help')\n"},
      {{"section", "a", "--zero-line=1"},
       "xov: section: there is no option '--zero-line'; did you mean '--zero-lines'? (see 'xov section --help')\n"},
      {{"section", "--zero-l"},
       "xov: section: there is no option '--zero-l'; did you mean '--zero-lines'? (see 'xov section --help')\n"},
      {{"section", "a", "--giant", "3"},
       "xov: section: there is no option '--giant'; did you mean '--gain'? (see 'xov section --help')\n"},
      {{"section", "a", "-o", "a.gif"},
       "xov: section: --output: found 'a.gif', expected a file name that ends in .pdf, .svg, .tif, .jpg or .png "
       "(see 'xov section --help')\n"},
      {{"section", "a", "-o", "pdf"},
       "xov: section: --output: found 'pdf', expected a file name that ends in .pdf, .svg, .tif, .jpg or .png "
       "(see 'xov section --help')\n"},
      {{"section", "a", "--size", "0.5", "600"},
       "xov: section: --size: found '0.5', expected 1 to 20000 points, as 600, 16cm, 160mm, "
       "6in or 450pt (see 'xov section --help')\n"},
      {{"section", "a", "--size", "900", "20001"},
       "xov: section: --size: found '20001', expected 1 to 20000 points, as 600, 16cm, 160mm, "
       "6in or 450pt (see 'xov section --help')\n"},
      {{"section", "a", "--scale", "33"},
       "xov: section: --scale: found '33', expected a number from 0.1 to 32 (see 'xov section --help')\n"},
      {{"section", "a", "--gain", "-1"},
       "xov: section: --gain: found '-1', expected a number above 0 (see 'xov section --help')\n"},
      {{"section", "a", "--sort", "size"},
       "xov: section: --sort: found 'size', expected distance, azimuth or name (see 'xov section --help')\n"},
      {{"info"}, "xov: info: FILES: expected seismogram or event files, or --seedlink (see 'xov info --help')\n"},
      {{"xy"}, "xov: xy: FILE is required (see 'xov xy --help')\n"},
      {{"xy", "a", "b"}, "xov: xy: found 'b', expected no more arguments (see 'xov xy --help')\n"},
      {{"scatter"}, "xov: scatter: FILE is required (see 'xov scatter --help')\n"},
      {{"scatter", "a", "--diameter", "0"},
       "xov: scatter: --diameter: found '0', expected a number from 0.1 to 1000 (see 'xov scatter --help')\n"},
      {{"hist"}, "xov: hist: FILE is required (see 'xov hist --help')\n"},
      {{"hist", "a", "--bins", "0"},
       "xov: hist: --bins: found '0', expected a whole number from 1 to 1048576 (see 'xov hist --help')\n"},
      {{"hist", "a", "--min", "nan"},
       "xov: hist: --min: found 'nan', expected a number from -1e+30 to 1e+30 (see 'xov hist --help')\n"},
      {{"hist", "a", "--min", "2", "--max", "2"},
       "xov: hist: --max: expected a number above that of --min (see 'xov hist --help')\n"},
  };
  for (const WrongLine& line : lines) {
    const Outcome outcome = xov(line.arguments);
    EXPECT_EQ(outcome.status, 2) << line.message;
    EXPECT_EQ(outcome.err, line.message);
    EXPECT_EQ(outcome.out, "") << line.message;
  }
  EXPECT_EQ(files(), QStringList());
}

TEST_F(CliUsage, looksAtTheOutputNameBeforeItReads) {
  const Outcome outcome = xov({"section", "missing.SAC", "-o", "plot.gif"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_FALSE(outcome.err.contains("missing.SAC")) << qPrintable(outcome.err);
}

TEST_F(CliUsage, takesFilesThatAreNamedLikeCommandsAndOptions) {
  writeRecord("info");
  writeRecord("xy");
  writeRecord("--scale");
  const Outcome outcome = xov({"info", "info", "xy", "--", "--scale"});
  EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.out.count('\n'), 4);
}

TEST_F(CliUsage, takesAllArgumentsAfterTwoDashesForFileNames) {
  writeRecord("-o");
  for (const QStringList& arguments : {QStringList{"info", "--", "-o"}, QStringList{"info", "./-o", "--", "-o"}}) {
    const Outcome outcome = xov(arguments);
    EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
    EXPECT_EQ(outcome.out.count('\n'), arguments.size() - 1);
  }
}

TEST_F(CliUsage, saysNothingInALocaleThatIsNotUtf8) {
  writeRecord("a.SAC");
  environment_.insert("LC_ALL", "C");
  const Outcome outcome = xov({"section", "a.SAC", "-o", "a.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
}

TEST_F(CliUsage, noticesWhenStandardOutputIsFull) {
  if (!QFile::exists("/dev/full")) GTEST_SKIP() << "there is no /dev/full";
  writeRecord("a.SAC");
  for (const char* arguments : {"info a.SAC", "--help"}) {
    const Outcome outcome = shell(QStringLiteral("$XOV %1 > /dev/full").arg(arguments));
    EXPECT_EQ(outcome.status, 1) << arguments;
    EXPECT_EQ(outcome.err, "xov: standard output: No space left on device\n") << arguments;
  }
}

} // namespace
} // namespace xov::cli
