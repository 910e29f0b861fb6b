#include "XOV_Graphics/views/timeline/DrumRows.h"

#include <gtest/gtest.h>

namespace xov::testing {
namespace {

// A day from 05:00, which is the axis's zero; 24 rows of an hour.
constexpr DrumRows kHourRows{24, {0, 24 * 3600.0}, 3600, -5 * 3600.0};

TEST(DrumRows, aPageAroundAStretchBeginsNoLaterAndHasAllRows) {
  // 10:15 to 10:45: 24 rows of a minute are too few; of two minutes, 10:15 lies in the middle of one that begins at
  // 10:14, and 24 of them last until 11:02.
  const PlotSpan page = kHourRows.pageAround({18900, 20700});
  EXPECT_EQ(page.lower, 18900 - 60);
  EXPECT_EQ(page.upper, 18900 - 60 + 24 * 120);
}

TEST(DrumRows, aPageAroundAStretchThatIsOneIsTheStretch) {
  const PlotSpan page = kHourRows.pageAround({18900, 18900 + 24 * 60});
  EXPECT_EQ(page.lower, 18900);
  EXPECT_EQ(page.upper, 18900 + 24 * 60);
}

TEST(DrumRows, pagesBeginMultiplesOfTheirRowsAfterMidnightButTheHostsAfterItsBegin) {
  // From 05:20 on, the host chose rows of 25 minutes.
  const DrumRows rows{24, {1200, 1200 + 24 * 1500.0}, 1500, -5 * 3600.0};
  EXPECT_EQ(rows.pageNear(1200 + 1400, 1500).lower, 1200 + 1500); // 05:45
  EXPECT_EQ(rows.pageNear(1200 + 1400, 1800).lower, 1800);        // 05:43:20 is nearest to 05:30
  EXPECT_EQ(rows.pageNear(1200 + 1400, 1800).upper, 25 * 1800);
}

TEST(DrumRows, theNearestLengthIsThatOfTheLeastRatio) {
  const DrumRows rows{24, {1200, 1200 + 24 * 1500.0}, 1500, -5 * 3600.0};
  EXPECT_EQ(rows.nearestSeconds(1340), 1200); // 1340 / 1200 is 1.117, 1500 / 1340 is 1.119
  EXPECT_EQ(rows.nearestSeconds(1345), 1500); // 1.121 and 1.115
  EXPECT_EQ(rows.nearestSeconds(1), 60);
  EXPECT_EQ(rows.nearestSeconds(1e9), 86400);
  EXPECT_EQ(rows.nearestSeconds(-1), 60);
}

} // namespace
} // namespace xov::testing
