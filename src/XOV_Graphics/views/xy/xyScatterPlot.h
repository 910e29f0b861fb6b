#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/xy/xyPlotView.h"

namespace xov {

/// A scatter plot of moment against rise time: a grey circle of 12 points with a black outline at each pair of
/// samples but the first. The axis titles are fixed, "Moment" and "Rise Time (s)", and ranges are labelled as they
/// are; the label strings of the view are not used.
///
/// Data and counts as in xyPlotView. Pairs with a value that is not finite are left out.
class XOV_EXPORT xyScatterPlot : public xyPlotView {
  Q_OBJECT
  Q_CLASSINFO("shows", "scatter plot of moment and rise time")

public:
  explicit xyScatterPlot(QWidget* parent = nullptr) : xyScatterPlot(QRectF(), parent) {}
  explicit xyScatterPlot(const QRectF& frame, QWidget* parent = nullptr);
  ~xyScatterPlot() override;

  /// Sets the limits to the extremes of the points, widened by 5 % of the range on both sides; a single value is not
  /// widened. Without points nothing changes. computeDataRanges() does not widen.
  void computePlotLimits() override;

  /// The same as of a line plot, of the circles that are drawn.
  PlotReadout readout(QPointF point) const override;
  /// Both axes, also by the wheel.
  PlotReach reach() const override;

  /// Sets pRect() and iRect(), by which clicks are reported, to the frame that it draws.
  void drawRect(const QRectF& dirty) override;

private:
  void drawTitledAxes();
};

} // namespace xov
