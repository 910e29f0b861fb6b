#include "XOV_Graphics/seismic/io/mseed/MiniSeedEncodings.h"

#include "XOV_Graphics/base/Numbers.h"

#include <algorithm>
#include <chrono>

namespace xov {

namespace {

// Beyond these, intervals and ends of records leave the numbers that hold them; no instrument comes near.
constexpr double kLowestRateHz = 1e-6;
constexpr double kHighestRateHz = 1e9;

constexpr qint64 kSteimFrameBytes = 64;
constexpr qint64 kSteimFrameWords = 15;      // of 16; the first one says what the others hold
constexpr qint64 kSteimIntegrationWords = 2; // of the first frame: its first and its last sample

/// An encoding: how many bytes a sample takes, or for those in frames, how many samples a word holds at most.
struct EncodingRow {
  MiniSeedEncoding encoding;
  const char* name;
  int sampleBytes;
  int samplesPerWord;
};

using Encoding = MiniSeedEncoding;
constexpr EncodingRow kEncodings[] = {
    {Encoding::Text, "text", 0, 0},
    {Encoding::Int16, "16-bit integers", 2, 0},
    {Encoding::Int32, "32-bit integers", 4, 0},
    {Encoding::Float32, "32-bit floats", 4, 0},
    {Encoding::Float64, "64-bit floats", 8, 0},
    {Encoding::Steim1, "Steim1", 0, 4},
    {Encoding::Steim2, "Steim2", 0, 7},
    {Encoding::Geoscope24, "GEOSCOPE 24-bit", 3, 0},
    {Encoding::Geoscope16Gain3, "GEOSCOPE 16-bit, 3-bit gain", 2, 0},
    {Encoding::Geoscope16Gain4, "GEOSCOPE 16-bit, 4-bit gain", 2, 0},
    {Encoding::Cdsn, "CDSN", 2, 0},
    {Encoding::Sro, "SRO", 2, 0},
    {Encoding::Dwwssn, "DWWSSN", 2, 0},
};

const EncodingRow* encodingRow(int number) {
  for (const EncodingRow& row : kEncodings) {
    if (int(row.encoding) == number) return &row;
  }
  return nullptr;
}

/// How many samples fit into that many bytes.
qint64 roomFor(const EncodingRow& row, qint64 bytes) {
  if (row.sampleBytes > 0) return bytes / row.sampleBytes;
  const qint64 words = bytes / kSteimFrameBytes * kSteimFrameWords - kSteimIntegrationWords;
  return std::max<qint64>(words, 0) * row.samplesPerWord;
}

} // namespace

std::optional<MiniSeedEncoding> miniSeedEncoding(int number) {
  const EncodingRow* const row = encodingRow(number);
  return row ? std::optional(row->encoding) : std::nullopt;
}

QString samplesProblem(const MiniSeedRecord& record, qsizetype headerBytes) {
  const SampleFormat& format = record.format;
  if (record.sampleCount == 0 || format.encoding == Encoding::Text) return {};
  if (!(record.rateHz >= kLowestRateHz && record.rateHz <= kHighestRateHz))
    return "sample rate: found " + numberText(record.rateHz) + " Hz, expected a number above 0";
  if (format.dataOffset < headerBytes || format.dataOffset > format.length)
    return "samples: begin at byte " + QString::number(format.dataOffset) + " of " + QString::number(format.length);
  const EncodingRow& row = *encodingRow(int(format.encoding));
  const qint64 room = roomFor(row, format.length - format.dataOffset);
  if (record.sampleCount > room)
    return "number of samples: found " + QString::number(record.sampleCount) + ", but " +
           QString::number(format.length) + " bytes have room for " + QString::number(room) + " as " + row.name;
  return {};
}

QString unknownEncoding(int number) { return "encoding: found " + QString::number(number) + ", which is not known"; }

int daysInYear(int year) {
  constexpr int common = 365;
  return std::chrono::year(year).is_leap() ? common + 1 : common;
}

QString missingDay(int day, int year, int place) {
  return "day at byte " + QString::number(place) + ": found " + QString::number(day) + ", but " +
         QString::number(year) + " has " + QString::number(daysInYear(year));
}

std::int64_t dayStartUs(int year, int day) {
  // Qt's dates take ten times as long, which counts where records are many and small.
  using namespace std::chrono;
  const sys_days newYear = std::chrono::year(year) / January / 1;
  return microseconds((newYear + days(day - 1)).time_since_epoch()).count();
}

} // namespace xov
