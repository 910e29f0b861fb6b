#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QString>

namespace xov {

/// The folder in which the host program keeps its own resources; searched first. Empty (the default) means none.
XOV_EXPORT void setHostResourceFolder(const QString& folder);
/// The folder set last; empty for none.
XOV_EXPORT QString hostResourceFolder();

/// The folder for data that is too large to come with the library and is made or imported later. Below it lie
///
///     DATA/Grids/etopo5.i2   the ETOPO5 grid
///     resources/             full-size pictures and boundary texts, named as the library's small ones
///
/// It is the first of these that is not empty: what the host program sets here, the environment variable
/// XOV_DATA_ROOT, the data root that the library was configured with, and the folder XOV_Graphics below the user's
/// data folder ($XDG_DATA_HOME, or ~/.local/share). So a library in its build tree and an installed one find the same
/// files, and a user needs no rights to make them. Nothing says that the folder exists.
XOV_EXPORT void setDataRoot(const QString& folder);
/// The folder for large files: the one set last, or else where it lies as setDataRoot() tells.
XOV_EXPORT QString dataRoot();

/// The folder below the data root whose files stand in for the library's small ones of the same names.
XOV_EXPORT QString fullSizeResourceFolder();

/// The path of the resource file of that name (with its extension): the host's resource folder, then the full-size
/// resources below the data root, then the library's own, which lie where the library does, wherever that was moved
/// to: in the share/XOV_Graphics/resources of its prefix, or in XOV_Graphics/resources beside the file of the
/// library. With the static library it is the program that they lie beside. Empty when no folder has it.
XOV_EXPORT QString resourcePath(const QString& name);

} // namespace xov
