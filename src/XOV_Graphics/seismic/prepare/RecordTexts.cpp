#include "XOV_Graphics/seismic/prepare/RecordTexts.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <set>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kFarthestBegin = 1e11; // seconds; some three thousand years

/// Kinds of the dependent variable by the codes of the SAC format, with the format's units.
struct Quantity {
  std::int32_t idep;
  const char* label;
};

constexpr Quantity kQuantities[] = {
    {kSacDisplacement, "Displacement (nm)"},
    {kSacVelocity, "Velocity (nm/s)"},
    {kSacAcceleration, "Acceleration (nm/s/s)"},
    {kSacVolts, "Velocity (V)"},
};

// The station, or how many records there are of several or unknown ones.
QString countText(const SeismogramArray& records) {
  QStringList stations;
  for (const auto& record : records)
    stations.append(stationText(*record));
  stations.removeDuplicates();
  if (stations.size() == 1 && !stations.front().isEmpty()) return stations.front();
  return records.size() == 1 ? QStringLiteral("1 record") : QStringLiteral("%1 records").arg(records.size());
}

// The days (UTC) of the first samples.
QString datesText(const SeismogramArray& records) {
  std::set<QDate> dates;
  for (const auto& record : records) {
    const QDateTime reference = referenceTimeOf(*record);
    const double begin = preciseValuesOf(*record).b;
    if (!reference.isValid() || !(std::abs(begin) < kFarthestBegin)) continue;
    const QDate date = reference.addMSecs(qint64(std::floor(begin * kMillisecondsPerSecond))).toUTC().date();
    if (date.isValid()) dates.insert(date);
  }
  if (dates.empty()) return {};
  const QString first = dates.begin()->toString(Qt::ISODate);
  const QString days =
      dates.size() == 1 ? first : first + QStringLiteral(" to ") + dates.rbegin()->toString(Qt::ISODate);
  return days + QStringLiteral(" UTC");
}

} // namespace

QString titleOfRecords(const SeismogramArray& records) {
  QStringList known;
  if (!records.empty()) {
    const QString origin = records.front()->oTimeString();
    known = {records.front()->flinnEngdahlString(), origin.isEmpty() ? origin : origin + QStringLiteral(" UTC")};
    known.removeAll(QString());
  }
  if (known.isEmpty()) known = {countText(records), datesText(records)};
  known.removeAll(QString());
  return known.join(QStringLiteral("  "));
}

QString stationText(const SeismogramRecord& record) {
  const QString station = record.kstnm();
  return record.knetwk().isEmpty() ? station : record.knetwk() + QLatin1Char('.') + station;
}

QStringList channelsOf(const SeismogramArray& records) {
  QStringList channels;
  for (const auto& record : records)
    channels.append(record->labelString());
  channels.removeDuplicates();
  return channels;
}

QString titleOfChannels(const SeismogramArray& records) {
  const QStringList channels = channelsOf(records);
  if (channels.size() == 1) return channels.front();
  QStringList stations;
  for (const auto& record : records)
    stations.append(stationText(*record));
  stations.removeDuplicates();
  const bool oneIsKnown = stations.size() == 1 && !stations.front().isEmpty();
  return oneIsKnown ? stations.front() : QStringLiteral("%1 channels").arg(channels.size());
}

QString amplitudeLabel(const SeismogramArray& records) {
  const auto isThere = [](const auto& record) { return record != nullptr; };
  for (const Quantity& quantity : kQuantities) {
    const auto isOfThatKind = [&](const auto& record) { return !record || headerOf(*record).idep == quantity.idep; };
    if (std::ranges::any_of(records, isThere) && std::ranges::all_of(records, isOfThatKind))
      return QString::fromLatin1(quantity.label);
  }
  return QStringLiteral("Amplitude");
}

QString amplitudeUnit(const SeismogramArray& records) {
  const QString label = amplitudeLabel(records);
  const qsizetype begin = label.indexOf(QLatin1Char('(')) + 1;
  return begin == 0 ? QString() : label.mid(begin, label.size() - begin - 1);
}

SeismogramArray captionedByChannel(SeismogramArray records) {
  QHash<QString, int> uses;
  for (const auto& record : records)
    ++uses[record->path()];
  for (auto& record : records) {
    if (uses.value(record->path()) > 1) record = copyOfRecord(*record, {.path = record->labelString()});
  }
  return records;
}

} // namespace xov
