#pragma once

#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/xy/AxisScaling.h"
#include "XOV_Graphics/views/xy/XYPlotFrame.h"

#include <QRectF>

namespace xov {

/// What stands around the data of a plot: paper and frame, and the two axes with their titles, X below the frame, Y
/// at the left with its title turned. A friend of the views that draw them so, since it uses what the base view keeps
/// for its subclasses.
struct XYAxes {
  static constexpr float kLabelFontSize = 14;
  static constexpr double kTitleGap = 2 * double(kLabelFontSize);

  /// A plot of points: white paper with a black line around it and, where there are any points, the frame, which
  /// pRect and iRect are set to, and what `drawData` draws, in a saved state. False without points.
  template <typename PlotView, typename DrawData>
  static bool drawPlot(PlotView& view, std::int32_t npts, DrawData drawData) {
    view.drawPaper();
    if (npts <= 0) return false;
    view.pRect_ = xyFrame(view.bounds());
    view.iRect_ = view.pRect_;
    GraphicsContext& context = GraphicsContext::current();
    const SavedState saved(context);
    context.strokeRect(view.pRect_);
    drawData();
    return true;
  }

  /// What a plot of points tells about a place inside its frame: the axes' values, and the nearest point within
  /// reach.
  template <typename PlotView>
  static PlotReadout readout(const PlotView& view, QPointF at, double reach, std::size_t skipped) {
    PlotReadout readout;
    const std::span<const float> xPoints = view.xPoints();
    const std::span<const float> yPoints = view.yPoints();
    if (xPoints.empty() || !view.isInFrame(at)) return readout;
    view.addAxisValue(readout, QLatin1String("x"), Qt::XAxis, at);
    view.addAxisValue(readout, QLatin1String("y"), Qt::YAxis, at);
    const PlottedValues x(xPoints, view.logX());
    const PlottedValues y(yPoints, view.logY());
    const Trace line = xyLine(x, y, view.pRect(), drawnLimits(view.limits(), view.logAxes()));
    addNearestPoint(readout, line, at, reach, skipped, xPoints, yPoints);
    return readout;
  }

  /// The limits and the label of an axis, scaled unless it is logarithmic.
  static ScaledAxis axis(float lower, float upper, const QString& label, bool logarithmic) {
    return logarithmic ? ScaledAxis{lower, upper, label} : scaledAxis(lower, upper, label);
  }

  /// Draws into the current graphics context, `frame` being what the axes are drawn around; the titles are placed by
  /// the view's iRect and bounds. Leaves the view's label font at kLabelFontSize.
  template <typename PlotView>
  static void draw(PlotView& view, const QRectF& frame, const ScaledAxis& x, const ScaledAxis& y) {
    GraphicsContext& context = GraphicsContext::current();
    const SavedState saved(context);
    view.beginAxes(frame);
    view.setLabelFontSize(kLabelFontSize);
    const QRectF inner = view.iRect();

    view.emptyAxisPath();
    view.addAxis(AxisSide::Bottom, QString(), x.lower, x.upper);
    view.strokeAxisPath();
    view.drawStringXYHJustVJust(x.label, float(inner.x() + inner.width() / 2), float(inner.y() - kTitleGap), 2, 3);

    view.emptyAxisPath();
    view.addAxis(AxisSide::Left, QString(), y.lower, y.upper);
    view.strokeAxisPath();
    view.drawRotatedStringXYHJustVJustAngle(y.label, float(view.bounds().x() + kTitleGap),
                                            float(inner.y() + inner.height() / 2), 1, 2, 90);
  }
};

} // namespace xov
