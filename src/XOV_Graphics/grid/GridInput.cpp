#include "XOV_Graphics/grid/GridInput.h"

#include <QFile>
#include <QFileInfo>

namespace xov {

Result<qint64> gridFileSize(const QString& path) {
  const QFileInfo info(path);
  if (!info.exists()) return Error{path + QStringLiteral(": there is no such file")};
  if (!info.isFile()) return Error{path + QStringLiteral(": is not a file")};
  return info.size();
}

Result<QByteArray> readGridFile(const QString& path, qint64 mostBytes) {
  const Result<qint64> size = gridFileSize(path);
  if (!size) return Error{size.error()};
  if (*size > mostBytes)
    return Error{QStringLiteral("%1: %2 bytes, expected at most %3").arg(path).arg(*size).arg(mostBytes)};
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return Error{path + QStringLiteral(": ") + file.errorString()};
  QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError) return Error{path + QStringLiteral(": ") + file.errorString()};
  return bytes;
}

} // namespace xov
