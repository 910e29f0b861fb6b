#pragma once

#include <QMetaType>
#include <QString>

#include <XOV_Graphics/seismic/SeismogramOutline.h>
#include <cstdint>
#include <vector>

namespace xov::desk {

/// What a file holds.
enum class FileKind : std::uint8_t { Seismograms, Archive, Events, Stations, Grid, Columns, Lines };

inline constexpr FileKind kFileKinds[] = {FileKind::Seismograms, FileKind::Archive, FileKind::Events,
                                          FileKind::Stations,    FileKind::Grid,    FileKind::Columns,
                                          FileKind::Lines};

/// A kind in the user's language.
QString fileKindText(FileKind kind);

/// One row of the catalogue: a channel of a seismogram file or of an archive, or another file as a whole.
struct FileEntry {
  FileKind kind = FileKind::Seismograms;
  QString path;                ///< of the file; the folder of an archive
  ChannelOutline channel = {}; ///< of events the first and last time; a number that is not known is -1
  QString what = {};           ///< the format, or how much there is of what
};

using FileEntries = std::vector<FileEntry>;

/// A file or folder that could not be read.
struct LeftOutFile {
  QString path;
  QString reason; ///< one line
};

} // namespace xov::desk

Q_DECLARE_METATYPE(xov::desk::FileEntries)
