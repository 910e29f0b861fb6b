#include "XOV_Graphics/views/timeline/ReferenceTexts.h"

#include <QLocale>

namespace xov {

namespace {

QString formatted(const QDateTime& instant, const char* format) {
  return QLocale::c().toString(instant, QLatin1String(format));
}

QDateTime localTime(const QDateTime& instant, const QTimeZone& zone) {
  return zone.isValid() ? instant.toTimeZone(zone) : instant.toLocalTime();
}

} // namespace

ReferenceTexts longReferenceTexts(const QDateTime& instant, const QTimeZone& zone) {
  if (!instant.isValid()) return {};
  const QDateTime utc = instant.toUTC();
  return {formatted(utc, "dd MMMM, yyyy"), formatted(utc, "HH:mm:ss 'UTC'"),
          formatted(localTime(instant, zone), "hh:mm:ss AP")};
}

ReferenceTexts shortReferenceTexts(const QDateTime& instant, const QTimeZone& zone) {
  if (!instant.isValid()) return {};
  const QDateTime utc = instant.toUTC();
  const QDateTime local = localTime(instant, zone);
  return {formatted(utc, "dd MMM, yyyy"), formatted(utc, "HH:mm:ss 'UTC'"),
          formatted(local, "HH:mm:ss ") + local.timeZoneAbbreviation()};
}

} // namespace xov
