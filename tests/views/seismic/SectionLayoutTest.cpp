#include "XOV_Graphics/views/seismic/SectionLayout.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/graphics/AxisCodes.h"
#include "XOV_Graphics/seismic/Undefined.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace xov::testing {
namespace {

using Placement = MultiSeisView::StripPlacement;

const QRectF kPlot(72, 60, 444, 300); // of a view of 600 × 400 with an axis

std::shared_ptr<FakeRecord> at(float distanceDeg, float azimuthDeg = 0, std::vector<float> samples = {-0.5F, 0.25F}) {
  auto record = fakeRecord(std::move(samples));
  record->distanceDeg = distanceDeg;
  record->azimuthDeg = azimuthDeg;
  return record;
}

// 300 points for four records are slots of 50 points at most: reaching 0.5 slots, 25 points remain at each edge, and
// 250 for 20 degrees. 30 degrees then stand at 60 + 25, and the edges 2 degrees further away.
TEST(SectionLayout, placesStripsAtTheirDistances) {
  const Records records = recordsOf({at(50), at(30), at(35), at(50)});
  const SectionLayout layout = layoutSection(*records, Placement::ByDistanceDegrees, kPlot, 0.5);
  EXPECT_TRUE(layout.hasAxis);
  EXPECT_EQ(layout.slot, 50);
  EXPECT_FLOAT_EQ(layout.lower, 28);
  EXPECT_FLOAT_EQ(layout.upper, 52);
  ASSERT_EQ(layout.strips.size(), 4U);
  const double centers[] = {335, 85, 85 + 62.5, 335};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(layout.strips[i].record, i);
    EXPECT_NEAR(layout.strips[i].center, centers[i], 1e-3) << i;
  }
}

// Of the same records those at 30 and 35 degrees lie between 29 and 39: a tenth and six tenths of 300 points up.
TEST(SectionLayout, ofAPartHasTheStripsThatLieThere) {
  const Records records = recordsOf({at(50), at(30), at(35), at(50)});
  SectionLayout layout = layoutSection(*records, Placement::ByDistanceDegrees, kPlot, 0.5);
  showPlaces(layout, kPlot, {29, 39});
  EXPECT_EQ(layout.lower, 29);
  EXPECT_EQ(layout.upper, 39);
  ASSERT_EQ(layout.strips.size(), 2U);
  EXPECT_EQ(layout.strips[0].record, 1U);
  EXPECT_NEAR(layout.strips[0].center, 60 + 30, 1e-3);
  EXPECT_EQ(layout.strips[1].record, 2U);
  EXPECT_NEAR(layout.strips[1].center, 60 + 180, 1e-3);
}

// A degree of a sphere of 6371 km is 111.195 km.
TEST(SectionLayout, countsKilometresOnASphere) {
  const Records records = recordsOf({at(1), at(3)});
  EXPECT_NEAR(*placeOf(*records->front(), Placement::ByDistanceKm), 111.195, 1e-3);
  const SectionLayout layout = layoutSection(*records, Placement::ByDistanceKm, kPlot, 0.5);
  EXPECT_NEAR(layout.lower, 111.195 - 222.39 * 25 / 250, 1e-3);
}

TEST(SectionLayout, leavesOutRecordsWithoutAPlace) {
  const Records records = recordsOf({at(kUndefinedValue), at(30), nullptr, at(40)});
  const SectionLayout layout = layoutSection(*records, Placement::ByDistanceDegrees, kPlot, 0.5);
  ASSERT_EQ(layout.strips.size(), 2U);
  EXPECT_EQ(layout.strips[0].record, 1U);
  EXPECT_EQ(layout.strips[1].record, 3U);
  EXPECT_TRUE(anyHasPlace(*records, Placement::ByDistanceDegrees));
}

TEST(SectionLayout, standsEvenlyWhereNoRecordKnowsItsPlace) {
  const Records records = recordsOf({at(kUndefinedValue), nullptr, at(std::numeric_limits<float>::quiet_NaN())});
  for (const Placement placement : {Placement::Evenly, Placement::ByDistanceKm}) {
    const SectionLayout layout = layoutSection(*records, placement, kPlot, 0.5);
    EXPECT_FALSE(layout.hasAxis);
    EXPECT_EQ(layout.slot, 100);
    ASSERT_EQ(layout.strips.size(), 3U) << "null records leave their strip empty";
    EXPECT_EQ(layout.strips[2].center, 310);
    EXPECT_FALSE(anyHasPlace(*records, placement));
  }
}

TEST(SectionLayout, placesOneDistanceInTheMiddle) {
  const Records records = recordsOf({at(30), at(30)});
  const SectionLayout layout = layoutSection(*records, Placement::ByDistanceDegrees, kPlot, 0.5);
  EXPECT_EQ(layout.lower, 29);
  EXPECT_EQ(layout.upper, 31);
  EXPECT_EQ(layout.strips[1].center, 210);
}

TEST(SectionLayout, countsAzimuthsOnceAround) {
  EXPECT_EQ(placeOf(*at(0, 370), Placement::ByAzimuth), 10);
  EXPECT_EQ(placeOf(*at(0, -90), Placement::ByAzimuth), 270);
  EXPECT_EQ(placeOf(*at(0, 360), Placement::ByAzimuth), 0);
}

TEST(SectionLayout, ticksOfAzimuthsDivideAQuarterOfACircle) {
  EXPECT_EQ(sectionTickInterval(Placement::ByAzimuth, -10, 370), 45);
  EXPECT_EQ(sectionTickInterval(Placement::ByAzimuth, 0, 200), 30);
  EXPECT_EQ(sectionTickInterval(Placement::ByAzimuth, 0, 100), 15);
  EXPECT_EQ(sectionTickInterval(Placement::ByAzimuth, 200, 300), 15);
  EXPECT_EQ(sectionTickInterval(Placement::ByAzimuth, 0, 12), kAutomaticInterval);
  EXPECT_EQ(sectionTickInterval(Placement::ByDistanceKm, 0, 200), kAutomaticInterval);
}

// Of 400 records the even slot would be 0.75 points; of one it would be the plot.
TEST(SectionLayout, keepsTracesOfManyAndOfFewRecordsAtASizeThatShows) {
  std::vector<std::shared_ptr<FakeRecord>> many;
  for (int i = 0; i < 400; ++i)
    many.push_back(at(float(i)));
  EXPECT_EQ(layoutSection(*recordsOf(many), Placement::ByDistanceDegrees, kPlot, 0.5).slot, kLeastSlot);
  EXPECT_EQ(layoutSection(*recordsOf({at(3)}), Placement::ByDistanceDegrees, kPlot, 0.5).slot, 50);
}

TEST(SectionLayout, staysFiniteWithOddNumbers) {
  constexpr float kHuge = std::numeric_limits<float>::max();
  for (const double reach : {0.0, 1e300, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
    for (const QRectF& plot : {kPlot, QRectF(0, 0, 10, 0), QRectF(0, 0, -5, -5)}) {
      for (const auto& records :
           {recordsOf({at(-kHuge), at(kHuge)}), recordsOf({at(1e30F), at(1e30F)}), recordsOf({at(0), at(1e-30F)})}) {
        const SectionLayout layout = layoutSection(*records, Placement::ByDistanceKm, plot, reach);
        EXPECT_EQ(layout.strips.size(), 2U);
        for (const auto& strip : layout.strips)
          EXPECT_TRUE(std::isfinite(strip.center));
      }
    }
  }
}

// A third of 300 points over 30 records is more than a point, over 200 half a point.
TEST(SectionLayout, drawsThinnerLinesWhereTheyCrowd) {
  EXPECT_EQ(MultiSeisView::lineWidthOf(30, 300), 1);
  EXPECT_DOUBLE_EQ(MultiSeisView::lineWidthOf(200, 300), 0.5);
  EXPECT_EQ(MultiSeisView::lineWidthOf(10000, 300), 0.35);
  EXPECT_EQ(MultiSeisView::lineWidthOf(0, 300), 1);
}

class Section : public ::testing::Test {
protected:
  void draw(const Records& records) {
    recording_.clear();
    view_.setWvfrmsArray(records);
    view_.drawInto(recording_);
  }

  MultiSeisView view_{QRectF(0, 0, 600, 400)};
  RecordingContext recording_;
};

// Four records as above: at a gain of 2 the peak of 0.5 reaches half a slot, 25 points.
TEST_F(Section, drawsAnAxisOfDistanceBesideItsStrips) {
  view_.setPlotGainFactor(2);
  view_.setStripPlacement(Placement::ByDistanceDegrees);
  const Records records = recordsOf({at(50), at(30), at(35), at(50)});
  draw(records);
  EXPECT_EQ(view_.iRect(), kPlot);
  EXPECT_FLOAT_EQ(view_.ymin(), 28);
  EXPECT_FLOAT_EQ(view_.ymax(), 52);
  const auto caption = recording_.texts().front();
  EXPECT_EQ(caption.position.x(), 516 + 5) << "behind the frame";
  EXPECT_NEAR(caption.position.y(), 335 - 11.5 / 2, 1e-3) << "the first record stands highest";
  const auto strokes = traceStrokes(recording_);
  ASSERT_EQ(strokes.size(), 1U);
  EXPECT_EQ(strokes[0].clip, std::optional(kPlot));
  expectPoints(strokes[0].path.traces()[1], {{72, 85 - 25}, {516, 85 + 12.5}});
  for (const char* text : {"Distance (degrees)", "30", "40", "50"})
    EXPECT_TRUE(recording_.strings().contains(QLatin1String(text))) << text;
  EXPECT_EQ(recording_.textReading(QStringLiteral("Distance (degrees)"))->angleDegrees, 90);
  EXPECT_TRUE(view_.spokenDescription().contains(QStringLiteral("distance (degrees) from 28 to 52")))
      << qPrintable(view_.spokenDescription());
}

TEST_F(Section, ticksFirstArrivalsAtTheirStrips) {
  view_.setStripPlacement(Placement::ByDistanceDegrees);
  const auto record = at(35);
  record->arrivalSeconds = 0.5F;
  const Records records = recordsOf({at(30), record, at(50)});
  draw(records);
  const auto ticks = recording_.strokes().back().segments();
  const double center = layoutSection(*records, Placement::ByDistanceDegrees, kPlot, 1 / 1.5).strips[1].center;
  expectNear(ticks[1], {72 + 222, center - 0.4 * 50, 72 + 222, center + 0.4 * 50});
  EXPECT_EQ(recording_.strokes().back().clip, std::optional(kPlot)) << "others lie outside of what is shown";
}

TEST_F(Section, withoutPlacesDrawsAsEver) {
  const Records records = recordsOf({at(kUndefinedValue), at(kUndefinedValue)});
  draw(records);
  const QString evenly = recording_.toText();
  view_.setStripPlacement(Placement::ByDistanceKm);
  draw(records);
  EXPECT_EQ(recording_.toText(), evenly);
}

// Slots of 150 points: at a gain of 1.5 the largest of each trace reaches 100 points from its line at 135 or 285.
TEST_F(Section, scalesEachTraceByItsOwnPeak) {
  const Records records = recordsOf({at(1, 0, {0.25F, -0.5F}), at(2, 0, {-0.01F, 0}), at(3, 0, {0, 0})});
  MultiSeisView view(QRectF(0, 0, 600, 550));
  view.setAmplitudeScaling(MultiSeisView::AmplitudeScaling::EachTrace);
  view.setWvfrmsArray(records);
  view.drawInto(recording_);
  const auto traces = traceStrokes(recording_)[0].path.traces();
  ASSERT_EQ(traces.size(), 3U) << "one of zeros is flat";
  expectPoints(traces[0], {{20, 135 + 50}, {580, 135 - 100}});
  expectPoints(traces[1], {{20, 285 - 100}, {580, 285}});
  expectPoints(traces[2], {{20, 435}, {580, 435}});
}

TEST_F(Section, fillsLobesUnderTheTraces) {
  const Records records = recordsOf({at(1, 0, {-0.5F, 0.5F}), at(2, 0, {0.5F, -0.5F})});
  draw(records);
  EXPECT_EQ(recording_.fills().size(), 1U) << "of the paper";
  view_.setPositiveLobeColor(Qt::darkRed);
  view_.setNegativeLobeColor(Qt::darkBlue);
  draw(records);
  const auto fills = recording_.fills();
  ASSERT_EQ(fills.size(), 3U);
  const QColor colors[] = {Qt::darkRed, Qt::darkBlue};
  const TraceArea areas[] = {TraceArea::AboveLevel, TraceArea::BelowLevel};
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(fills[i + 1].color, colors[i]);
    ASSERT_EQ(fills[i + 1].path.traces().size(), 2U);
    EXPECT_EQ(fills[i + 1].path.traces()[1].area, areas[i]);
    EXPECT_EQ(fills[i + 1].path.traces()[1].level, 0);
  }
  const QStringList order = steps(recording_);
  EXPECT_LT(order.indexOf(QStringLiteral("fill #000080")), order.indexOf(QStringLiteral("trace #000000")));
}

} // namespace
} // namespace xov::testing
