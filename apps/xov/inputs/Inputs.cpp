#include "apps/xov/inputs/Inputs.h"

#include <XOV_Graphics/base/FileName.h>
#include <algorithm>
#include <filesystem>
#include <glob.h>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace xov::cli {

namespace {

namespace fs = std::filesystem;

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
  if (::glob(fileNameBytes(pattern).constData(), kFlags, nullptr, &found) == 0) {
    for (std::size_t i = 0; i < found.gl_pathc; ++i)
      names.append(fileNameFromBytes(found.gl_pathv[i]));
  }
  ::globfree(&found);
  // In the same order everywhere, whatever the locale.
  names.sort();
  return names;
}

bool isHidden(const fs::directory_entry& entry) { return entry.path().filename().native().starts_with('.'); }

fs::path systemPath(const QString& name) { return fileNameBytes(name).toStdString(); }

// All files in a folder and those below it, but for hidden ones; a line for each folder that cannot be read.
QStringList filesBelow(const QString& folder, QStringList& errors) {
  QStringList paths;
  std::vector<fs::path> folders = {systemPath(folder)};
  while (!folders.empty()) {
    const fs::path current = std::move(folders.back());
    folders.pop_back();
    std::error_code problem;
    fs::directory_iterator entry(current, problem);
    for (const fs::directory_iterator end; !problem && entry != end; entry.increment(problem)) {
      std::error_code unknown;
      if (isHidden(*entry)) continue;
      if (entry->is_directory(unknown) && !entry->is_symlink(unknown)) {
        folders.push_back(entry->path());
      } else if (entry->is_regular_file(unknown)) {
        paths.append(fileNameFromBytes(entry->path().native()));
      }
    }
    if (problem)
      errors.append(fileNameFromBytes(current.native()) + QStringLiteral(": cannot be read: ") +
                    QString::fromLocal8Bit(problem.message()));
  }
  paths.sort();
  return paths;
}

void addFolder(const QString& folder, InputList& list) {
  const qsizetype errors = list.errors.size();
  const QStringList paths = filesBelow(folder, list.errors);
  if (paths.isEmpty() && list.errors.size() == errors)
    list.errors.append(folder + QStringLiteral(": the folder holds no files"));
  for (const QString& path : paths)
    list.files.push_back({path, folder});
}

bool exists(const QString& name) {
  std::error_code unknown;
  return fs::exists(systemPath(name), unknown);
}

void addName(const QString& name, InputList& list) {
  if (isFolder(name)) {
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
    } else if (!isPattern(argument) || exists(argument)) {
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
