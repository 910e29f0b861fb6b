#include "XOV_Graphics/views/seismic/SeisView01.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::testing {
namespace {

const TextAttributes kHelvetica18 = TextAttributes::helvetica(18);
const QRectF kPlot(80, 60, 480, 300); // of a view of 600 × 400

class SeisView01Drawing : public ::testing::Test {
protected:
  void draw(const Records& records) {
    recording_.clear();
    view_.setWvfrmsArray(records);
    view_.drawInto(recording_);
  }

  SeisView01 view_{QRectF(0, 0, 600, 400)};
  RecordingContext recording_;
};

TEST_F(SeisView01Drawing, startsWithoutRecordsAndFills) {
  EXPECT_EQ(view_.wvfrmsArray(), nullptr);
  EXPECT_FALSE(view_.fillPositive());
  EXPECT_FALSE(view_.fillNegative());
}

TEST_F(SeisView01Drawing, laysOutOneFrameForPlotAndData) {
  view_.computeRects();
  EXPECT_EQ(view_.pRect(), kPlot);
  EXPECT_EQ(view_.iRect(), kPlot);
}

TEST_F(SeisView01Drawing, withoutRecordsDrawsOnlyPaperAndFrame) {
  for (const Records& records : {Records(), recordsOf({})}) {
    draw(records);
    EXPECT_EQ(steps(recording_), (QStringList{QStringLiteral("fill #ffffff"), QStringLiteral("line #000000")}));
  }
}

TEST_F(SeisView01Drawing, takesLimitsWithMarginsFromTheRecords) {
  const Records records = recordsOf({fakeRecord({-10, 30}, 20, 5), fakeRecord({-40, 10}, 15, -3)});
  view_.setWvfrmsArray(records);
  view_.computePlotLimits();
  EXPECT_EQ(view_.xmin(), -3);
  EXPECT_EQ(view_.xmax(), 25);
  EXPECT_EQ(view_.ymin(), -43.5f);
  EXPECT_EQ(view_.ymax(), 33.5f);
}

TEST_F(SeisView01Drawing, givesSmallSamplesNoMarginButTheMinimumRange) {
  const Records records = recordsOf({fakeRecord({-0.4f, 0.4f})});
  view_.setWvfrmsArray(records);
  view_.computePlotLimits();
  EXPECT_EQ(view_.ymin(), -0.4f);
  EXPECT_EQ(view_.ymax(), 0.4f);
  view_.setMinYRange(1);
  view_.computePlotLimits();
  EXPECT_EQ(view_.ymin(), -1);
  EXPECT_EQ(view_.ymax(), 1);
}

TEST_F(SeisView01Drawing, keepsTheHostsLimitsOnAxesOfFixedRange) {
  const Records records = recordsOf({fakeRecord({-10, 30}, 20, 5)});
  view_.setXLimitsMinMax(7, 8);
  view_.setYLimitsMinMax(1, 2);
  view_.set_fixedXAxisRange(true);
  draw(records);
  EXPECT_EQ(view_.xmin(), 7);
  EXPECT_EQ(view_.xmax(), 8);
  EXPECT_EQ(view_.ymin(), -12);
  EXPECT_EQ(view_.ymax(), 32);
  view_.set_fixedXAxisRange(false);
  view_.set_fixedYAxisRange(true);
  view_.setYLimitsMinMax(1, 2);
  draw(records);
  EXPECT_EQ(view_.xmin(), 5);
  EXPECT_EQ(view_.xmax(), 25);
  EXPECT_EQ(view_.ymin(), 1);
  EXPECT_EQ(view_.ymax(), 2);
}

TEST_F(SeisView01Drawing, changesNoLimitWithoutRecords) {
  view_.setXLimitsMinMax(7, 8);
  view_.setYLimitsMinMax(1, 2);
  view_.computePlotLimits();
  const auto none = recordsOf({});
  view_.setWvfrmsArray(none);
  view_.computePlotLimits();
  EXPECT_EQ(view_.xmin(), 7);
  EXPECT_EQ(view_.ymax(), 2);
}

TEST_F(SeisView01Drawing, strokesAllRecordsAsOnePathCutAtTheFrame) {
  const Records records = recordsOf({fakeRecord({-10, 30}), fakeRecord({-40, 10}), fakeRecord({1, 2, 3})});
  draw(records);
  const auto strokes = traceStrokes(recording_);
  ASSERT_EQ(strokes.size(), 1u);
  EXPECT_EQ(strokes[0].path.traces().size(), 3u);
  EXPECT_EQ(strokes[0].color, colors::black);
  EXPECT_EQ(strokes[0].path.lineWidth(), 1);
  EXPECT_EQ(strokes[0].clip, kPlot);
}

TEST_F(SeisView01Drawing, keepsSamplesOutsideAFixedTimeSpanForTheClipToCut) {
  view_.setXLimitsMinMax(2, 4);
  view_.set_fixedXAxisRange(true);
  const Records records = recordsOf({fakeRecord({0, 1, 2, 3, 4, 5, 6})});
  draw(records);
  EXPECT_EQ(traceStrokes(recording_)[0].path.traces()[0].size(), 7);
}

TEST_F(SeisView01Drawing, mapsSamplesAsAnIndependentReckoningDoes) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    std::vector<std::shared_ptr<FakeRecord>> list;
    for (int i = uniformInt(random, 1, 4); i > 0; --i) {
      list.push_back(fakeRecord(noise(random, uniformInt(random, 2, 60), 1000), uniform(random, 0.01f, 3),
                                uniform(random, -500, 500)));
    }
    const Records records = recordsOf(list);
    draw(records);
    const auto strokes = traceStrokes(recording_);
    ASSERT_EQ(strokes.size(), 1u);
    ASSERT_EQ(strokes[0].path.traces().size(), list.size());
    for (std::size_t k = 0; k < list.size(); ++k) {
      std::vector<QPointF> expected;
      float t = list[k]->beginSeconds;
      for (const float value : list[k]->samples) {
        expected.emplace_back(double(t - view_.xmin()) * (480 / double(view_.xmax() - view_.xmin())) + 80,
                              double(value - view_.ymin()) * (300 / double(view_.ymax() - view_.ymin())) + 60);
        t += list[k]->deltaSeconds;
      }
      expectPoints(strokes[0].path.traces()[k], expected);
    }
  }
}

TEST_F(SeisView01Drawing, fillsTheTracesLightGreyBeforeItStrokesThem) {
  const Records records = recordsOf({fakeRecord({-10, 30, 5}), fakeRecord({-40, 10, 7})});
  view_.setFillPositive(true);
  draw(records);
  EXPECT_EQ(steps(recording_).mid(2, 3), (QStringList{QStringLiteral("line #000000"), QStringLiteral("fill #aaaaaa"),
                                                      QStringLiteral("trace #000000")}));
  const RecordedItem fill = recording_.fills()[1];
  EXPECT_EQ(fill.clip, kPlot);
  EXPECT_EQ(fill.path.windingRule(), Path::Winding::NonZero);
  ASSERT_EQ(fill.path.traces().size(), 2u);
  const RecordedItem stroke = traceStrokes(recording_)[0];
  for (std::size_t k = 0; k < 2; ++k) {
    EXPECT_EQ(fill.path.traces()[k].points(), stroke.path.traces()[k].points());
  }
}

TEST_F(SeisView01Drawing, isNotChangedByFillNegative) {
  const Records records = recordsOf({fakeRecord({-10, 30, 5})});
  draw(records);
  const QString before = recording_.toText();
  view_.setFillNegative(true);
  EXPECT_TRUE(view_.fillNegative());
  draw(records);
  EXPECT_EQ(recording_.toText(), before);
}

TEST_F(SeisView01Drawing, endsWithBothAxesInOneStrokeAndTheTitle) {
  const Records records = recordsOf({fakeRecord({-10, 30}, 20, 5)});
  view_.setXLabelString(QStringLiteral("Time (s)"));
  view_.setYLabelString(QStringLiteral("Counts"));
  view_.setTitle(QStringLiteral("Three stations"));
  draw(records);
  const QString axes = axesText(kPlot, kHelvetica18, colors::black, [] {
    ASetYAxisPowerFlag(1);
    char x[64] = "Time (s)", y[64] = "Counts";
    ADrawAxis(x, 1, 3, 2, 5, 25, 0);
    ADrawAxis(y, 2, 1, 2, -12, 32, 0);
  });
  EXPECT_TRUE(recording_.toText().contains(axes)) << recording_.toText().toStdString();
  EXPECT_TRUE(recording_.toText().endsWith(QStringLiteral("\"Three stations\"\n")));
  const double width = kHelvetica18.size(QStringLiteral("Three stations")).width();
  expectText(recording_, QStringLiteral("Three stations"), {80 + (480 - width) / 2, 364}, 18, colors::black);
}

TEST_F(SeisView01Drawing, marksLargeAmplitudesWithAPowerOfTen) {
  const Records records = recordsOf({fakeRecord({-1e6f, 1e6f})});
  draw(records);
  EXPECT_TRUE(recording_.toText().contains(QStringLiteral(" x 10^+0")));
}

TEST_F(SeisView01Drawing, leavesTheGraphicsStateAsItWas) {
  const Records records = recordsOf({fakeRecord({-10, 30})});
  view_.setWvfrmsArray(records);
  const GraphicsContext::Pass pass(recording_);
  const std::size_t depth = recording_.stateDepth();
  view_.drawRect(view_.bounds());
  EXPECT_EQ(recording_.stateDepth(), depth);
  EXPECT_FALSE(recording_.state().clipRect.has_value());
}

TEST_F(SeisView01Drawing, drawsADeadTraceAlongTheBottomOfItsFrame) {
  const Records records = recordsOf({fakeRecord({3, 3, 3})});
  draw(records);
  expectPoints(traceStrokes(recording_)[0].path.traces()[0], {{80, 60}, {320, 60}, {560, 60}});
}

} // namespace
} // namespace xov::testing
