#include "XOV_Graphics/base/Resources.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace xov {
namespace {

/// Leaves the process-wide settings as they were.
class Resources : public ::testing::Test {
protected:
  ~Resources() override {
    setHostResourceFolder(QString());
    setDataRoot(QString());
    qputenv("XOV_DATA_ROOT", environmentRoot);
    qputenv("XDG_DATA_HOME", environmentHome);
  }

  /// An empty file of that name below `folder`, and its path.
  static QString make(const QString& folder, const QString& name) {
    QDir().mkpath(folder);
    QFile file(QDir(folder).filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << file.fileName().toStdString();
    return QDir(folder).absoluteFilePath(name);
  }

  const QByteArray environmentRoot = qgetenv("XOV_DATA_ROOT");
  const QByteArray environmentHome = qgetenv("XDG_DATA_HOME");
  const QString name = QStringLiteral("only-here.txt");
  QTemporaryDir folder;
};

TEST_F(Resources, theHostsFolderComesFirst) {
  EXPECT_TRUE(resourcePath(name).isEmpty());
  const QString large = make(folder.filePath(QStringLiteral("root/resources")), name);
  setDataRoot(folder.filePath(QStringLiteral("root")));
  EXPECT_EQ(resourcePath(name), large);
  const QString hosts = make(folder.filePath(QStringLiteral("host")), name);
  EXPECT_EQ(hostResourceFolder(), QString());
  setHostResourceFolder(folder.filePath(QStringLiteral("host")));
  EXPECT_EQ(hostResourceFolder(), folder.filePath(QStringLiteral("host")));
  EXPECT_EQ(resourcePath(name), hosts);
}

TEST_F(Resources, aResourceWithoutANameIsNowhere) {
  setHostResourceFolder(folder.path());
  EXPECT_TRUE(resourcePath(QString()).isEmpty());
}

TEST_F(Resources, fullSizeFilesReplaceTheLibrarysOwn) {
  const QString shipped = QStringLiteral("README.md");
  EXPECT_FALSE(resourcePath(shipped).isEmpty());
  const QString large = make(folder.filePath(QStringLiteral("resources")), shipped);
  setDataRoot(folder.path());
  EXPECT_EQ(fullSizeResourceFolder(), folder.filePath(QStringLiteral("resources")));
  EXPECT_EQ(resourcePath(shipped), large);
}

TEST_F(Resources, theLibrarysOwnLieBesideTheFileThatHoldsIt) {
  // A test program holds the library itself.
  EXPECT_EQ(
      resourcePath(QStringLiteral("etopo30.i2")),
      QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("XOV_Graphics/resources/etopo30.i2")));
}

TEST_F(Resources, aFolderOfThatNameIsNoResource) {
  ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("resources/") + name));
  setDataRoot(folder.path());
  EXPECT_TRUE(resourcePath(name).isEmpty());
}

TEST_F(Resources, theDataRootIsTheHostsThenTheEnvironmentsThenTheUsers) {
  qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
  qputenv("XOV_DATA_ROOT", "/from/the/environment");
  setDataRoot(QStringLiteral("/from/the/host"));
  EXPECT_EQ(dataRoot(), QStringLiteral("/from/the/host"));
  setDataRoot(QString());
  EXPECT_EQ(dataRoot(), QStringLiteral("/from/the/environment"));
  qputenv("XOV_DATA_ROOT", "");
  const QString configured = QStringLiteral(XOV_CONFIGURED_DATA_ROOT);
  EXPECT_EQ(dataRoot(), configured.isEmpty() ? folder.filePath(QStringLiteral("XOV_Graphics")) : configured);
}

} // namespace
} // namespace xov
