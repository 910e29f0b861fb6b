#include "XOV_Graphics/seismic/io/sac/SacReader.h"

#include "tests/seismic/SacBytes.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>

#include <cmath>
#include <cstddef>
#include <limits>
#include <sys/stat.h>

using namespace xov;
using test::Order;
using test::SacBytes;
using test::TemporaryFiles;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

const QString kName = QStringLiteral("trace.sac");

Result<std::shared_ptr<SacSeismogram>> parse(const QByteArray& bytes) { return parseSac(bytes, kName); }

std::shared_ptr<SacSeismogram> parsed(const QByteArray& bytes) {
  Result<std::shared_ptr<SacSeismogram>> result = parse(bytes);
  EXPECT_TRUE(result) << result.error().toStdString();
  return result ? *result : std::make_shared<SacSeismogram>();
}

/// The error of refused bytes without the name in front.
QString refusal(const QByteArray& bytes) {
  const Result<std::shared_ptr<SacSeismogram>> result = parse(bytes);
  EXPECT_FALSE(result);
  EXPECT_TRUE(result.error().startsWith(QStringLiteral("trace.sac: "))) << result.error().toStdString();
  EXPECT_FALSE(result.error().contains(QLatin1Char('\n')));
  return result.error().sliced(std::min(result.error().size(), qsizetype(11)));
}

QString refusal(const SacBytes& sac) { return refusal(sac.bytes()); }

} // namespace

class SacReaderOrders : public ::testing::TestWithParam<Order> {};

INSTANTIATE_TEST_SUITE_P(BothByteOrders, SacReaderOrders, ::testing::Values(Order::Little, Order::Big),
                         [](const auto& each) { return each.param == Order::Little ? "Little" : "Big"; });

TEST_P(SacReaderOrders, readsSamplesAndTimes) {
  const auto trace = parsed(SacBytes(GetParam())
                                .number(SacBytes::kDelta, 0.05F)
                                .number(SacBytes::kB, 12.5F)
                                .number(SacBytes::kE, 12.625F)
                                .samples({1, -2.5F, 3.25F})
                                .bytes());
  ASSERT_EQ(trace->npts(), 3);
  EXPECT_EQ(trace->GetSacSeis()[0], 1);
  EXPECT_EQ(trace->GetSacSeis()[1], -2.5F);
  EXPECT_EQ(trace->GetSacSeis()[2], 3.25F);
  EXPECT_EQ(trace->delta(), 0.05F);
  EXPECT_EQ(trace->b(), 12.5F);
  EXPECT_EQ(trace->e(), 12.625F);
  EXPECT_EQ(trace->smin(), -2.5F);
  EXPECT_EQ(trace->smax(), 3.25F);
  EXPECT_EQ(trace->absMax(), 3.25F);
}

TEST_P(SacReaderOrders, readsPicksAndTheirLabels) {
  SacBytes sac(GetParam());
  sac.number(SacBytes::kA, 301.5F).number(SacBytes::kO, -66.25F).number(SacBytes::kF, 900);
  sac.text(SacBytes::kFirstArrivalLabel, 8, "P").text(SacBytes::kEndLabel, 8, "coda");
  const char* const labels[] = {"P0", "P1", "P2", "P3", "P4", "P5", "P6", "P7", "P8", "P9"};
  for (int key = 0; key < 10; ++key)
    sac.number(SacBytes::kT0 + key, float(400 + key)).text(SacBytes::kT0Label + 8 * key, 8, labels[key]);
  const auto trace = parsed(sac.bytes());
  for (int key = 0; key < 10; ++key) {
    EXPECT_EQ(trace->timePickKey(key), float(400 + key));
    EXPECT_EQ(trace->pickLabelWithKey(key), QString::fromLatin1(labels[key]));
  }
  EXPECT_EQ(trace->timePickKey(10), 301.5F);
  EXPECT_EQ(trace->pickLabelWithKey(10), QStringLiteral("P"));
  EXPECT_EQ(trace->timePickKey(11), 900);
  EXPECT_EQ(trace->pickLabelWithKey(11), QStringLiteral("coda"));
  EXPECT_EQ(trace->pTime(), 301.5F);
  EXPECT_EQ(trace->originTimeOffset(), -66.25F);
}

TEST_P(SacReaderOrders, readsTheReferenceTimeWithMilliseconds) {
  const auto trace = parsed(SacBytes(GetParam())
                                .integer(SacBytes::kNzyear, 2012)
                                .integer(SacBytes::kNzjday, 60)
                                .integer(SacBytes::kNzhour, 23)
                                .integer(SacBytes::kNzmin, 59)
                                .integer(SacBytes::kNzsec, 58)
                                .integer(SacBytes::kNzmsec, 7)
                                .bytes());
  const auto time = trace->mySeisReferenceTime();
  EXPECT_STREQ(time->YMDcString(), "2012-02-29");
  EXPECT_EQ(time->nsDate(), QDateTime(QDate(2012, 2, 29), QTime(23, 59, 58, 7), Qt::UTC));
  EXPECT_EQ(trace->GetSacHeader()->nzjday, 60);
  EXPECT_EQ(trace->GetSacHeader()->nzmsec, 7);
}

TEST_P(SacReaderOrders, readsTextsAndGeometry) {
  const auto trace = parsed(SacBytes(GetParam())
                                .text(SacBytes::kStation, 8, "TLY")
                                .text(SacBytes::kEvent, 16, "FUNCGEN: IMPULSE")
                                .text(SacBytes::kHole, 8, "00")
                                .text(SacBytes::kUser0, 8, "obs")
                                .text(SacBytes::kComponent, 8, "BHZ")
                                .raw(SacBytes::kNetwork, "II\0\0\0\0\0\0", 8)
                                .number(SacBytes::kEvdp, 24400)
                                .number(SacBytes::kGcarc, 30.0855F)
                                .number(SacBytes::kAz, 309.0148F)
                                .number(SacBytes::kBaz, 110.5F)
                                .number(SacBytes::kEvla, 38.32F)
                                .number(SacBytes::kEvlo, 142.37F)
                                .bytes());
  EXPECT_EQ(trace->labelString(), QStringLiteral("II.TLY.00.BHZ"));
  EXPECT_EQ(trace->GetSacHeader()->kevnm.text(), QStringLiteral("FUNCGEN: IMPULSE"));
  EXPECT_EQ(trace->kuser0(), QStringLiteral("obs"));
  EXPECT_EQ(trace->evdp(), 24.4F); // the header has metres
  EXPECT_EQ(trace->gcarc(), 30.0855F);
  EXPECT_EQ(trace->azimuth(), 309.0148F);
  EXPECT_EQ(trace->backazimuth(), 110.5F);
  EXPECT_EQ(trace->flinnEngdahlString(), QString::fromUtf8("38.32°N 142.37°E"));
}

TEST_P(SacReaderOrders, bringsEveryWordAndTextOfTheHeaderThrough) {
  // Every float word holds its own number, every integer word too but those that describe the samples.
  SacBytes sac(GetParam());
  for (int word = 1; word < 70; ++word)
    sac.number(word, float(word) + 0.5F);
  for (int word = 70; word < 110; ++word) {
    const bool describesSamples =
        word == SacBytes::kNvhdr || word == SacBytes::kNpts || word == SacBytes::kIftype || word == SacBytes::kLeven;
    if (!describesSamples) sac.integer(word, word * 1000);
  }
  for (int byte = 440; byte < 632; byte += 8)
    sac.text(byte, 8, QByteArray::number(byte).constData());
  const auto trace = parsed(sac.samples({1, 2}).number(SacBytes::kE, 6.5F).number(SacBytes::kDelta, 1).bytes());

  QByteArray header(632, 0);
  std::memcpy(header.data(), trace->GetSacHeader(), 632);
  for (int word = 3; word < 70; ++word) {
    float value = 0;
    std::memcpy(&value, header.constData() + word * 4, 4);
    EXPECT_EQ(value, float(word) + 0.5F) << word;
  }
  for (int word = 70; word < 110; ++word) {
    std::int32_t value = 0;
    std::memcpy(&value, header.constData() + word * 4, 4);
    const std::int32_t expected = word == SacBytes::kNvhdr    ? 6
                                  : word == SacBytes::kNpts   ? 2
                                  : word == SacBytes::kIftype ? 1
                                  : word == SacBytes::kLeven  ? 1
                                                              : word * 1000;
    EXPECT_EQ(value, expected) << word;
  }
  for (int byte = 440; byte < 632; byte += 8)
    EXPECT_EQ(header.sliced(byte, 8).trimmed(), QByteArray::number(byte)) << byte;
}

TEST_P(SacReaderOrders, refinesVersion7ByItsFooter) {
  const double values[22] = {0.1, 1000.0625, 1000.2625, -5.5, 1.5,  2.5,  3.5,  4.5,  5.5,  6.5,   7.5,
                             8.5, 9.5,       10.5,      11.5, 12.5, 20.5, 30.5, 40.5, 50.5, 999.5, 0.05};
  SacBytes sac(GetParam(), 7);
  sac.samples({1, 2, 3});
  for (const double value : values)
    sac.footer(value);
  const auto trace = parsed(sac.bytes());
  EXPECT_EQ(trace->delta(), 0.1F);
  EXPECT_EQ(trace->b(), 1000.0625F);
  EXPECT_EQ(trace->e(), 1000.2625F);
  EXPECT_EQ(trace->originTimeOffset(), -5.5F);
  EXPECT_EQ(trace->a(), 1.5F);
  for (int key = 0; key < 10; ++key)
    EXPECT_EQ(trace->timePickKey(key), float(key) + 2.5F) << key;
  EXPECT_EQ(trace->timePickKey(11), 12.5F);
  EXPECT_EQ(trace->GetSacHeader()->evlo, 20.5F);
  EXPECT_EQ(trace->GetSacHeader()->evla, 30.5F);
  EXPECT_EQ(trace->GetSacHeader()->stlo, 40.5F);
  EXPECT_EQ(trace->GetSacHeader()->stla, 50.5F);
  EXPECT_EQ(trace->GetSacHeader()->sb, 999.5F);
  EXPECT_EQ(trace->GetSacHeader()->sdelta, 0.05F);
  EXPECT_EQ(trace->preciseValues().delta, 0.1);
}

TEST_P(SacReaderOrders, keepsHeaderValuesThatTheFooterDoesNotSet) {
  const auto trace = parsed(SacBytes(GetParam(), 7)
                                .number(SacBytes::kDelta, 0.25F)
                                .number(SacBytes::kA, 33)
                                .samples({1, 2})
                                .footerWith(1, 8.0)
                                .bytes());
  EXPECT_EQ(trace->delta(), 0.25F);
  EXPECT_EQ(trace->a(), 33);
  EXPECT_EQ(trace->b(), 8);
  EXPECT_EQ(trace->e(), 8.25F);
}

TEST(SacReader, computesTheEndWhenItIsUnset) {
  const auto trace =
      parsed(SacBytes().number(SacBytes::kDelta, 0.5F).number(SacBytes::kB, 10).samples({1, 2, 3, 4, 5}).bytes());
  EXPECT_EQ(trace->e(), 12);
}

TEST(SacReader, readsAFileWithoutReferenceTimeAsOneOfUnknownTime) {
  const auto trace = parsed(SacBytes().samples({1}).bytes());
  EXPECT_FALSE(trace->mySeisReferenceTime()->nsDate().isValid());
  EXPECT_STREQ(trace->mySeisReferenceTime()->YMDcString(), "");
  EXPECT_EQ(trace->oTimeString(), QString());
}

TEST(SacReader, leavesSamplesThatAreNotFiniteOutOfTheExtremes) {
  const auto trace = parsed(SacBytes().samples({kNaN, 4, -kInfinity, -3, kInfinity}).bytes());
  EXPECT_EQ(trace->smin(), -3);
  EXPECT_EQ(trace->smax(), 4);
  EXPECT_EQ(trace->absMax(), 4);
  EXPECT_TRUE(std::isnan(trace->GetSacSeis()[0]));
  EXPECT_EQ(trace->GetSacSeis()[4], kInfinity);
}

TEST_P(SacReaderOrders, knowsSumAndExtremesOfManySamples) {
  // Beyond what is read together, with a gap in it.
  std::vector<float> samples(600000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i % 1000);
  samples[300000] = std::numeric_limits<float>::quiet_NaN();
  samples[599999] = -4;
  const auto trace = parsed(SacBytes(GetParam()).samples(samples).bytes());
  // 600 times 0 + 1 + ... + 999, but for 999 and a 0 that is a gap.
  const FiniteSum& sum = trace->knownSum().value_or(FiniteSum{});
  EXPECT_EQ(sum.count, 599999);
  EXPECT_EQ(sum.sum, 600 * 499500.0 - 999 - 4);
  EXPECT_EQ(trace->smin(), -4);
  EXPECT_EQ(trace->smax(), 999);
  const SampleIndex& index = *trace->sampleIndex();
  ASSERT_TRUE(index.covers(trace->GetSacSeis(), 0, 600000));
  EXPECT_TRUE(index.holdsNoGap(trace->GetSacSeis(), 0, 299776));
  EXPECT_FALSE(index.holdsNoGap(trace->GetSacSeis(), 0, 300001));
  trace->samples()[0] = 5;
  EXPECT_FALSE(trace->knownSum()) << "of samples that may have changed";
}

TEST(SacReader, distrustsTheStoredExtremes) {
  const auto trace = parsed(SacBytes().number(1, -99).number(2, 99).samples({-1, 2}).bytes());
  EXPECT_EQ(trace->smin(), -1);
  EXPECT_EQ(trace->smax(), 2);
}

TEST(SacReader, readsAFileWithoutSamples) {
  const auto trace = parsed(SacBytes().bytes());
  EXPECT_EQ(trace->npts(), 0);
  EXPECT_EQ(trace->smin(), 0);
  EXPECT_EQ(trace->smax(), 0);
}

TEST(SacReader, ignoresBytesAfterTheSamples) {
  EXPECT_EQ(parsed(SacBytes().samples({1, 2}).bytes() + "tail")->npts(), 2);
}

TEST(SacReader, takesAnUnsetFileTypeAsATimeSeries) {
  EXPECT_EQ(parsed(SacBytes().integer(SacBytes::kIftype, -12345).samples({1}).bytes())->npts(), 1);
}

TEST(SacReader, takesAnUnsetStartAsZero) {
  EXPECT_EQ(parsed(SacBytes().number(SacBytes::kB, -12345.0F).samples({1}).bytes())->b(), 0);
}

TEST(SacReader, refusesATruncatedHeader) {
  EXPECT_EQ(refusal(SacBytes().bytes().first(631)), "header: found 631 bytes, expected 632");
  EXPECT_EQ(refusal(SacBytes().bytes().first(1)), "header: found 1 bytes, expected 632");
}

TEST(SacReader, refusesTruncatedSamples) {
  const QByteArray whole = SacBytes().samples({1, 2, 3}).bytes();
  EXPECT_EQ(refusal(whole.chopped(1)), "npts at byte 316: found 3, but the file holds 2 samples");
}

TEST(SacReader, refusesAHugeNumberOfSamplesWithoutReservingThem) {
  const QByteArray huge = SacBytes().samples(std::vector<float>(1200)).integer(SacBytes::kNpts, 900000000).bytes();
  EXPECT_EQ(refusal(huge), "npts at byte 316: found 900000000, but the file holds 1200 samples");
  const QByteArray largest = SacBytes().integer(SacBytes::kNpts, 2147483647).bytes();
  EXPECT_EQ(refusal(largest), "npts at byte 316: found 2147483647, but the file holds 0 samples");
}

TEST(SacReader, refusesANegativeOrUnsetNumberOfSamples) {
  EXPECT_EQ(refusal(SacBytes().integer(SacBytes::kNpts, -1)), "npts at byte 316: found -1, expected 0 or more");
  EXPECT_EQ(refusal(SacBytes().integer(SacBytes::kNpts, -12345)),
            "npts at byte 316: found -12345, expected 0 or more");
}

TEST(SacReader, refusesOtherHeaderVersions) {
  EXPECT_EQ(refusal(SacBytes(Order::Little, 5)), "nvhdr at byte 304: found 5, expected 6 or 7");
  EXPECT_EQ(refusal(SacBytes(Order::Big, 1)), "nvhdr at byte 304: found 1, expected 6 or 7");
}

TEST(SacReader, refusesAVersionThatNoByteOrderExplains) {
  EXPECT_EQ(refusal(SacBytes().raw(304, "\x12\x34\x56\x78", 4)),
            "nvhdr at byte 304: found bytes 12 34 56 78, expected 6 or 7 in either byte order");
  EXPECT_EQ(refusal(SacBytes(Order::Little, 8)),
            "nvhdr at byte 304: found bytes 08 00 00 00, expected 6 or 7 in either byte order");
}

TEST(SacReader, refusesASpectrumInOneLine) {
  EXPECT_EQ(refusal(SacBytes().integer(SacBytes::kIftype, 2)),
            "iftype at byte 340: found 2 (a spectrum of real and imaginary parts), expected 1 (a time series)");
  EXPECT_EQ(refusal(SacBytes().integer(SacBytes::kIftype, 3)),
            "iftype at byte 340: found 3 (a spectrum of amplitude and phase), expected 1 (a time series)");
}

TEST(SacReader, refusesXYDataInOneLine) {
  EXPECT_EQ(refusal(SacBytes().integer(SacBytes::kIftype, 4)),
            "iftype at byte 340: found 4 (x-y data), expected 1 (a time series)");
  EXPECT_EQ(refusal(SacBytes().integer(SacBytes::kIftype, 51)),
            "iftype at byte 340: found 51 (x-y-z data), expected 1 (a time series)");
  EXPECT_EQ(refusal(SacBytes().integer(SacBytes::kIftype, 77)),
            "iftype at byte 340: found 77 (an unknown type), expected 1 (a time series)");
}

TEST(SacReader, refusesUnevenSpacing) {
  EXPECT_EQ(refusal(SacBytes().integer(SacBytes::kLeven, 0)),
            "leven at byte 420: found 0 (uneven spacing), expected 1 (even spacing)");
}

TEST(SacReader, refusesASampleIntervalThatIsNotAboveZero) {
  const auto with = [](float delta) { return refusal(SacBytes().number(SacBytes::kDelta, delta)); };
  EXPECT_EQ(with(0), "delta at byte 0: found 0, expected a finite number above 0");
  EXPECT_EQ(with(-0.5F), "delta at byte 0: found -0.5, expected a finite number above 0");
  EXPECT_EQ(with(-12345), "delta at byte 0: found -12345, expected a finite number above 0");
  EXPECT_EQ(with(kNaN), "delta at byte 0: found nan, expected a finite number above 0");
  EXPECT_EQ(with(kInfinity), "delta at byte 0: found inf, expected a finite number above 0");
}

TEST(SacReader, refusesAStartThatIsNotFinite) {
  EXPECT_EQ(refusal(SacBytes().number(SacBytes::kB, kNaN)), "b at byte 20: found nan, expected a finite number");
}

TEST(SacReader, refusesVersion7WithoutItsWholeFooter) {
  // The footer starts at 632 + 3 · 4 = 644.
  SacBytes sac(Order::Little, 7);
  sac.samples({1, 2, 3});
  EXPECT_EQ(refusal(sac), "footer at byte 644: found 0 bytes, expected 176");
  EXPECT_EQ(refusal(sac.footerWith(0, 1).bytes().chopped(1)), "footer at byte 644: found 175 bytes, expected 176");
}

TEST(SacReader, refusesAFooterWithDamagedTimes) {
  const auto with = [](int index, double value) {
    return refusal(SacBytes(Order::Big, 7).samples({1}).footerWith(index, value));
  };
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(with(0, 0), "footer delta at byte 636: found 0, expected a finite number above 0");
  EXPECT_EQ(with(0, nan), "footer delta at byte 636: found nan, expected a finite number above 0");
  EXPECT_EQ(with(0, 1e300), "footer delta at byte 636: found 1e+300, expected a finite number above 0");
  EXPECT_EQ(with(0, 1e-300), "footer delta at byte 636: found 1e-300, expected a finite number above 0");
  EXPECT_EQ(with(1, nan), "footer b at byte 644: found nan, expected a finite number");
}

TEST(SacReader, refusesEmptyContents) {
  EXPECT_EQ(refusal(QByteArray()), "the file is empty, expected a SAC header of 632 bytes");
}

TEST(SacReader, readsAFileAndRemembersItsFullPath) {
  const TemporaryFiles files;
  const QString path = files.write("ANMO.BHZ.SAC", SacBytes(Order::Big).samples({5, 6}).bytes());
  const auto result = readSac(path);
  ASSERT_TRUE(result) << result.error().toStdString();
  EXPECT_EQ((*result)->npts(), 2);
  EXPECT_EQ((*result)->path(), path);
  EXPECT_EQ((*result)->labelString(), QStringLiteral("ANMO.BHZ.SAC"));
  EXPECT_TRUE(QDir::isAbsolutePath((*result)->path()));
}

TEST(SacReader, namesTheFileInItsErrors) {
  const TemporaryFiles files;
  const QString path = files.write("100%1.sac", SacBytes().samples({1, 2}).bytes().chopped(8));
  EXPECT_EQ(readSac(path).error(), path + ": npts at byte 316: found 2, but the file holds 0 samples");
}

TEST(SacReader, refusesWhatIsNoFile) {
  const TemporaryFiles files;
  EXPECT_EQ(readSac(files.folder()).error(), files.folder() + ": is a folder, expected a file");
  const QString missing = files.path("missing.sac");
  EXPECT_EQ(readSac(missing).error(), missing + ": cannot be opened: No such file or directory");
  EXPECT_EQ(readSac(files.write("empty.sac", {})).error(),
            files.path("empty.sac") + ": the file is empty, expected a SAC header of 632 bytes");
}

TEST(SacReader, doesNotWaitForAPipe) {
  const TemporaryFiles files;
  const QString pipe = files.path("pipe");
  ASSERT_EQ(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
  EXPECT_EQ(readSac(pipe).error(), pipe + ": is not an ordinary file");
}
