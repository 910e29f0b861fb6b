#include "XOV_Graphics/seismic/SacHeader.h"

#include "XOV_Graphics/seismic/MonthDate.h"

#include <QTime>

#include <type_traits>

namespace xov {

static_assert(std::is_standard_layout_v<SacHeader> && std::is_trivially_copyable_v<SacHeader>);

namespace {

constexpr qint64 kMillisecondsPerSecond = 1000;
constexpr qint64 kSecondsPerMinute = 60;
constexpr qint64 kMinutesPerHour = 60;
constexpr std::int32_t kLastYear = 9999; // four digits, so that a date has one text form

/// The value, 0 when it is not set; false when it lies outside 0 … last.
bool takeField(std::int32_t field, std::int32_t last, qint64& value) {
  value = field == kSacUndefinedInteger ? 0 : field;
  return value >= 0 && value <= last;
}

} // namespace

QString sacFieldText(std::string_view bytes) {
  const QString text =
      QString::fromLatin1(bytes.data(), qsizetype(std::min(bytes.find('\0'), bytes.size()))).trimmed();
  return text == QLatin1String(kUndefinedLabel) ? QString() : text;
}

QDateTime referenceTime(const SacHeader& header) {
  int month = 0;
  int day = 0;
  monthdate(header.nzyear, header.nzjday, month, day);
  if (month == 0 || header.nzyear > kLastYear) return {};
  qint64 hour = 0;
  qint64 minute = 0;
  qint64 second = 0;
  qint64 millisecond = 0;
  const bool inRange = takeField(header.nzhour, 23, hour) && takeField(header.nzmin, 59, minute) &&
                       takeField(header.nzsec, 60, second) && takeField(header.nzmsec, 999, millisecond);
  if (!inRange) return {};
  const qint64 seconds = (hour * kMinutesPerHour + minute) * kSecondsPerMinute + second;
  const QDateTime midnight(QDate(header.nzyear, month, day), QTime(0, 0), Qt::UTC);
  return midnight.addMSecs(seconds * kMillisecondsPerSecond + millisecond);
}

void setReferenceTime(SacHeader& header, const QDateTime& time) {
  const QDateTime utc = time.toUTC();
  const bool known = time.isValid();
  const QDate date = utc.date();
  const QTime clock = utc.time();
  header.nzyear = known ? date.year() : kSacUndefinedInteger;
  header.nzjday = known ? date.dayOfYear() : kSacUndefinedInteger;
  header.nzhour = known ? clock.hour() : kSacUndefinedInteger;
  header.nzmin = known ? clock.minute() : kSacUndefinedInteger;
  header.nzsec = known ? clock.second() : kSacUndefinedInteger;
  header.nzmsec = known ? clock.msec() : kSacUndefinedInteger;
}

} // namespace xov
