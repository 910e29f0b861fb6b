#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/BeachBallDrawing.h"
#include "XOV_Graphics/views/map/geoMapView.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace xov {
namespace {

using namespace testing;

const QRectF kFrame(0, 0, 600, 400);

class MapMargins : public ::testing::Test {
protected:
  template <typename Step>
  std::unique_ptr<RecordingContext> step(Step draw) {
    view.computeRects();
    return recordedStep([&] { (view.*draw)(); });
  }

  geoMapView view{kFrame};
};

const MomentTensor kThrust{1, 0, -1, 0, 0, 0}; // planes that strike north

MapMechanism mechanismAt(float lon, float lat, const MomentTensor& tensor, double radius) {
  MapMechanism mechanism;
  mechanism.longitudeDeg = lon;
  mechanism.latitudeDeg = lat;
  mechanism.tensor = tensor;
  mechanism.radius = radius;
  mechanism.color = Qt::red;
  return mechanism;
}

TEST_F(MapMargins, areDrawnOnlyWhenAskedFor) {
  EXPECT_TRUE(step(&geoMapView::drawMechanisms)->items().empty());
  EXPECT_TRUE(step(&geoMapView::drawLabels)->items().empty());
  EXPECT_TRUE(step(&geoMapView::drawScaleBar)->items().empty());
  EXPECT_TRUE(step(&geoMapView::drawLegend)->items().empty());
}

// 504 by 252 points at (64, 84), 1.4 a degree: 90 E is 126 points from the left edge.
TEST_F(MapMargins, beachBallsStandAtTheirPlacesInTheirColors) {
  view.setMechanisms({mechanismAt(90, 0, kThrust, 10)});
  const auto fills = step(&geoMapView::drawMechanisms)->fills();
  ASSERT_GE(fills.size(), 3U);
  EXPECT_EQ(fills[0].path.shape().boundingRect().center(), QPointF(190, 210));
  EXPECT_NEAR(fills[0].path.shape().boundingRect().width(), 20, 0.05);
  EXPECT_TRUE(fills[0].color == QColor(Qt::red) || fills[0].color == colors::white);
  EXPECT_EQ(fills.back().color, colors::black) << "the rim";
  ASSERT_TRUE(fills[0].clip);
  EXPECT_EQ(*fills[0].clip, view.mapRect());
}

// Beside the pixels that the lines and edges touch, each pixel has the colour of its ray: compressional in the middle
// of a thrust, dilatational at the sides.
TEST_F(MapMargins, beachBallsAreThoseOfTheirRays) {
  std::mt19937 random(41);
  std::normal_distribution<double> number;
  view.setXLimitsMinMax(0, 10);
  view.setYLimitsMinMax(-5, 5);
  for (int trial = 0; trial < 8; ++trial) {
    const MomentTensor m{number(random), number(random), number(random),
                         number(random), number(random), number(random)};
    view.setMechanisms({mechanismAt(5, 0, m, 60)});
    const QImage picture = view.snapshot();
    const QPointF center = view.mapRect().center();
    int compared = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        const double east = (x + 0.5 - center.x()) / 60;
        const double north = (kFrame.height() - y - 0.5 - center.y()) / 60;
        const double squared = east * east + north * north;
        if (squared > 0.93) continue;
        const double scale = std::sqrt(2 - squared); // of Lambert's projection
        const double r = squared - 1;
        const double t = -north * scale;
        const double p = east * scale;
        const double amplitude =
            m.Mrr * r * r + m.Mtt * t * t + m.Mpp * p * p + 2 * (m.Mrt * r * t + m.Mrp * r * p + m.Mtp * t * p);
        const double largest = std::abs(m.Mrr) + std::abs(m.Mtt) + std::abs(m.Mpp) +
                               2 * (std::abs(m.Mrt) + std::abs(m.Mrp) + std::abs(m.Mtp));
        if (std::abs(amplitude) < 0.06 * largest) continue;
        ++compared;
        EXPECT_EQ(picture.pixelColor(x, y), amplitude > 0 ? QColor(Qt::red) : colors::white)
            << x << ' ' << y << ", trial " << trial;
      }
    }
    EXPECT_GT(compared, 3000);
  }
}

TEST_F(MapMargins, beachBallsThatAreMovedAsideHaveALineToADotAtTheirPlace) {
  view.setMechanisms({mechanismAt(90, 0, kThrust, 20), mechanismAt(91, 0, kThrust, 10)});
  EXPECT_TRUE(step(&geoMapView::drawMechanisms)->strokes().empty()) << "they stay in their places at first";
  view.setMovesMechanismsApart(true);
  const auto strokes = step(&geoMapView::drawMechanisms)->strokes();
  ASSERT_EQ(strokes.size(), 1U);
  EXPECT_NEAR(strokes[0].segments()[0].p1().x(), 191.4, 1e-3);
}

TEST_F(MapMargins, beachBallsOutsideOfTheMapAreNotDrawn) {
  view.setXLimitsMinMax(0, 90);
  view.setMechanisms({mechanismAt(180, 0, kThrust, 10)});
  EXPECT_TRUE(step(&geoMapView::drawMechanisms)->items().empty());
}

TEST_F(MapMargins, everyPolygonSetMayHaveAColorOfItsOwn) {
  for (int i = 0; i < 2; ++i) {
    auto line = std::make_shared<XOVPolygon>();
    line->setXp({10, 20});
    line->setYp({0, 10});
    line->setNpts(2);
    view.addAPolygonSet(std::make_shared<XOVPolygonArray>(XOVPolygonArray{line}));
  }
  view.setPlateBoundaryColor(Qt::green);
  view.setPolygonSetColor(1, Qt::blue);
  view.setPolygonSetColor(7, Qt::red);
  EXPECT_FALSE(view.polygonSetColor(0).isValid());
  const auto strokes = step(&geoMapView::drawPolygons)->strokes();
  ASSERT_EQ(strokes.size(), 2U);
  EXPECT_EQ(strokes[0].color, QColor(Qt::green));
  EXPECT_EQ(strokes[1].color, QColor(Qt::blue));
}

TEST_F(MapMargins, degreeSignsStandAtTheTicks) {
  view.setShowDegreeSigns(true);
  const auto recording = step(&geoMapView::drawAxes);
  EXPECT_EQ(recording->strings(), QStringList({"0°", "45°E", "90°E", "135°E", "180°", "135°W", "90°W", "45°W", "0°",
                                               "90°S", "45°S", "0°", "45°N", "90°N"}));
  const auto east = recording->textReading(QStringLiteral("90°E"));
  ASSERT_TRUE(east);
  const double width = east->attributes.size(east->text).width();
  EXPECT_NEAR(east->position.x() + width / 2, 64 + 126, 0.01);
  // Latitudes end a fifth of 18 points left of the frame, in the middle of their ticks.
  const auto north = recording->textReading(QStringLiteral("45°N"));
  ASSERT_TRUE(north);
  const QSizeF size = north->attributes.size(north->text);
  EXPECT_NEAR(north->position.x() + size.width(), 64 - 3.6, 0.01);
  EXPECT_NEAR(north->position.y() + size.height() / 2, 84 + 135 * 1.4, 0.01);
}

TEST_F(MapMargins, degreeSignsLeaveOutLongitudesThatWouldCoverEachOther) {
  view.setGeometry(0, 0, 300, 400);
  view.setShowDegreeSigns(true);
  EXPECT_FALSE(step(&geoMapView::drawAxes)->textReading(QStringLiteral("45°E")));
  EXPECT_TRUE(step(&geoMapView::drawAxes)->textReading(QStringLiteral("180°")));
}

// Seven digits in Helvetica 18 are some 65 points wide, for which the usual 64 beside the map have no room.
TEST_F(MapMargins, latitudesOfAThousandthOfADegreeAreNotCut) {
  view.setXLimitsMinMax(13, 13.001F);
  view.setYLimitsMinMax(52, 52.001F);
  for (const bool degreeSigns : {false, true}) {
    view.setShowDegreeSigns(degreeSigns);
    // The narrowest view in which the map takes all of the width.
    view.setGeometry(0, 0, 300, 600);
    for (const RecordedItem& text : step(&geoMapView::drawAxes)->texts()) {
      EXPECT_GE(text.position.x(), 0) << qPrintable(text.text);
      EXPECT_LE(text.position.x() + text.attributes.size(text.text).width(), 300) << qPrintable(text.text);
    }
  }
}

TEST_F(MapMargins, theScaleBarIsAsLongAsItsKilometres) {
  view.setShowScaleBar(true);
  view.setXLimitsMinMax(10, 20);
  view.setYLimitsMinMax(-5, 5);
  // 320 points for 1113.195 km; a quarter is 278 km: 200 km.
  const auto recording = step(&geoMapView::drawScaleBar);
  ASSERT_TRUE(recording->textReading(QStringLiteral("200 km")));
  ASSERT_EQ(recording->strokes().size(), 1U);
  EXPECT_NEAR(recording->strokes()[0].path.shape().boundingRect().width(), 200 / 1113.195 * 320, 0.01);
}

TEST_F(MapMargins, theLegendTakesItsRoomFromTheMap) {
  view.computeRects();
  const QRectF before = view.iRect();
  view.setYLimitsMinMax(-180, 180); // as high as the frame
  view.computeRects();
  const double height = view.mapRect().height();
  view.setLegend({{QStringLiteral("Depth"), {{QStringLiteral("deep"), Qt::blue, 4}}, {}, {}}});
  view.computeRects();
  EXPECT_EQ(view.mapRect().height(), height - 24 - 8);
  const auto recording = step(&geoMapView::drawLegend);
  EXPECT_EQ(recording->strings(), QStringList({"Depth", "deep"}));
  ASSERT_EQ(recording->fills().size(), 1U);
  EXPECT_EQ(recording->fills()[0].color, QColor(Qt::blue));
  EXPECT_LT(recording->fills()[0].path.shape().boundingRect().bottom(), view.mapRect().top());
  EXPECT_EQ(before.width(), 504);
}

TEST_F(MapMargins, textsOfTheLegendBeginBehindTheirSymbols) {
  view.setLegend({{{}, {{QStringLiteral("deep"), Qt::blue, 4}}, {}, {}}});
  const auto recording = step(&geoMapView::drawLegend);
  ASSERT_EQ(recording->fills().size(), 1U);
  const QRectF dot = recording->fills()[0].path.shape().boundingRect();
  const auto text = recording->textReading(QStringLiteral("deep"));
  ASSERT_TRUE(text);
  EXPECT_NEAR(text->position.x(), dot.right() + 4, 0.01);
  EXPECT_NEAR(text->position.y() + text->attributes.size(text->text).height() / 2, dot.center().y(), 0.01);
}

TEST_F(MapMargins, namesThatWouldCoverABeachBallAreLeftOut) {
  view.setLabels({{0, 90, QStringLiteral("TLY"), 5}});
  EXPECT_EQ(step(&geoMapView::drawLabels)->strings(), QStringList("TLY"));
  view.setMechanisms({mechanismAt(90, 0, kThrust, 60)});
  EXPECT_TRUE(step(&geoMapView::drawLabels)->strings().empty());
}

TEST_F(MapMargins, aTopographyHasAColorBarOfItsElevationsInMetres) {
  view.setupImageDataNROWSNCOLS(
      std::make_shared<const std::vector<float>>(std::vector<float>{-5000, 100, 2000, 8000}), 2, 2);
  view.setColorBarTitle(QStringLiteral("Elevation (m)"));
  EXPECT_TRUE(step(&geoMapView::drawColorBar)->items().empty());
  EXPECT_EQ(view.iRect().width(), 504);
  view.setShowColorBar(true);
  const auto recording = step(&geoMapView::drawColorBar);
  EXPECT_EQ(view.iRect().width(), 504 - 88);
  EXPECT_TRUE(recording->textReading(QStringLiteral("Elevation (m)")));
  EXPECT_TRUE(recording->textReading(QStringLiteral("-4000")) || recording->textReading(QStringLiteral(" -4000")));
  EXPECT_FALSE(recording->textReading(QStringLiteral("-6000"))) << "no elevation is lower than -5000";
  view.setHideImage(true);
  EXPECT_TRUE(step(&geoMapView::drawColorBar)->items().empty());
}

TEST(BeachBallPatches, leaveOutBallsWithoutAPlaceOrASize) {
  BeachBallPatches balls;
  const BeachBall ball = beachBallOf(kThrust);
  const BeachBallLook look{Qt::red, Qt::white, Qt::black};
  balls.add(ball, {std::nan(""), 0}, 10, look);
  balls.add(ball, {0, 0}, 0, look);
  balls.add(ball, {0, 0}, HUGE_VAL, look);
  EXPECT_TRUE(balls.patches().isEmpty());
  balls.add(ball, {0, 0}, 10, look);
  EXPECT_FALSE(balls.patches().isEmpty());
}

TEST_F(MapMargins, hundredsOfBeachBallsAreDrawnOnceEach) {
  const auto rimsOf = [&](const std::vector<MapMechanism>& mechanisms) {
    view.setMechanisms(mechanisms);
    const auto fills = step(&geoMapView::drawMechanisms)->fills();
    return std::ranges::count(fills, QColor(colors::black), [](const RecordedItem& item) { return item.color; });
  };
  const auto rimsOfOne = rimsOf({mechanismAt(0, 0, kThrust, 3)});
  EXPECT_GT(rimsOfOne, 0);
  std::vector<MapMechanism> mechanisms; // as many as are drawn together, twice, and one more
  for (int i = 0; i < 2 * 256 + 1; ++i)
    mechanisms.push_back(mechanismAt(float(i % 100) - 50, float(i / 100) * 5, kThrust, 3));
  EXPECT_EQ(rimsOf(mechanisms), (2 * 256 + 1) * rimsOfOne);
}

TEST(BeachBalls, haveLinesOnlyOfAWidth) {
  const auto blackFills = [](double rimWidth, double nodalWidth) {
    BeachBallPatches balls;
    balls.add(beachBallOf(kThrust, 32), {50, 50}, 10,
              {.compressional = Qt::red,
               .dilatational = Qt::white,
               .lines = Qt::black,
               .rimWidth = rimWidth,
               .nodalWidth = nodalWidth});
    RecordingContext recording;
    recording.fillPatches(balls.patches());
    const auto fills = recording.fills();
    return std::ranges::count(fills, QColor(Qt::black), [](const RecordedItem& item) { return item.color; });
  };
  EXPECT_EQ(blackFills(0, 0), 0);
  EXPECT_EQ(blackFills(-1, -1), 0);
  EXPECT_GT(blackFills(1, 0), 0);
  EXPECT_GT(blackFills(0, 1), 0);
}

} // namespace
} // namespace xov
