#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <optional>

namespace xov {

/// Time and amplitude limits that hold a set of records.
struct XOV_EXPORT RecordLimits {
  float tmin = 0; ///< earliest time
  float tmax = 0; ///< latest time
  float amin = 0; ///< smallest amplitude
  float amax = 0; ///< largest amplitude

  bool operator==(const RecordLimits&) const = default;
};

/// The span from the earliest begin to the latest end of the records and the range of their samples, with a margin of
/// 0.05 times that range on both sides. The range counts in whole units, so amplitudes that span less than 1 get no
/// margin; nor do ranges beyond 32 bits. Where both extremes are smaller in size than `minYRange`, the amplitudes run
/// from −minYRange to minYRange before the margin. Null records do not count; nothing when there are no others.
XOV_EXPORT std::optional<RecordLimits> recordLimits(const SeismogramArray& records, float minYRange);

} // namespace xov
