#include "XOV_Graphics/seismic/SacSeismogram.h"

#include "TemporaryFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace xov;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

QDateTime utc(int year, int month, int day, int hour, int minute, int second, int millisecond = 0) {
  return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), Qt::UTC);
}

SacHeader header(float delta = 1, float b = 0) {
  SacHeader made;
  made.delta = delta;
  made.b = b;
  return made;
}

SacHeader headerAt(const QDateTime& time) {
  SacHeader made = header();
  setReferenceTime(made, time);
  return made;
}

SacHeader tohoku() {
  SacHeader made = header();
  made.nzyear = 2011;
  made.nzjday = 70;
  made.nzhour = 5;
  made.nzmin = 47;
  made.nzsec = 30;
  made.nzmsec = 33;
  return made;
}

QString originTime(SacHeader made, float o) {
  made.o = o;
  return SacSeismogram(made, {}).oTimeString();
}

} // namespace

TEST(SacHeader, startsWithEveryFieldUnset) {
  const SacHeader unset;
  EXPECT_EQ(unset.delta, -12345.0F);
  EXPECT_EQ(unset.unused12, -12345.0F);
  EXPECT_EQ(unset.nzyear, -12345);
  EXPECT_EQ(unset.unused27, -12345);
  EXPECT_EQ(std::string(unset.kstnm.bytes, 8), "-12345  ");
  EXPECT_EQ(std::string(unset.kevnm.bytes, 16), "-12345          ");
  EXPECT_EQ(std::string(unset.kinst.bytes, 8), "-12345  ");
}

TEST(SacText, padsWithBlanksAndCutsWhatIsTooLong) {
  EXPECT_EQ(std::string(SacText<8>("TLY").bytes, 8), "TLY     ");
  EXPECT_EQ(std::string(SacText<8>("ABCDEFGHIJ").bytes, 8), "ABCDEFGH");
}

TEST(SacText, endsAtTheFirstNulAndLosesItsBlanks) {
  EXPECT_EQ(SacText<8>(std::string_view("BRP1\0\0\0\0", 8)).text(), QStringLiteral("BRP1"));
  EXPECT_EQ(SacText<8>(std::string_view("EDF\0junk", 8)).text(), QStringLiteral("EDF"));
  EXPECT_EQ(SacText<8>("  P  ").text(), QStringLiteral("P"));
  EXPECT_EQ(SacText<8>(std::string_view("\0\0\0\0\0\0\0\0", 8)).text(), QString());
  EXPECT_EQ(SacText<8>("A B C D ").text(), QStringLiteral("A B C D"));
}

TEST(SacText, isEmptyWhenUnset) {
  EXPECT_EQ(SacText<8>().text(), QString());
  EXPECT_EQ(SacText<16>("-12345").text(), QString());
  EXPECT_EQ(SacText<8>("-123456").text(), QStringLiteral("-123456"));
}

TEST(ReferenceTime, followsFromTheDayOfTheYear) {
  // 11 March is day 31 + 28 + 11 = 70 of 2011.
  EXPECT_EQ(referenceTime(tohoku()), utc(2011, 3, 11, 5, 47, 30, 33));
}

TEST(ReferenceTime, knowsLeapYears) {
  SacHeader made = tohoku();
  made.nzyear = 2012;
  made.nzjday = 366;
  EXPECT_EQ(referenceTime(made).date(), QDate(2012, 12, 31));
  made.nzyear = 2011;
  EXPECT_FALSE(referenceTime(made).isValid());
}

TEST(ReferenceTime, countsUnsetPartsOfTheDayAsZero) {
  SacHeader made = tohoku();
  made.nzmsec = kSacUndefinedInteger;
  EXPECT_EQ(referenceTime(made), utc(2011, 3, 11, 5, 47, 30));
  made.nzhour = made.nzmin = made.nzsec = kSacUndefinedInteger;
  EXPECT_EQ(referenceTime(made), utc(2011, 3, 11, 0, 0, 0));
}

TEST(ReferenceTime, takesALeapSecondAsTheNextMinute) {
  SacHeader made;
  made.nzyear = 2016;
  made.nzjday = 366;
  made.nzhour = 23;
  made.nzmin = 59;
  made.nzsec = 60;
  made.nzmsec = 500;
  EXPECT_EQ(referenceTime(made), utc(2017, 1, 1, 0, 0, 0, 500));
}

TEST(ReferenceTime, isUnknownWhenAFieldIsOutOfRange) {
  EXPECT_FALSE(referenceTime(SacHeader()).isValid());
  const auto without = [](std::int32_t SacHeader::*field, std::int32_t value) {
    SacHeader made = tohoku();
    made.*field = value;
    return referenceTime(made).isValid();
  };
  EXPECT_FALSE(without(&SacHeader::nzyear, kSacUndefinedInteger));
  EXPECT_FALSE(without(&SacHeader::nzyear, 10000));
  EXPECT_FALSE(without(&SacHeader::nzyear, std::numeric_limits<std::int32_t>::max()));
  EXPECT_FALSE(without(&SacHeader::nzjday, kSacUndefinedInteger));
  EXPECT_FALSE(without(&SacHeader::nzhour, 24));
  EXPECT_FALSE(without(&SacHeader::nzmin, 60));
  EXPECT_FALSE(without(&SacHeader::nzsec, 61));
  EXPECT_FALSE(without(&SacHeader::nzmsec, 1000));
  EXPECT_FALSE(without(&SacHeader::nzmsec, -1));
}

TEST(ReferenceTime, comesBackAsItWasSet) {
  for (const QDateTime& time :
       {utc(2012, 12, 31, 23, 59, 59, 999), utc(1900, 3, 1, 0, 0, 0), utc(2000, 2, 29, 12, 0, 0)})
    EXPECT_EQ(referenceTime(headerAt(time)), time);
  SacHeader made = tohoku();
  setReferenceTime(made, QDateTime());
  EXPECT_EQ(made.nzyear, kSacUndefinedInteger);
  EXPECT_EQ(made.nzmsec, kSacUndefinedInteger);
}

TEST(SacSeismogram, withNothingIsAValidEmptyTrace) {
  SacSeismogram empty;
  EXPECT_EQ(empty.npts(), 0);
  EXPECT_EQ(empty.smin(), 0);
  EXPECT_EQ(empty.smax(), 0);
  EXPECT_EQ(empty.absMax(), 0);
  EXPECT_EQ(empty.b(), 0);
  EXPECT_EQ(empty.e(), 0);
  EXPECT_EQ(empty.kstnm(), QString());
  EXPECT_EQ(empty.labelString(), QString());
  EXPECT_EQ(empty.oTimeString(), QString());
  EXPECT_EQ(empty.flinnEngdahlString(), QString());
  EXPECT_EQ(empty.originTimeOffset(), -12345.0F);
  EXPECT_EQ(empty.pTime(), -12345.0F);
  EXPECT_EQ(empty.gcarc(), -12345.0F);
  ASSERT_NE(empty.mySeisReferenceTime(), nullptr);
  EXPECT_FALSE(empty.mySeisReferenceTime()->nsDate().isValid());
  EXPECT_STREQ(empty.mySeisReferenceTime()->YMDcString(), "");
  ASSERT_NE(empty.GetSacHeader(), nullptr);
  EXPECT_EQ(empty.GetSacHeader()->nzyear, -12345);
}

TEST(SacSeismogram, computesItsExtremesOnceFromFiniteSamples) {
  const SacSeismogram trace(header(), {2, kNaN, -9, 4});
  EXPECT_EQ(trace.npts(), 4);
  EXPECT_EQ(trace.smin(), -9);
  EXPECT_EQ(trace.smax(), 4);
  EXPECT_EQ(trace.absMax(), 9);
}

TEST(SacSeismogram, computesItsExtremesAnewOnlyWhenAsked) {
  SacSeismogram trace(header(), {1, 2, 3});
  trace.samples()[0] = -8;
  EXPECT_EQ(trace.smin(), 1);
  trace.ComputeExtrema();
  EXPECT_EQ(trace.smin(), -8);
  EXPECT_EQ(trace.absMax(), 8);
}

TEST(SacSeismogram, hasAnIndexOfItsSamplesWhileTheyStayAsTheyAre) {
  SacSeismogram trace(header(), std::vector<float>(1000, 3.0F));
  const auto isIndexed = [&] { return trace.sampleIndex()->covers(trace.GetSacSeis(), 0, trace.npts()); };
  EXPECT_TRUE(isIndexed());
  trace.samples()[300] = 8;
  EXPECT_FALSE(isIndexed()) << "they may change";
  trace.ComputeExtrema();
  ASSERT_TRUE(isIndexed());
  EXPECT_EQ(trace.sampleIndex()->blocksWithin(trace.GetSacSeis(), 0, 1000).highest[1], 8);
  trace.setSamples(std::vector<float>(600, -1.0F));
  ASSERT_TRUE(isIndexed());
  EXPECT_EQ(trace.sampleIndex()->blocksWithin(trace.GetSacSeis(), 0, 600).highest[1], -1);
  const std::vector<float> taken = trace.takeSamples();
  EXPECT_FALSE(trace.sampleIndex()->covers(taken.data(), 0, 600));
}

TEST(SacSeismogram, seesEveryChangeOfSamplesThatWereHandedOut) {
  SacSeismogram trace(header(), {1, 2, 3});
  trace.ComputeExtrema();
  const std::span<float> samples = trace.samples();
  for (const float value : {7.0F, 9.0F}) {
    samples[2] = value;
    trace.ComputeExtrema();
    EXPECT_EQ(trace.smax(), value);
  }
  trace.setSamples({4, 5});
  EXPECT_EQ(trace.smax(), 5);
}

TEST(SacSeismogram, keepsItsSamplesInOnePiece) {
  const SacSeismogram trace(header(), {1, 2, 3});
  EXPECT_EQ(trace.GetSacSeis()[0], 1);
  EXPECT_EQ(trace.GetSacSeis()[2], 3);
}

TEST(SacSeismogram, countsItsSamplesItself) {
  SacHeader made = header();
  made.npts = 900;
  const SacSeismogram trace(made, {1, 2});
  EXPECT_EQ(trace.npts(), 2);
  EXPECT_EQ(trace.GetSacHeader()->npts, 2);
}

TEST(SacSeismogram, endsAtItsLastSample) {
  // 10 + (5 - 1) · 0.5
  EXPECT_EQ(SacSeismogram(header(0.5F, 10), std::vector<float>(5)).e(), 12);
  EXPECT_EQ(SacSeismogram(header(0.5F, 10), {1}).e(), 10);
}

TEST(SacSeismogram, keepsAStoredEndThatIsNearItsLastSample) {
  SacHeader made = header(0.5F, 10);
  made.e = 12.25F;
  EXPECT_EQ(SacSeismogram(made, std::vector<float>(5)).e(), 12.25F);
}

TEST(SacSeismogram, replacesAStoredEndThatCannotBe) {
  for (const float end : {kNaN, 1e30F, 0.0F, 13.0F}) {
    SacHeader made = header(0.5F, 10);
    made.e = end;
    EXPECT_EQ(SacSeismogram(made, std::vector<float>(5)).e(), 12) << end;
  }
}

TEST(SacSeismogram, startsAtZeroWhenItsStartIsUnset) {
  SacHeader made;
  made.delta = 2;
  const SacSeismogram trace(made, {1, 2, 3});
  EXPECT_EQ(trace.b(), 0);
  EXPECT_EQ(trace.e(), 4);
}

TEST(SacSeismogram, fitsItsEndToOtherSamples) {
  SacSeismogram trace(header(2, 1), {1, 2, 3});
  trace.setSamples({1, 2, 3, -7});
  EXPECT_EQ(trace.npts(), 4);
  EXPECT_EQ(trace.e(), 7); // 1 + 3 · 2
  EXPECT_EQ(trace.smin(), -7);
}

TEST(SacSeismogram, staysFiniteWhenItsEndIsBeyondSinglePrecision) {
  const SacSeismogram trace(header(3e38F, 3e38F), {1, 2, 3});
  EXPECT_TRUE(std::isfinite(trace.e()));
}

TEST(SacSeismogram, givesItsCodesWithoutPadding) {
  SacHeader made = header();
  made.kstnm = "TLY";
  made.knetwk = "II";
  made.khole = "00";
  made.kcmpnm = "BHZ";
  made.kuser0 = "obs";
  const SacSeismogram trace(made, {});
  EXPECT_EQ(trace.kstnm(), QStringLiteral("TLY"));
  EXPECT_EQ(trace.knetwk(), QStringLiteral("II"));
  EXPECT_EQ(trace.khole(), QStringLiteral("00"));
  EXPECT_EQ(trace.kcmpnm(), QStringLiteral("BHZ"));
  EXPECT_EQ(trace.kuser0(), QStringLiteral("obs"));
  EXPECT_EQ(trace.labelString(), QStringLiteral("II.TLY.00.BHZ"));
}

TEST(SacSeismogram, leavesAMissingCodeEmptyInItsLabel) {
  SacHeader made = header();
  made.kstnm = "BRP1";
  made.knetwk = "YJ";
  made.kcmpnm = "EDF";
  EXPECT_EQ(SacSeismogram(made, {}).labelString(), QStringLiteral("YJ.BRP1..EDF"));
}

TEST(SacSeismogram, withoutCodesIsLabelledWithItsFileName) {
  const SacSeismogram trace(header(), {}, QStringLiteral("/data/day one/ANMO.BHZ.SAC"));
  EXPECT_EQ(trace.labelString(), QStringLiteral("ANMO.BHZ.SAC"));
  EXPECT_EQ(trace.path(), QStringLiteral("/data/day one/ANMO.BHZ.SAC"));
}

TEST(SacSeismogram, givesPicksByKey) {
  SacHeader made = header();
  made.t0 = 100;
  made.t4 = 104;
  made.t9 = 109;
  made.a = 110;
  made.f = 111;
  const SacSeismogram trace(made, {});
  EXPECT_EQ(trace.timePickKey(0), 100);
  EXPECT_EQ(trace.timePickKey(4), 104);
  EXPECT_EQ(trace.timePickKey(9), 109);
  EXPECT_EQ(trace.timePickKey(10), 110);
  EXPECT_EQ(trace.timePickKey(11), 111);
  EXPECT_EQ(trace.timePickKey(1), -12345.0F);
  EXPECT_EQ(trace.a(), 110);
  EXPECT_EQ(trace.pTime(), 110);
}

TEST(SacSeismogram, givesPickLabelsByKey) {
  SacHeader made = header();
  made.kt0 = "P";
  made.kt9 = "ScS";
  made.ka = "Pdiff";
  made.kf = "end";
  made.kt2 = "";
  const SacSeismogram trace(made, {});
  EXPECT_EQ(trace.pickLabelWithKey(0), QStringLiteral("P"));
  EXPECT_EQ(trace.pickLabelWithKey(9), QStringLiteral("ScS"));
  EXPECT_EQ(trace.pickLabelWithKey(10), QStringLiteral("Pdiff"));
  EXPECT_EQ(trace.pickLabelWithKey(11), QStringLiteral("end"));
  EXPECT_EQ(trace.pickLabelWithKey(1), QStringLiteral("-12345"));
  EXPECT_EQ(trace.pickLabelWithKey(2), QStringLiteral("-12345"));
}

TEST(SacSeismogram, hasNoPickOutsideTheKeys) {
  const SacSeismogram trace(header(), {});
  for (const int key : {-1, 12, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(trace.timePickKey(key), -12345.0F);
    EXPECT_EQ(trace.pickLabelWithKey(key), QStringLiteral("-12345"));
  }
}

TEST(SacSeismogram, givesStoredDistancesAsTheyAre) {
  SacHeader made = header();
  made.gcarc = 30.5F;
  made.az = 309.25F;
  made.baz = 110.75F;
  made.evdp = 24.4F;
  made.evla = made.evlo = made.stla = made.stlo = 0;
  const SacSeismogram trace(made, {});
  EXPECT_EQ(trace.gcarc(), 30.5F);
  EXPECT_EQ(trace.azimuth(), 309.25F);
  EXPECT_EQ(trace.backazimuth(), 110.75F);
  EXPECT_EQ(trace.evdp(), 24.4F);
}

TEST(SacSeismogram, readsADepthThatNoEarthquakeHasAsMetres) {
  const auto depthOf = [](float stored) {
    SacHeader made = header();
    made.evdp = stored;
    return SacSeismogram(made, {}).evdp();
  };
  EXPECT_EQ(depthOf(24400), 24.4F);
  EXPECT_EQ(depthOf(644600), 644.6F);
  EXPECT_EQ(depthOf(1000), 1000);
  EXPECT_EQ(depthOf(700), 700);
  EXPECT_EQ(depthOf(-2), -2);
  EXPECT_EQ(depthOf(-12345), -12345);
  SacHeader made = header();
  made.evdp = 24400;
  EXPECT_EQ(SacSeismogram(made, {}).GetSacHeader()->evdp, 24400);
}

TEST(SacSeismogram, knowsNoPlaceOfAnEventAtZeroZeroWithoutTimeAndDepth) {
  SacHeader made = header();
  made.evla = made.evlo = 0;
  EXPECT_EQ(SacSeismogram(made, {}).flinnEngdahlString(), QString());
  made.evdp = 0; // cleared, too
  EXPECT_EQ(SacSeismogram(made, {}).flinnEngdahlString(), QString());
  made.evdp = 10;
  EXPECT_EQ(SacSeismogram(made, {}).flinnEngdahlString(), QString::fromUtf8("0.00°N 0.00°E"));
  made.evdp = -12345;
  made.o = 3;
  EXPECT_EQ(SacSeismogram(made, {}).flinnEngdahlString(), QString::fromUtf8("0.00°N 0.00°E"));
  made.o = -12345;
  made.evlo = 0.5F;
  EXPECT_EQ(SacSeismogram(made, {}).flinnEngdahlString(), QString::fromUtf8("0.00°N 0.50°E"));
}

TEST(SacSeismogram, computesUnsetDistancesFromTheCoordinates) {
  SacHeader made = header();
  made.evla = 0;
  made.evlo = 10;
  made.stla = 0;
  made.stlo = 100;
  made.az = 5; // stored values stay
  const SacSeismogram trace(made, {});
  EXPECT_FLOAT_EQ(trace.gcarc(), 90);
  EXPECT_EQ(trace.azimuth(), 5);
  EXPECT_FLOAT_EQ(trace.backazimuth(), 270);
}

TEST(SacSeismogram, hasNoDistanceWhenACoordinateIsMissing) {
  SacHeader made = header();
  made.evla = 0;
  made.evlo = 10;
  made.stla = 0;
  const SacSeismogram trace(made, {});
  EXPECT_EQ(trace.gcarc(), -12345.0F);
  EXPECT_EQ(trace.azimuth(), -12345.0F);
  EXPECT_EQ(trace.backazimuth(), -12345.0F);
}

TEST(SacSeismogram, namesTheRegionByItsCoordinates) {
  SacHeader made = header();
  made.evla = 38.3F;
  made.evlo = 142.5F;
  const SacSeismogram trace(made, {});
  EXPECT_EQ(trace.flinnEngdahlString(), QString::fromUtf8("38.30°N 142.50°E"));
  EXPECT_EQ(trace.flinnEngdahlGeographicRegion(), trace.flinnEngdahlString());
}

TEST(SacSeismogram, writesTheOriginTimeToATenthOfASecond) {
  // 05:47:30.033 - 66.3334 s = 05:46:23.6996
  EXPECT_EQ(originTime(tohoku(), -66.3334F), QStringLiteral("2011/03/11 05:46:23.7"));
  EXPECT_EQ(originTime(headerAt(utc(2012, 1, 2, 3, 4, 5)), 0), QStringLiteral("2012/01/02 03:04:05.0"));
}

TEST(SacSeismogram, carriesARoundedOriginTimeIntoTheNextYear) {
  EXPECT_EQ(originTime(headerAt(utc(2011, 12, 31, 23, 59, 59, 950)), 0), QStringLiteral("2012/01/01 00:00:00.0"));
  EXPECT_EQ(originTime(headerAt(utc(2011, 12, 31, 23, 59, 59, 949)), 0), QStringLiteral("2011/12/31 23:59:59.9"));
}

TEST(SacSeismogram, roundsOriginTimesBefore1970LikeLaterOnes) {
  EXPECT_EQ(originTime(headerAt(utc(1960, 5, 22, 19, 11, 14, 149)), 0), QStringLiteral("1960/05/22 19:11:14.1"));
  EXPECT_EQ(originTime(headerAt(utc(1960, 5, 22, 19, 11, 14, 150)), 0), QStringLiteral("1960/05/22 19:11:14.2"));
}

TEST(SacSeismogram, hasNoOriginTimeTextWhenATimeIsUnknown) {
  EXPECT_EQ(originTime(header(), 5), QString());
  EXPECT_EQ(originTime(tohoku(), -12345.0F), QString());
  EXPECT_EQ(originTime(tohoku(), kNaN), QString());
  EXPECT_EQ(originTime(tohoku(), 3e38F), QString());
}

TEST(SacSeismogram, sharesOneReferenceTimeThatOutlivesIt) {
  auto trace = std::make_shared<SacSeismogram>(tohoku(), std::vector<float>{});
  const std::shared_ptr<SeisTime> time = trace->mySeisReferenceTime();
  EXPECT_EQ(trace->mySeisReferenceTime(), time);
  trace.reset();
  EXPECT_STREQ(time->YMDcString(), "2011-03-11");
}

TEST(SacSeismogram, piecesOfOneMomentShareTheirReferenceTime) {
  SacHeader header;
  header.nzyear = 2025;
  header.nzjday = 32;
  header.nzhour = header.nzmin = header.nzsec = header.nzmsec = 0;
  const SacSeismogram first(header, {1}), second(header, {2});
  EXPECT_EQ(first.mySeisReferenceTime(), second.mySeisReferenceTime());
  EXPECT_STREQ(first.mySeisReferenceTime()->YMDcString(), "2025-02-01");
  header.nzmsec = 1;
  const SacSeismogram later(header, {3});
  EXPECT_EQ(first.mySeisReferenceTime()->nsDate().msecsTo(later.mySeisReferenceTime()->nsDate()), 1);
}

TEST(SacSeismogram, takesItsTimesFromPreciseValues) {
  SacHeader made = header(1, 0);
  made.t1 = 7;
  SacFooter precise;
  precise.delta = 0.1;
  precise.b = 1000.0625;
  precise.t1 = kNaN; // leaves the header's
  const SacSeismogram trace(made, {1, 2, 3}, QString(), precise);
  EXPECT_EQ(trace.delta(), 0.1F);
  EXPECT_EQ(trace.b(), 1000.0625F);
  EXPECT_EQ(trace.timePickKey(1), 7);
  EXPECT_EQ(trace.preciseValues().t1, 7.0);
  EXPECT_EQ(trace.preciseValues().delta, 0.1);
  EXPECT_DOUBLE_EQ(trace.preciseValues().e, 1000.2625); // 1000.0625 + 2 · 0.1
}
