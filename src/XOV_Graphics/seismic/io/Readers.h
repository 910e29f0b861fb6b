#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SeismogramFile.h"

#include <QString>
#include <QStringList>

namespace xov {

/// Reads the traces of a file in any of the known formats; the contents decide, not the name. Errors are one line
/// that names the file and what was expected. When options.channels selects nothing in the file, there are no
/// records, and a note says so.
XOV_EXPORT Result<SeismogramFile> readSeismogramFile(const QString& path,
                                                     const SeismogramReadOptions& options = {}) noexcept;

/// Reads all traces of a file, without the notes.
XOV_EXPORT Result<SeismogramArray> readSeismograms(const QString& path) noexcept;

/// The names of the known formats, such as "SAC binary".
XOV_EXPORT QStringList seismogramFormats();

} // namespace xov
