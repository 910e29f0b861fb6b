#include "XOV_Graphics/views/seismic/MultiSeisView.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::testing {
namespace {

const QRectF kPlot(20, 60, 560, 300); // of a view of 600 × 400

std::shared_ptr<FakeRecord> station(const QString& name, std::vector<float> samples) {
  auto record = fakeRecord(std::move(samples));
  record->station = name;
  record->network = QStringLiteral("II");
  record->component = QStringLiteral("BHZ");
  record->distanceDeg = 33.456f;
  record->azimuthDeg = 312.06f;
  return record;
}

class MultiSeis : public ::testing::Test {
protected:
  void draw(const Records& records) {
    recording_.clear();
    view_.setWvfrmsArray(records);
    view_.drawInto(recording_);
  }

  MultiSeisView view_{QRectF(0, 0, 600, 400)};
  RecordingContext recording_;
};

TEST_F(MultiSeis, startsWithoutRecordsZeroLinesAndFillsAndAGainOfOneAndAHalf) {
  EXPECT_EQ(view_.wvfrmsArray(), nullptr);
  EXPECT_FALSE(view_.showZeroLine());
  EXPECT_FALSE(view_.fillPositive());
  EXPECT_FALSE(view_.fillNegative());
  EXPECT_EQ(view_.plotGainFactor(), 1.5f);
}

TEST_F(MultiSeis, laysOutOneFrameForPlotAndData) {
  view_.computeRects();
  EXPECT_EQ(view_.pRect(), kPlot);
  EXPECT_EQ(view_.iRect(), kPlot);
}

TEST_F(MultiSeis, withoutRecordsDrawsOnlyPaperAndFrame) {
  for (const Records& records : {Records(), recordsOf({})}) {
    draw(records);
    EXPECT_EQ(steps(recording_), (QStringList{QStringLiteral("fill #ffffff"), QStringLiteral("line #000000")}));
  }
}

TEST_F(MultiSeis, letsNeighboursOverlapAtAGainOfOneAndAHalf) {
  // ±200 with a margin of 20: ampMax is 220, and a peak of that size lies 300 / 2 / 1.5 = 100 points from its centre.
  const Records records =
      recordsOf({station(QStringLiteral("A"), {220, -200}), station(QStringLiteral("B"), {-200, 200})});
  draw(records);
  const auto limits = view_.limits();
  EXPECT_EQ(limits.ymin, -221);
  EXPECT_EQ(limits.ymax, 241);
  const double slot = 150;
  const auto traces = traceStrokes(recording_)[0].path.traces();
  expectPoints(traces[0], {{20, 135 + slot / 1.5 * 220 / 241}, {580, 135 - slot / 1.5 * 200 / 241}});
  expectPoints(traces[1], {{20, 285 - slot / 1.5 * 200 / 241}, {580, 285 + slot / 1.5 * 200 / 241}});
}

TEST_F(MultiSeis, drawsAPeakOfTheLargestAmplitudeTwoThirdsOfASlotFromItsCentre) {
  // Below a range of 1 there is no margin, so the peak is the limit itself.
  const Records records = recordsOf({station(QStringLiteral("A"), {0, 0.5f}), station(QStringLiteral("B"), {0, 0})});
  draw(records);
  const auto traces = traceStrokes(recording_)[0].path.traces();
  expectPoints(traces[0], {{20, 135}, {580, 135 + 300.0 / 3}});
}

TEST_F(MultiSeis, scalesDataThatAreAllNegativeByTheirLargestSize) {
  const Records records = recordsOf({station(QStringLiteral("A"), {-0.9f, -0.25f})});
  draw(records);
  expectPoints(traceStrokes(recording_)[0].path.traces()[0],
               {{20, 210 - 300 / 1.5}, {580, 210 - 300 / 1.5 * 0.25 / 0.9}});
}

TEST_F(MultiSeis, overwritesAxisRangesThatTheHostHasFixed) {
  view_.set_fixedXAxisRange(true);
  view_.set_fixedYAxisRange(true);
  view_.setXLimitsMinMax(50, 60);
  view_.setYLimitsMinMax(50, 60);
  const Records records = recordsOf({station(QStringLiteral("A"), {-10, 30})});
  draw(records);
  EXPECT_EQ(view_.xmin(), 0);
  EXPECT_EQ(view_.xmax(), 1);
  EXPECT_EQ(view_.ymin(), -12);
  EXPECT_EQ(view_.ymax(), 32);
}

TEST_F(MultiSeis, drawsZeroLinesOnlyOnRequestAndElseTheSame) {
  const auto record = station(QStringLiteral("A"), {-10, 30});
  record->firstArrivalSeconds = 0.5f;
  const Records records = recordsOf({record});
  draw(records);
  const QStringList without = recording_.toText().split(QLatin1Char('\n'));
  EXPECT_TRUE(singleLines(recording_, colors::lightGray).empty());
  view_.setShowZeroLine(true);
  draw(records);
  QStringList with = recording_.toText().split(QLatin1Char('\n'));
  ASSERT_EQ(with.size(), without.size() + 1);
  with.removeAt(2);
  EXPECT_EQ(with, without);
}

TEST_F(MultiSeis, dotsZeroLinesWithRoundCaps) {
  view_.setShowZeroLine(true);
  const Records records = recordsOf({station(QStringLiteral("A"), {-10, 30}), station(QStringLiteral("B"), {0, 1})});
  draw(records);
  const auto lines = singleLines(recording_, colors::lightGray);
  ASSERT_EQ(lines.size(), 2u);
  for (const RecordedItem& line : lines) {
    EXPECT_EQ(line.path.lineWidth(), 1);
    EXPECT_EQ(line.path.lineCap(), Path::Cap::Round);
    EXPECT_EQ(line.path.dashes(), (std::vector<double>{0.01, 2.5}));
    EXPECT_EQ(line.path.dashPhase(), 0);
  }
  expectNear(lines[0].segments()[0], {24, 135, 580, 135});
  expectNear(lines[1].segments()[0], {24, 285, 580, 285});
}

TEST_F(MultiSeis, labelsAPickWithoutAStoredLabelByItsKey) {
  const auto record = station(QStringLiteral("A"), {0, 1, 2, 3});
  record->picks = {{3, 1.0f}, {4, 2.0f}, {11, 3.0f}};
  record->firstArrivalSeconds = 0;
  record->labels = {{3, QStringLiteral("-12345")},
                    {4, QStringLiteral("pP")},
                    {10, QStringLiteral("Pdiff")},
                    {11, QStringLiteral("end")}};
  const Records records = recordsOf({record});
  draw(records);
  EXPECT_EQ(recording_.strings().mid(1, 4), QStringLiteral("A F T3 pP").split(QLatin1Char(' ')));
}

TEST_F(MultiSeis, drawsAPickFromTheCentreToSixTenthsOfASlotAboveIt) {
  const auto record = station(QStringLiteral("A"), {0, 1, 2, 3, 4});
  record->originSeconds = 1;
  const Records records = recordsOf({record, station(QStringLiteral("B"), {0, 1})});
  draw(records);
  const auto lines = singleLines(recording_, colors::blue);
  ASSERT_EQ(lines.size(), 1u);
  expectNear(lines[0].segments()[0], {160, 135, 160, 135 + 0.6 * 150});
  // The label hangs from the line's upper end, 4 points to its right.
  expectText(recording_, QStringLiteral("Origin"), {164, 225 - 11.5}, 10, colors::gray);
}

TEST_F(MultiSeis, drawsPicksAndCaptionsBelowTheTracesAndArrivalsLast) {
  const auto record = station(QStringLiteral("A"), {0, 1});
  record->originSeconds = 1;
  record->arrivalSeconds = 0.5f;
  const Records records = recordsOf({record});
  view_.setTitle(QStringLiteral("Title"));
  draw(records);
  const QStringList drawn = steps(recording_);
  EXPECT_EQ(drawn.mid(2, 4),
            (QStringList{QStringLiteral("text #808080 A II BHZ (33.46) (312.06)"), QStringLiteral("line #0000ff"),
                         QStringLiteral("text #808080 Origin"), QStringLiteral("trace #000000")}));
  EXPECT_EQ(drawn.mid(drawn.size() - 2),
            (QStringList{QStringLiteral("text #000000 Title"), QStringLiteral("line #ff0000")}));
}

TEST_F(MultiSeis, strokesAllTracesAsOnePathWithoutAClip) {
  const Records records = recordsOf({station(QStringLiteral("A"), {0, 1}), station(QStringLiteral("B"), {0, 1, 2})});
  draw(records);
  const auto strokes = traceStrokes(recording_);
  ASSERT_EQ(strokes.size(), 1u);
  EXPECT_EQ(strokes[0].path.traces().size(), 2u);
  EXPECT_FALSE(strokes[0].clip.has_value());
  EXPECT_EQ(strokes[0].path.lineWidth(), 1);
}

TEST_F(MultiSeis, hasATimeAxisInDarkGreyLabelsAndNoYAxis) {
  view_.setXLabelString(QStringLiteral("seconds"));
  const Records records = recordsOf({station(QStringLiteral("A"), {0, 1000, 2000})});
  draw(records);
  TextAttributes font = TextAttributes::helvetica(14);
  font.setColor(colors::darkGray);
  const QString axis = axesText(kPlot, font, colors::black, [] {
    ASetYAxisPowerFlag(1);
    char label[64] = "seconds";
    ADrawAxis(label, 1, 3, 2, 0, 2, 0);
  });
  EXPECT_TRUE(recording_.toText().contains(axis)) << recording_.toText().toStdString();
  EXPECT_EQ(view_.labelAttributes()->color(), colors::darkGray);
  EXPECT_FALSE(recording_.toText().contains(QStringLiteral("x 10^")));
}

TEST_F(MultiSeis, marksEachArrivalWithARedTickEvenAnUnsetOne) {
  const auto set = station(QStringLiteral("A"), {0, 1, 2, 3, 4});
  set->arrivalSeconds = 3;
  const auto unset = station(QStringLiteral("B"), {0, 1});
  const Records records = recordsOf({set, unset});
  draw(records);
  const RecordedItem ticks = recording_.strokes().back();
  EXPECT_EQ(ticks.color, colors::red);
  const auto segments = ticks.segments();
  ASSERT_EQ(segments.size(), 2u);
  expectNear(segments[0], {440, 135 - 60, 440, 135 + 60});
  expectNear(segments[1], {20 - 12345 * 140.0, 285 - 60, 20 - 12345 * 140.0, 285 + 60}, 0.1);
}

TEST_F(MultiSeis, drawsArrivalsInTheStateThatTheDrawBeganIn) {
  class Watching : public MultiSeisView {
  public:
    using MultiSeisView::MultiSeisView;
    void drawPicks() override { depth = GraphicsContext::current().stateDepth(); }
    std::size_t depth = 0;
  };
  Watching view(QRectF(0, 0, 600, 400));
  const Records records = recordsOf({station(QStringLiteral("A"), {0, 1})});
  view.setWvfrmsArray(records);
  const GraphicsContext::Pass pass(recording_);
  const std::size_t before = recording_.stateDepth();
  view.drawRect(view.bounds());
  EXPECT_EQ(view.depth, before);
}

TEST_F(MultiSeis, drawsNoArrivalsWithoutRecords) {
  const GraphicsContext::Pass pass(recording_);
  view_.drawPicks();
  const auto none = recordsOf({});
  view_.setWvfrmsArray(none);
  view_.drawPicks();
  EXPECT_TRUE(recording_.items().empty());
}

TEST_F(MultiSeis, isNotChangedByTheFillFlags) {
  const Records records = recordsOf({station(QStringLiteral("A"), {0, 1})});
  draw(records);
  const QString before = recording_.toText();
  view_.setFillNegative(true);
  view_.setFillPositive(true);
  draw(records);
  EXPECT_EQ(recording_.toText(), before);
}

TEST_F(MultiSeis, leavesTheStripOfANullRecordEmpty) {
  const Records records = recordsOf({nullptr, station(QStringLiteral("B"), {0.5f, 0.5f}), nullptr});
  draw(records);
  const auto traces = traceStrokes(recording_)[0].path.traces();
  ASSERT_EQ(traces.size(), 1u);
  // The second of three strips of 100 points.
  expectPoints(traces[0], {{20, 210 + 100 / 1.5}, {580, 210 + 100 / 1.5}});
}

TEST_F(MultiSeis, drawsSilentRecordsAsFlatLines) {
  const Records records = recordsOf({station(QStringLiteral("A"), {0, 0, 0})});
  draw(records);
  expectPoints(traceStrokes(recording_)[0].path.traces()[0], {{20, 210}, {300, 210}, {580, 210}});
}

TEST_F(MultiSeis, placesTracesAndCaptionsAsAnIndependentReckoningDoes) {
  std::mt19937 random(44);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    const int width = uniformInt(random, 60, 1500), height = uniformInt(random, 120, 1100);
    const float gain = uniform(random, 0.2f, 5);
    const int count = uniformInt(random, 1, 9);
    std::vector<std::shared_ptr<FakeRecord>> list;
    for (int i = 0; i < count; ++i) {
      list.push_back(station(QStringLiteral("S%1").arg(i), noise(random, uniformInt(random, 2, 50), 100)));
      list.back()->deltaSeconds = uniform(random, 0.01f, 2);
      list.back()->beginSeconds = uniform(random, -50, 50);
      list.back()->arrivalSeconds = uniform(random, -50, 150);
    }
    const Records records = recordsOf(list);
    MultiSeisView view(QRectF(0, 0, width, height));
    view.setPlotGainFactor(gain);
    view.setWvfrmsArray(records);
    recording_.clear();
    view.drawInto(recording_);

    const double plotWidth = width - 40, plotHeight = height - 100;
    const double xScale = plotWidth / double(view.xmax() - view.xmin());
    const double largest = std::max(std::abs(double(view.ymin())), double(view.ymax()));
    const double yScale = plotHeight / (double(gain) * largest) / count;
    const auto traces = traceStrokes(recording_)[0].path.traces();
    const auto ticks = recording_.strokes().back().segments();
    ASSERT_EQ(int(traces.size()), count);
    ASSERT_EQ(int(ticks.size()), count);
    for (int i = 0; i < count; ++i) {
      const FakeRecord& record = *list[std::size_t(i)];
      const double center = 60 + plotHeight * (i + 0.5) / count;
      std::vector<QPointF> expected;
      float t = record.beginSeconds;
      for (const float value : record.samples) {
        expected.emplace_back(double(t - view.xmin()) * xScale + 20, double(value) * yScale + center);
        t += record.deltaSeconds;
      }
      expectPoints(traces[std::size_t(i)], expected, 2e-3);
      expectText(recording_, QStringLiteral("S%1 II BHZ (33.46) (312.06)").arg(i), {20, center + 4}, 10,
                 colors::gray);
      const double x = double(record.arrivalSeconds - view.xmin()) * xScale + 20;
      const double reach = 0.4 * plotHeight / count;
      expectNear(ticks[std::size_t(i)], {x, center - reach, x, center + reach}, 2e-3);
    }
  }
}

} // namespace
} // namespace xov::testing
