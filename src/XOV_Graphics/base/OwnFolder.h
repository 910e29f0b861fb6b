#pragma once

#include <QStringList>

namespace xov {

/// The folder of the file that holds this code, wherever it was moved to: of the shared library, or of the program
/// that the static library is a part of. First as it was loaded, then with symbolic links followed. Empty when the
/// system does not tell, and in a program with the static library before it has its QCoreApplication.
QStringList ownFolders();

} // namespace xov
