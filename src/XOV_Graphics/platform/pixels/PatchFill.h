#pragma once

#include "XOV_Graphics/platform/Patches.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include <QRect>
#include <QTransform>

namespace xov {

/// Fills patches on pixels. A pixel is covered by the exact share of it that lies inside of a patch. `viewToDevice`
/// maps view points to pixels; only pixels inside `clip` (device pixels) change. Working memory is that of the pixels
/// that the largest patch reaches inside the clip.
void fillPatches(const PixelTarget& target, const Patches& patches, const QTransform& viewToDevice,
                 const QRect& clip);

} // namespace xov
