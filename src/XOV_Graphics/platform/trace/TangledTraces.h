#pragma once

#include "XOV_Graphics/platform/trace/TraceRaster.h"

namespace xov {

/// Strokes traces as strokeTraces() does, but such whose x turns back wherever it likes, and on pictures that are
/// turned: segment by segment onto places within each pixel (see InkBits). Work grows with the ink that is laid where
/// there was none; what runs over full ink costs next to nothing. Memory is bounded by a strip of the picture, and
/// 12 bytes for each 256 samples.
///
/// Returns false and draws nothing when the pen would be no circle on the picture (shear, unequal scales).
bool strokeTangledTraces(const PixelTarget& target, std::span<const Trace> traces, const QTransform& viewToDevice,
                         const QRect& clip, double lineWidth, const QColor& color);

} // namespace xov
