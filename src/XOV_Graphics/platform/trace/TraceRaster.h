#pragma once

#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/platform/TraceStrokes.h"
#include "XOV_Graphics/platform/trace/RowPairs.h"

#include <QColor>
#include <QRect>
#include <QTransform>

#include <cstddef>
#include <functional>
#include <span>

namespace xov {

/// The pixels that traces are stroked onto: 32 bits a pixel, premultiplied ARGB (or RGB with the top byte 255).
struct PixelTarget {
  uchar* bits = nullptr;
  qsizetype bytesPerLine = 0;
  int width = 0;
  int height = 0;
};

/// Strokes all traces as ONE path, with round joins and butt ends, exactly: the ink is the union of all their
/// segments, so it never doubles where traces overlap, and it is blended once.
///
/// `lineWidth` is in view points; `viewToDevice` maps view points to pixels. Only pixels inside `clip` (device
/// pixels) change. Returns false and draws nothing when the description does not fit this rasteriser (rotation or
/// shear, unequal scales along x and y, times that do not grow with the index, a line too wide): TraceStretches and
/// TangledTraces are for those.
///
/// One pass over the samples; working memory is bounded by the picture's size.
bool strokeTraces(const PixelTarget& target, std::span<const Trace> traces, const QTransform& viewToDevice,
                  const QRect& clip, double lineWidth, const QColor& color);

/// The same of strokes one after the other, later ones over earlier ones; what they have in common is settled once.
/// Where one does not fit, `drawOtherwise` is called with its number, in its turn.
void strokeTraces(const PixelTarget& target, const TraceStrokes& strokes, const QTransform& viewToDevice,
                  const QRect& clip, const std::function<void(std::size_t)>& drawOtherwise);

/// Fills what traces enclose as ONE path, each unbroken line of them closed from its last sample to its first,
/// however far outside `clip` these lie: windings add up over all of them, and the colour is blended once.
///
/// Returns false and draws nothing when the description does not fit, as strokeTraces() does; scales along x and y
/// may differ. Where a pixel holds dozens of samples and more, only some of them are looked at: what is left out lies
/// between a curve's extremes, so a stroke covers it.
bool fillTraces(const PixelTarget& target, std::span<const Trace> traces, const QTransform& viewToDevice,
                const QRect& clip, InsideRule rule, const QColor& color);

} // namespace xov
