#include "XOV_Graphics/views/xy/XOV2DScatterPlotView.h"

#include "XOV_Graphics/views/xy/XYAxes.h"
#include "XOV_Graphics/views/xy/XYPlotFrame.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr float kDefaultDiameter = 12;

} // namespace

XOV2DScatterPlotView::XOV2DScatterPlotView(const QRectF& frame, QWidget* parent)
    : XOVView(frame, parent),
      symbolDiameter_(kDefaultDiameter) {}

XOV2DScatterPlotView::~XOV2DScatterPlotView() = default;

void XOV2DScatterPlotView::setXpYpNpts(const Buffer& x, const Buffer& y, std::int32_t npts) {
  xp_ = x;
  yp_ = y;
  npts_ = npts;
}

std::span<const float> XOV2DScatterPlotView::readable(const Buffer& buffer) const {
  if (!xp_ || !yp_) return {};
  return std::span<const float>(*buffer).first(readablePoints(npts_, xp_->size(), yp_->size()));
}

void XOV2DScatterPlotView::computePlotLimits() {
  if (xPoints().empty()) return;
  const PlotLimits extremes = dataExtremes(xPoints(), yPoints(), logAxes());
  xmin_ = extremes.xmin;
  xmax_ = extremes.xmax;
  ymin_ = extremes.ymin;
  ymax_ = extremes.ymax;
  announceLimits();
}

void XOV2DScatterPlotView::computeDataRanges() { XOV2DScatterPlotView::computePlotLimits(); }

PlotReadout XOV2DScatterPlotView::readout(QPointF point) const {
  const double radius = std::abs(double(symbolDiameter_)) / 2;
  return XYAxes::readout(*this, point, std::max(radius, kPointReach), 1);
}

PlotReach XOV2DScatterPlotView::reach() const {
  PlotReach reach = XOVView::reach();
  reach.wheelZoomsY = true;
  return reach;
}

void XOV2DScatterPlotView::drawRect(const QRectF&) {
  const auto drawPoints = [this] {
    const double radius = std::abs(double(symbolDiameter_)) / 2;
    const PlottedValues x(xPoints(), logX());
    const PlottedValues y(yPoints(), logY());
    drawInsideFrame(xySymbols(x, y, pRect_, drawnLimits(limits(), logAxes()), radius), pRect_);
  };
  if (XYAxes::drawPlot(*this, npts_, drawPoints)) drawAxes();
}

void XOV2DScatterPlotView::drawAxes() {
  XYAxes::draw(*this, pRect_, {xmin_, xmax_, xLabelString_}, {ymin_, ymax_, yLabelString_});
}

} // namespace xov
