#include "XOV_Graphics/views/seismic/FocalMechanismView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/seismic/MechanismLayout.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov {
namespace {

using namespace testing;

CaptionedMechanism thrust(const QString& caption = {}) {
  CaptionedMechanism captioned;
  captioned.mechanism.planes[0] = {0, 45, 90};
  captioned.caption = caption;
  return captioned;
}

// One ball takes the smaller side less the gap: 200 - 16, and with a caption of 20 below it 164 across.
TEST(BallGrid, takesTheRoomThatThereIs) {
  const BallGrid one = layOutBalls({0, 0, 400, 200}, 1, 0);
  EXPECT_EQ(one.radius, 92);
  ASSERT_EQ(one.centers.size(), 1U);
  EXPECT_EQ(one.centers[0], QPointF(200, 100));
  const BallGrid captioned = layOutBalls({0, 0, 400, 200}, 1, 20);
  EXPECT_EQ(captioned.radius, 82);
  EXPECT_EQ(captioned.centers[0], QPointF(200, 110));
}

// Eight balls on 400 by 200: four columns of 100 by 100.
TEST(BallGrid, fillsRowsFromTheUpperLeft) {
  const BallGrid grid = layOutBalls({0, 0, 400, 200}, 8, 0);
  EXPECT_EQ(grid.radius, 42);
  EXPECT_EQ(grid.cellWidth, 100);
  ASSERT_EQ(grid.centers.size(), 8U);
  EXPECT_EQ(grid.centers[0], QPointF(50, 150));
  EXPECT_EQ(grid.centers[5], QPointF(150, 50));
}

TEST(BallGrid, isEmptyWithoutRoomOrBalls) {
  EXPECT_TRUE(layOutBalls({0, 0, 400, 200}, 0, 0).centers.empty());
  EXPECT_TRUE(layOutBalls({0, 0, 10, 200}, 1, 0).centers.empty());
  EXPECT_TRUE(layOutBalls({0, 0, -5, 200}, 1, 0).centers.empty());
  EXPECT_TRUE(layOutBalls({0, 0, 400, 200}, 100000, 0).centers.empty());
}

// A thrust on planes that strike north: T upright, P to the east or the west, N along the strike.
TEST(MechanismLines, tellPlanesAndAxes) {
  const QStringList lines = mechanismLines(thrust().mechanism);
  ASSERT_EQ(lines.size(), 5);
  EXPECT_EQ(lines[0], QStringLiteral("Plane 1: strike 0°, dip 45°, rake 90°"));
  EXPECT_EQ(lines[1], QStringLiteral("Plane 2: strike 180°, dip 45°, rake 90°"));
  EXPECT_TRUE(lines[2].endsWith(QStringLiteral("plunge 90°")));
  EXPECT_TRUE(lines[4].endsWith(QStringLiteral("plunge 0°")));
}

// 2/3 (log10 1e18 - 9.1) = 5.93. Values of 1, 0.2 and -1.2: no volume, a dipole of 2/3 · -0.6 = -0.4, a couple of
// (2.2 - 0.6) / 2 = 0.8, thus a third and two thirds.
TEST(MechanismLines, tellMomentAndSharesOfATensor) {
  FocalMechanism mechanism;
  mechanism.tensor = MomentTensor{1e18, 0, -1e18, 0, 0, 0};
  EXPECT_EQ(mechanismLines(mechanism).back(), QStringLiteral("Moment 1.00e18 N m, Mw 5.9"));
  mechanism.tensor = MomentTensor{1, 0.2, -1.2, 0, 0, 0};
  EXPECT_EQ(mechanismLines(mechanism).back(), QStringLiteral("Double couple 67 %, CLVD -33 %, isotropic 0 %"));
  mechanism.tensor = MomentTensor{1, 1, 1, 0, 0, 0};
  EXPECT_EQ(mechanismLines(mechanism), QStringList("Double couple 0 %, CLVD 0 %, isotropic 100 %"));
  EXPECT_TRUE(mechanismLines({}).empty());
}

class MechanismView : public ::testing::Test {
protected:
  std::unique_ptr<RecordingContext> drawn() {
    return recordedStep([&] { view.drawRect(view.bounds()); });
  }
  FocalMechanismView view{QRectF(0, 0, 560, 340)};
};

TEST_F(MechanismView, drawsABallAndNothingElseAtFirst) {
  view.setMechanisms({thrust()});
  const auto recording = drawn();
  EXPECT_TRUE(recording->strings().empty());
  EXPECT_GE(recording->fills().size(), 4U);
}

// 280 points of height less a gap of 16 have room for a ball of 264. A plane that dips 45 degrees passes 0.5412 of a
// radius beside the middle: so the lens of a thrust is 142.9 across, half a line more outside and as much less
// inside.
TEST_F(MechanismView, hasWiderLinesWhereItIsLarge) {
  std::vector<double> widths;
  const auto draw = [&](std::size_t count) {
    view.setMechanisms(std::vector<CaptionedMechanism>(count, thrust()));
    widths.clear();
    for (const RecordedItem& fill : drawn()->fills()) { // the other end of a cone is a point without width
      if (const double width = fill.path.shape().boundingRect().width(); width > 1) widths.push_back(width);
    }
    ASSERT_EQ(widths.size(), 1 + 4 * count) << "paper; ball, line, lens and rim";
  };
  draw(1);
  EXPECT_NEAR(widths[1], 264, 0.05);
  EXPECT_NEAR(widths[2], 142.9 + 1, 0.1);
  EXPECT_NEAR(widths[3], 142.9 - 1, 0.1);
  EXPECT_NEAR(widths[4], 264 + 1.5, 0.05);
  draw(50);
  ASSERT_LT(widths[1], 80) << "a radius of less than 40";
  EXPECT_NEAR(widths[2] - widths[3], 2 * 0.4, 0.02);
  EXPECT_NEAR(widths[4] - widths[1], 0.75, 0.02);
}

TEST_F(MechanismView, marksTheAxesWhereTheyLeaveTheHalfSphere) {
  // Left-lateral slip on a plane that strikes north: T to the north-east and the south-west, along the rim.
  CaptionedMechanism slip;
  slip.mechanism.planes[0] = {0, 90, 0};
  view.setMechanisms({slip});
  view.setShowPrincipalAxes(true);
  const auto recording = drawn();
  const auto t = recording->textReading(QStringLiteral("T"));
  const auto p = recording->textReading(QStringLiteral("P"));
  ASSERT_TRUE(t && p);
  const QPointF center = view.iRect().center();
  const QPointF toT = t->position - center;
  EXPECT_GT(toT.x() * toT.y(), 0);
  const QPointF toP = p->position - center;
  EXPECT_LT(toP.x() * toP.y(), 0);
}

TEST_F(MechanismView, drawsTheNodalPlanesOfTheBestCouple) {
  view.setMechanisms({thrust()});
  const std::size_t without = drawn()->strokes().size();
  view.setShowNodalPlanes(true);
  EXPECT_EQ(drawn()->strokes().size(), without + 2);
}

TEST_F(MechanismView, tellsTheDetailsOfASingleOne) {
  view.setMechanisms({thrust()});
  view.setShowDetails(true);
  EXPECT_TRUE(drawn()->textReading(QStringLiteral("Plane 1: strike 0°, dip 45°, rake 90°")));
  view.setMechanisms({thrust(), thrust()});
  EXPECT_TRUE(drawn()->strings().empty());
}

TEST_F(MechanismView, writesCaptionsBelowTheBallsAndCutsThoseThatAreTooWide) {
  view.setMechanisms({thrust(QStringLiteral("first")), thrust(QString(200, QLatin1Char('w')))});
  const auto recording = drawn();
  EXPECT_TRUE(recording->textReading(QStringLiteral("first")));
  ASSERT_EQ(recording->texts().size(), 2U);
  const RecordedItem cut = recording->texts()[1];
  EXPECT_TRUE(cut.text.endsWith(QChar(0x2026)));
  EXPECT_LE(cut.attributes.size(cut.text).width(), 560 / 2.0);
}

TEST_F(MechanismView, leavesThePlaceOfAnUnknownOneEmpty) {
  view.setMechanisms({CaptionedMechanism{{}, QStringLiteral("unknown")}});
  const auto recording = drawn();
  EXPECT_EQ(recording->strings(), QStringList("unknown"));
  EXPECT_EQ(recording->fills().size(), 1U) << "the paper";
}

// 480 × 360 points have room for a ball of 142 about (240, 162), or with a caption of 134 about (240, 170).
TEST(FocalMechanismView, tellsTheDirectionThatLiesAtAPlaceOfABall) {
  FocalMechanismView view(QRectF(0, 0, 480, 360));
  EXPECT_TRUE(view.readout({240, 162}).isEmpty());
  view.setMechanisms({thrust()});
  recorded(view);
  EXPECT_EQ(view.readout({240, 162}).value(QLatin1String("plunge")), 90);
  const PlotReadout east = view.readout({240 + 142 * 0.541196, 162});
  EXPECT_NEAR(east.value(QLatin1String("plunge")), 45, 1e-4);
  EXPECT_NEAR(east.value(QLatin1String("azimuth")), 90, 1e-9);
  EXPECT_TRUE(view.readout({240 + 143, 162}).isEmpty());
  EXPECT_TRUE(view.readout({double(kNan), 162}).isEmpty());
  view.setMechanisms({thrust(QStringLiteral("Tohoku"))});
  EXPECT_EQ(view.readout({240, 170}).find(QLatin1String("mechanism"))->text, QStringLiteral("Tohoku"));
  view.setMechanisms({CaptionedMechanism{{}, QStringLiteral("unknown")}}); // its place is empty
  EXPECT_TRUE(view.readout({240, 170}).isEmpty());
}

TEST(FocalMechanismView, showsItsSizeOnlyWhileItIsResized) {
  FocalMechanismView view(QRectF(0, 0, 400, 300));
  view.setMechanisms({thrust()});
  view.show();
  view.resize(420, 300);
  ASSERT_TRUE(view.inLiveResize());
  RecordingContext recording;
  view.drawInto(recording);
  ASSERT_EQ(recording.strings().size(), 1);
  EXPECT_TRUE(recording.strings()[0].endsWith(QStringLiteral(" (inches)")));
}

} // namespace
} // namespace xov
