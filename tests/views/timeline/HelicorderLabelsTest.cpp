#include "HelicorderFixture.h"

namespace xov::testing {
namespace {

TEST_F(Helicorder, stepsHourLabelsByTwoWithRowsOfTwoHours) {
  view_.setRowDuration(7200);
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  draw(pieces);
  const QStringList strings = recording_.strings();
  EXPECT_EQ(strings.mid(strings.size() - 24, 3), (QStringList{" 02/19 00", " 02/19 02", " 02/19 04"}));
  // 120 minutes on 492 points: 4.1 points a tick, labels five apart.
  const std::vector<QLineF> marks = lineStrokes(recording_)[0].segments();
  EXPECT_NEAR(marks[1].x1() - marks[0].x1(), 4.1, 1e-9);
  EXPECT_EQ(strings.mid(1, 3), (QStringList{"0", "5", "10"}));
}

TEST_F(Helicorder, writesHourLabelsBesideTheirRows) {
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  draw(pieces);
  const QString text = QStringLiteral(" 02/19 05");
  expectText(recording_, text, placed(text, kHelvetica12, {64, 372 - 5.5 * 12}, 3, 2), 12, colors::lightGray);
}

TEST_F(Helicorder, labelsOfQuarterHoursStayOnThePageAndApart) {
  view_.setNRows(96);
  view_.setRowDuration(900);
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  draw(pieces);
  double above = 436;
  int labels = 0;
  for (const RecordedItem& item : recording_.items()) {
    if (!item.text.contains(QStringLiteral("02/19 "))) continue;
    EXPECT_EQ(item.attributes.pointSize(), 11);
    EXPECT_GE(item.position.x(), 0) << item.text.toStdString();
    EXPECT_LE(item.position.y() + item.attributes.size(item.text).height(), above) << item.text.toStdString();
    above = item.position.y();
    ++labels;
  }
  EXPECT_EQ(labels, 96 / 8); // rows of 300 / 97 points: five rows have room, two hours are round
}

} // namespace
} // namespace xov::testing
