#pragma once

#include "XOV_Graphics/seismic/io/events/EventReaders.h"

namespace xov {

/// Whether the first row that is not empty is one of ZMAP.
bool isZmap(QByteArrayView head);

/// Reads events in the columns of ZMAP (S. Wiemer, "A software package to analyze seismicity: ZMAP", Seismological
/// Research Letters 72, 2001; with the uncertainties that CSEP added, which do not count here): longitude, latitude,
/// year, month, day, magnitude, depth in km, hour, minute, second, between blanks, tabulators or commas, as numbers
/// of any form, such as Matlab's. Of the year, which may have decimals for the time in it, the whole part counts.
/// Rows without a column of seconds are read, too.
Result<EventFile> readZmap(QByteArrayView text, const QString& name);

} // namespace xov
