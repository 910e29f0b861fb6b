#pragma once

#include "platform/Export.h"

#include <QString>

namespace xov {

/// The folder in which the host program keeps its own resources; searched first. Empty (the default) means none.
XOV_EXPORT void setHostResourceFolder(const QString& folder);
XOV_EXPORT QString hostResourceFolder();

/// The path of the resource file of that name (with its extension): the host's resource folder, then the library's
/// installed share/XOV_Graphics/resources, then the tree that the library was built from. Empty when no folder has
/// it.
XOV_EXPORT QString resourcePath(const QString& name);

} // namespace xov
