#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kFarthestZeroSeconds = 1e10; // three centuries

constexpr double SacFooter::*kTimes[] = {&SacFooter::b,  &SacFooter::e,  &SacFooter::o,  &SacFooter::a,
                                         &SacFooter::t0, &SacFooter::t1, &SacFooter::t2, &SacFooter::t3,
                                         &SacFooter::t4, &SacFooter::t5, &SacFooter::t6, &SacFooter::t7,
                                         &SacFooter::t8, &SacFooter::t9, &SacFooter::f};

// The record with all times so much larger, and that reference time unless it is invalid.
std::shared_ptr<SeismogramRecord> laterBy(std::shared_ptr<SeismogramRecord> record, double seconds,
                                          const QDateTime& reference) {
  SacFooter precise = preciseValuesOf(*record);
  for (double SacFooter::*time : kTimes) {
    if (isDefined(precise.*time)) precise.*time += seconds;
  }
  SacHeader header = headerOf(*record);
  if (reference.isValid()) setReferenceTime(header, reference);
  return changedRecord(std::move(record), {.header = header, .precise = precise});
}

} // namespace

QDateTime referenceTimeOf(const SeismogramRecord& record) {
  const std::shared_ptr<SeisTime> time = record.mySeisReferenceTime();
  if (!time) return {};
  time->updateNSDate();
  return time->nsDate();
}

std::optional<double> startSeconds(const SeismogramRecord& record) {
  const QDateTime reference = referenceTimeOf(record);
  if (!reference.isValid()) return {};
  return double(reference.toMSecsSinceEpoch()) / kMillisecondsPerSecond + preciseValuesOf(record).b;
}

double intervalSeconds(const SeismogramRecord& record) { return preciseValuesOf(record).delta; }

std::shared_ptr<SeismogramRecord> onTimeAxis(std::shared_ptr<SeismogramRecord> record, const QDateTime& reference) {
  if (!record || !reference.isValid()) return record;
  const QDateTime own = referenceTimeOf(*record);
  if (!own.isValid() || own == reference) return record;
  return laterBy(std::move(record), double(reference.msecsTo(own)) / kMillisecondsPerSecond, reference);
}

std::shared_ptr<SeismogramRecord> countedFrom(std::shared_ptr<SeismogramRecord> record, double seconds) {
  if (!record || !(std::abs(seconds) <= kFarthestZeroSeconds)) return record;
  const QDateTime own = referenceTimeOf(*record);
  const QDateTime moved =
      own.isValid() ? own.addMSecs(qint64(std::round(seconds * kMillisecondsPerSecond))) : QDateTime();
  return laterBy(std::move(record), -seconds, moved);
}

SeismogramArray consecutivePieces(SeismogramArray records) {
  std::erase(records, nullptr);
  const auto firstUnknown = std::stable_partition(
      records.begin(), records.end(), [](const auto& record) { return startSeconds(*record).has_value(); });
  std::stable_sort(records.begin(), firstUnknown,
                   [](const auto& left, const auto& right) { return *startSeconds(*left) < *startSeconds(*right); });
  if (firstUnknown == records.begin()) return records;
  const QDateTime reference = referenceTimeOf(*records.front());
  std::transform(records.begin(), firstUnknown, records.begin(),
                 [&](auto& record) { return onTimeAxis(std::move(record), reference); });
  return records;
}

} // namespace xov
