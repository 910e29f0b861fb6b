#include "apps/desk/panes/PaneKinds.h"

#include "apps/desk/panes/LiveRequests.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFileInfo>

#include <XOV_Graphics/seismic/io/archive/Archive.h>
#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <algorithm>

namespace xov::desk {

namespace {

// A new kind: a row here, where xov has a command that draws it.
constexpr PaneKind kKinds[] = {
    {"section", QT_TRANSLATE_NOOP("PaneKind", "Record section"), nullptr, PaneInput::Seismograms, true},
    {"drum", QT_TRANSLATE_NOOP("PaneKind", "Drum"), nullptr, PaneInput::Seismograms, true},
    {"stack", QT_TRANSLATE_NOOP("PaneKind", "Stack"), nullptr, PaneInput::Seismograms, true},
    {"panels", QT_TRANSLATE_NOOP("PaneKind", "Pairs in panels"), nullptr, PaneInput::Seismograms},
    {"three", QT_TRANSLATE_NOOP("PaneKind", "Three components"), nullptr, PaneInput::Seismograms, true},
    {"motion", QT_TRANSLATE_NOOP("PaneKind", "Particle motion"), nullptr, PaneInput::Seismograms},
    {"monitor", QT_TRANSLATE_NOOP("PaneKind", "Replay"), nullptr, PaneInput::Seismograms},
    {"spectrogram", QT_TRANSLATE_NOOP("PaneKind", "Spectrogram"), nullptr, PaneInput::Seismograms, true},
    {"spectrum", QT_TRANSLATE_NOOP("PaneKind", "Power spectra"), nullptr, PaneInput::Seismograms},
    {"ppsd", QT_TRANSLATE_NOOP("PaneKind", "Noise statistics"), nullptr, PaneInput::Seismograms},
    {"fk", QT_TRANSLATE_NOOP("PaneKind", "Beam power"), nullptr, PaneInput::Seismograms},
    {"map", QT_TRANSLATE_NOOP("PaneKind", "Map"), "--events", PaneInput::Events},
    {"mechanism", QT_TRANSLATE_NOOP("PaneKind", "Focal mechanisms"), nullptr, PaneInput::Events},
    {"xy", QT_TRANSLATE_NOOP("PaneKind", "Line plot"), nullptr, PaneInput::Columns},
    {"scatter", QT_TRANSLATE_NOOP("PaneKind", "Scatter plot"), nullptr, PaneInput::Columns},
    {"hist", QT_TRANSLATE_NOOP("PaneKind", "Histogram"), nullptr, PaneInput::Columns},
    {"grid", QT_TRANSLATE_NOOP("PaneKind", "Grid"), nullptr, PaneInput::Grid},
};

// Of these extensions only seismograms are known.
constexpr const char* kSeismogramSuffixes[] = {"sac", "mseed", "miniseed", "ms", "seed"};

// Options that all commands for seismograms have, and how many values each takes.
struct SharedOption {
  const char* name;
  int values;
};
constexpr SharedOption kSharedOptions[] = {
    {"--archive", 1}, {"--between", 2}, {"--channels", 1}, {"--stations", 1}, {"--event", 1}};

// Those that know servers.
constexpr const char* kLiveCommands[] = {"drum", "monitor"};

constexpr double kDrumSeconds = 6 * 3600.0;

constexpr int kFilesLookedAt = 4; // of a folder

// The first files of a folder stand for all of them.
QStringList filesToLookAt(const QStringList& paths) {
  if (paths.size() != 1 || !QFileInfo(paths.front()).isDir()) return paths;
  QStringList files;
  QDirIterator entries(paths.front(), QDir::Files, QDirIterator::Subdirectories);
  while (entries.hasNext() && files.size() < kFilesLookedAt)
    files.append(entries.next());
  return files;
}

// Whether these are recordings of one channel that last long. Of no file the samples are read.
bool lastsLong(const QStringList& paths) {
  const QStringList files = filesToLookAt(paths);
  if (files.size() > kFilesLookedAt) return false;
  QStringList channels;
  double seconds = 0;
  for (const QString& name : files) {
    const Result<SeismogramFile> file = openSeismogramFile(name);
    if (!file) continue;
    for (const auto& record : file->records) {
      seconds += double(record->npts()) * double(record->delta());
      if (!channels.contains(record->labelString())) channels.append(record->labelString());
    }
  }
  return channels.size() == 1 && seconds >= kDrumSeconds;
}

const char* usualCommand(PaneInput input, const QStringList& files) {
  switch (input) {
  case PaneInput::Events:
  case PaneInput::Lines:
    return "map";
  case PaneInput::Columns:
    return "xy";
  case PaneInput::Grid:
    return "grid";
  case PaneInput::Seismograms:
    break;
  }
  return lastsLong(files) ? "drum" : "section";
}

PlotRequest seismogramRequest(const QStringList& paths) {
  return requestFor(*paneKindOf(QLatin1String(usualCommand(PaneInput::Seismograms, paths))), paths);
}

} // namespace

std::span<const PaneKind> paneKinds() { return kKinds; }

const PaneKind* paneKindOf(const QString& command) {
  const auto* const kind =
      std::ranges::find_if(kKinds, [&](const PaneKind& row) { return command == QLatin1String(row.command); });
  return kind == std::end(kKinds) ? nullptr : kind;
}

QString paneTitle(const PaneKind& kind) { return QCoreApplication::translate("PaneKind", kind.title); }

PaneInput inputOf(const QString& path) {
  const QFileInfo file(path);
  const QString suffix = file.suffix().toLower();
  const auto isSuffix = [&](const char* known) { return suffix == QLatin1String(known); };
  if (file.isDir() || std::ranges::any_of(kSeismogramSuffixes, isSuffix)) return PaneInput::Seismograms;
  if (isSuffix("nxy")) return PaneInput::Lines;
  if (isSuffix("xyz")) return PaneInput::Grid;
  if (looksLikeEvents(path)) return PaneInput::Events;
  if (isSuffix("txt") || isSuffix("csv") || isSuffix("dat")) return PaneInput::Columns;
  return PaneInput::Seismograms;
}

QStringList filesOf(const PlotRequest& request) {
  const PaneKind* const kind = paneKindOf(request.kind);
  if (kind == nullptr || kind->fileOption == nullptr || !request.files.isEmpty()) return request.files;
  QStringList files;
  for (qsizetype i = 0; i + 1 < request.options.size(); ++i) {
    if (request.options[i] == QLatin1String(kind->fileOption)) files.append(request.options[i + 1]);
  }
  return files;
}

PlotRequest requestFor(const PaneKind& kind, const QStringList& files) {
  PlotRequest request;
  request.kind = QLatin1String(kind.command);
  if (kind.fileOption == nullptr) {
    request.files = files;
  } else {
    for (const QString& file : files)
      request.options += {QLatin1String(kind.fileOption), file};
  }
  return request;
}

bool canShowAs(const PaneKind& kind, const PlotRequest& request) {
  const PaneKind* const now = paneKindOf(request.kind);
  if (now == nullptr || now->input != kind.input) return false;
  const auto isKind = [&](const char* command) { return QLatin1String(command) == QLatin1String(kind.command); };
  return !isLive(request) || std::ranges::any_of(kLiveCommands, isKind);
}

PlotRequest requestOfKind(const PaneKind& kind, const PlotRequest& request) {
  if (isLive(request)) return requestForSource(QLatin1String(kind.command), liveSourceOf(request));
  PlotRequest wanted = requestFor(kind, filesOf(request));
  if (kind.input != PaneInput::Seismograms) return wanted;
  wanted.steps = request.steps;
  for (const SharedOption& option : kSharedOptions) {
    const qsizetype place = request.options.indexOf(QLatin1String(option.name));
    if (place >= 0) wanted.options += request.options.mid(place, 1 + option.values);
  }
  return wanted;
}

std::vector<PlotRequest> requestsFor(const QStringList& paths) {
  std::vector<PlotRequest> requests;
  QStringList seismograms;
  QStringList absolute;
  for (const QString& path : paths)
    absolute.append(QFileInfo(path).absoluteFilePath());
  for (const QString& path : absolute) {
    const PaneInput input = inputOf(path);
    if (QFileInfo(path).isDir())
      requests.push_back(seismogramRequest({path}));
    else if (input == PaneInput::Seismograms)
      seismograms.append(path);
    else if (input == PaneInput::Lines)
      requests.push_back({QStringLiteral("map"), {QStringLiteral("--polygons"), path}, {}, {}, {}});
    else
      requests.push_back(requestFor(*paneKindOf(QLatin1String(usualCommand(input, {path}))), {path}));
  }
  if (!seismograms.isEmpty()) requests.push_back(seismogramRequest(seismograms));
  return requests;
}

} // namespace xov::desk
