#include "apps/xov/inputs/Inputs.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <glob.h>

namespace xov::cli {

namespace {

bool isPattern(const QString& argument) {
  return std::any_of(argument.begin(), argument.end(), [](QChar c) { return QStringLiteral("*?[{").contains(c); });
}

QStringList matchingNames(const QString& pattern) {
#ifdef GLOB_BRACE
  constexpr int kFlags = GLOB_BRACE;
#else
  constexpr int kFlags = 0;
#endif
  glob_t found = {};
  QStringList names;
  if (::glob(QFile::encodeName(pattern).constData(), kFlags, nullptr, &found) == 0) {
    for (std::size_t i = 0; i < found.gl_pathc; ++i)
      names.append(QFile::decodeName(found.gl_pathv[i]));
  }
  ::globfree(&found);
  // In the same order everywhere, whatever the locale.
  names.sort();
  return names;
}

void addFolder(const QString& folder, InputList& list) {
  QStringList paths;
  QDirIterator entries(folder, QDir::Files, QDirIterator::Subdirectories);
  while (entries.hasNext())
    paths.append(entries.next());
  if (paths.isEmpty()) list.errors.append(folder + QStringLiteral(": the folder holds no files"));
  paths.sort();
  for (const QString& path : paths)
    list.files.push_back({path, folder});
}

void addName(const QString& name, InputList& list) {
  if (QFileInfo(name).isDir()) {
    addFolder(name, list);
  } else {
    list.files.push_back({name, QString()});
  }
}

} // namespace

InputList expandInputs(const QStringList& arguments) {
  InputList list;
  for (const QString& argument : arguments) {
    if (argument.isEmpty()) {
      list.errors.append(QStringLiteral("'': a file name is empty"));
    } else if (!isPattern(argument) || QFileInfo::exists(argument)) {
      addName(argument, list);
    } else {
      const QStringList names = matchingNames(argument);
      if (names.isEmpty()) list.errors.append(argument + QStringLiteral(": no file matches"));
      for (const QString& name : names)
        addName(name, list);
    }
  }
  return list;
}

} // namespace xov::cli
