#include "TimelineDrawing.h"
#include "XOV_Graphics/views/timeline/RealTimeLayout.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>

namespace xov::testing {
namespace {

std::shared_ptr<FakeRecord> channelUntil(const QString& label, float end) {
  auto record = fakeRecord({1, 2, 3}, 1, end - 2);
  record->caption = label;
  return record;
}

/// 740 × 444 points: a rectangle of 600 × 300 at (60, 84), whose right edge is at 660; the display ends at 600 s.
class RealTimeLatency : public ::testing::Test {
protected:
  RealTimeLatency() {
    view_.setXLimitsMinMax(0, 600);
    view_.setYLimitsMinMax(-100, 100);
    view_.setWvfrmsArray(records_);
  }
  const RecordingContext& drawn() {
    recording_.clear();
    view_.drawInto(recording_);
    return recording_;
  }

  Records records_ = recordsOf({channelUntil("late", 500), channelUntil("prompt", 596.5F), nullptr});
  realTimeDisplayView01 view_{QRectF(0, 0, 740, 444)};
  RecordingContext recording_;
};

TEST_F(RealTimeLatency, changesNothingUntilItIsAskedFor) {
  EXPECT_FALSE(view_.showLatency());
  EXPECT_EQ(view_.lateSeconds(), 0);
  const QString before = drawn().toText();
  EXPECT_EQ(traceStrokes(recording_).size(), 1u);
  view_.setLateSeconds(-5);
  EXPECT_EQ(drawn().toText(), before);
  view_.setLateSeconds(std::nan(""));
  EXPECT_EQ(drawn().toText(), before);
}

TEST_F(RealTimeLatency, greysChannelsThatAreLate) {
  view_.setLateSeconds(60); // "late" is 100 s behind, "prompt" 3.5
  view_.setDrawingColor(colors::blue);
  const auto strokes = traceStrokes(drawn());
  ASSERT_EQ(strokes.size(), 2u);
  EXPECT_EQ(strokes[0].color, colors::lightGray);
  ASSERT_EQ(strokes[0].path.traces().size(), 1u);
  EXPECT_EQ(strokes[0].path.traces()[0].yOffset, 84 + 50) << "the lowest of three bands of 100";
  EXPECT_EQ(strokes[1].color, colors::blue);
  ASSERT_EQ(strokes[1].path.traces().size(), 1u);
  view_.setLateSeconds(100); // no more than that
  EXPECT_EQ(traceStrokes(drawn()).size(), 1u);
}

TEST_F(RealTimeLatency, standsBesideEachChannel) {
  view_.setShowLatency(true);
  drawn();
  const TextAttributes font = TextAttributes::helvetica(12);
  expectText(recording_, "100 s", placed("100 s", font, {666, 134}, 1, 2), 12, colors::gray);
  expectText(recording_, "3.5 s", placed("3.5 s", font, {666, 234}, 1, 2), 12, colors::gray);
  EXPECT_EQ(view_.labelAttributes()->pointSize(), 14) << "as without";
}

TEST_F(RealTimeLatency, countsFromTheOnlySampleOfARecord) {
  EXPECT_EQ(channelLatency(*fakeRecord({7}, 1, 500), 600), std::optional(100.0));
  EXPECT_EQ(channelLatency(*fakeRecord({}, 1, 500), 600), std::nullopt);
}

TEST_F(RealTimeLatency, isLeftOutWhereBandsAreTooNarrowToReadIt) {
  view_.setShowLatency(true);
  std::vector<std::shared_ptr<FakeRecord>> many(51, channelUntil("A", 590)); // 300 / 51 = 5.9 points each
  const Records crowd = recordsOf(many);
  view_.setWvfrmsArray(crowd);
  EXPECT_FALSE(drawn().textReading("10 s"));
  many.pop_back(); // 6 points
  const Records fewer = recordsOf(many);
  view_.setWvfrmsArray(fewer);
  EXPECT_TRUE(drawn().textReading("10 s"));
  EXPECT_NEAR(recording_.textReading("10 s")->attributes.pointSize(), 6, 1e-5);
}

TEST(ChannelLatency, countsFromTheLastSample) {
  EXPECT_EQ(channelLatency(*channelUntil("A", 500), 600), 100);
  EXPECT_EQ(channelLatency(*channelUntil("A", 603), 600), -3);
  EXPECT_FALSE(channelLatency(*fakeRecord({}), 600));
  EXPECT_FALSE(channelLatency(*channelUntil("A", 500), std::numeric_limits<float>::infinity()));
}

} // namespace
} // namespace xov::testing
