#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QStringList>

namespace xov {

/// Records after a step that may not apply to all of them: none is lost.
struct XOV_EXPORT PreparedRecords {
  SeismogramArray records; ///< in the order in which they came
  QStringList notes;       ///< what could not be done, and for which records; one line each
};

/// The stations of records, each once, for a note: "II.TLY, IU.ANMO". Of more than five, the others are counted.
/// Records must not be null.
XOV_EXPORT QString stationsText(const SeismogramArray& records);

} // namespace xov
