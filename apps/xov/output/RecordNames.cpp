#include "apps/xov/output/RecordNames.h"

#include <XOV_Graphics/seismic/Undefined.h>
#include <XOV_Graphics/seismic/prepare/RecordPicks.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

constexpr qsizetype kMostCodes = 3;
const QString kUnknown = QStringLiteral("unknown");
// Far from what dates can hold.
constexpr double kMostSeconds = 1e12;

QString joined(const SeismogramArray& records, QString (SeismogramRecord::*code)() const) {
  QStringList codes;
  for (const auto& record : records) {
    QString text = ((*record).*code)().trimmed();
    if (text == QLatin1String(kUndefinedLabel)) text.clear();
    if (!codes.contains(text)) codes.append(text);
    if (codes.size() > kMostCodes) return QStringLiteral("several");
  }
  codes.sort();
  return codes.join(u'+');
}

QDateTime utcOf(double seconds) {
  if (!(std::abs(seconds) < kMostSeconds)) return {};
  return QDateTime::fromMSecsSinceEpoch(qint64(std::floor(seconds * 1000)), Qt::UTC);
}

QDateTime earliestSample(const SeismogramArray& records) {
  std::optional<double> earliest;
  for (const auto& record : records) {
    const std::optional<double> start = startSeconds(*record);
    if (start) earliest = std::min(*start, earliest.value_or(*start));
  }
  return earliest ? utcOf(*earliest) : QDateTime();
}

// Of the first record that knows it.
QDateTime originOf(const SeismogramArray& records) {
  for (const auto& record : records) {
    const std::optional<double> origin = originSeconds(*record);
    const QDateTime reference = referenceTimeOf(*record);
    if (origin && reference.isValid()) return utcOf(double(reference.toMSecsSinceEpoch()) / 1000 + *origin);
  }
  return {};
}

QString textOf(const QDateTime& time, const char* format) {
  return time.isValid() ? QLocale::c().toString(time, QLatin1String(format)) : kUnknown;
}

} // namespace

QStringList recordFieldNames() {
  return {QStringLiteral("network"), QStringLiteral("station"), QStringLiteral("location"),
          QStringLiteral("channel"), QStringLiteral("date"),    QStringLiteral("time"),
          QStringLiteral("year"),    QStringLiteral("day"),     QStringLiteral("event")};
}

NameFields nameFieldsOf(const SeismogramArray& records) {
  const QDateTime start = earliestSample(records);
  const QString day =
      start.isValid() ? QStringLiteral("%1").arg(start.date().dayOfYear(), 3, 10, QLatin1Char('0')) : kUnknown;
  return {
      {QStringLiteral("network"), joined(records, &SeismogramRecord::knetwk)},
      {QStringLiteral("station"), joined(records, &SeismogramRecord::kstnm)},
      {QStringLiteral("location"), joined(records, &SeismogramRecord::khole)},
      {QStringLiteral("channel"), joined(records, &SeismogramRecord::kcmpnm)},
      {QStringLiteral("date"), textOf(start, "yyyy-MM-dd")},
      {QStringLiteral("time"), textOf(start, "HHmmss")},
      {QStringLiteral("year"), textOf(start, "yyyy")},
      {QStringLiteral("day"), day},
      {QStringLiteral("event"), textOf(originOf(records), "yyyyMMdd'T'HHmmss")},
  };
}

} // namespace xov::cli
