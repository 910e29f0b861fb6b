#include "apps/xov/prepare/StepRunner.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/prepare/PhaseTimes.h"
#include "apps/xov/prepare/EventChoice.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::cli {
namespace {

const QDateTime kReference(QDate(2011, 3, 11), QTime(5, 47, 30), Qt::UTC);

struct Spec {
  const char* component = "BHZ";
  float begin = 0;
  float delta = 1;
  std::vector<float> samples = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
};

std::shared_ptr<SacSeismogram> record(const Spec& spec = {}) {
  SacHeader header;
  header.delta = spec.delta;
  header.b = spec.begin;
  header.knetwk = "II";
  header.kstnm = "TLY";
  header.kcmpnm = spec.component;
  header.o = -100;
  header.gcarc = 30;
  header.evdp = 24;
  header.t1 = 4;
  header.kt1 = "S";
  setReferenceTime(header, kReference);
  return std::make_shared<SacSeismogram>(header, spec.samples);
}

ReadyRecords ready(const SeismogramArray& records, const std::vector<PreparationStep>& steps) {
  QStringList files;
  for (std::size_t i = 0; i < records.size(); ++i)
    files.append(QStringLiteral("file%1").arg(i));
  return makeReady(records, files, steps, {});
}

std::vector<float> samplesOf(const std::shared_ptr<SeismogramRecord>& record) {
  return {record->GetSacSeis(), record->GetSacSeis() + record->npts()};
}

TEST(StepRunner, cutsBySecondsAndByUtc) {
  const ReadyRecords cut = ready({record()}, {StartStep{3.0}, EndStep{kReference.addSecs(5)}});
  ASSERT_EQ(cut.records.size(), 1U);
  EXPECT_EQ(samplesOf(cut.records[0]), (std::vector<float>{3, 4, 5}));
}

TEST(StepRunner, cutsAboutPicksAndTheOrigin) {
  EXPECT_EQ(samplesOf(ready({record()}, {AroundStep{"S", -1, 2}}).records.at(0)), (std::vector<float>{3, 4, 5, 6}));
  EXPECT_EQ(samplesOf(ready({record()}, {AroundStep{"O", 100, 101}}).records.at(0)), (std::vector<float>{0, 1}));
}

// P takes about 370 s to 30 degrees; 301.5 s after the reference time the station TLY saw it, 66.3 s after which the
// origin lay. Here the origin lies 100 s before the reference time.
TEST(StepRunner, expectsPhasesWithoutAPick) {
  const Result<double> p = phaseSeconds(*record(), "P");
  ASSERT_TRUE(p) << p.error().toStdString();
  EXPECT_NEAR(*p, 370 - 100, 5);
  EXPECT_EQ(phaseSeconds(*record(), "none").error(), QStringLiteral("II.TLY..BHZ: found no pick none"));
  SacHeader header;
  header.delta = 1;
  header.kstnm = "ABC";
  EXPECT_EQ(phaseSeconds(SacSeismogram(header, {1, 2}), "P").error(),
            QStringLiteral(".ABC..: found no pick P, nor the event's origin time and distance to expect it from"));
}

TEST(StepRunner, keepsTheOrderOfTheSteps) {
  // The mean of 0 to 9 is 4.5, of 3 to 9 it is 6.
  EXPECT_EQ(samplesOf(ready({record()}, {DetrendStep{0}, StartStep{3.0}}).records.at(0)).front(), -1.5F);
  EXPECT_EQ(samplesOf(ready({record()}, {StartStep{3.0}, DetrendStep{0}}).records.at(0)).front(), -3);
}

TEST(StepRunner, normalisesByRecordOrSection) {
  const SeismogramArray two = {record({.samples = {0, 2}}), record({.samples = {0, -4}})};
  const ReadyRecords each = ready(two, {NormalizeStep{NormalizeBy::Record}});
  EXPECT_EQ(samplesOf(each.records.at(0)).back(), 1);
  EXPECT_EQ(samplesOf(each.records.at(1)).back(), -1);
  EXPECT_EQ(samplesOf(ready(two, {NormalizeStep{NormalizeBy::Section}}).records.at(0)).back(), 0.5F);
}

TEST(StepRunner, namesARecordThatAStepFailsForAndGoesOnWithTheOthers) {
  const ReadyRecords some = ready({record({.component = "BHZ", .delta = 0.1F}), record({.component = "LHZ"})},
                                  {FilterStep{ButterworthFilter::lowPass(2)}});
  EXPECT_EQ(some.problems, QStringList("II.TLY..LHZ: found a corner of 2 Hz, expected one above 0 and below 0.5 Hz, "
                                       "half the sampling rate"));
  ASSERT_EQ(some.records.size(), 1U);
  EXPECT_EQ(some.records[0]->kcmpnm(), QStringLiteral("BHZ"));
  EXPECT_EQ(some.files, QStringList("file0"));
}

TEST(StepRunner, dropsPiecesOutsideOfAWindowAndNamesChannels) {
  const ReadyRecords cut =
      ready({record(), record({.begin = 20}), record({.component = "BHN", .begin = 20})}, {EndStep{15.0}});
  EXPECT_EQ(cut.records.size(), 1U);
  ASSERT_EQ(cut.problems.size(), 1) << cut.problems.join('\n').toStdString();
  EXPECT_TRUE(cut.problems[0].startsWith("II.TLY..BHN: ")) << cut.problems[0].toStdString();
}

TEST(StepRunner, leavesTheOriginalsAsTheyWere) {
  const auto original = record();
  ready({original}, {DetrendStep{1}, TaperStep{0.5}, NormalizeStep{}, IntegrateStep{}, DecimateStep{2}});
  EXPECT_EQ(samplesOf(original), Spec().samples);
}

TEST(StepRunner, countsOnTheAxisWhereTimesAreSeconds) {
  EXPECT_TRUE(countsOnAxis({DetrendStep{0}, EndStep{1.0}}));
  EXPECT_FALSE(countsOnAxis({StartStep{kReference}, AroundStep{"P", -1, 1}}));
}

std::shared_ptr<Hypocentre> event(qint64 secondsAfter, float magnitude) {
  HypocentreValues values;
  values.originTime = kReference.addSecs(secondsAfter);
  values.latitudeDeg = 10;
  values.longitudeDeg = 20;
  values.preferredMagnitude = magnitude;
  return std::make_shared<Hypocentre>(values);
}

TEST(EventChoice, takesTheStrongestOfTheHourBeforeARecord) {
  const PreparedRecords placed =
      withEventsOf({record()}, {event(-4000, 9), event(-3000, 6), event(-60, 5), event(4000, 8)});
  EXPECT_EQ(placed.records.at(0)->originTimeOffset(), -3000);
  const PreparedRecords none = withEventsOf({record()}, {event(-4000, 9), event(4000, 8)});
  EXPECT_EQ(none.records.at(0)->originTimeOffset(), -100) << "the record's own stays";
  EXPECT_EQ(none.notes, QStringList("no event in the hour before or during the records of II.TLY"));
}

TEST(EventChoice, takesTheOnlyEventOfAFileForAllRecords) {
  EXPECT_EQ(withEventsOf({record()}, {event(-40000, 5)}).records.at(0)->originTimeOffset(), -40000);
}

// A wave of 1 along the vertical, at a station whose event lies due south: radial is north.
SeismogramArray verticalWave(float distanceDeg) {
  SeismogramArray records;
  for (const char* component : {"BHZ", "BHN", "BHE"}) {
    SacHeader header = *record({.component = component})->GetSacHeader();
    header.baz = 180;
    header.az = 0;
    header.gcarc = distanceDeg;
    const float level = component == std::string("BHZ") ? 1 : 0;
    records.push_back(std::make_shared<SacSeismogram>(header, std::vector<float>(10, level)));
  }
  return records;
}

TEST(StepRunner, turnsToTheRayByAGivenIncidence) {
  const ReadyRecords turned = ready(verticalWave(30), {RotateStep{WaveAxes::LQT, 30}});
  EXPECT_EQ(turned.notes, QStringList());
  ASSERT_EQ(turned.records.size(), 3U);
  // L = Z cos i, Q = Z sin i.
  EXPECT_NEAR(samplesOf(turned.records[0])[5], std::sqrt(3.0) / 2, 1e-6);
  EXPECT_NEAR(samplesOf(turned.records[1])[5], 0.5, 1e-6);
  EXPECT_NEAR(samplesOf(turned.records[2])[5], 0, 1e-6);
}

TEST(StepRunner, turnsToTheRayThatIsExpectedAtEachStation) {
  SeismogramArray records = verticalWave(30);
  for (auto& other : verticalWave(90))
    records.push_back(std::move(other));
  const ReadyRecords turned = ready(records, {RotateStep{WaveAxes::LQT, {}}});
  EXPECT_EQ(turned.notes, QStringList());
  ASSERT_EQ(turned.records.size(), 6U);
  const auto incidence = [&](std::size_t l) {
    return std::atan2(double(samplesOf(turned.records[l + 1])[5]), double(samplesOf(turned.records[l])[5])) * 180 /
           M_PI;
  };
  // sin i = p v / r: P leaves 30 degrees with 8.85 s/degree and 90 degrees with 4.65 s/degree (Kennett, 1991), so
  // with 5.8 km/s at the surface and 111.19 km a degree i is 27.5 and 14.0 degrees.
  EXPECT_NEAR(incidence(0), 27.5, 0.3);
  EXPECT_NEAR(incidence(3), 14.0, 0.3);
}

TEST(StepRunner, leavesRecordsWithoutADistanceUnturnedAndSaysSo) {
  const ReadyRecords turned = ready(verticalWave(kUndefinedValue), {RotateStep{WaveAxes::LQT, {}}});
  EXPECT_EQ(turned.records.size(), 3U);
  ASSERT_EQ(turned.notes.size(), 1);
  EXPECT_TRUE(turned.notes[0].startsWith("II.TLY: no wave is expected")) << qPrintable(turned.notes[0]);
}

} // namespace
} // namespace xov::cli
