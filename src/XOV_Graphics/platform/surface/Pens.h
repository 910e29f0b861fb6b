#pragma once

#include "XOV_Graphics/platform/Path.h"

#include <QColor>
#include <QPen>

namespace xov {

/// The dashes of a path, lines and gaps in turn, counted in line widths as Qt counts them. Empty for an unbroken line
/// and for more dashes along `shape` than can be told apart.
QList<qreal> dashesAlong(const QPainterPath& shape, const Path& path);

/// A pen with the width, cap, join, mitre limit and dashes of a path.
QPen penFor(const Path& path, const QPainterPath& shape, const QColor& color);

/// The pen of traces, whose mitres would be tips that are not in the data.
QPen tracePen(double lineWidth, const QColor& color);

} // namespace xov
