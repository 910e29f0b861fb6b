#include "XOV_Graphics/graphics/LogTicks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov {
namespace {

// A letter takes six points along the axis, an exponent four.
double extentOf(const LogTick& tick) { return 6.0 * double(tick.text.size()) + 4.0 * double(tick.exponent.size()); }

LogTicks ticksOf(double lower, double upper, double length) {
  return logTicks(
      {.lower = std::log10(lower), .upper = std::log10(upper), .length = length, .gap = 6, .extent = extentOf});
}

std::vector<std::string> labelsOf(const LogTicks& ticks) {
  std::vector<std::string> labels;
  for (const LogTick& tick : ticks.major)
    labels.push_back(tick.exponent.empty() ? tick.text : tick.text + "^" + tick.exponent);
  return labels;
}

using Labels = std::vector<std::string>;

// 9 and 10 lie 0.046 decades apart: 9.2 points on 200, too close for labels of 6 and 12 points. 1, 2 and 5 lie 0.30
// and 0.40 decades apart, 60 points and more.
TEST(LogTicks, oneTwoFiveAreLabelledWhereAllDigitsWouldTouch) {
  const LogTicks ticks = ticksOf(1, 10, 200);
  EXPECT_EQ(labelsOf(ticks), (Labels{"1", "2", "5", "10"}));
  EXPECT_NEAR(ticks.major[1].log10, 0.30103, 1e-5);
  ASSERT_EQ(ticks.minor.size(), 6u); // 3 4 6 7 8 9
  EXPECT_NEAR(ticks.minor[0], 0.47712, 1e-5);
  EXPECT_NEAR(ticks.minor[5], 0.95424, 1e-5);
}

TEST(LogTicks, allDigitsAreLabelledWhereTheyHaveRoom) {
  EXPECT_EQ(labelsOf(ticksOf(1, 10, 600)), (Labels{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}));
  EXPECT_TRUE(ticksOf(1, 10, 600).minor.empty());
}

// Three decades on 150 points, 50 each: 0.30 of them are 15 points, less than 2 labels of 18 points. The closest
// minor ticks lie 0.046 · 50 = 2.3 points apart.
TEST(LogTicks, decadesAloneHaveTheDigitsBetweenAsMinorTicks) {
  const LogTicks ticks = ticksOf(0.1, 100, 150);
  EXPECT_EQ(labelsOf(ticks), (Labels{"0.1", "1", "10", "100"}));
  EXPECT_EQ(ticks.minor.size(), 3u * 8u);
}

// Digits would lie 0.046 · 40 = 1.8 points apart, 2 and 5 at least 0.30 · 40 = 12.
TEST(LogTicks, digitsThatWouldRunIntoEachOtherAreThinned) { EXPECT_EQ(ticksOf(0.1, 100, 120).minor.size(), 3u * 2u); }

TEST(LogTicks, labelsBeyondPlainNumbersArePowersOfTen) {
  const LogTicks ticks = ticksOf(1e-4, 10, 200);
  EXPECT_EQ(labelsOf(ticks), (Labels{"10^−4", "10^−3", "10^−2", "10^−1", "10^0", "10^1"}));
}

// 600 decades on 300 points, half a point each: the longest label, 12 + 4 · 6 points (a minus has three bytes), and
// the 6 between them take 84 decades.
TEST(LogTicks, absurdRangesHaveEveryHundredthDecade) {
  const LogTicks ticks = ticksOf(1e-300, 1e300, 300);
  ASSERT_EQ(ticks.major.size(), 7u);
  EXPECT_EQ(ticks.major.front(), (LogTick{-300, "10", "−300"}));
  EXPECT_EQ(ticks.major[1].log10, -200);
  EXPECT_EQ(ticks.major.back(), (LogTick{300, "10", "300"}));
}

TEST(LogTicks, aFewDigitsAreEnoughOfAnAxis) {
  EXPECT_EQ(labelsOf(ticksOf(2.5, 6, 300)), (Labels{"3", "4", "5", "6"}));
}

// 3 and 4 alone make no axis. Steps of 0.1 on 400 points: the closest, from 3.9 to 4.0, lie log10(4/3.9) / log10(4.1
// / 2.9) of them, 29 points, apart.
TEST(LogTicks, shortRangesHaveRoundStepsOfTheirOwn) {
  const LogTicks ticks = ticksOf(2.9, 4.1, 400);
  EXPECT_EQ(labelsOf(ticks),
            (Labels{"2.9", "3.0", "3.1", "3.2", "3.3", "3.4", "3.5", "3.6", "3.7", "3.8", "3.9", "4.0", "4.1"}));
  EXPECT_NEAR(ticks.major[1].log10, std::log10(3.0), 1e-12);
}

TEST(LogTicks, stepsOfShortRangesKeepTheirPower) {
  EXPECT_EQ(labelsOf(ticksOf(3.2e-7, 3.6e-7, 200)), (Labels{"3.2·10^−7", "3.4·10^−7", "3.6·10^−7"}));
  EXPECT_EQ(labelsOf(ticksOf(1300, 1500, 100)), (Labels{"1300", "1400", "1500"}));
}

TEST(LogTicks, limitsMayStandInEitherOrder) {
  EXPECT_EQ(labelsOf(ticksOf(10, 1, 200)), labelsOf(ticksOf(1, 10, 200)));
}

TEST(LogTicks, aTickOnALimitSurvivesRounding) {
  const LogTicks ticks = logTicks({.lower = 1e-9, .upper = 1 - 1e-9, .length = 200, .gap = 6, .extent = extentOf});
  EXPECT_EQ(labelsOf(ticks), (Labels{"1", "2", "5", "10"}));
}

TEST(LogTicks, whatIsNoAxisHasNoTicks) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const struct {
    double lower, upper, length;
  } absurd[] = {{0, 0, 100},
                {kNan, 1, 100},
                {0, kNan, 100},
                {-kInfinity, 1, 100},
                {0, kInfinity, 100},
                {0, 1e300, 100},
                {0, 1, 0},
                {0, 1, -5},
                {0, 1, kNan},
                {0, 1, kInfinity},
                {2.5, std::nextafter(2.5, 3), 100}};
  for (const auto& axis : absurd) {
    const LogTicks ticks =
        logTicks({.lower = axis.lower, .upper = axis.upper, .length = axis.length, .gap = 6, .extent = extentOf});
    EXPECT_TRUE(ticks.major.empty() && ticks.minor.empty()) << axis.lower << " to " << axis.upper;
  }
}

// With labels of a point: 2 and 1 lie 0.301 decades apart, 9 and 10 only 0.046.
TEST(LogTicks, decadesHaveFewerMinorTicksTheCloserTheyLie) {
  const auto ticks = [](double pointsPerDecade) {
    return logTicks({.lower = 0, .upper = 4, .length = 4 * pointsPerDecade, .gap = 3, .extent = [](const LogTick&) {
                       return 1.0;
                     }});
  };
  EXPECT_EQ(ticks(8).major.size(), 5U);
  EXPECT_EQ(ticks(8).minor.size(), 8U); // 2 and 5 of each: 2.4 points
  EXPECT_EQ(ticks(5).major.size(), 5U);
  EXPECT_TRUE(ticks(5).minor.empty()); // 1.5 points
}

// Labels as wide as the axis stand alone or not at all.
TEST(LogTicks, shortRangesHaveASingleLabelOrNoneWhereTwoWouldTouch) {
  const auto ticks = [](double lower, double upper) {
    return logTicks(
        {.lower = lower, .upper = upper, .length = 100, .gap = 6, .extent = [](const LogTick&) { return 1000.0; }});
  };
  // From 1.26 to 1.58: three multiples of 0.1, but only one of 0.2.
  EXPECT_EQ(labelsOf(ticks(0.1, 0.2)), (Labels{"1.4"}));
  // From 1.510 to 1.545: two multiples of 0.02, none of 0.05 and above.
  EXPECT_EQ(labelsOf(ticks(0.1790, 0.1889)), Labels());
}

} // namespace
} // namespace xov
