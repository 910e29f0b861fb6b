#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QLoggingCategory>

namespace xov {

/// The library's log category, "xov". Hosts filter it with QLoggingCategory::setFilterRules().
XOV_EXPORT const QLoggingCategory& log();

/// The category "xov.cells" of what is written once per grid cell or per sample. A host silences it with the rule
/// "xov.cells.debug=false"; it then costs one test a cell.
XOV_EXPORT const QLoggingCategory& cellLog();

} // namespace xov
