#include "XOV_Graphics/seismic/io/mseed/MiniSeed3Record.h"

#include "XOV_Graphics/seismic/io/mseed/Crc32c.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedEncodings.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace xov {

namespace {

constexpr qsizetype kNanosecondByte = 4;
constexpr qsizetype kYearByte = 8;
constexpr qsizetype kDayByte = 10;
constexpr qsizetype kHourByte = 12;
constexpr qsizetype kMinuteByte = 13;
constexpr qsizetype kSecondByte = 14;
constexpr qsizetype kEncodingByte = 15;
constexpr qsizetype kRateByte = 16;
constexpr qsizetype kSampleCountByte = 24;
constexpr qsizetype kCheckValueByte = 28;
constexpr qsizetype kIdentifierLengthByte = 33;
constexpr qsizetype kExtraLengthByte = 34;
constexpr qsizetype kDataLengthByte = 36;

constexpr int kLastYear = 9999;
constexpr int kLongestYear = 366;
constexpr std::uint32_t kNanosecondsPerSecond = 1000000000;
constexpr std::int64_t kNanosecondsPerMicrosecond = 1000;
constexpr std::int64_t kMicrosecondsPerSecond = 1000000;
constexpr int kOpaqueEncoding = 100;
constexpr qint64 kLongestRecord = std::numeric_limits<int>::max();

constexpr int kIdentifierParts = 6;
constexpr int kChannelParts = 3; // the last ones: band, source and subsource

template <typename Number>
Number at(QByteArrayView bytes, qsizetype place) {
  return qFromLittleEndian<Number>(bytes.data() + place);
}

int byteAt(QByteArrayView bytes, qsizetype place) { return static_cast<unsigned char>(bytes[place]); }

QString readTime(QByteArrayView bytes, std::int64_t& startUs) {
  const int year = at<std::uint16_t>(bytes, kYearByte);
  const int day = at<std::uint16_t>(bytes, kDayByte);
  if (day > daysInYear(year)) return missingDay(day, year, int(kDayByte));
  const int clock = (byteAt(bytes, kHourByte) * 60 + byteAt(bytes, kMinuteByte)) * 60 + byteAt(bytes, kSecondByte);
  const std::int64_t nanoseconds = at<std::uint32_t>(bytes, kNanosecondByte);
  startUs = dayStartUs(year, day) + clock * kMicrosecondsPerSecond +
            (nanoseconds + kNanosecondsPerMicrosecond / 2) / kNanosecondsPerMicrosecond;
  return {};
}

QString readEncoding(QByteArrayView bytes, SampleFormat& format) {
  const int number = byteAt(bytes, kEncodingByte);
  switch (number) {
  case kOpaqueEncoding:
  case int(MiniSeedEncoding::Text):
    format.encoding = MiniSeedEncoding::Text;
    break;
  case int(MiniSeedEncoding::Int16):
  case int(MiniSeedEncoding::Int32):
  case int(MiniSeedEncoding::Float32):
  case int(MiniSeedEncoding::Float64):
  case int(MiniSeedEncoding::Steim1):
  case int(MiniSeedEncoding::Steim2):
    format.encoding = MiniSeedEncoding(number);
    break;
  default:
    return unknownEncoding(number);
  }
  format.isBigEndian = format.encoding == MiniSeedEncoding::Steim1 || format.encoding == MiniSeedEncoding::Steim2;
  format.isStated = true;
  return {};
}

QString readLength(QByteArrayView bytes, qint64 remaining, SampleFormat& format) {
  const qint64 dataOffset =
      kMiniSeed3HeaderBytes + byteAt(bytes, kIdentifierLengthByte) + at<std::uint16_t>(bytes, kExtraLengthByte);
  const qint64 length = dataOffset + at<std::uint32_t>(bytes, kDataLengthByte);
  if (length > remaining)
    return "the file ends after " + QString::number(remaining) + " of " + QString::number(length) + " bytes";
  if (length > kLongestRecord)
    return "record length: found " + QString::number(length) + ", expected at most " +
           QString::number(kLongestRecord);
  format.length = int(length);
  format.dataOffset = int(dataOffset);
  return {};
}

QString readIdentifier(QByteArrayView bytes, std::string& source) {
  const QByteArrayView identifier = bytes.sliced(kMiniSeed3HeaderBytes).first(byteAt(bytes, kIdentifierLengthByte));
  const auto isPrintable = [](char c) { return c >= ' ' && c <= '~'; };
  if (!std::all_of(identifier.begin(), identifier.end(), isPrintable))
    return QStringLiteral("source identifier at byte 40: found a character that is no letter, digit or mark");
  source.assign(identifier.begin(), identifier.end());
  return {};
}

QString readRecord(QByteArrayView bytes, qint64 remaining, MiniSeedRecord& record) {
  if (QString problem = readLength(bytes, remaining, record.format); !problem.isEmpty()) return problem;
  if (QString problem = readIdentifier(bytes, record.source); !problem.isEmpty()) return problem;
  if (QString problem = readTime(bytes, record.startUs); !problem.isEmpty()) return problem;
  if (QString problem = readEncoding(bytes, record.format); !problem.isEmpty()) return problem;
  const auto rate = at<double>(bytes, kRateByte);
  record.rateHz = rate < 0 ? -1 / rate : rate;
  const auto count = at<std::uint32_t>(bytes, kSampleCountByte);
  record.sampleCount = int(std::min<qint64>(count, kLongestRecord));
  return samplesProblem(record, kMiniSeed3HeaderBytes);
}

} // namespace

bool beginsMiniSeed3Record(QByteArrayView bytes) {
  if (bytes.size() < kMiniSeed3HeaderBytes || !bytes.startsWith(QByteArrayView("MS\x03"))) return false;
  const int year = at<std::uint16_t>(bytes, kYearByte);
  const int day = at<std::uint16_t>(bytes, kDayByte);
  return at<std::uint32_t>(bytes, kNanosecondByte) < kNanosecondsPerSecond && year >= 1 && year <= kLastYear &&
         day >= 1 && day <= kLongestYear && byteAt(bytes, kHourByte) <= 23 && byteAt(bytes, kMinuteByte) <= 59 &&
         byteAt(bytes, kSecondByte) <= 60;
}

MiniSeedFinding findMiniSeed3Record(QByteArrayView bytes, qint64 remaining) {
  MiniSeedFinding finding;
  if (!beginsMiniSeed3Record(bytes)) return finding;
  finding.record.version = 3;
  finding.problem = readRecord(bytes, remaining, finding.record);
  finding.kind = finding.problem.isEmpty() ? MiniSeedFinding::Kind::Record : MiniSeedFinding::Kind::Damaged;
  return finding;
}

QString checkValueProblem(QByteArrayView bytes) {
  constexpr qsizetype behind = kCheckValueByte + qsizetype(sizeof(std::uint32_t));
  const auto stated = at<std::uint32_t>(bytes, kCheckValueByte);
  const char zeros[sizeof(std::uint32_t)] = {};
  const std::uint32_t head = crc32c({zeros, std::size(zeros)}, crc32c(bytes.first(kCheckValueByte)));
  const std::uint32_t found = crc32c(bytes.sliced(behind), head);
  if (found == stated) return {};
  return QStringLiteral("check value at byte 28: found 0x%1, but its bytes give 0x%2")
      .arg(stated, 8, 16, QLatin1Char('0'))
      .arg(found, 8, 16, QLatin1Char('0'));
}

ChannelCodes sourceCodes(QByteArrayView identifier) {
  const QString all = QString::fromLatin1(identifier);
  const QStringList parts = all.mid(all.indexOf(QLatin1Char(':')) + 1).split(QLatin1Char('_'));
  if (parts.size() != kIdentifierParts) return {QString(), all, QString(), QString()};
  const QStringList channel = parts.mid(kIdentifierParts - kChannelParts);
  const bool isShort = std::all_of(channel.begin(), channel.end(), [](const QString& c) { return c.size() <= 1; });
  return {parts[0], parts[1], parts[2], channel.join(isShort ? QString() : QStringLiteral("_"))};
}

} // namespace xov
