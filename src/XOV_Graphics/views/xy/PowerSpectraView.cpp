#include "XOV_Graphics/views/xy/PowerSpectraView.h"

#include "XOV_Graphics/colour/CategoryColors.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/seismic/signal/NoiseModelCurve.h"
#include "XOV_Graphics/views/base/TitledAxes.h"
#include "XOV_Graphics/views/xy/XYPlotFrame.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace xov {

namespace {

constexpr double kLeft = 84; // of the frame, in points

constexpr double kCurveWidth = 1;
constexpr double kModelWidth = 1.5;
constexpr double kLowestShare = 0.01; // of the values
constexpr double kMargin = 0.04;      // of the range

constexpr float kLegendFontSize = 11;
constexpr double kLegendGap = 8; // from the frame, and around the texts
constexpr double kSampleLength = 22;

/// Both ends of an axis, of the values as they are drawn.
struct Range {
  double lower = 0;
  double upper = 0;
};

Range widened(const Range& range) {
  const double margin = range.upper > range.lower ? kMargin * (range.upper - range.lower) : 0.5;
  return {range.lower - margin, range.upper + margin};
}

// The values of curves as they lie along the axes.
struct PlottedCurves {
  std::vector<float> x;
  std::vector<float> y;

  void add(const SpectrumCurve& curve, LogAxes axes) {
    const PlottedValues hz(curve.hz, axes.x);
    const PlottedValues values(curve.values, axes.y);
    const std::span<const float> xs(hz);
    const std::span<const float> ys(values);
    for (std::size_t i = 0; i < std::min(xs.size(), ys.size()); ++i) {
      if (!std::isfinite(xs[i]) || !std::isfinite(ys[i])) continue;
      x.push_back(xs[i]);
      y.push_back(ys[i]);
    }
  }
};

float valueOf(double drawn, bool logarithmic) { return float(logarithmic ? std::pow(10.0, drawn) : drawn); }

} // namespace

PowerSpectraView::PowerSpectraView(const QRectF& frame, QWidget* parent) : XOVView(frame, parent) {}

PowerSpectraView::~PowerSpectraView() = default;

QString PowerSpectraView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("frequency (Hz)") : QStringLiteral("power");
}

void PowerSpectraView::computeRects() {
  iRect_ = titledFrame(bounds(), kLeft);
  pRect_ = iRect_;
}

void PowerSpectraView::computePlotLimits() {
  if (!curves_) return;
  PlottedCurves all;
  for (const SpectrumCurve& curve : *curves_)
    all.add(curve, logAxes_);
  if (all.x.empty()) return;
  const auto [first, last] = std::ranges::minmax_element(all.x);
  const Range x{double(*first), double(*last)};
  const auto place = all.y.begin() + std::ptrdiff_t(kLowestShare * double(all.y.size() - 1));
  std::ranges::nth_element(all.y, place);
  Range y{double(*place), double(*std::ranges::max_element(all.y))};
  if (showNoiseModels_) {
    for (const NoiseModel model : {NoiseModel::Low, NoiseModel::High}) {
      const NoiseModelCurve curve(model, valueOf(x.lower, logX()), valueOf(x.upper, logX()));
      for (const float value : curve.decibels) {
        y.lower = std::min(y.lower, double(value));
        y.upper = std::max(y.upper, double(value));
      }
    }
  }
  if (!fixedXAxisRange_) {
    const Range shown = x.upper > x.lower ? x : widened(x);
    xmin_ = valueOf(shown.lower, logX());
    xmax_ = valueOf(shown.upper, logX());
  }
  if (!fixedYAxisRange_) {
    const Range shown = widened(y);
    ymin_ = valueOf(shown.lower, logY());
    ymax_ = valueOf(shown.upper, logY());
  }
  announceLimits();
}

void PowerSpectraView::drawRect(const QRectF&) {
  computeRects();
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  drawPaper();
  computePlotLimits();
  if (!curves_ || curves_->empty()) return drawTitleTopCentered();
  drawCurves();
  if (showNoiseModels_) drawNoiseModels();
  drawAxes();
  if (showLegend_) drawLegend();
  drawTitleTopCentered();
}

QColor PowerSpectraView::colorOf(std::size_t curve) const {
  const QColor& own = (*curves_)[curve].color;
  return own.isValid() ? own : QColor(QRgb(categoryColor(curve)));
}

void PowerSpectraView::strokeCurve(const std::vector<float>& hz, const std::vector<float>& values,
                                   const QColor& color, double width) {
  const PlottedValues x(hz, logX());
  const PlottedValues y(values, logY());
  const Trace line = xyLine(x, y, iRect_, drawnLimits(limits(), logAxes_));
  if (!std::isfinite(line.xScale) || !std::isfinite(line.yScale)) return;
  Path path;
  path.setLineWidth(width);
  path.appendTrace(line);
  GraphicsContext& context = GraphicsContext::current();
  const SavedState unclipped(context);
  context.setColor(color);
  context.clipToRect(iRect_);
  context.strokePath(path);
}

PlotReadout PowerSpectraView::readout(QPointF point) const {
  PlotReadout readout;
  if (!curves_ || curves_->empty() || !isInFrame(point)) return readout;
  addAxisValue(readout, QLatin1String("x"), Qt::XAxis, point);
  addAxisValue(readout, QLatin1String("y"), Qt::YAxis, point);
  struct Found {
    const SpectrumCurve* curve;
    std::size_t index;
  };
  std::optional<Found> found;
  double reach = kPointReach;
  for (const SpectrumCurve& curve : *curves_) {
    const PlottedValues x(curve.hz, logX());
    const PlottedValues y(curve.values, logY());
    const Trace line = xyLine(x, y, iRect_, drawnLimits(limits(), logAxes_));
    const auto index = nearestPoint(line, point, reach);
    if (!index) continue;
    found = {&curve, *index};
    reach = std::hypot(line.xOf(line.time.values[*index]) - point.x(), line.yOf(line.samples[*index]) - point.y());
  }
  if (!found) return readout;
  readout.addText(QLatin1String("curve"), found->curve->name);
  readout.add(QLatin1String("frequency"), double(found->curve->hz[found->index]), QStringLiteral("Hz"));
  readout.add(QLatin1String("power"), double(found->curve->values[found->index]), NamedUnit(yLabelString_).unit);
  return readout;
}

void PowerSpectraView::drawCurves() {
  if (!curves_) return;
  for (std::size_t i = 0; i < curves_->size(); ++i)
    strokeCurve((*curves_)[i].hz, (*curves_)[i].values, colorOf(i), kCurveWidth);
}

void PowerSpectraView::drawNoiseModels() {
  for (const NoiseModel model : {NoiseModel::Low, NoiseModel::High}) {
    const NoiseModelCurve curve(model, xmin_, xmax_);
    strokeCurve(curve.hz, curve.decibels, colors::gray, kModelWidth);
  }
}

void PowerSpectraView::drawLegend() {
  struct Entry {
    QString text;
    QColor color;
    double width;
  };
  std::vector<Entry> entries;
  for (std::size_t i = 0; curves_ && curves_->size() > 1 && i < curves_->size(); ++i)
    entries.push_back({(*curves_)[i].name, colorOf(i), kCurveWidth});
  if (showNoiseModels_) entries.push_back({QStringLiteral("NLNM, NHNM"), colors::gray, kModelWidth});
  if (entries.empty()) return;

  const TextAttributes font = TextAttributes::helvetica(double(kLegendFontSize));
  const double line = font.lineHeight();
  const auto room = std::size_t(std::max(0.0, (iRect_.height() - 4 * kLegendGap) / line));
  if (room == 0) return;
  if (entries.size() > room) {
    const std::size_t hidden = entries.size() - room + 1;
    entries.resize(room - 1);
    entries.push_back({QStringLiteral("and %1 more").arg(hidden), QColor(), 0});
  }
  double widest = 0;
  for (const Entry& entry : entries)
    widest = std::max(widest, font.size(entry.text).width());
  const QSizeF size(widest + kSampleLength + 3 * kLegendGap, double(entries.size()) * line + 2 * kLegendGap);
  const QRectF box(iRect_.x() + iRect_.width() - kLegendGap - size.width(),
                   iRect_.y() + iRect_.height() - kLegendGap - size.height(), size.width(), size.height());
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::white);
  context.fillRect(box);
  context.setColor(colors::lightGray);
  context.strokeRect(box);
  double y = box.y() + box.height() - kLegendGap;
  for (const Entry& entry : entries) {
    y -= line;
    if (entry.color.isValid()) {
      Path sample;
      sample.setLineWidth(entry.width);
      sample.moveTo({box.x() + kLegendGap, y + line / 2});
      sample.lineTo({box.x() + kLegendGap + kSampleLength, y + line / 2});
      context.setColor(entry.color);
      context.strokePath(sample);
    }
    context.drawText(entry.text, {box.x() + 2 * kLegendGap + kSampleLength, y}, font);
  }
}

void PowerSpectraView::drawAxes() {
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::black);
  context.strokeRect(iRect_);
  beginAxes(iRect_);
  setLabelFontSize(kTitledAxesFontSize);
  addAxis(AxisSide::Bottom, QString(), xmin_, xmax_);
  addAxis(AxisSide::Left, QString(), ymin_, ymax_);
  strokeAxisPath();
  const QString frequency = xLabelString_.isEmpty() ? QStringLiteral("Frequency (Hz)") : xLabelString_;
  drawAxisTitles(*this, iRect_, frequency, yLabelString_);
}

} // namespace xov
