#pragma once

#include "XOV_Graphics/platform/Path.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"
#include "XOV_Graphics/views/xy/HistogramBins.h"

#include <QRectF>

#include <cstdint>
#include <optional>
#include <span>

namespace xov {

// The bars of a histogram as paths to be filled and stroked. Bars that follow each other closer than 1/8 point are
// one black area under their outlines: of those that start within the same 1/8 point, the tallest stands for all.

/// What bars are drawn of.
struct HistogramBars {
  /// Of the bars, in points.
  static constexpr double kOutlineWidth = 0.25;

  HistogramBins bins;
  std::span<const std::int32_t> counts; ///< may hold more or fewer counts than there are bins
  std::int32_t maxCount = 0;
  QRectF frame;
  PlotLimits limits;
  bool logCounts = false; ///< the Y limits are decimal logarithms of counts; for bars over values

  /// Vertical bars over a horizontal axis of values, cut at the right and top of the frame. Bins whose left edge lies
  /// outside the frame are left out. Bars after the first, and the right side of each, stand on a line whose height
  /// is the x coordinate of the frame's left side: on the bottom where the frame has the same margin on both.
  Path overValues() const;

  /// The bar of overValues() that stands over an x, whatever its height; none where there is no bar.
  std::optional<std::size_t> barAt(double x) const;

  /// Horizontal bars that start 5 points right of the frame, one a data unit of the Y limits high, the longest as
  /// long as the frame is high.
  Path besideFrame() const;

  /// The line that besideFrame() bars start from.
  Path baseline() const;

private:
  double besideX() const;
  double heightOf(std::int32_t count) const;
  double leftOf(std::size_t bar) const;
  double barWidth() const;
};

} // namespace xov
