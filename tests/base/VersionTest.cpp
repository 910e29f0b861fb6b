#include "XOV_Graphics/base/Version.h"

#include <gtest/gtest.h>

#include <QString>

namespace xov {
namespace {

TEST(Version, theLibrarysIsTheHeadersWhenTheyAreOfOneBuild) {
  EXPECT_EQ(version(), QVersionNumber::fromString(QStringLiteral(XOV_VERSION_STR)));
  EXPECT_EQ(version(), QVersionNumber(XOV_VERSION_MAJOR, XOV_VERSION_MINOR, XOV_VERSION_PATCH));
}

TEST(Version, isOneNumberThatGrowsWithTheVersion) {
  EXPECT_EQ(XOV_VERSION_CHECK(1, 2, 3), 0x010203);
  EXPECT_LT(XOV_VERSION_CHECK(0, 9, 9), XOV_VERSION_CHECK(0, 10, 0));
  EXPECT_LT(XOV_VERSION_CHECK(0, 99, 99), XOV_VERSION_CHECK(1, 0, 0));
  EXPECT_EQ(XOV_VERSION >> 16, XOV_VERSION_MAJOR);
}

} // namespace
} // namespace xov
