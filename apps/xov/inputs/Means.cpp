#include "apps/xov/inputs/Means.h"

#include <QHash>

#include <XOV_Graphics/seismic/SacSeismogram.h>
#include <algorithm>
#include <cmath>
#include <span>

namespace xov::cli {

namespace {

struct Sum {
  double samples = 0;
  double count = 0;
};

std::span<const float> samplesOf(const SeismogramRecord& record) {
  return {record.GetSacSeis(), std::size_t(std::max(record.npts(), 0))};
}

void add(Sum& sum, const SeismogramRecord& record) {
  for (const float sample : samplesOf(record)) {
    if (!std::isfinite(sample)) continue;
    sum.samples += double(sample);
    ++sum.count;
  }
}

} // namespace

SeismogramArray withoutMeans(const SeismogramArray& records) {
  QHash<QString, Sum> sums;
  for (const auto& record : records)
    add(sums[record->labelString()], *record);
  SeismogramArray centered;
  for (const auto& record : records) {
    const Sum sum = sums.value(record->labelString());
    const double mean = sum.count > 0 ? sum.samples / sum.count : 0;
    std::vector<float> samples;
    samples.reserve(samplesOf(*record).size());
    for (const float sample : samplesOf(*record))
      samples.push_back(float(double(sample) - mean));
    const auto* const trace = dynamic_cast<const SacSeismogram*>(record.get());
    const SacHeader header = record->GetSacHeader() ? *record->GetSacHeader() : SacHeader();
    centered.push_back(
        std::make_shared<SacSeismogram>(header, std::move(samples), record->path(),
                                        trace ? std::optional<SacFooter>(trace->preciseValues()) : std::nullopt));
  }
  return centered;
}

} // namespace xov::cli
