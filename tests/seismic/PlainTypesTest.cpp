#include "TemporaryFiles.h"
#include "XOV_Graphics/seismic/Hypocentre.h"
#include "XOV_Graphics/seismic/Picks.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/SampledSignal.h"
#include "XOV_Graphics/seismic/StationObservation.h"
#include "XOV_Graphics/seismic/UtcTime.h"

#include <gtest/gtest.h>

#include <QTimeZone>

#include <limits>
#include <type_traits>

using namespace xov;

namespace {

QDateTime utc(int year, int month, int day, int hour, int minute, int second, int millisecond = 0) {
  return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), Qt::UTC);
}

} // namespace

TEST(Interfaces, areAbstract) {
  EXPECT_TRUE(std::is_abstract_v<SeismogramRecord>);
  EXPECT_TRUE(std::is_abstract_v<SeisTime>);
  EXPECT_TRUE(std::is_abstract_v<EventOrigin>);
  EXPECT_TRUE(std::is_abstract_v<ThreeComponentObservation>);
  EXPECT_TRUE(std::is_abstract_v<UniformSignal>);
}

TEST(UtcTime, writesItsDateAsYearMonthDay) {
  const UtcTime time(utc(2011, 3, 9, 5, 46, 23));
  EXPECT_STREQ(time.YMDcString(), "2011-03-09");
}

TEST(UtcTime, keepsItsDateTextInPlace) {
  UtcTime time(utc(2011, 3, 11, 5, 46, 23));
  const char* const date = time.YMDcString();
  time.updateNSDate();
  EXPECT_EQ(time.YMDcString(), date);
}

TEST(UtcTime, turnsOtherZonesIntoUtc) {
  // 01:30 at two hours east of Greenwich is 23:30 of the day before.
  UtcTime time(QDateTime(QDate(2012, 3, 1), QTime(1, 30), QTimeZone(7200)));
  time.updateNSDate();
  EXPECT_EQ(time.nsDate(), utc(2012, 2, 29, 23, 30, 0));
  EXPECT_STREQ(time.YMDcString(), "2012-02-29");
}

TEST(UtcTime, countsSecondsSince1970WithMilliseconds) {
  const UtcTime time(utc(1970, 1, 2, 0, 0, 1, 25));
  EXPECT_EQ(time.nsDate().toMSecsSinceEpoch(), 86401025);
}

TEST(UtcTime, thatIsUnknownHasAnEmptyDate) {
  UtcTime time;
  time.updateNSDate();
  EXPECT_STREQ(time.YMDcString(), "");
  EXPECT_FALSE(time.nsDate().isValid());
}

TEST(Hypocentre, givesItsOriginTimeBothWays) {
  HypocentreValues values;
  values.originTime = utc(2014, 8, 24, 12, 47, 12, 550);
  const Hypocentre event(values);
  event._origin_time()->updateNSDate();
  EXPECT_EQ(event._origin_time()->nsDate(), values.originTime);
  EXPECT_EQ(event.oDate(), values.originTime);
}

TEST(Hypocentre, prefersTheGivenMagnitudeThenMwThenMsThenMb) {
  HypocentreValues values;
  EXPECT_EQ(Hypocentre(values).magnitude(), kUndefinedValue);
  values.mb = 4.5F;
  EXPECT_EQ(Hypocentre(values).magnitude(), 4.5F);
  values.Ms = 6.25F;
  EXPECT_EQ(Hypocentre(values).magnitude(), 6.25F);
  values.Mw = 5.75F;
  EXPECT_EQ(Hypocentre(values).magnitude(), 5.75F);
  values.preferredMagnitude = 1.5F;
  EXPECT_EQ(Hypocentre(values).magnitude(), 1.5F);
}

TEST(Hypocentre, hasUnsetMagnitudesBelowEveryThreshold) {
  const Hypocentre event;
  EXPECT_EQ(event.mb(), -12345.0F);
  EXPECT_EQ(event.Ms(), -12345.0F);
  EXPECT_EQ(event.Mw(), -12345.0F);
}

TEST(Hypocentre, withoutATimeIsUnknownNotNull) {
  const Hypocentre event;
  ASSERT_NE(event._origin_time(), nullptr);
  EXPECT_FALSE(event.oDate().isValid());
  EXPECT_STREQ(event._origin_time()->YMDcString(), "");
}

TEST(StationObservation, givesItsComponentsAndNullForAMissingOne) {
  const auto up = std::make_shared<SacSeismogram>();
  const auto across = std::make_shared<SacSeismogram>();
  const StationObservation observation(up, nullptr, across);
  EXPECT_EQ(observation.vertical(), up);
  EXPECT_EQ(observation.radial(), nullptr);
  EXPECT_EQ(observation.transverse(), across);
}

TEST(SampledSignal, describesItsSamples) {
  const SampledSignal signal({-2, 6, 1}, 0.25F, QStringLiteral("tide"));
  EXPECT_EQ(signal.npts(), 3);
  EXPECT_EQ(signal.dataPointer()[1], 6);
  EXPECT_EQ(signal.delta(), 0.25F);
  EXPECT_EQ(signal.min(), -2);
  EXPECT_EQ(signal.max(), 6);
  EXPECT_EQ(signal.description(), QStringLiteral("tide"));
}

TEST(SampledSignal, leavesWhatIsNotFiniteOutOfItsExtremes) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const SampledSignal signal({nan, 3, std::numeric_limits<float>::infinity()}, 1);
  EXPECT_EQ(signal.min(), 3);
  EXPECT_EQ(signal.max(), 3);
}

TEST(SampledSignal, ofNothingHasZeroExtremes) {
  const SampledSignal signal({}, 1);
  EXPECT_EQ(signal.npts(), 0);
  EXPECT_EQ(signal.min(), 0);
  EXPECT_EQ(signal.max(), 0);
}

TEST(Picks, areDrawnOnBothEndsOfTheSpan) {
  EXPECT_TRUE(isPickDrawn(10, 10, 20));
  EXPECT_TRUE(isPickDrawn(20, 10, 20));
  EXPECT_FALSE(isPickDrawn(std::nextafter(10.0F, 0.0F), 10, 20));
  EXPECT_FALSE(isPickDrawn(std::nextafter(20.0F, 30.0F), 10, 20));
}

TEST(Picks, areNotDrawnWhenUnsetOrNoNumber) {
  EXPECT_FALSE(isPickDrawn(-12345.0F, -20000, 20000));
  EXPECT_TRUE(isPickDrawn(-12344.0F, -20000, 20000));
  EXPECT_FALSE(isPickDrawn(std::numeric_limits<float>::quiet_NaN(), -20000, 20000));
}

TEST(Picks, takeTheFallbackLabelOnlyWhereNoneIsStored) {
  SacHeader header;
  header.kt3 = "PKP";
  const SacSeismogram trace(header, {});
  EXPECT_EQ(pickLabelOr(trace, 3, QStringLiteral("T3")), QStringLiteral("PKP"));
  EXPECT_EQ(pickLabelOr(trace, 4, QStringLiteral("T4")), QStringLiteral("T4"));
}
