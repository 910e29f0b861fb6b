#pragma once

#include "tests/apps/CliFixture.h"

#include <QProcess>

#include <csignal>

namespace xov::cli {

/// A server that plays the file day.mseed, which a test writes, until the test ends.
class SeedLinkTest : public CliTest {
protected:
  void TearDown() override { stop(); }

  /// Begins to serve, and gives the address.
  QString serve(const QStringList& options = {}) {
    server_.setWorkingDirectory(folder_.path());
    server_.setProcessEnvironment(environment_);
    server_.start(QStringLiteral(XOV_COMMAND), QStringList{"serve", "day.mseed", "--port", "0"} + options);
    EXPECT_TRUE(server_.waitForReadyRead());
    return "localhost:" + QString::fromUtf8(server_.readLine()).trimmed().section(' ', -1);
  }
  /// The exit status of a command that is interrupted after it has connected and received for a while; -1 where it
  /// does not end.
  int interrupted(const QStringList& arguments) {
    QProcess command;
    command.setWorkingDirectory(folder_.path());
    command.setProcessEnvironment(environment_);
    command.start(XOV_COMMAND, arguments);
    command.setReadChannel(QProcess::StandardError);
    while (!command.canReadLine() && command.waitForReadyRead()) {
    }
    EXPECT_TRUE(command.readLine().contains("connected"));
    command.waitForFinished(kReceiveMs);
    ::kill(pid_t(command.processId()), SIGINT);
    if (!command.waitForFinished()) {
      command.kill();
      command.waitForFinished();
    }
    return command.exitStatus() == QProcess::NormalExit ? command.exitCode() : -1;
  }
  /// Its exit status.
  int stop() {
    if (server_.state() == QProcess::NotRunning) return server_.exitCode();
    server_.terminate();
    server_.waitForFinished();
    return server_.exitStatus() == QProcess::NormalExit ? server_.exitCode() : -1;
  }

  static constexpr int kReceiveMs = 300;
  QProcess server_;
};

} // namespace xov::cli
