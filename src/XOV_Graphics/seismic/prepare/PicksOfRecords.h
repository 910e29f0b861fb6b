#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/picks/Pick.h"
#include "XOV_Graphics/seismic/prepare/PreparedRecords.h"

#include <optional>

namespace xov {

/// The moment at a time on the record's axis, in seconds; nothing when the record does not know its reference time,
/// or for what is no time.
XOV_EXPORT std::optional<UtcNanoseconds> momentOnAxis(const SeismogramRecord& record, double seconds);

/// The time of a moment on the record's axis in seconds; nothing when the record does not know its reference time.
XOV_EXPORT std::optional<double> secondsOnAxis(const SeismogramRecord& record, UtcNanoseconds moment);

/// The picks that the header of a record holds (A, F, T0 to T9) under the names that they have there (pickName()),
/// with ids that tell channel, place and time: the same in each reading. None when the record does not know its
/// reference time.
XOV_EXPORT PickArray picksOf(const SeismogramRecord& record);

/// Records with these picks in their headers, in copies (changedRecord()). Those that have any of them (isPickOf())
/// lose the picks that they had: a pick goes where the header had one of its name, or to the first arrival (A) if it
/// is the earliest whose name begins with a P, or to a free place of T0 to T9. Notes count the picks that no record
/// is of, and name the records that do not know their reference time or have no room left. Records must not be null.
XOV_EXPORT PreparedRecords withPicks(SeismogramArray records, const PickArray& picks);

} // namespace xov
