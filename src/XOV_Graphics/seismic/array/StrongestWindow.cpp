#include "XOV_Graphics/seismic/array/StrongestWindow.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/seismic/array/BeamWindow.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace xov {

namespace {

// By so much a sum may come out larger that is not: it is kept up by adding and taking away.
constexpr double kRounding = 1e-9;

// Mean and variance of the samples that are numbers.
std::pair<double, double> momentsOf(std::span<const float> samples) {
  double sum = 0;
  double squares = 0;
  double count = 0;
  for (const float sample : samples) {
    if (!std::isfinite(sample)) continue;
    sum += double(sample);
    squares += double(sample) * double(sample);
    ++count;
  }
  if (count == 0) return {0, 0};
  return {sum / count, std::max(0.0, squares / count - sum / count * (sum / count))};
}

// Adds the power of a trace, of which there is 1 a sample on average.
void addPower(std::span<const float> samples, std::vector<double>& power) {
  const auto [mean, variance] = momentsOf(samples);
  if (!(variance > 0) || !std::isfinite(variance)) return;
  for (std::size_t i = 0; i < power.size(); ++i) {
    if (!std::isfinite(samples[i])) continue;
    const double distance = double(samples[i]) - mean;
    power[i] += distance * distance / variance;
  }
}

// Where the `length` values with the largest sum begin; the first such place.
std::size_t strongestStart(const std::vector<double>& power, std::size_t length) {
  double sum = 0;
  for (std::size_t i = 0; i < length; ++i)
    sum += power[i];
  double largest = sum;
  std::size_t best = 0;
  for (std::size_t start = 1; start + length <= power.size(); ++start) {
    sum += power[start + length - 1] - power[start - 1];
    if (!(sum > largest * (1 + kRounding))) continue;
    largest = sum;
    best = start;
  }
  return best;
}

Result<std::optional<ArrayWindow>> find(std::span<const ArrayTrace> traces, double interval, std::size_t length) {
  BeamSearch all;
  all.intervalSeconds = interval;
  const Result<BeamWindow> common = beamWindow(traces, all);
  if (!common) return Error{common.error()};
  if (length == 0 || common->samples <= length) return std::optional<ArrayWindow>();
  std::vector<double> power(common->samples);
  for (std::size_t n = 0; n < traces.size(); ++n)
    addPower(traces[n].samples.subspan(common->first[n], common->samples), power);
  const double from = double(strongestStart(power, length)) * interval;
  return std::optional(ArrayWindow{from, from + double(length) * interval, double(common->samples) * interval});
}

} // namespace

Result<std::optional<ArrayWindow>> strongestWindow(std::span<const ArrayTrace> traces, double intervalSeconds,
                                                   std::size_t samples) noexcept {
  return guarded(QStringLiteral("array"), [&] { return find(traces, intervalSeconds, samples); });
}

} // namespace xov
