#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QStringList>

namespace xov {

/// The place of a column among the headings of a table, -1 when it has none of that name. Case does not matter,
/// except between headings that differ in nothing else.
XOV_EXPORT qsizetype headingIndex(const QStringList& headings, const QString& name);

} // namespace xov
