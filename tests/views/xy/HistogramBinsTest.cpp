#include "XOV_Graphics/views/xy/HistogramBins.h"

#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace xov {
namespace {

using testing::kInfinity;
using testing::kNan;

// Ten bins from 0 to 11 are 11 / (10 + 1) = 1 wide.
const HistogramBins kTen{10, 0, 11, 1};

TEST(HistogramBins, theWidthDividesTheRangeByOneMoreThanTheNumberOfBins) {
  EXPECT_EQ(HistogramBins::widthFor(10, 0, 11), 1);
  EXPECT_EQ(HistogramBins::widthFor(3, 0, 8), 2);
  EXPECT_EQ(HistogramBins::widthFor(0, 0, 8), 8);
}

TEST(HistogramBins, theWidthOfTheLargestNumberOfBinsDoesNotOverflow) {
  EXPECT_FLOAT_EQ(HistogramBins::widthFor(2147483647, 0, 2147483648.0f), 1);
  EXPECT_EQ(HistogramBins::widthFor(-1, 0, 1), kInfinity);
}

TEST(HistogramBins, theNumberOfBinsIsTheWholePartOfRangeByWidth) {
  EXPECT_EQ(HistogramBins::countFor(2, 0, 7), 3);
  EXPECT_EQ(HistogramBins::countFor(-2, 0, 7), -3);
  EXPECT_EQ(HistogramBins::countFor(1e-30f, 0, 1), 2147483647);
  EXPECT_EQ(HistogramBins::countFor(kNan, 0, 1), 0);
}

TEST(HistogramBins, aValueGoesToTheBinItLiesIn) {
  EXPECT_EQ(kTen.indexOf(0), 0);
  EXPECT_EQ(kTen.indexOf(0.5f), 0);
  EXPECT_EQ(kTen.indexOf(3.99f), 3);
  EXPECT_EQ(kTen.indexOf(4), 4);
}

TEST(HistogramBins, valuesOutsideTheRangeGoToTheFirstAndTheLastBin) {
  EXPECT_EQ(kTen.indexOf(-2), 0);
  EXPECT_EQ(kTen.indexOf(12), 9);
  EXPECT_EQ(kTen.indexOf(-kInfinity), 0);
  EXPECT_EQ(kTen.indexOf(kInfinity), 9);
}

// The formula gives 10 for 10.5 and 11 for 11: one and two past the last of ten bins.
TEST(HistogramBins, theHighestValuesOfTheRangeGoToTheLastBin) {
  EXPECT_EQ(kTen.indexOf(9.5f), 9);
  EXPECT_EQ(kTen.indexOf(10.5f), 9);
  EXPECT_EQ(kTen.indexOf(11), 9);
}

TEST(HistogramBins, aValueEqualToTheUpperEndIsNotAboveIt) {
  // With a width of 20 the formula puts 11 into bin 0; were it above the range, it would be in bin 9.
  const HistogramBins wide{10, 0, 11, 20};
  EXPECT_EQ(wide.indexOf(11), 0);
  EXPECT_EQ(wide.indexOf(11.1f), 9);
}

// Beyond 2^24 single precision holds even numbers only: from -2^24 to 1 it is 2^24 + 1, which becomes 2^24. And with
// 0.7 a little below seven times 0.1, both in single precision, the quotient is half a step from 7, and becomes 7.
TEST(HistogramBins, aBinIsFoundInSinglePrecision) {
  const HistogramBins huge{1 << 25, -16777216, 16777216, 1};
  EXPECT_EQ(huge.indexOf(1), 16777216);
  EXPECT_EQ(huge.indexOf(2), 16777218);
  const HistogramBins tenths{10, 0, 1, 0.1f};
  EXPECT_EQ(tenths.indexOf(0.7f), 7);
}

TEST(HistogramBins, aBinBeyondTheRangeOfIntegersIsTheLast) {
  const HistogramBins whole{2147483647, 0, 4e9f, 1};
  EXPECT_EQ(whole.indexOf(3e9f), 2147483646);
  const HistogramBins thin{4, 0, 1, 1e-30f};
  EXPECT_EQ(thin.indexOf(0.5f), 3);
  // The distance from the lower end is beyond single precision.
  const HistogramBins wide{4, -3e38f, 3e38f, 1};
  EXPECT_EQ(wide.indexOf(2e38f), 3);
}

TEST(HistogramBins, notANumberHasNoBin) { EXPECT_EQ(kTen.indexOf(kNan), std::nullopt); }

TEST(HistogramBins, anEmptyOrReversedRangeStillHasABinForEveryNumber) {
  const HistogramBins point{4, 5, 5, 0};
  EXPECT_EQ(point.indexOf(4), 0);
  EXPECT_EQ(point.indexOf(5), 0);
  EXPECT_EQ(point.indexOf(6), 3);
  const HistogramBins reversed{4, 5, 0, -1};
  for (const float value : {-1.0f, 0.0f, 3.0f, 5.0f, 9.0f}) {
    const auto bin = reversed.indexOf(value);
    ASSERT_TRUE(bin.has_value()) << value;
    EXPECT_TRUE(*bin >= 0 && *bin < 4) << value;
  }
}

TEST(HistogramBins, countAValueOnAnEdgeInTheBinThatBeginsThere) {
  std::vector<std::int32_t> counted(10);
  kTen.countInto(std::vector<float>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, counted);
  EXPECT_EQ(counted, std::vector<std::int32_t>(10, 1));
}

TEST(HistogramBins, countEveryValueInTheBinThatItLiesIn) {
  std::mt19937 random(5);
  const HistogramBins kinds[] = {kTen,
                                 {1, 0, 1, 0.5f},
                                 {3, -1, 2, 0.75f},
                                 {5000, -3, 3, 6.0f / 5001},
                                 {4, 5, 5, 0},
                                 {10, 0, 11, 20},
                                 {4, 5, 0, -1},
                                 {7, 0, kInfinity, kInfinity},
                                 {6, 0, 7, 2},
                                 {9, 0, kNan, 0.1f},
                                 {100, -1e30f, 1e30f, 1.98e28f}};
  for (const HistogramBins& bins : kinds) {
    SCOPED_TRACE(::testing::Message() << bins.count << " from " << bins.min << " to " << bins.max);
    std::normal_distribution<float> spread(0, 4);
    std::vector<float> values{kNan, kInfinity, -kInfinity, 0, -0.0f, bins.min, bins.max, 3e38f, -3e38f};
    for (int i = 0; i < 3000; ++i)
      values.push_back(i % 100 == 0 ? kNan : spread(random));
    std::vector<std::int32_t> expected(std::size_t(bins.count)), counted(expected.size(), 77);
    for (const float value : values) {
      if (const auto bin = bins.indexOf(value)) ++expected[std::size_t(*bin)];
    }
    bins.countInto(values, counted);
    EXPECT_EQ(counted, expected);
    bins.countInto({}, counted);
    EXPECT_EQ(counted, std::vector<std::int32_t>(expected.size()));
  }
}

TEST(HistogramBins, extremesLeaveOutWhatIsNotANumber) {
  const float values[] = {3, kNan, -7, 5};
  EXPECT_EQ(valueExtremes(values).min, -7);
  EXPECT_EQ(valueExtremes(values).max, 5);
  EXPECT_EQ(valueExtremes({}).min, kInfinity);
  EXPECT_EQ(valueExtremes({}).max, -kInfinity);
}

} // namespace
} // namespace xov
