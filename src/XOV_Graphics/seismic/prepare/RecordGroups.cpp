#include "XOV_Graphics/seismic/prepare/RecordGroups.h"

#include "XOV_Graphics/seismic/prepare/RecordTexts.h"

#include <QHash>

#include <utility>

namespace xov {

namespace {

constexpr qsizetype kSeedCodeLength = 3;

QString componentText(const QString& code) { return code.size() == kSeedCodeLength ? code.right(1) : code; }

QString fileText(const QString& path) { return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1); }

// What tells the group of a record from others.
QString keyOf(const SeismogramRecord& record, GroupBy by) {
  switch (by) {
  case GroupBy::Trace:
    return record.labelString() + QChar::Null + record.path();
  case GroupBy::Component:
    return componentText(record.kcmpnm());
  case GroupBy::Station:
    return stationText(record);
  case GroupBy::Network:
    return record.knetwk();
  case GroupBy::File:
    return record.path();
  }
  return {};
}

QString nameOf(const SeismogramRecord& record, GroupBy by) {
  if (by == GroupBy::Trace) return record.labelString();
  return by == GroupBy::File ? fileText(record.path()) : keyOf(record, by);
}

} // namespace

RecordGroups groupsOf(const SeismogramArray& records, GroupBy by) {
  RecordGroups groups;
  QHash<QString, std::size_t> known;
  QHash<QString, int> uses; // of a name
  std::vector<const SeismogramRecord*> firsts;
  for (const auto& record : records) {
    const QString key = keyOf(*record, by);
    if (!known.contains(key)) {
      known.insert(key, firsts.size());
      firsts.push_back(record.get());
      ++uses[nameOf(*record, by)];
    }
    groups.groupOf.push_back(known.value(key));
  }
  for (const SeismogramRecord* const first : firsts) {
    QString name = nameOf(*first, by);
    if (by == GroupBy::Trace && uses.value(name) > 1 && !first->path().isEmpty()) name = fileText(first->path());
    groups.names.append(name.isEmpty() ? QStringLiteral("?") : name);
  }
  return groups;
}

} // namespace xov
