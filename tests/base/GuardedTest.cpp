#include "XOV_Graphics/base/Guarded.h"

#include "tests/support/LogCatcher.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace xov {
namespace {

const QString kName = QStringLiteral("trace.sac");

TEST(Guarded, givesWhatItsBodyGives) {
  EXPECT_EQ(*guarded(kName, []() -> Result<int> { return 7; }), 7);
  EXPECT_EQ(guarded(kName, []() -> Result<int> { return Error{QStringLiteral("no")}; }).error(),
            QStringLiteral("no"));
  EXPECT_TRUE(guarded(kName, [] { return Status(); }));
}

TEST(Guarded, turnsWhateverIsThrownIntoOneLine) {
  EXPECT_EQ(guarded(kName, []() -> Status { throw std::bad_alloc(); }).error(),
            QStringLiteral("trace.sac: not enough memory"));
  EXPECT_EQ(guarded(kName, []() -> Status { throw std::runtime_error("odd\nthings"); }).error(),
            QStringLiteral("trace.sac: odd things"));
  EXPECT_EQ(guarded(kName, []() -> Result<int> { throw 7; }).error(),
            QStringLiteral("trace.sac: failed for an unknown reason"));
}

TEST(Guarded, namesNothingWhenThereIsNoName) {
  EXPECT_EQ(guarded(QString(), []() -> Status { throw std::bad_alloc(); }).error(),
            QStringLiteral("not enough memory"));
}

TEST(Guarded, containedBodiesSayInTheLogWhatTheyThrew) {
  const test::LogCatcher log;
  EXPECT_TRUE(contained("a click", [] {}));
  EXPECT_TRUE(test::LogCatcher::lines().isEmpty());
  EXPECT_FALSE(contained("a click", [] { throw std::bad_alloc(); }));
  EXPECT_FALSE(contained("a click", [] { throw std::runtime_error("odd\nthings"); }));
  EXPECT_FALSE(contained("a click", [] { throw 7; }));
  EXPECT_EQ(test::LogCatcher::lines(), QStringList({"xov: a click: not enough memory", "xov: a click: odd things",
                                                    "xov: a click: failed for an unknown reason"}));
}

[[noreturn]] void throwFromTheLog(QtMsgType, const QMessageLogContext&, const QString&) { throw 7; }

TEST(Guarded, nothingLeavesALogThatThrowsItself) {
  const QtMessageHandler former = qInstallMessageHandler(throwFromTheLog);
  const bool cameToItsEnd = contained("a click", [] { throw std::runtime_error("odd"); });
  qInstallMessageHandler(former);
  EXPECT_FALSE(cameToItsEnd);
}

} // namespace
} // namespace xov
