#include "XOV_Graphics/seismic/prepare/Amplitudes.h"

#include "XOV_Graphics/base/FiniteSum.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace xov {

namespace {

FiniteSum sumOf(const SeismogramRecord& record) {
  if (const auto* const trace = dynamic_cast<const SacSeismogram*>(&record); trace && trace->knownSum())
    return *trace->knownSum();
  FiniteSum sum;
  visitSamples(record, [&sum](std::span<const float> samples) { addFinite(samples, sum); });
  return sum;
}

std::shared_ptr<SeismogramRecord> lowered(std::shared_ptr<SeismogramRecord> record, double by) {
  auto changed = changedRecord(std::move(record));
  changed->rescaleSamples(by, 1);
  return changed;
}

} // namespace

SeismogramArray withoutMeans(SeismogramArray records, MeanOf mean) {
  QHash<QString, FiniteSum> channels;
  if (mean == MeanOf::Channel) {
    for (const auto& record : records)
      channels[record->labelString()].add(sumOf(*record));
  }
  for (auto& record : records) {
    const double own = mean == MeanOf::Record ? sumOf(*record).mean() : channels[record->labelString()].mean();
    record = lowered(std::move(record), own);
  }
  return records;
}

float largestAmplitude(const SeismogramArray& records) {
  float largest = 0;
  for (const auto& record : records)
    largest = std::max(largest, record->absMax());
  return largest > 0 ? largest : 1;
}

namespace {

/// The record with all samples times a number.
std::shared_ptr<SeismogramRecord> scaled(std::shared_ptr<SeismogramRecord> record, double factor,
                                         const SacHeader& header) {
  auto changed = changedRecord(std::move(record), {.header = header});
  changed->rescaleSamples(0, factor);
  return changed;
}

/// The largest absolute finite sample, whatever the record tells.
float peakOf(const SeismogramRecord& record) {
  const BorrowedSamples samples = record.borrowedSamples();
  const auto count = std::size_t(samples.samples != nullptr ? std::max(record.npts(), 0) : 0);
  const Extrema extrema = finiteExtrema({samples.samples, count}, samples.index, samples.source);
  return std::max(std::abs(extrema.min), std::abs(extrema.max));
}

bool knowsDistance(const SeismogramRecord& record) { return isDefined(double(record.gcarc())) && record.gcarc() > 0; }

} // namespace

SeismogramArray normalized(SeismogramArray records, NormalizeBy by) {
  std::vector<float> peaks;
  for (const auto& record : records)
    peaks.push_back(peakOf(*record));
  if (by == NormalizeBy::Section && !peaks.empty()) std::ranges::fill(peaks, float(*std::ranges::max_element(peaks)));
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (!(peaks[i] > 0)) continue;
    SacHeader header = headerOf(*records[i]);
    header.idep = kSacUnknownKind;
    records[i] = scaled(std::move(records[i]), 1 / double(peaks[i]), header);
  }
  return records;
}

SeismogramArray scaledByDistance(SeismogramArray records, double power, QStringList& notes) {
  double nearest = std::numeric_limits<double>::infinity();
  std::ptrdiff_t unknown = 0;
  for (const auto& record : records) {
    if (knowsDistance(*record))
      nearest = std::min(nearest, double(record->gcarc()));
    else
      ++unknown;
  }
  for (auto& record : records) {
    if (!knowsDistance(*record)) continue;
    const double factor = std::pow(double(record->gcarc()) / nearest, power);
    if (const SacHeader header = headerOf(*record); std::isfinite(factor))
      record = scaled(std::move(record), factor, header);
  }
  if (unknown > 0)
    notes.append(QStringLiteral("found no distance of %1 of %2 records: their amplitudes stay as they are")
                     .arg(unknown)
                     .arg(records.size()));
  return records;
}

} // namespace xov
