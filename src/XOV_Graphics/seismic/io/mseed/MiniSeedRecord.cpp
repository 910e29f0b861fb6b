#include "XOV_Graphics/seismic/io/mseed/MiniSeedRecord.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeed3Record.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedEncodings.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr qsizetype kQualityByte = 6;
constexpr qsizetype kCodesByte = 8;
constexpr qsizetype kYearByte = 20;
constexpr qsizetype kDayByte = 22;
constexpr qsizetype kHourByte = 24;
constexpr qsizetype kMinuteByte = 25;
constexpr qsizetype kSecondByte = 26;
constexpr qsizetype kFractionByte = 28;
constexpr qsizetype kSampleCountByte = 30;
constexpr qsizetype kRateFactorByte = 32;
constexpr qsizetype kRateMultiplierByte = 34;
constexpr qsizetype kActivityByte = 36;
constexpr qsizetype kCorrectionByte = 40;
constexpr qsizetype kDataOffsetByte = 44;
constexpr qsizetype kChainByte = 46;

constexpr int kCorrectionApplied = 0x02;
constexpr int kFractionsPerSecond = 10000;
constexpr std::int64_t kMicrosecondsPerFraction = 100;
constexpr std::int64_t kMicrosecondsPerSecond = 1000000;

// Years that digital recordings can be of; in the other byte order they are none.
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2100;
constexpr int kLongestYear = 366;

constexpr int kRateBlockette = 100;
constexpr int kFormatBlockette = 1000;
constexpr int kTimingBlockette = 1001;
constexpr qsizetype kBlocketteHeaderBytes = 4;
constexpr qsizetype kKnownBlocketteBytes = 8; // of those three, as far as they are read
constexpr int kMostBlockettes = 255;          // the fixed header counts them in a byte

constexpr int kShortestExponent = 7;
constexpr int kLongestExponent = 20;
static_assert(kLongestMiniSeedRecord == qsizetype(1) << kLongestExponent);

using Encoding = MiniSeedEncoding;

/// The numbers of a header in its byte order.
class HeaderNumbers {
public:
  HeaderNumbers(QByteArrayView bytes, QSysInfo::Endian order) : bytes_(bytes), order_(order) {}

  template <typename Number>
  Number at(qsizetype byte) const {
    const char* const place = bytes_.data() + byte;
    return order_ == QSysInfo::BigEndian ? qFromBigEndian<Number>(place) : qFromLittleEndian<Number>(place);
  }
  int byteAt(qsizetype byte) const { return static_cast<unsigned char>(bytes_[byte]); }
  qsizetype size() const { return bytes_.size(); }
  QByteArrayView bytes() const { return bytes_; }
  QSysInfo::Endian order() const { return order_; }

private:
  QByteArrayView bytes_;
  QSysInfo::Endian order_;
};

bool hasPossibleDate(const HeaderNumbers& header) {
  const int year = header.at<std::uint16_t>(kYearByte);
  const int day = header.at<std::uint16_t>(kDayByte);
  return year >= kFirstYear && year <= kLastYear && day >= 1 && day <= kLongestYear;
}

/// The order in which the date can be one; big-endian, the usual one, where both do.
std::optional<QSysInfo::Endian> headerOrder(QByteArrayView bytes) {
  for (const QSysInfo::Endian order : {QSysInfo::BigEndian, QSysInfo::LittleEndian}) {
    if (hasPossibleDate({bytes, order})) return order;
  }
  return {};
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isSequenceByte(char c) { return isDigit(c) || c == ' ' || c == '\0'; }
bool isCodeByte(char c) { return (c >= ' ' && c <= '~') || c == '\0'; }
bool isQuality(char c) { return c == 'D' || c == 'R' || c == 'Q' || c == 'M'; }

bool hasPossibleTime(const HeaderNumbers& header) {
  return header.byteAt(kHourByte) <= 23 && header.byteAt(kMinuteByte) <= 59 && header.byteAt(kSecondByte) <= 60;
}

/// Sequence number, quality and codes as a record begins with them.
bool beginsWithCodes(QByteArrayView bytes) {
  if (bytes.size() < kMiniSeedHeaderBytes || !isQuality(bytes[kQualityByte])) return false;
  const char reserved = bytes[kQualityByte + 1];
  const QByteArrayView sequence = bytes.first(kQualityByte);
  const QByteArrayView codes = bytes.sliced(kCodesByte, kYearByte - kCodesByte);
  return (reserved == ' ' || reserved == '\0') && std::all_of(sequence.begin(), sequence.end(), isSequenceByte) &&
         std::all_of(codes.begin(), codes.end(), isCodeByte);
}

/// The order of the header of a record, if one begins here.
std::optional<QSysInfo::Endian> recordOrder(QByteArrayView bytes) {
  if (!beginsWithCodes(bytes) || !hasPossibleTime({bytes, QSysInfo::BigEndian})) return {};
  return headerOrder(bytes);
}

/// What the three blockettes that matter say.
struct Blockettes {
  std::optional<qsizetype> format; ///< where blockette 1000 begins
  double rateHz = 0;
  int microseconds = 0;
};

/// Walks the chain; gives the problem it has, if any. Where the chain breaks off, by a place outside of the record or
/// one that is not ahead, what came before counts, as long as blockette 1000 did.
QString readBlockettes(const HeaderNumbers& header, Blockettes& found) {
  qsizetype place = header.at<std::uint16_t>(kChainByte);
  for (int count = 0; place != 0; ++count) {
    const auto where = [place] { return "blockette at byte " + QString::number(place); };
    if (place < kMiniSeedHeaderBytes || place > header.size() - kKnownBlocketteBytes)
      return found.format ? QString() : where() + ": lies outside of the record";
    if (count == kMostBlockettes) return where() + ": more than " + QString::number(kMostBlockettes) + " blockettes";
    const int type = header.at<std::uint16_t>(place);
    const qsizetype next = header.at<std::uint16_t>(place + 2);
    if (type == kFormatBlockette) {
      if (found.format) return where() + ": a second blockette 1000";
      found.format = place;
    } else if (type == kRateBlockette) {
      found.rateHz = double(header.at<float>(place + kBlocketteHeaderBytes));
    } else if (type == kTimingBlockette) {
      found.microseconds = std::int16_t(header.at<std::int8_t>(place + kBlocketteHeaderBytes + 1)); // signed
    }
    if (next != 0 && next < place + kBlocketteHeaderBytes)
      return found.format ? QString() : where() + ": the next one is not behind it";
    place = next;
  }
  return {};
}

/// The rate of factor and multiplier: a negative one divides.
double nominalRate(int factor, int multiplier) {
  if (factor == 0) return 0;
  const double base = factor > 0 ? factor : -1.0 / factor;
  if (multiplier == 0) return base;
  return multiplier > 0 ? base * multiplier : -base / multiplier;
}

/// The time of the first sample; its problem, if any.
QString readStart(const HeaderNumbers& header, int microseconds, std::int64_t& startUs) {
  const int year = header.at<std::uint16_t>(kYearByte);
  const int day = header.at<std::uint16_t>(kDayByte);
  const int fraction = header.at<std::uint16_t>(kFractionByte);
  if (day > daysInYear(year)) return missingDay(day, year, int(kDayByte));
  if (fraction >= kFractionsPerSecond)
    return "fraction of a second at byte 28: found " + QString::number(fraction) + ", expected less than 10000";
  const int clock = (header.byteAt(kHourByte) * 60 + header.byteAt(kMinuteByte)) * 60 + header.byteAt(kSecondByte);
  startUs =
      dayStartUs(year, day) + clock * kMicrosecondsPerSecond + fraction * kMicrosecondsPerFraction + microseconds;
  if ((header.byteAt(kActivityByte) & kCorrectionApplied) == 0)
    startUs += header.at<std::int32_t>(kCorrectionByte) * kMicrosecondsPerFraction;
  return {};
}

/// Reads what tells how the samples are stored; gives the problem, if any. Recorders that knew no blockette 1000
/// wrote Steim1 in the order of the header.
QString readEncoding(const HeaderNumbers& header, std::optional<qsizetype> format, MiniSeedRecord& record) {
  record.format.isStated = format.has_value();
  record.format.encoding = Encoding::Steim1;
  record.format.isBigEndian = header.order() == QSysInfo::BigEndian;
  if (!format) return {};
  const int number = header.byteAt(*format + kBlocketteHeaderBytes);
  const std::optional<Encoding> encoding = miniSeedEncoding(number);
  if (!encoding) return unknownEncoding(number);
  record.format.encoding = *encoding;
  record.format.isBigEndian = header.byteAt(*format + kBlocketteHeaderBytes + 1) != 0;
  return {};
}

/// Reads the record's length; gives the problem it has, if any, and then leaves the length 0.
QString readLength(const HeaderNumbers& header, qsizetype format, qint64 remaining, int& length) {
  const int exponent = header.byteAt(format + kBlocketteHeaderBytes + 2);
  if (exponent < kShortestExponent || exponent > kLongestExponent)
    return "record length: found 2 to the power of " + QString::number(exponent) + ", expected 7 to 20";
  const int claimed = 1 << exponent;
  if (claimed > remaining)
    return "the file ends after " + QString::number(remaining) + " of " + QString::number(claimed) + " bytes";
  length = claimed;
  return {};
}

/// The length of a record that does not state it: up to the next record, or the end of the file. Gives the problem,
/// if any, and then leaves the length 0.
QString findLength(QByteArrayView bytes, qint64 remaining, int& length) {
  for (int exponent = kShortestExponent; exponent <= kLongestExponent; ++exponent) {
    const qsizetype candidate = qsizetype(1) << exponent;
    const bool isFollowed = candidate < bytes.size() && beginsMiniSeedRecord(bytes.sliced(candidate));
    if (candidate == remaining || isFollowed) {
      length = int(candidate);
      return {};
    }
  }
  return QStringLiteral("no blockette 1000, which says how its samples are stored, and no record behind it");
}

QString readRecord(const HeaderNumbers& header, qint64 remaining, MiniSeedRecord& record) {
  Blockettes blockettes;
  if (QString problem = readBlockettes(header, blockettes); !problem.isEmpty()) return problem;
  if (QString problem = blockettes.format ? readLength(header, *blockettes.format, remaining, record.format.length)
                                          : findLength(header.bytes(), remaining, record.format.length);
      !problem.isEmpty())
    return problem;
  record.sampleCount = header.at<std::uint16_t>(kSampleCountByte);
  record.rateHz = blockettes.rateHz > 0 ? blockettes.rateHz
                                        : nominalRate(header.at<std::int16_t>(kRateFactorByte),
                                                      header.at<std::int16_t>(kRateMultiplierByte));
  if (QString problem = readStart(header, blockettes.microseconds, record.startUs); !problem.isEmpty())
    return problem;
  if (QString problem = readEncoding(header, blockettes.format, record); !problem.isEmpty()) return problem;
  record.format.dataOffset = header.at<std::uint16_t>(kDataOffsetByte);
  return samplesProblem(record, kMiniSeedHeaderBytes);
}

} // namespace

ChannelCodes channelCodes(const MiniSeedRecord& record) {
  if (record.version == 3) return sourceCodes(record.source);
  const auto text = [&](int first, int count) {
    return QString::fromLatin1(record.source.data() + first, count).trimmed();
  };
  return {text(10, 2), text(0, 5), text(5, 2), text(7, 3)};
}

bool beginsMiniSeedRecord(QByteArrayView bytes) { return recordOrder(bytes).has_value(); }

QString impossibleTime(QByteArrayView bytes) {
  // Six digits: with blanks alone, too much else would look like a header.
  if (!beginsWithCodes(bytes) || !std::all_of(bytes.begin(), bytes.begin() + kQualityByte, isDigit)) return {};
  const std::optional<QSysInfo::Endian> order = headerOrder(bytes);
  const HeaderNumbers header(bytes, order.value_or(QSysInfo::BigEndian));
  const auto problem = [](const char* field, qsizetype byte, int found, int least, int most) {
    if (least <= found && found <= most) return QString();
    return QStringLiteral("%1 at byte %2: found %3, expected %4 to %5")
        .arg(QLatin1String(field))
        .arg(byte)
        .arg(found)
        .arg(least)
        .arg(most);
  };
  const QString problems[] = {
      problem("year", kYearByte, header.at<std::uint16_t>(kYearByte), kFirstYear, kLastYear),
      problem("day of the year", kDayByte, header.at<std::uint16_t>(kDayByte), 1, kLongestYear),
      problem("hour", kHourByte, header.byteAt(kHourByte), 0, 23),
      problem("minute", kMinuteByte, header.byteAt(kMinuteByte), 0, 59),
      problem("second", kSecondByte, header.byteAt(kSecondByte), 0, 60),
  };
  const auto first = std::ranges::find_if(problems, [](const QString& text) { return !text.isEmpty(); });
  return first == std::end(problems) ? QString() : *first;
}

MiniSeedFinding findMiniSeedRecord(QByteArrayView bytes, qint64 remaining) {
  MiniSeedFinding finding;
  const std::optional<QSysInfo::Endian> order = recordOrder(bytes);
  if (!order) return finding;
  const HeaderNumbers header(bytes, *order);
  MiniSeedRecord& record = finding.record;
  record.source.assign(bytes.begin() + kCodesByte, bytes.begin() + kYearByte);
  std::ranges::replace(record.source, '\0', ' ');
  finding.problem = readRecord(header, remaining, record);
  finding.kind = finding.problem.isEmpty() ? MiniSeedFinding::Kind::Record : MiniSeedFinding::Kind::Damaged;
  return finding;
}

} // namespace xov
