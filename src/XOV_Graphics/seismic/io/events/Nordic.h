#pragma once

#include "XOV_Graphics/seismic/io/events/EventReaders.h"

namespace xov {

/// Whether a file begins with a hypocentre line of the Nordic format, be it after other lines of 80 columns.
bool isNordic(QByteArrayView head);

/// Reads the events of S-files and catalogues in the Nordic format of SEISAN (J. Havskov, P. Voss and L. Ottemoeller,
/// SEISAN: Earthquake analysis software, manual, appendix A), with the phases in their old or their new columns,
/// which do not count here. An event ends with a blank line: its first line of type 1 is the origin, all of them
/// have magnitudes, three at most; the first line of type F has a nodal plane. In a compact file, of nothing but
/// lines of type 1 without blank ones between, each is an event.
Result<EventFile> readNordic(QByteArrayView text, const QString& name);

} // namespace xov
