#include "tests/apps/SeedLinkFixture.h"
#include "tests/seismic/MiniSeedBytes.h"

#include <QImage>

namespace xov::cli {
namespace {

using test::MiniSeedBytes;

/// A server of the last half minute of 2012-05-11 and the first one of the 12th.
class CliLiveDrum : public SeedLinkTest {
protected:
  static QByteArray minuteOf(const char* channel) {
    QByteArray bytes;
    for (int second = -30; second < 30; second += 2) {
      std::vector<std::int32_t> values; // 2 s at 40 Hz
      for (int k = 0; k < 80; ++k)
        values.push_back(1000 + k % 20 * 50);
      MiniSeedBytes record;
      record.codes("XX", "TEST", "00", channel);
      if (second < 0)
        record.time(2012, 132, 23, 59, second + 60, 0);
      else
        record.time(2012, 133, 0, 0, second, 0);
      bytes += record.integers(values).bytes();
    }
    return bytes;
  }
  void SetUp() override { writeFile("day.mseed", minuteOf("BHZ")); }

  /// A drum of everything that the server has, and then some options.
  Outcome drum(const QString& server, const QStringList& options, const char* stations = "XX_TEST") {
    return xov(QStringList{"drum", "--seedlink", server, stations, "--since", "2012-05-01T00:00:00", "--wait", "0.5",
                           "-o", "plot.pdf"} +
               options);
  }
};

TEST_F(CliLiveDrum, showsTheDayAtHandAndKeepsTheOneThatIsOver) {
  const QString server = serve({"--all-at-once"});
  const Outcome outcome = drum(server, {"--daily", "days", "--title", "The day"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: " + server + ": connected, SeedLink 4\n");
  ASSERT_TRUE(files().contains("days"));
  const QString kept = "days/XX.TEST.00.BHZ.2012-05-11.pdf";
  EXPECT_TRUE(contents(kept).startsWith("%PDF"));
  XOV_REQUIRE_TOOL(today, "pdftotext", {"plot.pdf", "-"});
  EXPECT_TRUE(today.contains("2012-05-12") || today.contains("2012-133")) << qPrintable(today);
  EXPECT_TRUE(today.contains("05/12 23")) << qPrintable(today);
  EXPECT_TRUE(today.contains("The day"));
  XOV_REQUIRE_TOOL(yesterday, "pdftotext", {kept, "-"});
  EXPECT_TRUE(yesterday.contains("05/11 00")) << qPrintable(yesterday);
  EXPECT_FALSE(yesterday.contains("05/12")) << qPrintable(yesterday);
}

TEST_F(CliLiveDrum, namesKeptPagesAsItIsToldAndReplacesNone) {
  const QString server = serve({"--all-at-once"});
  const QStringList daily = {"--daily", "{station}-{date}.png", "--size", "300", "240", "--dpi", "144"};
  EXPECT_EQ(drum(server, daily).status, 0);
  EXPECT_EQ(drum(server, daily).status, 0);
  EXPECT_EQ(files().filter("TEST-"), (QStringList{"TEST-2012-05-11.png", "TEST-2012-05-11_2.png"}));
  EXPECT_EQ(QImage(at("TEST-2012-05-11.png")).size(), QSize(600, 480));
}

TEST_F(CliLiveDrum, goesOnWhereAPageCannotBeKept) {
  const QString server = serve({"--all-at-once"});
  writeFile("days", "no folder");
  const Outcome outcome = drum(server, {"--daily", "days"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err.count('\n'), 2) << qPrintable(outcome.err);
  EXPECT_TRUE(outcome.err.contains("xov: days/XX.TEST.00.BHZ.2012-05-11.pdf: ")) << qPrintable(outcome.err);
  EXPECT_TRUE(contents("plot.pdf").startsWith("%PDF"));
}

TEST_F(CliLiveDrum, goesOnWhereTheDiskOfItsStateIsFull) {
  const QString server = serve({"--all-at-once"});
  const Outcome outcome = drum(server, {"--state", "/dev/full"});
  EXPECT_TRUE(contents("plot.pdf").startsWith("%PDF")) << qPrintable(outcome.err);
  EXPECT_TRUE(outcome.err.contains("xov: /dev/full: ")) << qPrintable(outcome.err);
}

TEST_F(CliLiveDrum, goesBackToTheBeginOfTheDayThatItsStateIsOf) {
  const QString server = serve({"--all-at-once"});
  // The last record of the 11th has arrived; its day begins long before the first record that the server has.
  writeFile("state", "XX_TEST 15 1336780798000000\nXX_OTHER 4 1336780800000000\n");
  const Outcome outcome = xov({"drum", "--seedlink", server, "XX_TEST", "--state", "state", "--wait", "0.5",
                               "--daily", "days", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
  EXPECT_TRUE(contents("days/XX.TEST.00.BHZ.2012-05-11.pdf").startsWith("%PDF"));
  EXPECT_EQ(contents("state"), "XX_OTHER 4 1336780800000000\nXX_TEST 30 1336780828000000\n");
}

TEST_F(CliLiveDrum, leavesCleanlyWhenItIsInterrupted) {
  const QString server = serve({"--all-at-once"});
  EXPECT_EQ(interrupted({"drum", "--seedlink", server, "XX_TEST", "--since", "2012-05-01T00:00:00", "--wait", "600",
                         "--state", "state", "--daily", "days", "-o", "plot.png"}),
            0);
  EXPECT_EQ(contents("state"), "XX_TEST 30 1336780828000000\n");
  EXPECT_TRUE(contents("days/XX.TEST.00.BHZ.2012-05-11.pdf").startsWith("%PDF"));
  EXPECT_FALSE(QImage(at("plot.png")).isNull());
}

TEST_F(CliLiveDrum, keepsEveryChannelAndShowsOne) {
  writeFile("day.mseed", minuteOf("BHZ") + minuteOf("BHN"));
  const QString server = serve({"--all-at-once"});
  const Outcome outcome = drum(server, {"--daily", "days"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err.section('\n', 1, 1),
            "xov: " + server +
                ": found 2 channels, expected one: the stations of --seedlink choose, --daily keeps them all");
  for (const char* channel : {"BHZ", "BHN"})
    EXPECT_TRUE(contents(QStringLiteral("days/XX.TEST.00.%1.2012-05-11.pdf").arg(channel)).startsWith("%PDF"));
}

TEST_F(CliLiveDrum, failsWhereNothingArrives) {
  const QString server = serve();
  const Outcome outcome = xov({"drum", "--seedlink", server, "XX_TEST", "--wait", "0.1", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.endsWith(server + ": nothing has arrived\n")) << qPrintable(outcome.err);
}

TEST_F(CliLiveDrum, tellsItsLatency) {
  const QString server = serve({"--all-at-once"});
  EXPECT_EQ(drum(server, {"--latency", "--late", "5"}).status, 0);
  XOV_REQUIRE_TOOL(text, "pdftotext", {"plot.pdf", "-"});
  EXPECT_TRUE(text.contains("latency 0.0 s")) << qPrintable(text) << "the display of a recording ends at its newest";
}

TEST_F(CliLiveDrum, refusesWhatDoesNotGoWithAServer) {
  const auto problem = [this](const QStringList& arguments) {
    const Outcome outcome = xov(QStringList{"drum"} + arguments);
    EXPECT_EQ(outcome.status, 2);
    return outcome.err.section(" (see ", 0, 0);
  };
  const QStringList server = {"--seedlink", "a", "XX_TEST"};
  EXPECT_EQ(problem({}), "xov: drum: FILES: expected seismogram files, or --seedlink");
  EXPECT_EQ(problem(QStringList{"day.mseed"} + server), "xov: drum: --seedlink: found files, too; expected either");
  EXPECT_EQ(problem(server + QStringList{"--page", "day"}),
            "xov: drum: --page: what arrives has a page a day of each channel");
  EXPECT_EQ(problem(server + QStringList{"--detrend"}),
            "xov: drum: --seedlink: found options of preparation, too; what arrives is shown as it is");
  EXPECT_EQ(problem(server + QStringList{"--since", "noon"}),
            "xov: drum: --since: found 'noon', expected a time as 2011-03-11T05:46:23, or today");
  EXPECT_EQ(problem({"day.mseed", "--late", "5"}), "xov: drum: --seedlink: expected with --latency and --late");
  EXPECT_TRUE(problem({"day.mseed", "--daily", "days"}).contains("--daily")) << "which needs --seedlink";
  EXPECT_TRUE(problem(server + QStringList{"--daily", "{nobody}.png"}).contains("nobody"));
}

} // namespace
} // namespace xov::cli
