#include "XOV_Graphics/views/seismic/SeismogramView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/graphics/LinearAxis.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/DrawnTraces.h"
#include "XOV_Graphics/views/base/RecordTraces.h"
#include "XOV_Graphics/views/base/ScaleBar.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kLegendFontSize = 10;

// The share of a box that another one takes.
double shareOf(const QRectF& box, const QRectF& other) {
  const QRectF common = box.intersected(other);
  return common.width() * common.height() / (box.width() * box.height());
}
constexpr double kLongestBar = 28; // points; above a frame there are 40
constexpr double kBarGap = 6;      // points

} // namespace

SeismogramView::SeismogramView(const QRectF& frame, QWidget* parent) : XOVView(frame, parent) {}

SeismogramView::~SeismogramView() = default;

QString SeismogramView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("time (s)") : QStringLiteral("amplitude");
}

void SeismogramView::takeLimits(const RecordLimits& found, FixedRanges fixed) {
  const bool keep = fixed == FixedRanges::Kept;
  if (!keep || !fixedXAxisRange_) {
    xmin_ = found.tmin;
    xmax_ = found.tmax;
  }
  if (!keep || !fixedYAxisRange_) {
    ymin_ = found.amin;
    ymax_ = found.amax;
  }
  announceLimits();
}

std::vector<RecordTrace> SeismogramView::recordTraces() const { return {}; }

QDateTime SeismogramView::momentOf(double axisSeconds) const { return momentAfter(timeReference_, axisSeconds); }

void SeismogramView::addToReadout(PlotReadout&, QPointF) const {}

bool SeismogramView::settleTrace(Trace& trace, const QRectF& panel, float lowest, float highest) {
  if (!(panel.width() > 0) || !(panel.height() > 0) || !std::isfinite(trace.xScale)) return false;
  if (std::isfinite(trace.yScale)) return true;
  trace.yScale = 0;
  return lowest == trace.vOrigin && highest == trace.vOrigin;
}

void SeismogramView::strokeTrace(Trace trace, const QRectF& panel, float lowest, float highest) const {
  if (!settleTrace(trace, panel, lowest, highest)) return;
  Path path;
  path.appendTrace(trace);
  path.setLineWidth(lineWidth_);
  GraphicsContext::current().strokePath(path);
}

QColor SeismogramView::traceColor(std::size_t index, const QColor& usual) const {
  return traceColors_.empty() ? usual : traceColors_[index % traceColors_.size()];
}

void SeismogramView::drawLegendIn(const QRectF& frame, std::span<const DrawnTrace> traces,
                                  std::span<const QRectF> texts) const {
  if (legend_.empty()) return;
  const TextAttributes font = TextAttributes::helvetica(kLegendFontSize);
  const auto covered = [&](const QRectF& box) {
    double sum = coveredByTraces(box, traces);
    for (const QRectF& text : texts)
      sum += shareOf(box, text);
    return sum;
  };
  drawLegend(layOutLegend(frame, legend_, legendPlace_, font, covered), font, lineWidth_);
}

void SeismogramView::strokeLine(QPointF from, QPointF to) {
  Path line;
  line.moveTo(from);
  line.lineTo(to);
  GraphicsContext::current().strokePath(line);
}

void SeismogramView::strokeDottedLine(QPointF from, QPointF to, double width, const std::vector<double>& dashes) {
  Path line;
  line.moveTo(from);
  line.lineTo(to);
  line.setLineWidth(width);
  line.setLineCap(Path::Cap::Round);
  line.setDashes(dashes, 0);
  GraphicsContext::current().strokePath(line);
}

void SeismogramView::addTimeAxis(const QString& label) {
  if (timeReference_.isValid()) {
    ADrawUtcAxis(QStringLiteral("UTC"), timeReference_, double(xmin_), double(xmax_));
  } else {
    addAxis(AxisSide::Bottom, label, xmin_, xmax_);
  }
}

void SeismogramView::addAmplitudeAxis(const QString& label) { addAxis(AxisSide::Left, label, ymin_, ymax_); }

void SeismogramView::drawAmplitudeBar(double pointsPerUnit) {
  if (!showAmplitudeBar_) return;
  const std::optional<ScaleBar> bar = scaleBar(pointsPerUnit, kLongestBar, amplitudeUnit_);
  if (!bar) return;
  const double right = iRect_.x() + iRect_.width();
  const double left = right - uprightBarWidth(*bar);
  const double titleRight = iRect_.center().x() + titleAttributes_->size(plotTitle_).width() / 2;
  const double top = iRect_.y() + iRect_.height();
  const double bottom = titleRight + kBarGap < left ? top + kBarGap : top - kBarGap - bar->length;
  drawUprightBar(*bar, {right - kScaleBarCap / 2, bottom});
}

void SeismogramView::drawTimeAxisUnder(double left, double right, double bottom) {
  if (!(std::abs(left) <= kAxisReach && std::abs(right) <= kAxisReach && std::abs(bottom) <= kAxisReach)) return;
  beginAxes({left, bottom, right - left, 0});
  addTimeAxis(QStringLiteral("Time (s)"));
  strokeAxisPath();
}

} // namespace xov
