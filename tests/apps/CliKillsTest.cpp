#include "tests/apps/CliExports.h"

#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>
#include <random>

namespace xov::cli {
namespace {

/// Kills the command at a moment of its work.
class CliKills : public CliExports<CliTest> {
protected:
  /// How long an export takes when nothing kills it, in microseconds.
  qint64 duration(const Export& made) {
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(xov(arguments(made)).status, 0);
    return clock.nsecsElapsed() / 1000;
  }

  void killAfter(const Export& made, qint64 microseconds) {
    QProcess process;
    process.setWorkingDirectory(folder_.path());
    process.setProcessEnvironment(environment_);
    QElapsedTimer clock;
    clock.start();
    process.start(QStringLiteral(XOV_COMMAND), arguments(made));
    ASSERT_TRUE(process.waitForStarted());
    while (clock.nsecsElapsed() / 1000 < microseconds && process.state() == QProcess::Running)
      process.waitForFinished(0);
    process.kill();
    process.waitForFinished();
  }
};

// The first kinds of files at a few moments, or, with XOV_KILLS in the environment, all at as many as it says.
TEST_F(CliKills, leaveTheOldFileOrTheNewAndTheNextOneTidiesUp) {
  constexpr int kFew = 4, kKinds = 6;
  const int moments = std::max(kFew, qEnvironmentVariableIntValue("XOV_KILLS"));
  std::mt19937 random(1);
  std::vector<Export> exports = everyExport();
  if (moments == kFew) exports.resize(kKinds);
  for (const Export& made : exports) {
    const QByteArray all = whole(made);
    const qint64 longest = duration(made);
    int old = 0;
    putOldFile(made);
    for (int i = 0; i < moments; ++i) {
      writeFile(pathOf(made), "old"); // beside what kills have left
      // At once, then anywhere; every other moment lies in the last third, in which files are written.
      const qint64 first = i % 2 == 0 ? 0 : 2 * longest / 3;
      killAfter(made, i == 0 ? 0 : std::uniform_int_distribution<qint64>(first, longest)(random));
      const QByteArray found = contents(pathOf(made));
      old += found == "old" ? 1 : 0;
      EXPECT_TRUE(found == "old" || found == all) << made.name << " has " << found.size() << " bytes";
    }
    EXPECT_GT(old, 0) << made.name << ": no kill came in time";
    EXPECT_EQ(xov(arguments(made)).status, 0);
    EXPECT_EQ(written(), QLatin1String(made.name));
  }
}

} // namespace
} // namespace xov::cli
