#pragma once

#include <QString>
#include <QStringList>

#include <XOV_Graphics/base/Result.h>
#include <functional>

namespace xov::maker {

/// Says what is being done.
using Progress = std::function<void(const QString& what)>;

/// Tells the SHA-256 sums, in hexadecimal, that files of a package may have.
using PackageSums = std::function<Result<QStringList>(const QString& package)>;

/// The sums of the package index, which is signed, as apt-cache shows them.
Result<QStringList> sumsOfIndex(const QString& package);

/// Debian packages, downloaded with apt-get and unpacked with dpkg-deb into a folder of their own, never installed.
class Packages {
public:
  /// Packages are looked for in `archive` where it is not empty, and downloaded into `folder` otherwise; they are
  /// unpacked below `folder`, which is made.
  Packages(QString folder, QString archive, PackageSums sums = sumsOfIndex);

  /// Downloads and unpacks a package. Only a file is taken, downloaded or found, that has a sum of the index. An
  /// error says in one line why that cannot be.
  Status unpack(const QString& package, const Progress& progress) const;

  /// The path of a file of an unpacked package.
  QString path(const QString& package, const QString& file) const;

  /// Takes all away that was downloaded and unpacked.
  void remove() const;

private:
  Status download(const QString& package) const;
  Result<QString> checkedFile(const QString& package) const;

  QString folder_;
  QString archive_;
  PackageSums sums_;
};

} // namespace xov::maker
