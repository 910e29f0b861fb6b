#include "XOV_Graphics/graphics/LogAxis.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Path.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/TextAttributes.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

LogAxisRequest request(AxisDirection direction) {
  LogAxisRequest request;
  request.direction = direction;
  request.frame = {.top = 300, .left = 100, .bottom = 60, .right = 300};
  request.fontSize = 12;
  request.textWidth = [](const LogTick& tick) { return 6.0 * double(tick.text.size()); };
  return request;
}

// One decade on 200 points from 100 on: 1, 2, 5 and 10.
TEST(LogAxis, ticksOfAnXAxisGrowInwardsFromBothEdges) {
  const LogAxis axis = layoutLogAxis(request(AxisDirection::X));
  ASSERT_EQ(axis.frame, (std::vector<AxisSegment>{{100, 60, 300, 60}, {100, 300, 300, 300}}));
  ASSERT_EQ(axis.ticks.size(), 2u * (4u + 6u));
  EXPECT_EQ(axis.ticks[0], (AxisSegment{100, 60, 100, 69})); // 0.75 · 12 points high
  EXPECT_EQ(axis.ticks[1], (AxisSegment{100, 300, 100, 291}));
  EXPECT_NEAR(axis.ticks[2].x1, 160.206, 1e-3); // 2
  EXPECT_NEAR(axis.ticks[8].x1, 195.424, 1e-3); // 3, the first minor one
  EXPECT_EQ(axis.ticks[8].y2, 64.5F);           // 0.375 · 12
}

TEST(LogAxis, labelsOfAnXAxisAreCentredBelow) {
  const LogAxis axis = layoutLogAxis(request(AxisDirection::X));
  ASSERT_EQ(axis.labels.size(), 4u);
  EXPECT_EQ(axis.labels[0].x, 97);
  EXPECT_EQ(axis.labels[0].y, 45); // 60 - 1.25 · 12
  EXPECT_EQ(axis.labels[3].x, 294);
}

TEST(LogAxis, labelsOfAYAxisEndLeftOfIt) {
  const LogAxis axis = layoutLogAxis(request(AxisDirection::Y));
  ASSERT_GE(axis.labels.size(), 2u);
  EXPECT_NEAR(axis.labels[0].x, 100 - 2.4 - 6, 1e-5); // 0.2 · 12 beside, one letter
  EXPECT_EQ(axis.labels[0].y, 54);                    // 0.5 · 12 below the tick
}

TEST(LogAxis, labelsOfAnAxisAtTheRightStandRightOfIt) {
  LogAxisRequest right = request(AxisDirection::Y);
  right.line = AxisLine::AtEnd;
  const LogAxis axis = layoutLogAxis(right);
  ASSERT_FALSE(axis.labels.empty());
  EXPECT_NEAR(axis.labels[0].x, 302.4, 1e-5);
  EXPECT_EQ(axis.ticks[0], (AxisSegment{300, 60, 291, 60}));
}

TEST(LogAxis, minorTicksAreLeftOutOnRequest) {
  LogAxisRequest without = request(AxisDirection::X);
  without.minorTicks = false;
  EXPECT_EQ(layoutLogAxis(without).ticks.size(), 8u);
}

TEST(LogAxis, anAxisRunsDownwardsWhereTheLimitsDo) {
  LogAxisRequest down = request(AxisDirection::X);
  down.lower = 1;
  down.upper = 0;
  const LogAxis axis = layoutLogAxis(down);
  ASSERT_EQ(axis.labels.size(), 4u);
  EXPECT_EQ(axis.labels[0].tick.text, "1");
  EXPECT_EQ(axis.labels[0].x, 297);
}

TEST(LogAxis, exponentsAreDrawnSmallerAndRaised) {
  RecordingContext recording;
  const GraphicsContext::Pass pass(recording);
  AInitGraphLib();
  ASetAxisRect(100, 300, 200, 50);
  const auto font = std::make_shared<const TextAttributes>(TextAttributes::helvetica(10));
  ASetTickLabelAttributes(font);
  ADrawLogAxis(QStringLiteral("Power"), AxisSide::Bottom, 5, 7);
  std::vector<RecordedItem> texts;
  for (const RecordedItem& item : recording.items())
    if (item.kind == RecordedItem::Kind::Text) texts.push_back(item);
  ASSERT_GE(texts.size(), 3u);
  EXPECT_EQ(texts[0].text, "10");
  EXPECT_EQ(texts[1].text, "5");
  EXPECT_EQ(texts[1].attributes.pointSize(), 7);
  EXPECT_EQ(texts[1].origin.y(), texts[0].origin.y() + 5);
  EXPECT_EQ(texts[1].origin.x(), texts[0].origin.x() + font->size(QStringLiteral("10")).width());
}

// One decade on 200 points: the frame's 2 lines, 4 ticks with numbers and 6 without on either edge.
TEST(LogAxis, secondaryTicksAreThoseOfTheAxisThatTheGlobalsAskFor) {
  const auto linesWith = [](std::int32_t xTicks, std::int32_t yTicks, AxisSide side) {
    RecordingContext recording;
    const GraphicsContext::Pass pass(recording);
    AInitGraphLib();
    gXsecTic = xTicks;
    gYsecTic = yTicks;
    const auto path = std::make_shared<Path>();
    ASetPath(path);
    ASetAxisRect(100, 300, 260, 60);
    ADrawLogAxis(QString(), side, 0, 1);
    return path->shape().elementCount() / 2;
  };
  EXPECT_EQ(linesWith(1, 0, AxisSide::Bottom), 2 + 2 * (4 + 6));
  EXPECT_EQ(linesWith(0, 1, AxisSide::Bottom), 2 + 2 * 4);
  EXPECT_GT(linesWith(0, 1, AxisSide::Left), linesWith(1, 0, AxisSide::Left));
  AInitGraphLib();
}

} // namespace
} // namespace xov
