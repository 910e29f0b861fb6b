#pragma once

#include "XOV_Graphics/platform/Symbols.h"
#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <QRectF>

#include <cstdint>
#include <span>
#include <vector>

namespace xov {

// What the views of paired X and Y values have in common.
//
//        +--------------------------------------+
//        |                  40                  |
//        |     +--------------------------+     |
//        |     |                          |     |
//        |  60 |          frame           | 60  |
//        |     |                          |     |
//        |     +--------------------------+     |
//        |                  60                  |
//        +--------------------------------------+

/// Where a plot is framed inside a view's bounds; its size may turn out negative.
QRectF xyFrame(const QRectF& bounds);

/// Points whose two values can both be read: `npts`, or fewer where values end before; none for a negative count.
std::size_t readablePoints(std::int32_t npts, std::size_t xCount, std::size_t yCount);

/// Values as they lie along an axis: themselves, or on a logarithmic axis their decimal logarithms, NaN for those not
/// above 0. Borrows the values.
class PlottedValues {
public:
  PlottedValues(std::span<const float> values, bool logarithmic);
  operator std::span<const float>() const { return values_; }

private:
  std::vector<float> logarithms_;
  std::span<const float> values_;
};

/// The extremes of paired values, from 1e25 down and −1e25 up, so that these remain where no value lies between.
/// NaN counts for nothing, nor on a logarithmic axis does what is not above 0.
PlotLimits dataExtremes(std::span<const float> x, std::span<const float> y, LogAxes axes);

/// View points a data unit, in single precision. Not finite for equal limits.
struct XYScale {
  float x = 0;
  float y = 0;
};
XYScale xyScale(const QRectF& frame, const PlotLimits& limits);

/// The polyline through paired values, mapped into a frame. Borrows the values.
Trace xyLine(std::span<const float> x, std::span<const float> y, const QRectF& frame, const PlotLimits& limits);

/// Gray circles with a black outline at paired values, mapped into a frame; none at the first pair. Borrows the
/// values.
Symbols xySymbols(std::span<const float> x, std::span<const float> y, const QRectF& frame, const PlotLimits& limits,
                  double radius);

/// Draws them into the current graphics context, clipped at the frame.
void drawInsideFrame(const Symbols& symbols, const QRectF& frame);

} // namespace xov
