#include "XOV_Graphics/seismic/prepare/PreparedRecords.h"

#include "XOV_Graphics/seismic/prepare/RecordTexts.h"

namespace xov {

namespace {

constexpr qsizetype kMostNames = 5;

QString nameOf(const SeismogramRecord& record) {
  const QString station = stationText(record);
  return station.isEmpty() ? record.labelString() : station;
}

} // namespace

QString stationsText(const SeismogramArray& records) {
  QStringList names;
  for (const auto& record : records)
    names.append(nameOf(*record));
  names.removeDuplicates();
  const qsizetype rest = names.size() - kMostNames;
  const QString text = names.mid(0, kMostNames).join(QStringLiteral(", "));
  return rest > 0 ? text + QStringLiteral(" and %1 more").arg(rest) : text;
}

} // namespace xov
