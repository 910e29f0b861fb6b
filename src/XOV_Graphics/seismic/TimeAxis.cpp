#include "XOV_Graphics/seismic/TimeAxis.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <algorithm>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;

QDateTime referenceDate(const SeismogramRecord& record) {
  const std::shared_ptr<SeisTime> time = record.mySeisReferenceTime();
  if (!time) return {};
  time->updateNSDate();
  return time->nsDate();
}

/// The header's values in double precision.
SacFooter preciseValues(const SeismogramRecord& record) {
  if (const auto* const trace = dynamic_cast<const SacSeismogram*>(&record)) return trace->preciseValues();
  SacFooter precise = record.GetSacHeader() ? footerFromHeader(*record.GetSacHeader()) : SacFooter();
  precise.b = double(record.b());
  precise.delta = double(record.delta());
  return precise;
}

constexpr double SacFooter::*kTimes[] = {&SacFooter::b,  &SacFooter::e,  &SacFooter::o,  &SacFooter::a,
                                         &SacFooter::t0, &SacFooter::t1, &SacFooter::t2, &SacFooter::t3,
                                         &SacFooter::t4, &SacFooter::t5, &SacFooter::t6, &SacFooter::t7,
                                         &SacFooter::t8, &SacFooter::t9, &SacFooter::f};

} // namespace

std::optional<double> startSeconds(const SeismogramRecord& record) {
  const QDateTime reference = referenceDate(record);
  if (!reference.isValid()) return {};
  return double(reference.toMSecsSinceEpoch()) / kMillisecondsPerSecond + preciseValues(record).b;
}

double intervalSeconds(const SeismogramRecord& record) { return preciseValues(record).delta; }

std::shared_ptr<SeismogramRecord> onTimeAxis(const std::shared_ptr<SeismogramRecord>& record,
                                             const QDateTime& reference) {
  if (!record || !reference.isValid()) return record;
  const QDateTime own = referenceDate(*record);
  if (!own.isValid() || own == reference) return record;
  const double shift = double(reference.msecsTo(own)) / kMillisecondsPerSecond;
  SacFooter precise = preciseValues(*record);
  for (double SacFooter::*time : kTimes) {
    if (isDefined(precise.*time)) precise.*time += shift;
  }
  SacHeader header = record->GetSacHeader() ? *record->GetSacHeader() : SacHeader();
  setReferenceTime(header, reference);
  const float* const samples = record->GetSacSeis();
  return std::make_shared<SacSeismogram>(header, std::vector<float>(samples, samples + record->npts()),
                                         record->path(), precise);
}

SeismogramArray consecutivePieces(SeismogramArray records) {
  std::erase(records, nullptr);
  const auto firstUnknown = std::stable_partition(
      records.begin(), records.end(), [](const auto& record) { return startSeconds(*record).has_value(); });
  std::stable_sort(records.begin(), firstUnknown,
                   [](const auto& left, const auto& right) { return *startSeconds(*left) < *startSeconds(*right); });
  if (firstUnknown == records.begin()) return records;
  const QDateTime reference = referenceDate(*records.front());
  std::transform(records.begin(), firstUnknown, records.begin(),
                 [&](const auto& record) { return onTimeAxis(record, reference); });
  return records;
}

} // namespace xov
