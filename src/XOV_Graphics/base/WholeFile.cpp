#include "XOV_Graphics/base/WholeFile.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>

namespace xov {

namespace {

void report(QString* error, const QString& text) {
  if (error != nullptr) *error = text;
}

// Why writing failed. A flush that fails leaves the reason with the system only.
QString reasonOf(const QFileDevice& file) {
  const QString system = qt_error_string(errno);
  return file.error() == QFileDevice::NoError || file.error() == QFileDevice::UnspecifiedError ? system
                                                                                               : file.errorString();
}

// A device or a pipe is written to and never replaced.
bool writeInPlace(QFile& file, const FileContents& contents) {
  return file.open(QIODevice::WriteOnly) && contents(file) && file.flush();
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
  if (isSpecialFile(path)) {
    QFile device(path);
    if (writeInPlace(device, contents)) return true;
    report(error, QStringLiteral("%1: %2").arg(path, reasonOf(device)));
    return false;
  }
  // The flush comes before the commit: what a full disk leaves in the buffer would otherwise be lost in silence while
  // the file takes its place.
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) && contents(file) && file.flush() && file.commit()) return true;
  report(error, QStringLiteral("%1: %2").arg(path, reasonOf(file)));
  return false;
}

} // namespace xov
