#include "XOV_Graphics/views/timeline/HourLabels.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kLabelGap = 8; // to the left of the rows
constexpr int kSecondsPerHour = 3600;
constexpr int kHoursPerDay = 24;
constexpr double kMillisecondsPerSecond = 1000;
constexpr double kLongestPageMs = 1e15; // 30,000 years

// Invalid when the date lies too far off.
QDateTime dateAfter(const QDateTime& start, double seconds) {
  const double milliseconds = std::floor(seconds * kMillisecondsPerSecond);
  if (!(std::abs(milliseconds) < kLongestPageMs)) return {};
  return start.addMSecs(std::int64_t(milliseconds));
}

bool holdsWholeHours(float seconds) { return std::isfinite(seconds) && std::fmod(seconds, kSecondsPerHour) == 0; }

} // namespace

bool labelsTellMinutes(const HelicorderPage& page) { return !holdsWholeHours(page.rowDuration); }

std::int32_t rowsOfLabel(const HelicorderPage& page, double height) {
  const double fewest = std::ceil(height / page.rowHeight());
  if (!(fewest > 1)) return 1;
  const std::int64_t rows = std::int64_t(std::clamp(fewest, 1.0, std::max(double(page.nRows), 1.0)));
  const double seconds = labelsTellMinutes(page) ? kSecondsPerHour : kSecondsPerHour * kHoursPerDay;
  const double rowsOfUnit = seconds / double(page.rowDuration);
  // Rows of less than a second have no round times.
  const bool isPartOfUnit = rowsOfUnit >= 1 && rowsOfUnit <= kSecondsPerHour && rowsOfUnit == std::floor(rowsOfUnit);
  if (!isPartOfUnit) return std::int32_t(rows);
  const auto unit = std::int64_t(rowsOfUnit);
  std::int64_t round = rows;
  while (unit % round != 0 && round % unit != 0)
    ++round;
  return std::int32_t(std::min<std::int64_t>(round, std::max(page.nRows, 1)));
}

std::vector<HourLabel> hourLabels(const HelicorderPage& page, const QDateTime& reference, const QDateTime& startTime,
                                  std::int32_t step) {
  std::vector<HourLabel> labels;
  if (!reference.isValid()) return labels;
  const bool wholeHours = holdsWholeHours(page.rowDuration);
  // Rows begin where the page does, at the whole hour.
  const QDateTime pageBegin = startTime.isValid() ? startTime : reference;
  const std::int64_t firstHour = startTime.isValid() ? startTime.time().hour() : 0;
  const std::int64_t hoursPerRow = towardZero(page.rowDuration) / kSecondsPerHour;
  const double wholeTop = std::trunc(page.top());
  std::int64_t next = 0;
  for (const std::int32_t row : page.markedRows()) {
    if (row < next) continue;
    next = std::int64_t(row) + step;
    const QDateTime begin = dateAfter(wholeHours ? reference : pageBegin, double(row) * double(page.rowDuration));
    const QDate date = begin.date();
    if (!date.isValid()) continue;
    const int hour = wholeHours ? int((firstHour + row * hoursPerRow) % kHoursPerDay) : begin.time().hour();
    QString text = QString::asprintf(" %2.2d/%2.2d %2.2d", date.month(), date.day(), hour);
    if (!wholeHours) text += QString::asprintf(":%2.2d", begin.time().minute());
    labels.push_back({{page.rect.x() - kLabelGap, wholeTop - (row + 0.5) * page.rowHeight()}, text});
  }
  return labels;
}

QDateTime rowBegin(const HelicorderPage& page, const QDateTime& start, double row) {
  return dateAfter(start, row * double(page.rowDuration));
}

std::vector<HourLabel> rowTimeLabels(const HelicorderPage& page, const QDateTime& start, const QTimeZone& zone,
                                     Edge side, std::int32_t step) {
  std::vector<HourLabel> labels;
  const double x = side == Edge::Left ? page.rect.x() - kLabelGap : page.rect.x() + page.rect.width() + kLabelGap;
  bool tellsMinutes = labelsTellMinutes(page);
  std::vector<QDateTime> times;
  std::int64_t next = 0;
  for (const std::int32_t row : page.markedRows()) {
    if (row < next) continue;
    const QDateTime time = rowBegin(page, start, row).toTimeZone(zone);
    if (!time.isValid()) continue;
    next = std::int64_t(row) + step;
    tellsMinutes = tellsMinutes || time.time().minute() != 0 || time.time().second() != 0;
    times.push_back(time);
    labels.push_back({{x, page.zeroLine(row)}, {}});
  }
  const QString format = tellsMinutes ? QStringLiteral("MM/dd hh:mm") : QStringLiteral("MM/dd hh");
  for (std::size_t i = 0; i < labels.size(); ++i)
    labels[i].text = times[i].toString(format);
  return labels;
}

QString zoneText(const HelicorderPage& page, const QDateTime& start, const QTimeZone& zone) {
  QStringList names;
  for (const std::int32_t row : page.markedRows()) {
    const QDateTime time = rowBegin(page, start, row);
    if (time.isValid()) names.append(zone.abbreviation(time));
    names.removeDuplicates();
  }
  return names.join(QLatin1Char('/'));
}

QString pageTitle(const SeismogramRecord& record) {
  const auto reference = record.mySeisReferenceTime();
  const QString date = reference ? QString::fromLatin1(reference->YMDcString()) : QString();
  return date + QStringLiteral(" - ") +
         QStringList{record.knetwk(), record.kstnm(), record.khole(), record.kcmpnm()}.join(QLatin1Char(' '));
}

} // namespace xov
