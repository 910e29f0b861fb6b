#include "XOV_Graphics/base/ByteNames.h"

#include "XOV_Graphics/base/FileName.h"

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace xov {

#ifdef Q_OS_UNIX

namespace {

Error failure(const QString& name, const char* what) {
  return {QStringLiteral("%1: %2: %3").arg(name, QLatin1String(what), qt_error_string(errno))};
}

Status openBytes(QFile& file, const QString& name, QIODevice::OpenMode mode) {
  // A pipe without a writer does not block.
  const int descriptor = ::open(fileNameBytes(name).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat status = {};
  if (descriptor < 0) return failure(name, "cannot be opened");
  if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
      file.open(descriptor, mode, QFileDevice::AutoCloseHandle))
    return {};
  if (!file.isOpen()) ::close(descriptor);
  return Error{name + QStringLiteral(": is not an ordinary file")};
}

} // namespace

Status openByName(QFile& file, QIODevice::OpenMode mode) {
  const QString name = file.fileName();
  if (isByteName(name)) return openBytes(file, name, mode);
  if (file.open(mode)) return {};
  return Error{name + QStringLiteral(": cannot be opened: ") + file.errorString()};
}

#else

Status openByName(QFile& file, QIODevice::OpenMode mode) {
  if (file.open(mode)) return {};
  return Error{file.fileName() + QStringLiteral(": cannot be opened: ") + file.errorString()};
}

#endif

} // namespace xov
