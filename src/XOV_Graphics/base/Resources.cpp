#include "XOV_Graphics/base/Resources.h"

#include "XOV_Graphics/base/OwnFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace xov {

namespace {

QString& hostFolder() {
  static QString folder;
  return folder;
}

QString& hostDataRoot() {
  static QString folder;
  return folder;
}

QString usersDataRoot() {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  return QDir(data).filePath(QStringLiteral("XOV_Graphics"));
}

} // namespace

void setHostResourceFolder(const QString& folder) { hostFolder() = folder; }

QString hostResourceFolder() { return hostFolder(); }

void setDataRoot(const QString& folder) { hostDataRoot() = folder; }

QString dataRoot() {
  for (const QString& folder :
       {hostDataRoot(), qEnvironmentVariable("XOV_DATA_ROOT"), QStringLiteral(XOV_CONFIGURED_DATA_ROOT)}) {
    if (!folder.isEmpty()) return folder;
  }
  return usersDataRoot();
}

QString fullSizeResourceFolder() { return QDir(dataRoot()).filePath(QStringLiteral("resources")); }

QString resourcePath(const QString& name) {
  if (name.isEmpty()) return {};
  QStringList folders = {hostFolder(), fullSizeResourceFolder()};
  for (const QString& own : ownFolders()) {
    folders << QDir(own).filePath(QStringLiteral(XOV_SHARED_DATA "/XOV_Graphics/resources"))
            << QDir(own).filePath(QStringLiteral("XOV_Graphics/resources"));
  }
  for (const QString& folder : folders) {
    if (folder.isEmpty()) continue;
    // As it will be returned: where /lib leads to /usr/lib, the system's way out of it by ".." is another one.
    const QFileInfo file(QDir::cleanPath(QDir(folder).absoluteFilePath(name)));
    if (file.isFile() && file.isReadable()) return file.filePath();
  }
  return {};
}

} // namespace xov
