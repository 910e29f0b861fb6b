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

bool XOVView::announceExport(const QPointer<XOVView>& view, bool written, const QString& path) {
  if (written && view) contained("after an export", [&] { Q_EMIT view->exported(path); });
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
  setNeedsDisplay();
  setTitle(title);
}

void XOVView::writeXLabel(const QString& label) {
  setNeedsDisplay();
  setXLabelString(label);
}

void XOVView::writeYLabel(const QString& label) {
  setNeedsDisplay();
  setYLabelString(label);
}

void XOVView::writeXmin(float value) {
  setNeedsDisplay();
  setXmin(value);
}

void XOVView::writeXmax(float value) {
  setNeedsDisplay();
  setXmax(value);
}

void XOVView::writeYmin(float value) {
  setNeedsDisplay();
  setYmin(value);
}

void XOVView::writeYmax(float value) {
  setNeedsDisplay();
  setYmax(value);
}

void XOVView::writeMinYRange(float range) {
  setNeedsDisplay();
  setMinYRange(range);
}

void XOVView::writeLineWidth(double points) {
  setNeedsDisplay();
  setLineWidth(points);
}

void XOVView::writeFixedXAxisRange(bool fixed) {
  setNeedsDisplay();
  set_fixedXAxisRange(fixed);
}

void XOVView::writeFixedYAxisRange(bool fixed) {
  setNeedsDisplay();
  set_fixedYAxisRange(fixed);
}

void XOVView::writeSubtitle(const QString& subtitle) {
  setNeedsDisplay();
  setSubtitle(subtitle);
}

void XOVView::writeShowPlotTitle(bool show) {
  setNeedsDisplay();
  set_showPlotTitle(show);
}

void XOVView::writeTimeStamp(bool show) {
  setNeedsDisplay();
  set_timeStamp(show);
}

void XOVView::writeShowZoomRect(bool show) {
  setNeedsDisplay();
  set_showZoomRect(show);
}

void XOVView::writeLabelFontSize(float size) {
  setNeedsDisplay();
  setLabelFontSize(size);
}

void XOVView::writeTitleFontSize(float size) {
  setNeedsDisplay();
  setTitleFontSize(size);
}

void XOVView::writeTitleColor(const QColor& color) {
  setNeedsDisplay();
  setTitleColor(color);
}

void XOVView::writeTrackMouse(bool track) {
  if (track != trackMouse_) set_trackMouse(track);
}

} // namespace xov
