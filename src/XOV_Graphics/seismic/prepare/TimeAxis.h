#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QDateTime>

#include <optional>

namespace xov {

/// The moment (UTC) that the record's times count from; invalid when it is unknown.
XOV_EXPORT QDateTime referenceTimeOf(const SeismogramRecord& record);

/// When a record's first sample was taken, in seconds since 1970 (UTC); nothing when its reference time is unknown.
/// In double precision where the record has it.
XOV_EXPORT std::optional<double> startSeconds(const SeismogramRecord& record);

/// The record's sample interval in seconds, in double precision where the record has it.
XOV_EXPORT double intervalSeconds(const SeismogramRecord& record);

/// The record with all its times (samples, origin, picks) counted from `reference`, to the millisecond: another
/// record (changedRecord()), or the record itself when it counts from there already or when one of the two times is
/// unknown.
XOV_EXPORT std::shared_ptr<SeismogramRecord> onTimeAxis(std::shared_ptr<SeismogramRecord> record,
                                                        const QDateTime& reference);

/// The record with all its times (samples, origin, picks) counted from `seconds` on its axis, which becomes 0:
/// another record (changedRecord()). Its reference time, where it is known, moves along to the nearest millisecond. A
/// zero that is not finite, or centuries away, leaves the record as it is.
XOV_EXPORT std::shared_ptr<SeismogramRecord> countedFrom(std::shared_ptr<SeismogramRecord> record, double seconds);

/// The pieces of a recording as a page of rows takes them, which has one time axis for all: sorted by their starts,
/// with all times counted from the reference time of the first. Records whose time is unknown come last, as they are;
/// null ones are left out.
XOV_EXPORT SeismogramArray consecutivePieces(SeismogramArray records);

} // namespace xov
