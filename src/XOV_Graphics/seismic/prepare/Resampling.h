#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/signal/Resample.h"

#include <memory>
#include <optional>

namespace xov {

/// The record with every `factor`-th sample, from its first one on: decimate(). Refuses a factor that is not in
/// 1 ... kMostDecimation, and a record without an interval.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> decimated(const SeismogramRecord& record, int factor,
                                                            FilterPhase phase = FilterPhase::Zero) noexcept;

/// The record with other sample times, `intervalSeconds` apart, from the first one at or after its begin on that is a
/// whole number of intervals away from `throughSeconds`, on the record's axis (where it is not given, from its
/// begin); as far as the record reaches: resample(). Refuses an interval that is not above 0 or makes more than 2²⁸
/// samples, a record without samples at the new times, and one without an interval.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> resampled(const SeismogramRecord& record, double intervalSeconds,
                                                            std::optional<double> throughSeconds = {}) noexcept;

/// The records with samples at the same times, so that they can be added, subtracted and compared sample by sample:
/// with this interval, or without one with the shortest among them, and all a whole number of intervals away from the
/// first sample of the first record. Records that are so already, to a thousandth of an interval, stay as they are.
/// Times are compared in UTC where all records know theirs, else on their axes. Records must not be null.
XOV_EXPORT Result<SeismogramArray> onCommonSamples(SeismogramArray records,
                                                   std::optional<double> interval = {}) noexcept;

} // namespace xov
