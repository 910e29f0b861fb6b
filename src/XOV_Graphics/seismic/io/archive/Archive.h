#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SeismogramFile.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace xov {

/// What stands in a note between a file and why the index of it could not be kept.
inline constexpr char kIndexNotKept[] = ": its index is not kept: ";

/// Where to keep the extremes of files, by which they are opened without reading their samples.
struct XOV_EXPORT IndexCache {
  /// A folder for the indexes of all files, made where there is none; with an empty name, each is kept beside its
  /// file, hidden by a point before its name.
  QString folder;
};

/// Opens a file of traces whose samples are read when they are drawn or asked for, and forgotten when more memory
/// would be needed than setPagedSamplesLimit() (base/PagedSamples.h) allows: records and notes are those of
/// readSeismogramFile(), pictures too. Binary SAC and miniSEED; files of text and those of less than a megabyte are
/// read whole.
///
/// The samples are gone through once for their extremes, unless `cache` has an index of this very file (its size, the
/// time of its last change and its first bytes are compared, and the index has a check value). One that is damaged or
/// of another version is never used: it is made anew. It is written whole or not at all; that it could not be written
/// is noted, and the file opened all the same.
///
/// Who asks such a record for all samples at once (GetSacSeis()) has them all in memory; borrowedSamples() does not.
/// A file that is changed or removed while its records live, or cannot be read any more, gives gaps for what was not
/// read before; takeSampleFaults() tells.
XOV_EXPORT Result<SeismogramFile> openSeismogramFile(const QString& path, const SeismogramReadOptions& options = {},
                                                     const std::optional<IndexCache>& cache = {}) noexcept;

/// The same of several miniSEED files, read one after the other as if they were one: what goes on from one file in
/// the next is one record, and what several of them hold is there once. One index is kept of them together. A file
/// that has gone is left out, with a note; when all have, or one cannot be read, that is the error. The records have
/// the first file's path.
XOV_EXPORT Result<SeismogramFile> openJoinedFiles(const QStringList& paths, const SeismogramReadOptions& options = {},
                                                  const std::optional<IndexCache>& cache = {}) noexcept;

/// Why samples could not be read since this was asked last, where they were drawn or asked for: a line a file, each
/// once. Any thread.
XOV_EXPORT QStringList takeSampleFaults();

/// Has a function called each time when takeSampleFaults() has something new to tell, in the thread that reads, which
/// may be drawing: it wakes up whoever asks and does not ask itself. An empty function, as at first, is not called.
/// Any thread.
XOV_EXPORT void setSampleFaultHandler(std::function<void()> handler);

/// Where the index of a file is kept.
XOV_EXPORT QString indexPathOf(const QString& path, const IndexCache& cache);

} // namespace xov
