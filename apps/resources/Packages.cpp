#include "apps/resources/Packages.h"

#include <QCryptographicHash>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include <XOV_Graphics/base/InputFile.h>

namespace xov::maker {

namespace {

constexpr int kPatienceMs = 15 * 60 * 1000;

/// Runs a program in a folder and gives what it said; an error is the last line of that.
Result<QString> saidBy(const QString& program, const QStringList& arguments, const QString& folder) {
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
  const QString said = QString::fromUtf8(process.readAll()).trimmed();
  if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return said;
  return Error{QStringLiteral("%1: %2").arg(program, said.section(QLatin1Char('\n'), -1))};
}

Status ran(const QString& program, const QStringList& arguments, const QString& folder) {
  const Result<QString> said = saidBy(program, arguments, folder);
  return said ? Status() : Status(Error{said.error()});
}

Result<QString> sumOf(const QString& path) {
  CheckedFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  QCryptographicHash hash(QCryptographicHash::Sha256);
  hash.addData(&file);
  if (Status status = readingStatus(file, path); !status) return Error{status.error()};
  return QString::fromLatin1(hash.result().toHex());
}

} // namespace

Result<QStringList> sumsOfIndex(const QString& package) {
  const Result<QString> shown =
      saidBy(QStringLiteral("apt-cache"), {QStringLiteral("show"), QStringLiteral("--"), package}, QString());
  if (!shown) return Error{shown.error()};
  const QString field = QStringLiteral("SHA256: ");
  QStringList sums = shown->split(QLatin1Char('\n')).filter(QRegularExpression('^' + field));
  return sums.replaceInStrings(field, QString());
}

Packages::Packages(QString folder, QString archive, PackageSums sums)
    : folder_(std::move(folder)),
      archive_(std::move(archive)),
      sums_(std::move(sums)) {}

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

// What an earlier run left behind, or a folder holds, may be anything.
Result<QString> Packages::checkedFile(const QString& package) const {
  const QDir folder(archive_.isEmpty() ? folder_ : archive_);
  const QStringList files = folder.entryList({package + QStringLiteral("_*.deb")}, QDir::Files, QDir::Name);
  if (files.isEmpty()) return Error{QStringLiteral("%1: no such package in %2").arg(package, folder.path())};
  const Result<QStringList> sums = sums_(package);
  if (!sums) return Error{QStringLiteral("%1: cannot be checked: %2").arg(files.first(), sums.error())};
  QString unknown;
  for (const QString& name : files) {
    const QString file = folder.absoluteFilePath(name);
    const Result<QString> sum = sumOf(file);
    if (!sum) return sum;
    if (sums->contains(*sum)) return file;
    if (unknown.isEmpty())
      unknown = QStringLiteral("%1: found the sum %2, which the index does not know").arg(file, *sum);
  }
  return Error{unknown};
}

Status Packages::unpack(const QString& package, const Progress& progress) const {
  const QString target = path(package, QString());
  QDir(target).removeRecursively();
  if (!QDir().mkpath(target)) return Error{QStringLiteral("%1: cannot be made").arg(target)};
  if (archive_.isEmpty()) {
    progress(QStringLiteral("download %1").arg(package));
    if (Status downloaded = download(package); !downloaded) return downloaded;
  }
  const Result<QString> file = checkedFile(package);
  if (!file) return Error{file.error()};
  return ran(QStringLiteral("dpkg-deb"), {QStringLiteral("-x"), *file, target}, folder_);
}

void Packages::remove() const { QDir(folder_).removeRecursively(); }

} // namespace xov::maker
