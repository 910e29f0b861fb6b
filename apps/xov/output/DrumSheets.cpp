#include "apps/xov/output/DrumSheets.h"

#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/seismic/prepare/RecordWindow.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <cmath>
#include <map>

namespace xov::cli {

namespace {

constexpr double kSecondsPerDay = 86400;
constexpr double kFarthestDay = 1e7; // from 1970, some thirty thousand years

QDateTime midnight(qint64 day) { return QDateTime::fromSecsSinceEpoch(day * qint64(kSecondsPerDay), Qt::UTC); }

/// The first and last day on which a record has samples; nothing where its times are not known.
std::optional<std::pair<qint64, qint64>> daysOf(const SeismogramRecord& record) {
  const std::optional<double> start = startSeconds(record);
  if (!start || record.npts() < 1) return {};
  const double first = std::floor(*start / kSecondsPerDay);
  const double last = std::floor((*start + double(record.npts() - 1) * intervalSeconds(record)) / kSecondsPerDay);
  if (!(std::abs(first) < kFarthestDay && std::abs(last) < kFarthestDay)) return {};
  return std::pair(qint64(first), qint64(last));
}

/// Adds the days of a channel to the sheets; false where they are too many.
bool addDays(const SeismogramArray& channel, std::vector<DrumSheet>& sheets) {
  std::map<qint64, SeismogramArray> days;
  for (const auto& record : channel) {
    const auto reach = daysOf(*record);
    if (!reach) continue;
    if (reach->second - reach->first >= qint64(kMostDrumSheets)) return false;
    for (qint64 day = reach->first; day <= reach->second; ++day) {
      const auto piece = windowOf(record, midnight(day), midnight(day + 1));
      if (piece) days[day].push_back(*piece);
    }
  }
  for (auto& [day, pieces] : days)
    sheets.push_back({std::move(pieces), midnight(day), midnight(day + 1)});
  return sheets.size() <= kMostDrumSheets;
}

} // namespace

Result<std::vector<DrumSheet>> drumSheets(SeismogramArray records, DrumPaging paging) {
  std::vector<DrumSheet> sheets;
  if (paging == DrumPaging::None) {
    sheets.push_back({std::move(records), {}, {}});
    return sheets;
  }
  for (const QString& name : channelsOf(records)) {
    SeismogramArray channel;
    for (const auto& record : records) {
      if (record->labelString() == name) channel.push_back(record);
    }
    const bool fits = paging == DrumPaging::Day ? addDays(channel, sheets) : sheets.size() < kMostDrumSheets;
    if (!fits) return Error{QStringLiteral("%1: found more than %2 pages").arg(name).arg(kMostDrumSheets)};
    if (paging == DrumPaging::Channel) sheets.push_back({std::move(channel), {}, {}});
  }
  return sheets;
}

} // namespace xov::cli
