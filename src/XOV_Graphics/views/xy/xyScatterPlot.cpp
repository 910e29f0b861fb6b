#include "XOV_Graphics/views/xy/xyScatterPlot.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/xy/XYPlotFrame.h"

namespace xov {

namespace {

constexpr double kSymbolRadius = 6;
constexpr double kPadding = 0.05; // of the range, on each side

void pad(float& low, float& high) {
  const auto padding = float(kPadding * double(high - low));
  low -= padding;
  high += padding;
}

} // namespace

xyScatterPlot::xyScatterPlot(const QRectF& frame, QWidget* parent) : xyPlotView(frame, parent) {}

xyScatterPlot::~xyScatterPlot() = default;

void xyScatterPlot::computePlotLimits() {
  if (!scanLimits()) return;
  pad(xmin_, xmax_);
  pad(ymin_, ymax_);
}

void xyScatterPlot::drawRect(const QRectF&) {
  drawPaper();
  if (npts_ <= 0) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  pRect_ = xyFrame(bounds());
  context.strokeRect(pRect_);
  drawInsideFrame(xySymbols(xPoints(), yPoints(), pRect_, limits(), kSymbolRadius), pRect_);
  drawTitledAxes();
}

// The axis functions draw the titles themselves; both axes are one path.
void xyScatterPlot::drawTitledAxes() {
  beginAxes(pRect_);
  setXLabel(QStringLiteral("Moment"));
  ADrawAxis(xLabel_, 1, 3, 2, xmin_, xmax_, 0);
  setXLabel(QStringLiteral("Rise Time (s)"));
  ADrawAxis(xLabel_, 2, 1, 2, ymin_, ymax_, 0);
  strokeAxisPath();
}

} // namespace xov
