#include "XOV_Graphics/platform/trace/TraceUnion.h"

#include "XOV_Graphics/platform/trace/TraceStrip.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace xov;
using xov::testing::forEachVectorWidth;

namespace {

constexpr int kRows = 20;
constexpr int kSubs = 16; // sub-columns of the column

/// Layers of intervals; sub-columns that get none stay empty.
class Layers {
public:
  /// The same interval in every sub-column.
  void add(float low, float high) {
    add();
    for (int j = 0; j < kSubs; ++j)
      set(j, low, high);
  }
  void add() {
    lows_.emplace_back(std::size_t(kSubs), kNothingLow);
    highs_.emplace_back(std::size_t(kSubs), kNothingHigh);
  }
  void set(int subColumn, float low, float high) {
    lows_.back()[std::size_t(subColumn)] = low;
    highs_.back()[std::size_t(subColumn)] = high;
  }

  int count() const { return int(lows_.size()); }
  float low(int layer, int j) const { return lows_[std::size_t(layer)][std::size_t(j)]; }
  float high(int layer, int j) const { return highs_[std::size_t(layer)][std::size_t(j)]; }

  bool unite() {
    std::vector<const float*> lows, highs;
    for (std::size_t k = 0; k < lows_.size(); ++k) {
      lows.push_back(lows_[k].data());
      highs.push_back(highs_[k].data());
    }
    changes_.assign(std::size_t((kRows + 1) * kInkColumns), 0);
    inked_ = {};
    return addUnion(lows.data(), highs.data(), count(), 0, kSubs, kRows, changes_.data(), inked_);
  }
  RowRange inked() const { return inked_; }

  /// The ink of a row, in 1/4096 of a row of a sub-column, read from the changes as their description says.
  std::vector<std::int32_t> covered() const {
    std::vector<std::int32_t> rows;
    std::int32_t open = 0; // edges into ink less those out of it, above the row
    for (int row = 0; row < kRows; ++row) {
      const std::int32_t change = changes_[std::size_t(row * kInkColumns)];
      std::int32_t part = change & (kOneEdge - 1);
      if (part >= kOneEdge / 2) part -= kOneEdge;
      const std::int32_t edges = (change - part) / kOneEdge;
      rows.push_back((open + edges) * kRowUnit - part);
      open += edges;
    }
    return rows;
  }

private:
  std::vector<std::vector<float>> lows_, highs_;
  std::vector<std::int32_t> changes_;
  RowRange inked_;
};

/// The same by counting: every 1/4096 of a row that lies in some interval.
std::vector<std::int32_t> countedUnits(const Layers& layers) {
  std::vector<std::int32_t> rows(std::size_t(kRows), 0);
  for (int j = 0; j < kSubs; ++j) {
    std::vector<bool> inked(std::size_t(kRows * kRowUnit), false);
    for (int layer = 0; layer < layers.count(); ++layer) {
      const float low = std::max(layers.low(layer, j), 0.0F), high = std::min(layers.high(layer, j), float(kRows));
      if (!(low < high)) continue;
      std::fill(inked.begin() + rowUnits(low), inked.begin() + rowUnits(high), true);
    }
    for (std::size_t unit = 0; unit < inked.size(); ++unit)
      rows[unit / kRowUnit] += inked[unit] ? 1 : 0;
  }
  return rows;
}

std::vector<std::int32_t> rowsOf(std::initializer_list<std::pair<int, double>> inked) {
  std::vector<std::int32_t> rows(std::size_t(kRows), 0);
  for (const auto& [row, part] : inked)
    rows[std::size_t(row)] = std::int32_t(part * kSubs * kRowUnit);
  return rows;
}

} // namespace

TEST(TraceUnion, coversTheRowsOfAnInterval) {
  forEachVectorWidth([] {
    Layers layers;
    layers.add(1.25F, 3.5F);
    ASSERT_TRUE(layers.unite());
    EXPECT_EQ(layers.covered(), rowsOf({{1, 0.75}, {2, 1}, {3, 0.5}}));
    EXPECT_EQ(layers.inked().first, 1);
    EXPECT_EQ(layers.inked().last, 4);
  });
}

TEST(TraceUnion, countsTheInkOfLayersThatOverlapOnce) {
  forEachVectorWidth([] {
    Layers layers;
    layers.add(1, 3);
    layers.add(2.5F, 4);
    layers.add(4, 5); // touches
    ASSERT_TRUE(layers.unite());
    EXPECT_EQ(layers.covered(), rowsOf({{1, 1}, {2, 1}, {3, 1}, {4, 1}}));
  });
}

TEST(TraceUnion, leavesGapsBetweenLayersOpen) {
  forEachVectorWidth([] {
    Layers layers;
    layers.add(1, 2.25F);
    layers.add(2.75F, 4);
    layers.add(2.875F, 3);
    layers.add(9, 9.75F);
    ASSERT_TRUE(layers.unite());
    EXPECT_EQ(layers.covered(), rowsOf({{1, 1}, {2, 0.5}, {3, 1}, {9, 0.75}}));
    EXPECT_EQ(layers.inked().first, 1);
    EXPECT_EQ(layers.inked().last, 10);
  });
}

TEST(TraceUnion, cutsOffWhatLiesOutsideThePage) {
  forEachVectorWidth([] {
    Layers layers;
    layers.add(-1e15F, 0.5F);
    layers.add(kRows - 0.25F, 1e15F);
    ASSERT_TRUE(layers.unite());
    EXPECT_EQ(layers.covered(), rowsOf({{0, 0.5}, {kRows - 1, 0.25}}));
  });
}

TEST(TraceUnion, ofNothingCoversNothing) {
  forEachVectorWidth([] {
    Layers layers;
    for (int k = 0; k < 3; ++k)
      layers.add();
    ASSERT_TRUE(layers.unite());
    EXPECT_EQ(layers.covered(), rowsOf({}));
    EXPECT_LE(layers.inked().last, layers.inked().first);
  });
}

TEST(TraceUnion, saysWhereALayerReachesBackToWhatIsClosed) {
  forEachVectorWidth([] {
    Layers layers;
    layers.add(2, 3);
    layers.add(6, 7); // closes the one above
    layers.add();     // nothing in most sub-columns
    layers.set(11, 1, 6.5F);
    EXPECT_FALSE(layers.unite());
  });
}

TEST(TraceUnion, equalsACountOfUnitsWhateverTheIntervals) {
  const unsigned seed = std::random_device{}();
  forEachVectorWidth([seed] {
    SCOPED_TRACE(::testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> place(-2, kRows + 2), size(0, 3), wobble(-0.8F, 0.8F);
    int united = 0;
    for (int k = 0; k < 60; ++k) {
      Layers layers;
      std::vector<float> places(std::size_t(1 + random() % 9));
      std::generate(places.begin(), places.end(), [&] { return place(random); });
      std::sort(places.begin(), places.end());
      for (const float middle : places) {
        layers.add();
        for (int j = 0; j < kSubs; ++j) {
          if (random() % 8 == 0) continue;
          const float low = middle + wobble(random);
          layers.set(j, low, low + size(random));
        }
      }
      if (!layers.unite()) continue;
      ++united;
      ASSERT_EQ(layers.covered(), countedUnits(layers)) << k;
    }
    EXPECT_GT(united, 20);
  });
}

TEST(TraceUnion, widensRowsToWhatLiesOnThePage) {
  RowRange rows;
  includeRows(rows, 5, 5, kRows); // nothing
  EXPECT_EQ(rows.last, rows.first);
  includeRows(rows, 3.5F, 4.25F, kRows);
  EXPECT_EQ(rows.first, 3);
  EXPECT_EQ(rows.last, 5);
  includeRows(rows, -7, 0.5F, kRows);
  EXPECT_EQ(rows.first, 0);
  EXPECT_EQ(rows.last, 5);
  includeRows(rows, kRows + 1, kRows + 2, kRows);
  EXPECT_EQ(rows.last, 5);
  includeRows(rows, kRows - 1, kRows + 2, kRows);
  EXPECT_EQ(rows.last, kRows);
}
