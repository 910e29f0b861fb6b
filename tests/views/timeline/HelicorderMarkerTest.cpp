#include "XOV_Graphics/views/timeline/HelicorderMarker.h"

#include "TimelineDrawing.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::testing {
namespace {

// 25 row heights of 12 points above the scale; 0.1 points a second.
const HelicorderPage kPage{{72, 36, 360, 336}, 24, 3600};
const QDateTime kStart = utc(2011, 3, 11, 10);
const PageTime kDay{kStart, 86400, 0};

FakeEvent eventAt(const QDateTime& date, float moment = 5.5f) { return FakeEvent(date, moment); }

TEST(HelicorderMarker, spansTheBandOfItsRow) {
  // 2 h 5 min after the start: row 2, 300 s into it.
  const auto marker = helicorderMarker(kPage, kDay, eventAt(kStart.addSecs(7500)), 4);
  ASSERT_TRUE(marker);
  expectNear(marker->line, QLineF(102, 372 - 3 * 12, 102, 372 - 2 * 12), 1e-9);
}

TEST(HelicorderMarker, includesBothEndsOfThePage) {
  EXPECT_TRUE(helicorderMarker(kPage, kDay, eventAt(kStart), 4));
  EXPECT_TRUE(helicorderMarker(kPage, kDay, eventAt(kStart.addSecs(86400)), 4));
  EXPECT_FALSE(helicorderMarker(kPage, kDay, eventAt(kStart.addSecs(-1)), 4));
  EXPECT_FALSE(helicorderMarker(kPage, kDay, eventAt(kStart.addSecs(86401)), 4));
}

TEST(HelicorderMarker, atTheVeryEndLiesBelowTheLastRow) {
  const auto marker = helicorderMarker(kPage, kDay, eventAt(kStart.addSecs(86400)), 4);
  ASSERT_TRUE(marker);
  expectNear(marker->line, QLineF(72, 372 - 25 * 12, 72, 372 - 24 * 12), 1e-9);
}

TEST(HelicorderMarker, countsWholeSecondsTowardsZero) {
  EXPECT_EQ(wholeSecondsSince(kStart, kStart.addMSecs(1999)), 1);
  EXPECT_EQ(wholeSecondsSince(kStart, kStart.addMSecs(-999)), 0);
  EXPECT_EQ(wholeSecondsSince(kStart, kStart.addMSecs(-1001)), -1);
  // So an event less than a second before the page still counts as on it.
  EXPECT_TRUE(helicorderMarker(kPage, kDay, eventAt(kStart.addMSecs(-999)), 4));
  EXPECT_FALSE(helicorderMarker(kPage, kDay, eventAt(kStart.addMSecs(-1000)), 4));
  EXPECT_TRUE(helicorderMarker(kPage, kDay, eventAt(kStart.addMSecs(86400999)), 4));
}

TEST(HelicorderMarker, readsDatesInAnyZone) {
  const QDateTime elsewhere = kStart.addSecs(7500).toOffsetFromUtc(9 * 3600);
  EXPECT_EQ(helicorderMarker(kPage, kDay, eventAt(elsewhere), 4)->line,
            helicorderMarker(kPage, kDay, eventAt(kStart.addSecs(7500)), 4)->line);
}

TEST(HelicorderMarker, standsTheOffsetOfTheReferenceTimeLater) {
  // 1050 s of offset after 3000 s: row 1, 450 s into it.
  const auto marker = helicorderMarker(kPage, {kStart, 86400, 1050}, eventAt(kStart.addSecs(3000)), 4);
  ASSERT_TRUE(marker);
  expectNear(marker->line, QLineF(117, 372 - 24, 117, 372 - 12), 1e-9);
}

TEST(HelicorderMarker, needsOneMagnitudeThatReachesTheThreshold) {
  FakeEvent event(kStart);
  EXPECT_FALSE(helicorderMarker(kPage, kDay, event, 4));
  for (float FakeEvent::*magnitude : {&FakeEvent::bodyWave, &FakeEvent::surfaceWave, &FakeEvent::moment}) {
    FakeEvent one(kStart);
    one.*magnitude = 4;
    EXPECT_TRUE(helicorderMarker(kPage, kDay, one, 4));
    EXPECT_FALSE(helicorderMarker(kPage, kDay, one, 4.01f));
    one.size = 9; // the preferred magnitude does not count
    EXPECT_FALSE(helicorderMarker(kPage, kDay, one, 4.01f));
  }
  EXPECT_FALSE(helicorderMarker(kPage, kDay, eventAt(kStart, std::nanf("")), 4));
}

TEST(HelicorderMarker, takesColourAndWidthFromTheLargestMagnitude) {
  const std::vector<std::tuple<float, QColor, double>> styles = {
      {4, colors::lightGray, 2}, {4.99f, colors::lightGray, 2}, {5, colors::orange, 2}, {5.99f, colors::orange, 2},
      {6, colors::red, 4},       {6.99f, colors::red, 4},       {7, colors::red, 6},    {9.1f, colors::red, 6},
  };
  for (const auto& [magnitude, color, width] : styles) {
    for (float FakeEvent::*kind : {&FakeEvent::bodyWave, &FakeEvent::surfaceWave, &FakeEvent::moment}) {
      FakeEvent event(kStart);
      event.*kind = magnitude;
      const auto marker = helicorderMarker(kPage, kDay, event, 4);
      ASSERT_TRUE(marker);
      EXPECT_EQ(marker->color, color) << magnitude;
      EXPECT_EQ(marker->width, width) << magnitude;
    }
  }
}

TEST(HelicorderMarker, ofMb45AndMs62IsRedAndFourWide) {
  FakeEvent event(kStart);
  event.bodyWave = 4.5f;
  event.surfaceWave = 6.2f;
  event.moment = 0;
  const auto marker = helicorderMarker(kPage, kDay, event, 4);
  ASSERT_TRUE(marker);
  EXPECT_EQ(marker->color, colors::red);
  EXPECT_EQ(marker->width, 4);
}

TEST(HelicorderMarker, needsBothDates) {
  EXPECT_FALSE(helicorderMarker(kPage, kDay, eventAt({}), 4));
  EXPECT_FALSE(helicorderMarker(kPage, {{}, 86400, 0}, eventAt(kStart), 4));
}

TEST(HelicorderMarker, liesWhereAnIndependentReckoningPutsIt) {
  std::mt19937 random(17);
  int drawn = 0;
  for (int round = 0; round < 500; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    const HelicorderPage page{{72, 36, uniform(random, 100, 1500), uniform(random, 100, 1500)},
                              uniformInt(random, 1, 60),
                              float(uniformInt(random, 600, 9000))};
    const PageTime time{kStart, double(page.rowDuration) * page.nRows, uniform(random, 0, 3600)};
    const qint64 ms = qint64(uniform(random, -0.2f, 1.2f) * float(time.duration)) * 1000 + uniformInt(random, 0, 999);
    const auto marker = helicorderMarker(page, time, eventAt(kStart.addMSecs(ms)), 4);
    const double t = std::trunc(double(ms) / 1000);
    ASSERT_EQ(marker.has_value(), t >= 0 && t <= time.duration);
    if (!marker) continue;
    ++drawn;
    const double h = (page.rect.height() - 36) / (page.nRows + 1);
    const double row = std::floor((t + double(time.offset)) / double(page.rowDuration));
    const double into = t + double(time.offset) - row * double(page.rowDuration);
    const double x = 72 + into * page.rect.width() / double(page.rowDuration);
    const double y = 36 + page.rect.height() - row * h;
    expectNear(marker->line, QLineF(x, y - h, x, y), 1e-6);
  }
  EXPECT_GT(drawn, 200);
}

} // namespace
} // namespace xov::testing
