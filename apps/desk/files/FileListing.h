#pragma once

#include "apps/desk/files/FileEntry.h"

#include <QStringList>

#include <stop_token>

namespace xov::desk {

/// What paths stand for.
struct FoundPaths {
  QStringList files;    ///< those named, and those in folders, which are sorted
  QStringList archives; ///< folders of seismograms by days
  std::vector<LeftOutFile> leftOut;
};

/// Looks into folders and those below them: hidden files are passed over, links to folders not followed, and a folder
/// that cannot be read is left out. Ends early once `stop` is requested.
FoundPaths findFiles(const QStringList& paths, const std::stop_token& stop);

/// What looking into a file, or an archive, gave.
struct FileListing {
  FileEntries entries;
  std::vector<LeftOutFile> leftOut; ///< the file itself, where it is nothing that can be shown
};

/// Lists a file by its headers: the samples of seismograms are not read.
FileListing listFile(const QString& path, const std::stop_token& stop);

/// Lists the channels of an archive with their spans.
FileListing listArchive(const QString& root, const std::stop_token& stop);

} // namespace xov::desk
