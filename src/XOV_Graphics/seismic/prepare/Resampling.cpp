#include "XOV_Graphics/seismic/prepare/Resampling.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/prepare/RecordSamples.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kMostSamples = double(1 << 28);
constexpr double kSameTime = 1e-3;  // intervals
constexpr double kRounding = 4e-8;  // of an interval, in sums of times
constexpr double kSameRatio = 1e-7; // what intervals in single precision are off

/// One interval in another; a whole number or its inverse where it is one but for what single precision makes of it,
/// so that samples which should come together do.
double stepBetween(double interval, double newInterval) {
  const double step = newInterval / interval;
  const double whole = step >= 1 ? std::round(step) : 1 / std::round(1 / step);
  return std::abs(step - whole) <= kSameRatio * whole ? whole : step;
}

/// A copy with other samples, that many seconds apart, the first one that long after the record's own.
std::shared_ptr<SacSeismogram> copyWithInterval(const SeismogramRecord& record, std::span<const double> samples,
                                                double intervalSeconds, double later) {
  SacFooter precise = preciseValuesOf(record);
  precise.delta = intervalSeconds;
  precise.b += later;
  precise.e = precise.b + (double(samples.size()) - 1) * intervalSeconds;
  return copyWithSamples(record, samples, {.precise = precise});
}

} // namespace

Result<std::shared_ptr<SacSeismogram>> decimated(const SeismogramRecord& record, int factor,
                                                 FilterPhase phase) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    if (factor < 1 || factor > int(kMostDecimation))
      return errorOf(
          record,
          QStringLiteral("found a decimation by %1, expected one by 1 to %2").arg(factor).arg(kMostDecimation));
    if (const Status status = checkInterval(record); !status) return Error{status.error()};
    const std::vector<double> samples = decimate(doublesOf(record), std::size_t(factor), phase);
    return copyWithInterval(record, samples, intervalSeconds(record) * factor, 0);
  });
}

Result<std::shared_ptr<SacSeismogram>> resampled(const SeismogramRecord& record, double intervalSeconds,
                                                 std::optional<double> throughSeconds) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    if (const Status status = checkInterval(record); !status) return Error{status.error()};
    const SacFooter precise = preciseValuesOf(record);
    const std::vector<double> samples = doublesOf(record);
    const double through = throughSeconds.value_or(precise.b) - precise.b;
    const double duration = (double(samples.size()) - 1) * precise.delta;
    if (!(intervalSeconds > 0) || !std::isfinite(intervalSeconds) || !std::isfinite(through))
      return errorOf(record, QStringLiteral("found a new sample interval of %1 s, expected more than 0")
                                 .arg(numberText(intervalSeconds)));
    const double step = stepBetween(precise.delta, intervalSeconds);
    if (step > double(kMostDecimation))
      return errorOf(record,
                     QStringLiteral("found a new sample interval of %1 s, expected at most %2 of the record's")
                         .arg(numberText(intervalSeconds))
                         .arg(kMostDecimation));
    intervalSeconds = step * precise.delta;
    const double shorter = std::min(intervalSeconds, precise.delta);
    const double begin = std::ceil(-through / intervalSeconds - kSameTime) * intervalSeconds + through;
    const double later = std::max(begin, 0.0);
    const double count = std::floor((duration - later + kRounding * shorter) / intervalSeconds) + 1;
    if (samples.empty() || !(count >= 1))
      return errorOf(record, QStringLiteral("found %1 samples, expected some at intervals of %2 s")
                                 .arg(samples.size())
                                 .arg(numberText(intervalSeconds)));
    if (count > kMostSamples)
      return errorOf(record, QStringLiteral("found a new sample interval of %1 s, expected at most %2 samples of it")
                                 .arg(numberText(intervalSeconds), numberText(kMostSamples)));
    const SamplePlaces places{later / precise.delta, step, std::size_t(count)};
    return copyWithInterval(record, resample(samples, places), intervalSeconds, later);
  });
}

namespace {

/// Whether an interval is that of the record, so that its last sample is where it should be.
bool hasInterval(const SeismogramRecord& record, double interval) {
  return std::abs(intervalSeconds(record) - interval) * double(samplesOf(record).size()) <= kSameTime * interval;
}

} // namespace

Result<SeismogramArray> onCommonSamples(SeismogramArray records, std::optional<double> interval) noexcept {
  return guarded({}, [&]() -> Result<SeismogramArray> {
    if (records.empty()) return records;
    for (const auto& record : records) {
      if (const Status status = checkInterval(*record); !status) return Error{status.error()};
    }
    const auto intervalOf = [](const auto& record) { return intervalSeconds(*record); };
    const double common = interval.value_or(intervalOf(*std::ranges::min_element(records, {}, intervalOf)));
    const bool isUtc =
        std::ranges::all_of(records, [](const auto& record) { return startSeconds(*record).has_value(); });
    const auto startOf = [&](const SeismogramRecord& record) {
      return isUtc ? *startSeconds(record) : preciseValuesOf(record).b;
    };
    const double anchor = startOf(*records.front());
    for (auto& record : records) {
      const double start = startOf(*record);
      const double away = std::remainder(anchor - start, common); // from the record's begin to a common sample
      if (hasInterval(*record, common) && std::abs(away) <= kSameTime * common) continue;
      auto changed = resampled(*record, common, preciseValuesOf(*record).b + away);
      if (!changed) return Error{changed.error()};
      record = *changed;
    }
    return records;
  });
}

} // namespace xov
