#pragma once

#include "platform/Export.h"
#include "seismic/SeismogramRecord.h"
#include "seismic/io/Result.h"

#include <QString>
#include <QStringList>

namespace xov {

/// Reads all traces of a file in any of the known formats; the contents decide, not the name. Errors are one line
/// that names the file and what was expected.
XOV_EXPORT Result<SeismogramArray> readSeismograms(const QString& path) noexcept;

/// The names of the known formats, such as "SAC binary".
XOV_EXPORT QStringList seismogramFormats();

} // namespace xov
