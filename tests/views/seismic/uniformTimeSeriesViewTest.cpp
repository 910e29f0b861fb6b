#include "XOV_Graphics/views/seismic/uniformTimeSeriesView.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/SampledSignal.h"

#include <gtest/gtest.h>

namespace xov::testing {
namespace {

using SeriesArray = std::shared_ptr<UniformSignalArray>;

// A view of 636 × 460: a panel of 600 × 400.
const QRectF kPanel(24, 48, 600, 400);

std::shared_ptr<SampledSignal> series(std::vector<float> samples, float delta = 1, const QString& text = {}) {
  return std::make_shared<SampledSignal>(std::move(samples), delta, text);
}

SeriesArray arrayOf(std::vector<std::shared_ptr<SampledSignal>> list) {
  return std::make_shared<UniformSignalArray>(list.begin(), list.end());
}

class UniformTimeSeries : public ::testing::Test {
protected:
  UniformTimeSeries() { view_.setXLimitsMinMax(0, 3); }
  void draw(const SeriesArray& list) {
    recording_.clear();
    view_.setWvfrmArray(list);
    view_.drawInto(recording_);
  }

  uniformTimeSeriesView view_{QRectF(0, 0, 636, 460)};
  RecordingContext recording_;
};

TEST_F(UniformTimeSeries, startsWithAnUnknownRangeAndNoSeries) {
  uniformTimeSeriesView view;
  EXPECT_EQ(view.wvfrmArray(), nullptr);
  EXPECT_EQ(view.maxAmplitude(), 0);
  EXPECT_EQ(view.ymin(), 0);
  EXPECT_EQ(view.ymax(), 0);
  view.setMaxAmplitude(7);
  EXPECT_EQ(view.maxAmplitude(), 7);
}

TEST_F(UniformTimeSeries, drawsOnlyPaperAndFrameForAnEmptyArray) {
  view_.setTitle(QStringLiteral("Title"));
  for (const SeriesArray& list : {SeriesArray(), arrayOf({})}) {
    draw(list);
    EXPECT_EQ(steps(recording_), (QStringList{QStringLiteral("fill #ffffff"), QStringLiteral("line #000000")}));
  }
}

TEST_F(UniformTimeSeries, takesTheRangeOfItsFirstSeriesAndMeasuresFromThePanelsBottom) {
  draw(arrayOf({series({-2, 0, 6})}));
  EXPECT_EQ(view_.ymin(), -2);
  EXPECT_EQ(view_.ymax(), 6);
  // A unit is an eighth of 400 points, and a third of 600 a second.
  expectPoints(traceStrokes(recording_)[0].path.traces()[0],
               {{24, 48 - 0.25 * 400}, {224, 48}, {424, 48 + 0.75 * 400}});
}

TEST_F(UniformTimeSeries, keepsTheFirstSeriesRangeForLargerOnesAndLaterDraws) {
  draw(arrayOf({series({-2, 6}), series({-100, 100})}));
  EXPECT_EQ(view_.ymin(), -2);
  EXPECT_EQ(view_.ymax(), 6);
  expectPoints(traceStrokes(recording_)[1].path.traces()[0], {{24, 48 - 5000}, {224, 48 + 5000}});
  draw(arrayOf({series({-100, 100})}));
  EXPECT_EQ(view_.ymax(), 6);
}

TEST_F(UniformTimeSeries, usesTheHostsRange) {
  view_.setYLimitsMinMax(0, 4);
  draw(arrayOf({series({1, 2})}));
  EXPECT_EQ(view_.ymin(), 0);
  EXPECT_EQ(view_.ymax(), 4);
  expectPoints(traceStrokes(recording_)[0].path.traces()[0], {{24, 148}, {224, 248}});
}

TEST_F(UniformTimeSeries, leavesTheRangeOfAConstantSeriesEqualAndDrawsNoTrace) {
  draw(arrayOf({series({5, 5, 5})}));
  EXPECT_EQ(view_.ymin(), 5);
  EXPECT_EQ(view_.ymax(), 5);
  EXPECT_TRUE(traceStrokes(recording_).empty());
  // The next series with a range of its own is taken for it.
  draw(arrayOf({series({5, 5, 5}), series({0, 4})}));
  EXPECT_EQ(view_.ymin(), 0);
  EXPECT_EQ(view_.ymax(), 4);
  EXPECT_EQ(traceStrokes(recording_).size(), 1u);
}

TEST_F(UniformTimeSeries, startsAtTheLeftEdgeWhateverXminIs) {
  view_.setXLimitsMinMax(1000, 1003);
  draw(arrayOf({series({0, 8})}));
  expectPoints(traceStrokes(recording_)[0].path.traces()[0], {{24, 48}, {224, 448}});
}

TEST_F(UniformTimeSeries, drawsTitleThenEachSeriesWithItsCaptionAndTheAxisAfterTheFirst) {
  view_.setTitle(QStringLiteral("Tilt"));
  draw(arrayOf({series({-2, 6}, 1, QStringLiteral("north")), series({1, 2}, 1, QStringLiteral("east"))}));
  const QString all = recording_.toText();
  const TextAttributes font = TextAttributes::helvetica(12);
  const QString axis = timeAxisText(24, 624, 48, font, colors::black, 0, 3);
  EXPECT_EQ(all.count(axis), 1);
  EXPECT_LT(all.indexOf(QStringLiteral("\"north\"")), all.indexOf(axis));
  EXPECT_LT(all.indexOf(axis), all.indexOf(QStringLiteral("\"east\"")));
  EXPECT_EQ(steps(recording_).mid(0, 5),
            (QStringList{QStringLiteral("fill #ffffff"), QStringLiteral("line #000000"),
                         QStringLiteral("text #000000 Tilt"), QStringLiteral("trace #000000"),
                         QStringLiteral("text #000000 north")}));
  for (const QString& text : {QStringLiteral("north"), QStringLiteral("east")}) {
    expectText(recording_, text, placed(text, font, {620, 460}, 3, 3), 12, colors::black);
  }
}

TEST_F(UniformTimeSeries, putsDataFrameAndTitleWhereThePanelIs) {
  view_.setTitle(QStringLiteral("Tilt"));
  draw(arrayOf({series({-2, 6})}));
  EXPECT_EQ(view_.iRect(), kPanel);
  EXPECT_EQ(view_.pRect(), kPanel);
  const QSizeF size = TextAttributes::helvetica(18).size(QStringLiteral("Tilt"));
  expectText(recording_, QStringLiteral("Tilt"), {624 - size.width() - 24, 448 - 2 * size.height()}, 18,
             colors::black);
}

TEST_F(UniformTimeSeries, ownsItsSeries) {
  SeriesArray list = arrayOf({series({-2, 6})});
  view_.setWvfrmArray(list);
  const std::weak_ptr<UniformSignalArray> watched = list;
  list.reset();
  EXPECT_FALSE(watched.expired());
  view_.drawInto(recording_);
  EXPECT_EQ(traceStrokes(recording_).size(), 1u);
  view_.setWvfrmArray(nullptr);
  EXPECT_TRUE(watched.expired());
}

TEST_F(UniformTimeSeries, leavesNullSeriesOutButKeepsTheAxis) {
  draw(arrayOf({nullptr, series({-2, 6})}));
  EXPECT_EQ(traceStrokes(recording_).size(), 1u);
  EXPECT_EQ(recording_.strings().count(QStringLiteral("Time (s)")), 1);
}

TEST_F(UniformTimeSeries, mapsSamplesAsAnIndependentReckoningDoes) {
  std::mt19937 random(46);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    const QRectF rect(uniform(random, 0, 100), uniform(random, 0, 100), uniform(random, 10, 900),
                      uniform(random, 10, 900));
    const float delta = uniform(random, 0.001f, 3), xmin = uniform(random, -10, 10),
                xmax = xmin + uniform(random, 1, 99);
    const std::vector<float> samples = noise(random, uniformInt(random, 2, 60), 30);
    const auto list = series(samples, delta);
    uniformTimeSeriesView view;
    view.setXLimitsMinMax(xmin, xmax);
    recording_.clear();
    {
      const GraphicsContext::Pass pass(recording_);
      view.drawsignalSignal(rect, list.get());
    }
    const auto [low, high] = std::minmax_element(samples.begin(), samples.end());
    std::vector<QPointF> expected;
    for (std::size_t i = 0; i < samples.size(); ++i) {
      expected.emplace_back(rect.x() + rect.width() / double(xmax - xmin) * double(delta) * double(i),
                            rect.y() + rect.height() / double(*high - *low) * double(samples[i]));
    }
    expectPoints(recording_.items()[0].path.traces()[0], expected);
  }
}

} // namespace
} // namespace xov::testing
