#include "XOV_Graphics/views/image/SlownessCircles.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace xov;

// A degree of a sphere of 6371 km is 111.195 km: 1/8 s/km are 13.9 s/°.
TEST(CircleText, isAVelocityOrASlowness) {
  EXPECT_EQ(circleText(8, CircleLabelUnit::KilometresPerSecond), QStringLiteral("8 km/s"));
  EXPECT_EQ(circleText(8, CircleLabelUnit::SecondsPerKilometre), QStringLiteral("0.125 s/km"));
  EXPECT_EQ(circleText(8, CircleLabelUnit::SecondsPerDegree), QStringLiteral("13.9 s/°"));
  EXPECT_EQ(circleText(3, CircleLabelUnit::SecondsPerKilometre), QStringLiteral("0.333 s/km"));
  for (const double odd : {0.0, -1.0, std::nan(""), HUGE_VAL})
    EXPECT_EQ(circleText(odd, CircleLabelUnit::KilometresPerSecond), QString());
}

// Circles of 100 and 50 √2: middles 100/√2 = 70.7 and 50 from the centre along both axes.
TEST(CircleLabels, standOnTheDiagonalAwayFromThePeak) {
  const LabelledCircle circles[] = {{100, {20, 10}}, {50 * std::sqrt(2.0), {20, 10}}};
  const auto labels = placeCircleLabels(circles, {200, 200}, {250, 150}, {0, 0, 400, 400});
  ASSERT_EQ(labels.size(), 2U);
  EXPECT_EQ(labels[0].circle, 0U);
  EXPECT_NEAR(labels[1].box.center().x(), 150, 1e-9) << "the peak lies to the east";
  EXPECT_NEAR(labels[1].box.center().y(), 250, 1e-9) << "and to the south";
}

TEST(CircleLabels, leaveOutThoseThatCoverALargerOneOrTheMiddleOrLeaveTheFrame) {
  const LabelledCircle circles[] = {{500, {20, 10}}, {100, {20, 10}}, {95, {20, 10}},
                                    {4, {20, 10}},   {-5, {20, 10}},  {60, {}}};
  const auto labels = placeCircleLabels(circles, {200, 200}, {150, 150}, {0, 0, 400, 400});
  ASSERT_EQ(labels.size(), 1U);
  EXPECT_EQ(labels[0].circle, 1U);
}
