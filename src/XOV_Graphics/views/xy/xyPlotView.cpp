#include "XOV_Graphics/views/xy/xyPlotView.h"

#include "XOV_Graphics/views/xy/XYAxes.h"
#include "XOV_Graphics/views/xy/XYPlotFrame.h"

#include <algorithm>
#include <limits>

namespace xov {

xyPlotView::xyPlotView(const QRectF& frame, QWidget* parent) : XOVView(frame, parent) {}

xyPlotView::~xyPlotView() = default;

void xyPlotView::setDataPointersXY(std::span<const float> x, std::span<const float> y) {
  xp_.assign(x.begin(), x.end());
  yp_.assign(y.begin(), y.end());
}

void xyPlotView::appendDataPointersXY(std::span<const float> x, std::span<const float> y) {
  xp_.insert(xp_.end(), x.begin(), x.end());
  yp_.insert(yp_.end(), y.begin(), y.end());
}

void xyPlotView::incrementNpts(std::int32_t count) {
  using Limits = std::numeric_limits<std::int32_t>;
  npts_ = std::int32_t(std::clamp<std::int64_t>(std::int64_t(npts_) + count, Limits::min(), Limits::max()));
}

std::span<const float> xyPlotView::xPoints() const {
  return std::span(xp_).first(readablePoints(npts_, xp_.size(), yp_.size()));
}

std::span<const float> xyPlotView::yPoints() const {
  return std::span(yp_).first(readablePoints(npts_, xp_.size(), yp_.size()));
}

bool xyPlotView::scanLimits() {
  if (xPoints().empty()) return false;
  const PlotLimits extremes = dataExtremes(xPoints(), yPoints(), logAxes());
  xmin_ = extremes.xmin;
  xmax_ = extremes.xmax;
  ymin_ = extremes.ymin;
  ymax_ = extremes.ymax;
  return true;
}

void xyPlotView::computePlotLimits() {
  scanLimits();
  announceLimits();
}

QRectF xyPlotView::computeDataRanges() {
  if (!scanLimits()) return {};
  announceLimits();
  return limits().rect();
}

PlotReadout xyPlotView::readout(QPointF point) const { return readoutSkipping(point, 0); }

PlotReadout xyPlotView::readoutSkipping(QPointF point, std::size_t skipped) const {
  return XYAxes::readout(*this, point, kPointReach, skipped);
}

void xyPlotView::drawRect(const QRectF&) {
  const auto drawLine = [this] {
    Path path;
    const PlottedValues x(xPoints(), logX());
    const PlottedValues y(yPoints(), logY());
    path.appendTrace(xyLine(x, y, pRect_, drawnLimits(limits(), logAxes())));
    path.setLineWidth(lineWidth_);
    GraphicsContext& context = GraphicsContext::current();
    const SavedState unclipped(context);
    context.clipToRect(pRect_);
    context.strokePath(path);
  };
  if (XYAxes::drawPlot(*this, npts_, drawLine)) drawAxes();
}

void xyPlotView::drawAxes() {
  XYAxes::draw(*this, pRect_, XYAxes::axis(xmin_, xmax_, xLabelString_, logX()),
               XYAxes::axis(ymin_, ymax_, yLabelString_, logY()));
}

} // namespace xov
