#include "XOV_Graphics/graphics/AGraphics.h"

#include "AxisFixture.h"

#include <array>
#include <limits>

namespace xov {
namespace {

using Globals = std::array<std::int32_t, 8>;

Globals globals() { return {gDevice, gFont, gFontsize, gJustify, gPenWidth, gPosDown, gXsecTic, gYsecTic}; }

// Taken while the program starts, before any test can have called AInitGraphLib().
const Globals kAtStart = globals();

/// Strings and numbers drawn about the point (200, 100).
class AGraphics : public AxisFixture {
protected:
  template <class Draw>
  void record(const Draw& draw) {
    recording_.clear();
    const GraphicsContext::Pass pass(recording_);
    draw();
  }
  QPointF positionOf(const char* text, int justify) {
    record([&] {
      ASetJustify(justify);
      ADrawStr(text, 200, 100);
    });
    return recording_.items().at(0).position;
  }
  std::string drawnFloat(float value, int decimals) {
    record([&] { ADrawFloat(value, decimals, 200, 100); });
    return strings().join(QLatin1Char('|')).toStdString();
  }
  std::string drawnInt(int value, int width) {
    record([&] { ADrawInt(value, width, 200, 100); });
    return strings().join(QLatin1Char('|')).toStdString();
  }
};

using AGraphicsDeathTest = AGraphics;

// State

TEST(AGraphicsGlobals, areZeroBeforeTheFirstInit) { EXPECT_EQ(kAtStart, Globals{}); }

TEST_F(AGraphics, initSetsFontSizeJustificationAndSecondaryTicks) {
  gFont = gFontsize = gJustify = gXsecTic = gYsecTic = 7;
  AInitGraphLib();
  EXPECT_EQ(gFont, 20);
  EXPECT_EQ(gFontsize, 18);
  EXPECT_EQ(gJustify, 1);
  EXPECT_EQ(gXsecTic, 1);
  EXPECT_EQ(gYsecTic, 1);
}

TEST_F(AGraphics, initLeavesDevicePenWidthAndPosDownAlone) {
  gDevice = 3;
  gPenWidth = 4;
  gPosDown = 5;
  AInitGraphLib();
  EXPECT_EQ(gDevice, 3);
  EXPECT_EQ(gPenWidth, 4);
  EXPECT_EQ(gPosDown, 5);
  gDevice = gPenWidth = gPosDown = 0;
}

TEST_F(AGraphics, initKeepsTheLabelAttributesAndTheAxisRectangle) {
  AInitGraphLib();
  ASetPath(path_);
  drawAxis(1, 3, 2, 0, 10);
  EXPECT_EQ(recording_.texts().at(0).attributes, *attributes_);
  EXPECT_EQ(frameLines(), (std::vector<AxisSegment>{{60, 50, 460, 50}, {60, 350, 460, 350}}));
}

TEST_F(AGraphics, initClearsThePowerFlags) {
  ASetXAxisPowerFlag(1);
  ASetYAxisPowerFlag(1);
  AInitGraphLib();
  drawAxis(1, 3, 2, 0, 1e12f);
  EXPECT_STREQ(label_, "");
  drawAxis(2, 1, 2, 0, 1e12f);
  EXPECT_STREQ(label_, "");
}

TEST_F(AGraphics, settersWriteTheGlobals) {
  ASetFontSize(11);
  ASetJustify(6);
  EXPECT_EQ(gFontsize, 11);
  EXPECT_EQ(gJustify, 6);
}

// Pen

TEST_F(AGraphics, penAppendsToThePath) {
  AMove(1, 2);
  ALine(3, 4);
  AFMove(0.25f, -1.5f);
  AFLine(2.75f, 8);
  EXPECT_EQ(segments(), (std::vector<AxisSegment>{{1, 2, 3, 4}, {0.25f, -1.5f, 2.75f, 8}}));
}

TEST_F(AGraphics, penDrawsNothingByItself) {
  record([] {
    AMove(1, 2);
    ALine(3, 4);
  });
  EXPECT_TRUE(recording_.items().empty());
}

TEST_F(AGraphics, lineWidthGoesToThePath) {
  ASetLineWidth(0.75f);
  EXPECT_EQ(path_->lineWidth(), 0.75);
}

TEST_F(AGraphics, penWithoutAPathAddsNothing) {
  ASetPath(nullptr);
  AMove(1, 2);
  ALine(3, 4);
  AFMove(1, 2);
  AFLine(3, 4);
  ASetLineWidth(5);
  EXPECT_TRUE(path_->isEmpty());
  EXPECT_EQ(path_->lineWidth(), 1);
}

TEST_F(AGraphics, penAfterInitAddsNothing) {
  AInitGraphLib();
  AMove(1, 2);
  ALine(3, 4);
  AFMove(1, 2);
  AFLine(3, 4);
  ASetLineWidth(5);
  EXPECT_TRUE(path_->isEmpty());
  EXPECT_EQ(path_->lineWidth(), 1);
}

TEST_F(AGraphics, penForgetsAPathThatItsOwnerLetGo) {
  const std::weak_ptr<Path> watched = path_;
  path_.reset();
  EXPECT_TRUE(watched.expired());
  AMove(1, 2);
  ALine(3, 4);
  ASetLineWidth(5);
}

TEST_F(AGraphics, pointsThatAreNotFiniteLiftThePen) {
  AFMove(0, 0);
  AFLine(std::numeric_limits<float>::quiet_NaN(), 1);
  AFLine(2, 2);
  AFLine(3, 3);
  EXPECT_EQ(segments(), (std::vector<AxisSegment>{{2, 2, 3, 3}}));
}

// Strings

TEST_F(AGraphics, code1StartsTheStringAtThePoint) { EXPECT_EQ(positionOf("abc", 1), QPointF(200, 100)); }

TEST_F(AGraphics, code2CentersTheStringOnThePoint) {
  EXPECT_EQ(positionOf("abc", 2), QPointF(200 - sizeOf("abc").width() / 2, 100));
}

TEST_F(AGraphics, code3EndsTheStringAtThePoint) {
  EXPECT_EQ(positionOf("abc", 3), QPointF(200 - sizeOf("abc").width(), 100));
}

// The text box of one line of 14 points is 1.15 · 14 = 16.1 points high.
TEST_F(AGraphics, code4MovesTheStringLeftByHalfItsHeightAndNotDown) {
  const QPointF position = positionOf("abc", 4);
  EXPECT_NEAR(position.x(), 200 - 16.1 / 2, 1e-9);
  EXPECT_EQ(position.y(), 100);
}

TEST_F(AGraphics, codes5And6AddHalfTheHeightToCodes2And3) {
  EXPECT_NEAR(positionOf("abc", 5).x(), positionOf("abc", 2).x() - 16.1 / 2, 1e-9);
  EXPECT_NEAR(positionOf("abc", 6).x(), positionOf("abc", 3).x() - 16.1 / 2, 1e-9);
  EXPECT_EQ(positionOf("abc", 5).y(), 100);
  EXPECT_EQ(positionOf("abc", 6).y(), 100);
}

TEST_F(AGraphics, codes0And7DrawLikeCode1) {
  EXPECT_EQ(positionOf("abc", 0), QPointF(200, 100));
  EXPECT_EQ(positionOf("abc", 7), QPointF(200, 100));
  EXPECT_EQ(positionOf("abc", -1), QPointF(200, 100));
}

TEST_F(AGraphics, stringsShowLaterChangesOfTheAttributes) {
  attributes_->setFont("Helvetica", 30);
  attributes_->setColor(QColor(Qt::red));
  record([] { ADrawStr("abc", 0, 0); });
  EXPECT_EQ(recording_.items().at(0).attributes.pointSize(), 30);
  EXPECT_EQ(recording_.items().at(0).color, QColor(Qt::red));
}

TEST_F(AGraphics, stringsHaveDefaultAttributesWhenNoneAreThere) {
  record([] {
    ASetTickLabelAttributes(nullptr);
    ADrawStr("abc", 0, 0);
  });
  EXPECT_EQ(recording_.items().at(0).attributes, TextAttributes());
}

TEST_F(AGraphics, stringsHaveDefaultAttributesWhenTheirOwnerLetThemGo) {
  const std::weak_ptr<TextAttributes> watched = attributes_;
  attributes_.reset();
  EXPECT_TRUE(watched.expired());
  record([] { ADrawStr("abc", 0, 0); });
  EXPECT_EQ(recording_.items().at(0).attributes, TextAttributes());
}

TEST_F(AGraphics, aNullStringDrawsNothing) {
  record([] { ADrawStr(nullptr, 0, 0); });
  EXPECT_TRUE(recording_.items().empty());
}

TEST_F(AGraphics, stringsMayHoldCharactersBeyondAscii) {
  record([] { ADrawStr("30 \xC2\xB0", 0, 0); });
  EXPECT_EQ(strings(), QStringList{QStringLiteral(u"30 \u00B0")});
}

TEST_F(AGraphics, bytesThatAreNoCharacterShowAsTheReplacementCharacter) {
  record([] { ADrawStr("a\xE9z", 0, 0); });
  EXPECT_EQ(strings(), QStringList{QStringLiteral(u"a\uFFFDz")});
}

TEST_F(AGraphics, stringsOutsideADrawingPassAreIgnored) {
  ADrawStr("abc", 0, 0);
  ADrawStrAtAngle("abc", 0, 0, 90);
  EXPECT_TRUE(recording_.items().empty());
}

// Strings at an angle

TEST_F(AGraphics, aStringAtAnAngleIsLevelAtTheOrigin) {
  record([] {
    GraphicsContext::current().saveState();
    ASetJustify(2);
    ADrawStrAtAngle("abc", 200, 100, 90);
  });
  EXPECT_EQ(recording_.items().at(0).position, QPointF(0, 0));
  EXPECT_EQ(recording_.items().at(0).angleDegrees, 0);
}

TEST_F(AGraphics, aStringAtAnAngleStandsAtTheOriginOfTheCurrentCoordinates) {
  record([] {
    GraphicsContext::current().saveState();
    GraphicsContext::current().concat(QTransform::fromTranslate(30, 40));
    ADrawStrAtAngle("abc", 200, 100, 90);
    ADrawStr("abc", 0, 0);
  });
  EXPECT_EQ(recording_.items().at(0).position, QPointF(30, 40));
  EXPECT_EQ(recording_.items().at(1).position, QPointF(0, 0));
}

TEST_F(AGraphics, aStringAtAnAngleRestoresTheStateThatTheCallerSaved) {
  record([] {
    GraphicsContext& context = GraphicsContext::current();
    context.setColor(QColor(Qt::blue));
    const std::size_t depth = context.stateDepth();
    context.saveState();
    context.setColor(QColor(Qt::red));
    ADrawStrAtAngle("abc", 0, 0, 90);
    EXPECT_EQ(context.stateDepth(), depth);
    EXPECT_EQ(context.state().strokeColor, QColor(Qt::blue));
  });
}

TEST_F(AGraphics, aNullStringAtAnAngleStillRestoresTheState) {
  record([] {
    GraphicsContext& context = GraphicsContext::current();
    const std::size_t depth = context.stateDepth();
    context.saveState();
    ADrawStrAtAngle(nullptr, 0, 0, 90);
    EXPECT_EQ(context.stateDepth(), depth);
  });
}

TEST_F(AGraphics, restoringAStateThatWasNotSavedIsHarmless) {
  record([] {
    for (int i = 0; i < 5; ++i)
      ADrawStrAtAngle("abc", 0, 0, 90);
    EXPECT_EQ(GraphicsContext::current().stateDepth(), 1u);
  });
  EXPECT_EQ(recording_.items().size(), 5u);
  EXPECT_EQ(recording_.stateDepth(), 1u);
}

// Numbers

TEST_F(AGraphics, zeroIsDrawnWithAnExponent) { EXPECT_EQ(drawnFloat(0, 2), "+0.00e+00"); }

TEST_F(AGraphics, tenThousandIsDrawnInFull) { EXPECT_EQ(drawnFloat(10000, 1), "+10000.0"); }

TEST_F(AGraphics, numbersAboveTenThousandAreDrawnWithAnExponent) { EXPECT_EQ(drawnFloat(10001, 1), "+1.0e+04"); }

TEST_F(AGraphics, aThousandthIsDrawnInFull) { EXPECT_EQ(drawnFloat(0.001f, 3), "+0.001"); }

// The single-precision number next to 1e-4 is 9.99999975e-5.
TEST_F(AGraphics, aTenThousandthIsDrawnWithAnExponentSinceItIsStoredJustBelow) {
  EXPECT_EQ(drawnFloat(0.0001f, 1), "+1.0e-04");
}

TEST_F(AGraphics, negativeNumbersFollowTheirMagnitude) {
  EXPECT_EQ(drawnFloat(-10000, 1), "-10000.0");
  EXPECT_EQ(drawnFloat(-10001, 1), "-1.0e+04");
}

TEST_F(AGraphics, negativeDecimalsMeanSix) { EXPECT_EQ(drawnFloat(1, -1), "+1.000000"); }

TEST_F(AGraphics, infinityAndNanAreDrawnByName) {
  EXPECT_EQ(drawnFloat(std::numeric_limits<float>::infinity(), 2), "+inf");
  EXPECT_EQ(drawnFloat(std::numeric_limits<float>::quiet_NaN(), 2), "+nan");
}

// A sign, a digit, the point and 28 decimals.
TEST_F(AGraphics, numbersOf31CharactersAreDrawn) { EXPECT_EQ(drawnFloat(1, 28), "+1." + std::string(28, '0')); }

TEST_F(AGraphicsDeathTest, numbersOf32CharactersStopTheProgramAndAreNamed) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(ADrawFloat(1, 29, 200, 100), "ADrawFloat: \\+1\\.0{29} is longer than 31 characters");
}

// All of 33 decimals and more are taken for 32, which is 35 characters.
TEST_F(AGraphicsDeathTest, decimalsAreHeldTo32) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(ADrawFloat(1, std::numeric_limits<int>::max(), 200, 100), "ADrawFloat: \\+1\\.0{32} is");
}

TEST_F(AGraphics, numbersAreJustified) {
  record([] {
    ASetJustify(3);
    ADrawFloat(1, 1, 200, 100);
    ADrawInt(12, 0, 200, 100);
  });
  EXPECT_EQ(recording_.items().at(0).position, QPointF(200 - sizeOf("+1.0").width(), 100));
  EXPECT_EQ(recording_.items().at(1).position, QPointF(200 - sizeOf("12").width(), 100));
}

TEST_F(AGraphics, integersIgnoreTheWidth) {
  EXPECT_EQ(drawnInt(5, 99), "5");
  EXPECT_EQ(drawnInt(5, -99), "5");
}

TEST_F(AGraphics, theLongestIntegerIsDrawn) {
  EXPECT_EQ(drawnInt(std::numeric_limits<int>::min(), 0), "-2147483648");
}

} // namespace
} // namespace xov
