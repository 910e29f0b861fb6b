#pragma once

#include "XOV_Graphics/seismic/io/events/EventReaders.h"

namespace xov {

/// Whether a file begins with a hypocentre of the machine-readable PDE bulletin: "HY" and a date.
bool isMchedr(QByteArrayView head);

/// Reads events of the Preliminary Determination of Epicenters in records of 60 columns (U.S. Geological Survey,
/// National Earthquake Information Center, "mchedr.txt", format of the Machine-Readable Earthquake Data Report): the
/// origin of HY, the magnitudes of E and AE, and of A the official one, which is the event's own. Records of phases,
/// comments and sources are skipped.
Result<EventFile> readMchedr(QByteArrayView text, const QString& name);

} // namespace xov
