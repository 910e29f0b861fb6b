#include "XOV_Graphics/base/Result.h"

#include <gtest/gtest.h>

#include <memory>

namespace xov {
namespace {

const QString kFault = QStringLiteral("trace.sac: npts at byte 316: found -12345, expected 0 or more");

TEST(Result, holdsAValue) {
  const Result<int> result = 5;
  EXPECT_TRUE(result);
  EXPECT_TRUE(result.hasValue());
  EXPECT_EQ(result.value(), 5);
  EXPECT_EQ(*result, 5);
  EXPECT_TRUE(result.error().isEmpty());
}

TEST(Result, withoutAValueHasItsErrorAndADefault) {
  const Result<int> result = Error{kFault};
  EXPECT_FALSE(result);
  EXPECT_FALSE(result.hasValue());
  EXPECT_EQ(result.error(), kFault);
  EXPECT_EQ(result.value(), 0);
}

TEST(Result, countsAsAFailureEvenWithAnEmptyError) { EXPECT_FALSE(Result<int>(Error{QString()})); }

TEST(Result, givesAwayWhatCannotBeCopied) {
  Result<std::unique_ptr<int>> result = std::make_unique<int>(3);
  const std::unique_ptr<int> value = std::move(result).value();
  ASSERT_TRUE(value);
  EXPECT_EQ(*value, 3);
}

TEST(Status, isSuccessUnlessItHasAnError) {
  EXPECT_TRUE(Status());
  EXPECT_TRUE(Status().error().isEmpty());
  const Status failed = Error{kFault};
  EXPECT_FALSE(failed);
  EXPECT_EQ(failed.error(), kFault);
}

TEST(Status, isToldToAHostAsABoolAndALine) {
  QString error = QStringLiteral("former");
  EXPECT_TRUE(succeeded(Status(), &error));
  EXPECT_EQ(error, QStringLiteral("former"));
  EXPECT_FALSE(succeeded(Error{kFault}, &error));
  EXPECT_EQ(error, kFault);
  EXPECT_FALSE(succeeded(Error{kFault}, nullptr));
}

} // namespace
} // namespace xov
