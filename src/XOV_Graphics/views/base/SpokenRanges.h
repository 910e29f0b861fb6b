#pragma once

#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <QString>

namespace xov {

/// "x from 0 to 40, y from -1 to 1", of the names of both axes. An axis whose limits are equal has no range and is
/// left out.
QString spokenRanges(const PlotLimits& limits, const QString& x, const QString& y);

} // namespace xov
