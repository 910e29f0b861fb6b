#include "XOV_Graphics/views/timeline/PageStart.h"

#include "XOV_Graphics/seismic/MonthDate.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

namespace xov {

namespace {

constexpr std::int64_t kSecondsPerHour = 3600;
constexpr std::int64_t kSecondsPerMinute = 60;
constexpr float kMillisecondsPerSecond = 1000;

std::int32_t valueOrZero(std::int32_t field) { return field == kSacUndefinedInteger ? 0 : field; }

} // namespace

PageStart pageStart(const SacHeader* header) {
  if (header == nullptr) return {};
  const std::int32_t hours = valueOrZero(header->nzhour);
  const std::int32_t minutes = valueOrZero(header->nzmin);
  const std::int32_t seconds = valueOrZero(header->nzsec);
  const std::int32_t milliseconds = valueOrZero(header->nzmsec);
  PageStart start;
  start.offset =
      float(minutes) * float(kSecondsPerMinute) + float(seconds) + float(milliseconds) / kMillisecondsPerSecond;
  int month = 0;
  int day = 0;
  monthdate(header->nzyear, header->nzjday, month, day);
  if (month == 0) return start;
  const QDateTime midnight(QDate(header->nzyear, month, day), QTime(0, 0), Qt::UTC);
  start.hour = midnight.addSecs(hours * kSecondsPerHour);
  start.reference = start.hour.addSecs(minutes * kSecondsPerMinute + seconds);
  return start;
}

PageStart recordedStart(const SeismogramRecord* record) {
  return pageStart(record != nullptr ? record->GetSacHeader() : nullptr);
}

} // namespace xov
