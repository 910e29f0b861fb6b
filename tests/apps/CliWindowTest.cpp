#include "tests/apps/CliFixture.h"

#include <QProcess>
#include <QStandardPaths>

namespace xov::cli {
namespace {

constexpr int kPatienceMs = 20000;

/// The command before a display of its own.
class CliWindow : public CliTest {
protected:
  void SetUp() override {
    for (const char* program : {"Xvfb", "xdotool"}) {
      if (QStandardPaths::findExecutable(program).isEmpty()) GTEST_SKIP() << program << " is not installed";
    }
    writeRecord("a.SAC");
    // The server picks a free display and says which.
    server_.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1024x768x24", "-nolisten", "tcp"});
    ASSERT_TRUE(server_.waitForReadyRead(kPatienceMs));
    const QString number = QString::fromLatin1(server_.readAllStandardOutput()).trimmed();
    environment_.insert("DISPLAY", ":" + number);
  }

  void TearDown() override {
    if (server_.state() == QProcess::NotRunning) return;
    server_.terminate();
    server_.waitForFinished(kPatienceMs);
  }

  /// Opens a window, presses the keys in it and returns the command's exit status.
  int exitStatusAfter(const QString& keys, const QStringList& arguments = {"section", "a.SAC"}) {
    QProcess command;
    command.setWorkingDirectory(folder_.path());
    command.setProcessEnvironment(environment_);
    command.start(XOV_COMMAND, arguments + QStringList{"--size", "400", "300"});
    EXPECT_TRUE(command.waitForStarted(kPatienceMs));
    const Outcome found = shell("xdotool search --sync --onlyvisible --name '^xov " + arguments.front() + "$'");
    const QString window = found.out.section('\n', 0, 0);
    EXPECT_NE(window, "");
    geometry_ = shell("xdotool getwindowgeometry " + window).out;
    shell(QStringLiteral("xdotool windowfocus --sync %1 key %2").arg(window, keys));
    if (!command.waitForFinished(kPatienceMs)) {
      command.kill();
      command.waitForFinished();
      return -1;
    }
    return command.exitStatus() == QProcess::NormalExit ? command.exitCode() : -1;
  }

  QProcess server_;
  QString geometry_;
};

TEST_F(CliWindow, opensAWindowOfTheSizeThatCtrlQCloses) {
  EXPECT_EQ(exitStatusAfter("ctrl+q"), 0);
  EXPECT_TRUE(geometry_.contains("Geometry: 400x300")) << qPrintable(geometry_);
  EXPECT_EQ(files(), QStringList{"a.SAC"});
}

TEST_F(CliWindow, closesOnCtrlW) { EXPECT_EQ(exitStatusAfter("ctrl+w"), 0); }

TEST_F(CliWindow, turnsPagesWithPageDownAndPageUp) {
  writeRecord("b.SAC");
  QProcess command;
  command.setWorkingDirectory(folder_.path());
  command.setProcessEnvironment(environment_);
  command.start(XOV_COMMAND, {"section", "a.SAC", "b.SAC", "--page", "1", "--size", "400", "300"});
  ASSERT_TRUE(command.waitForStarted(kPatienceMs));
  // Beyond the last page nothing happens: a key that is pressed twice goes back by one.
  struct Step {
    const char* page;
    const char* keys;
  };
  for (const Step& step : {Step{"1 of 2", "Next"}, Step{"2 of 2", "Next Prior"}, Step{"1 of 2", "Prior ctrl+q"}}) {
    const Outcome found =
        shell(QStringLiteral("xdotool search --sync --onlyvisible --name '^xov section, page %1$'").arg(step.page));
    const QString window = found.out.section('\n', 0, 0);
    EXPECT_NE(window, "") << step.page;
    shell(QStringLiteral("xdotool windowfocus --sync %1 key %2").arg(window, step.keys));
  }
  EXPECT_TRUE(command.waitForFinished(kPatienceMs));
  EXPECT_EQ(command.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(command.exitCode(), 0);
}

TEST_F(CliWindow, playsARecordingUntilItIsClosed) {
  EXPECT_EQ(exitStatusAfter("ctrl+q", {"monitor", "a.SAC", "--speed", "5", "--span", "10"}), 0);
  EXPECT_TRUE(geometry_.contains("Geometry: 400x300")) << qPrintable(geometry_);
  EXPECT_EQ(files(), QStringList{"a.SAC"});
}

TEST_F(CliWindow, ofAKioskFillsTheScreenUntilEscape) {
  EXPECT_EQ(exitStatusAfter("Escape", {"monitor", "a.SAC", "--kiosk", "--speed", "5", "--span", "10"}), 0);
  EXPECT_TRUE(geometry_.contains("Position: 0,0")) << qPrintable(geometry_);
  EXPECT_TRUE(geometry_.contains("Geometry: 1024x768")) << qPrintable(geometry_);
}

TEST_F(CliWindow, opensNoneWhenItWritesAFile) {
  EXPECT_EQ(xov({"section", "a.SAC", "-o", "a.png"}).status, 0);
  EXPECT_EQ(files(), (QStringList{"a.SAC", "a.png"}));
}

TEST_F(CliWindow, opensNoneWhenQtIsToldToStayOffscreen) {
  environment_.insert("QT_QPA_PLATFORM", "offscreen");
  EXPECT_EQ(xov({"section", "a.SAC"}).out, "wrote section.png\n");
}

using CliWithoutAnswer = CliTest;

TEST_F(CliWithoutAnswer, needsNoDisplayForAFileWhateverPlatformIsAskedFor) {
  writeRecord("a.SAC");
  environment_.insert("DISPLAY", ":54321");
  environment_.insert("QT_QPA_PLATFORM", "xcb");
  const Outcome outcome = xov({"section", "a.SAC", "-o", "a.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
}

TEST_F(CliWithoutAnswer, writesAFileWhereTheDisplayDoesNotAnswer) {
  writeRecord("a.SAC");
  environment_.insert("DISPLAY", ":54321");
  const Outcome outcome = xov({"section", "a.SAC"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "wrote section.png\n");
  EXPECT_EQ(outcome.err, "xov: the display does not answer; writing a file\n");
}

} // namespace
} // namespace xov::cli
