#include "XOV_Graphics/seismic/io/sac/SacWriter.h"

#include "XOV_Graphics/seismic/io/sac/SacReader.h"
#include "tests/seismic/SacBytes.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

using namespace xov;
using test::Order;
using test::SacBytes;
using test::TemporaryFiles;
using Form = SacWriteOptions::Form;

namespace {

struct Case {
  const char* name;
  SacWriteOptions options;
};

const Case kCases[] = {
    {"Version6Little", {Form::BinaryVersion6, QSysInfo::LittleEndian}},
    {"Version6Big", {Form::BinaryVersion6, QSysInfo::BigEndian}},
    {"Version7Little", {Form::BinaryVersion7, QSysInfo::LittleEndian}},
    {"Version7Big", {Form::BinaryVersion7, QSysInfo::BigEndian}},
    {"Alphanumeric", {Form::Alphanumeric, QSysInfo::ByteOrder}},
};

SacHeader fullHeader() {
  SacHeader header;
  header.delta = 0.1F;
  header.b = -1.5F;
  header.o = -66.3334F;
  header.a = 301.50601F;
  header.t3 = 1e-20F;
  header.user4 = -9.87654321e-12F;
  header.evla = 38.32F;
  header.evlo = 142.37F;
  header.nevid = 1234567890;
  header.norid = -987654321;
  header.iinst = 7;
  header.lcalda = 0;
  header.kstnm = "TLY";
  header.kevnm = "FUNCGEN: IMPULSE";
  header.khole = "00";
  header.ka = "P";
  header.kt3 = "ABCDEFGH";
  header.kf = "end";
  header.kcmpnm = "BHZ";
  header.knetwk = "II";
  setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(5, 47, 30, 33), Qt::UTC));
  return header;
}

std::vector<float> awkwardSamples() {
  constexpr float kLowest = std::numeric_limits<float>::lowest();
  constexpr float kTiniest = std::numeric_limits<float>::denorm_min();
  // More than one chunk of the writer, and every kind of number.
  std::vector<float> samples(40003);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = std::sin(float(i)) * 1e5F;
  const float special[] = {0, -0.0F, 1, 0.1F, 16777216, kLowest, -kLowest, kTiniest, NAN, INFINITY, -INFINITY};
  std::copy(std::begin(special), std::end(special), samples.begin() + 17);
  return samples;
}

std::uint32_t bits(float value) { return std::bit_cast<std::uint32_t>(value); }

/// Equal to the bit; a NaN need only be one.
void expectSameSamples(const SacSeismogram& left, const SacSeismogram& right) {
  ASSERT_EQ(left.npts(), right.npts());
  int differences = 0;
  for (int i = 0; i < left.npts(); ++i) {
    const float a = left.GetSacSeis()[i];
    const float b = right.GetSacSeis()[i];
    differences += bits(a) != bits(b) && !(std::isnan(a) && std::isnan(b));
  }
  EXPECT_EQ(differences, 0);
}

QByteArray written(const SacSeismogram& trace, const SacWriteOptions& options) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  const Status status = writeSac(trace, buffer, QStringLiteral("buffer"), options);
  EXPECT_TRUE(status) << status.error().toStdString();
  return buffer.data();
}

SacHeader simpleHeader() {
  SacHeader header;
  header.delta = 1;
  header.b = 0;
  return header;
}

} // namespace

class SacWriterForms : public ::testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(AllForms, SacWriterForms, ::testing::ValuesIn(kCases),
                         [](const auto& each) { return each.param.name; });

TEST_P(SacWriterForms, writesWhatTheReaderReadsBack) {
  const TemporaryFiles files;
  const QString path = files.path("round.sac");
  const SacSeismogram trace(fullHeader(), awkwardSamples());
  const Status status = writeSac(trace, path, GetParam().options);
  ASSERT_TRUE(status) << status.error().toStdString();
  const auto back = readSac(path);
  ASSERT_TRUE(back) << back.error().toStdString();

  expectSameSamples(trace, **back);
  SacHeader expected = *trace.GetSacHeader();
  expected.nvhdr = GetParam().options.form == Form::BinaryVersion7 ? 7 : 6;
  expected.iftype = 1;
  expected.leven = 1;
  expected.depmen = (*back)->GetSacHeader()->depmen;
  EXPECT_EQ(std::memcmp(&expected, (*back)->GetSacHeader(), sizeof(SacHeader)), 0);
}

TEST_P(SacWriterForms, writesATraceWithoutSamples) {
  const auto back = parseSac(written(SacSeismogram(simpleHeader(), {}), GetParam().options), QStringLiteral("x"));
  ASSERT_TRUE(back) << back.error().toStdString();
  EXPECT_EQ((*back)->npts(), 0);
}

TEST_P(SacWriterForms, refusesASampleIntervalThatNoReaderAccepts) {
  const TemporaryFiles files;
  const QString path = files.path("bad.sac");
  SacHeader header;
  header.delta = 0;
  EXPECT_EQ(writeSac(SacSeismogram(header, {1}), path, GetParam().options).error(),
            path + ": delta: found 0, expected a finite number above 0");
  EXPECT_FALSE(QFile::exists(path));
}

TEST(SacWriter, placesEveryByteWhereTheFormatWantsIt) {
  for (const Order order : {Order::Little, Order::Big}) {
    SacHeader header = simpleHeader();
    header.kstnm = "TLY";
    header.nzyear = 2011;
    const QByteArray expected = SacBytes(order)
                                    .number(1, -2) // depmin
                                    .number(2, 3)  // depmax
                                    .number(SacBytes::kE, 2)
                                    .number(56, 1) // depmen: (2 + 3 - 2) / 3
                                    .integer(SacBytes::kNzyear, 2011)
                                    .text(SacBytes::kStation, 8, "TLY")
                                    .samples({2, 3, -2})
                                    .bytes();
    const QSysInfo::Endian endian = order == Order::Little ? QSysInfo::LittleEndian : QSysInfo::BigEndian;
    EXPECT_EQ(written(SacSeismogram(header, {2, 3, -2}), {Form::BinaryVersion6, endian}), expected);
  }
}

TEST(SacWriter, keepsDoublePrecisionInVersion7) {
  SacFooter precise;
  precise.delta = 0.1;
  precise.b = 1e6 + 0.1;
  precise.t5 = 1.0 / 3.0;
  const SacSeismogram trace(simpleHeader(), {1, 2, 3}, QString(), precise);
  const auto back = parseSac(written(trace, {Form::BinaryVersion7, QSysInfo::BigEndian}), QStringLiteral("x"));
  ASSERT_TRUE(back) << back.error().toStdString();
  EXPECT_EQ((*back)->preciseValues().delta, 0.1);
  EXPECT_EQ((*back)->preciseValues().b, 1e6 + 0.1);
  EXPECT_EQ((*back)->preciseValues().t5, 1.0 / 3.0);
  EXPECT_EQ((*back)->preciseValues().stla, -12345.0);
}

TEST(SacWriter, describesOnlyFiniteSamples) {
  const QByteArray bytes =
      written(SacSeismogram(simpleHeader(), {NAN, 4, INFINITY, -2}), {Form::BinaryVersion6, QSysInfo::ByteOrder});
  SacHeader header;
  std::memcpy(&header, bytes.constData(), sizeof(header));
  EXPECT_EQ(header.depmin, -2);
  EXPECT_EQ(header.depmax, 4);
  EXPECT_EQ(header.depmen, 1);
}

TEST(SacWriter, describesNoSamplesAsUnset) {
  const QByteArray bytes = written(SacSeismogram(simpleHeader(), {NAN}), {Form::BinaryVersion6, QSysInfo::ByteOrder});
  SacHeader header;
  std::memcpy(&header, bytes.constData(), sizeof(header));
  EXPECT_EQ(header.depmin, -12345.0F);
  EXPECT_EQ(header.depmax, -12345.0F);
  EXPECT_EQ(header.depmen, -12345.0F);
}

TEST(SacWriter, keepsAlphanumericColumnsApart) {
  SacHeader header = simpleHeader();
  header.kt1 = std::string_view("a\nb\0c", 5);
  const float negativeNineDigits =
      -1.00000205e-27F; // its neighbours are 1e-34 off: eight digits do not tell them apart
  const QByteArray text = written(SacSeismogram(header, std::vector<float>(7, negativeNineDigits)),
                                  {Form::Alphanumeric, QSysInfo::ByteOrder});
  const QByteArrayList lines = text.split('\n');
  ASSERT_EQ(lines.size(), 33); // 30 of header, 2 of samples, nothing after the last line end
  for (int i = 0; i < 14; ++i)
    EXPECT_EQ(lines[i].size(), 75) << i;
  for (int i = 14; i < 22; ++i)
    EXPECT_EQ(lines[i].size(), 50) << i;
  for (int i = 22; i < 30; ++i)
    EXPECT_EQ(lines[i].size(), 24) << i;
  EXPECT_EQ(lines[0].first(25), "              1 -1.000002"); // delta, then depmin in eight digits after a blank
  EXPECT_EQ(lines[0].sliced(26, 4), "e-27");
  EXPECT_EQ(lines[30].simplified().split(' ').size(), 5);
  EXPECT_EQ(lines[31].size(), 30);
}

TEST(SacWriter, separatesByBlanksTheAlphanumericIntegersThatTheirColumnsCannotHold) {
  SacHeader header = simpleHeader();
  header.nevid = -2147483647; // eleven characters, on line 16 with nzmsec, nvhdr, norid and npts
  header.norid = 1234567890;
  header.nspts = 1234567890; // ten, on line 17: fills its columns
  const QByteArray text = written(SacSeismogram(header, {}), {Form::Alphanumeric, QSysInfo::ByteOrder});
  const QByteArrayList lines = text.split('\n');
  EXPECT_EQ(lines[15], " -12345 6 1234567890 -2147483647 0");
  EXPECT_EQ(lines[16], "1234567890    -12345    -12345    -12345    -12345");
  const auto back = parseSac(text, QStringLiteral("x"));
  ASSERT_TRUE(back) << back.error().toStdString();
  EXPECT_EQ((*back)->GetSacHeader()->nevid, -2147483647);
  EXPECT_EQ((*back)->GetSacHeader()->norid, 1234567890);
}

TEST(SacWriter, keepsBlanksInsideAlphanumericTexts) {
  SacHeader header = simpleHeader();
  header.kt1 = "BC DEFGH"; // fills its columns and touches the next text
  header.kt2 = "IJ";
  header.kt0 = "A";
  const auto back =
      parseSac(written(SacSeismogram(header, {}), {Form::Alphanumeric, QSysInfo::ByteOrder}), QStringLiteral("x"));
  ASSERT_TRUE(back) << back.error().toStdString();
  EXPECT_EQ((*back)->pickLabelWithKey(0), QStringLiteral("A"));
  EXPECT_EQ((*back)->pickLabelWithKey(1), QStringLiteral("BC DEFGH"));
  EXPECT_EQ((*back)->pickLabelWithKey(2), QStringLiteral("IJ"));
}

TEST(SacWriter, writesAlphanumericNumbersWithoutTheLocale) {
  SacHeader header = simpleHeader();
  header.delta = 0.25F;
  const QByteArray text = written(SacSeismogram(header, {1}), {Form::Alphanumeric, QSysInfo::ByteOrder});
  EXPECT_TRUE(text.startsWith("           0.25")) << text.first(20).toStdString();
}

TEST(SacWriter, leavesAnExistingFileWhenItFails) {
  const TemporaryFiles files;
  const QString path = files.write("kept.sac", "precious");
  SacHeader header;
  header.delta = -1;
  EXPECT_FALSE(writeSac(SacSeismogram(header, {1}), path));
  EXPECT_EQ(files.read(path), QByteArray("precious"));
  EXPECT_EQ(QDir(files.folder()).entryList(QDir::Files).size(), 1);
}

TEST(SacWriter, replacesAnExistingFile) {
  const TemporaryFiles files;
  const QString path = files.write("old.sac", QByteArray(100000, 'x'));
  ASSERT_TRUE(writeSac(SacSeismogram(simpleHeader(), {1, 2}), path));
  EXPECT_EQ(files.read(path).size(), 632 + 8);
}

TEST(SacWriter, saysInOneLineWhyItCannotWrite) {
  const TemporaryFiles files;
  const QString path = files.path("no such folder/x.sac");
  const Status status = writeSac(SacSeismogram(simpleHeader(), {1}), path);
  EXPECT_EQ(status.error(), path + ": No such file or directory");
}

TEST(SacWriter, reportsADeviceThatTakesNothing) {
  struct FullDevice : QIODevice {
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64) override {
      setErrorString(QStringLiteral("no space left"));
      return -1;
    }
  };
  FullDevice full;
  ASSERT_TRUE(full.open(QIODevice::WriteOnly));
  for (const Case& each : kCases) {
    const Status status = writeSac(SacSeismogram(simpleHeader(), {1}), full, QStringLiteral("full"), each.options);
    EXPECT_EQ(status.error(), "full: cannot be written: no space left");
  }
}
