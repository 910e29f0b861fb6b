#include "XOV_Graphics/base/WholeFile.h"

#include "XOV_Graphics/base/ByteNames.h"
#include "XOV_Graphics/base/FileName.h"
#include "XOV_Graphics/base/Result.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

namespace xov {

namespace {

// Why writing failed. A flush that fails leaves the reason with the system only.
QString reasonOf(const QFileDevice& file) {
  const QString system = qt_error_string(errno);
  return file.error() == QFileDevice::NoError || file.error() == QFileDevice::UnspecifiedError ? system
                                                                                               : file.errorString();
}

// A device or a pipe is written to and never replaced.
Status writeInPlace(const QString& path, const FileContents& contents) {
  QFile file(path);
  if (file.open(QIODevice::WriteOnly) && contents(file) && file.flush()) return {};
  return Error{path + QStringLiteral(": ") + reasonOf(file)};
}

Status writeBeside(const QString& path, const FileContents& contents) {
  // The flush comes before the commit: what a full disk leaves in the buffer would otherwise be lost in silence while
  // the file takes its place.
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) && contents(file) && file.flush() && file.commit()) return {};
  return Error{path + QStringLiteral(": ") + reasonOf(file)};
}

bool isSpecialFile(const QString& path) {
  const QFileInfo info(path);
  return info.exists() && !info.isFile() && !info.isDir();
}

} // namespace

bool writeFileAtomically(const QString& path, const QByteArray& bytes, QString* error) {
  return writeFileAtomically(
      path, [&bytes](QIODevice& device) { return device.write(bytes) == bytes.size(); }, error);
}

bool writeFileAtomically(const QString& path, const FileContents& contents, QString* error) {
  if (isByteName(path)) return succeeded(writeByteName(path, contents), error);
  return succeeded(isSpecialFile(path) ? writeInPlace(path, contents) : writeBeside(path, contents), error);
}

} // namespace xov
