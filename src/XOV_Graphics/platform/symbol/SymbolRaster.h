#pragma once

#include "XOV_Graphics/platform/Symbols.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include <QRect>
#include <QTransform>

namespace xov {

/// Draws symbols onto pixels as if each were filled and then stroked before the next one: every coverage is an exact
/// area, and a pixel is rounded once, however many symbols lie over it. `viewToDevice` maps view points to pixels;
/// only pixels inside `clip` (device pixels) change. Returns false and draws nothing under a transform that turns
/// circles into ellipses.
///
/// The symbols are gone through from the last to the first, and pixels of which nothing more can show are skipped: a
/// million symbols that hide each other cost little more than those that show. Working memory is bounded.
bool paintSymbols(const PixelTarget& target, const Symbols& symbols, const QTransform& viewToDevice,
                  const QRect& clip);

} // namespace xov
