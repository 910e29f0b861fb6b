#include "apps/xov/inputs/Validators.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

std::string verdict(const Check& check, const std::string& text) { return check.wrong(text); }

TEST(Validators, acceptNumbersUpToBothBounds) {
  const auto validator = numberFromTo(1, 20000);
  for (const char* good : {"1", "20000", "1e3", "12.5"})
    EXPECT_EQ(verdict(validator, good), "") << good;
}

TEST(Validators, nameTheNumberAndItsBounds) {
  const auto validator = numberFromTo(1, 20000);
  for (const char* bad : {"0.99", "20000.1", "-5", "nan", "inf", "1e999", "abc", "", "1,5", "12pt"})
    EXPECT_EQ(verdict(validator, bad), "found '" + std::string(bad) + "', expected a number from 1 to 20000");
}

TEST(Validators, refuseWhatIsNotAboveZero) {
  const auto validator = numberAboveZero();
  EXPECT_EQ(verdict(validator, "1e-9"), "");
  for (const char* bad : {"0", "-0", "-1", "nan", "inf"})
    EXPECT_EQ(verdict(validator, bad), "found '" + std::string(bad) + "', expected a number above 0");
}

TEST(Validators, acceptWholeNumbersUpToBothBounds) {
  const auto validator = wholeNumberFromTo(1, 100);
  for (const char* good : {"1", "100", "+7"})
    EXPECT_EQ(verdict(validator, good), "") << good;
  for (const char* bad : {"0", "101", "-1", "2.5", "1e1", "99999999999", "nan", ""})
    EXPECT_EQ(verdict(validator, bad), "found '" + std::string(bad) + "', expected a whole number from 1 to 100");
}

} // namespace
} // namespace xov::cli
