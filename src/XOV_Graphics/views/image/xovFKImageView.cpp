#include "XOV_Graphics/views/image/xovFKImageView.h"

#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/colour/ColorValues.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/image/SlownessCircles.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kMarginSide = 24;
constexpr double kMarginBottom = 60;
constexpr double kNarrower = 48;
constexpr double kLower = 80;
constexpr double kYAxisRoom = 40;

constexpr double kTickLabelSize = 18;
constexpr float kYLabelLeft = 36;

constexpr double kLabelSize = 10; // of circles and peak
constexpr double kBesidePeak = 10;
constexpr int kPeakDigits = 3;
const QColor kPaleWhite = QColor::fromRgbF(1, 1, 1, 0.75F);

constexpr double kCircleVelocities[] = {32, 16, 8, 6, 4, 3, 2}; // km/s

// A tenth is too fine for more than the slownesses of body waves: labels of surface waves, and of limits that were
// never set, would run into each other. Beyond this range there are at most so many intervals, of 1, 2 or 5 times a
// power of ten.
constexpr float kWidestFineRange = 1;
constexpr double kMostIntervals = 10;

float wideInterval(float range) {
  const double fewest = double(range) / kMostIntervals;
  const double unit = std::pow(10, std::floor(std::log10(fewest)));
  for (const double step : {1.0, 2.0, 5.0}) {
    if (step * unit >= fewest) return float(step * unit);
  }
  return float(10 * unit);
}

float tickInterval(float range) {
  if (range > kWidestFineRange && std::isfinite(range)) return wideInterval(range);
  if (range > 0.4F) return 0.1F;
  return range > 0.2F ? 0.05F : 0.025F;
}

} // namespace

xovFKImageView::xovFKImageView(const QRectF& frame, QWidget* parent) : XOVImageView(frame, parent) {}

xovFKImageView::~xovFKImageView() = default;

QString xovFKImageView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("east slowness (s/km)") : QStringLiteral("north slowness (s/km)");
}

PlotReach xovFKImageView::reach() const {
  PlotReach reach = XOVImageView::reach();
  reach.together = true;
  return reach;
}

void xovFKImageView::computeScaleFactor() {
  scaleFactor_ = maxValue_ - minValue_;
  if (scaleFactor_ == 0) scaleFactor_ = 1;
}

// A power is shown by its share of the range, from zero on: the lowest power is not subtracted unless the host wants
// it.
GridColoring xovFKImageView::gridColoring() const {
  GridColoring coloring = XOVImageView::gridColoring();
  coloring.meaning = CellMeaning::Value;
  coloring.minValue = colorsFromMinimum_ ? minValue_ : 0;
  return coloring;
}

void xovFKImageView::setupNSImage() {
  if (nr_ <= 0 || nc_ <= 0) return;
  iSize_ = QSizeF(nc_, nr_);
  const auto bitmap = makeBitmap();
  const QImage image = bitmap ? colorBitmap(*bitmap) : QImage();
  logCells();
  const auto logHolds = [&] {
    const bool installed = !image.isNull() && anImage_.cacheKey() == image.cacheKey();
    qCInfo(log, "setupNSImage Retain Counts: iRep:%d image:%d", int(bitmap.use_count()), installed ? 2 : 1);
  };
  logHolds();
  installBitmap(bitmap, image);
  logHolds();
}

void xovFKImageView::logCells() const {
  if (!cellLog().isDebugEnabled()) return;
  const float first = gridColoring().minValue;
  for (const float power : heldCells()) {
    const float share = (power - first) / scaleFactor_;
    std::uint32_t red = 0;
    std::uint32_t green = 0;
    std::uint32_t blue = 0;
    getColorValues(nShades_, palette_, &red, &green, &blue, nullptr, share);
    qCDebug(cellLog, "%f %d %d %d", double(share), int(red), int(green), int(blue));
  }
}

void xovFKImageView::computeRects() {
  const QRectF b = bounds();
  pRect_ = {kMarginSide, kMarginBottom, b.width() - kNarrower, b.height() - kLower};
  iRect_ = {pRect_.x() + kYAxisRoom, pRect_.y(), pRect_.width() - kYAxisRoom, pRect_.height()};
  if (!showAxes_) iRect_ = pRect_;
  leaveRoomForColorBar();
}

void xovFKImageView::drawContents() {
  fillBounds();
  drawImage();
  drawAxes();
  drawPhaseVelocityCircles();
  drawZeroGrid();
  computeImagePeakLocation();
  drawMaxLocation();
  drawCircleLabels();
  drawPeakValue();
  drawColorBar();
}

void xovFKImageView::drawAxes() {
  if (!showAxes_) return;
  const auto tickLabels = std::make_shared<TextAttributes>(TextAttributes::helvetica(kTickLabelSize));
  beginFramedAxes(tickLabels);
  const float interval = tickInterval(xmax_ - xmin_);
  const float northRange = ymax_ - ymin_;
  addAxes(QStringLiteral("East Slowness (s/km)"), interval,
          northRange > kWidestFineRange ? std::max(interval, tickInterval(northRange)) : interval);
  drawRotatedStringXYHJustVJustAngle(QStringLiteral("North Slowness (s/km)"), kYLabelLeft,
                                     float(pRect_.y() + 0.5 * pRect_.height()), 2, 2, 90);
  strokeAxisPath();
}

void xovFKImageView::drawZeroGrid() {
  const QPointF zero = dataToView({0, 0}, iRect_, limits());
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::black);
  Path lines;
  lines.moveTo({iRect_.x(), zero.y()});
  lines.lineTo({iRect_.x() + iRect_.width(), zero.y()});
  lines.moveTo({zero.x(), iRect_.y()});
  lines.lineTo({zero.x(), iRect_.y() + iRect_.height()});
  context.strokePath(lines);
}

// One path. Each circle begins anew: lines from one to the next would lie on that of zero north slowness and make it
// look thicker than the other.
void xovFKImageView::drawPhaseVelocityCircles() {
  const QPointF zero = dataToView({0, 0}, iRect_, limits());
  const double pointsPerSlowness = iRect_.width() / double(xmax_ - xmin_);
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::black);
  Path circles;
  for (const double velocity : kCircleVelocities) {
    const double radius = pointsPerSlowness / velocity;
    circles.appendOval({zero.x() - radius, zero.y() - radius, 2 * radius, 2 * radius});
  }
  context.clipToRect(iRect_);
  context.strokePath(circles);
}

void xovFKImageView::drawTextBox(const QString& text, const QRectF& box) const {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(kPaleWhite);
  context.fillRect(box);
  context.drawText(text, box.topLeft(), TextAttributes::helvetica(kLabelSize));
}

void xovFKImageView::drawCircleLabels() {
  if (circleLabels_ == NoLabels) return;
  const auto unit = circleLabels_ == SecondsPerKilometre ? CircleLabelUnit::SecondsPerKilometre
                    : circleLabels_ == SecondsPerDegree  ? CircleLabelUnit::SecondsPerDegree
                                                         : CircleLabelUnit::KilometresPerSecond;
  const double pointsPerSlowness = iRect_.width() / double(xmax_ - xmin_);
  const TextAttributes attributes = TextAttributes::helvetica(kLabelSize);
  std::vector<LabelledCircle> circles;
  for (const double velocity : kCircleVelocities)
    circles.push_back({pointsPerSlowness / velocity, attributes.size(circleText(velocity, unit))});
  const QPointF zero = dataToView({0, 0}, iRect_, limits());
  const QPointF peak = dataToView({xZmax_, yZmax_}, iRect_, limits());
  const SavedState saved(GraphicsContext::current());
  for (const PlacedCircleLabel& label : placeCircleLabels(circles, zero, peak, iRect_))
    drawTextBox(circleText(kCircleVelocities[label.circle], unit), label.box);
}

void xovFKImageView::drawPeakValue() {
  if (!showPeakValue_ || !(xmin_ <= xZmax_ && xZmax_ <= xmax_ && ymin_ <= yZmax_ && yZmax_ <= ymax_)) return;
  const QString number = QString::number(double(maxValue_), 'g', kPeakDigits);
  const QString text = peakUnit_.isEmpty() ? number : number + QLatin1Char(' ') + peakUnit_;
  const QSizeF size = TextAttributes::helvetica(kLabelSize).size(text);
  const QPointF peak = dataToView({xZmax_, yZmax_}, iRect_, limits());
  QRectF box(peak.x() + kBesidePeak, peak.y() + kBesidePeak, size.width(), size.height());
  if (box.right() > iRect_.right()) box.moveRight(peak.x() - kBesidePeak);
  if (box.bottom() > iRect_.bottom()) box.moveBottom(peak.y() - kBesidePeak);
  const SavedState saved(GraphicsContext::current());
  drawTextBox(text, box);
}

void xovFKImageView::mouseDown(const MouseEvent& event) {
  if (event.modifierFlags.testFlag(Qt::ShiftModifier)) dragOut();
}

QImage xovFKImageView::snapshotFromRect(const QRectF& rect) {
  return pictureOfRect(rect).convertToFormat(QImage::Format_RGB888);
}

} // namespace xov
