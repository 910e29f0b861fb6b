#include "XOV_Graphics/views/xy/PowerSpectraView.h"

#include "XOV_Graphics/colour/CategoryColors.h"
#include "XOV_Graphics/platform/Colors.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace xov {
namespace {

using namespace testing;

// The frame is (84, 60) to (484, 360): 400 by 300.
const QRectF kFrame(0, 0, 508, 412);

class PowerSpectra : public ::testing::Test {
protected:
  void show(SpectrumCurves curves) { view.setCurves(std::make_shared<const SpectrumCurves>(std::move(curves))); }
  // Strokes of that colour and width.
  std::vector<RecordedItem> strokes(const QColor& color, double width) {
    std::vector<RecordedItem> found;
    const auto recording = recorded(view);
    for (const RecordedItem& item : recording->strokes())
      if (item.color.rgb() == color.rgb() && item.path.lineWidth() == width) found.push_back(item);
    return found;
  }
  QStringList texts() { return recorded(view)->strings(); }

  PowerSpectraView view{kFrame};
};

const SpectrumCurve kOne{QStringLiteral("one"), {1, 10, 100}, {1, 100, 10000}, QColor(Qt::magenta)};
const SpectrumCurve kTwo{QStringLiteral("two"), {1, 10, 100}, {10, 10, 10}, {}};

// Two decades of 200 points each along x; y is fixed to four decades of 75 points.
TEST_F(PowerSpectra, aPowerLawIsAStraightLine) {
  show({kOne});
  view.setYLimitsMinMax(1, 10000);
  view.set_fixedYAxisRange(true);
  const auto recording = recorded(view);
  std::vector<RecordedItem> lines;
  for (const RecordedItem& item : recording->strokes())
    if (item.color == QColor(Qt::magenta)) lines.push_back(item);
  ASSERT_EQ(lines.size(), 1u);
  const auto polylines = lines[0].path.polylines();
  ASSERT_EQ(polylines.size(), 1u);
  ASSERT_EQ(polylines[0].size(), 3);
  EXPECT_NEAR(polylines[0][0].x(), 84, 1e-3);
  EXPECT_NEAR(polylines[0][1].x(), 284, 1e-3);
  EXPECT_NEAR(polylines[0][1].y(), 210, 1e-3);
  EXPECT_NEAR(polylines[0][2].y(), 360, 1e-3);
  EXPECT_EQ(view.xmin(), 1);
  EXPECT_EQ(view.xmax(), 100);
}

// Four decades and 4 % of them at both ends: 10^(-0.16) and 10^(4.16).
TEST_F(PowerSpectra, limitsHoldAllCurves) {
  show({kOne, kTwo});
  view.computePlotLimits();
  EXPECT_NEAR(view.ymin(), 0.691831, 1e-5);
  EXPECT_NEAR(view.ymax(), 14454.4, 0.2);
}

TEST_F(PowerSpectra, curvesWithoutAColourOfTheirOwnHaveThatOfTheirPlace) {
  show({kOne, kTwo});
  EXPECT_EQ(strokes(QColor(QRgb(categoryColor(1))), 1).size(), 2u) << "the line and the sample of the legend";
}

TEST_F(PowerSpectra, deepNotchesDoNotCount) {
  SpectrumCurve curve{QStringLiteral("notched"), {}, {}, {}};
  for (int i = 1; i <= 200; ++i) {
    curve.hz.push_back(float(i));
    curve.values.push_back(i == 50 ? 1e-30F : 10);
  }
  show({curve});
  view.computePlotLimits();
  EXPECT_GT(view.ymin(), 1);
}

TEST_F(PowerSpectra, aLegendNamesSeveralCurves) {
  show({kOne, kTwo});
  EXPECT_TRUE(texts().contains(QStringLiteral("two")));
  view.setShowLegend(false);
  EXPECT_FALSE(texts().contains(QStringLiteral("two")));
  view.setShowLegend(true);
  show({kOne});
  EXPECT_FALSE(texts().contains(QStringLiteral("one"))) << "it has the title";
}

TEST_F(PowerSpectra, linesOfTheLegendStandBelowEachOtherInTheUpperRightCorner) {
  show({kOne, kTwo});
  const TextAttributes font = TextAttributes::helvetica(11);
  const double widest = std::max(font.size(kOne.name).width(), font.size(kTwo.name).width());
  // From the frame's edges: 8 to the box and 8 to the texts, which stand 8 right of samples of 22.
  const double left = 484 - 8 - 8 - widest;
  const double top = 360 - 8 - 8;
  const auto recording = recorded(view);
  for (const auto& [text, lines] : {std::pair(kOne.name, 1), std::pair(kTwo.name, 2)}) {
    const std::optional<RecordedItem> item = recording->textReading(text);
    ASSERT_TRUE(item) << text.toStdString();
    EXPECT_NEAR(item->origin.x(), left, 1e-9);
    EXPECT_NEAR(item->origin.y(), top - lines * font.lineHeight(), 1e-9);
  }
  const std::vector<RecordedItem> second = strokes(QColor(QRgb(categoryColor(1))), 1);
  ASSERT_EQ(second.size(), 2u);
  const double middle = top - 1.5 * font.lineHeight();
  EXPECT_EQ(second[1].segments(), (std::vector{QLineF(left - 30, middle, left - 8, middle)}));
}

TEST_F(PowerSpectra, aLegendOfMoreThanFitEndsWithTheirNumber) {
  show(SpectrumCurves(100, kOne));
  const QStringList shown = texts();
  // (300 - 32) / (1.15 · 11) = 21.2 lines: 20 names and a line for 80.
  EXPECT_EQ(shown.count(QStringLiteral("one")), 20);
  EXPECT_TRUE(shown.contains(QStringLiteral("and 80 more")));
}

TEST_F(PowerSpectra, noiseModelsHaveRoomAndAName) {
  show({{QStringLiteral("one"), {0.01F, 1}, {-150, -150}, {}}});
  view.setLogY(false);
  view.setShowNoiseModels(true);
  EXPECT_EQ(strokes(colors::gray, 1.5).size(), 3u) << "two lines and the sample of the legend";
  EXPECT_TRUE(texts().contains(QStringLiteral("NLNM, NHNM")));
  EXPECT_LT(view.ymin(), -187.5F);
  EXPECT_GT(view.ymax(), -96.5F);
}

TEST_F(PowerSpectra, withoutCurvesThePaperIsEmpty) {
  EXPECT_TRUE(axisStrokes(*recorded(view)).empty());
  show({});
  EXPECT_TRUE(axisStrokes(*recorded(view)).empty());
  show({{QStringLiteral("odd"), {kNan, -1, 0}, {1, kInfinity, 5}, {}}});
  EXPECT_TRUE(drawsEverywhere(view));
}

} // namespace
} // namespace xov
