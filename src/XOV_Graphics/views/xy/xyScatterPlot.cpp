#include "XOV_Graphics/views/xy/xyScatterPlot.h"

#include "XOV_Graphics/views/xy/XYAxes.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kSymbolRadius = 6;
constexpr double kPadding = 0.05; // of the range, on each side

void pad(float& low, float& high, bool logarithmic) {
  if (logarithmic) {
    const LogRange range = logRange(low, high);
    const double padding = kPadding * (range.upper - range.lower);
    low = float(std::pow(10.0, range.lower - padding));
    high = float(std::pow(10.0, range.upper + padding));
    return;
  }
  const auto padding = float(kPadding * double(high - low));
  low -= padding;
  high += padding;
}

} // namespace

xyScatterPlot::xyScatterPlot(const QRectF& frame, QWidget* parent) : xyPlotView(frame, parent) {}

xyScatterPlot::~xyScatterPlot() = default;

void xyScatterPlot::computePlotLimits() {
  if (!scanLimits()) return;
  pad(xmin_, xmax_, logX());
  pad(ymin_, ymax_, logY());
  announceLimits();
}

PlotReadout xyScatterPlot::readout(QPointF point) const { return readoutSkipping(point, 1); }

PlotReach xyScatterPlot::reach() const {
  PlotReach reach = xyPlotView::reach();
  reach.wheelZoomsY = true;
  return reach;
}

void xyScatterPlot::drawRect(const QRectF&) {
  XYAxes::drawPlot(static_cast<xyPlotView&>(*this), npts_, [this] {
    const PlottedValues x(xPoints(), logX());
    const PlottedValues y(yPoints(), logY());
    drawInsideFrame(xySymbols(x, y, pRect_, drawnLimits(limits(), logAxes()), kSymbolRadius), pRect_);
    drawTitledAxes();
  });
}

// The axis functions draw the titles themselves; both axes are one path.
void xyScatterPlot::drawTitledAxes() {
  beginAxes(pRect_);
  addAxis(AxisSide::Bottom, QStringLiteral("Moment"), xmin_, xmax_);
  addAxis(AxisSide::Left, QStringLiteral("Rise Time (s)"), ymin_, ymax_);
  strokeAxisPath();
}

} // namespace xov
