#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/prepare/RecordWindow.h"

#include <algorithm>

namespace xov {

const SacHeader& headerOf(const SeismogramRecord& record) {
  static const SacHeader unset;
  const SacHeader* const header = record.GetSacHeader();
  return header ? *header : unset;
}

SacFooter preciseValuesOf(const SeismogramRecord& record) {
  if (const auto* const trace = dynamic_cast<const SacSeismogram*>(&record)) return trace->preciseValues();
  if (const auto* const window = dynamic_cast<const RecordWindow*>(&record)) return window->preciseValues();
  SacFooter precise = footerFromHeader(headerOf(record));
  precise.b = double(record.b());
  precise.delta = double(record.delta());
  return precise;
}

std::span<const float> samplesOf(const SeismogramRecord& record) {
  const float* const samples = record.GetSacSeis();
  return {samples, samples ? std::size_t(std::max(record.npts(), 0)) : 0};
}

void visitSamples(const SeismogramRecord& record, const std::function<void(std::span<const float>)>& visit) {
  constexpr std::size_t kStretch = std::size_t(1) << 18;
  const BorrowedSamples borrowed = record.borrowedSamples();
  std::span<const float> rest(borrowed.samples,
                              borrowed.samples != nullptr ? std::size_t(std::max(record.npts(), 0)) : 0);
  while (!rest.empty()) {
    const auto some = rest.first(std::min(kStretch, rest.size()));
    const HeldSamples held(borrowed.source, some.data(), some.data() + some.size());
    visit(some);
    rest = rest.subspan(some.size());
  }
}

std::shared_ptr<SacSeismogram> copyOfRecord(const SeismogramRecord& record, RecordChanges changes) {
  const std::span<const float> own = samplesOf(record);
  SacHeader header = changes.header.value_or(headerOf(record));
  SacFooter precise = changes.precise.value_or(preciseValuesOf(record));
  // So many samples end elsewhere.
  if (changes.samples && changes.samples->size() != own.size()) precise.e = header.e = kUndefinedValue;
  return std::make_shared<SacSeismogram>(
      header, changes.samples ? *std::move(changes.samples) : std::vector<float>(own.begin(), own.end()),
      changes.path.value_or(record.path()), precise);
}

std::shared_ptr<SacSeismogram> changedRecord(std::shared_ptr<SeismogramRecord> record, RecordChanges changes) {
  const std::shared_ptr<SeismogramRecord> own = std::move(record);
  auto trace = own.use_count() == 1 ? std::dynamic_pointer_cast<SacSeismogram>(own) : nullptr;
  if (trace == nullptr || changes.samples) return copyOfRecord(*own, std::move(changes));
  trace->setHeader(changes.header.value_or(headerOf(*trace)), changes.path.value_or(trace->path()),
                   changes.precise.value_or(trace->preciseValues()));
  return trace;
}

} // namespace xov
