#include "apps/xov/commands/ConvertCommand.h"

#include "apps/xov/inputs/Validators.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h>
#include <XOV_Graphics/seismic/io/sac/SacWriter.h>
#include <XOV_Graphics/seismic/prepare/RecordCopy.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <vector>

namespace xov::cli {

namespace {

constexpr char kSac[] = "sac";
constexpr char kMiniSeed[] = "mseed";
constexpr double kMillisecondsPerSecond = 1000;
constexpr const char* kMiniSeedExtensions[] = {"mseed", "miniseed", "ms", "msd", "seed"};

bool isMiniSeedName(const QString& name) {
  const QString extension = QFileInfo(name).suffix().toLower();
  return std::ranges::any_of(kMiniSeedExtensions,
                             [&](const char* known) { return extension == QLatin1String(known); });
}

bool isSacName(const QString& name) { return QFileInfo(name).suffix().toLower() == QLatin1String(kSac); }

QString safe(const QString& code) {
  QString text;
  for (const QChar c : code) {
    const bool isPlain = c.unicode() < 128 && (c.isLetterOrNumber() || c == u'-' || c == u'_');
    text.append(isPlain ? c : QChar(u'_'));
  }
  return text;
}

/// What files are known by, whichever way they are named.
QString identityOf(const QString& name) {
  const QString canonical = QFileInfo(name).canonicalFilePath();
  return canonical.isEmpty() ? QFileInfo(name).absoluteFilePath() : canonical;
}

/// What could not be written, in one line a cause: a full disk is one, however many files it takes no more.
class WriteFailures {
public:
  void add(const QString& path, const QString& error) {
    const QString begin = path + QStringLiteral(": ");
    const QString cause = error.startsWith(begin) ? error.sliced(begin.size()) : error;
    const auto known = std::ranges::find(failures_, cause, &Failure::cause);
    if (known != failures_.end()) {
      ++known->files;
    } else {
      failures_.push_back({cause, error, 1});
    }
  }

  void say() const {
    for (const Failure& failure : failures_) {
      const QString others =
          failure.files > 1 ? QStringLiteral("; the same of %1 more").arg(failure.files - 1) : QString();
      complain(failure.first + others);
    }
  }

private:
  struct Failure {
    QString cause;
    QString first;
    int files = 0;
  };
  std::vector<Failure> failures_;
};

/// Writes records to files, but over none that they were read from.
class Writer {
public:
  Writer(const Records& records, bool writesMiniSeed) : writesMiniSeed_(writesMiniSeed) {
    for (const QString& file : records.files)
      inputs_.insert(identityOf(file));
  }

  bool write(const SeismogramArray& records, const QString& path) {
    const Status status = inputs_.contains(identityOf(path))
                              ? Status(Error{path + QStringLiteral(": is one of the inputs; not overwritten")})
                              : writeFile(records, path);
    if (!status) failures_.add(path, status.error());
    return bool(status);
  }

  ExitCode finish(ExitCode status) const {
    failures_.say();
    return status;
  }

private:
  Status writeFile(const SeismogramArray& records, const QString& path) const {
    return writesMiniSeed_ ? writeMiniSeed(records, path) : writeSac(*copyOfRecord(*records.front()), path);
  }

  QSet<QString> inputs_;
  bool writesMiniSeed_;
  WriteFailures failures_;
};

/// A name that none of those in use is.
QString unusedName(const QString& name, QSet<QString>& used) {
  QString unused = name;
  for (int i = 2; used.contains(unused); ++i) {
    const QFileInfo info(name);
    unused = QStringLiteral("%1.%2.%3").arg(info.completeBaseName()).arg(i).arg(info.suffix());
  }
  used.insert(unused);
  return unused;
}

} // namespace

QString fileNameOf(const SeismogramRecord& record, const char* extension) {
  QStringList parts = {safe(record.knetwk()), safe(record.kstnm()), safe(record.khole()), safe(record.kcmpnm())};
  if (const std::optional<double> start = startSeconds(record)) {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(std::llround(*start * kMillisecondsPerSecond), Qt::UTC);
    parts.append(
        QStringLiteral("%1.%2").arg(time.date().year()).arg(time.date().dayOfYear(), 3, 10, QLatin1Char('0')));
    parts.append(time.toString(QStringLiteral("HHmmss")));
  }
  return parts.join(QLatin1Char('.')) + QLatin1Char('.') + QLatin1String(extension);
}

void ConvertCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  options.add("-o,--output", output_, "File to write (.mseed or .SAC), or folder for one file a record")
      .typeName("FILE")
      .required();
  options.add("--format", format_, "sac or mseed (default: as the file's extension says; in a folder sac)")
      .typeName("FORMAT")
      .check(oneOf({kSac, kMiniSeed}));
  preparation_.addOptions(options);
}

bool ConvertCommand::writesMiniSeed() const {
  return format_.empty() ? isMiniSeedName(fileNameFromBytes(output_)) : format_ == kMiniSeed;
}

bool ConvertCommand::writesFolder() const { return output_.ends_with('/') || isFolder(fileNameFromBytes(output_)); }

ExitCode ConvertCommand::run() {
  const QString output = fileNameFromBytes(output_);
  if (!writesFolder() && format_.empty() && !isMiniSeedName(output) && !isSacName(output)) {
    complain(
        QStringLiteral("convert: --output: found '%1', expected a folder, a name that ends in .mseed or .SAC, or "
                       "--format")
            .arg(output));
    return ExitCode::Usage;
  }
  const Records found = inputs_.read();
  const Records made = preparation_.apply(found);
  if (made.records.empty()) return ExitCode::Failed;
  Writer writer(found, writesMiniSeed());
  if (!writesFolder()) {
    if (!writesMiniSeed() && made.records.size() > 1) {
      complain(QStringLiteral("%1: found %2 records, and a SAC file holds one; name a folder instead")
                   .arg(output)
                   .arg(made.records.size()));
      return ExitCode::Failed;
    }
    return writer.finish(writer.write(made.records, output) ? made.status : ExitCode::Failed);
  }
  if (!makeFolder(output)) {
    complain(output + QStringLiteral(": the folder cannot be made"));
    return ExitCode::Failed;
  }
  ExitCode status = made.status;
  QSet<QString> used;
  for (const auto& record : made.records) {
    const QString name = unusedName(fileNameOf(*record, writesMiniSeed() ? kMiniSeed : "SAC"), used);
    if (!writer.write({record}, QDir(output).filePath(name))) status = ExitCode::Failed;
  }
  return writer.finish(status);
}

} // namespace xov::cli
