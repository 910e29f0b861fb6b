#pragma once

#include <QString>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/views/base/XOVView.h>

namespace xov::cli {

/// Whether the extension of a file's name is that of a format that plots are written in.
bool isPlotFile(const QString& name);

/// Whether a file of that format may hold several pages.
bool holdsPages(const QString& name);

/// Writes a view to a file, whole or not at all, in the format that its name, of which isPlotFile() holds, asks for.
Status writePlot(XOVView& view, const QString& name);

/// The name, or the first one with a number that no file has.
QString unusedName(const QString& name);

} // namespace xov::cli
