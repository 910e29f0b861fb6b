#include "XOV_Graphics/views/seismic/RecordLimits.h"

#include <cmath>
#include <cstdint>

namespace xov {

namespace {

constexpr float kBeyondData = 1e25f;
constexpr double kMargin = 0.05;

void include(RecordLimits& limits, const RecordLimits& record) {
  if (record.tmin < limits.tmin) limits.tmin = record.tmin;
  if (record.tmax > limits.tmax) limits.tmax = record.tmax;
  if (record.amin < limits.amin) limits.amin = record.amin;
  if (record.amax > limits.amax) limits.amax = record.amax;
}

// Truncates towards zero; what does not fit in 32 bits, NaN included, counts as 0.
std::int32_t wholeRange(float range) {
  constexpr float kFirstBeyond = 0x1p31f;
  return range >= -kFirstBeyond && range < kFirstBeyond ? std::int32_t(range) : 0;
}

} // namespace

std::optional<RecordLimits> recordLimits(const SeismogramArray& records, float minYRange) {
  RecordLimits limits{kBeyondData, -kBeyondData, kBeyondData, -kBeyondData};
  bool counted = false;
  for (const auto& record : records) {
    if (!record) continue;
    include(limits, {record->b(), record->e(), record->smin(), record->smax()});
    counted = true;
  }
  if (!counted) return std::nullopt;
  // The margin follows the data, also where the range is then widened.
  const double margin = kMargin * wholeRange(limits.amax - limits.amin);
  if (std::abs(limits.amin) < minYRange && std::abs(limits.amax) < minYRange) {
    limits.amin = -minYRange;
    limits.amax = minYRange;
  }
  limits.amin = float(limits.amin - margin);
  limits.amax = float(limits.amax + margin);
  return limits;
}

} // namespace xov
