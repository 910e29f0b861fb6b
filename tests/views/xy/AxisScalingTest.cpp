#include "XOV_Graphics/views/xy/AxisScaling.h"

#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

using testing::kInfinity;
using testing::kNan;

const QString kLabel = QStringLiteral("X");

TEST(AxisScaling, rangesFromAHundredthToAHundredStayAsTheyAre) {
  for (const float range : {0.01f, 0.5f, 1.0f, 50.0f, 100.0f}) {
    EXPECT_EQ(scaledAxis(0, range, kLabel), (ScaledAxis{0, range, kLabel})) << range;
  }
}

// log10(50000) = 4.7, floor(2 - 4.7) = -3.
TEST(AxisScaling, aRangeOf50000RunsTo50AndIsLabelledInThousands) {
  EXPECT_EQ(scaledAxis(0, 50000, kLabel), (ScaledAxis{0, 50, QStringLiteral("X (/ 10^3)")}));
}

// log10(0.001) = -3, ceil(3) = 3.
TEST(AxisScaling, aRangeOfAThousandthRunsTo1AndIsLabelledInThousandths) {
  EXPECT_EQ(scaledAxis(0, 0.001f, kLabel), (ScaledAxis{0, 1, QStringLiteral("X (/ 10^-3)")}));
}

// log10(12345) = 4.09, floor(2 - 4.09) = -3.
TEST(AxisScaling, aRangeOf12345IsDividedByAThousand) {
  const ScaledAxis axis = scaledAxis(0, 12345, kLabel);
  EXPECT_FLOAT_EQ(axis.upper, 12.345f);
  EXPECT_EQ(axis.label, QStringLiteral("X (/ 10^3)"));
}

// log10(150) = 2.18, floor(2 - 2.18) = -1; log10(0.002) = -2.7, ceil(2.7) = 3.
TEST(AxisScaling, justBeyondTheLimitsTheSmallestPowersAreTaken) {
  EXPECT_EQ(scaledAxis(0, 150, kLabel).label, QStringLiteral("X (/ 10^1)"));
  EXPECT_EQ(scaledAxis(0, 0.002f, kLabel).label, QStringLiteral("X (/ 10^-3)"));
}

TEST(AxisScaling, bothEndsAreScaledByThePowerOfTheRange) {
  const ScaledAxis axis = scaledAxis(10000, 60000, kLabel);
  EXPECT_FLOAT_EQ(axis.lower, 10);
  EXPECT_FLOAT_EQ(axis.upper, 60);
}

TEST(AxisScaling, aLabelWithPercentSignsIsKeptLiterally) {
  EXPECT_EQ(scaledAxis(0, 50000, QStringLiteral("%2 %1 %@")).label, QStringLiteral("%2 %1 %@ (/ 10^3)"));
}

TEST(AxisScaling, rangesWithoutALogarithmStayAsTheyAre) {
  EXPECT_EQ(scaledAxis(5, 5, kLabel), (ScaledAxis{5, 5, kLabel}));
  EXPECT_EQ(scaledAxis(5, 1, kLabel), (ScaledAxis{5, 1, kLabel}));
  EXPECT_EQ(scaledAxis(0, kInfinity, kLabel), (ScaledAxis{0, kInfinity, kLabel}));
  EXPECT_EQ(scaledAxis(0, kNan, kLabel).label, kLabel);
}

TEST(AxisScaling, theWidestRangesHaveAPowerToo) {
  // log10(3e38) = 38.5, floor(2 - 38.5) = -37; log10(1e-44) = -44.0 and a little less, so 44.
  EXPECT_EQ(scaledAxis(0, 3e38f, kLabel).label, QStringLiteral("X (/ 10^37)"));
  EXPECT_FLOAT_EQ(scaledAxis(0, 3e38f, kLabel).upper, 30);
  EXPECT_TRUE(scaledAxis(0, std::numeric_limits<float>::denorm_min(), kLabel).label.startsWith("X (/ 10^-4"));
}

} // namespace
} // namespace xov
