#include "XOV_Graphics/seismic/prepare/Components.h"

#include "XOV_Graphics/seismic/prepare/RecordTexts.h"

#include <algorithm>

namespace xov {

namespace {

constexpr const char* kNames[] = {"vertical", "radial", "transverse"};

/// The codes of each component.
using CodeSets = std::array<QStringList, 3>;

const CodeSets kDirections = {QStringList{"Z"}, QStringList{"R", "N", "1"}, QStringList{"T", "E", "2"}};
const CodeSets kNumbers = {QStringList{"1"}, QStringList{"2"}, QStringList{"3"}};

bool hasCode(const SeismogramRecord& record, const QString& code) {
  return record.kcmpnm().endsWith(code, Qt::CaseInsensitive);
}

bool hasAnyCode(const SeismogramRecord& record, const QStringList& codes) {
  return std::ranges::any_of(codes, [&](const QString& code) { return hasCode(record, code); });
}

Result<ThreeComponents> pickByCodes(const SeismogramArray& records, const CodeSets& codes) {
  ThreeComponents picked;
  for (std::size_t i = 0; i < picked.size(); ++i) {
    for (const auto& record : records) {
      if (!hasAnyCode(*record, codes[i])) continue;
      if (picked[i])
        return Error{QStringLiteral("found %1 and %2, expected one %3 component")
                         .arg(picked[i]->labelString(), record->labelString(), QLatin1String(kNames[i]))};
      picked[i] = record;
    }
  }
  if (!picked[0] && !picked[1] && !picked[2])
    return Error{
        QStringLiteral("found %1, expected components that end in %2, %3 or %4")
            .arg(records.front()->labelString(), codes[0].join('/'), codes[1].join('/'), codes[2].join('/'))};
  return picked;
}

bool allArePicked(const ThreeComponents& components, std::size_t count) {
  return std::size_t(std::ranges::count_if(components, [](const auto& record) { return record != nullptr; })) ==
         count;
}

// What the last character of the components says; each record must have a place.
Result<ThreeComponents> pickByDirection(const SeismogramArray& records) {
  const bool vertical = std::ranges::any_of(records, [](const auto& r) { return hasAnyCode(*r, kDirections[0]); });
  const bool third = std::ranges::any_of(records, [](const auto& r) { return hasAnyCode(*r, kNumbers[2]); });
  Result<ThreeComponents> picked = pickByCodes(records, !vertical && third ? kNumbers : kDirections);
  if (picked && !allArePicked(*picked, records.size()))
    return Error{QStringLiteral("found %1 records, expected a component that ends in Z, R/N/1 or T/E/2 of each")
                     .arg(records.size())};
  return picked;
}

Result<ThreeComponents> ofOneStation(const ThreeComponents& components) {
  QStringList stations;
  for (const auto& record : components) {
    if (record) stations.append(stationText(*record));
  }
  stations.removeDuplicates();
  if (stations.size() == 1) return components;
  return Error{QStringLiteral("found components of %1, expected one station").arg(stations.join(" and "))};
}

} // namespace

Result<ThreeComponents> pickComponents(const SeismogramArray& records, const QStringList& codes) {
  if (records.empty()) return Error{QStringLiteral("found no record, expected components")};
  if (!codes.isEmpty()) {
    CodeSets sets;
    for (qsizetype i = 0; i < std::min<qsizetype>(codes.size(), qsizetype(sets.size())); ++i)
      sets[std::size_t(i)] = {codes[i]};
    const Result<ThreeComponents> picked = pickByCodes(records, sets);
    return picked ? ofOneStation(*picked) : picked;
  }
  const Result<ThreeComponents> picked = pickByDirection(records);
  if (picked) return ofOneStation(*picked);
  if (records.size() == 3) return ThreeComponents{records[0], records[1], records[2]};
  return picked;
}

SeismogramArray presentComponents(const ThreeComponents& components) {
  SeismogramArray present(components.begin(), components.end());
  std::erase(present, nullptr);
  return present;
}

std::shared_ptr<StationObservation> observationOf(const ThreeComponents& components,
                                                  const SeismogramArray& prepared) {
  ThreeComponents placed;
  auto next = prepared.begin();
  for (std::size_t i = 0; i < components.size(); ++i) {
    if (components[i] && next != prepared.end()) placed[i] = *next++;
  }
  return std::make_shared<StationObservation>(placed[0], placed[1], placed[2]);
}

} // namespace xov
