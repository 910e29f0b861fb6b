#include "XOV_Graphics/seismic/prepare/RecordOrder.h"

#include "XOV_Graphics/seismic/Undefined.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace xov {

namespace {

using Record = std::shared_ptr<SeismogramRecord>;

// Keys are computed once a record: a distance may be reckoned from coordinates.
template <typename KeyOf>
void sortBy(SeismogramArray& records, KeyOf keyOf) {
  using Key = decltype(keyOf(*records.front()));
  std::vector<std::pair<Key, Record>> keyed;
  for (const Record& record : records)
    keyed.emplace_back(keyOf(*record), record);
  std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 0; i < records.size(); ++i)
    records[i] = std::move(keyed[i].second);
}

float definedOrLast(float value) { return isDefined(value) ? value : std::numeric_limits<float>::infinity(); }

QStringList nameOf(const SeismogramRecord& record) {
  return {record.knetwk(), record.kstnm(), record.khole(), record.kcmpnm(), record.path()};
}

} // namespace

void sortRecords(SeismogramArray& records, RecordOrder order) {
  switch (order) {
  case RecordOrder::Given:
    break;
  case RecordOrder::Distance:
    sortBy(records, [](const SeismogramRecord& record) { return definedOrLast(record.gcarc()); });
    break;
  case RecordOrder::Azimuth:
    sortBy(records, [](const SeismogramRecord& record) { return definedOrLast(record.azimuth()); });
    break;
  case RecordOrder::Name:
    sortBy(records, nameOf);
    break;
  }
}

} // namespace xov
