#pragma once

#include <QByteArray>
#include <QPainterPath>
#include <QTransform>

namespace xov {

/// A number with up to that many decimals, without those that are zeros.
QByteArray svgNumber(double value, int decimals = 3);

/// The data of a path element: a path after a transform, on a grid of that many decimals. Subpaths that end where
/// they start are closed.
QByteArray svgPathData(const QPainterPath& path, const QTransform& transform, int decimals = 3);

/// The value of a transform attribute.
QByteArray svgMatrix(const QTransform& transform);

} // namespace xov
