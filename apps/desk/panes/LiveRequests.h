#pragma once

#include "apps/desk/panes/PlotRequest.h"

namespace xov::desk {

/// What a pane receives from a SeedLink server.
struct LiveSource {
  QString server;           ///< as "localhost:18000"
  QString stations;         ///< as "GE_WLF:BHZ,GR_*:HHZ"
  bool beginsToday = false; ///< with what the server has since midnight (UTC)

  bool operator==(const LiveSource&) const = default;
};

/// Whether a request shows what arrives.
bool isLive(const PlotRequest& request);

/// Where that comes from; empty texts of one that shows files.
LiveSource liveSourceOf(const PlotRequest& request);

/// What shows a source: `kind` is "monitor" or "drum".
PlotRequest requestForSource(const QString& kind, const LiveSource& source);

} // namespace xov::desk
