#include "TimelineDrawing.h"
#include "XOV_Graphics/seismic/realtime/RealTimeSeismogram.h"
#include "XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

namespace xov::testing {
namespace {

const TextAttributes kHelvetica14 = TextAttributes::helvetica(14);
const TextAttributes kHelvetica18 = TextAttributes::helvetica(18);
const QDateTime kTohoku = utc(2011, 3, 11, 5, 46, 23);

std::shared_ptr<FakeRecord> channel(const QString& label, std::vector<float> samples, float interval = 1,
                                    float begin = 0) {
  auto record = fakeRecord(std::move(samples), interval, begin);
  record->caption = label;
  return record;
}

// Of all strokes, in their order.
std::vector<Trace> channelsOf(const RecordingContext& recording) {
  std::vector<Trace> traces;
  for (const RecordedItem& stroke : traceStrokes(recording))
    traces.insert(traces.end(), stroke.path.traces().begin(), stroke.path.traces().end());
  return traces;
}

template <typename ViewType>
class RealTimeDisplay : public ::testing::Test {
protected:
  RealTimeDisplay() {
    view_.setXLimitsMinMax(0, 3600);
    view_.setYLimitsMinMax(-100, 100);
  }
  void draw() {
    recording_.clear();
    view_.drawInto(recording_);
  }
  void draw(const Records& records) {
    view_.setWvfrmsArray(records);
    draw();
  }

  // 740 × 444 points: a rectangle of 600 × 300 at (60, 84); the top is at 384, the right edge at 660.
  ViewType view_{QRectF(0, 0, 740, 444)};
  RecordingContext recording_;
};

using Displays = ::testing::Types<realTimeDisplayView01, XOVRealTimeDisplayView02>;
TYPED_TEST_SUITE(RealTimeDisplay, Displays);

TYPED_TEST(RealTimeDisplay, startsBlackOnWhiteWithItsOriginOnTheRight) {
  TypeParam view;
  EXPECT_FALSE(view.refDate().isValid());
  EXPECT_EQ(view.eventOrigins(), nullptr);
  EXPECT_EQ(view.waveformGain(), 1);
  EXPECT_TRUE(view.originOnRight());
  EXPECT_FALSE(view.drawOriginTimes());
  EXPECT_EQ(view.backGroundColor(), colors::white);
  EXPECT_EQ(view.drawingColor(), colors::black);
  EXPECT_EQ(view.wvfrmsArray(), nullptr);
}

TYPED_TEST(RealTimeDisplay, keepsWhatItIsTold) {
  auto& view = this->view_;
  view.setRefDate(kTohoku);
  view.setWaveformGain(2);
  view.setOriginOnRight(false);
  view.setDrawOriginTimes(true);
  view.setBackGroundColor(colors::blue);
  view.setDrawingColor(colors::green);
  EXPECT_EQ(view.refDate(), kTohoku);
  EXPECT_EQ(view.waveformGain(), 2);
  EXPECT_FALSE(view.originOnRight());
  EXPECT_TRUE(view.drawOriginTimes());
  EXPECT_EQ(view.backGroundColor(), colors::blue);
  EXPECT_EQ(view.drawingColor(), colors::green);
}

TYPED_TEST(RealTimeDisplay, laysOutOneRectangleForPlotAndData) {
  this->view_.computeRects();
  EXPECT_EQ(this->view_.pRect(), QRectF(60, 84, 600, 300));
  EXPECT_EQ(this->view_.iRect(), QRectF(60, 84, 600, 300));
}

TYPED_TEST(RealTimeDisplay, withoutRecordsIsItsBackground) {
  this->view_.setBackGroundColor(colors::blue);
  this->view_.setRefDate(kTohoku);
  for (const Records& records : {Records(), recordsOf({})}) {
    this->draw(records);
    EXPECT_EQ(steps(this->recording_), QStringList{"fill #0000ff"});
    EXPECT_EQ(this->recording_.fills()[0].path.shape().boundingRect(), QRectF(0, 0, 740, 444));
  }
}

TYPED_TEST(RealTimeDisplay, keepsTheHostsLimits) {
  const Records records = recordsOf({channel({}, {-5000, 5000})});
  this->draw(records);
  EXPECT_EQ(this->view_.xmin(), 0);
  EXPECT_EQ(this->view_.xmax(), 3600);
  EXPECT_EQ(this->view_.ymin(), -100);
  EXPECT_EQ(this->view_.ymax(), 100);
  this->view_.computePlotLimits();
  EXPECT_EQ(this->view_.xmax(), 1);
  EXPECT_EQ(this->view_.ymax(), 5500);
}

TYPED_TEST(RealTimeDisplay, drawsItsStepsInOrder) {
  const auto label = [](const char* text) { return QStringLiteral("text #808080 ") + QLatin1String(text); };
  auto event = std::make_shared<FakeEvent>(kTohoku.addSecs(-60));
  event->size = 5;
  const Events events = eventsOf({event});
  this->view_.setXLimitsMinMax(0, 600);
  this->view_.setRefDate(kTohoku);
  this->view_.setEventOrigins(events);
  this->view_.setDrawOriginTimes(true);
  this->view_.setTitle(QStringLiteral("Monitor"));
  this->view_.setDrawingColor(colors::blue);
  const Records records = recordsOf({channel("A", {1, 2}), channel("B", {3, 4})});
  this->draw(records);
  const ReferenceTexts texts = this->view_.referenceTexts();
  const QStringList expected = {
      "fill #ffffff",
      "line #ff8000",
      "trace #0000ff",
      label("A"),
      label("B"),
      label("") + texts.date,
      label("") + texts.utcTime,
      label("") + texts.localTime,
      "line #808080",
      label("Monitor"),
      label("0"),
      label("5"),
      label("10"),
      "line #aaaaaa",
      label("Time (Minutes)"),
  };
  EXPECT_EQ(steps(this->recording_), expected);
  EXPECT_EQ(this->view_.labelAttributes()->pointSize(), 14);
  EXPECT_EQ(this->view_.labelAttributes()->color(), colors::black);
  EXPECT_EQ(this->view_.titleAttributes()->color(), colors::black);
  EXPECT_EQ(this->recording_.stateDepth(), 1u);
}

TYPED_TEST(RealTimeDisplay, putsZeroLinesOfThreeTracesAThirdApartFromTheBottomUp) {
  const Records records = recordsOf({channel({}, {0, 0}), channel({}, {0, 0}), channel({}, {0, 0})});
  this->draw(records);
  const auto traces = channelsOf(this->recording_);
  ASSERT_EQ(traces.size(), 3u);
  const double expected[] = {84 + 50, 84 + 150, 84 + 250};
  for (std::size_t k = 0; k < 3; ++k)
    for (const QPointF& point : traces[k].points())
      EXPECT_NEAR(point.y(), expected[k], 1e-9);
}

TYPED_TEST(RealTimeDisplay, strokesEachTraceInTheDrawingColorCutAtTheRectangle) {
  this->view_.setDrawingColor(colors::green);
  const Records records = recordsOf({channel("A", {1, 2}), nullptr, channel("B", {3, 4})});
  this->draw(records);
  const auto strokes = traceStrokes(this->recording_);
  ASSERT_EQ(strokes.size(), 1u);
  EXPECT_EQ(strokes[0].path.traces().size(), 2u);
  EXPECT_EQ(strokes[0].color, colors::green);
  EXPECT_EQ(strokes[0].path.lineWidth(), 1);
  EXPECT_EQ(strokes[0].clip, QRectF(60, 84, 600, 300));
  EXPECT_EQ(this->recording_.textReading(QStringLiteral("A"))->clip, QRectF(60, 84, 600, 300));
}

TYPED_TEST(RealTimeDisplay, givesTheFirstPointTheValueOfSampleZero) {
  // Of seven samples from 0 s on, the span 3 s to 9 s holds those from index 3.
  this->view_.setXLimitsMinMax(3, 9);
  const Records records = recordsOf({channel({}, {90, 1, 2, 3, 4, 5, 6})});
  this->draw(records);
  const Trace trace = traceStrokes(this->recording_)[0].path.traces()[0];
  // 100 points a second, 1.5 points a count.
  expectPoints(trace, {{60, 234 + 135}, {160, 234 + 6}, {260, 234 + 7.5}, {360, 234 + 9}});
}

TYPED_TEST(RealTimeDisplay, startsARecordThatBeginsInsideTheSpanWithItsFirstSample) {
  this->view_.setXLimitsMinMax(0, 6);
  const Records records = recordsOf({channel({}, {10, 20}, 1, 2)});
  this->draw(records);
  expectPoints(traceStrokes(this->recording_)[0].path.traces()[0], {{260, 234 + 15}, {360, 234 + 30}});
}

TYPED_TEST(RealTimeDisplay, putsABurstOnTheLineOfItsEventAfterHoursOfSamples) {
  // Six hours at 100 Hz; the event is 40 minutes old. Added up in single precision its sample would lie minutes away.
  constexpr int kBurst = (21'600 - 2'400) * 100;
  std::vector<float> samples(2'160'000);
  samples[kBurst] = 100;
  auto event = std::make_shared<FakeEvent>(kTohoku.addSecs(-2'400));
  event->size = 5;
  const Events events = eventsOf({event});
  this->view_.setXLimitsMinMax(0, 21'600);
  this->view_.setRefDate(kTohoku);
  this->view_.setEventOrigins(events);
  this->view_.setDrawOriginTimes(true);
  this->view_.setOriginOnRight(true);
  const Records records = recordsOf({channel({}, std::move(samples), 0.01F)});
  this->draw(records);
  const auto lines = lineStrokes(this->recording_);
  ASSERT_FALSE(lines.empty());
  EXPECT_NEAR(lines[0].path.shape().boundingRect().left(), 60 + 600 * 8.0 / 9, 0.01);
  const Trace trace = traceStrokes(this->recording_)[0].path.traces()[0];
  EXPECT_EQ(trace.time.rule, TraceTime::Rule::Even);
  EXPECT_NEAR(trace.points()[kBurst].x(), 60 + 600 * 8.0 / 9, 0.01);
}

TYPED_TEST(RealTimeDisplay, countsTimesFromTheRecordsOwnBeginWhereTheSpanCutsIt) {
  // From 30 minutes before the end on: sample 360,000 of a record that begins at 86,400 s.
  this->view_.setXLimitsMinMax(90'000, 91'800);
  const Records records = recordsOf({channel({}, std::vector<float>(540'000), 0.01F, 86'400)});
  this->draw(records);
  const Trace trace = traceStrokes(this->recording_)[0].path.traces()[0];
  EXPECT_EQ(trace.time.rule, TraceTime::Rule::Even);
  const std::vector<QPointF> points = trace.points();
  ASSERT_EQ(points.size(), 180'000U);
  for (const std::size_t i : {0U, 90'000U, 179'999U})
    EXPECT_NEAR(points[i].x(), 60 + double(i) * 0.01 / 3, 0.01); // 1/3 point a second
}

TYPED_TEST(RealTimeDisplay, leavesSamplesPastTheSpanToTheClip) {
  this->view_.setXLimitsMinMax(0, 2);
  const Records records = recordsOf({channel({}, {1, 2, 3, 4, 5, 6})});
  this->draw(records);
  EXPECT_EQ(traceStrokes(this->recording_)[0].path.traces()[0].size(), 6);
}

TYPED_TEST(RealTimeDisplay, drawsNoTraceThatEndsBeforeTheSpan) {
  this->view_.setXLimitsMinMax(100, 200);
  const Records records = recordsOf({channel("A", {1, 2, 3})});
  this->draw(records);
  EXPECT_TRUE(traceStrokes(this->recording_).empty());
  EXPECT_TRUE(this->recording_.strings().contains(QStringLiteral("A")));
}

TYPED_TEST(RealTimeDisplay, mapsSamplesAsAnIndependentReckoningDoes) {
  std::mt19937 random(29);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    this->view_.resize(uniformInt(random, 200, 1600), uniformInt(random, 200, 1000));
    const float xmin = uniform(random, -500, 500);
    const float xmax = xmin + uniform(random, 10, 1000);
    this->view_.setXLimitsMinMax(xmin, xmax);
    this->view_.setYLimitsMinMax(uniform(random, -2000, 0), uniform(random, 1, 2000));
    this->view_.setWaveformGain(uniform(random, 0.1f, 5));
    std::vector<std::shared_ptr<FakeRecord>> list;
    for (int k = uniformInt(random, 1, 5); k > 0; --k) {
      list.push_back(channel({}, noise(random, uniformInt(random, 1, 400), 1000), uniform(random, 0.01f, 3),
                             xmin + uniform(random, -600, 100)));
    }
    const Records records = recordsOf(list);
    this->draw(records);

    const double width = this->view_.width() - 140, height = this->view_.height() - 144;
    const auto n = double(list.size());
    const double ampScale =
        double(this->view_.waveformGain()) * height / double(this->view_.ymax() - this->view_.ymin()) / n;
    const auto traces = channelsOf(this->recording_);
    std::size_t next = 0;
    for (std::size_t k = 0; k < list.size(); ++k) {
      const FakeRecord& record = *list[k];
      const double base = 84 + height / (2 * n) + double(k) * height / n;
      const int i0 = std::max(0, int((xmin - record.b()) / record.delta()));
      if (i0 >= record.npts()) continue;
      std::vector<QPointF> expected;
      float t = float(i0) * record.delta();
      t += record.b();
      for (int i = i0; i < record.npts(); ++i) {
        const float value = i == i0 ? record.samples[0] : record.samples[std::size_t(i)];
        if (i > i0) t += record.delta();
        expected.emplace_back(60 + double(t - xmin) * (width / double(xmax - xmin)), base + double(value) * ampScale);
      }
      ASSERT_LT(next, traces.size());
      expectPoints(traces[next++], expected);
    }
    EXPECT_EQ(next, traces.size());
  }
}

TYPED_TEST(RealTimeDisplay, labelsTracesOnTheSideAwayFromTheOrigin) {
  const Records records = recordsOf({channel("II.TLY.00.BHZ", {0, 0}), channel("other", {0, 0})});
  this->draw(records);
  // The lower of two bands ends at 84 + 150.
  const QString text = QStringLiteral("II.TLY.00.BHZ");
  expectText(this->recording_, text, {66, 234 - 16}, 14, colors::gray);
  this->view_.setOriginOnRight(false);
  this->draw();
  expectText(this->recording_, text, placed(text, kHelvetica14, {660, 234 - 16}, 3, 1), 14, colors::gray);
}

TYPED_TEST(RealTimeDisplay, countsMinutesFromTheEdgeOfTheOrigin) {
  const Records records = recordsOf({channel({}, {0, 0})});
  this->draw(records);
  const QString zero = QStringLiteral("0"), five = QStringLiteral("5");
  expectText(this->recording_, zero, placed(zero, kHelvetica14, {660, 80}, 2, 3), 14, colors::gray);
  expectText(this->recording_, five, placed(five, kHelvetica14, {610, 80}, 2, 3), 14, colors::gray);
  this->view_.setOriginOnRight(false);
  this->draw();
  expectText(this->recording_, zero, placed(zero, kHelvetica14, {60, 80}, 2, 3), 14, colors::gray);
  expectText(this->recording_, five, placed(five, kHelvetica14, {110, 80}, 2, 3), 14, colors::gray);
  const QString title = QStringLiteral("Time (Minutes)");
  expectText(this->recording_, title, placed(title, kHelvetica14, {360, 36}, 2, 1), 14, colors::gray);
  const RecordedItem scale = lineStrokes(this->recording_).back();
  EXPECT_EQ(scale.color, colors::lightGray);
  EXPECT_EQ(scale.path.lineWidth(), 1);
  EXPECT_EQ(scale.segments().back(), QLineF(60, 84, 660, 84));
}

TYPED_TEST(RealTimeDisplay, writesTheReferenceInstantOverItsEdge) {
  const bool first = std::is_same_v<TypeParam, realTimeDisplayView01>;
  this->view_.setRefDate(kTohoku);
  const Records records = recordsOf({channel({}, {0, 0})});
  this->draw(records);
  const QString date = first ? QStringLiteral("11 March, 2011") : QStringLiteral("11 Mar, 2011");
  const QString universal = QStringLiteral("05:46:23 UTC");
  const QString local = this->view_.referenceTexts().localTime;
  EXPECT_EQ(this->view_.referenceTexts(), first ? longReferenceTexts(kTohoku) : shortReferenceTexts(kTohoku));
  const auto times = [&](double x) {
    std::vector<QPointF> at;
    for (const RecordedItem& item : this->recording_.texts())
      if (item.text == universal || item.text == local) at.push_back(item.position);
    // In UTC the second display writes the same text twice.
    ASSERT_EQ(at.size(), 2u);
    expectNear(at[0], placed(universal, kHelvetica14, {x, 384}, 2, 1));
    expectNear(at[1], placed(local, kHelvetica14, {x, 402}, 2, 1));
  };
  expectText(this->recording_, date, {60, 402}, 14, colors::gray);
  times(660);
  this->view_.setOriginOnRight(false);
  this->draw();
  expectText(this->recording_, date, placed(date, kHelvetica14, {660, 402}, 2, 1), 14, colors::gray);
  times(60);
}

TYPED_TEST(RealTimeDisplay, drawsADottedLineDownTheEdgeOfTheOrigin) {
  const Records records = recordsOf({channel({}, {0, 0})});
  for (const auto& [onRight, x] : {std::pair{true, 660.0}, {false, 60.0}}) {
    this->view_.setOriginOnRight(onRight);
    this->draw(records);
    const auto lines = singleLines(this->recording_, colors::gray);
    ASSERT_EQ(lines.size(), 1u);
    const Path& path = lines[0].path;
    EXPECT_EQ(lines[0].segments()[0], QLineF(x, 376, x, 116));
    EXPECT_EQ(path.lineWidth(), 3);
    EXPECT_EQ(path.lineCap(), Path::Cap::Round);
    EXPECT_EQ(path.dashes(), (std::vector<double>{0.1, 7.0}));
    EXPECT_EQ(path.dashPhase(), 0);
    EXPECT_FALSE(lines[0].clip);
  }
}

TYPED_TEST(RealTimeDisplay, centresItsTitleAbove) {
  const QString title = QStringLiteral("Monitor");
  this->view_.setTitle(title);
  const Records records = recordsOf({channel({}, {0, 0})});
  this->draw(records);
  expectText(this->recording_, title, {360 - kHelvetica18.size(title).width() / 2, 388}, 18, colors::gray);
}

TYPED_TEST(RealTimeDisplay, writesNothingWithoutAReferenceInstant) {
  const Records records = recordsOf({channel({}, {0, 0})});
  this->draw(records);
  EXPECT_EQ(this->recording_.strings().first(), QStringLiteral("0")); // that of the scale
}

TYPED_TEST(RealTimeDisplay, drawsSilentChannelsOnEqualAmplitudeLimits) {
  this->view_.setYLimitsMinMax(0, 0);
  const Records records = recordsOf({channel({}, {0, 0}), channel({}, {0, 1})});
  this->draw(records);
  const auto traces = channelsOf(this->recording_);
  ASSERT_EQ(traces.size(), 1u); // no scale fits the other
  EXPECT_EQ(traces[0].points()[1].y(), 84 + 75);
}

TYPED_TEST(RealTimeDisplay, isItsBackgroundWhenTheHostLetsGo) {
  Records records = recordsOf({channel({}, {0, 0})});
  this->draw(records);
  EXPECT_GT(this->recording_.items().size(), 1u);
  records.reset();
  this->draw();
  EXPECT_EQ(steps(this->recording_), QStringList{"fill #ffffff"});
}

// A display that replaces its steps.
class Replaced : public realTimeDisplayView01 {
public:
  void drawTheSeismograms() override { done << QStringLiteral("seismograms"); }
  void drawLabels() override { done << QStringLiteral("labels"); }
  void drawMinuteMarks() override { done << QStringLiteral("minutes"); }
  void drawOriginTimeMarkers() override { done << QStringLiteral("markers"); }
  QStringList done;
};

TEST(RealTimeSteps, canBeReplaced) {
  Replaced view;
  const Records records = recordsOf({channel({}, {0, 0})});
  view.setWvfrmsArray(records);
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_EQ(view.done, (QStringList{"seismograms", "labels", "minutes"}));
  view.done.clear();
  view.setDrawOriginTimes(true);
  view.drawInto(recording);
  EXPECT_EQ(view.done.size(), 3); // no events
  view.done.clear();
  const Events events = eventsOf({nullptr});
  view.setEventOrigins(events);
  view.drawInto(recording);
  EXPECT_EQ(view.done, (QStringList{"markers", "seismograms", "labels", "minutes"}));
}

// A channel that arrives, with or without an index.
class LiveChannel : public RealTimeSeismogram {
public:
  LiveChannel(double seconds, bool isIndexed) : RealTimeSeismogram(SacHeader(), seconds), isIndexed_(isIndexed) {}
  const SampleIndex* sampleIndex() const override { return isIndexed_ ? RealTimeSeismogram::sampleIndex() : nullptr; }

private:
  bool isIndexed_;
};

// 28 columns of samples so dense that the index is asked, which follows what is dropped, late or missing.
TYPED_TEST(RealTimeDisplay, drawsWhatArrivesTheSameWithAnIndexAndWithout) {
  constexpr double kInterval = 0.002;
  constexpr int kPiece = 12000;
  TypeParam view{QRectF(0, 0, 168, 234)};
  std::mt19937 random(36);
  std::vector<std::shared_ptr<SeismogramArray>> channels;
  for (const bool isIndexed : {true, false}) {
    channels.push_back(std::make_shared<SeismogramArray>());
    for (int k = 0; k < 2; ++k)
      channels.back()->push_back(std::make_shared<LiveChannel>(600, isIndexed));
  }
  view.setXLimitsMinMax(0, 600);
  view.setYLimitsMinMax(-100, 100);
  for (int step = 0; step < 36; ++step) {
    if (step % 7 == 3) continue; // a gap
    for (std::size_t k = 0; k < 2; ++k) {
      const std::vector<float> piece = noise(random, kPiece, 60.0F + 30.0F * float(k));
      const int place = step % 11 == 9 ? step - 5 : step; // some come late
      for (const auto& records : channels)
        static_cast<LiveChannel&>(*(*records)[k]).append(1000 + place * kPiece * kInterval, kInterval, piece);
    }
    if (step % 15 != 5) continue;
    QImage pictures[2];
    for (std::size_t i = 0; i < 2; ++i) {
      for (const auto& record : *channels[i])
        static_cast<LiveChannel&>(*record).setBaseTime(
            QDateTime::fromMSecsSinceEpoch(qint64(400000 + (step + 1) * kPiece * 2), Qt::UTC));
      const std::shared_ptr<const SeismogramArray> shown = channels[i];
      view.setWvfrmsArray(shown);
      pictures[i] = view.pictureOfRect(view.bounds());
    }
    EXPECT_EQ(pictures[0], pictures[1]) << step;
  }
}

} // namespace
} // namespace xov::testing
