#include "apps/desk/files/CatalogueRequests.h"

#include <XOV_Graphics/base/TimeText.h>
#include <algorithm>

namespace xov::desk {

namespace {

constexpr qint64 kDrumSeconds = 6 * 3600;
constexpr int kUsualMegabytes = 512;
/// Samples beyond which a plot takes them as it is drawn, an eighth of a gigabyte.
constexpr std::int64_t kManySamples = std::int64_t(1) << 25;

/// The pattern that selects a channel alone; empty where codes are missing that a pattern cannot leave out.
QString patternOf(ChannelCodes codes) {
  if (codes[2].isEmpty()) codes[2] = QStringLiteral("--");
  return std::ranges::any_of(codes, &QString::isEmpty) ? QString() : channelName(codes);
}

QStringList memoryWords(const OpeningOptions& options) {
  QStringList words;
  if (!options.indexFolder.isEmpty()) words += {QStringLiteral("--index-cache"), options.indexFolder};
  if (options.sampleMegabytes != kUsualMegabytes)
    words += {QStringLiteral("--sample-memory"), QString::number(options.sampleMegabytes)};
  return words;
}

bool isLong(qint64 seconds) { return seconds >= kDrumSeconds; }

/// A section, or a drum of what lasts long alone.
PlotRequest seismogramRequest(bool isDrum) {
  PlotRequest request;
  request.kind = isDrum ? QStringLiteral("drum") : QStringLiteral("section");
  return request;
}

PlotRequest fileRequest(const FileEntries& entries, const RowsOfFile& rowsOf, const OpeningOptions& options) {
  const ChannelOutline& first = entries.front().channel;
  PlotRequest request = seismogramRequest(entries.size() == 1 && isLong(first.start.secsTo(first.end)));
  QStringList channels;
  std::int64_t samples = 0;
  int rows = 0;
  for (const FileEntry& entry : entries) {
    channels.append(patternOf(entry.channel.codes));
    samples += entry.channel.sampleCount;
    if (request.files.contains(entry.path)) continue;
    request.files.append(entry.path);
    rows += rowsOf(entry.path);
  }
  channels.removeDuplicates();
  const bool isPart = rows > int(entries.size()) && !channels.contains(QString());
  if (isPart) request.options += {QStringLiteral("--channels"), channels.join(QLatin1Char(','))};
  if (samples > kManySamples) request.options += memoryWords(options);
  return request;
}

PlotRequest archiveRequest(const FileEntries& entries, const OpeningOptions& options) {
  QDateTime from = options.from, to = options.to;
  if (!from.isValid() || !to.isValid() || from >= to) {
    QDateTime end;
    for (const FileEntry& entry : entries)
      end = end.isValid() ? std::max(end, entry.channel.end) : entry.channel.end;
    const DaySpan last = dayOf(end);
    from = last.from;
    to = last.to;
  }
  PlotRequest request = seismogramRequest(entries.size() == 1 && isLong(from.secsTo(to)));
  request.options = {QStringLiteral("--archive"), entries.front().path, QStringLiteral("--between"), utcText(from),
                     utcText(to)};
  request.options += memoryWords(options);
  for (const FileEntry& entry : entries)
    request.files.append(patternOf(entry.channel.codes));
  return request;
}

/// Another file as a whole.
PlotRequest wholeFileRequest(const FileEntry& entry) {
  switch (entry.kind) {
  case FileKind::Events:
    return {QStringLiteral("map"), {QStringLiteral("--events"), entry.path}, {}, {}, {}};
  case FileKind::Stations:
    return {QStringLiteral("map"), {QStringLiteral("--stations"), entry.path}, {}, {}, {}};
  case FileKind::Lines:
    return {QStringLiteral("map"), {QStringLiteral("--polygons"), entry.path}, {}, {}, {}};
  case FileKind::Grid:
    return {QStringLiteral("grid"), {}, {}, {}, {entry.path}};
  default:
    return {QStringLiteral("xy"), {}, {}, {}, {entry.path}};
  }
}

} // namespace

DaySpan dayOf(const QDateTime& time) {
  const QDate day = time.toUTC().date();
  return {day.startOfDay(Qt::UTC), day.addDays(1).startOfDay(Qt::UTC)};
}

std::vector<PlotRequest> requestsForEntries(const FileEntries& entries, const RowsOfFile& rowsOf,
                                            const OpeningOptions& options) {
  std::vector<PlotRequest> requests;
  FileEntries seismograms;
  std::vector<FileEntries> archives; // those of one each
  for (const FileEntry& entry : entries) {
    if (entry.kind == FileKind::Seismograms) {
      seismograms.push_back(entry);
    } else if (entry.kind == FileKind::Archive) {
      auto known =
          std::ranges::find_if(archives, [&](const FileEntries& some) { return some.front().path == entry.path; });
      if (known == archives.end()) known = archives.insert(archives.end(), FileEntries());
      known->push_back(entry);
    } else {
      requests.push_back(wholeFileRequest(entry));
    }
  }
  if (!seismograms.empty()) requests.push_back(fileRequest(seismograms, rowsOf, options));
  for (const FileEntries& archive : archives)
    requests.push_back(archiveRequest(archive, options));
  return requests;
}

} // namespace xov::desk
