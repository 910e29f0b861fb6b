#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SeismogramFile.h"
#include "XOV_Graphics/seismic/SeismogramOutline.h"
#include "XOV_Graphics/seismic/SeismogramSummary.h"

#include <QIODevice>
#include <QString>
#include <QStringList>

#include <stop_token>
#include <vector>

namespace xov {

/// Reads the traces of a file in any of the known formats; the contents decide, not the name. Errors are one line
/// that names the file and what was expected. When options.channels selects nothing in the file, there are no
/// records, and a note says so.
XOV_EXPORT Result<SeismogramFile> readSeismogramFile(const QString& path,
                                                     const SeismogramReadOptions& options = {}) noexcept;

/// Reads several files, some of them at the same time on threadCount() threads. What became of each stands at its
/// place in the list.
XOV_EXPORT std::vector<Result<SeismogramFile>> readSeismogramFiles(const QStringList& paths,
                                                                   const SeismogramReadOptions& options = {});

/// The same from a device that is open, at its start, and not sequential, such as a QBuffer or a spooled pipe. `name`
/// stands for it in errors and notes, and `path` becomes that of the records.
XOV_EXPORT Result<SeismogramFile> readSeismogramDevice(QIODevice& device, const QString& name, const QString& path,
                                                       const SeismogramReadOptions& options = {}) noexcept;

/// Reads a file as readSeismogramFile() does and sums its samples up without keeping them: memory stays small
/// whatever the size of the file. Only files of text are read whole.
XOV_EXPORT Result<SeismogramFileSummary> summarizeSeismogramFile(const QString& path,
                                                                 const SeismogramReadOptions& options = {}) noexcept;
/// The same of a device, as readSeismogramDevice() reads it.
XOV_EXPORT Result<SeismogramFileSummary>
summarizeSeismogramDevice(QIODevice& device, const QString& name, const QString& path,
                          const SeismogramReadOptions& options = {}) noexcept;

/// What a file holds by its headers, to be listed: samples are not decoded, and no more of a file is in memory than
/// some. Only files of text are read whole. The error of a file that readSeismogramFile() refuses, as far as headers
/// show it; another one once `stop` is requested.
XOV_EXPORT Result<SeismogramOutline> outlineSeismogramFile(const QString& path, std::stop_token stop = {}) noexcept;

/// Reads all traces of a file, without the notes.
XOV_EXPORT Result<SeismogramArray> readSeismograms(const QString& path) noexcept;

/// The format of a file, by its first bytes; empty where it is none of the known ones or cannot be read.
XOV_EXPORT QString seismogramFormatOf(const QString& path) noexcept;

/// The names of the known formats, such as "SAC binary".
XOV_EXPORT QStringList seismogramFormats();

} // namespace xov
