#include "XOV_Graphics/base/TextFile.h"

#include <QFile>
#include <QFileInfo>

namespace xov {

bool readTextFile(const QString& path, QByteArray& text, QString* error) {
  const QFileInfo info(path);
  if (!info.exists()) return fail(error, path + QStringLiteral(": there is no such file"));
  if (!info.isFile()) return fail(error, path + QStringLiteral(": is not an ordinary file"));
  QFile file(path);
  if (file.open(QIODevice::ReadOnly)) text = file.readAll();
  if (file.error() == QFileDevice::NoError) return true;
  return fail(error, path + QStringLiteral(": cannot be read: ") + file.errorString());
}

} // namespace xov
