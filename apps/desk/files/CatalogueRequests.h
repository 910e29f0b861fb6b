#pragma once

#include "apps/desk/files/FileEntry.h"
#include "apps/desk/panes/PlotRequest.h"

#include <functional>

namespace xov::desk {

/// How rows of the catalogue are opened.
struct OpeningOptions {
  QDateTime from = {}; ///< what of archives is shown; invalid: the last day of the channels
  QDateTime to = {};
  int sampleMegabytes = 512; ///< of memory for the samples of a plot that are read as they are drawn
  QString indexFolder = {};  ///< where indexes of files are kept; empty: nowhere
};

/// The day (UTC) of a moment, from midnight to midnight.
struct DaySpan {
  QDateTime from;
  QDateTime to;
};
DaySpan dayOf(const QDateTime& time);

/// How many rows a file has in the catalogue.
using RowsOfFile = std::function<int(const QString& path)>;

/// The plots that show these rows best: seismograms together as a section, a channel alone that lasts long as a drum,
/// channels of an archive the same, events, stations and lines on maps, and so on. Where files hold more channels
/// than were chosen, only these are read; large files are read as they are drawn.
std::vector<PlotRequest> requestsForEntries(const FileEntries& entries, const RowsOfFile& rowsOf,
                                            const OpeningOptions& options);

} // namespace xov::desk
