#include "XOV_Graphics/seismic/prepare/Amplitudes.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include <QHash>

#include <algorithm>
#include <cmath>

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

std::shared_ptr<SeismogramRecord> lowered(const SeismogramRecord& record, double by) {
  const std::span<const float> own = samplesOf(record);
  std::vector<float> samples(own.size());
  std::ranges::transform(own, samples.begin(), [&](float sample) { return float(double(sample) - by); });
  return copyOfRecord(record, {.samples = std::move(samples)});
}

} // namespace

SeismogramArray withoutMeans(const SeismogramArray& records, MeanOf mean) {
  QHash<QString, Sum> channels;
  if (mean == MeanOf::Channel) {
    for (const auto& record : records)
      add(channels[record->labelString()], *record);
  }
  SeismogramArray centered;
  for (const auto& record : records) {
    Sum sum = channels.value(record->labelString());
    if (mean == MeanOf::Record) add(sum, *record);
    centered.push_back(lowered(*record, sum.mean()));
  }
  return centered;
}

float largestAmplitude(const SeismogramArray& records) {
  float largest = 0;
  for (const auto& record : records)
    largest = std::max(largest, record->absMax());
  return largest > 0 ? largest : 1;
}

} // namespace xov
