#include "XOV_Graphics/platform/Symbols.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace xov {
namespace {

using testing::differingPixels;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct Values {
  std::vector<float> x{1, 2, 3};
  std::vector<float> y{10, 20, 30};

  Symbols symbols() const {
    Symbols symbols;
    symbols.x = x.data();
    symbols.y = y.data();
    symbols.last = std::int64_t(x.size());
    symbols.radius = 4;
    symbols.fill = colors::gray;
    symbols.stroke = colors::black;
    return symbols;
  }
};

TEST(Symbols, aCentreIsScaledAndMoved) {
  const Values values;
  Symbols symbols = values.symbols();
  symbols.xOrigin = 1;
  symbols.xScale = 10;
  symbols.xOffset = 100;
  symbols.yOrigin = 20;
  symbols.yScale = -2;
  symbols.yOffset = 5;
  EXPECT_EQ(symbols.center(2), QPointF(120, -15));
}

TEST(Symbols, aCentreThatIsNotFiniteIsNone) {
  Values values;
  values.x = {kNan, 1, kInfinity};
  values.y = {1, -kInfinity, 2};
  for (std::int64_t i = 0; i < 3; ++i)
    EXPECT_EQ(values.symbols().center(i), std::nullopt) << i;
}

TEST(Symbols, withoutValuesOrRadiusThereIsNothing) {
  const Values values;
  Symbols symbols = values.symbols();
  EXPECT_FALSE(symbols.isEmpty());
  EXPECT_EQ(symbols.size(), 3);
  for (const double radius : {0.0, -1.0, double(kNan), double(kInfinity)}) {
    symbols.radius = radius;
    EXPECT_TRUE(symbols.isEmpty()) << radius;
    EXPECT_EQ(symbols.size(), 0);
  }
  symbols = values.symbols();
  symbols.last = 0;
  EXPECT_TRUE(symbols.isEmpty());
  EXPECT_TRUE(Symbols().isEmpty());
}

TEST(Symbols, theInkEndsHalfALineBeyondTheRadius) {
  const Values values;
  Symbols symbols = values.symbols();
  EXPECT_EQ(symbols.outerRadius(), 4.5);
  symbols.stroke = QColor();
  EXPECT_EQ(symbols.outerRadius(), 4);
}

TEST(Symbols, areDiscsOfTheOutlinesColourWhereItMeetsInTheMiddle) {
  const Values values;
  Symbols symbols = values.symbols();
  symbols.lineWidth = 8; // from the radius of 4 inwards by 4
  EXPECT_EQ(symbols.colorOfPlainDiscs(), colors::black);
  symbols.lineWidth = 7.9;
  EXPECT_FALSE(symbols.colorOfPlainDiscs().isValid());
  symbols.fill = colors::black;
  EXPECT_EQ(symbols.colorOfPlainDiscs(), colors::black);
  symbols.stroke = QColor(0, 0, 0, 128);
  EXPECT_FALSE(symbols.colorOfPlainDiscs().isValid());
}

TEST(Symbols, withoutOutlineAreDiscsOfTheirFill) {
  const Values values;
  Symbols symbols = values.symbols();
  symbols.stroke = QColor();
  EXPECT_EQ(symbols.colorOfPlainDiscs(), colors::gray);
  symbols.fill = QColor(0, 0, 0, 128);
  EXPECT_FALSE(symbols.colorOfPlainDiscs().isValid());
}

TEST(Symbols, onlyOpaqueSymbolsCoverWhatIsUnder) {
  const Values values;
  Symbols symbols = values.symbols();
  EXPECT_TRUE(symbols.coversWhatIsUnder());
  symbols.stroke.setAlpha(100);
  EXPECT_FALSE(symbols.coversWhatIsUnder());
  symbols.lineWidth = 0;
  EXPECT_TRUE(symbols.coversWhatIsUnder());
  symbols.fill = QColor();
  EXPECT_FALSE(symbols.coversWhatIsUnder());
}

TEST(Symbols, aRecordingKeepsTheirValues) {
  RecordingContext recording;
  {
    const Values values;
    recording.drawSymbols(values.symbols());
  }
  ASSERT_EQ(recording.items().size(), 1u);
  EXPECT_EQ(recording.items()[0].symbols.center(1), QPointF(2, 20));
}

TEST(Symbols, aRecordingSpellsThemOutAsAFillAndAStrokeEach) {
  const Values values;
  RecordingContext recording;
  recording.drawSymbols(values.symbols());
  EXPECT_EQ(recording.fills().size(), 3u);
  EXPECT_EQ(recording.strokes().size(), 3u);
  const RecordedItem fill = recording.fills()[1];
  EXPECT_EQ(fill.color, colors::gray);
  EXPECT_EQ(fill.path.shape().boundingRect(), QRectF(-2, 16, 8, 8));
  EXPECT_EQ(recording.strokes()[2].color, colors::black);
  EXPECT_EQ(recording.strokes()[2].path.lineWidth(), 1);
}

TEST(Symbols, aRecordingFollowsAMoveAndSpellsOutOtherTransforms) {
  const Values values;
  RecordingContext recording;
  recording.concat(QTransform::fromTranslate(100, 200));
  recording.drawSymbols(values.symbols());
  EXPECT_EQ(recording.items().at(0).symbols.center(0), QPointF(101, 210));
  recording.clear();
  recording.concat(QTransform::fromScale(2, 1));
  recording.drawSymbols(values.symbols());
  ASSERT_EQ(recording.items().size(), 6u);
  EXPECT_EQ(recording.items()[0].path.shape().boundingRect(), QRectF(102 - 8, 206, 16, 8));
}

TEST(Symbols, aRecordingAsTextNamesThemInOneLine) {
  const Values values;
  RecordingContext recording;
  recording.clipToRect({0, 0, 50, 60});
  recording.drawSymbols(values.symbols());
  EXPECT_EQ(recording.toText(),
            QStringLiteral("symbols #808080 #000000 w=1 r=4 clip=[0,0 50x60] (1,10) (2,20) (3,30)\n"));
}

TEST(Symbols, replayingARecordingDrawsThemAgain) {
  const Values values;
  RecordingContext recording;
  recording.drawSymbols(values.symbols());
  const QRectF area(0, 0, 40, 40);
  const QImage direct = picture(area, 2, [&](GraphicsContext& context) { context.drawSymbols(values.symbols()); });
  const QImage replayed = picture(area, 2, [&](GraphicsContext& context) { recording.replay(context); });
  EXPECT_EQ(differingPixels(direct, replayed), 0);
}

TEST(Symbols, drawingThemLeavesTheColoursAsTheyWere) {
  const Values values;
  RecordingContext recording;
  recording.setColor(colors::red);
  recording.drawSymbols(values.symbols());
  EXPECT_EQ(recording.state().fillColor, colors::red);
  EXPECT_EQ(recording.state().strokeColor, colors::red);
}

} // namespace
} // namespace xov
