#include "XOV_Graphics/base/OwnFolder.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#if defined(XOV_STATIC)
// The program's own place is Qt's to know.
#elif defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace xov {

namespace {

#if defined(XOV_STATIC)

QString ownFile() {
  return QCoreApplication::instance() != nullptr ? QCoreApplication::applicationFilePath() : QString();
}

#else

const char kHere = 0; // lies in the file that is asked for

#if defined(_WIN32)

QString fileOfThisCode() {
  HMODULE module = nullptr;
  constexpr DWORD kByAddress = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  if (!GetModuleHandleExW(kByAddress, reinterpret_cast<LPCWSTR>(&kHere), &module)) return {};
  wchar_t path[32768]; // the longest path there is
  const DWORD length = GetModuleFileNameW(module, path, DWORD(std::size(path)));
  return QString::fromWCharArray(path, int(length));
}

#else

QString fileOfThisCode() {
  Dl_info info = {};
  if (dladdr(&kHere, &info) == 0 || info.dli_fname == nullptr) return {};
  return QFile::decodeName(info.dli_fname);
}

#endif

// Asked once: a relative path means the working folder that the program was started in.
QString ownFile() {
  static const QString file = QFileInfo(fileOfThisCode()).absoluteFilePath();
  return file;
}

#endif

} // namespace

QStringList ownFolders() {
  const QFileInfo file(ownFile());
  if (!file.isFile()) return {};
  QStringList folders = {file.absolutePath(), QFileInfo(file.canonicalFilePath()).absolutePath()};
  folders.removeDuplicates();
  return folders;
}

} // namespace xov
