#include "tests/apps/SeedLinkFixture.h"
#include "tests/seismic/MiniSeedBytes.h"

#include <QImage>

namespace xov::cli {
namespace {

using test::MiniSeedBytes;

/// A server that plays a file from 2012 at once, until the test ends.
class CliSeedLink : public SeedLinkTest {
protected:
  void SetUp() override {
    QByteArray bytes;
    for (int second = 0; second < 60; second += 2) {
      std::vector<std::int32_t> values; // 2 s at 40 Hz
      for (int k = 0; k < 80; ++k)
        values.push_back(1000 + k % 20 * 50);
      bytes += MiniSeedBytes().time(2012, 133, 0, 0, second, 0).integers(values).bytes();
    }
    writeFile("day.mseed", bytes);
  }
};

TEST_F(CliSeedLink, infoListsWhatAServerHas) {
  const QString server = serve({"--all-at-once"});
  const Outcome outcome = xov({"info", "--seedlink", server});
  EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.out, "net  sta   loc  chan  start                     end\n"
                         "XX   TEST  00   BHZ   2012-05-12T00:00:00.000Z  2012-05-12T00:01:00.000Z\n");
  EXPECT_EQ(stop(), 0);
}

TEST_F(CliSeedLink, monitorShowsWhatArrives) {
  const QString server = serve({"--all-at-once"});
  writeFile("state", "XX_TEST 0 0\n");
  const Outcome outcome = xov({"monitor", "--seedlink", server, "XX_*:BHZ,XX_TEST", "--state", "state", "--wait", "1",
                               "--span", "60", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: " + server + ": connected, SeedLink 4\n");
  const QImage plot(at("plot.png"));
  ASSERT_FALSE(plot.isNull());
  // Its 30 records have been noted: the last one begins at 00:00:58.
  EXPECT_EQ(contents("state"), "XX_TEST 30 1336780858000000\n");
}

TEST_F(CliSeedLink, monitorWritesLatenciesBesideChannels) {
  // BHN ends 40 s before BHZ.
  QByteArray bytes = contents("day.mseed");
  bytes += MiniSeedBytes().codes("XX", "TEST", "00", "BHN").time(2012, 133, 0, 0, 18, 0).integers({1, 2}).bytes();
  writeFile("day.mseed", bytes);
  const QString server = serve({"--all-at-once"});
  writeFile("state", "XX_TEST 0 0\n");
  const Outcome outcome = xov({"monitor", "--seedlink", server, "XX_TEST", "--state", "state", "--wait", "1",
                               "--span", "60", "--latency", "--late", "30", "-o", "plot.svg"});
  EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
  const QString plot = QString::fromUtf8(contents("plot.svg"));
  EXPECT_TRUE(plot.contains("41 s")) << "BHN until 18.025 s, BHZ until 59.975 s";
  EXPECT_TRUE(plot.contains("0.0 s"));
}

TEST_F(CliSeedLink, monitorLeavesCleanlyWhenItIsInterrupted) {
  const QString server = serve({"--all-at-once"});
  writeFile("state", "XX_TEST 0 0\n");
  EXPECT_EQ(
      interrupted({"monitor", "--seedlink", server, "XX_TEST", "--wait", "600", "--state", "state", "-o", "a.png"}),
      0);
  EXPECT_EQ(contents("state"), "XX_TEST 30 1336780858000000\n");
  EXPECT_FALSE(QImage(at("a.png")).isNull());
}

TEST_F(CliSeedLink, monitorGoesOnWhereTheDiskOfItsStateIsFull) {
  const QString server = serve({"--all-at-once"});
  const Outcome outcome = xov({"monitor", "--seedlink", server, "XX_TEST", "--since", "2012-05-01T00:00:00",
                               "--state", "/dev/full", "--wait", "0.5", "-o", "plot.png"});
  EXPECT_EQ(outcome.err, "xov: /dev/full: is not an ordinary file\nxov: " + server +
                             ": connected, SeedLink 4\nxov: /dev/full: No space left on device\n");
  EXPECT_FALSE(QImage(at("plot.png")).isNull());
}

TEST_F(CliSeedLink, monitorKeepsAStateThatItCannotRead) {
  const QString server = serve({"--all-at-once"});
  writeFile("state", "XX_TEST twelve 0\n");
  const Outcome outcome = xov({"monitor", "--seedlink", server, "XX_TEST", "--since", "2012-05-01T00:00:00",
                               "--state", "state", "--wait", "0.5", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.err.startsWith("xov: state: line 1: expected a station")) << qPrintable(outcome.err);
  EXPECT_TRUE(outcome.err.section('\n', 0, 0).endsWith("; it is kept as state.broken")) << qPrintable(outcome.err);
  EXPECT_EQ(contents("state.broken"), "XX_TEST twelve 0\n");
  EXPECT_EQ(contents("state"), "XX_TEST 30 1336780858000000\n");
}

TEST_F(CliSeedLink, monitorFailsWhereNothingArrives) {
  const QString server = serve();
  EXPECT_EQ(stop(), 0);
  const Outcome outcome = xov({"monitor", "--seedlink", server, "XX_TEST", "--wait", "0.2", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: " + server + ": Connection refused\nxov: " + server + ": nothing has arrived\n");
  EXPECT_EQ(xov({"info", "--seedlink", server}).err, "xov: " + server + ": Connection refused\n");
}

TEST_F(CliSeedLink, wrongServersAndStationsAreUsageErrors) {
  const auto problem = [this](const QStringList& arguments) {
    const Outcome outcome = xov(arguments);
    EXPECT_EQ(outcome.status, 2);
    return outcome.err;
  };
  EXPECT_EQ(problem({"monitor"}),
            "xov: monitor: FILES: expected seismogram files, or --seedlink (see 'xov monitor --help')\n");
  EXPECT_EQ(problem({"monitor", "day.mseed", "--seedlink", "a", "GE_WLF"}),
            "xov: monitor: --seedlink: found files, too; expected either (see 'xov monitor --help')\n");
  EXPECT_EQ(problem({"monitor", "--seedlink", "a:b", "GE_WLF"}),
            "xov: monitor: --seedlink: found 'a:b', expected a server as host or host:port (see 'xov monitor "
            "--help')\n");
  EXPECT_EQ(problem({"monitor", "--seedlink", "a", "WLF"}),
            "xov: monitor: --seedlink: found 'WLF', expected a network and a station as GE_WLF (see 'xov monitor "
            "--help')\n");
  EXPECT_EQ(
      problem({"serve", "day.mseed", "--fault", "drop=0"}),
      "xov: serve: --fault: found 'drop=0', expected drop, stall, duplicate, reorder, cut, garbage or drip and a "
      "number, as drop=100 (see 'xov serve --help')\n");
}

TEST_F(CliSeedLink, loginComesFromAFileOrTheEnvironment) {
  const QString server = serve({"--all-at-once"});
  writeFile("login", "\n");
  const Outcome empty =
      xov({"monitor", "--seedlink", server, "XX_TEST", "--login", "login", "--wait", "0", "-o", "plot.png"});
  EXPECT_EQ(empty.status, 1);
  EXPECT_EQ(empty.err, "xov: login: expected a user and a password, a line each\n");
  writeFile("login", "me\nsecret\n");
  const QString refused = "xov: " + server +
                          ": the server refuses the user's name or password: AUTH user and password are not known\n"
                          "xov: " +
                          server + ": nothing has arrived\n";
  const QStringList monitor = {"monitor", "--seedlink", server, "XX_TEST", "--wait", "0.5", "-o", "a.png"};
  EXPECT_EQ(xov(monitor + QStringList{"--login", "login"}).err, refused);
  EXPECT_EQ(xov(monitor).err,
            "xov: " + server + ": connected, SeedLink 4\n" + "xov: " + server + ": nothing has arrived\n")
      << "as nobody, who asks for what comes next";
  environment_.insert("XOV_SEEDLINK_USER", "me");
  environment_.insert("XOV_SEEDLINK_PASSWORD", "secret");
  EXPECT_EQ(xov(monitor).err, refused);
}

TEST_F(CliSeedLink, serveNamesWhatItCannotPlay) {
  const Outcome outcome = xov({"serve", "nothing.mseed"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: nothing.mseed: cannot be opened: No such file or directory\n");
}

} // namespace
} // namespace xov::cli
