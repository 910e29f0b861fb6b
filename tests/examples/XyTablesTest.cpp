#include "examples/synthetic/XyTables.h"

#include <gtest/gtest.h>

#include <QByteArrayList>

#include <cmath>
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

TEST(XyTables, sourceDurationsFollowTheirLaws) {
  // Below two comment and heading lines, 400 rows. By log M = 1.5 m + 16.1 and 2 * 1.05e-8 * M^(1/3), the logarithm
  // of the duration is 0.5 m + 16.1 / 3 + log(2.1e-8) = 0.5 m - 2.3111. Of b = 1, a tenth are above magnitude 6.5.
  const QByteArrayList lines = sourceDurationTable().trimmed().split('\n');
  ASSERT_EQ(lines.size(), 402);
  double squares = 0;
  int above = 0;
  for (const QByteArray& line : lines.mid(2)) {
    const QByteArrayList fields = line.split(',');
    ASSERT_EQ(fields.size(), 2);
    const double magnitude = fields[0].toDouble();
    EXPECT_GE(magnitude, 5.5);
    EXPECT_LE(magnitude, 8.5);
    above += magnitude > 6.5;
    const double residual = fields[1].toDouble() - (0.5 * magnitude - 2.3111);
    squares += residual * residual;
  }
  // Three standard deviations of 400 drawings: 6 each of 40, and 0.0035 each of 0.1.
  EXPECT_NEAR(above, 40, 18);
  EXPECT_NEAR(std::sqrt(squares / 400), 0.1, 0.011);
}

TEST(XyTables, beginWithACommentThatNamesTheColumns) {
  EXPECT_TRUE(travelTimeTable().startsWith("# distance (degrees), travel time of P (s)"));
  EXPECT_TRUE(groupVelocityTable().startsWith("# period (s), group velocity"));
  EXPECT_TRUE(sourceDurationTable().startsWith("# made-up earthquakes"));
}

} // namespace
} // namespace xov::synthetic
