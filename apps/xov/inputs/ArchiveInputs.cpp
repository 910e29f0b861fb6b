#include "apps/xov/inputs/ArchiveInputs.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/terminal/Progress.h"

#include <XOV_Graphics/base/FileName.h>

namespace xov::cli {

void ArchiveInputs::addOptions(const Options& options) {
  const Option archive =
      options
          .add("--archive", root_,
               "Read from this SDS archive, a folder of days; FILES are channels then, as 'II.TLY.*.BHZ'")
          .typeName("FOLDER");
  options.add("--between", between_, "What of the archive to read, from a time to another one (UTC)")
      .typeName("FROM TO")
      .check(utcTime())
      .needs(archive)
      .takesWords(2);
}

QString ArchiveInputs::text() const {
  QString text = root();
  for (const std::string& time : between_)
    text += QLatin1Char(' ') + QString::fromStdString(time);
  return text;
}

QString ArchiveInputs::root() const { return fileNameFromBytes(root_); }

QDateTime ArchiveInputs::from() const { return between_.empty() ? QDateTime() : parsedUtcTime(between_.front()); }

QDateTime ArchiveInputs::to() const { return between_.empty() ? QDateTime() : parsedUtcTime(between_.back()); }

Result<std::vector<SdsChannel>> ArchiveInputs::channels(const QStringList& patterns, QStringList* unreadable) const {
  if (!between_.empty() && !(from() < to()))
    return Error{QStringLiteral("--between: found %1 and %2, expected a later time behind")
                     .arg(QString::fromStdString(between_.front()), QString::fromStdString(between_.back()))};
  return SdsArchive(root()).channels(patterns, {}, unreadable);
}

InputList ArchiveInputs::files(const QStringList& patterns) const {
  InputList list;
  const SdsArchive archive(root());
  const Result<std::vector<SdsChannel>> channels = this->channels(patterns, &list.errors);
  if (!channels) {
    list.errors.append(channels.error());
    return list;
  }
  for (const SdsChannel& channel : *channels) {
    for (const QString& path : archive.files(channel.codes, from(), to()))
      list.files.push_back({path, {}});
  }
  if (list.files.empty() && list.errors.isEmpty())
    list.errors.append(root() + QStringLiteral(": the archive has no file of such a channel and time"));
  return list;
}

Status ArchiveInputs::read(const QStringList& patterns, const std::optional<IndexCache>& cache,
                           const std::function<void(const Result<SeismogramFile>& channel)>& take) const {
  const SdsArchive archive(root());
  QStringList unreadable;
  const Result<std::vector<SdsChannel>> channels = this->channels(patterns, &unreadable);
  if (!channels) return Error{channels.error()};
  for (const QString& folder : unreadable)
    take(Error{folder});
  if (channels->empty()) return Error{root() + QStringLiteral(": the archive has no channel that is selected")};
  Progress progress(QStringLiteral("reading"), std::ssize(*channels));
  std::int64_t done = 0;
  for (const SdsChannel& channel : *channels) {
    const Result<SeismogramFile> file = archive.recordsOf(channel.codes, from(), to(), cache);
    progress.clear();
    take(file);
    progress.advanceTo(++done);
  }
  return {};
}

} // namespace xov::cli
