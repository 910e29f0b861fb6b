#include "XOV_Graphics/base/ByteNames.h"

#include "XOV_Graphics/base/FileName.h"

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace xov {

#ifdef Q_OS_UNIX

namespace {

constexpr mode_t kNewFile = 0666; // less what the user's mask takes away

Error failure(const QString& name, const char* what) {
  return {QStringLiteral("%1: %2: %3").arg(name, QLatin1String(what), qt_error_string(errno))};
}

mode_t maskOfUser() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return mask;
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

Status writeByteName(const QString& path, const FileContents& contents) {
  const QByteArray target = fileNameBytes(path);
  QByteArray beside = target + ".XXXXXX";
  const int descriptor = ::mkstemp(beside.data());
  if (descriptor < 0) return failure(path, "cannot be written");
  QFile file;
  bool written = file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle) && contents(file) &&
                 file.flush() && ::fchmod(descriptor, kNewFile & ~maskOfUser()) == 0;
  file.close();
  written = written && ::rename(beside.constData(), target.constData()) == 0;
  if (written) return {};
  const Error error = failure(path, "cannot be written");
  ::unlink(beside.constData());
  return error;
}

#else

Status openByName(QFile& file, QIODevice::OpenMode mode) {
  if (file.open(mode)) return {};
  return Error{file.fileName() + QStringLiteral(": cannot be opened: ") + file.errorString()};
}

// Names are text here.
Status writeByteName(const QString& path, const FileContents&) {
  return Error{path + QStringLiteral(": is no name of a file")};
}

#endif

} // namespace xov
