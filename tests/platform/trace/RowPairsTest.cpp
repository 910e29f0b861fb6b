#include "XOV_Graphics/platform/trace/RowPairs.h"

#include "XOV_Graphics/platform/trace/TraceStrip.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace xov;
using xov::testing::forEachVectorWidth;

namespace {

constexpr int kSubColumns = 16, kRows = 20;

float anyRow(std::mt19937& random) { return std::uniform_real_distribution<float>(-5, kRows + 5)(random); }

} // namespace

TEST(RowPairs, lieWhereTheLinesWind) {
  std::mt19937 random(4);
  for (const int areas : {1, 2, 3, 5, 8, 33}) {
    for (const InsideRule rule : {InsideRule::NonZero, InsideRule::Odd}) {
      std::vector<float> borders(std::size_t(2 * areas) * kSubColumns);
      for (float& row : borders)
        row = anyRow(random);
      forEachVectorWidth([&] {
        std::vector<float> pairs = borders;
        pairRows(pairs.data(), areas, kSubColumns, kSubColumns, rule);
        for (int j = 0; j < kSubColumns; ++j) {
          for (int look = 0; look < 50; ++look) {
            const float row = anyRow(random);
            int winding = 0, within = 0;
            for (int k = 0; k < areas; ++k) {
              const std::size_t first = std::size_t(2 * k) * kSubColumns + std::size_t(j);
              winding += int(borders[first] < row) - int(borders[first + kSubColumns] < row);
              within += int(pairs[first] < row && row < pairs[first + kSubColumns]);
            }
            EXPECT_EQ(within > 0, rule == InsideRule::Odd ? winding % 2 != 0 : winding != 0);
          }
        }
      });
    }
  }
}

TEST(RowPairs, sortedIntervalsHaveTheUnionOfTheUnsorted) {
  std::mt19937 random(5);
  constexpr int kFirst = 3, kCount = 6; // of the sub-columns; the places for two more stay empty
  for (const int layers : {1, 2, 7, 40}) {
    std::vector low(static_cast<std::size_t>(layers), std::vector<float>(kSubColumns, 0.0F));
    std::vector high = low;
    std::vector<const float*> lows, highs;
    for (std::size_t layer = 0; layer < low.size(); ++layer) {
      for (std::size_t j = 0; j < kSubColumns; ++j) {
        low[layer][j] = anyRow(random);
        high[layer][j] = low[layer][j] + std::uniform_real_distribution<float>(-1, 2)(random); // some are empty
      }
      lows.push_back(low[layer].data());
      highs.push_back(high[layer].data());
    }
    forEachVectorWidth([&] {
      std::vector<float> sortedLows(low.size() * kSortedTogether), sortedHighs(sortedLows.size());
      sortIntervals(lows.data(), highs.data(), layers, kFirst, kCount, kRows, sortedLows.data(), sortedHighs.data());
      for (std::size_t j = 0; j < kSortedTogether; ++j) {
        for (int look = 0; look < 50; ++look) {
          const float row = std::uniform_real_distribution<float>(0, kRows)(random);
          bool covered = false, found = false;
          for (std::size_t k = 0; k < low.size(); ++k) {
            const std::size_t at = k * kSortedTogether + j;
            if (j < kCount) covered = covered || (low[k][kFirst + j] < row && row < high[k][kFirst + j]);
            found = found || (sortedLows[at] < row && row < sortedHighs[at]);
            EXPECT_TRUE(k == 0 || sortedLows[at - kSortedTogether] <= sortedLows[at]);
          }
          EXPECT_EQ(found, covered);
        }
      }
      for (std::size_t k = 0; k < low.size(); ++k)
        EXPECT_EQ(sortedLows[k * kSortedTogether + kCount], kNothingLow);
    });
  }
}

TEST(RowPairs, intervalsOfLinesInOrderAreSortedAndThoseOutOfItInAnySubColumnAreToo) {
  // Nine lines 2 rows apart, of which each has a row of ink.
  constexpr int kLines = 9;
  for (int swapped = -1; swapped < kSortedTogether; ++swapped) {
    std::vector low(kLines, std::vector<float>(kSortedTogether));
    for (std::size_t line = 0; line < kLines; ++line)
      for (std::size_t j = 0; j < kSortedTogether; ++j)
        low[line][j] = float(2 * line) + float(j) / 16;
    if (swapped >= 0) std::swap(low[kLines - 2][std::size_t(swapped)], low[kLines - 1][std::size_t(swapped)]);
    std::vector high = low;
    std::vector<const float*> lows, highs;
    for (std::size_t line = 0; line < kLines; ++line) {
      for (float& row : high[line])
        ++row;
      lows.push_back(low[line].data());
      highs.push_back(high[line].data());
    }
    forEachVectorWidth([&] {
      std::vector<float> sortedLows(kLines * kSortedTogether), sortedHighs(sortedLows.size());
      sortIntervals(lows.data(), highs.data(), kLines, 0, kSortedTogether, kRows, sortedLows.data(),
                    sortedHighs.data());
      for (std::size_t line = 0; line < kLines; ++line) {
        for (std::size_t j = 0; j < kSortedTogether; ++j) {
          EXPECT_EQ(sortedLows[line * kSortedTogether + j], float(2 * line) + float(j) / 16) << swapped;
          EXPECT_EQ(sortedHighs[line * kSortedTogether + j], float(2 * line + 1) + float(j) / 16) << swapped;
        }
      }
    });
  }
}
