#include "XOV_Graphics/seismic/prepare/Amplitudes.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <utility>

namespace xov {

namespace {

struct Sum {
  double samples = 0;
  double count = 0;

  double mean() const { return count > 0 ? samples / count : 0; }
};

void add(Sum& sum, const SeismogramRecord& record) {
  for (const float sample : samplesOf(record)) {
    if (!std::isfinite(sample)) continue;
    sum.samples += double(sample);
    ++sum.count;
  }
}

std::shared_ptr<SeismogramRecord> lowered(std::shared_ptr<SeismogramRecord> record, double by) {
  auto changed = changedRecord(std::move(record));
  for (float& sample : changed->samples())
    sample = float(double(sample) - by);
  changed->ComputeExtrema();
  return changed;
}

} // namespace

SeismogramArray withoutMeans(SeismogramArray records, MeanOf mean) {
  QHash<QString, Sum> channels;
  if (mean == MeanOf::Channel) {
    for (const auto& record : records)
      add(channels[record->labelString()], *record);
  }
  for (auto& record : records) {
    Sum sum = channels.value(record->labelString());
    if (mean == MeanOf::Record) add(sum, *record);
    record = lowered(std::move(record), sum.mean());
  }
  return records;
}

float largestAmplitude(const SeismogramArray& records) {
  float largest = 0;
  for (const auto& record : records)
    largest = std::max(largest, record->absMax());
  return largest > 0 ? largest : 1;
}

} // namespace xov
