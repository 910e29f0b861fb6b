// Colours, widths and legends of the views that show many traces.
#include "SeisDrawing.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/StationObservation.h"
#include "XOV_Graphics/views/base/DrawnTraces.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"
#include "XOV_Graphics/views/seismic/ThreeCompView.h"
#include "XOV_Graphics/views/seismic/wvfrmView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

const QRectF kBounds(0, 0, 600, 400);
const std::vector<QColor> kTwoColors = {Qt::green, Qt::blue};

Records threeRecords() {
  return recordsOf({fakeRecord({-10, 30, 5}), fakeRecord({-40, 10, 7}), fakeRecord({1, 2, 3})});
}

template <typename View>
std::shared_ptr<const RecordingContext> drawn(View& view) {
  const auto recording = std::make_shared<RecordingContext>();
  view.drawInto(*recording);
  return recording;
}

std::vector<QColor> strokeColors(const RecordingContext& recording) {
  std::vector<QColor> colors;
  for (const RecordedItem& stroke : traceStrokes(recording))
    colors.push_back(stroke.color);
  return colors;
}

template <typename View>
class ColoredTraces : public ::testing::Test {
protected:
  ColoredTraces() { view.setWvfrmsArray(records); }
  Records records = threeRecords();
  View view{kBounds};
};
class Bands : public SeisView02 {
public:
  explicit Bands(const QRectF& frame) : SeisView02(frame) { setplotStyle(PlotStyle::Bands); }
};
using ViewsOfMany = ::testing::Types<MultiSeisView, SeisView01, SeisView02, Bands>;
TYPED_TEST_SUITE(ColoredTraces, ViewsOfMany);

TYPED_TEST(ColoredTraces, takeTheColoursInTurn) {
  this->view.setTraceColors(kTwoColors);
  const auto strokes = traceStrokes(*drawn(this->view));
  std::vector<std::size_t> green, blue; // sizes of the paths
  for (const RecordedItem& stroke : strokes)
    (stroke.color == QColor(Qt::green) ? green : blue).push_back(stroke.path.traces().size());
  EXPECT_EQ(green.size() == 1 ? green[0] : green.size(), 2U) << "the first and the third trace";
  EXPECT_EQ(blue, std::vector<std::size_t>{1});
}

TYPED_TEST(ColoredTraces, leaveAxesAndTextsBlack) {
  const auto withoutTraces = [](const RecordingContext& recording) {
    QStringList kept = steps(recording);
    kept.removeIf([](const QString& step) { return step.startsWith(QStringLiteral("trace")); });
    return kept;
  };
  const QStringList before = withoutTraces(*drawn(this->view));
  this->view.setTraceColors(kTwoColors);
  EXPECT_EQ(withoutTraces(*drawn(this->view)), before);
}

TYPED_TEST(ColoredTraces, areAsWideAsTheHostWants) {
  for (const double width : {1.0, 0.5, 3.0}) {
    this->view.setLineWidth(width);
    const auto strokes = traceStrokes(*drawn(this->view));
    ASSERT_FALSE(strokes.empty());
    for (const RecordedItem& stroke : strokes)
      EXPECT_EQ(stroke.path.lineWidth(), width);
  }
  this->view.setLineWidth(std::numeric_limits<double>::quiet_NaN());
  EXPECT_TRUE(traceStrokes(*drawn(this->view)).empty());
}

TYPED_TEST(ColoredTraces, haveALegendLast) {
  this->view.setLegend({{QStringLiteral("a"), Qt::green}, {QStringLiteral("b"), Qt::blue}});
  const QStringList with = steps(*drawn(this->view));
  EXPECT_EQ(with.mid(with.size() - 4),
            (QStringList{QStringLiteral("line #00ff00"), QStringLiteral("text #000000 a"),
                         QStringLiteral("line #0000ff"), QStringLiteral("text #000000 b")}));
  this->view.setLegend({});
  EXPECT_EQ(with.size() - steps(*drawn(this->view)).size(), 6) << "with the box and its outline";
}

// A spike at the end of the first half reaches up, one at the end of the second half down.
TYPED_TEST(ColoredTraces, leaveTheLegendACorner) {
  std::vector<float> samples(200, 0.0F);
  for (std::size_t i = 100; i < 200; ++i)
    samples[i] = i % 2 == 0 ? 100.0F : -100.0F;
  const Records wide = recordsOf({fakeRecord(samples)});
  this->view.setWvfrmsArray(wide);
  this->view.setLegend({{QStringLiteral("a"), Qt::green}});
  const auto recording = drawn(this->view);
  const double middle = this->view.pRect().center().x();
  EXPECT_LT(recording->fills().back().path.shape().boundingRect().right(), middle) << "the right half is full";
}

TEST(PanelColors, areThoseOfThePairs) {
  wvfrmView view(kBounds);
  view.setXLimitsMinMax(0, 3);
  view.setMaxAmplitude(10);
  const Records records = recordsOf({fakeRecord({1, 2, 3}), fakeRecord({3, 2, 1})});
  view.setWvfrmArray(records);
  EXPECT_EQ(strokeColors(*drawn(view)), (std::vector<QColor>{colors::black, colors::red}));
  view.setTraceColors(kTwoColors);
  EXPECT_EQ(strokeColors(*drawn(view)), kTwoColors);
  EXPECT_EQ(lineStrokes(*drawn(view)).back().color, colors::black) << "the axis";
}

TEST(ComponentColors, areThoseOfThePanels) {
  ThreeCompView view(kBounds);
  const auto observation =
      std::make_shared<StationObservation>(fakeRecord({1, 2, 3}), fakeRecord({3, 2, 1}), fakeRecord({0, 2, 1}));
  view.setObservation(observation);
  view.setTraceColors(kTwoColors);
  EXPECT_EQ(strokeColors(*drawn(view)), (std::vector<QColor>{Qt::green, Qt::blue, Qt::green}));
}

// A line at y = 50 over x 0 to 100, a sample each point: in a box of 20 by 10 about it it covers one point of ten in
// each of 16 columns.
TEST(CoveredByTraces, addsUpTheHeightsOfExtremes) {
  const std::vector<float> flat(101, 50.0F);
  DrawnTrace line;
  line.trace.samples = flat.data();
  line.trace.last = 101;
  line.trace.time = TraceTime::even(0, 1);
  EXPECT_NEAR(coveredByTraces({20, 45, 20, 10}, {&line, 1}), 16 * 0.1, 1e-9);
  EXPECT_EQ(coveredByTraces({20, 60, 20, 10}, {&line, 1}), 0);
  EXPECT_EQ(coveredByTraces({120, 45, 20, 10}, {&line, 1}), 0) << "beyond its end";
  std::vector<float> wave(101);
  for (std::size_t i = 0; i < wave.size(); ++i)
    wave[i] = i % 2 == 0 ? 0.0F : 100.0F;
  line.trace.samples = wave.data();
  EXPECT_NEAR(coveredByTraces({16, 45, 64, 10}, {&line, 1}), 16, 1e-9) << "four samples a column";
  EXPECT_NEAR(coveredByTraces({16.1, 45, 8, 10}, {&line, 1}), 16, 1e-9)
      << "half a sample a column, and lines between";
}

TEST(CoveredByTraces, staysANumberForOddTraces) {
  const std::vector<float> samples = {0, std::numeric_limits<float>::quiet_NaN(), 1e38F};
  for (const float step : {0.0F, -1.0F, 1e-38F, 1e38F, std::numeric_limits<float>::quiet_NaN()}) {
    DrawnTrace odd;
    odd.trace.samples = samples.data();
    odd.trace.last = 3;
    odd.trace.time = TraceTime::even(0, step);
    odd.trace.xScale = double(step);
    EXPECT_GE(coveredByTraces({0, 0, 10, 10}, {&odd, 1}), 0) << step;
  }
}

} // namespace
} // namespace xov::testing
