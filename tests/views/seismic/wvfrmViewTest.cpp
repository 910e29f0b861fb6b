#include "XOV_Graphics/views/seismic/wvfrmView.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/platform/Colors.h"

#include <gtest/gtest.h>

#include <limits>

namespace xov::testing {
namespace {

const TextAttributes kHelvetica12 = TextAttributes::helvetica(12);

std::shared_ptr<FakeRecord> station(const QString& name, std::vector<float> samples = {0, 1e-4f, -1e-4f}) {
  auto record = fakeRecord(std::move(samples));
  record->station = name;
  record->network = QStringLiteral("II");
  record->user = QStringLiteral("raw-") + name;
  record->azimuthDeg = 45;
  record->distanceDeg = 30;
  record->region = QStringLiteral("HONSHU");
  record->originTime = QStringLiteral("2011/03/11 05:46:23.7");
  record->depthKm = 24;
  return record;
}

Records stations(int count) {
  std::vector<std::shared_ptr<FakeRecord>> records;
  for (int i = 0; i < count; ++i)
    records.push_back(station(QStringLiteral("S%1").arg(i)));
  return recordsOf(records);
}

class WvfrmView : public ::testing::Test {
protected:
  void draw(const Records& records, const QRectF& frame = {0, 0, 800, 600}) {
    view_ = std::make_unique<wvfrmView>(frame);
    view_->setWvfrmArray(records);
    view_->setXLimitsMinMax(0, 100);
    view_->drawInto(recording_);
  }

  std::unique_ptr<wvfrmView> view_;
  RecordingContext recording_;
};

TEST_F(WvfrmView, startsWithAnAmplitudeOf0Point0005AndNoRecords) {
  wvfrmView view;
  EXPECT_EQ(view.maxAmplitude(), 0.0005f);
  EXPECT_EQ(view.wvfrmArray(), nullptr);
  view.setMaxAmplitude(3);
  EXPECT_EQ(view.maxAmplitude(), 3);
}

TEST_F(WvfrmView, withoutRecordsDrawsOnlyPaperAndFrame) {
  for (const Records& records : {Records(), recordsOf({})}) {
    recording_.clear();
    draw(records, {0, 0, 300, 200});
    EXPECT_EQ(recording_.toText(), QStringLiteral("fill #ffffff (0,0)-(300,0)-(300,200)-(0,200)-(0,0)\n"
                                                  "stroke #000000 w=1 (0,0)-(300,0)-(300,200)-(0,200)-(0,0)\n"));
  }
}

TEST_F(WvfrmView, isEmptyOnceTheHostHasLetTheRecordsGo) {
  Records records = stations(2);
  wvfrmView view(QRectF(0, 0, 300, 200));
  view.setWvfrmArray(records);
  EXPECT_EQ(view.wvfrmArray(), records);
  records.reset();
  EXPECT_EQ(view.wvfrmArray(), nullptr);
  view.drawInto(recording_);
  EXPECT_EQ(recording_.items().size(), 2u);
}

TEST_F(WvfrmView, neverDrawsALastUnpairedRecord) {
  draw(stations(3));
  EXPECT_EQ(traceStrokes(recording_).size(), 2u);
  EXPECT_EQ(singleLines(recording_, colors::lightGray).size(), 1u);
  EXPECT_FALSE(recording_.toText().contains(QStringLiteral("S2")));
}

TEST_F(WvfrmView, drawsNothingButPaperAndFrameForOneRecord) {
  draw(stations(1));
  EXPECT_EQ(recording_.items().size(), 2u);
}

TEST_F(WvfrmView, drawsAPairAsZeroLineBlackTraceRedTraceAndCaptionsOfTheRedOne) {
  draw(stations(2));
  const QStringList drawn = steps(recording_);
  EXPECT_EQ(
      drawn.mid(0, 8),
      (QStringList{QStringLiteral("fill #ffffff"), QStringLiteral("line #000000"),
                   QStringLiteral("text #000000 HONSHU\nOrigin Time:2011/03/11 05:46:23.7 / Depth =  24 km"),
                   QStringLiteral("line #aaaaaa"), QStringLiteral("trace #000000"), QStringLiteral("trace #ff0000"),
                   QStringLiteral("text #000000 S1 II (45)"), QStringLiteral("text #000000 raw-S1 (30)")}));
}

TEST_F(WvfrmView, putsTheHeaderOfTheRecordAtIndexOneAtTheUpperLeft) {
  const Records records = stations(4);
  std::static_pointer_cast<FakeRecord>((*records)[1])->region = QStringLiteral("FIJI");
  draw(records);
  const QString header = QStringLiteral("FIJI\nOrigin Time:2011/03/11 05:46:23.7 / Depth =  24 km");
  // Two lines of 1.15 · 12 points hang from 2 points below the top edge.
  expectText(recording_, header, {12, 600 - 2 - 2 * 1.15 * 12}, 12, colors::black);
}

TEST_F(WvfrmView, withoutRoomForASecondPanelDrawsOneAColumnEachWithItsOwnAxis) {
  // The first bottom lies at height − 136, the next one 84 lower: below 0 for heights under 220.
  draw(stations(6), {0, 0, 800, 219});
  const auto lines = singleLines(recording_, colors::lightGray);
  ASSERT_EQ(lines.size(), 3u);
  for (int i = 0; i < 3; ++i) {
    const double x = 12 + 156 * i;
    expectNear(lines[std::size_t(i)].segments()[0], {x, 83 + 36, x + 144, 83 + 36});
    EXPECT_TRUE(recording_.toText().contains(timeAxisText(x, x + 144, 83, kHelvetica12, colors::red, 0, 100)));
  }
  EXPECT_EQ(recording_.strings().count(QStringLiteral("Time (s)")), 3);
}

TEST_F(WvfrmView, keepsAPanelWhoseBottomLiesAtZeroInTheColumn) {
  draw(stations(4), {0, 0, 800, 220});
  const auto lines = singleLines(recording_, colors::lightGray);
  ASSERT_EQ(lines.size(), 2u);
  expectNear(lines[1].segments()[0], {12, 36, 156, 36});
  EXPECT_EQ(recording_.strings().count(QStringLiteral("Time (s)")), 1);
}

TEST_F(WvfrmView, drawsTheAxisOfAFullLastColumnOnce) {
  draw(stations(4), {0, 0, 800, 219});
  EXPECT_EQ(recording_.strings().count(QStringLiteral("Time (s)")), 2);
  EXPECT_TRUE(recording_.toText().endsWith(timeAxisText(168, 312, 83, kHelvetica12, colors::red, 0, 100)));
}

TEST_F(WvfrmView, leavesOutAxesThatWouldWrapAroundIntoThePicture) {
  // Column 210 begins at 12 + 210 · 156 = 32772, beyond the reach of axes.
  draw(stations(2 * 212), {0, 0, 800, 150});
  EXPECT_EQ(singleLines(recording_, colors::lightGray).size(), 212u);
  EXPECT_EQ(recording_.strings().count(QStringLiteral("Time (s)")), 210);
}

TEST_F(WvfrmView, laysPanelsAndCaptionsOutAsAnIndependentReckoningDoes) {
  std::mt19937 random(42);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    const int width = uniformInt(random, 100, 1200), height = uniformInt(random, 60, 900);
    const int pairs = uniformInt(random, 1, 14);
    const Records records = stations(2 * pairs);
    recording_.clear();
    draw(records, {0, 0, double(width), double(height)});
    // How many panels a column holds: bottoms at height − 136 − 84 k, the first one always, others down to 0.
    const int perColumn = std::max(1, (height - 136) / 84 + 1);
    const auto lines = singleLines(recording_, colors::lightGray);
    ASSERT_EQ(int(lines.size()), pairs);
    for (int p = 0; p < pairs; ++p) {
      const double x = 12 + 156.0 * (p / perColumn);
      const double y = height - 136 - 84.0 * (p % perColumn);
      expectNear(lines[std::size_t(p)].segments()[0], {x, y + 36, x + 144, y + 36});
      const QString right = QStringLiteral("S%1 II (45)").arg(2 * p + 1);
      expectText(recording_, right, placed(right, kHelvetica12, {x + 140, y + 84}, 3, 3), 12, colors::black);
      const QString left = QStringLiteral("raw-S%1 (30)").arg(2 * p + 1);
      expectText(recording_, left, placed(left, kHelvetica12, {x + 4, y + 84}, 1, 3), 12, colors::black);
    }
    const int columns = (pairs + perColumn - 1) / perColumn;
    EXPECT_EQ(recording_.strings().count(QStringLiteral("Time (s)")), columns);
    for (int c = 0; c < columns; ++c) {
      const int inColumn = std::min(perColumn, pairs - c * perColumn);
      const double x = 12 + 156.0 * c;
      const double bottom = height - 136 - 84.0 * (inColumn - 1);
      EXPECT_TRUE(recording_.toText().contains(timeAxisText(x, x + 144, bottom, kHelvetica12, colors::red, 0, 100)));
    }
  }
}

TEST_F(WvfrmView, startsEachTraceAtTheLeftEdgeWhateverItsBeginIs) {
  std::mt19937 random(17);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    const float delta = uniform(random, 0.01f, 2);
    const float xmin = uniform(random, -100, 100), xmax = xmin + uniform(random, 1, 500);
    const float amplitude = uniform(random, 0.1f, 10);
    const QRectF rect(uniform(random, 0, 500), uniform(random, 0, 500), uniform(random, 10, 300),
                      uniform(random, 10, 300));
    auto record =
        fakeRecord(noise(random, uniformInt(random, 2, 40), 2 * amplitude), delta, uniform(random, -50, 50));
    wvfrmView view;
    view.setXLimitsMinMax(xmin, xmax);
    view.setMaxAmplitude(amplitude);
    recording_.clear();
    {
      const GraphicsContext::Pass pass(recording_);
      recording_.setColor(colors::orange);
      view.drawSeisSeis(rect, record.get());
    }
    ASSERT_EQ(recording_.items().size(), 1u);
    const RecordedItem& item = recording_.items()[0];
    EXPECT_EQ(item.color, colors::orange);
    EXPECT_EQ(item.path.lineWidth(), 1);
    EXPECT_FALSE(item.clip.has_value());
    std::vector<QPointF> expected;
    for (std::size_t i = 0; i < record->samples.size(); ++i) {
      const double xScale = rect.width() / double(xmax - xmin), yScale = rect.height() / (2 * double(amplitude));
      expected.emplace_back(rect.x() + xScale * double(delta) * double(i),
                            rect.y() + rect.height() / 2 + yScale * double(record->samples[i]));
    }
    ASSERT_EQ(item.path.traces().size(), 1u);
    expectPoints(item.path.traces()[0], expected);
  }
}

TEST_F(WvfrmView, drawsPicksFromXminWithFixedLabels) {
  wvfrmView view(QRectF(0, 0, 800, 600));
  view.setXLimitsMinMax(10, 110);
  auto record = station(QStringLiteral("TLY"));
  record->originSeconds = 10; // exactly xmin
  record->firstArrivalSeconds = 60;
  record->picks = {{3, 110.0f}, {4, 110.1f}, {11, 9.9f}}; // exactly xmax, and just outside
  record->labels = {{3, QStringLiteral("pP")}, {10, QStringLiteral("Pdiff")}};
  {
    const GraphicsContext::Pass pass(recording_);
    view.drawPicksSeis({100, 200, 144, 72}, record.get());
  }
  EXPECT_EQ(steps(recording_), (QStringList{QStringLiteral("line #0000ff"), QStringLiteral("text #000000 Origin"),
                                            QStringLiteral("line #555555"), QStringLiteral("text #000000 A"),
                                            QStringLiteral("line #555555"), QStringLiteral("text #000000 T3")}));
  const auto lines = recording_.strokes();
  // From 42 above the bottom to 42 below the top, which crosses over in a panel of 72 points.
  expectNear(lines[0].segments()[0], {100, 242, 100, 230});
  expectNear(lines[1].segments()[0], {172, 242, 172, 230});
  expectNear(lines[2].segments()[0], {244, 242, 244, 230});
  const TextAttributes system = TextAttributes::systemLabel();
  expectText(recording_, QStringLiteral("A"),
             {172 - system.size(QStringLiteral("A")).width() / 2, 200 + 72 - 42 + 4.0}, system.pointSize(),
             colors::black);
  EXPECT_EQ(view.labelAttributes()->pointSize(), system.pointSize());
}

TEST_F(WvfrmView, drawsAPickAtEitherEndOfTheTimeSpanAndNoneThatIsUnset) {
  wvfrmView view;
  view.setXLimitsMinMax(-20000, 20000);
  FakeRecord record;
  const GraphicsContext::Pass pass(recording_);
  view.drawPicksSeis({0, 0, 144, 72}, &record);
  EXPECT_TRUE(recording_.items().empty());
  record.picks[0] = -20000;
  view.drawPicksSeis({0, 0, 144, 72}, &record);
  record.picks[0] = 20000;
  view.drawPicksSeis({0, 0, 144, 72}, &record);
  EXPECT_EQ(recording_.strings(), (QStringList{QStringLiteral("T0"), QStringLiteral("T0")}));
}

TEST_F(WvfrmView, doesNotDrawPicksByItself) {
  const Records records = stations(2);
  std::static_pointer_cast<FakeRecord>((*records)[1])->firstArrivalSeconds = 50;
  draw(records);
  EXPECT_FALSE(recording_.strings().contains(QStringLiteral("A")));
}

TEST_F(WvfrmView, drawsTheOtherRecordOfAPairWithANullOne) {
  draw(recordsOf({nullptr, station(QStringLiteral("RED"))}));
  EXPECT_EQ(traceStrokes(recording_).size(), 1u);
  EXPECT_TRUE(recording_.strings().contains(QStringLiteral("RED II (45)")));
  recording_.clear();
  draw(recordsOf({station(QStringLiteral("BLACK")), nullptr}));
  ASSERT_EQ(traceStrokes(recording_).size(), 1u);
  EXPECT_EQ(traceStrokes(recording_)[0].color, colors::black);
  EXPECT_FALSE(recording_.toText().contains(QStringLiteral("BLACK")));
}

TEST_F(WvfrmView, leavesOutTracesThatHaveNoScale) {
  wvfrmView view;
  const auto record = station(QStringLiteral("X"), {1, 2, 3});
  const auto silent = station(QStringLiteral("Y"), {0, 0, 0});
  const GraphicsContext::Pass pass(recording_);
  view.setXLimitsMinMax(5, 5); // no time
  view.drawSeisSeis({0, 0, 144, 72}, record.get());
  view.setXLimitsMinMax(0, 10);
  view.setMaxAmplitude(0);
  view.drawSeisSeis({0, 0, 144, 72}, record.get());
  view.setMaxAmplitude(std::numeric_limits<float>::quiet_NaN());
  view.drawSeisSeis({0, 0, 144, 72}, record.get());
  view.setMaxAmplitude(1);
  view.drawSeisSeis({0, 0, 0, 72}, record.get());
  EXPECT_TRUE(recording_.items().empty());
  // Samples of 0 lie on the zero line at any scale.
  view.setMaxAmplitude(0);
  view.drawSeisSeis({0, 0, 144, 72}, silent.get());
  ASSERT_EQ(recording_.items().size(), 1u);
  expectPoints(recording_.items()[0].path.traces()[0], {{0, 36}, {14.4, 36}, {28.8, 36}});
}

} // namespace
} // namespace xov::testing
