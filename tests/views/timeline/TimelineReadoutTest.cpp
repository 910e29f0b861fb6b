#include "HelicorderFixture.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// A sample a minute; 5:10 is ten minutes into the page.
const QDateTime kTenPast = utc(2011, 3, 11, 5, 10);

std::vector<float> counting(int count) {
  std::vector<float> samples;
  for (int i = 0; i < count; ++i)
    samples.push_back(float(i % 7 - 3));
  return samples;
}

std::vector<Trace> tracesIn(const RecordingContext& recording) {
  std::vector<Trace> traces;
  for (const RecordedItem& stroke : traceStrokes(recording))
    traces.insert(traces.end(), stroke.path.traces().begin(), stroke.path.traces().end());
  return traces;
}

// The first piece has samples from 5:10 to 6:00, the other one from 6:20 on.
class DrumReadout : public Helicorder {
protected:
  void SetUp() override {
    view_.setGainFactor(0.9F);
    pieces_ = recordsOf({recordAt(kTenPast, counting(51), 60), nullptr, recordAt(kTenPast, counting(200), 60, 4200)});
    draw(pieces_);
  }
  Records pieces_;
};

TEST_F(DrumReadout, namesThePieceOfEachSampleWithItsTimeAndValue) {
  int seen = 0;
  std::vector<std::size_t> next{0, 0, 0};
  for (const Trace& trace : tracesIn(recording_)) {
    // Traces come piece by piece, row by row.
    const std::size_t index = next[0] < 51 ? 0 : 2;
    for (const QPointF& point : trace.points()) {
      const std::size_t sample = next[index]++;
      const QPointF inside(std::max(point.x(), 72.01), point.y()); // the very edge rounds to either row
      const auto found = view_.recordAt(inside);
      ASSERT_TRUE(found) << index << ' ' << sample;
      EXPECT_EQ(found->index, index) << sample;
      EXPECT_EQ(found->record, (*pieces_)[index]);
      const double seconds = double((*pieces_)[index]->b()) + 60 * double(sample);
      EXPECT_NEAR(found->seconds, seconds, 0.1);
      const PlotReadout readout = view_.readout(inside);
      EXPECT_EQ(readout.value(QLatin1String("amplitude")), double((*pieces_)[index]->GetSacSeis()[sample]));
      EXPECT_NEAR(readout.value(QLatin1String("utc")), double(kTenPast.toSecsSinceEpoch()) + seconds, 0.1);
      ++seen;
    }
  }
  EXPECT_EQ(seen, 251);
}

// 492 points an hour and rows of 12 points from 372 down: the third row's middle is at 5 + 2.5 hours.
TEST_F(DrumReadout, tellsUtcOfTheRowAndTheDrumsLocalTime) {
  view_.setLocalZone(QTimeZone(9 * 3600));
  draw(); // with labels at the right, 456 points an hour
  const PlotReadout readout = view_.readout({72 + 228, 372 - 30});
  EXPECT_EQ(readout.value(QLatin1String("time")), 9000);
  EXPECT_EQ(readout.find(QLatin1String("utc"))->text, QStringLiteral("2011-03-11 07:30:00 UTC"));
  EXPECT_EQ(readout.find(QLatin1String("local"))->text, QStringLiteral("local 16:30:00 +0900"));
}

TEST_F(DrumReadout, inAGapNamesTheNearestPieceOfTheRowWithoutAnAmplitude) {
  // From 6:00 to 6:20 there is no sample; the row of 6 o'clock is the second.
  const PlotReadout readout = view_.readout({72 + 492 * 12 / 60.0, 372 - 18});
  EXPECT_EQ(readout.find(QLatin1String("amplitude")), nullptr);
  EXPECT_EQ(view_.recordAt({72 + 492 * 12 / 60.0, 372 - 18})->index, 2u);
  EXPECT_EQ(view_.recordAt({72 + 492 * 8 / 60.0, 372 - 18})->index, 0u);
  EXPECT_FALSE(view_.recordAt({300, 372 - 12 * 20})); // no piece is so late
  EXPECT_NEAR(view_.readout({72, 372 - 12 * 20 - 6}).value(QLatin1String("time")), 20 * 3600, 1e-6);
}

TEST_F(DrumReadout, stretchesOfTimeLieAroundTheirPoint) {
  const auto stretch = view_.stretchAt({72 + 246, 372 - 30}, 300); // 7:30
  ASSERT_TRUE(stretch);
  EXPECT_EQ(stretch->begin, utc(2011, 3, 11, 7, 27, 30));
  EXPECT_EQ(stretch->end, utc(2011, 3, 11, 7, 32, 30));
  // Pieces count from 5:10, ten minutes into the page.
  EXPECT_NEAR(stretch->beginSeconds, 9000 - 600 - 150, 1e-6);
  EXPECT_NEAR(stretch->endSeconds, 9000 - 600 + 150, 1e-6);
  EXPECT_FALSE(view_.stretchAt({72 + 246, 372 - 30}, 0));
  EXPECT_FALSE(view_.stretchAt({72 + 246, 372 - 30}, kNone));
  EXPECT_FALSE(view_.stretchAt({72 + 246, 390}, 300));
}

TEST_F(DrumReadout, countsFromAPageStartOfTheHosts) {
  view_.setPageStart(utc(2011, 3, 11, 4, 40));
  draw();
  // The middle of the first row is 5:10, where the first piece begins.
  EXPECT_NEAR(view_.recordAt({72 + 246, 366})->seconds, 0, 1e-3);
  EXPECT_EQ(view_.readout({72 + 246, 366}).find(QLatin1String("utc"))->text,
            QStringLiteral("2011-03-11 05:10:00 UTC"));
}

TEST_F(DrumReadout, tellsTimesOfRowsThatAreNarrowerThanAPoint) {
  view_.setNRows(599);
  draw();
  // 300 points for 600 rows, the empty one included: the middle of the third is 1.25 points below the top.
  EXPECT_NEAR(view_.readout({72 + 246, 372 - 1.25}).value(QLatin1String("time")), 2.5 * 3600, 1e-6);
}

TEST_F(DrumReadout, tellsNothingBesideTheRowsAndForAbsurdPlaces) {
  for (const QPointF odd : {QPointF(60, 366), QPointF(300, 380), QPointF(300, 40), QPointF(1e30, 366),
                            QPointF(kNone, 366), QPointF(300, kNone)}) {
    EXPECT_TRUE(view_.readout(odd).isEmpty());
    EXPECT_FALSE(view_.recordAt(odd));
  }
  pieces_.reset();
  EXPECT_TRUE(view_.readout({300, 366}).isEmpty());
  EXPECT_TRUE(helicorderView().readout({0, 0}).isEmpty());
}

TEST_F(DrumReadout, aPieceThatShrankAfterTheDrawingIsReadNoFurther) {
  std::static_pointer_cast<FakeRecord>(pieces_->front())->samples.resize(3);
  EXPECT_EQ(view_.readout({72 + 246, 366}).find(QLatin1String("amplitude")), nullptr);
}

// 740 × 444 points: a rectangle of 600 × 300 at (60, 84), bands of 100 points; 10 points a second.
TEST(MonitorReadout, namesTheChannelOfEachTraceAndItsMoment) {
  realTimeDisplayView01 view(QRectF(0, 0, 740, 444));
  view.setXLimitsMinMax(0, 60);
  view.setYLimitsMinMax(-10, 10);
  view.setRefDate(utc(2011, 3, 11, 6, 0));
  const Records records = recordsOf({fakeRecord(counting(61)), nullptr, fakeRecord(counting(50))});
  view.setWvfrmsArray(records);
  RecordingContext recording;
  view.drawInto(recording);
  const std::vector<Trace> traces = tracesIn(recording);
  ASSERT_EQ(traces.size(), 2u);
  for (std::size_t k = 0; k < traces.size(); ++k) {
    const std::vector<QPointF> points = traces[k].points();
    for (std::size_t i = 0; i < points.size(); ++i) {
      const auto found = view.recordAt(points[i]);
      ASSERT_TRUE(found);
      EXPECT_EQ(found->index, 2 * k);
      EXPECT_NEAR(found->seconds, double(i), 1e-4);
      EXPECT_EQ(view.readout(points[i]).value(QLatin1String("amplitude")), double(counting(61)[i]));
    }
  }
  // The reference is the right edge.
  EXPECT_EQ(view.readout({60 + 300, 100}).find(QLatin1String("utc"))->text,
            QStringLiteral("2011-03-11 05:59:30.000 UTC"));
  view.setOriginOnRight(false);
  EXPECT_EQ(view.readout({60 + 300, 100}).find(QLatin1String("utc"))->text,
            QStringLiteral("2011-03-11 06:00:30.000 UTC"));
}

} // namespace
} // namespace xov::testing
