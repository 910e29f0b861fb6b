#include "HelicorderFixture.h"

#include <QRegularExpression>

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

TEST_F(Helicorder, labelsOfHoursAreSpreadWhereTheyHaveNoRoomAndTheHostWishesIt) {
  view_.setNRows(96);
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  const auto labels = [&] {
    draw(pieces);
    return recording_.strings().filter(QRegularExpression(QStringLiteral("^ 02/\\d\\d \\d\\d$")));
  };
  EXPECT_FALSE(view_.spreadsHourLabels());
  EXPECT_EQ(labels().size(), 96); // each row, over one another
  view_.setSpreadsHourLabels(true);
  const QStringList spread = labels(); // rows of 300 / 97 points: five have room, six hours are round
  EXPECT_EQ(spread.size(), 96 / 6);
  EXPECT_EQ(spread.mid(0, 5), (QStringList{" 02/19 00", " 02/19 06", " 02/19 12", " 02/19 18", " 02/20 00"}));
}

} // namespace
} // namespace xov::testing
