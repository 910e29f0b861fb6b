#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"

#include <span>
#include <vector>

namespace xov {

/// The record's samples in double precision, to work on.
std::vector<double> doublesOf(const SeismogramRecord& record);

/// A copy of the record with these samples, in single precision, and the changes; the header gets their extremes and
/// their mean.
std::shared_ptr<SacSeismogram> copyWithSamples(const SeismogramRecord& record, std::span<const double> samples,
                                               RecordChanges changes = {});

/// Refuses a record whose sample interval is not above 0.
Status checkInterval(const SeismogramRecord& record);

/// An error with the record's name in front.
Error errorOf(const SeismogramRecord& record, const QString& text);

} // namespace xov
