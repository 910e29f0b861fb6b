#pragma once

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/xy/AxisScaling.h"

#include <QRectF>

namespace xov {

/// The two axes of a plot with their titles: X below the frame, Y at the left with its title turned. A friend of the
/// views that draw them so, since it uses what the base view keeps for its subclasses.
struct XYAxes {
  static constexpr float kLabelFontSize = 14;
  static constexpr double kTitleGap = 2 * double(kLabelFontSize);

  /// Draws into the current graphics context, `frame` being what the axes are drawn around; the titles are placed by
  /// the view's iRect and bounds. Leaves the view's label font at kLabelFontSize.
  template <typename PlotView>
  static void draw(PlotView& view, const QRectF& frame, const ScaledAxis& x, const ScaledAxis& y) {
    GraphicsContext& context = GraphicsContext::current();
    const SavedState saved(context);
    view.beginAxes(frame);
    view.setLabelFontSize(kLabelFontSize);
    view.setXLabel(QString());
    const QRectF inner = view.iRect();

    view.emptyAxisPath();
    ADrawAxis(view.xLabel_, 1, 3, 2, x.lower, x.upper, 0);
    view.strokeAxisPath();
    view.drawStringXYHJustVJust(x.label, float(inner.x() + inner.width() / 2), float(inner.y() - kTitleGap), 2, 3);

    view.emptyAxisPath();
    ADrawAxis(view.xLabel_, 2, 1, 2, y.lower, y.upper, 0);
    view.strokeAxisPath();
    view.drawRotatedStringXYHJustVJustAngle(y.label, float(view.bounds().x() + kTitleGap),
                                            float(inner.y() + inner.height() / 2), 1, 2, 90);
  }
};

} // namespace xov
