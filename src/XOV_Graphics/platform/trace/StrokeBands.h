#pragma once

#include "XOV_Graphics/platform/TraceStrokes.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include <cstddef>
#include <functional>
#include <span>

namespace xov {

/// Draws strokes on several threads, and calls `drawOtherwise` with the number of each one that does not fit, in its
/// turn. The pixels are those of the strokes drawn one after the other.
///
/// Short strokes are drawn in bands of the picture, as wide as a strip: each band has all of its ink from one thread,
/// stroke after stroke. Longer ones are shared out strip by strip, between those before and those behind them.
void strokeInBands(const PixelTarget& target, const TraceStrokes& strokes, const QTransform& viewToDevice,
                   const QRect& clip, const std::function<void(std::size_t)>& drawOtherwise);

/// Whether so many strokes are worth that.
bool areWorthBands(std::size_t strokes);

/// Asks the samples of a short stroke from memory, which is about to be drawn.
void foreseeStroke(std::span<const Trace> traces);

} // namespace xov
