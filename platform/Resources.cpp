#include "platform/Resources.h"

#include <QDir>
#include <QFileInfo>

namespace xov {

namespace {

QString& hostFolder() {
  static QString folder;
  return folder;
}

} // namespace

void setHostResourceFolder(const QString& folder) { hostFolder() = folder; }

QString hostResourceFolder() { return hostFolder(); }

QString resourcePath(const QString& name) {
  if (name.isEmpty()) return {};
  const QString folders[] = {hostFolder(), QStringLiteral(XOV_INSTALLED_RESOURCES),
                             QStringLiteral(XOV_BUILD_TREE_RESOURCES)};
  for (const QString& folder : folders) {
    if (folder.isEmpty()) continue;
    const QFileInfo file(QDir(folder).filePath(name));
    if (file.isFile() && file.isReadable()) return file.absoluteFilePath();
  }
  return {};
}

} // namespace xov
