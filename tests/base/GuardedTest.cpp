#include "XOV_Graphics/base/Guarded.h"

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

} // namespace
} // namespace xov
