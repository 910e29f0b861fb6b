#include "XOV_Graphics/views/seismic/PickMarks.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/platform/Colors.h"

#include <gtest/gtest.h>

namespace xov::testing {
namespace {

std::shared_ptr<FakeRecord> recordWithAllPicks() {
  auto record = std::make_shared<FakeRecord>();
  record->originSeconds = 1;
  record->firstArrivalSeconds = 2;
  record->picks[11] = 3;
  for (int key = 0; key <= 9; ++key)
    record->picks[key] = float(10 + key);
  record->labels = {{3, QStringLiteral("pP")}, {10, QStringLiteral("Pdiff")}, {11, QStringLiteral("end")}};
  return record;
}

QStringList labelsOf(const std::vector<PickMark>& marks) {
  QStringList labels;
  for (const PickMark& mark : marks)
    labels << mark.label;
  return labels;
}

TEST(VisiblePicks, comeInTheOrderOriginFirstArrivalEndAndKeys) {
  const auto marks = visiblePicks(*recordWithAllPicks(), 0, 100, {});
  EXPECT_EQ(labelsOf(marks), QStringLiteral("Origin A F T0 T1 T2 T3 T4 T5 T6 T7 T8 T9").split(QLatin1Char(' ')));
  for (std::size_t i = 0; i < marks.size(); ++i) {
    EXPECT_EQ(marks[i].color, i == 0 ? colors::blue : colors::darkGray);
    EXPECT_EQ(marks[i].time, i < 3 ? float(i + 1) : float(10 + i - 3));
  }
}

TEST(VisiblePicks, carryStoredLabelsWhereTheRuleSaysSo) {
  const auto record = recordWithAllPicks();
  const auto keys = visiblePicks(*record, 0, 100, {.storedForFirstArrival = false, .storedForKeys = true});
  EXPECT_EQ(labelsOf(keys), QStringLiteral("Origin A F T0 T1 T2 pP T4 T5 T6 T7 T8 T9").split(QLatin1Char(' ')));
  const auto all = visiblePicks(*record, 0, 100, {.storedForFirstArrival = true, .storedForKeys = true});
  EXPECT_EQ(labelsOf(all), QStringLiteral("Origin Pdiff F T0 T1 T2 pP T4 T5 T6 T7 T8 T9").split(QLatin1Char(' ')));
}

TEST(VisiblePicks, takeAnEmptyStoredLabelAsItIs) {
  const auto record = recordWithAllPicks();
  record->labels[4] = QString();
  const auto marks = visiblePicks(*record, 14, 14, {.storedForFirstArrival = true, .storedForKeys = true});
  EXPECT_EQ(labelsOf(marks), QStringList{QString()});
}

TEST(VisiblePicks, includeBothEndsOfTheTimeSpan) {
  EXPECT_EQ(labelsOf(visiblePicks(*recordWithAllPicks(), 2, 11, {})),
            QStringLiteral("A F T0 T1").split(QLatin1Char(' ')));
}

TEST(VisiblePicks, leaveOutUnsetTimesEvenInsideTheTimeSpan) {
  EXPECT_TRUE(visiblePicks(FakeRecord(), -20000, 20000, {}).empty());
}

TEST(PickX, mapsTheTimeSpanOntoThePanelsWidth) {
  const QRectF panel(100, 50, 200, 80);
  EXPECT_EQ(pickX(panel, 10, 10, 30), 100);
  EXPECT_EQ(pickX(panel, 30, 10, 30), 300);
  EXPECT_EQ(pickX(panel, 15, 10, 30), 150);
}

} // namespace
} // namespace xov::testing
