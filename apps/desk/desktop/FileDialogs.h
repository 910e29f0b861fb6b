#pragma once

#include <QStringList>
#include <QWidget>

#include <functional>

namespace xov::desk {

/// Told what the user chose; not called when nothing was.
using PathsChosen = std::function<void(const QStringList& paths)>;

/// Asks for files to open, without blocking.
void askForFiles(QWidget* window, const PathsChosen& chosen);
/// Asks for a folder to open or to write to, without blocking.
void askForFolder(QWidget* window, const QString& title, const PathsChosen& chosen);
/// Asks for the name of a file to write that ends in one of the suffixes (the first of them is added where there is
/// none), without blocking.
void askForNewFile(QWidget* window, const QString& title, const QString& proposal, const QStringList& suffixes,
                   const PathsChosen& chosen);

} // namespace xov::desk
