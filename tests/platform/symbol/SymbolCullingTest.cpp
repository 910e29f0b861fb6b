#include "XOV_Graphics/platform/symbol/SymbolCulling.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/surface/PdfPage.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace xov {
namespace {

const QRectF kArea(0, 0, 200, 100);

class SymbolCulling : public ::testing::Test {
protected:
  void add(double px, double py) {
    x.push_back(float(px));
    y.push_back(float(py));
  }
  Symbols symbols() const {
    Symbols result;
    result.x = x.data();
    result.y = y.data();
    result.last = std::int64_t(x.size());
    result.radius = 6;
    result.fill = colors::gray;
    result.stroke = colors::black;
    return result;
  }
  std::vector<float> x, y;
};

TEST_F(SymbolCulling, ofAFewEverySymbolIsKeptInOrder) {
  for (int i = 0; i < 5; ++i)
    add(100, 50);
  EXPECT_EQ(symbolsOnPaper(symbols(), kArea), (std::vector<std::int64_t>{0, 1, 2, 3, 4}));
}

TEST_F(SymbolCulling, symbolsThatDoNotReachThePageAreLeftOut) {
  add(100, 50);
  add(-6.4, 50); // the outline ends at 6.5
  add(-6.6, 50);
  add(100, 106.6);
  add(std::numeric_limits<double>::quiet_NaN(), 50);
  EXPECT_EQ(symbolsOnPaper(symbols(), kArea), (std::vector<std::int64_t>{0, 1}));
}

TEST_F(SymbolCulling, ofManyAtOnePlaceTheLastIsKept) {
  for (int i = 0; i < 10000; ++i)
    add(i % 2 == 0 ? 50 : 150, 50);
  EXPECT_EQ(symbolsOnPaper(symbols(), kArea), (std::vector<std::int64_t>{9998, 9999}));
}

// A point at a distance d <= 6.5 from the first symbol's centre is |d - 2| <= 4.5 away from the centre of the ring's
// symbol in the same direction, and so inside it.
TEST_F(SymbolCulling, aSymbolUnderLaterOnesIsLeftOut) {
  add(100, 50);
  for (int i = 0; i < 10000; ++i)
    add(20, 50);
  for (int i = 0; i < 200; ++i) {
    const double angle = i * 0.0314159265;
    add(100 + 2 * std::cos(angle), 50 + 2 * std::sin(angle));
  }
  const auto kept = symbolsOnPaper(symbols(), kArea);
  EXPECT_NE(kept.front(), 0);
  EXPECT_EQ(kept.back(), std::int64_t(x.size()) - 1);
}

TEST_F(SymbolCulling, translucentSymbolsAreAllKept) {
  for (int i = 0; i < 10000; ++i)
    add(50, 50);
  Symbols what = symbols();
  what.fill.setAlpha(100);
  EXPECT_EQ(symbolsOnPaper(what, kArea).size(), 10000u);
}

TEST_F(SymbolCulling, whatIsKeptLooksLikeTheWhole) {
  std::mt19937 random(3);
  std::normal_distribution<double> normal;
  for (int i = 0; i < 30000; ++i)
    add(100 + 20 * normal(random), 50 + 15 * normal(random));
  const auto kept = symbolsOnPaper(symbols(), kArea);
  EXPECT_LT(kept.size(), 6000u);
  std::vector<float> keptX, keptY;
  for (const std::int64_t i : kept) {
    keptX.push_back(x[std::size_t(i)]);
    keptY.push_back(y[std::size_t(i)]);
  }
  Symbols fewer = symbols();
  fewer.x = keptX.data();
  fewer.y = keptY.data();
  fewer.last = std::int64_t(kept.size());
  constexpr double kDots = 600.0 / 72;
  const auto draw = [](const Symbols& what) {
    return picture(kArea, kDots, [&](GraphicsContext& context) { context.drawSymbols(what); });
  };
  const QImage whole = draw(symbols());
  // Nothing that certainly shows is missing: what differs are dots at edges of symbols that share a place.
  EXPECT_LT(testing::differingPixels(whole, draw(fewer), 64), whole.width() * whole.height() / 2000);
}

TEST_F(SymbolCulling, ofAThirdOfAMillionThatAllShowAtMostAQuarterIsKept) {
  for (int row = 0; row < 400; ++row) {
    for (int column = 0; column < 800; ++column)
      add(column * 0.25, row * 0.25);
  }
  const auto kept = symbolsOnPaper(symbols(), kArea);
  EXPECT_LE(kept.size(), 250000u);
  EXPECT_GT(kept.size(), 10000u);
}

TEST_F(SymbolCulling, ofAThirdOfAMillionDotsThatAllShowEveryOneIsKept) {
  for (int row = 0; row < 400; ++row) {
    for (int column = 0; column < 800; ++column)
      add((column + 0.5) * 0.25, (row + 0.5) * 0.25);
  }
  Symbols dots = symbols();
  dots.radius = 0.05;
  dots.lineWidth = 0.1;
  EXPECT_EQ(symbolsOnPaper(dots, kArea).size(), 320000u);
}

TEST_F(SymbolCulling, dotsOnAPageAreOnePathOfRoundLines) {
  for (int i = 0; i < 10000; ++i)
    add((i % 100) * 2 + 1, i / 100 + 0.5);
  Symbols dots = symbols();
  dots.radius = 0.25;
  dots.lineWidth = 0.5;
  const QByteArray page = pdfPage(kArea, [&](GraphicsContext& context) { context.drawSymbols(dots); });
  // A circle of four curves has 26 numbers; compressed, a dot's two points come to a few bytes.
  EXPECT_LT(page.size(), 10000 * 12);
}

TEST_F(SymbolCulling, symbolsAboutACornerThatTheyDoNotReachAreLeftOut) {
  // Their boxes overlap the page, they themselves do not: √2 · 6 away from its corner.
  for (int i = 0; i < 10000; ++i)
    add(-6, -6);
  EXPECT_TRUE(symbolsOnPaper(symbols(), kArea).empty());
}

TEST_F(SymbolCulling, onAPageEachSymbolIsOnePathFilledAndStroked) {
  for (int i = 0; i < 20; ++i)
    add(10 * i, 50);
  const QByteArray few = pdfPage(kArea, [&](GraphicsContext& context) { context.drawSymbols(symbols()); });
  EXPECT_TRUE(few.startsWith("%PDF"));
  EXPECT_FALSE(few.contains("/Subtype /Image"));
  for (int i = 0; i < 100000; ++i)
    add(10 * (i % 20), 50);
  const QByteArray many = pdfPage(kArea, [&](GraphicsContext& context) { context.drawSymbols(symbols()); });
  EXPECT_LT(many.size(), few.size() + 2000);
}

} // namespace
} // namespace xov
