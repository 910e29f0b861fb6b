#include "HelicorderFixture.h"

#include <cmath>

namespace xov::testing {
namespace {

TEST_F(Helicorder, startsWithADayOfHoursAndNoData) {
  EXPECT_EQ(view_.wvfrmArray(), nullptr);
  EXPECT_EQ(view_.theHypos(), nullptr);
  EXPECT_EQ(view_.maxAmplitude(), 0);
  EXPECT_EQ(view_.gainFactor(), 8);
  EXPECT_EQ(view_.rowDuration(), 3600);
  EXPECT_EQ(view_.nRows(), 24);
  EXPECT_FALSE(view_.startTime().isValid());
  EXPECT_EQ(view_.plotDuration(), 0);
  EXPECT_FALSE(view_.showZeroLines());
  EXPECT_EQ(view_.magThreshold(), 4);
  EXPECT_FALSE(view_.labelHours());
}

TEST_F(Helicorder, keepsWhatItIsTold) {
  view_.setMaxAmplitude(1);
  view_.setGainFactor(2);
  view_.setRowDuration(3);
  view_.setNRows(4);
  view_.setStartTime(kMidnight);
  view_.setPlotDuration(5);
  view_.setShowZeroLines(true);
  view_.setMagThreshold(6);
  view_.setLabelHours(true);
  EXPECT_EQ(view_.maxAmplitude(), 1);
  EXPECT_EQ(view_.gainFactor(), 2);
  EXPECT_EQ(view_.rowDuration(), 3);
  EXPECT_EQ(view_.nRows(), 4);
  EXPECT_EQ(view_.startTime(), kMidnight);
  EXPECT_EQ(view_.plotDuration(), 5);
  EXPECT_TRUE(view_.showZeroLines());
  EXPECT_EQ(view_.magThreshold(), 6);
  EXPECT_TRUE(view_.labelHours());
}

TEST_F(Helicorder, withoutPiecesIsAWhitePage) {
  view_.setStartTime(kMidnight);
  for (const Records& pieces : {Records(), recordsOf({})}) {
    draw(pieces, eventsOf({}));
    EXPECT_EQ(steps(recording_), QStringList{"fill #ffffff"});
    EXPECT_EQ(recording_.fills()[0].path.shape().boundingRect(), QRectF(0, 0, 600, 436));
  }
  EXPECT_EQ(view_.startTime(), kMidnight); // nothing is overwritten
}

TEST_F(Helicorder, fillsInWhatItDraws) {
  const Records pieces = recordsOf({recordAt(utc(2011, 3, 11, 10, 17, 30), {3, -7}), recordAt(kMidnight, {5})});
  view_.setRowDuration(1800.5f);
  draw(pieces);
  EXPECT_EQ(view_.startTime(), utc(2011, 3, 11, 10));
  EXPECT_EQ(view_.plotDuration(), 24 * 1800.5);
  EXPECT_EQ(view_.maxAmplitude(), 7);
  EXPECT_EQ(view_.pRect(), QRectF(72, 36, 492, 336));
  EXPECT_EQ(view_.iRect(), view_.pRect());
  EXPECT_EQ(view_.xmin(), 0);
  EXPECT_EQ(view_.xmax(), 1800.5f);
}

TEST_F(Helicorder, coversTheProductOfRowsAndDurationInSinglePrecision) {
  view_.setNRows(16777217);
  view_.setRowDuration(1);
  const Records pieces = recordsOf({recordAt(kMidnight, {1, 2})});
  draw(pieces);
  EXPECT_EQ(view_.plotDuration(), 16777216);
}

TEST_F(Helicorder, findsTheLargestAmplitudeOfAllPiecesAnew) {
  EXPECT_EQ(view_.getAbsMaxAmplitude(), -1.0e20f);
  const auto first = recordAt(kMidnight, {3, -7});
  const auto second = recordAt(kMidnight, {5});
  const Records pieces = recordsOf({first, nullptr, second});
  view_.setWvfrmArray(pieces);
  second->samples[0] = 11;
  EXPECT_EQ(view_.getAbsMaxAmplitude(), 11);
  EXPECT_EQ(first->extremaComputed, 2); // when it was made, and now
  view_.setMaxAmplitude(1000);
  draw();
  EXPECT_EQ(view_.maxAmplitude(), 11);
}

QStringList scaleSteps() {
  QStringList list;
  for (int minute = 0; minute <= 60; minute += 5)
    list << QStringLiteral("text #808080 %1").arg(minute);
  return list << QStringLiteral("line #aaaaaa") << QStringLiteral("text #808080 Time (Minutes)");
}

TEST_F(Helicorder, drawsItsStepsInOrder) {
  view_.resize(588, 436); // 480 points: sixty ticks of 8 points add up exactly
  view_.setNRows(2);
  view_.setShowZeroLines(true);
  auto big = std::make_shared<FakeEvent>(kMidnight.addSecs(100));
  big->moment = 6;
  auto small = std::make_shared<FakeEvent>(kMidnight.addSecs(200));
  small->bodyWave = 3;
  auto medium = std::make_shared<FakeEvent>(kMidnight.addSecs(300));
  medium->surfaceWave = 5;
  const auto piece = recordAt(kMidnight, {1, -1, 1});
  piece->station = QStringLiteral("COP");
  const Records pieces = recordsOf({piece, recordAt(kMidnight, {1, 2, 3}, 1, 10), recordAt(kMidnight, {1, 2})});
  const Events events = eventsOf({big, small, medium});
  draw(pieces, events);
  const QStringList expected = QStringList{"fill #ffffff", "text #808080 2009-02-19 -  COP  ", "line #aaaaaa",
                                           "line #ff0000", "line #ff8000"} +
                               scaleSteps() + QStringList{"trace #000000", "trace #ff0000", "trace #000000"} +
                               scaleSteps() + QStringList{"text #aaaaaa  02/19 00", "text #aaaaaa  02/19 01"};
  EXPECT_EQ(steps(recording_), expected);
}

TEST_F(Helicorder, leavesTheStateOfItsLabelsAsThePageEnds) {
  const Records pieces = recordsOf({recordAt(kMidnight, {1, -1})});
  view_.setLabelFontSize(10);
  draw(pieces);
  EXPECT_EQ(view_.labelAttributes()->pointSize(), 18);
  EXPECT_EQ(view_.labelAttributes()->color(), colors::lightGray);
  view_.drawMinuteMarks();
  EXPECT_EQ(view_.labelAttributes()->color(), colors::black);
  EXPECT_EQ(recording_.stateDepth(), 1u);
}

TEST_F(Helicorder, writesItsTitleInTheUpperLeftCorner) {
  const auto piece = recordAt(kMidnight, {1, -1});
  piece->network = QStringLiteral("DK");
  piece->station = QStringLiteral("COP");
  piece->component = QStringLiteral("BHZ");
  const Records pieces = recordsOf({piece});
  draw(pieces);
  const QString title = QStringLiteral("2009-02-19 - DK COP  BHZ");
  expectText(recording_, title, placed(title, kHelvetica18, {72, 434}, 1, 3), 18, colors::gray);
}

TEST_F(Helicorder, drawsThinZeroLinesOnRequest) {
  const Records pieces = recordsOf({recordAt(kMidnight, {1, -1})});
  draw(pieces);
  const std::size_t without = lineStrokes(recording_).size();
  view_.setShowZeroLines(true);
  draw();
  ASSERT_EQ(lineStrokes(recording_).size(), without + 1);
  const RecordedItem lines = lineStrokes(recording_)[0];
  EXPECT_EQ(lines.color, colors::lightGray);
  EXPECT_EQ(lines.path.lineWidth(), 0.5);
  const std::vector<QLineF> segments = lines.segments();
  ASSERT_EQ(segments.size(), 24u);
  for (int r = 0; r < 24; ++r)
    expectNear(segments[std::size_t(r)], QLineF(72, 372 - (r + 0.5) * 12, 564, 372 - (r + 0.5) * 12), 1e-9);
}

TEST_F(Helicorder, drawsASample3725SecondsAfterTheHourInRow1At125Seconds) {
  std::vector<float> samples(4000, 0.0f);
  samples[3725] = 10;
  view_.setGainFactor(1);
  const Records pieces = recordsOf({recordAt(kMidnight, samples)});
  draw(pieces);
  const std::vector<Trace> traces = traceStrokes(recording_)[0].path.traces();
  ASSERT_EQ(traces.size(), 2u);
  EXPECT_EQ(traces[1].first, 3600);
  // The largest sample reaches half a row above the zero line of row 1, at 372 - 18.
  expectNear(traces[1].points()[125], {72 + 125 * 492.0 / 3600, 372 - 18 + 6}, 1e-6);
}

TEST_F(Helicorder, startsAPieceOf101730In1050SecondsOfTheFirstRow) {
  const Records pieces = recordsOf({recordAt(utc(2011, 3, 11, 10, 17, 30), {0, 1})});
  draw(pieces);
  EXPECT_EQ(view_.startTime(), utc(2011, 3, 11, 10));
  expectNear(traceStrokes(recording_)[0].path.traces()[0].points()[0], {72 + 1050 * 492.0 / 3600, 372 - 6}, 1e-6);
}

TEST_F(Helicorder, strokesEverySecondPieceRedWhateverItsRows) {
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1}, 4000), recordAt(kMidnight, {0, 1, 2, 3}, 3000, 10),
                                    nullptr, recordAt(kMidnight, {0, 1}, 1, 20), recordAt(kMidnight, {2, 1}, 1, 5)});
  draw(pieces);
  const auto strokes = traceStrokes(recording_);
  ASSERT_EQ(strokes.size(), 4u); // one a piece
  EXPECT_EQ(strokes[0].color, colors::black);
  EXPECT_EQ(strokes[1].color, colors::red);
  EXPECT_EQ(strokes[2].color, colors::red); // the null piece before it counts
  EXPECT_EQ(strokes[3].color, colors::black);
  for (const RecordedItem& stroke : strokes) {
    EXPECT_EQ(stroke.path.lineWidth(), 1);
    EXPECT_FALSE(stroke.clip);
  }
}

// The polylines of a piece, sample by sample, written for this test.
std::vector<std::vector<QPointF>> polylines(const FakeRecord& piece, float refOffset, const QRectF& rect, int nRows,
                                            float rowDuration, float gain, float maxAmplitude) {
  const double h = (rect.height() - 36) / (nRows + 1);
  const double yTop = rect.y() + rect.height();
  const double xScale = rect.width() / double(rowDuration);
  const double ampScale = double(gain) * h / (2 * double(maxAmplitude));
  std::vector<std::vector<QPointF>> lines;
  double prevBase = -1000;
  for (int i = 0; i < piece.npts(); ++i) {
    float t = piece.b() + refOffset;
    t += float(i) * piece.delta();
    const float rowStart = std::floor(t / rowDuration) * rowDuration;
    const double base = yTop - double(rowStart / rowDuration) * h;
    if (base != prevBase) lines.emplace_back();
    prevBase = base;
    lines.back().emplace_back(rect.x() + double(t - rowStart) * xScale,
                              base - 0.5 * h + double(piece.samples[std::size_t(i)]) * ampScale);
  }
  return lines;
}

TEST_F(Helicorder, drawsRowsWhereAnIndependentReckoningPutsThem) {
  std::mt19937 random(23);
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(::testing::Message() << "round " << round);
    view_.resize(uniformInt(random, 150, 1200), uniformInt(random, 180, 1200));
    view_.setNRows(uniformInt(random, 1, 48));
    view_.setRowDuration(float(uniformInt(random, 60, 7200)));
    view_.setGainFactor(uniform(random, 0.5f, 20));
    const QDateTime reference = kMidnight.addMSecs(uniformInt(random, 0, 86400000));
    std::vector<std::shared_ptr<FakeRecord>> list;
    float begin = uniform(random, -2000, 2000);
    for (int k = uniformInt(random, 1, 3); k > 0; --k) {
      const float interval = uniform(random, 0.01f, 60);
      list.push_back(recordAt(reference, noise(random, uniformInt(random, 1, 300), 1000), interval, begin));
      begin = list.back()->e() + uniform(random, -10, 500); // a gap, or an overlap
    }
    const Records pieces = recordsOf(list);
    draw(pieces);

    const float refOffset = float(reference.time().minute()) * 60 + float(reference.time().second()) +
                            float(reference.time().msec()) / 1000;
    float maxAmplitude = 0;
    for (const auto& piece : list)
      for (const float sample : piece->samples)
        maxAmplitude = std::max(maxAmplitude, std::abs(sample));
    const QRectF rect(72, 36, view_.width() - 108, view_.height() - 100);
    const auto strokes = traceStrokes(recording_);
    ASSERT_EQ(strokes.size(), list.size());
    for (std::size_t k = 0; k < list.size(); ++k) {
      const auto expected =
          polylines(*list[k], refOffset, rect, view_.nRows(), view_.rowDuration(), view_.gainFactor(), maxAmplitude);
      const auto& traces = strokes[k].path.traces();
      ASSERT_EQ(traces.size(), expected.size());
      for (std::size_t row = 0; row < expected.size(); ++row)
        expectPoints(traces[row], expected[row]);
    }
  }
}

TEST_F(Helicorder, leavesAGapBetweenPiecesAndAtSamplesThatAreNotNumbers) {
  const float nan = std::nanf("");
  const Records pieces =
      recordsOf({recordAt(kMidnight, {0, 1, nan, 2, 3}, 100), recordAt(kMidnight, {1, 2}, 100, 1000)});
  draw(pieces);
  std::vector<double> ends; // of the lines, in seconds
  for (const RecordedItem& stroke : traceStrokes(recording_)) {
    for (const QLineF& line : stroke.segments()) {
      ends.push_back((line.x1() - 72) / 492 * 3600);
      ends.push_back((line.x2() - 72) / 492 * 3600);
    }
  }
  const std::vector<double> expected = {0, 100, 300, 400, 1000, 1100};
  ASSERT_EQ(ends.size(), expected.size());
  for (std::size_t i = 0; i < ends.size(); ++i)
    EXPECT_NEAR(ends[i], expected[i], 1e-6);
}

TEST_F(Helicorder, drawsWhatLiesBeforeItsFirstHourAboveTheFirstRow) {
  // The reference time is on the hour, the piece begins 90 s before it.
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 0, 0, 0}, 60, -90)});
  draw(pieces);
  const std::vector<Trace> traces = traceStrokes(recording_)[0].path.traces();
  ASSERT_EQ(traces.size(), 2u);
  expectPoints(traces[0], {{72 + 3510 * 492.0 / 3600, 378}, {72 + 3570 * 492.0 / 3600, 378}});
  expectPoints(traces[1], {{72 + 30 * 492.0 / 3600, 366}, {72 + 90 * 492.0 / 3600, 366}});
}

TEST_F(Helicorder, startsOnTheDayBeforeForARecordThatBeginsBeforeMidnight) {
  const Records pieces = recordsOf({recordAt(utc(2009, 2, 18, 23, 59, 50), {0, 0}, 20)});
  draw(pieces);
  EXPECT_EQ(view_.startTime(), utc(2009, 2, 18, 23));
  EXPECT_TRUE(recording_.strings().contains(QStringLiteral(" 02/18 23")));
  EXPECT_TRUE(recording_.strings().contains(QStringLiteral(" 02/19 00")));
  const std::vector<Trace> traces = traceStrokes(recording_)[0].path.traces();
  ASSERT_EQ(traces.size(), 2u);
  expectNear(traces[0].points()[0], {72 + 3590 * 492.0 / 3600, 366});
  expectNear(traces[1].points()[0], {72 + 10 * 492.0 / 3600, 354});
}

TEST_F(Helicorder, endsAPartialLastRowWithItsLastSample) {
  const Records pieces = recordsOf({recordAt(kMidnight, std::vector<float>(91, 0.0f), 60)});
  draw(pieces);
  const std::vector<Trace> traces = traceStrokes(recording_)[0].path.traces();
  ASSERT_EQ(traces.size(), 2u);
  EXPECT_EQ(traces[0].size(), 60);
  EXPECT_NEAR(traces[1].points().back().x(), 72 + 1800 * 492.0 / 3600, 1e-6);
}

TEST_F(Helicorder, doesNotDoubleInkWhereRowsOfAPieceOverlap) {
  // Rows 0.01 points high lie on each other; each is a level line over half the page.
  view_.resize(600, 136 + 10);
  view_.setNRows(999);
  view_.setExportPixelRatio(1);
  const auto inkOf = [&](int rows) {
    const Records pieces = recordsOf({recordAt(kMidnight, std::vector<float>(std::size_t(rows) * 2, 0.0f), 1800)});
    view_.setWvfrmArray(pieces);
    const QImage picture = view_.snapshot();
    std::vector<int> ink;
    for (int y = 90; y < 130; ++y)
      ink.push_back(255 - qRed(picture.pixel(200, y - 40)));
    return ink;
  };
  const std::vector<int> one = inkOf(1), many = inkOf(5);
  EXPECT_GT(*std::max_element(one.begin(), one.end()), 100);
  for (std::size_t i = 0; i < one.size(); ++i)
    EXPECT_NEAR(many[i], one[i], 15); // five rows are 0.04 points
}

TEST_F(Helicorder, drawsTheLaterOfOverlappingPiecesOnTop) {
  view_.setExportPixelRatio(1);
  const std::vector<float> level(100, 0.0f);
  const Records pieces = recordsOf({recordAt(kMidnight, level, 30), recordAt(kMidnight, level, 30, 600)});
  view_.setWvfrmArray(pieces);
  const QImage picture = view_.snapshot();
  const auto colorAt = [&](double seconds) { // on the zero line of row 0, 366 points up
    return picture.pixelColor(int(72 + seconds * 492 / 3600), 436 - 366);
  };
  // The line covers half of the pixel.
  EXPECT_NEAR(colorAt(300).red(), 128, 10);
  EXPECT_EQ(colorAt(300).red(), colorAt(300).green());
  EXPECT_NEAR(colorAt(1500).red(), (128 + 255) / 2, 10); // half red over half black
  EXPECT_NEAR(colorAt(1500).green(), 128 / 2, 10);
}

TEST_F(Helicorder, laysAnAllZeroRecordingOnItsZeroLines) {
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 0, 0})});
  draw(pieces);
  for (const QPointF& point : traceStrokes(recording_)[0].path.traces()[0].points())
    EXPECT_EQ(point.y(), 366);
}

TEST_F(Helicorder, marksEventsThroughTheirRows) {
  auto event = std::make_shared<FakeEvent>(kMidnight.addSecs(7500));
  event->bodyWave = 4.5f;
  event->surfaceWave = 6.2f;
  event->moment = 0;
  auto faint = std::make_shared<FakeEvent>(kMidnight.addSecs(900));
  faint->moment = 4;
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  const Events events = eventsOf({event, nullptr, faint});
  draw(pieces, events);
  const auto red = singleLines(recording_, colors::red);
  ASSERT_EQ(red.size(), 1u);
  EXPECT_EQ(red[0].path.lineWidth(), 4);
  EXPECT_EQ(red[0].path.lineCap(), Path::Cap::Butt);
  expectNear(red[0].segments()[0], QLineF(72 + 300 * 492.0 / 3600, 372 - 36, 72 + 300 * 492.0 / 3600, 372 - 24));
  const auto gray = singleLines(recording_, colors::lightGray);
  ASSERT_EQ(gray.size(), 1u);
  EXPECT_EQ(gray[0].path.lineWidth(), 2);
  expectNear(gray[0].segments()[0], QLineF(72 + 900 * 492.0 / 3600, 360, 72 + 900 * 492.0 / 3600, 372));
}

TEST_F(Helicorder, movesMarkersByTheOffsetOfTheReferenceTime) {
  auto event = std::make_shared<FakeEvent>(utc(2009, 2, 19, 10, 30));
  event->moment = 5;
  const Records pieces = recordsOf({recordAt(utc(2009, 2, 19, 10, 17, 30), {0, 1})});
  const Events events = eventsOf({event});
  draw(pieces, events);
  // 1800 s into the page and 1050 s more.
  EXPECT_NEAR(singleLines(recording_, colors::orange)[0].segments()[0].x1(), 72 + 2850 * 492.0 / 3600, 1e-6);
}

TEST_F(Helicorder, drawsItsScaleInLightGrayLinesOfOnePoint) {
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  view_.setLabelHours(true);
  draw(pieces);
  const RecordedItem scale = lineStrokes(recording_)[0];
  EXPECT_EQ(scale.color, colors::lightGray);
  EXPECT_EQ(scale.path.lineWidth(), 1);
  EXPECT_EQ(scale.segments()[0], QLineF(72, 72, 72, 96));
  EXPECT_EQ(scale.segments().back(), QLineF(72, 72, 564, 72));
  expectText(recording_, QStringLiteral("0.25"),
             placed(QStringLiteral("0.25"), kHelvetica18, {72 + 15 * 8.2, 68}, 2, 3), 18, colors::gray);
  const QString title = QStringLiteral("Time (Hours)");
  expectText(recording_, title, placed(title, kHelvetica18, {318, 12}, 2, 1), 18, colors::gray);
}

// Counts the calls of its steps.
class CountingPage : public helicorderView {
public:
  using helicorderView::helicorderView;
  void drawSeismicPhases(const QRectF& rect) override {
    phasesRect = rect;
    helicorderView::drawSeismicPhases(rect);
  }
  void drawMinuteMarks() override { ++scales; }
  void drawHourLabels() override { ++labels; }
  float getAbsMaxAmplitude() override { return 100; }
  QRectF phasesRect;
  int scales = 0, labels = 0;
};

TEST_F(Helicorder, letsSubclassesReplaceItsSteps) {
  CountingPage page(QRectF(0, 0, 600, 436));
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  page.setWvfrmArray(pieces);
  const GraphicsContext::Pass pass(recording_);
  page.drawRect({1, 2, 3, 4});
  EXPECT_EQ(page.phasesRect, QRectF(1, 2, 3, 4));
  EXPECT_EQ(page.scales, 1);
  EXPECT_EQ(page.labels, 1);
  EXPECT_EQ(page.maxAmplitude(), 100);
  const Events events = eventsOf({std::make_shared<FakeEvent>(kMidnight.addDays(-9))});
  page.setTheHypoArray(events);
  page.drawRect({});
  EXPECT_EQ(page.scales, 3); // twice with events, shown or not
}

TEST_F(Helicorder, marksNothingWithoutEvents) {
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  draw(pieces);
  const QString without = recording_.toText();
  draw(pieces, eventsOf({}));
  EXPECT_EQ(recording_.toText(), without);
}

TEST_F(Helicorder, showsAWhitePageWhenTheHostLetsGo) {
  Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  auto event = std::make_shared<FakeEvent>(kMidnight);
  event->moment = 6;
  Events events = eventsOf({event});
  draw(pieces, events);
  EXPECT_EQ(singleLines(recording_, colors::red).size(), 1u);
  events.reset();
  draw();
  EXPECT_EQ(singleLines(recording_, colors::red).size(), 0u);
  EXPECT_EQ(traceStrokes(recording_).size(), 1u);
  pieces.reset();
  draw();
  EXPECT_EQ(steps(recording_), QStringList{"fill #ffffff"});
}

TEST_F(Helicorder, reportsClicksInSecondsOfTheRow) {
  const Records pieces = recordsOf({recordAt(kMidnight, {0, 1})});
  draw(pieces);
  EXPECT_NEAR(viewToData({72 + 246, 200}, view_.iRect(), view_.limits()).x(), 1800, 1e-9);
}

} // namespace
} // namespace xov::testing
