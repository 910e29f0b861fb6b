#include "XOV_Graphics/base/Headings.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

TEST(Headings, findsAColumnWhateverItsCase) {
  const QStringList headings = {"Time", "Latitude", "LONGITUDE"};
  EXPECT_EQ(headingIndex(headings, "time"), 0);
  EXPECT_EQ(headingIndex(headings, "LATITUDE"), 1);
  EXPECT_EQ(headingIndex(headings, "Longitude"), 2);
  EXPECT_EQ(headingIndex(headings, "depth"), -1);
  EXPECT_EQ(headingIndex({}, "time"), -1);
}

TEST(Headings, tellsHeadingsApartThatDifferInCaseOnly) {
  const QStringList headings = {"mb", "MB", "Mb"};
  EXPECT_EQ(headingIndex(headings, "Mb"), 2);
  EXPECT_EQ(headingIndex(headings, "MB"), 1);
  EXPECT_EQ(headingIndex(headings, "mB"), 0);
}

} // namespace
} // namespace xov
