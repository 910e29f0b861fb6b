// What hosts and screen readers hear of a view, and the writes of its properties.
#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/views/base/SpokenRanges.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <cmath>

namespace xov {

namespace {

// Limits that are no numbers are the same as before, too.
bool same(float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); }

bool same(const PlotLimits& a, const PlotLimits& b) {
  return same(a.xmin, b.xmin) && same(a.xmax, b.xmax) && same(a.ymin, b.ymin) && same(a.ymax, b.ymax);
}

} // namespace

void XOVView::limitsWereSet() {
  xyRect_ = limits().rect();
  announceLimits();
}

// Whoever hears of it may draw, export or set limits again, for which the middle of a drawing is no time.
void XOVView::announceLimits() {
  if (isDrawing() || same(limits(), announcedLimits_)) return;
  announcedLimits_ = limits();
  Q_EMIT limitsChanged();
}

void XOVView::didDraw() { announceLimits(); }

bool XOVView::announceExport(bool written, const QString& path) {
  if (written) contained("after an export", [&] { Q_EMIT exported(path); });
  return written;
}

QString XOVView::spokenName() const { return plotTitle_.isEmpty() ? View::spokenName() : plotTitle_; }

QString XOVView::spokenDescription() const {
  const auto name = [this](const QString& label, Qt::Axis axis) {
    return label.isEmpty() ? usualAxisName(axis) : label;
  };
  return spokenRanges(limits(), name(xLabelString_, Qt::XAxis), name(yLabelString_, Qt::YAxis));
}

QString XOVView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("x") : QStringLiteral("y");
}

void XOVView::writeTitle(const QString& title) {
  setTitle(title);
  setNeedsDisplay();
}

void XOVView::writeXLabel(const QString& label) {
  setXLabelString(label);
  setNeedsDisplay();
}

void XOVView::writeYLabel(const QString& label) {
  setYLabelString(label);
  setNeedsDisplay();
}

void XOVView::writeXmin(float value) {
  setXmin(value);
  setNeedsDisplay();
}

void XOVView::writeXmax(float value) {
  setXmax(value);
  setNeedsDisplay();
}

void XOVView::writeYmin(float value) {
  setYmin(value);
  setNeedsDisplay();
}

void XOVView::writeYmax(float value) {
  setYmax(value);
  setNeedsDisplay();
}

void XOVView::writeMinYRange(float range) {
  setMinYRange(range);
  setNeedsDisplay();
}

void XOVView::writeLineWidth(double points) {
  setLineWidth(points);
  setNeedsDisplay();
}

void XOVView::writeFixedXAxisRange(bool fixed) {
  set_fixedXAxisRange(fixed);
  setNeedsDisplay();
}

void XOVView::writeFixedYAxisRange(bool fixed) {
  set_fixedYAxisRange(fixed);
  setNeedsDisplay();
}

void XOVView::writeSubtitle(const QString& subtitle) {
  setSubtitle(subtitle);
  setNeedsDisplay();
}

void XOVView::writeShowPlotTitle(bool show) {
  set_showPlotTitle(show);
  setNeedsDisplay();
}

void XOVView::writeTimeStamp(bool show) {
  set_timeStamp(show);
  setNeedsDisplay();
}

void XOVView::writeShowZoomRect(bool show) {
  set_showZoomRect(show);
  setNeedsDisplay();
}

void XOVView::writeLabelFontSize(float size) {
  setLabelFontSize(size);
  setNeedsDisplay();
}

void XOVView::writeTitleFontSize(float size) {
  setTitleFontSize(size);
  setNeedsDisplay();
}

void XOVView::writeTitleColor(const QColor& color) {
  setTitleColor(color);
  setNeedsDisplay();
}

void XOVView::writeTrackMouse(bool track) {
  if (track != trackMouse_) set_trackMouse(track);
}

} // namespace xov
