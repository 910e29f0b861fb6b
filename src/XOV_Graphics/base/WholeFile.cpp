#include "XOV_Graphics/base/WholeFile.h"

#include "XOV_Graphics/base/FileName.h"
#include "XOV_Graphics/base/Guarded.h"

#include <QFileInfo>

#include <cstdio>

#ifdef Q_OS_UNIX
#include "XOV_Graphics/base/DescriptorDevice.h"
#include "XOV_Graphics/base/UnfinishedFile.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <optional>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>
#else
#include <QSaveFile>
#endif

namespace xov {

namespace {

#ifdef Q_OS_UNIX

constexpr int kMostLinks = 40; // as the system follows

Error systemError(const QString& name, int number) { return {name + QStringLiteral(": ") + qt_error_string(number)}; }

/// What a device says of writing that failed; the contents' own failure where the device took all.
Error writeError(const QString& name, const DescriptorDevice& device) {
  if (device.failure() != 0) return systemError(name, device.failure());
  return {name + QStringLiteral(": what it is to hold could not be made")};
}

/// Where a pipe's reader leaves, writing fails, and the program is not ended by a signal while this lives.
class BrokenPipesAreErrors {
public:
  BrokenPipesAreErrors() {
    sigemptyset(&signal_);
    sigaddset(&signal_, SIGPIPE);
    sigset_t pending = {};
    sigpending(&pending);
    wasPending_ = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &signal_, &before_);
  }
  ~BrokenPipesAreErrors() {
#ifndef Q_OS_DARWIN
    constexpr timespec kNoTime = {};
    if (!wasPending_) sigtimedwait(&signal_, nullptr, &kNoTime);
#endif
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  BrokenPipesAreErrors(const BrokenPipesAreErrors&) = delete;
  BrokenPipesAreErrors& operator=(const BrokenPipesAreErrors&) = delete;

private:
  sigset_t signal_ = {};
  sigset_t before_ = {};
  bool wasPending_ = false;
};

// A device or a pipe is written to and never replaced.
Status writeInPlace(const QString& path, const QByteArray& target, const FileContents& contents) {
  const BrokenPipesAreErrors guard;
  const int descriptor = ::open(target.constData(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  if (descriptor < 0) return systemError(path, errno);
  DescriptorDevice device(descriptor);
  bool written = false;
  const Status status = guarded(path, [&]() -> Status {
    written = contents(device) && device.flush();
    return {};
  });
  const bool closed = ::close(descriptor) == 0 || errno == EINTR;
  if (!status) return status;
  if (!written) return writeError(path, device);
  if (closed) return {};
  return systemError(path, errno);
}

Status writeBeside(const QString& path, const QByteArray& target, const FileContents& contents) {
  removeUnfinishedFiles(folderOfFile(target));
  UnfinishedFile file(target);
  if (!file.isOpen()) return systemError(path, file.failure());
  DescriptorDevice device(file.descriptor());
  if (!contents(device) || !device.flush()) return writeError(path, device);
  if (file.take()) return {};
  return systemError(path, file.failure());
}

/// The name behind symbolic links, whether or not it is there; nothing where they go round in a ring.
std::optional<QByteArray> behindLinks(QByteArray name) {
  for (int i = 0; i < kMostLinks; ++i) {
    char target[4096]; // the longest there are
    const ssize_t length = ::readlink(name.constData(), target, sizeof target);
    if (length < 0) return name;
    const QByteArray next(target, length);
    name = next.startsWith('/') ? next : folderOfFile(name) + next;
  }
  return {};
}

Status writeWhole(const QString& path, const FileContents& contents) {
  const QByteArray name = fileNameBytes(path);
  struct stat status = {};
  if (name.isEmpty()) return Error{QStringLiteral("there is no file name")};
  if (::stat(name.constData(), &status) == 0) {
    if (S_ISDIR(status.st_mode)) return systemError(path, EISDIR);
    if (!S_ISREG(status.st_mode)) return writeInPlace(path, name, contents);
  }
  const std::optional<QByteArray> target = behindLinks(name);
  return target ? writeBeside(path, *target, contents) : Status(systemError(path, ELOOP));
}

#else

Status writeWhole(const QString& path, const FileContents& contents) {
  if (isByteName(path)) return Error{path + QStringLiteral(": is no name of a file")}; // names are text here
  // The flush comes before the commit: what a full disk leaves in the buffer would otherwise be lost in silence while
  // the file takes its place.
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) && contents(file) && file.flush() && file.commit()) return {};
  return Error{path + QStringLiteral(": ") + file.errorString()};
}

#endif

} // namespace

QString setFileAside(const QString& path) {
  const QString kept = path + QStringLiteral(".broken");
  if (!QFileInfo(path).isFile()) return {};
  return std::rename(fileNameBytes(path).constData(), fileNameBytes(kept).constData()) == 0 ? kept : QString();
}

bool writeFileAtomically(const QString& path, const QByteArray& bytes, QString* error) {
  return writeFileAtomically(
      path, [&bytes](QIODevice& device) { return device.write(bytes) == bytes.size(); }, error);
}

bool writeFileAtomically(const QString& path, const FileContents& contents, QString* error) {
  return succeeded(guarded(path, [&] { return writeWhole(path, contents); }), error);
}

} // namespace xov
