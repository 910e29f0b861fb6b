#include "XOV_Graphics/seismic/prepare/RecordTexts.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include <QHash>

#include <algorithm>

namespace xov {

namespace {

/// Kinds of the dependent variable by the codes of the SAC format, with the format's units.
struct Quantity {
  std::int32_t idep;
  const char* label;
};

constexpr Quantity kQuantities[] = {
    {6, "Displacement (nm)"},
    {7, "Velocity (nm/s)"},
    {8, "Acceleration (nm/s/s)"},
    {50, "Velocity (V)"},
};

} // namespace

QString titleOfRecords(const SeismogramArray& records) {
  QStringList known;
  if (!records.empty()) {
    const QString origin = records.front()->oTimeString();
    known = {records.front()->flinnEngdahlString(), origin.isEmpty() ? origin : origin + QStringLiteral(" UTC")};
    known.removeAll(QString());
  }
  if (!known.isEmpty()) return known.join(QStringLiteral("  "));
  return records.size() == 1 ? QStringLiteral("1 record") : QStringLiteral("%1 records").arg(records.size());
}

QString stationText(const SeismogramRecord& record) { return record.knetwk() + QLatin1Char('.') + record.kstnm(); }

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
  return stations.size() == 1 ? stations.front() : QStringLiteral("%1 channels").arg(channels.size());
}

QString amplitudeLabel(const SeismogramArray& records) {
  for (const Quantity& quantity : kQuantities) {
    const auto isOfThatKind = [&](const auto& record) { return headerOf(*record).idep == quantity.idep; };
    if (!records.empty() && std::ranges::all_of(records, isOfThatKind)) return QString::fromLatin1(quantity.label);
  }
  return QStringLiteral("Amplitude");
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
