#include "tests/hosts/EarlyViews.h"

#include "XOV_Graphics/views/base/XOVView.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>

#include <csignal>
#include <thread>

namespace xov {
namespace {

struct Ended {
  bool crashed = false;
  int code = 0;
  QString said;
};

Ended thisProgram(const char* early) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QLatin1String(testing::kEarlyVariable), QLatin1String(early));
  environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("handle_abort=0:detect_leaks=0"));
  process.setProcessEnvironment(environment);
  process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--gtest_list_tests")});
  EXPECT_TRUE(process.waitForFinished(60000));
  return {process.exitStatus() == QProcess::CrashExit, process.exitCode(),
          QString::fromLocal8Bit(process.readAllStandardError())};
}

TEST(EarlyViews, withoutAnApplicationEndTheProgramWithALineThatSaysWhy) {
  const Ended ended = thisProgram(testing::kViewWithoutApplication);
  EXPECT_TRUE(ended.crashed);
  EXPECT_EQ(ended.code, SIGABRT);
  EXPECT_TRUE(ended.said.contains(QStringLiteral("a view needs a QApplication"))) << qPrintable(ended.said);
}

TEST(EarlyViews, areNotNeededForARecording) {
  const Ended ended = thisProgram(testing::kDrawsWithoutApplication);
  EXPECT_FALSE(ended.crashed) << qPrintable(ended.said);
  EXPECT_EQ(ended.code, 0);
}

TEST(EarlyViewsDeathTest, ofAnotherThreadEndTheProgramWithALineThatSaysWhy) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(std::thread([] { const XOVView view; }).join(), "views are made in the thread of the QApplication");
}

} // namespace
} // namespace xov
