#pragma once

#include "XOV_Graphics/platform/trace/TraceCoverage.h"
#include "XOV_Graphics/platform/trace/TraceInk.h"
#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <QRect>
#include <QTransform>

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

// How traces are cut into strips, and how the ink of strips gets onto pixels.

namespace xov {

/// Finds the traces as they lie on the picture, without those that show nothing; false when the columns of one do not
/// grow.
bool projectTraces(std::span<const Trace> traces, const QTransform& viewToDevice, const QRect& visible,
                   std::vector<TraceProjection>& projections);

/// Of all of them together.
double samplesPerPixel(const std::vector<TraceProjection>& projections);

/// Strips become narrower as the number of lines grows, so that all of a strip's ink stays at hand.
int stripColumns(int perColumn, std::size_t traces, double radius);

/// The columns that traces may ink.
class InkExtent {
public:
  InkExtent() = default;
  InkExtent(const std::vector<TraceProjection>& projections, double reach);

  /// Marks the columns of a strip that may have ink.
  void markUsed(TraceStrip& strip) const;
  /// Moves a picture's first strip on to the first one with ink, and returns the columns from there to the last one.
  int beginAt(const QRect& visible, TraceStrip& first) const;

private:
  bool touches(int column, int columns) const { return right_ >= column && left_ <= column + columns; }

  double left_ = std::numeric_limits<double>::infinity();
  double right_ = -std::numeric_limits<double>::infinity();
};

/// Lays the ink of a strip over its pixels, of which row 0 is the picture's row `top`.
void layStrip(TraceCoverage& coverage, const TraceStrip& strip, const TraceInk& ink, const PixelTarget& target,
              int top);

} // namespace xov
