#include "TimelineDrawing.h"
#include "XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kOddNumbers[] = {0,     -0.0f,  1,    -1,        2e9f,       -2e9f,          1e-30f,
                                 3e38f, -3e38f, kNan, kInfinity, -kInfinity, kUndefinedValue};
constexpr std::int32_t kOddRows[] = {0,
                                     -1,
                                     -2,
                                     1,
                                     24,
                                     5000,
                                     2000000000,
                                     std::numeric_limits<std::int32_t>::max(),
                                     std::numeric_limits<std::int32_t>::min()};
const QDateTime kMidnight = utc(2009, 2, 19);

// More than any page draws: 2048 labels of rows, and twice a scale of 10,000 labels.
constexpr std::size_t kMostItems = 40000;

std::size_t drawnItems(View& view) {
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_EQ(recording.stateDepth(), 1u);
  for (const RecordedItem& item : recording.items()) {
    EXPECT_TRUE(std::isfinite(item.position.x()) && std::isfinite(item.position.y()));
  }
  view.setExportPixelRatio(1);
  EXPECT_FALSE(view.pictureOfRect({0, 0, 200, 150}).isNull());
  return recording.items().size();
}

float oddNumber(std::mt19937& random) { return kOddNumbers[uniformInt(random, 0, int(std::size(kOddNumbers)) - 1)]; }

Records oddRecords(std::mt19937& random) {
  auto records = std::make_shared<SeismogramArray>();
  for (int n = uniformInt(random, 0, 3); n > 0; --n) {
    if (uniformInt(random, 0, 9) == 0) {
      records->push_back(nullptr);
      continue;
    }
    auto record = recordAt(kMidnight, noise(random, uniformInt(random, 0, 200), 100),
                           uniformInt(random, 0, 2) == 0 ? oddNumber(random) : 1.0f,
                           uniformInt(random, 0, 2) == 0 ? oddNumber(random) : 0.0f);
    if (!record->samples.empty() && uniformInt(random, 0, 2) == 0) record->samples[0] = oddNumber(random);
    if (uniformInt(random, 0, 4) == 0) record->header = SacHeader();
    if (uniformInt(random, 0, 4) == 0) record->header.nzmin = record->header.nzhour = 2000000000;
    if (uniformInt(random, 0, 4) == 0) record->header.nzyear = std::numeric_limits<std::int32_t>::max();
    if (uniformInt(random, 0, 4) == 0) record->reference = nullptr;
    records->push_back(record);
  }
  return records;
}

Events oddEvents(std::mt19937& random) {
  auto events = std::make_shared<EventOriginArray>();
  const std::array<QDateTime, 5> dates = {kMidnight, QDateTime(), QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC),
                                          QDateTime(QDate(200000000, 1, 1), QTime(0, 0), Qt::UTC),
                                          kMidnight.addSecs(60)};
  for (int n = uniformInt(random, 0, 4); n > 0; --n) {
    auto event = std::make_shared<FakeEvent>(dates[std::size_t(uniformInt(random, 0, 4))]);
    event->size = event->moment = uniformInt(random, 0, 1) == 0 ? oddNumber(random) : 6.0f;
    events->push_back(event);
  }
  return events;
}

std::size_t itemsOfPage(std::int32_t rows, float duration) {
  SCOPED_TRACE(::testing::Message() << rows << " rows of " << duration << " s");
  const Records pieces = recordsOf({recordAt(kMidnight, std::vector<float>(1000, 1.0f), 60)});
  helicorderView view(QRectF(0, 0, 600, 436));
  view.setWvfrmArray(pieces);
  view.setShowZeroLines(true);
  view.setNRows(rows);
  view.setRowDuration(duration);
  return drawnItems(view);
}

TEST(OddHelicorders, drawWithinBoundsWhateverTheirRows) {
  for (const std::int32_t rows : kOddRows)
    EXPECT_LT(itemsOfPage(rows, 3600), kMostItems);
}

TEST(OddHelicorders, drawWithinBoundsWhateverTheirDuration) {
  for (const float duration : kOddNumbers) {
    for (const std::int32_t rows : {-1, 0, 24})
      EXPECT_LT(itemsOfPage(rows, duration), kMostItems);
  }
}

TEST(OddHelicorders, drawWhateverTheirHost) {
  std::mt19937 random(41);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    helicorderView view(QRectF(0, 0, uniformInt(random, 0, 700), uniformInt(random, 0, 700)));
    const Records pieces = oddRecords(random);
    const Events events = oddEvents(random);
    view.setWvfrmArray(pieces);
    view.setTheHypoArray(events);
    view.setShowZeroLines(uniformInt(random, 0, 1) == 0);
    view.setLabelHours(uniformInt(random, 0, 1) == 0);
    if (uniformInt(random, 0, 1) == 0) view.setGainFactor(oddNumber(random));
    if (uniformInt(random, 0, 1) == 0) view.setMagThreshold(oddNumber(random));
    if (uniformInt(random, 0, 2) == 0) view.setRowDuration(oddNumber(random));
    if (uniformInt(random, 0, 20) == 0) view.setNRows(kOddRows[uniformInt(random, 0, 8)]);
    EXPECT_LT(drawnItems(view), kMostItems);
  }
}

TEST(OddHelicorders, drawTracesWithoutKnowingTheirDate) {
  auto record = fakeRecord({1, -1, 1});
  record->header = SacHeader();
  const Records pieces = recordsOf({record});
  auto event = std::make_shared<FakeEvent>(kMidnight);
  event->moment = 6;
  const Events events = eventsOf({event});
  helicorderView view(QRectF(0, 0, 600, 436));
  view.setWvfrmArray(pieces);
  view.setTheHypoArray(events);
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_FALSE(view.startTime().isValid());
  ASSERT_EQ(traceStrokes(recording).size(), 1u);
  expectNear(traceStrokes(recording)[0].path.traces()[0].points()[0], {72, 366 + 6 * 8});
  EXPECT_TRUE(singleLines(recording, colors::red).empty());
}

// A record without a header block.
class HeaderlessRecord : public FakeRecord {
public:
  using FakeRecord::FakeRecord;
  const SacHeader* GetSacHeader() const override { return nullptr; }
};

TEST(OddHelicorders, drawTracesWithoutAHeader) {
  const auto pieces = std::make_shared<SeismogramArray>();
  pieces->push_back(std::make_shared<HeaderlessRecord>(std::vector<float>{1, -1, 1}));
  helicorderView view(QRectF(0, 0, 600, 436));
  view.setWvfrmArray(pieces);
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_EQ(traceStrokes(recording).size(), 1u);
  EXPECT_FALSE(view.startTime().isValid());
}

TEST(OddHelicorders, drawTheOtherPiecesWhenTheFirstIsNull) {
  const Records pieces = recordsOf({nullptr, fakeRecord({1, -1, 1}), fakeRecord({})});
  helicorderView view(QRectF(0, 0, 600, 436));
  view.setWvfrmArray(pieces);
  RecordingContext recording;
  view.drawInto(recording);
  ASSERT_EQ(traceStrokes(recording).size(), 1u);
  EXPECT_EQ(traceStrokes(recording)[0].color, colors::red);
}

TEST(OddHelicorders, allowSingleStepsAtAnyTime) {
  helicorderView view(QRectF(0, 0, 600, 436));
  RecordingContext recording;
  const auto drawSteps = [&view] {
    view.drawSeismicPhases({});
    view.drawMinuteMarks();
    view.drawHourLabels();
  };
  drawSteps(); // outside of a pass
  const Records pieces = recordsOf({recordAt(kMidnight, {1, 2})});
  const Events events = eventsOf({std::make_shared<FakeEvent>(kMidnight)});
  const GraphicsContext::Pass pass(recording);
  const std::size_t depth = recording.stateDepth();
  drawSteps();
  view.setWvfrmArray(pieces);
  view.setTheHypoArray(events);
  drawSteps();
  EXPECT_EQ(recording.stateDepth(), depth);
}

template <typename ViewType>
void drawOddDisplays(unsigned seed) {
  std::mt19937 random(seed);
  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    ViewType view(QRectF(0, 0, uniformInt(random, 0, 700), uniformInt(random, 0, 700)));
    const Records records = oddRecords(random);
    const Events events = oddEvents(random);
    view.setWvfrmsArray(records);
    view.setEventOrigins(events);
    view.setDrawOriginTimes(uniformInt(random, 0, 3) != 0);
    view.setOriginOnRight(uniformInt(random, 0, 1) == 0);
    if (uniformInt(random, 0, 1) == 0) view.setRefDate(kMidnight.addSecs(uniformInt(random, 0, 4000)));
    if (uniformInt(random, 0, 1) == 0) view.setWaveformGain(oddNumber(random));
    if (uniformInt(random, 0, 3) == 0) view.setDrawingColor(QColor());
    if (uniformInt(random, 0, 1) == 0) view.computePlotLimits();
    if (uniformInt(random, 0, 1) == 0) view.setXLimitsMinMax(oddNumber(random), oddNumber(random));
    if (uniformInt(random, 0, 1) == 0) view.setYLimitsMinMax(oddNumber(random), oddNumber(random));
    EXPECT_LT(drawnItems(view), kMostItems);
  }
}

TEST(OddRealTimeDisplays, drawWhateverTheirHost) {
  drawOddDisplays<realTimeDisplayView01>(43);
  drawOddDisplays<XOVRealTimeDisplayView02>(47);
}

TEST(OddRealTimeDisplays, leaveOutRecordsThatRunBackwards) {
  realTimeDisplayView01 view(QRectF(0, 0, 740, 444));
  view.setXLimitsMinMax(0, 10);
  view.setYLimitsMinMax(-1, 1);
  const Records records = recordsOf({fakeRecord({0, 1}, -1), fakeRecord({0, 1}, kNan), fakeRecord({0, 1}, 1)});
  view.setWvfrmsArray(records);
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_EQ(traceStrokes(recording).size(), 1u);
}

TEST(OddRealTimeDisplays, allowSingleStepsAtAnyTime) {
  realTimeDisplayView01 view(QRectF(0, 0, 740, 444));
  const auto drawSteps = [&view] {
    view.drawOriginTimeMarkers();
    view.drawTheSeismograms();
    view.drawLabels();
    view.drawMinuteMarks();
  };
  drawSteps();
  RecordingContext recording;
  const GraphicsContext::Pass pass(recording);
  const std::size_t depth = recording.stateDepth();
  drawSteps();
  EXPECT_EQ(recording.stateDepth(), depth);
  EXPECT_TRUE(traceStrokes(recording).empty());
}

} // namespace
} // namespace xov::testing
