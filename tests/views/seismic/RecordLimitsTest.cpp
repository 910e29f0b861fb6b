#include "XOV_Graphics/views/seismic/RecordLimits.h"

#include "SeisDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

std::shared_ptr<FakeRecord> withLimits(float begin, float end, float lowest, float highest) {
  auto record = std::make_shared<FakeRecord>();
  record->beginSeconds = begin;
  record->endSeconds = end;
  record->lowest = lowest;
  record->highest = highest;
  return record;
}

RecordLimits limitsOf(const std::vector<std::shared_ptr<FakeRecord>>& records, float minYRange = -12345) {
  const auto found = recordLimits(*recordsOf(records), minYRange);
  EXPECT_TRUE(found.has_value());
  return found.value_or(RecordLimits());
}

TEST(RecordLimits, takesEarliestBeginLatestEndAndBothExtremes) {
  const RecordLimits limits = limitsOf({withLimits(5, 20, -10, 30), withLimits(-3, 12, -40, 10)});
  EXPECT_EQ(limits.tmin, -3);
  EXPECT_EQ(limits.tmax, 20);
  // The range is 70, and 0.05 of it 3.5.
  EXPECT_EQ(limits.amin, -43.5f);
  EXPECT_EQ(limits.amax, 33.5f);
}

TEST(RecordLimits, countsTheRangeInWholeUnitsSoThatBelowOneThereIsNoMargin) {
  const RecordLimits small = limitsOf({withLimits(0, 1, -0.4f, 0.4f)});
  EXPECT_EQ(small.amin, -0.4f);
  EXPECT_EQ(small.amax, 0.4f);
  // 2.9 counts as 2.
  const RecordLimits truncated = limitsOf({withLimits(0, 1, 0, 2.9f)});
  EXPECT_EQ(truncated.amin, -0.1f);
  EXPECT_EQ(truncated.amax, 3.0f);
}

TEST(RecordLimits, widensToTheMinimumRangeOnlyWhenBothExtremesAreSmaller) {
  const RecordLimits widened = limitsOf({withLimits(0, 1, -0.4f, 0.4f)}, 1);
  EXPECT_EQ(widened.amin, -1);
  EXPECT_EQ(widened.amax, 1);
  const RecordLimits highest = limitsOf({withLimits(0, 1, -0.4f, 1.0f)}, 1);
  EXPECT_EQ(highest.amin, -0.4f - 0.05f);
  EXPECT_EQ(highest.amax, 1.05f);
  const RecordLimits lowest = limitsOf({withLimits(0, 1, -1.0f, 0.4f)}, 1);
  EXPECT_EQ(lowest.amin, -1.05f);
  EXPECT_EQ(lowest.amax, 0.4f + 0.05f);
}

TEST(RecordLimits, addsTheMarginOfTheDataToAWidenedRange) {
  // The range 40 counts, not the widened 200: margin 2.
  const RecordLimits limits = limitsOf({withLimits(0, 1, -20, 20)}, 100);
  EXPECT_EQ(limits.amin, -102);
  EXPECT_EQ(limits.amax, 102);
}

TEST(RecordLimits, leavesTheAmplitudesAloneWhileTheMinimumRangeIsUnset) {
  const RecordLimits limits = limitsOf({withLimits(0, 1, 0, 0)}, -12345);
  EXPECT_EQ(limits.amin, 0);
  EXPECT_EQ(limits.amax, 0);
}

TEST(RecordLimits, haveNoMarginForARangeBeyond32Bits) {
  const RecordLimits beyond = limitsOf({withLimits(0, 1, -2e9f, 2e9f)});
  EXPECT_EQ(beyond.amin, -2e9f);
  EXPECT_EQ(beyond.amax, 2e9f);
  // 2e9 fits: the margin is 1e8.
  const RecordLimits within = limitsOf({withLimits(0, 1, -1e9f, 1e9f)});
  EXPECT_EQ(within.amin, -1.1e9f);
  EXPECT_EQ(within.amax, 1.1e9f);
}

TEST(RecordLimits, areNoneWithoutRecords) {
  EXPECT_FALSE(recordLimits({}, 1).has_value());
  EXPECT_FALSE(recordLimits({nullptr, nullptr}, 1).has_value());
}

TEST(RecordLimits, leaveOutNullRecords) {
  const Records records = recordsOf({withLimits(5, 20, 10, 30), nullptr});
  EXPECT_EQ(recordLimits(*records, -12345), (RecordLimits{5, 20, 9, 31}));
}

TEST(RecordLimits, passOverExtremesThatAreNotNumbers) {
  EXPECT_EQ(limitsOf({withLimits(kNan, kNan, kNan, kNan), withLimits(1, 2, 3, 4)}),
            (RecordLimits{1, 2, 2.95f, 4.05f}));
}

TEST(RecordLimits, agreeWithAReckoningInAnotherOrder) {
  std::mt19937 random(431);
  for (int round = 0; round < 500; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    std::vector<std::shared_ptr<FakeRecord>> records;
    std::vector<float> begins, ends, lows, highs;
    const float size = std::pow(10.0f, uniform(random, -3, 6));
    for (int i = uniformInt(random, 1, 12); i > 0; --i) {
      begins.push_back(uniform(random, -100, 100));
      ends.push_back(uniform(random, 0, 5000));
      lows.push_back(uniform(random, -size, 0.2f * size));
      highs.push_back(uniform(random, -0.2f * size, size));
      records.push_back(withLimits(begins.back(), ends.back(), lows.back(), highs.back()));
    }
    const float minYRange = uniformInt(random, 0, 1) == 0 ? -12345 : uniform(random, 0, 2 * size);
    const float low = *std::min_element(lows.begin(), lows.end());
    const float high = *std::max_element(highs.begin(), highs.end());
    const int range = int(high - low);
    const bool widened = std::abs(low) < minYRange && std::abs(high) < minYRange;
    const RecordLimits expected{
        *std::min_element(begins.begin(), begins.end()), *std::max_element(ends.begin(), ends.end()),
        float((widened ? -minYRange : low) - 0.05 * range), float((widened ? minYRange : high) + 0.05 * range)};
    EXPECT_EQ(limitsOf(records, minYRange), expected);
  }
}

} // namespace
} // namespace xov::testing
