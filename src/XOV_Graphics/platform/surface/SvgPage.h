#pragma once

#include "XOV_Graphics/platform/surface/Picture.h"

#include <QByteArray>
#include <QRectF>

namespace xov {

/// An SVG document that shows the part of a view inside `rect`, as large as the rectangle in points: lines and traces
/// are paths, text is text, and only images are pixels. The same drawing gives the same bytes. Empty for an empty
/// rectangle.
///
/// Written without QSvgGenerator, which knows no clips in the Qt versions at hand: traces, symbols and plate
/// boundaries would run out of their frames.
QByteArray svgPage(const QRectF& rect, const Drawing& draw);

} // namespace xov
