// Drums with a start of their own, colours of rows, local time, held traces and labelled events.
#include "HelicorderFixture.h"
#include "XOV_Graphics/seismic/Hypocentre.h"
#include "XOV_Graphics/views/timeline/HourLabels.h"

#include <numeric>

namespace xov::testing {
namespace {

class HelicorderOptions : public Helicorder {
protected:
  // Three hours from ten past the hour on, a sample every ten minutes.
  const Records threeHours_ = recordsOf({recordAt(
      kMidnight.addSecs(10 * 3600 + 600), {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}, 600)});

  QStringList texts() const {
    QStringList all;
    for (const RecordedItem& item : recording_.texts())
      all.append(item.text);
    return all;
  }
  std::vector<std::pair<QColor, std::size_t>> colorsOfTraces() const {
    std::vector<std::pair<QColor, std::size_t>> all;
    for (const RecordedItem& stroke : traceStrokes(recording_))
      all.emplace_back(stroke.color, stroke.path.traces().size());
    return all;
  }
};

TEST_F(HelicorderOptions, startAtTheHourWithoutAStartOfTheirOwn) {
  draw(threeHours_);
  EXPECT_EQ(view_.startTime(), kMidnight.addSecs(10 * 3600));
  EXPECT_FALSE(view_.pageStart().isValid());
}

TEST_F(HelicorderOptions, startWhereTheHostSays) {
  view_.setPageStart(kMidnight.addSecs(10 * 3600 + 1800));
  draw(threeHours_);
  EXPECT_EQ(view_.startTime(), kMidnight.addSecs(10 * 3600 + 1800));
  // The first sample lies 20 minutes before the page: at 40 minutes of row -1, which begins 12 points above row 0.
  const auto traces = traceStrokes(recording_)[0].path.traces();
  EXPECT_NEAR(traces[0].points()[0].x(), 72 + 492 * 40.0 / 60, 1e-3);
  EXPECT_NEAR(traces[0].yOffset, 372 + 6, 1e-9);
  EXPECT_NEAR(traces[1].points()[0].x(), 72, 1e-3) << "10:30 begins row 0";
  EXPECT_NEAR(traces[1].yOffset, 372 - 6, 1e-9);
  EXPECT_TRUE(texts().contains(QStringLiteral("02/19 10:30"))) << qPrintable(texts().join('|'));
  EXPECT_TRUE(texts().contains(QStringLiteral("02/20 09:30")));
}

TEST_F(HelicorderOptions, keepTheirLabelsWhereTheyStartWithAnHour) {
  draw(threeHours_);
  const QString before = QString::fromStdString(std::to_string(recording_.texts().size()));
  view_.setPageStart(kMidnight.addSecs(10 * 3600));
  draw();
  EXPECT_EQ(QString::fromStdString(std::to_string(recording_.texts().size())), before);
  EXPECT_TRUE(texts().contains(QStringLiteral("02/19 10")));
}

TEST_F(HelicorderOptions, markEventsAtTheirOriginTimeOnAPageOfTheirOwn) {
  view_.setPageStart(kMidnight.addSecs(10 * 3600 + 1800));
  const Events events = eventsOf({std::make_shared<FakeEvent>(kMidnight.addSecs(11 * 3600), 6.0F)});
  draw(threeHours_, events);
  const auto lines = singleLines(recording_, colors::red);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_NEAR(lines[0].path.shape().elementAt(0).x, 72 + 246, 1e-9) << "half an hour into the first row";
}

TEST_F(HelicorderOptions, colourRowsInTurn) {
  view_.setRowColors({Qt::green, Qt::blue});
  draw(threeHours_);
  // From 10:10 to 13:00: rows of 5, 6, 6 and 1 samples.
  EXPECT_EQ(colorsOfTraces(), (std::vector<std::pair<QColor, std::size_t>>{{Qt::green, 2}, {Qt::blue, 2}}));
  view_.setRowColors({});
  draw();
  EXPECT_EQ(colorsOfTraces(), (std::vector<std::pair<QColor, std::size_t>>{{colors::black, 4}}));
}

TEST_F(HelicorderOptions, colourRowsAboveThePageAndFarBelowIt) {
  view_.setRowColors({Qt::green, Qt::blue, Qt::red});
  view_.setPageStart(kMidnight.addSecs(12 * 3600));
  draw(threeHours_);
  // Rows -2, -1, 0 and 1; before the first colour comes the last one.
  EXPECT_EQ(colorsOfTraces(),
            (std::vector<std::pair<QColor, std::size_t>>{{Qt::blue, 2}, {Qt::red, 1}, {Qt::green, 1}}));
  view_.setPageStart(QDateTime());
  const Records far = recordsOf({recordAt(kMidnight, {1, 2, 3}, 1, 3e37F)});
  for (const bool byDay : {false, true}) {
    view_.setColorsByDay(byDay);
    draw(far);
    EXPECT_LE(colorsOfTraces().size(), 3U);
  }
}

TEST_F(HelicorderOptions, colourRowsByTheDay) {
  view_.setRowColors({Qt::green, Qt::blue});
  view_.setColorsByDay(true);
  view_.setPageStart(kMidnight.addSecs(10 * 3600));
  draw(threeHours_);
  EXPECT_EQ(colorsOfTraces(), (std::vector<std::pair<QColor, std::size_t>>{{Qt::green, 4}}));
  // At 12:00 UTC it is midnight twelve hours further east: the third and the fourth row are of the next day.
  view_.setLocalZone(QTimeZone(12 * 3600));
  draw();
  EXPECT_EQ(colorsOfTraces(), (std::vector<std::pair<QColor, std::size_t>>{{Qt::green, 2}, {Qt::blue, 2}}));
}

TEST_F(HelicorderOptions, writeLocalTimeAtTheRight) {
  view_.setLocalZone(QTimeZone(QByteArrayLiteral("UTC+05:30")));
  draw(threeHours_);
  EXPECT_EQ(view_.pRect(), QRectF(72, 36, 456, 336));
  const TextAttributes font = TextAttributes::helvetica(11);
  // Row 0 begins at 10:00 UTC, its middle lies at 366; 8 points from the rows.
  expectText(recording_, QStringLiteral("02/19 15:30"), placed(QStringLiteral("02/19 15:30"), font, {536, 366}, 1, 2),
             11, colors::lightGray);
  expectText(recording_, QStringLiteral("UTC"), placed(QStringLiteral("UTC"), font, {64, 376}, 3, 1), 11,
             colors::lightGray);
  expectText(recording_, QStringLiteral("UTC+05:30"), placed(QStringLiteral("UTC+05:30"), font, {536, 376}, 1, 1), 11,
             colors::lightGray);
}

TEST_F(HelicorderOptions, holdTracesAndMarkWhere) {
  view_.setClipReach(0.5);
  view_.setGainFactor(4);
  const Records spike = recordsOf({recordAt(kMidnight, {0, 0, 100, 0, -20, 0}, 600)});
  draw(spike);
  // The spike would rise 4 half rows of 6 points: held at 6 of 24 points, which 25 of 100 counts reach.
  const Trace trace = traceStrokes(recording_)[0].path.traces()[0];
  EXPECT_EQ(trace.clampHigh, 25.0F);
  EXPECT_EQ(trace.clampLow, -25.0F);
  const auto marks = singleLines(recording_, QColor(213, 94, 0));
  ASSERT_EQ(marks.size(), 1U);
  const double x = 72 + 492 * 20.0 / 60;
  EXPECT_NEAR(marks[0].path.shape().elementAt(0).x, x - 1.5, 1e-3);
  EXPECT_NEAR(marks[0].path.shape().elementAt(1).x, x + 1.5, 1e-3);
  EXPECT_NEAR(marks[0].path.shape().elementAt(0).y, 372, 1e-3) << "the upper edge of the row";
  for (const double reach : {0.0, -1.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
    view_.setClipReach(reach);
    draw();
    EXPECT_FALSE(traceStrokes(recording_)[0].path.traces()[0].clampHigh) << reach;
  }
}

TEST_F(HelicorderOptions, showHowLargeAmplitudesAre) {
  view_.setGainFactor(4);
  view_.setAmplitudeUnit(QStringLiteral("nm/s"));
  const Records spike = recordsOf({recordAt(kMidnight, {0, 0, 100, 0, -20, 0}, 600)});
  draw(spike);
  EXPECT_FALSE(texts().contains(QStringLiteral("100 nm/s")));
  view_.setShowAmplitudeBar(true);
  draw();
  // 100 nm/s rise 4 half rows of 6 points; 200 would take 48 points, more than the 36 above the rows.
  EXPECT_TRUE(texts().contains(QStringLiteral("100 nm/s"))) << qPrintable(texts().join('|'));
  bool hasBar = false;
  for (const RecordedItem& stroke : lineStrokes(recording_)) {
    const QRectF box = stroke.path.shape().boundingRect();
    hasBar = hasBar || box == QRectF(558, 378, 6, 24);
  }
  EXPECT_TRUE(hasBar) << "from 6 points above the rows, at their right end";
  const Records silence = recordsOf({recordAt(kMidnight, {0, 0, 0})});
  draw(silence);
  EXPECT_FALSE(texts().join(QLatin1Char(' ')).contains(QStringLiteral("nm/s"))) << "there is no scale";
}

TEST_F(HelicorderOptions, labelEventsOverTheTraces) {
  const auto event = std::make_shared<FakeEvent>(kMidnight.addSecs(10 * 3600 + 1800), 6.0F);
  const Events events = eventsOf({event, std::make_shared<FakeEvent>(kMidnight.addSecs(11 * 3600), 3.0F)});
  draw(threeHours_, events);
  EXPECT_FALSE(texts().contains(QStringLiteral("M 6.0")));
  view_.setShowEventLabels(true);
  draw();
  EXPECT_TRUE(texts().contains(QStringLiteral("M 6.0")));
  EXPECT_FALSE(texts().contains(QStringLiteral("M 3.0"))) << "it is not marked";
}

TEST(RowTimeLabels, followTheClocksOfTheZone) {
  const QTimeZone berlin("Europe/Berlin");
  if (!berlin.isValid()) GTEST_SKIP() << "the system has no time zones";
  const HelicorderPage page{QRectF(72, 36, 456, 336), 3, 3600};
  const auto textsOf = [&](const QDateTime& start) {
    QStringList texts;
    for (const HourLabel& label : rowTimeLabels(page, start, berlin, Edge::Right))
      texts.append(label.text);
    return texts;
  };
  // In 2024 clocks went from 2 to 3 on 31 March at 1:00 UTC, and from 3 to 2 on 27 October at 1:00 UTC.
  EXPECT_EQ(textsOf(utc(2024, 3, 31, 0)), (QStringList{"03/31 01", "03/31 03", "03/31 04"}));
  EXPECT_EQ(textsOf(utc(2024, 10, 27, 0)), (QStringList{"10/27 02", "10/27 02", "10/27 03"}));
  EXPECT_EQ(zoneText(page, utc(2024, 3, 31, 0), berlin), QStringLiteral("CET/CEST"));
  EXPECT_EQ(zoneText(page, utc(2024, 6, 1), berlin), QStringLiteral("CEST"));
}

TEST(RowTimeLabels, tellMinutesInAllRowsWhereOneNeedsThem) {
  const HelicorderPage page{QRectF(72, 36, 456, 336), 2, 3600};
  const auto labels = rowTimeLabels(page, utc(2024, 3, 1, 23, 30), QTimeZone::utc(), Edge::Left);
  ASSERT_EQ(labels.size(), 2U);
  EXPECT_EQ(labels[0].text, QStringLiteral("03/01 23:30"));
  EXPECT_EQ(labels[1].text, QStringLiteral("03/02 00:30"));
  // (336 - 36) / 3 rows of 100 points from 372 down.
  EXPECT_EQ(labels[0].place, QPointF(64, 322));
}

TEST(RowTimeLabels, leaveOutTimesThatNoCalendarHas) {
  const HelicorderPage page{QRectF(72, 36, 456, 336), 3, 1e30F};
  EXPECT_EQ(rowTimeLabels(page, utc(2024, 3, 1), QTimeZone::utc(), Edge::Left).size(), 1U);
  EXPECT_TRUE(rowTimeLabels(page, QDateTime(), QTimeZone::utc(), Edge::Left).empty());
}

} // namespace
} // namespace xov::testing
