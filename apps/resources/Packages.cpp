#include "apps/resources/Packages.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

namespace xov::maker {

namespace {

constexpr int kPatienceMs = 15 * 60 * 1000;

/// Runs a program in a folder; an error is the last line that it said.
Status ran(const QString& program, const QStringList& arguments, const QString& folder) {
  if (QStandardPaths::findExecutable(program).isEmpty())
    return Error{QStringLiteral("there is no %1 here; the data come from Debian packages").arg(program)};
  QProcess process;
  process.setWorkingDirectory(folder);
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, arguments);
  process.closeWriteChannel();
  if (!process.waitForFinished(kPatienceMs)) {
    process.kill();
    process.waitForFinished();
    return Error{QStringLiteral("%1: did not end within %2 minutes").arg(program).arg(kPatienceMs / 60000)};
  }
  if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return {};
  const QString said = QString::fromUtf8(process.readAll()).trimmed();
  return Error{QStringLiteral("%1: %2").arg(program, said.section(QLatin1Char('\n'), -1))};
}

QString foundIn(const QString& folder, const QString& package) {
  const QStringList files = QDir(folder).entryList({package + QStringLiteral("_*.deb")}, QDir::Files, QDir::Name);
  return files.isEmpty() ? QString() : QDir(folder).absoluteFilePath(files.last());
}

} // namespace

Packages::Packages(QString folder, QString archive) : folder_(std::move(folder)), archive_(std::move(archive)) {}

QString Packages::path(const QString& package, const QString& file) const {
  return QDir(folder_).filePath(package + QLatin1Char('/') + file);
}

Status Packages::download(const QString& package) const {
  return ran(QStringLiteral("apt-get"),
             {QStringLiteral("-q"), QStringLiteral("-o"), QStringLiteral("Acquire::Retries=1"), QStringLiteral("-o"),
              QStringLiteral("Acquire::http::Timeout=20"), QStringLiteral("-o"),
              QStringLiteral("APT::Sandbox::User=root"), QStringLiteral("download"), package},
             folder_);
}

Status Packages::unpack(const QString& package, const Progress& progress) const {
  const QString target = path(package, QString());
  if (!QDir().mkpath(target)) return Error{QStringLiteral("%1: cannot be made").arg(target)};
  if (archive_.isEmpty()) {
    progress(QStringLiteral("download %1").arg(package));
    if (Status downloaded = download(package); !downloaded) return downloaded;
  }
  const QString file = foundIn(archive_.isEmpty() ? folder_ : archive_, package);
  if (file.isEmpty()) return Error{QStringLiteral("%1: no such package in %2").arg(package, archive_)};
  return ran(QStringLiteral("dpkg-deb"), {QStringLiteral("-x"), file, target}, folder_);
}

void Packages::remove() const { QDir(folder_).removeRecursively(); }

} // namespace xov::maker
