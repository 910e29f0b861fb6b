#include "apps/xov/inputs/RecordTexts.h"

#include <QStringList>

#include <XOV_Graphics/seismic/SacHeader.h>
#include <algorithm>

namespace xov::cli {

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

std::int32_t quantityOf(const SeismogramRecord& record) {
  return record.GetSacHeader() == nullptr ? kSacUndefinedInteger : record.GetSacHeader()->idep;
}

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

QString amplitudeLabel(const SeismogramArray& records) {
  for (const Quantity& quantity : kQuantities) {
    const auto isOfThatKind = [&](const auto& record) { return quantityOf(*record) == quantity.idep; };
    if (!records.empty() && std::ranges::all_of(records, isOfThatKind)) return QString::fromLatin1(quantity.label);
  }
  return QStringLiteral("Amplitude");
}

} // namespace xov::cli
