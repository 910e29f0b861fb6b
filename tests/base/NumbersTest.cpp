#include "XOV_Graphics/base/Numbers.h"

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

TEST(Numbers, isBroughtToItsWidthWithBlanksInFront) {
  EXPECT_EQ(fixedText(2.5f, 6, 1, Sign::WhenNegative), "   2.5");
}

TEST(Numbers, hasTheBlanksBehindItWhenTheWidthIsNegative) {
  EXPECT_EQ(fixedText(2.5f, -6, 1, Sign::WhenNegative), "2.5   ");
}

TEST(Numbers, isNeverCutToItsWidth) { EXPECT_EQ(fixedText(-12345, 2, 0, Sign::WhenNegative), "-12345"); }

TEST(Numbers, countsTheSignAsPartOfTheWidth) {
  EXPECT_EQ(fixedText(7, 3, 0, Sign::Always), " +7");
  EXPECT_EQ(fixedText(7, 3, 0, Sign::BlankWhenPositive), "  7");
  EXPECT_EQ(fixedText(7, 1, 0, Sign::BlankWhenPositive), " 7");
}

TEST(Numbers, keepsTheSignOfMinusZero) {
  EXPECT_EQ(fixedText(-0.0f, 1, 0, Sign::WhenNegative), "-0");
  EXPECT_EQ(fixedText(-0.0f, 1, 0, Sign::BlankWhenPositive), "-0");
  EXPECT_EQ(fixedText(-0.2f, 1, 0, Sign::WhenNegative), "-0");
}

TEST(Numbers, roundsTiesToTheEvenDigit) {
  EXPECT_EQ(fixedText(2.5f, 0, 0, Sign::WhenNegative), "2");
  EXPECT_EQ(fixedText(7.5f, 0, 0, Sign::WhenNegative), "8");
  EXPECT_EQ(fixedText(0.125f, 0, 2, Sign::WhenNegative), "0.12");
}

TEST(Numbers, hasSixDecimalsWhenTheirNumberIsNegative) {
  EXPECT_EQ(fixedText(1, 0, -3, Sign::Always), "+1.000000");
  EXPECT_EQ(exponentText(1, -1, Sign::Always), "+1.000000e+00");
}

TEST(Numbers, exponentHasTwoDigitsAndASign) {
  EXPECT_EQ(exponentText(0, 2, Sign::Always), "+0.00e+00");
  EXPECT_EQ(exponentText(-1.5e-30f, 1, Sign::Always), "-1.5e-30");
}

TEST(Numbers, namesInfinityAndNan) {
  const float infinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(exponentText(infinity, 2, Sign::Always), "+inf");
  EXPECT_EQ(exponentText(-infinity, 2, Sign::Always), "-inf");
  EXPECT_EQ(fixedText(std::numeric_limits<float>::quiet_NaN(), 0, 2, Sign::Always), "+nan");
}

TEST(Numbers, suffixHasASignAndAtLeastTwoDigits) {
  EXPECT_EQ(powerOfTenSuffix(3), " x 10^+03");
  EXPECT_EQ(powerOfTenSuffix(-12), " x 10^-12");
  EXPECT_EQ(powerOfTenSuffix(0), " x 10^+00");
}

TEST(Numbers, readsAsPrintfWouldWriteIt) {
  constexpr std::uint32_t kSeed = 7;
  std::mt19937 random(kSeed);
  const std::string locale = std::setlocale(LC_NUMERIC, nullptr);
  std::setlocale(LC_NUMERIC, "C");
  for (int i = 0; i < 20'000; ++i) {
    const auto value = std::bit_cast<float>(std::uint32_t(random()));
    if (!std::isfinite(value)) continue;
    const int width = int(random() % 41) - 20;
    const int decimals = int(random() % 50) - 2;
    const auto where = ::testing::Message()
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

TEST(Numbers, appendSixDecimalsAsPrintfDoes) {
  std::string text = "x ";
  appendFixed(text, 0.1F);
  EXPECT_EQ(text, "x 0.100000");
  QByteArray bytes;
  appendFixed(bytes, -std::numeric_limits<float>::max());
  EXPECT_EQ(bytes, "-340282346638528859811704183484516925440.000000");
}

TEST(Numbers, areReadWholeOrNotAtAll) {
  EXPECT_EQ(toNumber<double>("-12.5e1"), -125.0);
  EXPECT_EQ(toNumber<float>(".5"), 0.5F);
  EXPECT_EQ(toNumber<std::int32_t>("-7"), -7);
  for (const char* text : {"", " 1", "1 ", "1,5", "1x", "x", "+", "-", "0x10", "1e", "--1"}) {
    EXPECT_FALSE(toNumber<double>(text)) << text;
    EXPECT_FALSE(toNumber<float>(text)) << text;
    EXPECT_FALSE(toNumber<std::int32_t>(text)) << text;
  }
  EXPECT_FALSE(toNumber<std::int32_t>("1.5"));
}

TEST(Numbers, mayHaveOnePlus) {
  EXPECT_EQ(toNumber<double>("+5"), 5.0);
  EXPECT_EQ(toNumber<std::int32_t>("+5"), 5);
  for (const char* text : {"++5", "+-5", "-+5", "+ 5"})
    EXPECT_FALSE(toNumber<double>(text)) << text;
}

TEST(Numbers, beyondTheirTypeAreRefusedOrTheNearest) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_FALSE(toNumber<float>("1e39"));
  EXPECT_FALSE(toNumber<double>("-1e400"));
  EXPECT_FALSE(toNumber<double>("1e-400"));
  EXPECT_FALSE(toNumber<std::int32_t>("2147483648"));
  EXPECT_FALSE(toNumber<std::int32_t>("2147483648", OutOfRange::Nearest));
  EXPECT_EQ(toNumber<float>("-1e39", OutOfRange::Nearest), -kInfinity);
  EXPECT_EQ(toNumber<float>("1e400", OutOfRange::Nearest), kInfinity);
  EXPECT_EQ(toNumber<double>("-1e400", OutOfRange::Nearest), -double(kInfinity));
  EXPECT_EQ(toNumber<double>("1e-400", OutOfRange::Nearest), 0.0);
  // Too small for single precision only.
  EXPECT_EQ(toNumber<float>("1e-60"), 0.0F);
  EXPECT_FALSE(toNumber<float>("1e-400"));
}

TEST(Numbers, mayBeInfiniteOrNone) {
  EXPECT_EQ(toNumber<double>("-inf"), -std::numeric_limits<double>::infinity());
  ASSERT_TRUE(toNumber<float>("nan"));
  EXPECT_TRUE(std::isnan(*toNumber<float>("nan")));
}

TEST(Numbers, areTakenOffTheFront) {
  QByteArrayView rest = "12.5km";
  EXPECT_EQ(takeNumber<float>(rest), 12.5F);
  EXPECT_EQ(rest.toByteArray(), "km");
  EXPECT_FALSE(takeNumber<float>(rest));
  EXPECT_EQ(rest.toByteArray(), "km");
  rest = "3.7";
  EXPECT_EQ(takeNumber<std::int32_t>(rest), 3);
  EXPECT_EQ(rest.toByteArray(), ".7");
  rest = "1e400 2";
  EXPECT_FALSE(takeNumber<double>(rest));
  EXPECT_EQ(rest.toByteArray(), "1e400 2");
  rest = " \t\r\n x ";
  skipSpace(rest);
  EXPECT_EQ(rest.toByteArray(), "x ");
}

TEST(Numbers, areInfiniteInSinglePrecisionWhereTheyAreBeyondIt) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(toSinglePrecision(0.1), 0.1F);
  EXPECT_EQ(toSinglePrecision(3.5e38), kInfinity);
  EXPECT_EQ(toSinglePrecision(-1e300), -kInfinity);
  EXPECT_TRUE(std::isnan(toSinglePrecision(std::nan(""))));
}

TEST(Numbers, haveNineDigitsInErrors) { EXPECT_EQ(numberText(1.0 / 3), QStringLiteral("0.333333333")); }

} // namespace
} // namespace xov
