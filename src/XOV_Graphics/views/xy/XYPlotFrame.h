#pragma once

#include "XOV_Graphics/platform/Symbols.h"
#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"
#include "XOV_Graphics/views/base/PlotReadout.h"

#include <QRectF>

#include <cstdint>
#include <optional>
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

/// The point of such a line that lies nearest to `at`, by its index, no farther than `reach` view points away; the
/// first `skipped` ones do not count.
std::optional<std::size_t> nearestPoint(const Trace& line, QPointF at, double reach, std::size_t skipped = 0);

/// How near the pointer must be to a point of a line or symbol to be told about it, in view points.
inline constexpr double kPointReach = 12;

/// Adds the nearest point within reach, if there is one, as "point", its place in the list from 0 on, "pointX" and
/// "pointY", its own values.
void addNearestPoint(PlotReadout& readout, const Trace& line, QPointF at, double reach, std::size_t skipped,
                     std::span<const float> x, std::span<const float> y);

/// Gray circles with a black outline at paired values, mapped into a frame; none at the first pair. Borrows the
/// values.
Symbols xySymbols(std::span<const float> x, std::span<const float> y, const QRectF& frame, const PlotLimits& limits,
                  double radius);

/// Draws them into the current graphics context, clipped at the frame.
void drawInsideFrame(const Symbols& symbols, const QRectF& frame);

} // namespace xov
