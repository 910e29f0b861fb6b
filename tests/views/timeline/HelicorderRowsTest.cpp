#include "XOV_Graphics/views/timeline/HelicorderRows.h"

#include "TimelineDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

// The rows in view of a page of 24.
constexpr PageRows kDay{-8, 32};

// Rows sample by sample, written for this test.
std::vector<HelicorderRow> rowsByWalking(const PieceTimes& times, float rowDuration) {
  std::vector<HelicorderRow> rows;
  for (std::int64_t i = 0; i < times.count; ++i) {
    const float advance = float(i) * times.step;
    const float t = times.start + advance;
    const float number = std::floor(t / rowDuration);
    const float begin = number * rowDuration;
    if (rows.empty() || rows.back().begin != begin) rows.push_back({i, i, begin, begin / rowDuration});
    rows.back().last = i + 1;
  }
  return rows;
}

TEST(HelicorderRows, startWhereWalkingAlongTheSamplesStartsThem) {
  std::mt19937 random(5);
  const float intervals[] = {0.01f, 0.025f, 0.05f, 1, 0.00999999978f, 0.0500001609f, 1.0f / 3, 17.3f, 0};
  const float durations[] = {3600, 900, 1800, 7200, 86400, 60, 0.7f, 1234.567f};
  for (int round = 0; round < 400; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    PieceTimes times;
    times.step = intervals[uniformInt(random, 0, 8)];
    const float duration = durations[uniformInt(random, 0, 7)];
    times.start = uniformInt(random, 0, 3) == 0 ? float(uniformInt(random, -2, 20)) * duration
                                                : uniform(random, -2 * duration, 90000);
    times.count = uniformInt(random, 0, 20000);
    std::vector<HelicorderRow> expected = rowsByWalking(times, duration);
    if (!expected.empty() && expected.back().row - expected.front().row >= 2047.5f)
      std::erase_if(expected, [](const HelicorderRow& row) { return row.row < -0.5f || row.row > 500.5f; });
    EXPECT_EQ(splitIntoRows(times, duration, {0, 500}), expected);
  }
}

TEST(HelicorderRows, putASample3725SecondsAfterTheStartIntoRow1At125Seconds) {
  const std::vector<HelicorderRow> rows = splitIntoRows({0, 1, 4000}, 3600, kDay);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[1], (HelicorderRow{3600, 4000, 3600, 1}));
  EXPECT_LE(rows[1].first, 3725);
  EXPECT_GT(rows[1].last, 3725);
}

TEST(HelicorderRows, beforeThePageCountBackwards) {
  // Two samples before the page began, at -2 s and -1 s.
  const std::vector<HelicorderRow> rows = splitIntoRows({-2, 1, 4}, 3600, kDay);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0], (HelicorderRow{0, 2, -3600, -1}));
  EXPECT_EQ(rows[1], (HelicorderRow{2, 4, 0, 0}));
}

TEST(HelicorderRows, ofADayAt100HzAreThoseOfAWalk) {
  const PieceTimes day{0, 0.01f, 8640000};
  const std::vector<HelicorderRow> rows = splitIntoRows(day, 3600, kDay);
  EXPECT_EQ(rows.size(), 24u);
  EXPECT_EQ(rows, rowsByWalking(day, 3600));
}

// A walk along these samples would take years. Steps and rows are powers of two, so that only the index is rounded: a
// row begins half way between the single-precision number before its own and that.
TEST(HelicorderRows, areFoundWithoutAWalk) {
  constexpr std::int64_t kRow = std::int64_t(1) << 55; // samples of 2^-43 s in a row of 2^12
  const std::vector<HelicorderRow> rows = splitIntoRows({0, 0x1p-43f, 24 * kRow}, 0x1p12f, kDay);
  ASSERT_EQ(rows.size(), 25u); // the last samples are rounded up to the row after
  EXPECT_EQ(rows.front().first, 0);
  EXPECT_EQ(rows.back().last, 24 * kRow);
  for (std::int64_t row = 1; row < 25; ++row) {
    const std::int64_t whole = row * kRow;
    const std::int64_t begin = whole - (whole - std::int64_t(std::nextafter(float(whole), 0.0f))) / 2;
    EXPECT_EQ(rows[std::size_t(row)].first, begin);
    EXPECT_EQ(rows[std::size_t(row - 1)].last, begin);
    EXPECT_EQ(rows[std::size_t(row)].row, float(row));
  }
}

TEST(HelicorderRows, areKeptOffThePageWhileTheyAreFew) {
  const std::vector<HelicorderRow> rows = splitIntoRows({-1000, 0.5f, 4000}, 1, kDay);
  EXPECT_EQ(rows.size(), 2000u); // -1000 s to 999.5 s in rows of a second
  EXPECT_EQ(rows.front().row, -1000);
}

TEST(HelicorderRows, areOnlyThoseInViewWhereTheyAreMany) {
  const std::vector<HelicorderRow> rows = splitIntoRows({-100000, 0.5f, 1000000}, 1, {-7.5, 32.5});
  ASSERT_EQ(rows.size(), 40u);
  EXPECT_EQ(rows.front().row, -7);
  EXPECT_EQ(rows.front().first, 2 * 99993);
  EXPECT_EQ(rows.back().row, 32);
  EXPECT_TRUE(splitIntoRows({1e5f, 1, 10000}, 1, kDay).empty());
  EXPECT_TRUE(splitIntoRows({-1e5f, 1, 10000}, 1, kDay).empty());
}

TEST(HelicorderRows, ofShortestDurationAreBounded) {
  const PageRows everything{-double(kInfinity), double(kInfinity)};
  for (const float duration : {1.0f, 1e-3f, 1e-37f, std::numeric_limits<float>::denorm_min()}) {
    EXPECT_LE(splitIntoRows({0, 0.01f, 8640000}, duration, everything).size(), 2048u) << duration;
    EXPECT_LE(splitIntoRows({-1e5f, 0.01f, 8640000}, duration, everything).size(), 2048u) << duration;
  }
  EXPECT_EQ(splitIntoRows({0, 0.01f, 8640000}, 2e9f, everything).size(), 1u);
}

TEST(HelicorderRows, areNoneForTimesAndDurationsThatMakeNoSense) {
  for (const float bad : {kNan, kInfinity, -kInfinity})
    EXPECT_TRUE(splitIntoRows({bad, 1, 100}, 3600, kDay).empty()) << bad;
  for (const float bad : {-1.0f, kUndefinedValue, kNan})
    EXPECT_TRUE(splitIntoRows({0, bad, 100}, 3600, kDay).empty()) << bad;
  for (const float bad : {0.0f, -3600.0f, kNan, -kInfinity})
    EXPECT_TRUE(splitIntoRows({0, 1, 100}, bad, kDay).empty()) << bad;
  EXPECT_TRUE(splitIntoRows({0, 1, 0}, 3600, kDay).empty());
  EXPECT_TRUE(splitIntoRows({0, 1, -5}, 3600, kDay).empty());
  EXPECT_LE(splitIntoRows({0, kInfinity, 100}, 3600, kDay).size(), 1u);
}

TEST(AmplitudeScale, putsTheLargestSampleOnTheEdgeOfItsRowAtAGainOfOne) {
  EXPECT_DOUBLE_EQ(*amplitudeScale(1, 40, 100), 0.2); // 100 counts on 20 points
  EXPECT_DOUBLE_EQ(*amplitudeScale(8, 40, 100), 1.6);
}

TEST(AmplitudeScale, laysAnAllZeroRecordingOnItsZeroLines) {
  EXPECT_EQ(amplitudeScale(8, 40, 0), 0.0);
  EXPECT_EQ(amplitudeScale(0, 40, 0), 0.0);
}

TEST(AmplitudeScale, isNoneWhereItWouldNotBeFinite) {
  EXPECT_FALSE(amplitudeScale(kNan, 40, 100));
  EXPECT_FALSE(amplitudeScale(kInfinity, 40, 100));
  EXPECT_FALSE(amplitudeScale(8, double(kInfinity), 100));
}

} // namespace
} // namespace xov::testing
