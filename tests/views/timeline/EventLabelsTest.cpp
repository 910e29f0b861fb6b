#include "XOV_Graphics/views/timeline/EventLabels.h"

#include "TimelineDrawing.h"
#include "XOV_Graphics/seismic/Hypocentre.h"

#include <gtest/gtest.h>

namespace xov::testing {
namespace {

const QRectF kRows(72, 36, 492, 336);
const TextAttributes kFont = TextAttributes::helvetica(9);

// A mark in a row from 300 to 312.
EventMark markAt(double x, float magnitude, const QString& text = QStringLiteral("M 5.0 somewhere")) {
  return {{x, 300, x, 312}, text, magnitude};
}

QSizeF sizeOf(const EventMark& mark) { return kFont.size(mark.text); }

} // namespace

TEST(EventLabels, standToTheRightOfTheUpperEnd) {
  EventMark mark = markAt(200, 5);
  const auto labels = layOutEventLabels({mark}, kRows, kFont);
  ASSERT_EQ(labels.size(), 1U);
  EXPECT_EQ(labels[0].box, QRectF(QPointF(203, 312 - sizeOf(mark).height()), sizeOf(mark)));
  mark.width = 6;
  EXPECT_EQ(layOutEventLabels({mark}, kRows, kFont)[0].box.left(), 206);
}

TEST(EventLabels, turnToTheLeftAtTheRightSide) {
  const EventMark mark = markAt(560, 5);
  const auto labels = layOutEventLabels({mark}, kRows, kFont);
  ASSERT_EQ(labels.size(), 1U);
  EXPECT_NEAR(labels[0].box.right(), 557, 1e-9);
}

TEST(EventLabels, neverCoverEachOtherAndTheLargestComeFirst) {
  std::vector<EventMark> marks;
  for (int i = 0; i < 40; ++i)
    marks.push_back(markAt(200 + i, float(3 + 0.1 * i), QStringLiteral("event %1").arg(i)));
  const auto labels = layOutEventLabels(marks, kRows, kFont);
  EXPECT_EQ(labels.front().text, QStringLiteral("event 39"));
  EXPECT_GT(labels.size(), 3U);
  EXPECT_LT(labels.size(), 40U) << "some have no place";
  for (std::size_t i = 0; i < labels.size(); ++i) {
    EXPECT_TRUE(labels[i].box.left() >= kRows.left() && labels[i].box.right() <= kRows.right());
    for (std::size_t k = 0; k < i; ++k)
      EXPECT_FALSE(labels[i].box.intersects(labels[k].box)) << i << " and " << k;
  }
}

TEST(EventLabels, leaveOutWhatIsWiderThanThePageOrSaysNothing) {
  EXPECT_TRUE(layOutEventLabels({markAt(200, 5, QString(300, QLatin1Char('M')))}, kRows, kFont).empty());
  EXPECT_TRUE(layOutEventLabels({markAt(200, 5, QString())}, kRows, kFont).empty());
}

TEST(EventLabels, tellMagnitudeAndName) {
  FakeEvent event(utc(2011, 3, 11), 6.04F);
  EXPECT_EQ(eventText(event), QStringLiteral("M 6.0")) << "the moment magnitude stands in";
  event.size = 5.56F;
  EXPECT_EQ(eventText(event), QStringLiteral("M 5.6"));
  EXPECT_EQ(eventText(FakeEvent(utc(2011, 3, 11))), QString());
  HypocentreValues values;
  values.Ms = 7;
  values.name = QStringLiteral("  OFF EAST COAST\nOF HONSHU ");
  EXPECT_EQ(eventText(Hypocentre(values)), QStringLiteral("M 7.0 OFF EAST COAST OF HONSHU"));
  EXPECT_EQ(largestMagnitude(Hypocentre(values)), 7.0F);
}

TEST(EventLabels, areThoseOfTheThousandLargestMarksAtMost) {
  std::vector<EventMark> marks(999, markAt(400, 6, QString())); // larger, and without a text
  marks.push_back(markAt(200, 5));
  EXPECT_EQ(layOutEventLabels(marks, kRows, kFont).size(), 1U);
  marks.push_back(markAt(400, 6, QString()));
  EXPECT_TRUE(layOutEventLabels(marks, kRows, kFont).empty());
}

} // namespace xov::testing
