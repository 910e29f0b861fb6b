#pragma once

#include "apps/desk/panes/PlotMaker.h"

#include <QStringList>

namespace xov::desk {

/// Opens the desk's window with these files and folders and returns when it is closed. There must be an application
/// object. Plots are made by commands that `run` runs. Whether what it remembers could be written; it has complained
/// where that is not so.
bool runDesk(const CommandRunner& run, const QStringList& paths);

} // namespace xov::desk
