#include "XOV_Graphics/seismic/io/sac/SacReader.h"
#include "tests/seismic/SacTextLines.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <clocale>
#include <cmath>
#include <locale>
#include <string>

using namespace xov;
using test::SacTextLines;

namespace {

std::shared_ptr<SacSeismogram> parsed(const QByteArray& bytes) {
  const auto result = parseSac(bytes, QStringLiteral("trace.txt"));
  EXPECT_TRUE(result) << result.error().toStdString();
  return result ? *result : std::make_shared<SacSeismogram>();
}

QString refusal(const QByteArray& bytes) {
  const auto result = parseSac(bytes, QStringLiteral("trace.txt"));
  EXPECT_FALSE(result);
  EXPECT_TRUE(result.error().startsWith(QStringLiteral("trace.txt: "))) << result.error().toStdString();
  EXPECT_FALSE(result.error().contains(QLatin1Char('\n')));
  return result.error().sliced(std::min(result.error().size(), qsizetype(11)));
}

SacTextLines sevenSamples() {
  return SacTextLines().npts(7).add(SacTextLines::floats({1, -2.5, 3, 4, 5})).add(SacTextLines::floats({6, 7.25}));
}

} // namespace

TEST(SacAlphanumeric, readsSamplesAndTimes) {
  const auto trace = parsed(sevenSamples().bytes());
  ASSERT_EQ(trace->npts(), 7);
  EXPECT_EQ(trace->GetSacSeis()[1], -2.5F);
  EXPECT_EQ(trace->GetSacSeis()[6], 7.25F);
  EXPECT_EQ(trace->delta(), 0.5F);
  EXPECT_EQ(trace->b(), 10);
  EXPECT_EQ(trace->e(), 13); // 10 + 6 · 0.5
  EXPECT_EQ(trace->smin(), -2.5F);
  EXPECT_EQ(trace->smax(), 7.25F);
}

TEST(SacAlphanumeric, readsTheWholeHeader) {
  SacTextLines lines;
  // Line 2: b e o a fmt; line 3: t0 to t4; line 5: f first; line 11: dist az baz gcarc sb.
  lines.line(2, SacTextLines::floats({10, -12345, -3.5, 301.5, -12345}));
  lines.line(3, SacTextLines::floats({100, 101, 102, 103, 104}));
  lines.line(5, SacTextLines::floats({777, -12345, -12345, -12345, -12345}));
  lines.line(11, SacTextLines::floats({3342.5, 309, 110.5, 30.25, -12345}));
  lines.line(15, SacTextLines::integers({2011, 70, 5, 47, 30}));
  lines.line(16, SacTextLines::integers({33, 6, -12345, -12345, 0}));
  lines.line(23, "TLY     A BIG EVENT     ");
  lines.line(24, "00      O       Pdiff   ");
  lines.line(25, "P       PP      PcP     ");
  lines.line(28, "-12345  end     obs     ");
  lines.line(29, "-12345  -12345  BHZ     ");
  lines.line(30, "II      -12345  -12345  ");
  const auto trace = parsed(lines.bytes());
  EXPECT_EQ(trace->originTimeOffset(), -3.5F);
  EXPECT_EQ(trace->pTime(), 301.5F);
  EXPECT_EQ(trace->timePickKey(4), 104);
  EXPECT_EQ(trace->timePickKey(11), 777);
  EXPECT_EQ(trace->azimuth(), 309);
  EXPECT_EQ(trace->backazimuth(), 110.5F);
  EXPECT_EQ(trace->gcarc(), 30.25F);
  EXPECT_EQ(trace->mySeisReferenceTime()->nsDate(), QDateTime(QDate(2011, 3, 11), QTime(5, 47, 30, 33), Qt::UTC));
  EXPECT_EQ(trace->labelString(), QStringLiteral("II.TLY.00.BHZ"));
  EXPECT_EQ(trace->GetSacHeader()->kevnm.text(), QStringLiteral("A BIG EVENT"));
  EXPECT_EQ(trace->pickLabelWithKey(0), QStringLiteral("P"));
  EXPECT_EQ(trace->pickLabelWithKey(2), QStringLiteral("PcP"));
  EXPECT_EQ(trace->pickLabelWithKey(3), QStringLiteral("-12345"));
  EXPECT_EQ(trace->pickLabelWithKey(10), QStringLiteral("Pdiff"));
  EXPECT_EQ(trace->pickLabelWithKey(11), QStringLiteral("end"));
  EXPECT_EQ(trace->kuser0(), QStringLiteral("obs"));
}

TEST(SacAlphanumeric, readsLinesThatEndWithCarriageReturns) {
  SacTextLines lines = sevenSamples();
  lines.line(30, "II      -12345  -12345");
  const auto trace = parsed(lines.bytes("\r\n"));
  EXPECT_EQ(trace->npts(), 7);
  EXPECT_EQ(trace->knetwk(), QStringLiteral("II"));
}

TEST(SacAlphanumeric, readsTextLinesThatLostTheirTrailingBlanks) {
  SacTextLines lines;
  lines.line(23, "TLY").line(24, "").line(29, "-12345  -12345  BHZ");
  const auto trace = parsed(lines.bytes());
  EXPECT_EQ(trace->kstnm(), QStringLiteral("TLY"));
  EXPECT_EQ(trace->khole(), QString());
  EXPECT_EQ(trace->kcmpnm(), QStringLiteral("BHZ"));
}

TEST(SacAlphanumeric, readsFieldsSeparatedByBlanksInsteadOfColumns) {
  SacTextLines lines;
  lines.line(1, "0.25 -12345 -12345.0 -1.2345e4 +3").line(16, "-12345 6 -12345 -12345 3");
  lines.line(23, "TLYSTAT BIGEVENT").line(29, "-12345 -12345 BHZ").line(30, "II -12345 -12345");
  lines.add("1 2\t3");
  const auto trace = parsed(lines.bytes());
  EXPECT_EQ(trace->npts(), 3);
  EXPECT_EQ(trace->delta(), 0.25F);
  EXPECT_EQ(trace->GetSacHeader()->odelta, 3);
  EXPECT_EQ(trace->kcmpnm(), QStringLiteral("BHZ"));
  EXPECT_EQ(trace->knetwk(), QStringLiteral("II"));
}

TEST(SacAlphanumeric, readsNumbersThatFillTheirColumns) {
  SacTextLines lines;
  lines.npts(2).add("-123456.7500000-654321.2500000");
  lines.line(17, "1234567890-123456789      -123      -123     12345");
  const auto trace = parsed(lines.bytes());
  EXPECT_EQ(trace->GetSacSeis()[0], -123456.75F);
  EXPECT_EQ(trace->GetSacSeis()[1], -654321.25F);
  EXPECT_EQ(trace->GetSacHeader()->nspts, 1234567890);
  EXPECT_EQ(trace->GetSacHeader()->nwfid, -123456789);
}

TEST(SacAlphanumeric, tellsAZeroFromTheDigitsThatTouchIt) {
  SacTextLines lines;
  lines.line(17, SacTextLines::integers({-12345, 0, 1375731712, -12345, -12345}));
  EXPECT_EQ(parsed(lines.bytes())->GetSacHeader()->nwfid, 0);
  EXPECT_EQ(parsed(lines.bytes())->GetSacHeader()->nxsize, 1375731712);
}

TEST(SacAlphanumeric, readsTheSamplesHoweverManyStandOnALine) {
  const auto trace = parsed(SacTextLines().npts(7).add("1").add("").add("2 3 4 5 6 7 8 9").bytes());
  ASSERT_EQ(trace->npts(), 7);
  EXPECT_EQ(trace->GetSacSeis()[6], 7);
}

TEST(SacAlphanumeric, readsAFileWithoutALastLineEnd) {
  EXPECT_EQ(parsed(sevenSamples().bytes().chopped(1))->npts(), 7);
}

TEST(SacAlphanumeric, readsSamplesThatAreNotFiniteAndTinyOnes) {
  const auto trace = parsed(SacTextLines().npts(4).add("nan 2 -inf -1e-60").bytes());
  EXPECT_TRUE(std::isnan(trace->GetSacSeis()[0]));
  EXPECT_EQ(trace->GetSacSeis()[2], -INFINITY);
  EXPECT_EQ(trace->GetSacSeis()[3], 0);
  EXPECT_EQ(trace->smin(), 0);
  EXPECT_EQ(trace->smax(), 2);
}

TEST(SacAlphanumeric, doesNotHeedTheLocale) {
  // Qt's, the streams' and (where one with a decimal comma is installed) the C library's.
  struct DecimalComma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
  };
  const QByteArray bytes = sevenSamples().bytes();
  const std::locale streams = std::locale::global(std::locale(std::locale(), new DecimalComma));
  const std::string library = std::setlocale(LC_NUMERIC, nullptr);
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  QLocale::setDefault(QLocale(QLocale::German));
  const auto trace = parsed(bytes);
  QLocale::setDefault(QLocale::system());
  std::setlocale(LC_NUMERIC, library.c_str());
  std::locale::global(streams);
  EXPECT_EQ(trace->delta(), 0.5F);
  EXPECT_EQ(trace->GetSacSeis()[1], -2.5F);
}

TEST(SacAlphanumeric, refusesAHeaderLineThatDoesNotHoldFiveNumbers) {
  EXPECT_EQ(refusal(SacTextLines().line(3, "1 2 3 4").bytes()),
            "line 3: found \"1 2 3 4\", expected five numbers of 15 columns");
  EXPECT_EQ(refusal(SacTextLines().line(3, "1 2 3 4 5 6").bytes()),
            "line 3: found \"1 2 3 4 5 6\", expected five numbers of 15 columns");
  EXPECT_EQ(refusal(SacTextLines().line(15, "2011 70 5 47 late").bytes()),
            "line 15: found \"2011 70 5 47 late\", expected five numbers of 10 columns");
  EXPECT_EQ(refusal(SacTextLines().line(15, "2011 70 5 47 99999999999").bytes()),
            "line 15: found \"2011 70 5 47 99999999999\", expected five numbers of 10 columns");
}

TEST(SacAlphanumeric, refusesANumberBeyondSinglePrecision) {
  EXPECT_EQ(refusal(SacTextLines().npts(1).add("1e39").bytes()), "line 31: found \"1e39\", expected numbers");
}

TEST(SacAlphanumeric, refusesAHeaderThatEndsEarly) {
  const QByteArrayList lines = SacTextLines().lines();
  EXPECT_EQ(refusal(lines.first(22).join('\n')), "the header ends after line 22, expected 30 lines");
  EXPECT_EQ(refusal(lines.first(29).join('\n')), "the header ends after line 29, expected 30 lines");
  EXPECT_EQ(refusal(lines.first(7).join('\n')), "the header ends after line 7, expected 30 lines");
}

TEST(SacAlphanumeric, refusesMoreSamplesThanTheFileHolds) {
  EXPECT_EQ(refusal(sevenSamples().npts(8).bytes()), "npts on line 16: found 8, but the file holds 7 samples");
}

TEST(SacAlphanumeric, refusesAHugeNumberOfSamplesWithoutReservingThem) {
  // Seven bytes follow the header: room for four digits and the blanks between.
  EXPECT_EQ(refusal(SacTextLines().npts(2147483647).add("1 2 3 ").bytes()),
            "npts on line 16: found 2147483647, but the file has room for 4 samples");
}

TEST(SacAlphanumeric, refusesSamplesThatAreNoNumbers) {
  EXPECT_EQ(refusal(SacTextLines().npts(2).add("1 x").bytes()), "line 31: found \"1 x\", expected numbers");
}

TEST(SacAlphanumeric, quotesAtMostOneLineOfWhatItRefuses) {
  const QString error = refusal(SacTextLines().npts(1).add(QByteArray("\x01") + QByteArray(5000, 'x')).bytes());
  EXPECT_EQ(error, "line 31: found \"?" + QString(79, QLatin1Char('x')) + "\", expected numbers");
}

TEST(SacAlphanumeric, refusesWhatTheBinaryFormRefusesAndNamesTheLine) {
  EXPECT_EQ(refusal(SacTextLines().line(1, SacTextLines::floats({0, 0, 0, 0, 0})).bytes()),
            "delta on line 1: found 0, expected a finite number above 0");
  EXPECT_EQ(refusal(SacTextLines().line(2, "nan 0 0 0 0").bytes()),
            "b on line 2: found nan, expected a finite number");
  EXPECT_EQ(refusal(SacTextLines().line(16, SacTextLines::integers({0, 5, 0, 0, 0})).bytes()),
            "nvhdr on line 16: found 5, expected 6 or 7");
  EXPECT_EQ(refusal(SacTextLines().npts(-1).bytes()), "npts on line 16: found -1, expected 0 or more");
  EXPECT_EQ(refusal(SacTextLines().line(18, SacTextLines::integers({3, 0, 0, 0, 0})).bytes()),
            "iftype on line 18: found 3 (a spectrum of amplitude and phase), expected 1 (a time series)");
  EXPECT_EQ(refusal(SacTextLines().line(22, SacTextLines::integers({0, 0, 0, 0, 0})).bytes()),
            "leven on line 22: found 0 (uneven spacing), expected 1 (even spacing)");
}
