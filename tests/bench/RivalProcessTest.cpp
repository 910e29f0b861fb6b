#include "bench/RivalProcess.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace xov::bench {
namespace {

/// Rivals that are scripts of a few lines, told to draw one trace of two samples.
class Rivals : public ::testing::Test {
protected:
  std::unique_ptr<RivalProcess> start(const char* script, double limitSeconds = 10) {
    const QString path = folder.filePath(QStringLiteral("rival"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(QByteArray("#!/bin/sh\n") + script + "\n");
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    work.traces.resize(1);
    return std::make_unique<RivalProcess>(QStringLiteral("rival"), path, work, QStringLiteral("samples"),
                                          limitSeconds);
  }

  QTemporaryDir folder;
  Work work;
};

TEST_F(Rivals, aWarningOnStandardErrorIsNoReasonToLeaveOneOut) {
  const auto rival =
      start("echo 'XDG_RUNTIME_DIR not set' >&2; echo ready 3; read command; echo oh >&2; echo 7.5; read end");
  ASSERT_TRUE(rival->isRunning()) << rival->complaint().toStdString();
  EXPECT_EQ(rival->prepareMilliseconds(), 3);
  EXPECT_EQ(rival->ask(QStringLiteral("draw")), 7.5);
  // `read` ends with status 1 when there is nothing more to read.
  EXPECT_FALSE(rival->end());
  EXPECT_EQ(rival->complaint(), QStringLiteral("ended with status 1; oh"));
}

TEST_F(Rivals, oneThatEndsWithStatusZeroCounts) {
  const auto rival = start("echo warning >&2; echo ready 3; while read command; do echo 7.5; done");
  EXPECT_EQ(rival->ask(QStringLiteral("draw")), 7.5);
  EXPECT_TRUE(rival->end());
  EXPECT_TRUE(rival->complaint().isEmpty());
}

TEST_F(Rivals, whatALibrarySaysBetweenAnswersIsNoAnswer) {
  const auto rival = start("echo welcome; echo ready 3; while read command; do echo drawing; echo 7.5; done");
  EXPECT_EQ(rival->prepareMilliseconds(), 3);
  EXPECT_EQ(rival->ask(QStringLiteral("draw")), 7.5);
  EXPECT_EQ(rival->ask(QStringLiteral("draw")), 7.5);
}

// The system counts what a program does when it stops, or every few milliseconds: the loop takes far longer.
TEST_F(Rivals, whatTheProcessorDoesForOneIsCounted) {
  const auto rival =
      start("echo ready 3; read command; i=0; while [ $i -lt 150000 ]; do i=$((i + 1)); done; echo 7.5; "
            "read command; echo 7.5; while read end; do :; done");
  const double before = rival->processorMilliseconds();
  EXPECT_GT(before, 0);
  rival->ask(QStringLiteral("draw"));
  const double loop = rival->processorMilliseconds() - before;
  rival->ask(QStringLiteral("draw"));
  EXPECT_GT(loop, 5 * (rival->processorMilliseconds() - before - loop)) << "the second answer takes no loop";
}

TEST_F(Rivals, oneWithoutSuchACommandKeepsRunning) {
  const auto rival = start("echo ready 3; while read command; do echo no; done");
  EXPECT_EQ(rival->ask(QStringLiteral("redraw")), std::nullopt);
  EXPECT_TRUE(rival->isRunning());
  EXPECT_TRUE(rival->end());
}

TEST_F(Rivals, oneThatEndsBeforeItIsReadySaysWhy) {
  const auto rival = start("echo warning >&2; echo 'no module numpy' >&2; exit 1");
  EXPECT_FALSE(rival->isRunning());
  EXPECT_EQ(rival->complaint(), QStringLiteral("ended with status 1; no module numpy"));
  EXPECT_EQ(start("exit 0")->complaint(), QStringLiteral("ended before it was ready"));
}

TEST_F(Rivals, oneThatFailsAfterItsAnswersDoesNotCount) {
  const auto rival = start("echo ready 3; read command; echo 7.5; exit 3");
  EXPECT_EQ(rival->ask(QStringLiteral("draw")), 7.5);
  EXPECT_FALSE(rival->end());
  EXPECT_EQ(rival->complaint(), QStringLiteral("ended with status 3"));
}

TEST_F(Rivals, oneThatEndsWithoutAnAnswerDoesNotCount) {
  const auto rival = start("echo ready 3; read command; exit 0");
  EXPECT_EQ(rival->ask(QStringLiteral("draw")), std::nullopt);
  EXPECT_FALSE(rival->end());
  EXPECT_EQ(rival->complaint(), QStringLiteral("ended without an answer"));
}

TEST_F(Rivals, oneThatTakesLongerThanTheLimitIsStoppedAndCountsAsSlow) {
  const auto rival = start("echo ready 3; read command; exec sleep 60", 2);
  ASSERT_TRUE(rival->isRunning()) << rival->complaint().toStdString();
  EXPECT_EQ(rival->ask(QStringLiteral("draw")), std::nullopt);
  EXPECT_FALSE(rival->isRunning());
  EXPECT_TRUE(rival->end());
  EXPECT_TRUE(rival->complaint().isEmpty());
}

TEST_F(Rivals, oneThatIsNeverReadySaysSo) {
  EXPECT_EQ(start("exec sleep 60", 0.3)->complaint(), QStringLiteral("was not ready after 0.3 s"));
}

} // namespace
} // namespace xov::bench
