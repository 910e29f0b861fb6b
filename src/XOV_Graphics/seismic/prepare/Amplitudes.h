#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <cstdint>

namespace xov {

/// Whose mean is taken away from a record.
enum class MeanOf : std::uint8_t {
  Record,  ///< its own
  Channel, ///< that of all records of its channel, so that no step appears between pieces of a recording
};

/// The records without a mean, for views that draw samples about the middle of a band. Samples that are not finite
/// take no part in a mean, and stay. Others' records stay as they are; those that nobody else holds lend their
/// samples (changedRecord()). Records must not be null.
XOV_EXPORT SeismogramArray withoutMeans(SeismogramArray records, MeanOf mean);

/// The largest absolute sample of all records, which a scale may be divided by: 1 where there is none above 0.
/// Records must not be null.
XOV_EXPORT float largestAmplitude(const SeismogramArray& records);

} // namespace xov
