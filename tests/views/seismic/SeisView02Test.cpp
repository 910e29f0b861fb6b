#include "XOV_Graphics/views/seismic/SeisView02.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov::testing {
namespace {

const TextAttributes kHelvetica18 = TextAttributes::helvetica(18);
const QRectF kPlot(80, 60, 480, 300); // of a view of 600 × 400

class CountingView : public SeisView02 {
public:
  using SeisView02::SeisView02;
  void resetCursorRects() override {
    ++cursorResets;
    frameAtReset = pRect();
    SeisView02::resetCursorRects();
  }
  int cursorResets = 0;
  QRectF frameAtReset;
};

class SeisView02Drawing : public ::testing::Test {
protected:
  void draw(const Records& records) {
    recording_.clear();
    view_.setWvfrmsArray(records);
    view_.drawInto(recording_);
  }
  Trace drawnTrace(const FakeRecord& record, const QRectF& rect) {
    recording_.clear();
    const GraphicsContext::Pass pass(recording_);
    view_.drawSeismogramInRect(&record, rect);
    return recording_.items().empty() ? Trace() : recording_.items()[0].path.traces()[0];
  }

  CountingView view_{QRectF(0, 0, 600, 400)};
  RecordingContext recording_;
};

std::shared_ptr<FakeRecord> named(const QString& file, std::vector<float> samples = {-10, 30, 5}) {
  auto record = fakeRecord(std::move(samples));
  record->file = file;
  return record;
}

TEST_F(SeisView02Drawing, startsAsAnOverlayWithoutRecordsAndFills) {
  EXPECT_EQ(view_.plotStyle(), 1);
  EXPECT_EQ(view_.wvfrmsArray(), nullptr);
  EXPECT_FALSE(view_.fillPositive());
  EXPECT_FALSE(view_.fillNegative());
  view_.computeRects();
  EXPECT_EQ(view_.pRect(), kPlot);
  EXPECT_EQ(view_.iRect(), kPlot);
}

TEST_F(SeisView02Drawing, withoutRecordsDrawsOnlyPaperWithoutAFrame) {
  for (const Records& records : {Records(), recordsOf({})}) {
    draw(records);
    EXPECT_EQ(steps(recording_), QStringList{QStringLiteral("fill #ffffff")});
    EXPECT_EQ(view_.cursorResets, 0);
  }
}

TEST_F(SeisView02Drawing, drawsTraceAndNameOfEachRecordThenAxesAndTitles) {
  view_.setTitle(QStringLiteral("Title"));
  view_.setYLabelString(QStringLiteral("Counts"));
  const Records records = recordsOf({named(QStringLiteral("/d/one.sac")), named(QStringLiteral("/d/two.SAC"))});
  draw(records);
  const QStringList drawn = steps(recording_);
  EXPECT_EQ(drawn.mid(0, 6), (QStringList{QStringLiteral("fill #ffffff"), QStringLiteral("line #000000"),
                                          QStringLiteral("trace #000000"), QStringLiteral("text #000000 one"),
                                          QStringLiteral("trace #000000"), QStringLiteral("text #000000 two")}));
  EXPECT_EQ(drawn.mid(drawn.size() - 2),
            (QStringList{QStringLiteral("text #000000 Counts"), QStringLiteral("text #000000 Title")}));
  EXPECT_EQ(recording_.strokes()[0].toText(),
            QStringLiteral("stroke #000000 w=1 (80,60)-(560,60)-(560,360)-(80,360)-(80,60)"));
  EXPECT_FALSE(traceStrokes(recording_)[0].clip.has_value());
}

TEST_F(SeisView02Drawing, setsTheCrosshairUpForTheNewFrameAtEachDraw) {
  const Records records = recordsOf({named({})});
  draw(records);
  draw(records);
  EXPECT_EQ(view_.cursorResets, 2);
  EXPECT_EQ(view_.frameAtReset, kPlot);
}

TEST_F(SeisView02Drawing, givesFourRecordsInStyle2BandsOfAQuarterTheFirstOnTopAndNoYAxis) {
  view_.setplotStyle(2);
  view_.setXLabelString(QStringLiteral("seconds"));
  const Records records = recordsOf({named(QStringLiteral("a"), {0, 40}), named(QStringLiteral("b"), {0, 20}),
                                     named(QStringLiteral("c"), {0, 10}), named(QStringLiteral("d"), {0, 0})});
  draw(records);
  // 0 … 40 and a margin of 2: −2 … 42 on bands of 75 points.
  const double perUnit = 75.0 / 44;
  const auto strokes = traceStrokes(recording_);
  ASSERT_EQ(strokes.size(), 4u);
  const double last[] = {40, 20, 10, 0};
  for (int i = 0; i < 4; ++i) {
    const double bottom = 360 - 75.0 * (i + 1);
    expectPoints(strokes[std::size_t(i)].path.traces()[0],
                 {{80, bottom + 2 * perUnit}, {560, bottom + (last[i] + 2) * perUnit}});
    const QString name = QString(QChar(QLatin1Char(char('a' + i))));
    expectText(recording_, name, placed(name, kHelvetica18, {98, bottom + 75 - 18}, 1, 3), 18, colors::black);
  }
  const QString xAxis = axesText(kPlot, kHelvetica18, colors::black, [] {
    ASetYAxisPowerFlag(1);
    ASetFontSize(18);
    char label[64] = "seconds";
    ADrawAxis(label, 1, 3, 2, 0, 1, 0);
  });
  EXPECT_TRUE(recording_.toText().endsWith(xAxis)) << recording_.toText().toStdString();
}

TEST_F(SeisView02Drawing, hasAYAxisWithoutLabelInStyle1AndATurnedTitleBesideIt) {
  view_.setXLabelString(QStringLiteral("seconds"));
  view_.setYLabelString(QStringLiteral("Counts"));
  view_.setLabelFontSize(13.5f);
  const Records records = recordsOf({named({}, {0, 40})});
  draw(records);
  const TextAttributes font = TextAttributes::helvetica(13.5);
  const QString axes = axesText(kPlot, font, colors::black, [] {
    ASetYAxisPowerFlag(1);
    ASetFontSize(13); // truncated
    char x[64] = "seconds", y[64] = "";
    ADrawAxis(x, 1, 3, 2, 0, 1, 0);
    ADrawAxis(y, 2, 1, 2, -2, 42, 0);
  });
  EXPECT_TRUE(recording_.toText().contains(axes)) << recording_.toText().toStdString();
  const RecordedItem title = *recording_.textReading(QStringLiteral("Counts"));
  expectNear(title.position, {27, 210 - font.size(QStringLiteral("Counts")).width() / 2});
  EXPECT_NEAR(title.angleDegrees, 90, 1e-9);
}

TEST_F(SeisView02Drawing, overlaysOtherStylesWithoutAYAxis) {
  view_.setplotStyle(3);
  const Records records = recordsOf({named({}, {0, 40}), named({}, {0, 40})});
  draw(records);
  const auto strokes = traceStrokes(recording_);
  EXPECT_EQ(strokes[0].path.traces()[0].points(), strokes[1].path.traces()[0].points());
  // Frame of the plot and the axis path with the X axis alone.
  for (const QLineF& line : lineStrokes(recording_).back().segments()) {
    EXPECT_TRUE(line.dy() == 0 || std::abs(line.dy()) < 20) << "a frame line of a Y axis";
  }
}

TEST_F(SeisView02Drawing, isNotChangedByTheFillFlags) {
  const Records records = recordsOf({named(QStringLiteral("a"))});
  draw(records);
  const QString before = recording_.toText();
  view_.setFillNegative(true);
  view_.setFillPositive(true);
  draw(records);
  EXPECT_EQ(recording_.toText(), before);
}

TEST_F(SeisView02Drawing, holdsSamplesInsideTheRangeAllButTheFirst) {
  view_.setXLimitsMinMax(0, 4);
  view_.setYLimitsMinMax(-1, 1);
  const FakeRecord record({5, 5, -5, 0.5f, 1});
  // 10 points a second and 50 a unit, from (0, 0) for −1.
  expectPoints(drawnTrace(record, {0, 0, 40, 100}), {{0, 300}, {10, 100}, {20, 0}, {30, 75}, {40, 100}});
}

TEST_F(SeisView02Drawing, cutsATraceAtAFixedWindowWithItsFirstSampleAtXmin) {
  view_.setXLimitsMinMax(2.5f, 4.5f);
  view_.setYLimitsMinMax(0, 10);
  const FakeRecord record({0, 1, 2, 3, 4, 5, 6, 7});
  // (2.5 − 0) / 1 = 2: sample 2 is drawn at 2.5 s, and 2 + 2 = 4 ends it: samples 2 and 3.
  expectPoints(drawnTrace(record, {0, 0, 20, 100}), {{0, 20}, {10, 30}});
}

TEST_F(SeisView02Drawing, keepsTheHostsWindowInADraw) {
  view_.set_fixedXAxisRange(true);
  view_.setXLimitsMinMax(1, 3);
  const Records records = recordsOf({named({}, {0, 10, 20, 30, 40})});
  draw(records);
  EXPECT_EQ(view_.xmin(), 1);
  EXPECT_EQ(view_.xmax(), 3);
  EXPECT_EQ(traceStrokes(recording_)[0].path.traces()[0].size(), 2);
}

// The rules of the window and the clamp, sample by sample in single precision.
std::vector<QPointF> reckoned(const FakeRecord& r, const QRectF& rect, float xmin, float xmax, float ymin,
                              float ymax) {
  const double xScale = rect.width() / double(xmax - xmin), yScale = rect.height() / double(ymax - ymin);
  int i = 0;
  float t = r.beginSeconds;
  if (r.beginSeconds < xmin) {
    t = xmin;
    i = int((xmin - r.beginSeconds) / r.deltaSeconds);
  }
  int n = r.npts();
  if (r.e() > xmax) n = int((xmax - xmin) / r.deltaSeconds + float(i));
  n = std::min(n, r.npts());
  std::vector<QPointF> points;
  for (int k = i; k < n; ++k) {
    float v = r.samples[std::size_t(k)];
    if (k > i) {
      t = t + r.deltaSeconds;
      if (v > ymax) v = ymax;
      if (v < ymin) v = ymin;
    }
    points.emplace_back(double(t - xmin) * xScale + rect.x(), double(v - ymin) * yScale + rect.y());
  }
  return points;
}

TEST_F(SeisView02Drawing, cutsAndClampsAsAnIndependentReckoningDoes) {
  std::mt19937 random(2);
  int cut = 0;
  for (int round = 0; round < 800; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    const FakeRecord record(noise(random, uniformInt(random, 2, 300), 10), uniform(random, 0.005f, 2),
                            uniform(random, -100, 100));
    const float span = record.e() - record.b();
    const float xmin = record.b() + uniform(random, -0.5f, 0.9f) * span;
    const float xmax = xmin + uniform(random, 0.05f, 1.5f) * span;
    const float ymin = uniform(random, -12, 0), ymax = ymin + uniform(random, 1, 20);
    const QRectF rect(uniform(random, -100, 500), uniform(random, -100, 500), uniform(random, 10, 900),
                      uniform(random, 10, 900));
    view_.setXLimitsMinMax(xmin, xmax);
    view_.setYLimitsMinMax(ymin, ymax);
    const std::vector<QPointF> expected = reckoned(record, rect, xmin, xmax, ymin, ymax);
    if (expected.size() < record.samples.size()) ++cut;
    const Trace trace = drawnTrace(record, rect);
    if (expected.empty()) {
      EXPECT_TRUE(trace.isEmpty());
    } else {
      expectPoints(trace, expected, 5e-3);
    }
  }
  EXPECT_GT(cut, 300);
}

TEST_F(SeisView02Drawing, leavesASavedStateBehindForAnIntervalThatIsNotPositive) {
  view_.setXLimitsMinMax(0, 10);
  view_.setYLimitsMinMax(0, 10);
  for (const float interval : {0.0f, -1.0f}) {
    const FakeRecord record({1, 2, 3}, interval);
    const GraphicsContext::Pass pass(recording_);
    const std::size_t depth = recording_.stateDepth();
    view_.drawSeismogramInRect(&record, kPlot);
    EXPECT_EQ(recording_.stateDepth(), depth + 1);
    EXPECT_TRUE(recording_.items().empty());
  }
}

TEST_F(SeisView02Drawing, leavesTheGraphicsStateAsItWasForOtherRecords) {
  const Records records = recordsOf({named({}), nullptr, named({}, {})});
  view_.setWvfrmsArray(records);
  const GraphicsContext::Pass pass(recording_);
  const std::size_t depth = recording_.stateDepth();
  view_.drawRect(view_.bounds());
  EXPECT_EQ(recording_.stateDepth(), depth);
}

TEST_F(SeisView02Drawing, drawsNothingForARecordThatEndsBeforeTheWindow) {
  view_.setXLimitsMinMax(50, 60);
  view_.setYLimitsMinMax(0, 10);
  EXPECT_TRUE(drawnTrace(FakeRecord({1, 2, 3}), kPlot).isEmpty());
}

TEST_F(SeisView02Drawing, leavesTheBandOfANullRecordEmpty) {
  view_.setplotStyle(2);
  const Records records = recordsOf({nullptr, named(QStringLiteral("b"), {0, 10})});
  draw(records);
  ASSERT_EQ(traceStrokes(recording_).size(), 1u);
  // The lower of two bands of 150 points; 0 … 10 counts as −0.5 … 10.5.
  expectPoints(traceStrokes(recording_)[0].path.traces()[0],
               {{80, 60 + 0.5 / 11 * 150}, {560, 60 + 10.5 / 11 * 150}});
}

} // namespace
} // namespace xov::testing
