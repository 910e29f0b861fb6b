#include "examples/synthetic/XyTables.h"

#include <gtest/gtest.h>

#include <QByteArrayList>

#include <optional>

namespace xov::synthetic {
namespace {

/// The numbers of a table; none where a line is neither a comment nor two numbers with growing first ones.
std::optional<std::vector<std::pair<double, double>>> numbers(const QByteArray& table) {
  std::vector<std::pair<double, double>> pairs;
  for (const QByteArray& line : table.split('\n')) {
    if (line.isEmpty() || line.startsWith('#')) continue;
    const QByteArrayList words = line.split(' ');
    bool xGood = false, yGood = false;
    if (words.size() != 2) return {};
    const double x = words[0].toDouble(&xGood);
    const double y = words[1].toDouble(&yGood);
    if (!xGood || !yGood || (!pairs.empty() && x <= pairs.back().first)) return {};
    pairs.emplace_back(x, y);
  }
  return pairs;
}

TEST(XyTables, travelTimesGrowWithDistance) {
  const auto table = numbers(travelTimeTable());
  ASSERT_TRUE(table);
  ASSERT_EQ(table->size(), 193U); // 2 to 98 degrees in steps of a half
  for (std::size_t i = 1; i < table->size(); ++i)
    EXPECT_GT((*table)[i].second, (*table)[i - 1].second) << i;
}

TEST(XyTables, groupVelocitiesAreThoseOfTheEarth) {
  const auto table = numbers(groupVelocityTable());
  ASSERT_TRUE(table);
  ASSERT_GT(table->size(), 50U);
  for (const auto& [period, velocity] : *table) {
    EXPECT_GT(velocity, 2.7) << period;
    EXPECT_LT(velocity, 4.0) << period;
  }
}

TEST(XyTables, beginWithACommentThatNamesTheColumns) {
  EXPECT_TRUE(travelTimeTable().startsWith("# distance (degrees), travel time of P (s)"));
  EXPECT_TRUE(groupVelocityTable().startsWith("# period (s), group velocity"));
}

} // namespace
} // namespace xov::synthetic
