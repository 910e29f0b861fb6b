#pragma once

#include "designer/DesignerViews.h"

#include <QIcon>

namespace xov::designer {

/// The icon of a view: its motif on white paper, sharp at any of the usual sizes.
QIcon designerIcon(Motif motif);

} // namespace xov::designer
