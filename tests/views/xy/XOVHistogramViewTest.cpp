#include "XOV_Graphics/views/xy/XOVHistogramView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "tests/views/xy/XYDrawing.h"

#include <gtest/gtest.h>

#include <array>

namespace xov {
namespace {

using namespace testing;

class Histogram : public ::testing::Test {
protected:
  Histogram() {
    view.setXLabelString(QStringLiteral("Depth"));
    view.setYLabelString(QStringLiteral("Events"));
  }
  void setValues(const std::vector<float>& values) {
    ASSERT_TRUE(view.setValuesNPts(values.data(), std::int32_t(values.size())));
  }
  // Ten bins 1 wide from 0 to 11, with 2 values in bin 0, 1 in bin 3 and 3 in bin 9.
  void bin() {
    setValues({0.5f, -2, 3.99f, 12, 9.5f, 11});
    view.setNBinsMinMax(10, 0, 11);
    ASSERT_TRUE(view.binValues());
  }
  std::vector<std::int32_t> counted() const { return view.counts() ? *view.counts() : std::vector<std::int32_t>(); }

  // The data frame is (50, 50, 220, 105).
  XOVHistogramView view{QRectF(0, 0, 300, 185)};
};

TEST_F(Histogram, startsWithTheDefaultsOfEveryField) {
  EXPECT_EQ(view.values(), nullptr);
  EXPECT_EQ(view.nValues(), 0);
  EXPECT_EQ(view.minValue(), 0);
  EXPECT_EQ(view.maxValue(), 0);
  EXPECT_EQ(view.counts(), nullptr);
  EXPECT_EQ(view.minCount(), 0);
  EXPECT_EQ(view.maxCount(), 0);
  EXPECT_EQ(view.nBins(), 0);
  EXPECT_EQ(view.binWidth(), 1);
  EXPECT_EQ(view.minBinValue(), -1);
  EXPECT_EQ(view.maxBinValue(), 1);
  EXPECT_EQ(view.barFillColor(), colors::lightGray);
}

TEST_F(Histogram, everyFieldIsSetAsGiven) {
  const auto values = std::make_shared<std::vector<float>>(3);
  const auto counts = std::make_shared<std::vector<std::int32_t>>(2);
  view.setValues(values);
  view.setNValues(3);
  view.setMinValue(-4);
  view.setMaxValue(5);
  view.setCounts(counts);
  view.setMinCount(6);
  view.setMaxCount(7);
  view.setNBins(8);
  view.setbinWidth(9);
  view.setMinBinValue(10);
  view.setMaxBinValue(11);
  view.setBarFillColor(colors::red);
  EXPECT_EQ(view.values(), values);
  EXPECT_EQ(view.nValues(), 3);
  EXPECT_EQ(view.minValue(), -4);
  EXPECT_EQ(view.maxValue(), 5);
  EXPECT_EQ(view.counts(), counts);
  EXPECT_EQ(view.minCount(), 6);
  EXPECT_EQ(view.maxCount(), 7);
  EXPECT_EQ(view.nBins(), 8);
  EXPECT_EQ(view.binWidth(), 9);
  EXPECT_EQ(view.minBinValue(), 10);
  EXPECT_EQ(view.maxBinValue(), 11);
  EXPECT_EQ(view.barFillColor(), colors::red);
}

TEST_F(Histogram, buffersAreKeptAliveUntilTheyAreReplaced) {
  auto values = std::make_shared<std::vector<float>>(3);
  const std::weak_ptr<std::vector<float>> watched = values;
  view.setValues(values);
  values.reset();
  EXPECT_FALSE(watched.expired());
  view.setValues(nullptr);
  EXPECT_TRUE(watched.expired());
}

TEST_F(Histogram, valuesAreCopiedAndTheirExtremesTaken) {
  std::array<float, 3> source{3, -7, 5};
  EXPECT_TRUE(view.setValuesNPts(source.data(), 3));
  source[0] = 100;
  EXPECT_EQ(*view.values(), (std::vector<float>{3, -7, 5}));
  EXPECT_EQ(view.nValues(), 3);
  EXPECT_EQ(view.minValue(), -7);
  EXPECT_EQ(view.maxValue(), 5);
}

TEST_F(Histogram, noValuesHaveExtremesBeyondAllNumbers) {
  EXPECT_TRUE(view.setValuesNPts(nullptr, 0));
  EXPECT_EQ(view.nValues(), 0);
  EXPECT_EQ(view.minValue(), kInfinity);
  EXPECT_EQ(view.maxValue(), -kInfinity);
}

TEST_F(Histogram, badValuesAreRefusedAndChangeNothing) {
  bin();
  const auto before = view.values();
  const float value = 1;
  EXPECT_FALSE(view.setValuesNPts(&value, -1));
  EXPECT_FALSE(view.setValuesNPts(nullptr, 5));
  EXPECT_EQ(view.values(), before);
  EXPECT_EQ(view.nValues(), 6);
  EXPECT_EQ(view.maxValue(), 12);
}

TEST_F(Histogram, theMeanIsTakenFromTheValuesAndTheirExtremes) {
  setValues({1, 2, 6});
  view.removeMeanFromValues();
  EXPECT_EQ(*view.values(), (std::vector<float>{-2, -1, 3}));
  EXPECT_EQ(view.minValue(), -2);
  EXPECT_EQ(view.maxValue(), 3);
}

// In single precision 2^24 + 1 is 2^24, so the sum is 2^24 + 2 and not 2^24 + 4; a third of it is 5592406.
TEST_F(Histogram, theMeanIsSummedInSinglePrecision) {
  setValues({16777216, 1, 3});
  view.removeMeanFromValues();
  EXPECT_EQ(view.values()->at(0), 16777216.0f - 16777220.0f / 3);
}

TEST_F(Histogram, withoutValuesTheMeanIsLeftAlone) {
  view.setMinValue(4);
  view.removeMeanFromValues();
  EXPECT_EQ(view.minValue(), 4);
  setValues({1, 3});
  view.setNValues(0);
  view.removeMeanFromValues();
  EXPECT_EQ(*view.values(), (std::vector<float>{1, 3}));
}

TEST_F(Histogram, tenBinsFrom0To11AreOneWide) {
  view.setNBinsMinMax(10, 0, 11);
  EXPECT_EQ(view.nBins(), 10);
  EXPECT_EQ(view.minBinValue(), 0);
  EXPECT_EQ(view.maxBinValue(), 11);
  EXPECT_EQ(view.binWidth(), 1);
}

TEST_F(Histogram, plainSettersDoNotComputeTheWidth) {
  view.setNBins(10);
  view.setMinBinValue(0);
  view.setMaxBinValue(11);
  EXPECT_EQ(view.binWidth(), 1);
  view.setMaxBinValue(22);
  view.computebinWidth();
  EXPECT_EQ(view.binWidth(), 2);
}

TEST_F(Histogram, theNumberOfBinsForAWidthLeavesTheWidthAlone) {
  view.setMinBinValue(0);
  view.setMaxBinValue(7);
  view.computeNBinsFor(2);
  EXPECT_EQ(view.nBins(), 3);
  EXPECT_EQ(view.binWidth(), 1);
}

TEST_F(Histogram, aWidthOf0ChangesNothing) {
  view.setNBins(5);
  view.computeNBinsFor(0);
  view.computeNBinsFor(-0.0f);
  EXPECT_EQ(view.nBins(), 5);
}

TEST_F(Histogram, valuesAreCountedInTheirBins) {
  bin();
  EXPECT_EQ(counted(), (std::vector<std::int32_t>{2, 0, 0, 1, 0, 0, 0, 0, 0, 3}));
  EXPECT_EQ(view.minCount(), 0);
  EXPECT_EQ(view.maxCount(), 3);
}

TEST_F(Histogram, theValues05And399AndMinus2And12GoToBins0And3And0And9) {
  view.setNBinsMinMax(10, 0, 11);
  const std::pair<float, std::size_t> expected[] = {{0.5f, 0}, {3.99f, 3}, {-2.0f, 0}, {12.0f, 9}};
  for (const auto& [value, bin] : expected) {
    setValues({value});
    ASSERT_TRUE(view.binValues());
    EXPECT_EQ(counted().at(bin), 1) << value;
  }
}

// 11 is not above 11: (11 - 0) / 1 is bin 11, which like bin 10 is counted in the last, 9.
TEST_F(Histogram, aValueEqualToTheUpperEndIsCountedInTheLastBin) {
  setValues({11});
  view.setNBinsMinMax(10, 0, 11);
  ASSERT_TRUE(view.binValues());
  EXPECT_EQ(counted().back(), 1);
}

TEST_F(Histogram, notANumberIsCountedNowhereAndInfinitiesAtTheEnds) {
  setValues({kNan, kInfinity, -kInfinity, -kInfinity});
  view.setNBinsMinMax(3, 0, 4);
  ASSERT_TRUE(view.binValues());
  EXPECT_EQ(counted(), (std::vector<std::int32_t>{2, 0, 1}));
}

TEST_F(Histogram, binningComputesTheWidth) {
  setValues({1});
  view.setNBins(10);
  view.setMinBinValue(0);
  view.setMaxBinValue(11);
  view.setbinWidth(77);
  ASSERT_TRUE(view.binValues());
  EXPECT_EQ(view.binWidth(), 1);
}

TEST_F(Histogram, withoutValuesNothingIsBinned) {
  view.setNBinsMinMax(10, 0, 11);
  EXPECT_FALSE(view.binValues());
  view.setNValues(5); // of a buffer that is not there
  EXPECT_FALSE(view.binValues());
  EXPECT_EQ(view.counts(), nullptr);
}

TEST_F(Histogram, zeroNegativeAndBillionsOfBinsAreRefusedAndKeepTheCounts) {
  bin();
  const auto before = view.counts();
  for (const std::int32_t bins : {0, -1, -2147483647 - 1, 2000000000, 2147483647, XOVHistogramView::kMostBins + 1}) {
    view.setNBins(bins);
    EXPECT_FALSE(view.binValues()) << bins;
    EXPECT_EQ(view.counts(), before) << bins;
    EXPECT_EQ(view.maxCount(), 3) << bins;
    EXPECT_TRUE(drawsEverywhere(view)) << bins;
  }
  view.setNBins(XOVHistogramView::kMostBins);
  EXPECT_TRUE(view.binValues());
  EXPECT_EQ(view.counts()->size(), std::size_t(XOVHistogramView::kMostBins));
}

TEST_F(Histogram, aCountBeyondTheValuesBinsThoseThatAreThere) {
  bin();
  view.setNValues(2000000000);
  ASSERT_TRUE(view.binValues());
  EXPECT_EQ(counted().front(), 2);
  view.removeMeanFromValues();
  EXPECT_EQ(view.values()->size(), 6u);
}

TEST_F(Histogram, oneValueAndEqualLimitsAreBinned) {
  setValues({5});
  view.setNBinsMinMax(4, 5, 5);
  ASSERT_TRUE(view.binValues());
  EXPECT_EQ(counted(), (std::vector<std::int32_t>{1, 0, 0, 0}));
  EXPECT_TRUE(drawsEverywhere(view));
}

TEST_F(Histogram, withoutCountsOnlyTheWhitePaperWithItsDarkGrayEdgeIsDrawn) {
  setValues({1, 2});
  const auto recording = recorded(view);
  ASSERT_EQ(recording->items().size(), 2u);
  EXPECT_EQ(recording->items()[0].kind, RecordedItem::Kind::Fill);
  EXPECT_EQ(recording->items()[0].color, colors::white);
  EXPECT_EQ(recording->items()[1].kind, RecordedItem::Kind::Stroke);
  EXPECT_EQ(recording->items()[1].color, colors::darkGray);
  EXPECT_EQ(boxOf(recording->items()[1]), view.bounds());
}

TEST_F(Histogram, drawingLaysOutTheFrame) {
  bin();
  recorded(view);
  EXPECT_EQ(view.pRect(), QRectF(20, 20, 260, 145));
  EXPECT_EQ(view.iRect(), QRectF(50, 50, 220, 105));
}

TEST_F(Histogram, limitsAreTheBinsRangeAnd5PercentAboveTheHighestBar) {
  bin();
  recorded(view);
  EXPECT_EQ(view.xmin(), 0);
  EXPECT_EQ(view.xmax(), 11);
  EXPECT_EQ(view.ymin(), 0);
  EXPECT_FLOAT_EQ(view.ymax(), 3.15f);
}

TEST_F(Histogram, fixedRangesAreKept) {
  bin();
  view.setXLimitsMinMax(-5, 20);
  view.setYLimitsMinMax(1, 30);
  view.set_fixedXAxisRange(true);
  recorded(view);
  EXPECT_EQ(view.xmin(), -5);
  EXPECT_EQ(view.xmax(), 20);
  EXPECT_EQ(view.ymin(), 0);
  view.set_fixedXAxisRange(false);
  view.set_fixedYAxisRange(true);
  view.setYLimitsMinMax(1, 30);
  recorded(view);
  EXPECT_EQ(view.xmax(), 11);
  EXPECT_EQ(view.ymin(), 1);
  EXPECT_EQ(view.ymax(), 30);
}

// 220 points for 11 units are 20 a unit, 105 points for 3.15 counts are 33 1/3 a count.
TEST_F(Histogram, barsAreFilledLightGrayAndOutlinedInBlack) {
  bin();
  const auto recording = recorded(view);
  const RecordedItem fill = recording->fills().at(1);
  const RecordedItem stroke = recording->strokes().at(1);
  EXPECT_EQ(fill.color, colors::lightGray);
  EXPECT_EQ(stroke.color, colors::black);
  EXPECT_EQ(stroke.path.lineWidth(), 0.25);
  for (const RecordedItem& item : {fill, stroke}) {
    const auto lines = item.path.polylines();
    ASSERT_EQ(lines.size(), 10u);
    EXPECT_NEAR(lines[9][1].x(), 50 + 9 * 20, 1e-3);
    EXPECT_NEAR(lines[9][1].y(), 50 + 100, 1e-3);
    EXPECT_NEAR(lines[9][2].x(), 50 + 10 * 20, 1e-3);
  }
}

TEST_F(Histogram, theBarColourIsTheHosts) {
  bin();
  view.setBarFillColor(colors::orange);
  EXPECT_EQ(recorded(view)->fills().at(1).color, colors::orange);
}

TEST_F(Histogram, drawRectDrawsNoBarsBesideTheFrame) {
  bin();
  EXPECT_EQ(recorded(view)->fills().size(), 2u); // the paper and the bars
}

TEST_F(Histogram, barsBesideTheFrameAreGrayWithALineInTheCurrentColour) {
  bin();
  recorded(view); // lays out and sets the limits
  const auto recording = recordedStep([this] {
    GraphicsContext::current().setColor(colors::blue);
    view.drawVHistogram();
  });
  ASSERT_EQ(recording->items().size(), 3u);
  const auto strokes = recording->strokes();
  EXPECT_EQ(strokes[0].color, colors::blue);
  EXPECT_EQ(strokes[0].path.lineWidth(), 0.75);
  EXPECT_EQ(strokes[0].segments(), std::vector<QLineF>{QLineF(275, 50, 275, 155)});
  EXPECT_EQ(recording->fills()[0].color, colors::gray);
  EXPECT_EQ(strokes[1].color, colors::black);
  // The longest bar, of 3 counts, is 105 long; each is 105 / 3.15 high.
  EXPECT_NEAR(strokes[1].path.polylines()[9][1].x(), 275 + 105, 1e-3);
  EXPECT_NEAR(strokes[1].path.polylines()[9][1].y(), 50 + 9 * 105 / 3.15, 1e-3);
}

TEST_F(Histogram, theStepsLeaveTheColoursAsTheyWere) {
  bin();
  QColor after;
  recordedStep([&] {
    GraphicsContext::current().setColor(colors::red);
    view.drawHHistogram();
    view.drawVHistogram();
    view.drawAxes();
    after = GraphicsContext::current().state().fillColor;
  });
  EXPECT_EQ(after, colors::red);
}

// The label box of 14 points is 1.15 · 14 = 16.1 high.
TEST_F(Histogram, theAxesAndTheirLabelsStandAroundTheFrame) {
  bin();
  const auto recording = recorded(view);
  const TextAttributes font = TextAttributes::helvetica(14);
  const auto axes = axisStrokes(*recording);
  ASSERT_EQ(axes.size(), 2u);
  EXPECT_EQ(boxOf(axes[0]), QRectF(50, 50, 220, 105));
  const auto x = recording->textReading(QStringLiteral("Depth"));
  const auto y = recording->textReading(QStringLiteral("Events"));
  ASSERT_TRUE(x && y);
  EXPECT_NEAR(x->position.x(), 160 - font.size(QStringLiteral("Depth")).width() / 2, 1e-4);
  EXPECT_NEAR(x->position.y(), 50 - 28 - 16.1, 1e-4);
  EXPECT_NEAR(y->position.x(), 28, 1e-4);
  EXPECT_NEAR(y->position.y(), 102.5 - font.size(QStringLiteral("Events")).width() / 2, 1e-4);
  EXPECT_NEAR(y->angleDegrees, 90, 1e-6);
  EXPECT_EQ(*view.labelAttributes(), font);
  EXPECT_STREQ(view.xLabel(), "");
}

TEST_F(Histogram, wideAndNarrowRangesAreDividedByAPowerOfTenAndOthersAreNot) {
  bin();
  view.set_fixedXAxisRange(true);
  const std::pair<float, const char*> expected[] = {
      {12345.0f, "Depth (/ 10^3)"}, {0.001f, "Depth (/ 10^-3)"}, {50.0f, "Depth"}};
  for (const auto& [range, label] : expected) {
    view.setXLimitsMinMax(0, range);
    EXPECT_TRUE(recorded(view)->textReading(QString::fromLatin1(label))) << label;
  }
}

TEST_F(Histogram, theDumpGivesTheRangeOfTheBinsAndOneLineABin) {
  setValues({-5, 1, 9, 9});
  view.setNBinsMinMax(3, 0, 8); // 8 / 4 = 2 wide
  ASSERT_TRUE(view.binValues());
  // -5 and 1 in bin 0, both 9 above the range in bin 2.
  EXPECT_EQ(view.description(), QStringLiteral("nValues = 4, minValue = 0.000e+00 maxValue = 8.000e+00\n"
                                               "nBins = 3, binWidth = 2.000e+00\n"
                                               "leftEdge rightEdge Count\n"
                                               "0.000e+00 2.000e+00 2\n"
                                               "0.000e+00 2.000e+00 0\n"
                                               "0.000e+00 2.000e+00 2\n"));
}

TEST_F(Histogram, negativeNumbersOfTheDumpAreOneCharacterWider) {
  view.setNBinsMinMax(1, -12345, 12345);
  EXPECT_EQ(view.description(), QStringLiteral("nValues = 0, minValue = -1.234e+04 maxValue = 1.234e+04\n"
                                               "nBins = 1, binWidth = 1.234e+04\n"
                                               "leftEdge rightEdge Count\n"
                                               "-1.234e+04 0.000e+00 0\n"));
}

TEST_F(Histogram, theDumpPadsWhatIsNotANumberToTheSameWidth) {
  view.setNBinsMinMax(0, -kInfinity, kInfinity);
  EXPECT_EQ(view.description(), QStringLiteral("nValues = 0, minValue =      -inf maxValue =       inf\n"
                                               "nBins = 0, binWidth =       inf\n"));
}

TEST_F(Histogram, withoutBinsTheDumpEndsAfterTheSecondLine) {
  EXPECT_EQ(view.description(), QStringLiteral("nValues = 0, minValue = -1.000e+00 maxValue = 1.000e+00\n"
                                               "nBins = 0, binWidth = 1.000e+00\n"));
}

TEST_F(Histogram, theDumpOfBillionsOfBinsListsThoseWithACount) {
  bin();
  view.setNBins(2000000000);
  EXPECT_EQ(view.description().count(QLatin1Char('\n')), 3 + 10);
}

TEST_F(Histogram, countsThatAHostSetsAreDrawn) {
  view.setCounts(std::make_shared<std::vector<std::int32_t>>(std::vector<std::int32_t>{1, -5, 2000000000}));
  view.setNBinsMinMax(50, 0, 51);
  EXPECT_TRUE(drawsEverywhere(view));
  view.setMaxCount(2147483647);
  EXPECT_TRUE(drawsEverywhere(view));
  recordedStep([this] { view.drawVHistogram(); });
}

TEST_F(Histogram, oddRangesAreDrawn) {
  bin();
  for (const float end : {0.0f, -3.0f, kNan, kInfinity, 1e-40f, 3e38f}) {
    view.setNBinsMinMax(10, 0, end);
    view.binValues();
    EXPECT_TRUE(drawsEverywhere(view)) << end;
    view.setNBinsMinMax(10, -end, end);
    view.binValues();
    EXPECT_TRUE(drawsEverywhere(view)) << end;
  }
}

TEST_F(Histogram, aViewSmallerThanItsMarginsIsDrawn) {
  bin();
  view.resize(40, 30);
  EXPECT_TRUE(drawsEverywhere(view));
}

} // namespace
} // namespace xov
