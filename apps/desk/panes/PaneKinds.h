#pragma once

#include "apps/desk/panes/PlotRequest.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <span>
#include <vector>

namespace xov::desk {

/// What kinds of files a pane takes.
enum class PaneInput : std::uint8_t { Seismograms, Events, Columns, Grid, Lines };

/// A kind of pane.
struct PaneKind {
  const char* command;    ///< of xov that draws it
  const char* title;      ///< in English; paneTitle() is that in the user's language
  const char* fileOption; ///< that names the file; nullptr where files stand at the end
  PaneInput input;
  bool isOfTime = false; ///< whether its x is time, of rows where it has several
};

std::span<const PaneKind> paneKinds();

/// The kind that a command draws; nullptr where there is none.
const PaneKind* paneKindOf(const QString& command);

QString paneTitle(const PaneKind& kind);

/// What a file holds, judged by its first lines and its name.
PaneInput inputOf(const QString& path);

/// The files that a request shows, whether they stand at its end or in the option of its kind.
QStringList filesOf(const PlotRequest& request);

/// A request of that kind for these files.
PlotRequest requestFor(const PaneKind& kind, const QStringList& files);

/// Whether requestOfKind() is to be had.
bool canShowAs(const PaneKind& kind, const PlotRequest& request);

/// What a request shows, as another kind: the same files and channels, of an archive the same time, and what is done
/// to records; of what arrives the same server and streams.
PlotRequest requestOfKind(const PaneKind& kind, const PlotRequest& request);

/// What shows files best, those of one kind together: seismograms as a section, one alone that lasts long as a drum,
/// events on a map, and so on. Each folder is taken for one of seismograms, on its own. Looks into the files, which
/// may take a while.
std::vector<PlotRequest> requestsFor(const QStringList& paths);

} // namespace xov::desk
