#include "XOV_Graphics/seismic/prepare/RecordSamples.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <cmath>
#include <utility>

namespace xov {

namespace {

float meanOf(std::span<const double> samples) {
  double sum = 0;
  double count = 0;
  for (const double sample : samples) {
    if (!std::isfinite(sample)) continue;
    sum += sample;
    ++count;
  }
  return count > 0 ? toSinglePrecision(sum / count) : kUndefinedValue;
}

} // namespace

std::vector<double> doublesOf(const SeismogramRecord& record) {
  const std::span<const float> samples = samplesOf(record);
  return {samples.begin(), samples.end()};
}

std::shared_ptr<SacSeismogram> copyWithSamples(const SeismogramRecord& record, std::span<const double> samples,
                                               RecordChanges changes) {
  SacHeader header = changes.header.value_or(headerOf(record));
  header.depmen = meanOf(samples);
  changes.header = header;
  std::vector<float> rounded;
  rounded.reserve(samples.size());
  for (const double sample : samples)
    rounded.push_back(toSinglePrecision(sample));
  changes.samples = std::move(rounded);
  return copyOfRecord(record, std::move(changes));
}

Status checkInterval(const SeismogramRecord& record) {
  const double interval = intervalSeconds(record);
  if (interval > 0 && std::isfinite(interval)) return {};
  return errorOf(record,
                 QStringLiteral("found a sample interval of %1 s, expected more than 0").arg(numberText(interval)));
}

Error errorOf(const SeismogramRecord& record, const QString& text) {
  return {record.labelString() + QStringLiteral(": ") + text};
}

} // namespace xov
