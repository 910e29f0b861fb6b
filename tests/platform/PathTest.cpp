#include "XOV_Graphics/platform/Path.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

namespace xov {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(Path, startsWithThePlainStrokeSettings) {
  const Path path;
  EXPECT_TRUE(path.isEmpty());
  EXPECT_EQ(path.lineWidth(), 1);
  EXPECT_EQ(path.lineCap(), Path::Cap::Butt);
  EXPECT_EQ(path.lineJoin(), Path::Join::Miter);
  EXPECT_EQ(path.miterLimit(), 10);
  EXPECT_EQ(path.windingRule(), Path::Winding::NonZero);
  EXPECT_TRUE(path.dashes().empty());
}

TEST(Path, keepsItsPiecesInOrder) {
  Path path;
  path.moveTo({1, 2});
  path.lineTo({3, 4});
  path.moveTo({5, 6});
  path.lineTo({7, 8});
  const std::vector<QPolygonF> lines = path.polylines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], QPolygonF({{1, 2}, {3, 4}}));
  EXPECT_EQ(lines[1], QPolygonF({{5, 6}, {7, 8}}));
}

TEST(Path, aLineWithoutACurrentPointMoves) {
  Path path;
  path.lineTo({3, 4});
  path.lineTo({5, 6});
  ASSERT_EQ(path.polylines().size(), 1u);
  EXPECT_EQ(path.polylines()[0], QPolygonF({{3, 4}, {5, 6}}));
}

TEST(Path, aPointThatIsNotFiniteBreaksTheLine) {
  Path path;
  path.moveTo({0, 0});
  path.lineTo({1, 0});
  path.lineTo({kNaN, 0});
  path.lineTo({3, 0});
  path.lineTo({4, 0});
  path.lineTo({5, std::numeric_limits<double>::infinity()});
  ASSERT_EQ(path.polylines().size(), 2u);
  EXPECT_EQ(path.polylines()[0], QPolygonF({{0, 0}, {1, 0}}));
  EXPECT_EQ(path.polylines()[1], QPolygonF({{3, 0}, {4, 0}}));
}

TEST(Path, removingAllPointsKeepsTheStrokeSettings) {
  Path path;
  path.setLineWidth(3);
  path.setLineCap(Path::Cap::Round);
  path.appendRect({0, 0, 1, 1});
  path.removeAllPoints();
  EXPECT_TRUE(path.isEmpty());
  EXPECT_EQ(path.lineWidth(), 3);
  EXPECT_EQ(path.lineCap(), Path::Cap::Round);
}

TEST(Path, widthsThatCannotBeDrawnCountAsZero) {
  Path path;
  path.setLineWidth(-1);
  EXPECT_EQ(path.lineWidth(), 0);
  path.setLineWidth(kNaN);
  EXPECT_EQ(path.lineWidth(), 0);
}

TEST(Path, dashesThatCannotBeDrawnMeanAnUnbrokenLine) {
  Path path;
  path.setDashes({2, 1}, 0.5);
  EXPECT_EQ(path.dashes(), (std::vector<double>{2, 1}));
  EXPECT_EQ(path.dashPhase(), 0.5);
  for (const std::vector<double>& bad : {std::vector<double>{0, 0}, {1, -1}, {kNaN, 1}, {}}) {
    path.setDashes(bad, 1);
    EXPECT_TRUE(path.dashes().empty());
    EXPECT_EQ(path.dashPhase(), 0);
  }
}

TEST(Path, anArcRunsAnticlockwiseWithYUpwards) {
  Path path;
  path.appendArc({10, 20}, 5, 0, 90);
  const QPolygonF arc = path.polylines().at(0);
  EXPECT_NEAR(arc.first().x(), 15, 1e-9); // angle 0 is to the right
  EXPECT_NEAR(arc.first().y(), 20, 1e-9);
  EXPECT_NEAR(arc.last().x(), 10, 1e-9); // angle 90 is up
  EXPECT_NEAR(arc.last().y(), 25, 1e-9);
}

TEST(Path, anArcOfEqualAnglesIsAFullCircle) {
  Path path;
  path.appendArc({0, 0}, 2, 30, 390);
  EXPECT_NEAR(path.shape().boundingRect().width(), 4, 0.01);
  EXPECT_NEAR(path.shape().boundingRect().height(), 4, 0.01);
}

TEST(Path, anOvalFillsItsRectangle) {
  Path path;
  path.appendOval({1, 2, 6, 4});
  const QRectF box = path.shape().boundingRect();
  EXPECT_NEAR(box.left(), 1, 1e-6);
  EXPECT_NEAR(box.bottom(), 6, 1e-6);
}

TEST(Path, shapesThatAreNotFiniteAddNothing) {
  Path path;
  path.appendRect({0, 0, kNaN, 1});
  path.appendOval({kNaN, 0, 1, 1});
  path.appendArc({0, 0}, kNaN, 0, 90);
  EXPECT_TRUE(path.isEmpty());
}

TEST(Path, anEmptyTraceAddsNothing) {
  const float sample = 0;
  Trace trace;
  trace.samples = &sample;
  Path path;
  path.appendTrace(trace);
  EXPECT_TRUE(path.isEmpty());
  trace.last = 1;
  path.appendTrace(trace);
  EXPECT_FALSE(path.isEmpty());
}

TEST(Path, spellsOutTracesOnRequestAndBreaksThemAtGaps) {
  const std::vector<float> samples = {1, 2, std::numeric_limits<float>::quiet_NaN(), 3, 4};
  Trace trace;
  trace.samples = samples.data();
  trace.last = 5;
  trace.time = TraceTime::uniform(0, 10);
  trace.yScale = 2;
  trace.yOffset = 100;
  Path path;
  path.appendTrace(trace);
  const auto lines = path.polylines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], QPolygonF({{0, 102}, {10, 104}}));
  EXPECT_EQ(lines[1], QPolygonF({{30, 106}, {40, 108}}));
}

TEST(Path, aTraceThatIsMovedAndScaledStaysADescription) {
  const std::vector<float> samples = {1, 2};
  Trace trace;
  trace.samples = samples.data();
  trace.last = 2;
  Path path;
  path.appendTrace(trace);
  const Path moved = path.transformed(QTransform(2, 0, 0, -3, 5, 7));
  ASSERT_EQ(moved.traces().size(), 1u);
  // (0,1) and (1,2) under x' = 2x + 5, y' = −3y + 7.
  EXPECT_EQ(moved.polylines().at(0), QPolygonF({{5, 4}, {7, 1}}));
}

TEST(Path, aTraceThatIsTurnedBecomesLines) {
  const std::vector<float> samples = {1, 2};
  Trace trace;
  trace.samples = samples.data();
  trace.last = 2;
  Path path;
  path.appendTrace(trace);
  const Path turned = path.transformed(QTransform(0, 1, -1, 0, 0, 0)); // 90 degrees: (x, y) to (−y, x)
  EXPECT_TRUE(turned.traces().empty());
  EXPECT_EQ(turned.polylines().at(0), QPolygonF({{-1, 0}, {-2, 1}}));
}

TEST(Path, aCurveBeginsAtThePenOrWithoutOneAtItsFirstControlPoint) {
  Path path;
  path.moveTo({0, 0});
  path.curveTo({0, 10}, {10, 10}, {10, 0});
  // Halfway a cubic curve is at an eighth of its ends and three eighths of its control points.
  EXPECT_NEAR(path.shape().pointAtPercent(0.5).x(), 5, 1e-9);
  EXPECT_NEAR(path.shape().pointAtPercent(0.5).y(), 7.5, 1e-9);
  Path without;
  without.curveTo({0, 10}, {10, 10}, {10, 0});
  EXPECT_EQ(QPointF(without.shape().elementAt(0)), QPointF(0, 10));
  EXPECT_EQ(without.shape().currentPosition(), QPointF(10, 0));
}

TEST(Path, aCurveWithAPointThatIsNotFiniteIsNotDrawn) {
  const QPointF sound(1, 2), odd(kNaN, 0);
  for (const auto& [a, b, c] :
       {std::tuple(odd, sound, sound), std::tuple(sound, odd, sound), std::tuple(sound, sound, odd)}) {
    Path path;
    path.curveTo(a, b, c);
    EXPECT_TRUE(path.isEmpty());
  }
}

} // namespace
} // namespace xov
