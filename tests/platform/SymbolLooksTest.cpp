// Symbols that each have a look of their own.

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/symbol/SymbolCulling.h"
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

// As for symbols that look alike: what the reference's sampling may miss at an edge.
constexpr int kSampling = 4;
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

class SymbolLooks : public ::testing::Test {
protected:
  void add(float px, float py, const SymbolLook& look) {
    x.push_back(px);
    y.push_back(py);
    looks.push_back(look);
  }
  static SymbolLook disc(double radius, const QColor& fill, const QColor& stroke = QColor(), int strokes = 1) {
    SymbolLook look;
    look.radius = radius;
    look.fill = fill;
    look.stroke = stroke;
    look.strokes = strokes;
    return look;
  }
  // Discs, rings and both, opaque and translucent, over and beyond a picture of 40 by 30 points.
  void scatter(int count, double largest, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> acrossX(-5, 45);
    std::uniform_real_distribution<float> acrossY(-5, 35);
    std::uniform_real_distribution<double> radii(0.3, largest);
    const auto below = [&](int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); };
    const auto color = [&] { return QColor(below(256), below(256), below(256), below(2) == 0 ? 255 : below(256)); };
    for (int i = 0; i < count; ++i) {
      SymbolLook look = disc(radii(random), below(4) == 0 ? QColor() : color(), below(4) == 0 ? QColor() : color());
      look.strokes = below(3);
      look.lineWidth = 0.5 + below(3);
      add(acrossX(random), acrossY(random), look);
    }
  }
  Symbols symbols() const {
    Symbols result;
    result.x = x.data();
    result.y = y.data();
    result.looks = looks.data();
    result.last = std::int64_t(x.size());
    return result;
  }
  QImage drawn(double ratio = 1) const {
    return picture(kArea, ratio, [&](GraphicsContext& context) {
      context.setColor(colors::white);
      context.fillRect(kArea);
      context.drawSymbols(symbols());
    });
  }
  QImage reference(double ratio = 1) const {
    const QTransform toPixels(ratio, 0, 0, -ratio, 0, kArea.height() * ratio);
    return referenceSymbols(symbols(), toPixels, (kArea.size() * ratio).toSize());
  }

  static constexpr QRectF kArea{0, 0, 40, 30};
  std::vector<float> x, y;
  std::vector<SymbolLook> looks;
};

TEST_F(SymbolLooks, differInSizeFillAndOutlineFromSymbolToSymbol) {
  scatter(60, 8, 21);
  for (const double ratio : {1.0, 2.0})
    EXPECT_EQ(differingPixels(drawn(ratio), reference(ratio), kSampling), 0) << ratio;
}

TEST_F(SymbolLooks, areDrawnOneAfterTheOtherAlsoWhereTheyAreLarge) {
  // Larger than what is remembered as covered, rings and faint discs before strong ones.
  scatter(40, 60, 22);
  EXPECT_EQ(differingPixels(drawn(), reference(), kSampling), 0);
}

TEST_F(SymbolLooks, ofAFaintDiscDoNotHideADiscBehindIt) {
  for (int i = 0; i < 3; ++i)
    add(20, 15, disc(30, QColor(200, 0, 0)));
  for (int i = 0; i < 3; ++i)
    add(20, 15, disc(30, QColor(0, 0, 0, 0), QColor(0, 0, 0)));
  EXPECT_EQ(pixelAt(drawn(), 20, 15), 0xFFC80000u);
}

TEST_F(SymbolLooks, strokeAnOutlineAsOftenAsTheySay) {
  // Half black on white, once 255 · (1 - 128/255) = 127, twice 127 · (1 - 128/255) = 63.25.
  const QColor half(0, 0, 0, 128);
  SymbolLook thick = disc(8, QColor(), half, 1);
  thick.lineWidth = 4;
  add(20, 15, thick);
  EXPECT_NEAR(qRed(pixelAt(drawn(), 28, 15)), 127, 1);
  looks[0].strokes = 2;
  EXPECT_NEAR(qRed(pixelAt(drawn(), 28, 15)), 63, 1);
  looks[0].strokes = 0;
  EXPECT_EQ(pixelAt(drawn(), 28, 15), 0xFFFFFFFFu);
}

TEST_F(SymbolLooks, withoutASizeLeaveTheSymbolOut) {
  for (const double radius : {0.0, -3.0, double(kNan), std::numeric_limits<double>::infinity()})
    add(20, 15, disc(radius, colors::red, colors::black));
  EXPECT_FALSE(symbols().isEmpty());
  for (std::int64_t i = 0; i < 4; ++i)
    EXPECT_EQ(symbols().center(i), std::nullopt);
  EXPECT_EQ(pixelAt(drawn(), 20, 15), 0xFFFFFFFFu);
}

TEST_F(SymbolLooks, areRecordedWithTheSymbolsAndSpelledOut) {
  RecordingContext recording;
  {
    add(5, 6, disc(3, colors::red, colors::black, 2));
    add(7, 8, disc(4, QColor(), colors::black));
    const GraphicsContext::Pass pass(recording);
    GraphicsContext::current().drawSymbols(symbols());
    // The recording keeps the looks.
    looks.assign(2, SymbolLook());
  }
  ASSERT_EQ(recording.items().size(), 1U);
  const auto steps = recording.items()[0].steps();
  ASSERT_EQ(steps.size(), 4U);
  EXPECT_EQ(steps[0].kind, RecordedItem::Kind::Fill);
  EXPECT_EQ(steps[0].color, colors::red);
  EXPECT_EQ(steps[1].kind, RecordedItem::Kind::Stroke);
  EXPECT_EQ(steps[2].kind, RecordedItem::Kind::Stroke);
  EXPECT_EQ(steps[3].path.shape().boundingRect(), QRectF(3, 4, 8, 8));
  EXPECT_EQ(recording.items()[0].toText(),
            QStringLiteral("symbols #ff0000 #000000 w=1 r=3 strokes=2 (5,6) none #000000 w=1 r=4 (7,8)"));
}

TEST_F(SymbolLooks, areReplayedFromARecording) {
  scatter(30, 8, 23);
  RecordingContext recording;
  {
    const GraphicsContext::Pass pass(recording);
    GraphicsContext::current().setColor(colors::white);
    GraphicsContext::current().fillRect(kArea);
    GraphicsContext::current().drawSymbols(symbols());
  }
  const QImage again = picture(kArea, 1, [&](GraphicsContext& context) { recording.replay(context); });
  EXPECT_EQ(differingPixels(again, drawn()), 0);
}

TEST_F(SymbolLooks, areScaledOneByOneUnderATransform) {
  add(20, 15, disc(3, colors::red));
  RecordingContext recording;
  const GraphicsContext::Pass pass(recording);
  GraphicsContext::current().concat(QTransform::fromScale(2, 1));
  GraphicsContext::current().drawSymbols(symbols());
  ASSERT_EQ(recording.items().size(), 1U);
  EXPECT_EQ(recording.items()[0].path.shape().boundingRect(), QRectF(34, 12, 12, 6));
}

TEST_F(SymbolLooks, ofManySymbolsLeaveThoseOutOnPaperThatOthersCover) {
  for (int i = 0; i < 5000; ++i)
    add(20, 15, disc(3, colors::red, QColor(0, 0, 0, 128)));
  add(20, 15, disc(5, colors::green));
  add(30, 15, disc(5, QColor()));
  const std::vector<std::int64_t> kept = symbolsOnPaper(symbols(), kArea);
  EXPECT_EQ(kept, (std::vector<std::int64_t>{5000, 5001}));
}

TEST_F(SymbolLooks, ofManySymbolsKeepThoseOnPaperThatShowUnderOthers) {
  for (int i = 0; i < 5000; ++i)
    add(20, 15, disc(3, QColor(255, 0, 0, 100)));
  add(20, 15, disc(5, colors::green));
  add(20, 15, disc(8, QColor(), colors::black)); // a ring hides nothing
  for (int i = 0; i < 10; ++i)
    add(20, 15, disc(2, QColor(255, 0, 0, 100)));
  EXPECT_EQ(symbolsOnPaper(symbols(), kArea).size(), 12U);
}

} // namespace
} // namespace xov
