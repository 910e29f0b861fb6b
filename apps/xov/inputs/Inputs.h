#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace xov::cli {

/// A file to read.
struct InputFile {
  QString path;
  QString folder; ///< the folder argument that it was found under; empty when the user named the file itself
};

/// What the arguments of a command stand for.
struct InputList {
  std::vector<InputFile> files;
  QStringList errors; ///< one line for each argument that stands for nothing
};

/// The files that the arguments stand for, in their order. An argument is the name of a file or folder, or else a
/// pattern with *, ?, [abc] or {a,b}, which stands for the names that match it, sorted. A folder stands for the files
/// in it and in the folders below it, sorted; hidden ones are left out. Nothing is opened: a named file that does not
/// exist is found out by reading it.
InputList expandInputs(const QStringList& arguments);

} // namespace xov::cli
