#include "XOV_Graphics/views/seismic/ParticleMotionView.h"

#include "XOV_Graphics/views/seismic/MotionPanels.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov {
namespace {

using namespace testing;

std::shared_ptr<const std::vector<float>> samples(std::vector<float> values) {
  return std::make_shared<const std::vector<float>>(std::move(values));
}

// Up and to the north-east: 1 up for 1 north and 1 east.
ParticleMotion alongALine() {
  ParticleMotion motion;
  const auto values = samples({0, 1, -1, 2, -2});
  motion.samples = {values, values, values};
  motion.names = {QStringLiteral("BHZ"), QStringLiteral("BHN"), QStringLiteral("BHE")};
  return motion;
}

// (900 - 200) / 3 = 233.3 across and 400 - 110 = 290 upright.
TEST(MotionPanels, areSquaresBesideEachOther) {
  const MotionPanels panels = layOutMotionPanels({0, 0, 900, 400});
  EXPECT_NEAR(panels.panel[0].width(), 700.0 / 3, 1e-9);
  EXPECT_EQ(panels.panel[0].height(), panels.panel[0].width());
  EXPECT_EQ(panels.panel[0].left(), 60);
  EXPECT_NEAR(panels.panel[2].right(), 880, 1e-9);
  const MotionPanels low = layOutMotionPanels({0, 0, 900, 210});
  EXPECT_EQ(low.panel[1].height(), 100);
  EXPECT_EQ(low.panel[1].width(), 100);
  EXPECT_EQ(layOutMotionPanels({0, 0, 50, 50}).panel[0].width(), 0);
}

TEST(MotionScale, hasRoundIntervalsAndPlainLabelsOfUsualRanges) {
  EXPECT_EQ(motionScale(4000).exponent, 0);
  EXPECT_EQ(motionScale(4000).interval, 1000);
  EXPECT_EQ(motionScale(4).interval, 1);
  EXPECT_EQ(motionScale(9).interval, 2);
  // Half of 3e-7 is 1.5e-7: labels to 1.5, a fifth of 3 is 0.6.
  EXPECT_EQ(motionScale(3e-7F).exponent, -7);
  EXPECT_EQ(motionScale(3e-7F).interval, 1);
  EXPECT_EQ(motionScale(3e6F).exponent, 6);
  for (const float odd : {0.0F, -1.0F, std::nanf(""), HUGE_VALF, 1e-45F})
    EXPECT_EQ(motionScale(odd).interval, 0) << odd;
}

class MotionView : public ::testing::Test {
protected:
  std::unique_ptr<RecordingContext> drawn() {
    return recordedStep([&] { view.drawRect(view.bounds()); });
  }
  ParticleMotionView view{QRectF(0, 0, 900, 400)};
};

TEST_F(MotionView, takesOneScaleForAllComponents) {
  ParticleMotion motion = alongALine();
  motion.samples[1] = samples({0, 10, -20, 0, 0});
  view.setMotion(motion);
  EXPECT_EQ(view.xmax(), 21);
  EXPECT_EQ(view.xmin(), -21);
  EXPECT_EQ(view.ymax(), 21);
  view.set_fixedXAxisRange(true);
  view.setMotion(alongALine());
  EXPECT_EQ(view.xmax(), 21);
}

TEST_F(MotionView, showsThePathFromAboveAndFromTwoSides) {
  view.setMotion(alongALine());
  std::vector<RecordedItem> paths;
  for (const RecordedItem& stroke : drawn()->strokes()) {
    if (!stroke.path.traces().empty()) paths.push_back(stroke);
  }
  ASSERT_EQ(paths.size(), 3U);
  const MotionPanels panels = layOutMotionPanels(view.bounds());
  for (std::size_t i = 0; i < 3; ++i) {
    const QRectF box = paths[i].path.polylines()[0].boundingRect();
    EXPECT_NEAR(box.center().x(), panels.panel[i].center().x(), 1e-3);
    // From -2 to 2 of -2.1 to 2.1.
    EXPECT_NEAR(box.width(), panels.panel[i].width() / 1.05, 1e-3);
    EXPECT_NEAR(box.height(), panels.panel[i].height() / 1.05, 1e-3);
  }
}

TEST_F(MotionView, namesTheComponentsAtTheirAxes) {
  view.setMotion(alongALine());
  const QStringList names = drawn()->strings().filter(QStringLiteral("BH"));
  EXPECT_EQ(names, QStringList({"BHE", "BHN", "BHN", "BHZ", "BHE", "BHZ"}));
}

// The ray goes up, north and east alike: 45 degrees of azimuth, and tan i = √2, 54.7 degrees from the vertical.
TEST_F(MotionView, tellsWhereTheWaveGoesAndComesFrom) {
  view.setMotion(alongALine());
  EXPECT_EQ(view.polarizationText(), QStringLiteral("azimuth 45° (back azimuth 225°), incidence 55°, rectilinearity "
                                                    "1.00, planarity 1.00"));
  EXPECT_FALSE(drawn()->strings().contains(view.polarizationText()));
  view.setShowPolarization(true);
  EXPECT_TRUE(drawn()->strings().contains(view.polarizationText()));
  ParticleMotion turned = alongALine();
  turned.firstAzimuthDeg = 340;
  view.setMotion(turned);
  EXPECT_TRUE(view.polarizationText().startsWith(QStringLiteral("azimuth 25° (back azimuth 205°)")));
}

TEST_F(MotionView, drawsTheDirectionOfTheLargestMotion) {
  view.setMotion(alongALine());
  view.setShowPolarization(true);
  std::vector<RecordedItem> dashed;
  for (const RecordedItem& stroke : drawn()->strokes()) {
    if (!stroke.path.dashes().empty()) dashed.push_back(stroke);
  }
  ASSERT_EQ(dashed.size(), 3U);
  const QLineF line = dashed[0].segments()[0];
  EXPECT_NEAR(line.dx(), line.dy(), 1e-9);
  EXPECT_GT(std::abs(line.dx()), 50);
}

TEST_F(MotionView, showsWhatThereIsOfOddMotion) {
  view.setShowPolarization(true);
  view.setMotion({});
  EXPECT_TRUE(view.polarizationText().isEmpty());
  drawn();
  ParticleMotion still = alongALine();
  still.samples[0] = still.samples[1] = still.samples[2] = samples({0, 0, 0});
  view.setMotion(still);
  EXPECT_EQ(view.xmax(), 1);
  ParticleMotion uneven = alongALine();
  uneven.samples[2] = samples({1});
  view.setMotion(uneven);
  EXPECT_FALSE(view.polarization());
  drawn();
}

// The largest amplitude is 2, so that panels reach 2.1 to both sides.
TEST(ParticleMotionView, tellsBothComponentsUnderTheirNames) {
  ParticleMotionView view(QRectF(0, 0, 900, 400));
  view.setMotion(alongALine());
  EXPECT_TRUE(view.readout({100, 200}).isEmpty()); // not drawn yet
  recorded(view);
  const QRectF second = layOutMotionPanels(view.bounds()).panel[1];
  const PlotReadout readout = view.readout({second.right(), second.y() + second.height() / 4});
  EXPECT_NEAR(readout.value(QLatin1String("x")), 2.1, 1e-6);
  EXPECT_NEAR(readout.value(QLatin1String("y")), -1.05, 1e-6);
  EXPECT_EQ(readout.text(), QStringLiteral("BHN 2.10   BHZ -1.05"));
  EXPECT_TRUE(view.readout({second.right() + 20, second.center().y()}).isEmpty());
  view.setMotion({});
  EXPECT_TRUE(view.readout(second.center()).isEmpty());
}

} // namespace
} // namespace xov
