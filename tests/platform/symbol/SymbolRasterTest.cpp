#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "tests/support/Pixels.h"
#include "tests/support/SymbolReference.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace xov {
namespace {

using testing::differingPixels;
using testing::pixelAt;
using testing::referenceSymbols;

// The reference samples each pixel 48 times 48; an edge nearly along the samples is off by up to half a row of them.
constexpr int kSampling = 4;

class SymbolRaster : public ::testing::Test {
protected:
  // Scattered over and beyond a picture of 40 by 30 points.
  void scatter(int count, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> acrossX(-5, 45);
    std::uniform_real_distribution<float> acrossY(-5, 35);
    for (int i = 0; i < count; ++i)
      add(acrossX(random), acrossY(random));
  }
  void add(float px, float py) {
    x.push_back(px);
    y.push_back(py);
  }
  Symbols symbols(double radius) const {
    Symbols result;
    result.x = x.data();
    result.y = y.data();
    result.last = std::int64_t(x.size());
    result.radius = radius;
    result.fill = colors::gray;
    result.stroke = colors::black;
    return result;
  }
  QImage drawn(const Symbols& what, double ratio) const {
    return picture(kArea, ratio, [&](GraphicsContext& context) {
      drawPaper(context);
      context.drawSymbols(what);
    });
  }
  static void drawPaper(GraphicsContext& context) {
    context.setColor(colors::white);
    context.fillRect(kArea);
  }
  static QImage reference(const Symbols& what, double ratio) {
    const QTransform toPixels(ratio, 0, 0, -ratio, 0, kArea.height() * ratio);
    return referenceSymbols(what, toPixels, (kArea.size() * ratio).toSize());
  }

  static constexpr QRectF kArea{0, 0, 40, 30};
  static constexpr QRgb kPaper = 0xFFFFFFFF;
  std::vector<float> x, y;
};

TEST_F(SymbolRaster, oneSymbolEqualsItsFillUnderItsOutline) {
  add(20.3f, 14.8f);
  for (const double radius : {0.2, 0.5, 1.0, 6.0, 10.0}) {
    for (const double ratio : {1.0, 2.0, 1.5}) {
      EXPECT_EQ(differingPixels(drawn(symbols(radius), ratio), reference(symbols(radius), ratio), kSampling), 0)
          << radius << " at " << ratio;
    }
  }
}

TEST_F(SymbolRaster, overlappingSymbolsEqualOneDrawnAfterTheOther) {
  scatter(50, 7);
  for (const double ratio : {1.0, 2.0}) {
    EXPECT_EQ(differingPixels(drawn(symbols(6), ratio), reference(symbols(6), ratio), kSampling), 0) << ratio;
  }
}

TEST_F(SymbolRaster, smallAndLargeSymbolsEqualOneDrawnAfterTheOther) {
  scatter(6, 8);
  EXPECT_EQ(differingPixels(drawn(symbols(25), 1), reference(symbols(25), 1), kSampling), 0);
  scatter(60, 9);
  for (const double radius : {0.3, 1.25})
    EXPECT_EQ(differingPixels(drawn(symbols(radius), 1), reference(symbols(radius), 1), kSampling), 0) << radius;
}

TEST_F(SymbolRaster, symbolsManyTimesAtOnePlaceAreDrawnThatOften) {
  for (int i = 0; i < 30; ++i)
    add(20.3f, 14.8f);
  // Thirty layers multiply what the samples miss of the faintest edges.
  EXPECT_EQ(differingPixels(drawn(symbols(6), 1), reference(symbols(6), 1), 40), 0);
}

TEST_F(SymbolRaster, laterSymbolsLieOverEarlierOnes) {
  add(15.5f, 15.5f);
  add(18.5f, 15.5f);
  const QImage image = drawn(symbols(6), 1);
  // The left end of the later one's outline, from 12 to 13, lies over the earlier one; the right end of the earlier
  // one's, from 21 to 22, is hidden.
  EXPECT_LT(qRed(pixelAt(image, 12, 14)), 10);
  EXPECT_EQ(pixelAt(image, 21, 14), 0xFF808080u);
}

TEST_F(SymbolRaster, translucentColoursAreLaidOverEachOther) {
  scatter(25, 9);
  Symbols what = symbols(6);
  what.fill = QColor(200, 40, 90, 120);
  what.stroke = QColor(10, 20, 30, 77);
  EXPECT_EQ(differingPixels(drawn(what, 1), reference(what, 1), kSampling), 0);
}

TEST_F(SymbolRaster, symbolsWithoutFillOrOutlineLeaveItOut) {
  scatter(10, 10);
  Symbols rings = symbols(6);
  rings.fill = QColor();
  EXPECT_EQ(differingPixels(drawn(rings, 1), reference(rings, 1), kSampling), 0);
  Symbols discs = symbols(6);
  discs.stroke = QColor();
  EXPECT_EQ(differingPixels(drawn(discs, 1), reference(discs, 1), kSampling), 0);
}

TEST_F(SymbolRaster, withoutPaperTheirEdgesAreTransparent) {
  add(20, 15);
  const QImage image = picture(kArea, 1, [&](GraphicsContext& context) { context.drawSymbols(symbols(6)); });
  EXPECT_EQ(pixelAt(image, 1, 1), 0u);
  EXPECT_EQ(pixelAt(image, 20, 15), 0xFF808080u);
  // The outermost half pixel of the outline, from 26 to 26.5, less the mean of h² / (2 · 6.5) for h from 0 to 1, by
  // which the circle bends away: 1/2 - 1/39 of the pixel.
  EXPECT_NEAR(qAlpha(pixelAt(image, 26, 15)), 255 * (0.5 - 1.0 / 39), 1);
}

TEST_F(SymbolRaster, nothingOutsideTheClipChanges) {
  scatter(200, 11);
  const QImage image = picture(kArea, 2, [&](GraphicsContext& context) {
    drawPaper(context);
    context.clipToRect({10, 5, 20, 10});
    context.drawSymbols(symbols(6));
  });
  const QImage whole = drawn(symbols(6), 2);
  for (int row = 0; row < image.height(); ++row) {
    for (int column = 0; column < image.width(); ++column) {
      // Rows count from the top: the clip's are those from 30 - 15 to 30 - 5 points.
      const bool inside = column >= 20 && column < 60 && row >= 30 && row < 50;
      ASSERT_EQ(pixelAt(image, column, row), inside ? pixelAt(whole, column, row) : kPaper) << column << ' ' << row;
    }
  }
}

TEST_F(SymbolRaster, aRoundClipIsHonoured) {
  scatter(200, 12);
  const QImage image = picture(kArea, 1, [&](GraphicsContext& context) {
    Path circle;
    circle.appendOval({10, 5, 20, 20});
    context.clipToPath(circle);
    context.drawSymbols(symbols(6));
  });
  EXPECT_EQ(pixelAt(image, 11, 6), 0u);
  EXPECT_EQ(pixelAt(image, 20, 15), pixelAt(drawn(symbols(6), 1), 20, 15));
}

TEST_F(SymbolRaster, aTurnedDrawingKeepsItsCirclesAndASquashedOneDoesNot) {
  add(20, 15);
  const auto turned = picture(kArea, 1, [&](GraphicsContext& context) {
    drawPaper(context);
    context.concat(QTransform::fromTranslate(20, 15));
    context.concat(QTransform().rotate(30));
    context.concat(QTransform::fromTranslate(-20, -15));
    context.drawSymbols(symbols(6));
  });
  EXPECT_EQ(differingPixels(turned, drawn(symbols(6), 1), 1), 0);
  const auto squashed = picture(kArea, 1, [&](GraphicsContext& context) {
    context.concat(QTransform::fromScale(1, 0.5));
    context.drawSymbols(symbols(6));
  });
  EXPECT_EQ(pixelAt(squashed, 20, 22), 0xFF808080u); // centred on y = 7.5, three points high
  EXPECT_EQ(pixelAt(squashed, 20, 17), 0u);
}

TEST_F(SymbolRaster, placesThatAreNotFiniteOrFarAwayAreLeftOut) {
  add(20, 15);
  const QImage alone = drawn(symbols(6), 1);
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  add(kNan, 15);
  add(20, -kInfinity);
  add(3e38f, 3e38f);
  add(-1e20f, 15);
  EXPECT_EQ(differingPixels(drawn(symbols(6), 1), alone), 0);
}

TEST_F(SymbolRaster, aHugeSymbolFillsThePicture) {
  add(1e6f, 15);
  const QImage image = drawn(symbols(2e6), 1);
  EXPECT_EQ(pixelAt(image, 0, 0), 0xFF808080u);
  EXPECT_EQ(pixelAt(image, 39, 29), 0xFF808080u);
  EXPECT_EQ(pixelAt(drawn(symbols(1e30), 1), 20, 15), 0xFF808080u);
}

// More rows than one band holds.
TEST_F(SymbolRaster, aLargePictureIsDrawnInBandsWithoutASeam) {
  add(20, 10);
  add(20, 20);
  const QImage image = drawn(symbols(6), 60);
  EXPECT_EQ(image.size(), QSize(2400, 1800));
  for (int row = 0; row < image.height(); ++row) {
    const double fromTop = (row + 0.5) / 60;
    const bool inside = std::abs(fromTop - 20) < 5.5 || std::abs(fromTop - 10) < 5.5;
    const bool outline = std::abs(std::abs(fromTop - 10) - 6) < 0.55 || std::abs(std::abs(fromTop - 20) - 6) < 0.55;
    const bool outside = fromTop < 3 || fromTop > 27;
    if (inside && !outline) {
      ASSERT_EQ(pixelAt(image, 1200, row), 0xFF808080u) << row;
    }
    if (outside) {
      ASSERT_EQ(pixelAt(image, 1200, row), kPaper) << row;
    }
  }
}

} // namespace
} // namespace xov
