#include "SeisDrawing.h"
#include "XOV_Graphics/seismic/SampledSignal.h"
#include "XOV_Graphics/seismic/StationObservation.h"
#include "XOV_Graphics/seismic/UtcTime.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"
#include "XOV_Graphics/views/seismic/ThreeCompView.h"
#include "XOV_Graphics/views/seismic/uniformTimeSeriesView.h"
#include "XOV_Graphics/views/seismic/wvfrmView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

constexpr QLatin1String kTime("time");
constexpr QLatin1String kAmplitude("amplitude");
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// Four records that each swing by 10 about a level of their own: level, level + 10, level, level - 10, ...
std::shared_ptr<FakeRecord> swinging(float level, float begin = 0, int count = 40) {
  std::vector<float> samples;
  for (int i = 0; i < count; ++i)
    samples.push_back(level + float(i % 2 == 0 ? 0 : (i % 4 == 1 ? 10 : -10)));
  return fakeRecord(std::move(samples), 1, begin);
}

std::vector<Trace> drawnTraces(const RecordingContext& recording) {
  std::vector<Trace> traces;
  for (const RecordedItem& stroke : traceStrokes(recording))
    traces.insert(traces.end(), stroke.path.traces().begin(), stroke.path.traces().end());
  return traces;
}

// At each sample that was drawn inside the data frame stands the record whose trace it is, with its time and value.
void expectRecordsWhereTheirTracesAre(const XOVView& view, const std::vector<Trace>& traces, const Records& records) {
  ASSERT_EQ(traces.size(), records->size());
  for (std::size_t k = 0; k < traces.size(); ++k) {
    const auto& record = (*records)[k];
    const std::vector<QPointF> points = traces[k].points();
    ASSERT_FALSE(points.empty());
    int seen = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (!containsPoint(view.pRect(), points[i])) continue;
      const auto found = view.recordAt(points[i]);
      ASSERT_TRUE(found) << k << ' ' << i;
      EXPECT_EQ(found->index, k) << i;
      EXPECT_EQ(found->record, record);
      EXPECT_NEAR(found->seconds, double(record->b()) + double(record->delta()) * double(i), 1e-3);
      EXPECT_EQ(view.readout(points[i]).value(kAmplitude), double(record->GetSacSeis()[i]));
      ++seen;
    }
    EXPECT_GT(seen, 20);
  }
}

TEST(SeismicReadout, namesTheRecordOfEachTraceOfAnOverlay) {
  SeisView01 view(QRectF(0, 0, 600, 400));
  const Records records = recordsOf({swinging(0), swinging(100), swinging(200, 5)});
  view.setWvfrmsArray(records);
  RecordingContext recording;
  view.drawInto(recording);
  expectRecordsWhereTheirTracesAre(view, drawnTraces(recording), records);
}

TEST(SeismicReadout, namesTheRecordOfEachTraceOfBandsAndOfTheirGaps) {
  SeisView02 view(QRectF(0, 0, 600, 400));
  view.setplotStyle(SeisView02::Bands);
  const Records records = recordsOf({swinging(0), swinging(0, 0, 41), swinging(0)});
  view.setWvfrmsArray(records);
  RecordingContext recording;
  view.drawInto(recording);
  expectRecordsWhereTheirTracesAre(view, drawnTraces(recording), records);
  // The middle of the frame is 80 + 240 and 60 + 150; the second band holds it, and belongs to its record alone.
  EXPECT_EQ(view.recordAt({320, 210 + 45})->index, 1u);
  EXPECT_EQ(view.recordAt({320, 210 - 45})->index, 1u);
}

class SectionReadout : public ::testing::Test {
protected:
  // Evenly, 720 × 540 points have a frame of 680 × 440 at (20, 60); with an axis one of 564 × 440 at (72, 60).
  void draw(const Records& records) {
    view.setWvfrmsArray(records);
    recording.clear();
    view.drawInto(recording);
  }
  MultiSeisView view{QRectF(0, 0, 720, 540)};
  RecordingContext recording;
};

TEST_F(SectionReadout, namesTheRecordOfEachTrace) {
  view.setPlotGainFactor(4);
  const Records records = recordsOf({swinging(0), swinging(0), swinging(0, 3), swinging(0)});
  draw(records);
  expectRecordsWhereTheirTracesAre(view, drawnTraces(recording), records);
}

TEST_F(SectionReadout, namesTheRecordOfEachTraceAlongAnAxisToo) {
  view.setPlotGainFactor(8);
  view.setStripPlacement(MultiSeisView::StripPlacement::ByDistanceDegrees);
  view.setAmplitudeScaling(MultiSeisView::AmplitudeScaling::EachTrace);
  std::vector<std::shared_ptr<FakeRecord>> placed;
  for (const float degrees : {30.0F, 10.0F, 20.0F, 50.0F}) {
    placed.push_back(swinging(0));
    placed.back()->distanceDeg = degrees;
  }
  const Records records = recordsOf(placed);
  draw(records);
  expectRecordsWhereTheirTracesAre(view, drawnTraces(recording), records);
  const PlotReadout readout = view.readout(drawnTraces(recording)[2].points()[0] + QPointF(20, 0));
  EXPECT_NEAR(readout.value(QLatin1String("place")), 20, 1e-4);
  EXPECT_EQ(readout.find(QLatin1String("place"))->unit, QStringLiteral("degrees"));
  // 40 degrees on 422 points, less than a tenth each.
  EXPECT_TRUE(readout.text().endsWith(QStringLiteral("at distance 20.00 degrees"))) << qPrintable(readout.text());
  EXPECT_EQ(readout.value(QLatin1String("distance")), 20);
}

TEST_F(SectionReadout, aTraceThatReachesIntoItsNeighboursStripIsFoundThere) {
  view.setPlotGainFactor(0.5F); // two slots
  auto loud = fakeRecord({0, 0, 0, 0, 100, 0, 0, 0, 0});
  const Records records =
      recordsOf({loud, fakeRecord(std::vector<float>(9, 0.0F)), fakeRecord({0, 0, 0, 0, 0, 0, 0, 0, 1})});
  draw(records);
  const QPointF peak = drawnTraces(recording)[0].points()[4];
  EXPECT_EQ(view.recordAt(peak)->index, 0u);
  EXPECT_EQ(view.recordAt({40, 60 + 220.0})->index, 1u); // the middle strip far from the peak
}

TEST_F(SectionReadout, aStripIsFoundWhereItsRecordHasEnded) {
  const Records records = recordsOf({swinging(0, 0, 10), swinging(0, 0, 100)});
  draw(records);
  // 99 seconds on 680 points; the first strip's zero line is 110 above the frame's lower edge.
  const auto found = view.recordAt({20 + 680 * 0.5, 60 + 112});
  ASSERT_TRUE(found);
  EXPECT_EQ(found->index, 0u);
  EXPECT_NEAR(found->seconds, 49.5, 1e-4);
  const PlotReadout readout = view.readout({20 + 680 * 0.5, 60 + 112});
  EXPECT_NEAR(readout.value(kTime), 49.5, 1e-4);
  EXPECT_EQ(readout.find(kAmplitude), nullptr);
}

// One second a point along x, from 0 to 564.
TEST_F(SectionReadout, measuresApparentVelocitiesAlongAnAxis) {
  std::vector<std::shared_ptr<FakeRecord>> placed;
  for (const float degrees : {10.0F, 20.0F, 40.0F}) {
    placed.push_back(fakeRecord(std::vector<float>(565, 1.0F)));
    placed.back()->distanceDeg = degrees;
  }
  const Records records = recordsOf(placed);
  view.setStripPlacement(MultiSeisView::StripPlacement::ByDistanceDegrees);
  draw(records);
  ASSERT_EQ(view.xmax() - view.xmin(), 564);
  const double up = 440 / double(view.ymax() - view.ymin()); // points a degree
  // 100 s over 5 degrees: 20 s a degree, and 111.195 km in 20 s.
  const auto away = view.apparentVelocity({200, 100}, {300, 100 + 5 * up});
  ASSERT_TRUE(away);
  EXPECT_NEAR(away->secondsPerDegree, 20, 1e-4);
  EXPECT_NEAR(away->secondsPerKm, 0.17986, 1e-5);
  EXPECT_NEAR(away->kmPerSecond, 5.5597, 1e-3);
  // The same line from its other end, and one that runs the other way.
  EXPECT_NEAR(view.apparentVelocity({300, 100 + 5 * up}, {200, 100})->secondsPerDegree, 20, 1e-4);
  EXPECT_NEAR(view.apparentVelocity({300, 100}, {200, 100 + 5 * up})->kmPerSecond, -5.5597, 1e-3);
  EXPECT_TRUE(std::isinf(view.apparentVelocity({300, 100}, {300, 200})->kmPerSecond));
  EXPECT_EQ(view.apparentVelocity({300, 100}, {300, 200})->secondsPerDegree, 0);
  EXPECT_FALSE(view.apparentVelocity({200, 100}, {300, 100}));

  view.setStripPlacement(MultiSeisView::StripPlacement::ByDistanceKm);
  draw(records);
  // 100 s over 800 km.
  const double perKm = 440 / double(view.ymax() - view.ymin());
  EXPECT_NEAR(view.apparentVelocity({200, 100}, {300, 100 + 800 * perKm})->kmPerSecond, 8, 1e-3);

  view.setStripPlacement(MultiSeisView::StripPlacement::ByAzimuth);
  draw(records);
  EXPECT_FALSE(view.apparentVelocity({200, 100}, {300, 200}));
}

// Slots of 110 points; 680 points for 68 s.
TEST_F(SectionReadout, measuresApparentVelocitiesBetweenTheRecordsOfEvenStrips) {
  std::vector<std::shared_ptr<FakeRecord>> placed;
  for (const float degrees : {40.0F, 10.0F, kUndefinedValue, 30.0F}) {
    placed.push_back(fakeRecord(std::vector<float>(69, 1.0F)));
    placed.back()->distanceDeg = degrees;
  }
  const Records records = recordsOf(placed);
  draw(records);
  // From 40 to 30 degrees, 5 s later.
  EXPECT_NEAR(view.apparentVelocity({100, 60 + 50}, {150, 60 + 400})->secondsPerDegree, -0.5, 1e-5);
  EXPECT_FALSE(view.apparentVelocity({100, 60 + 50}, {150, 60 + 100})); // within one strip
  EXPECT_FALSE(view.apparentVelocity({100, 60 + 50}, {150, 60 + 300})); // whose distance is not known
  EXPECT_FALSE(view.apparentVelocity({100, 60 + 50}, {150, 60 + 600})); // above the strips
  EXPECT_FALSE(view.apparentVelocity({100, kNoNumber}, {kNoNumber, 200}));
}

TEST_F(SectionReadout, aBoxHoldsTheStripsWhoseZeroLinesAndTimesItHolds) {
  const Records records = recordsOf({swinging(0, 0, 11), nullptr, swinging(0, 0, 101), swinging(0, 0, 101)});
  draw(records);
  // Zero lines at 60 + 55, + 165, + 275 and + 385; 6.8 points a second.
  using Indices = std::vector<std::size_t>;
  EXPECT_EQ(view.recordsIn(QRectF(20, 60, 680, 440)), (Indices{0, 2, 3}));
  EXPECT_EQ(view.recordsIn(QRectF(20, 60 + 270, 300, 10)), Indices{2});
  EXPECT_EQ(view.recordsIn(QRectF(320, 60 + 280, -300, -10)), Indices{2});         // dragged to the left and down
  EXPECT_EQ(view.recordsIn(QRectF(20 + 6.8 * 20, 60, 100, 440)), (Indices{2, 3})); // after the first one's end
  EXPECT_EQ(view.recordsIn(QRectF(20, 60 + 280, 300, 10)), Indices{});
  EXPECT_EQ(view.recordsIn(QRectF(kNoNumber, 0, 10, 10)), Indices{});
  const auto times = view.timesIn(QRectF(20 + 68, 100, 136, 100));
  ASSERT_TRUE(times);
  EXPECT_NEAR(times->begin, 10, 1e-4);
  EXPECT_NEAR(times->end, 30, 1e-4);
  EXPECT_NEAR(view.timesIn(QRectF(-500, 100, 588, 10))->end, 10, 1e-4);
  EXPECT_EQ(view.timesIn(QRectF(-500, 100, 588, 10))->begin, 0);
  EXPECT_FALSE(view.timesIn(QRectF(-500, 100, 100, 10)));
}

TEST(SeismicReadout, aBoxOnAnOverlayHoldsTheTracesThatRunThroughIt) {
  SeisView01 view(QRectF(0, 0, 600, 400));
  const Records records = recordsOf({swinging(0), swinging(100), swinging(200)});
  view.setWvfrmsArray(records);
  RecordingContext recording;
  view.drawInto(recording);
  const double y = drawnTraces(recording)[1].yOf(100);
  EXPECT_EQ(view.recordsIn(QRectF(200, y - 1, 100, 2)), std::vector<std::size_t>{1});
  EXPECT_EQ(view.recordsIn(QRectF(200, y - 1, 100, 400)), (std::vector<std::size_t>{1, 2}));
}

TEST(SeismicReadout, tellsTimeUtcAndAmplitudeOfTheSample) {
  SeisView01 view(QRectF(0, 0, 600, 400)); // a frame of 480 × 300 at (80, 60)
  auto record = fakeRecord({1, 2, 3, 4, 5, 6, 7});
  record->network = QStringLiteral("II");
  record->station = QStringLiteral("TLY");
  record->component = QStringLiteral("BHZ");
  record->distanceDeg = record->azimuthDeg = kUndefinedValue;
  record->reference = std::make_shared<UtcTime>(QDateTime(QDate(2011, 3, 11), QTime(5, 46), Qt::UTC));
  const Records records = recordsOf({record});
  view.setWvfrmsArray(records);
  view.setAmplitudeUnit(QStringLiteral("nm/s"));
  RecordingContext recording;
  view.drawInto(recording);
  // 80 points a second: 2.25 s, and the sample at 2 s.
  const QPointF point(80 + 80 * 2.25, 200);
  EXPECT_EQ(view.readout(point).text(),
            QStringLiteral("II.TLY BHZ   time 2.25 s   2011-03-11 05:46:02.250 UTC   local 05:46:02.250 +0000   "
                           "amplitude 3 nm/s"));
  view.setTimeReference(QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC));
  EXPECT_EQ(view.readout(point).value(QLatin1String("utc")), 1577836802.25); // 2020 began at 1577836800
}

// Of the samples that share a view point the one is told that the pointer is at: 100 samples a point.
TEST(SeismicReadout, ofDenseSamplesTellsTheOneThatIsDrawnUnderThePointer) {
  SeisView01 view(QRectF(0, 0, 600, 400));
  std::vector<float> samples(48001);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i % 100);
  samples[24010] = 1000;
  const Records records = recordsOf({fakeRecord(std::move(samples))});
  view.setWvfrmsArray(records);
  RecordingContext recording;
  view.drawInto(recording);
  const Trace trace = drawnTraces(recording)[0];
  EXPECT_EQ(view.readout({80 + 240, trace.yOf(1000)}).value(kAmplitude), 1000);
  EXPECT_EQ(view.readout({80 + 240, trace.yOf(42)}).value(kAmplitude), 42);
  EXPECT_EQ(view.readout({80 + 240 - 3, trace.yOf(1000)}).value(kAmplitude), 99);
}

TEST(SeismicReadout, findsTheTracesOfAPairInTheirPanel) {
  wvfrmView view(QRectF(0, 0, 400, 400));
  view.setMaxAmplitude(300);
  view.setXLimitsMinMax(0, 39);
  const Records records = recordsOf({swinging(0), swinging(100, 7), swinging(-100), swinging(50), swinging(0)});
  view.setWvfrmArray(records);
  RecordingContext recording;
  view.drawInto(recording);
  const std::vector<Trace> traces = drawnTraces(recording);
  ASSERT_EQ(traces.size(), 4u); // the last one has no partner
  for (std::size_t k = 0; k < traces.size(); ++k) {
    for (int i = 1; i < 38; i += 5) {
      const auto found = view.recordAt(traces[k].points()[std::size_t(i)]);
      ASSERT_TRUE(found);
      EXPECT_EQ(found->index, k);
      EXPECT_NEAR(found->seconds, double((*records)[k]->b()) + i, 1e-4);
    }
  }
  // Traces start at the left edge, where the axis of the panel has xmin.
  EXPECT_NEAR(view.readout(traces[1].points()[10]).value(kTime), 10, 1e-4);
  EXPECT_FALSE(view.recordAt({390, 390}));
}

TEST(SeismicReadout, findsTheComponentOfAPanel) {
  ThreeCompView view(QRectF(0, 0, 600, 420));
  const auto observation = std::make_shared<StationObservation>(swinging(0), nullptr, swinging(0));
  EXPECT_FALSE(view.recordAt({300, 300})); // without an observation
  view.setObservation(observation);
  EXPECT_FALSE(view.recordAt({300, 300})); // not drawn yet
  RecordingContext recording;
  view.drawInto(recording);
  const std::vector<Trace> traces = drawnTraces(recording);
  ASSERT_EQ(traces.size(), 2u);
  for (int i = 0; i < 38; i += 3) {
    const QPointF vertical = traces[0].points()[std::size_t(i)];
    const QPointF transverse = traces[1].points()[std::size_t(i)];
    EXPECT_EQ(view.recordAt(vertical)->index, 0u);
    EXPECT_EQ(view.recordAt(transverse)->record, observation->transverse());
    EXPECT_EQ(view.readout(transverse).value(kAmplitude), double(observation->transverse()->GetSacSeis()[i]));
  }
  EXPECT_FALSE(view.recordAt({300, 210})); // the middle panel is empty
}

TEST(SeismicReadout, tellsAboutSeriesWithoutAHeader) {
  uniformTimeSeriesView view(QRectF(0, 0, 236, 160)); // a panel of 200 × 100 at (24, 48)
  view.setXLimitsMinMax(0, 20);
  const auto low =
      std::make_shared<SampledSignal>(std::vector<float>{0, 100, 0, 100, 0}, 1.0F, QStringLiteral("low"));
  view.setWvfrmArray(std::make_shared<const UniformSignalArray>(UniformSignalArray{low, nullptr}));
  RecordingContext recording;
  view.drawInto(recording);
  // 10 points a second, a point a unit.
  const PlotReadout readout = view.readout({24 + 10 * 3, 48 + 95});
  EXPECT_EQ(readout.value(kAmplitude), 100);
  EXPECT_NEAR(readout.value(kTime), 3, 1e-6);
  EXPECT_EQ(readout.find(QLatin1String("record"))->text, low->description());
  EXPECT_EQ(view.readout({24 + 10 * 15, 48 + 50}).find(kAmplitude), nullptr);
}

TEST_F(SectionReadout, tellsNothingForAbsurdPlacesAndWithoutRecords) {
  EXPECT_TRUE(view.readout({100, 100}).isEmpty());
  EXPECT_FALSE(view.recordAt({100, 100}));
  Records records = recordsOf({swinging(0), nullptr});
  draw(records);
  EXPECT_TRUE(view.recordAt({100, 100}));
  for (const QPointF odd : {QPointF(19, 100), QPointF(100, 501), QPointF(1e30, 1e30), QPointF(kNoNumber, 100),
                            QPointF(100, -std::numeric_limits<double>::infinity())}) {
    EXPECT_FALSE(view.recordAt(odd));
    EXPECT_TRUE(view.readout(odd).isEmpty());
  }
  records.reset();
  EXPECT_FALSE(view.recordAt({100, 100}));
}

TEST_F(SectionReadout, aRecordThatShrankAfterTheDrawingIsReadNoFurther) {
  const auto record = swinging(0);
  const Records records = recordsOf({record});
  draw(records);
  record->samples.resize(5);
  EXPECT_EQ(view.readout({600, 280}).find(kAmplitude), nullptr);
  record->samples.clear();
  EXPECT_EQ(view.readout({25, 280}).find(kAmplitude), nullptr);
}

} // namespace
} // namespace xov::testing
