#include "XOV_Graphics/views/base/ScaleBar.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov {
namespace {

TEST(ScaleBar, showsTheLargestRoundNumberThatFits) {
  struct Case {
    double pointsPerUnit;
    double value;
    double length;
    const char* text;
  };
  // Of 30 points: 30 units, so 20; 60, so 50; 10 and 20 exactly; 0.3, so 0.2; 3 million, so 2 million.
  for (const Case& expected :
       {Case{1, 20, 20, "20 nm"}, Case{0.5, 50, 25, "50 nm"}, Case{3, 10, 30, "10 nm"}, Case{1.5, 20, 30, "20 nm"},
        Case{100, 0.2, 20, "0.2 nm"}, Case{1e-5, 2e6, 20, "2e6 nm"}, Case{3e9, 1e-8, 30, "1e-8 nm"}}) {
    const auto bar = scaleBar(expected.pointsPerUnit, 30, QStringLiteral("nm"));
    ASSERT_TRUE(bar) << expected.text;
    EXPECT_DOUBLE_EQ(bar->value, expected.value);
    EXPECT_NEAR(bar->length, expected.length, 1e-6);
    EXPECT_EQ(bar->text, QLatin1String(expected.text));
  }
}

TEST(ScaleBar, needsNoUnit) { EXPECT_EQ(scaleBar(1, 30, QString())->text, QStringLiteral("20")); }

TEST(ScaleBar, isNoneWhereThereIsNoScale) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double scale : {0.0, -1.0, kInfinity, std::numeric_limits<double>::quiet_NaN(), 1e-308, 1e-320})
    EXPECT_FALSE(scaleBar(scale, 30, QString())) << scale;
  EXPECT_FALSE(scaleBar(1, 0, QString()));
  EXPECT_FALSE(scaleBar(1, -3, QString()));
  EXPECT_FALSE(scaleBar(1e307, 0.3, QString())); // 3e-308, of which 1e-308 has not all digits
}

} // namespace
} // namespace xov
