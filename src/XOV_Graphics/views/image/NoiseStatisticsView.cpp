#include "XOV_Graphics/views/image/NoiseStatisticsView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/seismic/signal/NoiseModelCurve.h"
#include "XOV_Graphics/views/base/TitledAxes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kLeft = 76; // of the picture, in points

constexpr double kStepDb = 1;
constexpr double kRoundDb = 10;
constexpr double kWidestDb = 1000;     // of the picture
constexpr double kHalfStep = 1.0 / 16; // of an octave: periods are eighths apart
constexpr float kPercent = 100;
constexpr float kRoundPercent = 5;
constexpr int kShades = 256;

constexpr double kModelWidth = 1.5;
constexpr double kMedianWidth = 1.25;
constexpr double kPercentileWidth = 0.75;

} // namespace

NoiseStatisticsView::NoiseStatisticsView(const QRectF& frame, QWidget* parent) : XOVImageView(frame, parent) {
  useTopoValues_ = false;
  missingCellsTransparent_ = true;
  showColorBar_ = true;
  colorBarTitle_ = QStringLiteral("Share of segments (%)");
  palette_ = Viridis;
  nShades_ = kShades;
  setPlacesCellsExactly(true);
}

NoiseStatisticsView::~NoiseStatisticsView() = default;

QString NoiseStatisticsView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("period (s)") : QStringLiteral("power (dB)");
}

void NoiseStatisticsView::setStatistics(const std::shared_ptr<const NoiseStatistics>& statistics) {
  statistics_ = statistics;
  makePicture();
}

// Cells from the lowest to the highest power of all; the periods are the middles of columns.
void NoiseStatisticsView::makePicture() {
  imageFloats_ = nullptr;
  nr_ = nc_ = 0;
  if (!statistics_ || statistics_->segments == 0 || statistics_->periods.empty()) return;
  float lowest = std::numeric_limits<float>::infinity();
  float highest = -lowest;
  for (const float value : statistics_->decibels) {
    if (!std::isfinite(value) || !(value > kNoPowerDb)) continue;
    lowest = std::min(lowest, value);
    highest = std::max(highest, value);
  }
  if (!(lowest <= highest)) return;
  const double top = (std::floor(double(highest) / kRoundDb) + 1) * kRoundDb;
  const double bottom = std::max(std::floor(double(lowest) / kRoundDb) * kRoundDb, top - kWidestDb);
  nr_ = int(std::lround((top - bottom) / kStepDb));
  nc_ = int(statistics_->periods.size());
  std::vector<float> shares = statistics_->shares(bottom, kStepDb, nr_);
  for (float& share : shares)
    share = share > 0 ? kPercent * share : std::numeric_limits<float>::quiet_NaN();
  imageFloats_ = std::make_shared<const std::vector<float>>(std::move(shares));
  xminImage_ = float(statistics_->periods.front() * std::exp2(-kHalfStep));
  xmaxImage_ = float(statistics_->periods.back() * std::exp2(kHalfStep));
  yminImage_ = float(bottom);
  ymaxImage_ = float(top);
  takeLimits();
  computeMinMax();
  computeScaleFactor();
  setupNSImage();
}

void NoiseStatisticsView::takeLimits() {
  if (!imageFloats_) return;
  if (!fixedXAxisRange_) {
    xmin_ = xminImage_;
    xmax_ = xmaxImage_;
  }
  if (!fixedYAxisRange_) {
    ymin_ = yminImage_;
    ymax_ = ymaxImage_;
    for (const NoiseModel model : {NoiseModel::Low, NoiseModel::High}) {
      if (!showNoiseModels_) break;
      for (const float value : NoiseModelCurve(model, 1 / double(xmin_), 1 / double(xmax_)).decibels) {
        ymin_ = std::min(ymin_, float(std::floor(double(value) / kRoundDb) * kRoundDb));
        ymax_ = std::max(ymax_, float(std::ceil(double(value) / kRoundDb) * kRoundDb));
      }
    }
  }
  announceLimits();
}

void NoiseStatisticsView::computeRects() {
  pRect_ = bounds();
  iRect_ = titledFrame(bounds(), kLeft);
  leaveRoomForColorBar();
}

void NoiseStatisticsView::computeScaleFactor() {
  minValue_ = 0;
  maxValue_ = std::max(kRoundPercent, std::ceil(maxValue_ / kRoundPercent) * kRoundPercent);
  scaleFactor_ = maxValue_;
}

void NoiseStatisticsView::drawContents() {
  drawPaper();
  takeLimits();
  if (imageFloats_) {
    drawImage();
    if (showPercentiles_) drawPercentiles();
    if (showNoiseModels_) drawNoiseModels();
    drawAxes();
    drawColorBar();
  }
  drawTitleTopCentered();
}

void NoiseStatisticsView::strokeLine(const std::vector<QPointF>& points, const QColor& color, double width) {
  Path line;
  line.setLineWidth(width);
  bool isDown = false;
  for (const QPointF& point : points) {
    const QPointF at = dataToView(point, iRect_, limits(), logAxes());
    const bool isDrawable = std::isfinite(at.x()) && std::isfinite(at.y());
    if (isDrawable) isDown ? line.lineTo(at) : line.moveTo(at);
    isDown = isDrawable;
  }
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(color);
  context.clipToRect(iRect_);
  context.strokePath(line);
}

void NoiseStatisticsView::drawPercentiles() {
  if (!statistics_) return;
  for (const double share : {0.1, 0.5, 0.9}) {
    const std::vector<double> values = statistics_->percentile(share);
    std::vector<QPointF> points;
    for (std::size_t i = 0; i < values.size(); ++i)
      points.emplace_back(statistics_->periods[i], values[i]);
    strokeLine(points, colors::black, share == 0.5 ? kMedianWidth : kPercentileWidth);
  }
}

void NoiseStatisticsView::drawNoiseModels() {
  for (const NoiseModel model : {NoiseModel::Low, NoiseModel::High}) {
    const NoiseModelCurve curve(model, 1 / double(xmin_), 1 / double(xmax_));
    std::vector<QPointF> points;
    for (std::size_t i = 0; i < curve.hz.size(); ++i)
      points.emplace_back(1 / double(curve.hz[i]), double(curve.decibels[i]));
    strokeLine(points, colors::gray, kModelWidth);
  }
}

void NoiseStatisticsView::drawAxes() {
  if (!showAxes_) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::black);
  beginAxes(iRect_);
  setLabelFontSize(kTitledAxesFontSize);
  addAxis(AxisSide::Bottom, QString(), xmin_, xmax_);
  addAxis(AxisSide::Left, QString(), ymin_, ymax_);
  strokeAxisPath();
  const QString period = xLabelString_.isEmpty() ? QStringLiteral("Period (s)") : xLabelString_;
  drawAxisTitles(*this, iRect_, period, yLabelString_);
}

} // namespace xov
