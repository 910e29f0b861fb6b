#include "XOV_Graphics/views/base/LabelSpread.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace xov {
namespace {

using Places = std::vector<std::optional<double>>;
constexpr std::optional<double> kOut;

TEST(LabelSpread, labelsThatHaveRoomStandWhereTheyWish) {
  EXPECT_EQ(spreadLabels(std::vector{0.0, 10.0, 30.0}, 10, 5), (Places{0.0, 10.0, 30.0}));
  EXPECT_TRUE(spreadLabels({}, 10, 5).empty());
}

TEST(LabelSpread, withoutReachTheLaterOneIsLeftOut) {
  EXPECT_EQ(spreadLabels(std::vector{0.0, 4.0, 8.0, 12.0, 16.0, 20.0}, 10, 0),
            (Places{0.0, kOut, kOut, 12.0, kOut, kOut}));
}

// The second stands as it wishes, the first gives way as far as it must: 20 - 10.
TEST(LabelSpread, labelsMoveApart) {
  EXPECT_EQ(spreadLabels(std::vector{14.0, 20.0}, 10, 5), (Places{10.0, 20.0}));
  EXPECT_EQ(spreadLabels(std::vector{20.0, 14.0}, 10, 5), (Places{20.0, 10.0})) << "whatever their order";
}

// Within 5 of 14 the first begins at 9 at the earliest, so that the second begins at 19, and the third at 21 at the
// latest does not fit behind it.
TEST(LabelSpread, whatFindsNoRoomWithinReachIsLeftOut) {
  EXPECT_EQ(spreadLabels(std::vector{14.0, 15.0, 16.0}, 10, 5), (Places{9.0, 19.0, kOut}));
}

TEST(LabelSpread, ofOneWishTheEarlierOnesComeFirst) {
  EXPECT_EQ(spreadLabels(std::vector{50.0, 50.0, 50.0}, 10, 5), (Places{45.0, 55.0, kOut}));
  EXPECT_EQ(spreadLabels(std::vector{50.0, 50.0}, 10, 0), (Places{50.0, kOut}));
}

// Rounding may move a label by as much.
TEST(LabelSpread, labelsGiveWayByAMillionthOfAPointBeyondTheirReach) {
  EXPECT_EQ(spreadLabels(std::vector{0.0, 0.0}, 1e-6, 0), (Places{0.0, 1e-6}));
  EXPECT_EQ(spreadLabels(std::vector{0.0, 0.0}, 2e-6, 0), (Places{0.0, kOut}));
}

TEST(LabelSpread, oddNumbersLeaveLabelsOutOrWhereTheyAre) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(spreadLabels(std::vector{kNan, 1.0, kInfinity}, 10, 5), (Places{kOut, 1.0, kOut}));
  EXPECT_EQ(spreadLabels(std::vector{1.0, 1.0}, 0, 5), (Places{1.0, 1.0}));
  EXPECT_EQ(spreadLabels(std::vector{1.0, 1.0}, -3, -5), (Places{1.0, 1.0}));
}

TEST(LabelSpread, noTwoOverlapAndNoneIsOutOfReach) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> uniform(0, 400);
  std::vector<double> wishes(100);
  for (double& wish : wishes)
    wish = uniform(random);
  const Places places = spreadLabels(wishes, 11.5, 6);
  std::vector<double> kept;
  for (std::size_t i = 0; i < wishes.size(); ++i) {
    if (!places[i]) continue;
    EXPECT_LE(std::abs(*places[i] - wishes[i]), 6 + 1e-5);
    kept.push_back(*places[i]);
  }
  std::ranges::sort(kept);
  for (std::size_t i = 1; i < kept.size(); ++i)
    EXPECT_GE(kept[i] - kept[i - 1], 11.5 - 1e-5);
  EXPECT_GT(kept.size(), 25U) << "of at most 36";
}

TEST(LabelField, isTakenOnce) {
  LabelField room;
  EXPECT_TRUE(room.take({0, 0, 50, 10}));
  EXPECT_FALSE(room.take({49, 9, 50, 10})) << "a corner";
  EXPECT_FALSE(room.take({10, 2, 5, 5})) << "inside";
  EXPECT_FALSE(room.take({-200, -200, 1000, 1000})) << "around";
  EXPECT_TRUE(room.take({50, 0, 50, 10})) << "beside";
  EXPECT_TRUE(room.take({0, 10, 50, 10})) << "on top";
  EXPECT_FALSE(room.take({-90, -5, 95, 10})) << "from across a border of the grid";
}

TEST(LabelField, boxesWithoutAnAreaAndOnesThatAreNowhereTakeNone) {
  LabelField room;
  EXPECT_TRUE(room.take({0, 0, 0, 10}));
  EXPECT_TRUE(room.take({-5, 0, 10, 10}));
  EXPECT_FALSE(room.take({std::numeric_limits<double>::quiet_NaN(), 0, 10, 10}));
  EXPECT_FALSE(room.take({1e300, 0, 10, 10}));
}

// Against comparing each with all that were taken before.
TEST(LabelField, knowsAllThatWereTaken) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> place(-400, 400), width(1, 150), height(1, 40);
  LabelField room;
  std::vector<QRectF> taken;
  int refused = 0;
  for (int i = 0; i < 500; ++i) {
    const QRectF box(place(random), place(random), width(random), height(random));
    const bool fits = std::ranges::none_of(taken, [&](const QRectF& other) { return other.intersects(box); });
    EXPECT_EQ(room.take(box), fits) << i;
    if (fits)
      taken.push_back(box);
    else
      ++refused;
  }
  EXPECT_GT(refused, 100);
}

} // namespace
} // namespace xov
