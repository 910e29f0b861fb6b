#pragma once

#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/array/BeamPower.h"
#include "XOV_Graphics/seismic/array/StationTable.h"

#include <QStringList>

namespace xov {

/// Recordings as the traces of an array. The traces borrow the records' samples.
struct RecordArray {
  std::vector<ArrayTrace> traces; ///< one a record
  double intervalSeconds = 0;     ///< of the samples of all traces
};

/// Makes an array of records: one record for each station, all with one sample interval. A station stands where the
/// table says, under its code or as NETWORK.STATION, or else where the header's stla and stlo say. Records are lined
/// up by the date of their reference times; where no record has one, by the times of their axes.
///
/// `names` are those of the records in messages, in the same order. An error is one line that begins with the name of
/// the record that is at fault.
XOV_EXPORT Result<RecordArray> arrayOfRecords(const SeismogramArray& records, const QStringList& names,
                                              const StationTable& places = {}) noexcept;

} // namespace xov
