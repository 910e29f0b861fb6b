#include "XOV_Graphics/base/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>

namespace xov {
namespace {

std::string printed(const char* format, int width, int decimals, float value) {
  char text[256];
  std::snprintf(text, sizeof text, format, width, decimals, double(value));
  return text;
}

TEST(NumberText, isBroughtToItsWidthWithBlanksInFront) {
  EXPECT_EQ(fixedText(2.5f, 6, 1, Sign::WhenNegative), "   2.5");
}

TEST(NumberText, hasTheBlanksBehindItWhenTheWidthIsNegative) {
  EXPECT_EQ(fixedText(2.5f, -6, 1, Sign::WhenNegative), "2.5   ");
}

TEST(NumberText, isNeverCutToItsWidth) { EXPECT_EQ(fixedText(-12345, 2, 0, Sign::WhenNegative), "-12345"); }

TEST(NumberText, countsTheSignAsPartOfTheWidth) {
  EXPECT_EQ(fixedText(7, 3, 0, Sign::Always), " +7");
  EXPECT_EQ(fixedText(7, 3, 0, Sign::BlankWhenPositive), "  7");
  EXPECT_EQ(fixedText(7, 1, 0, Sign::BlankWhenPositive), " 7");
}

TEST(NumberText, keepsTheSignOfMinusZero) {
  EXPECT_EQ(fixedText(-0.0f, 1, 0, Sign::WhenNegative), "-0");
  EXPECT_EQ(fixedText(-0.0f, 1, 0, Sign::BlankWhenPositive), "-0");
  EXPECT_EQ(fixedText(-0.2f, 1, 0, Sign::WhenNegative), "-0");
}

TEST(NumberText, roundsTiesToTheEvenDigit) {
  EXPECT_EQ(fixedText(2.5f, 0, 0, Sign::WhenNegative), "2");
  EXPECT_EQ(fixedText(7.5f, 0, 0, Sign::WhenNegative), "8");
  EXPECT_EQ(fixedText(0.125f, 0, 2, Sign::WhenNegative), "0.12");
}

TEST(NumberText, hasSixDecimalsWhenTheirNumberIsNegative) {
  EXPECT_EQ(fixedText(1, 0, -3, Sign::Always), "+1.000000");
  EXPECT_EQ(exponentText(1, -1, Sign::Always), "+1.000000e+00");
}

TEST(NumberText, exponentHasTwoDigitsAndASign) {
  EXPECT_EQ(exponentText(0, 2, Sign::Always), "+0.00e+00");
  EXPECT_EQ(exponentText(-1.5e-30f, 1, Sign::Always), "-1.5e-30");
}

TEST(NumberText, namesInfinityAndNan) {
  const float infinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(exponentText(infinity, 2, Sign::Always), "+inf");
  EXPECT_EQ(exponentText(-infinity, 2, Sign::Always), "-inf");
  EXPECT_EQ(fixedText(std::numeric_limits<float>::quiet_NaN(), 0, 2, Sign::Always), "+nan");
}

TEST(NumberText, suffixHasASignAndAtLeastTwoDigits) {
  EXPECT_EQ(powerOfTenSuffix(3), " x 10^+03");
  EXPECT_EQ(powerOfTenSuffix(-12), " x 10^-12");
  EXPECT_EQ(powerOfTenSuffix(0), " x 10^+00");
}

TEST(NumberText, readsAsPrintfWouldWriteIt) {
  constexpr std::uint32_t kSeed = 7;
  std::mt19937 random(kSeed);
  const std::string locale = std::setlocale(LC_NUMERIC, nullptr);
  std::setlocale(LC_NUMERIC, "C");
  for (int i = 0; i < 20'000; ++i) {
    const auto value = std::bit_cast<float>(std::uint32_t(random()));
    if (!std::isfinite(value)) continue;
    const int width = int(random() % 41) - 20;
    const int decimals = int(random() % 50) - 2;
    const auto where = testing::Message()
                       << "seed " << kSeed << ", number " << i << ", bits " << std::bit_cast<std::uint32_t>(value);
    ASSERT_EQ(fixedText(value, width, decimals, Sign::WhenNegative), printed("%*.*f", width, decimals, value))
        << where;
    ASSERT_EQ(fixedText(value, width, decimals, Sign::BlankWhenPositive), printed("% *.*f", width, decimals, value))
        << where;
    ASSERT_EQ(fixedText(value, width, decimals, Sign::Always), printed("%+*.*f", width, decimals, value)) << where;
    ASSERT_EQ(exponentText(value, decimals, Sign::Always), printed("%+*.*e", 0, decimals, value)) << where;
  }
  std::setlocale(LC_NUMERIC, locale.c_str());
}

} // namespace
} // namespace xov
