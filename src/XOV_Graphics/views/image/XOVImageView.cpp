#include "XOV_Graphics/views/image/XOVImageView.h"

#include "XOV_Graphics/base/LargePages.h"
#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/image/ColorBar.h"
#include "XOV_Graphics/views/image/GridGeometry.h"
#include "XOV_Graphics/views/image/ImagePlacement.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace xov {

namespace {

constexpr double kPlotMargin = 20;
constexpr double kFrameLeft = 64;
constexpr double kFrameBottom = 50;
constexpr double kFrameNarrower = 56; // than the plotting rectangle
constexpr double kFrameLower = 40;

constexpr double kFrameLineWidth = 2;
constexpr double kTickLabelSize = 18;
constexpr double kXLabelDrop = 24;
constexpr float kYLabelLeft = 36;

constexpr double kLeaderInset = 1;
constexpr double kPeakRadius = 4.5;

constexpr int kColorBarLevels = 256;

} // namespace

XOVImageView::XOVImageView(const QRectF& frame, QWidget* parent) : XOVView(frame, parent) {
  setXLimitsMinMax(0, 360);
  setYLimitsMinMax(-90, 90);
  qCInfo(log, "In initWithFrame");
  QAction* item = contextualMenu()->addAction(QStringLiteral("Save to XYZ"));
  setMenuKey(item, Qt::CTRL | Qt::SHIFT | Qt::Key_X);
  connect(item, &QAction::triggered, this, [this, item] { saveXYZ(item); });
}

XOVImageView::~XOVImageView() = default;

void XOVImageView::setupImageDataNROWSNCOLS(const GridFloats& floats, std::int32_t rows, std::int32_t cols) {
  setImageFloats(floats);
  nr_ = rows;
  nc_ = cols;
  xminImage_ = xmin_;
  yminImage_ = ymin_;
  xmaxImage_ = xmax_;
  ymaxImage_ = ymax_;
  dxImage_ = (xmax_ - xmin_) / float(nc_);
  dyImage_ = (ymax_ - ymin_) / float(nr_);
  computeMinMax();
  computeScaleFactor();
  setupNSImage();
  setNeedsDisplay(true);
}

void XOVImageView::setImageNRowsNCols(std::int32_t, std::int32_t) {}

std::span<const float> XOVImageView::heldCells() const {
  return imageFloats_ ? GridValues::held(*imageFloats_, nr_, nc_).values : std::span<const float>();
}

void XOVImageView::computeMinMax() {
  if (const auto range = gridRange(heldCells())) {
    minValue_ = range->lowest;
    maxValue_ = range->highest;
  }
}

void XOVImageView::computeScaleFactor() {
  scaleFactor_ = maxValue_;
  if (minValue_ < 0 && maxValue_ > 0) {
    if (-minValue_ > maxValue_) {
      maxValue_ = -minValue_;
    } else {
      minValue_ = -maxValue_;
    }
    scaleFactor_ = 2 * maxValue_;
  }
  if (scaleFactor_ == 0) scaleFactor_ = 1;
}

void XOVImageView::setMinMax(float min, float max) {
  minValue_ = min;
  maxValue_ = max;
  computeScaleFactor();
}

GridColoring XOVImageView::gridColoring() const {
  GridColoring coloring;
  coloring.meaning = useTopoValues_ ? CellMeaning::Elevation : CellMeaning::Value;
  coloring.nShades = nShades_;
  coloring.palette = palette_;
  coloring.minValue = minValue_;
  coloring.scaleFactor = scaleFactor_;
  coloring.inverted = inverted_;
  return coloring;
}

void XOVImageView::setupNSImage() {
  if (nr_ <= 0 || nc_ <= 0) return;
  iSize_ = QSizeF(nc_, nr_);
  const auto bitmap = makeBitmap();
  installBitmap(bitmap, bitmap ? colorBitmap(*bitmap) : QImage());
  qCInfo(log, "setupNSImage Retain Counts: iRep:%u imageFloats:%u", unsigned(iRep_.use_count() - (bitmap ? 1 : 0)),
         unsigned(imageFloats_.use_count()));
}

void XOVImageView::updateImagePlanes() {
  if (nr_ <= 0 || nc_ <= 0) return;
  if (iRep_) {
    const bool shows = showsBitmap();
    const QImage picture = colorBitmap(*iRep_);
    if (shows) installBitmap(iRep_, picture);
  }
  setNeedsDisplay(true);
}

std::shared_ptr<PlanarBitmap> XOVImageView::makeBitmap() {
  if (!imageFloats_) return nullptr;
  const GridValues grid = GridValues::held(*imageFloats_, nr_, nc_);
  const bool isOurs = iRep_.use_count() == 1;
  if (isOurs && iRep_->width() == grid.columns && iRep_->height() == grid.rows) return std::exchange(iRep_, nullptr);
  try {
    auto bitmap = std::make_shared<PlanarBitmap>(grid.columns, grid.rows);
    if (!bitmap->isNull()) return bitmap;
  } catch (const std::bad_alloc&) {
    qCWarning(log, "no memory for a picture of %d rows and %d columns", nr_, nc_);
  }
  return nullptr;
}

// Large memory that comes from the system anew takes longer than to colour a grid, so that the view's own serves
// again.
QImage XOVImageView::ownPicture(const QSize& size) {
  const bool isOurs = anImage_.cacheKey() == bitmapPicture_;
  QImage picture = isOurs ? std::exchange(anImage_, QImage()) : QImage();
  const bool serves = picture.isDetached() && picture.size() == size && picture.format() == QImage::Format_RGB32;
  if (serves) return picture;
  picture = QImage(size, QImage::Format_RGB32);
  if (!picture.isNull()) askForLargePages(picture.bits(), std::size_t(picture.sizeInBytes()));
  return picture;
}

QImage XOVImageView::colorBitmap(PlanarBitmap& bitmap) {
  const std::span<const float> cells = heldCells();
  const ColorPlanes planes{bitmap.plane(0), bitmap.plane(1), bitmap.plane(2), bitmap.plane(3)};
  QImage picture = ownPicture({bitmap.width(), bitmap.height()});
  const std::size_t pixels = std::size_t(picture.width()) * std::size_t(picture.height());
  if (picture.isNull() || pixels != cells.size()) {
    colorGridPlanes(cells, gridColoring(), planes);
    picture = bitmap.toOpaqueImage();
  } else {
    colorGrid(cells, gridColoring(), planes, {reinterpret_cast<QRgb*>(picture.bits()), pixels});
  }
  const auto isMissing = [](float value) { return std::isnan(value); };
  if (!missingCellsTransparent_ || std::ranges::none_of(cells, isMissing)) return picture;
  picture.convertTo(QImage::Format_ARGB32_Premultiplied);
  if (picture.isNull()) return picture;
  const std::size_t held = std::min(cells.size(), pixels);
  for (std::size_t i = 0; i < held; ++i) {
    if (isMissing(cells[i])) picture.setPixel(int(i) % picture.width(), int(i) / picture.width(), 0);
  }
  return picture;
}

void XOVImageView::installBitmap(const std::shared_ptr<PlanarBitmap>& bitmap, const QImage& picture) {
  iRep_ = bitmap;
  iPlanes_ = {};
  for (int plane = 0; bitmap && plane < PlanarBitmap::kPlanes; ++plane)
    iPlanes_[std::size_t(plane)] = bitmap->plane(plane).data();
  anImage_ = picture;
  bitmapPicture_ = anImage_.cacheKey();
  lacksPicture_ = picture.isNull() && !heldCells().empty();
}

PlotLimits XOVImageView::limitsOfGrid() const { return wholeLimits().limits; }

PlotReach XOVImageView::reach() const {
  const PlotLimits whole = wholeLimits().limits;
  const PlotSpan x{double(whole.xmin), double(whole.xmax)};
  const PlotSpan y{double(whole.ymin), double(whole.ymax)};
  const bool hasPicture = nr_ > 0 && nc_ > 0;
  PlotReach reach;
  reach.setX(x, hasPicture ? PlotSpan{double(xminImage_), double(xmaxImage_)} : x, logAxes().x);
  reach.setY(y, hasPicture ? PlotSpan{double(yminImage_), double(ymaxImage_)} : y, logAxes().y);
  reach.wheelZoomsY = true;
  return reach;
}

void XOVImageView::computeImagePeakLocation() {
  if (!imageFloats_) return;
  const GridValues grid = GridValues::held(*imageFloats_, nr_, nc_);
  if (const auto peak = findPeak(GridNodes(limitsOfGrid(), nr_, nc_), grid)) setMaxPointXY(peak->x, peak->y);
}

bool XOVImageView::isPeakOnGridEdge() const {
  if (!imageFloats_) return false;
  const GridValues grid = GridValues::held(*imageFloats_, nr_, nc_);
  const auto peak = findPeak(GridNodes(limitsOfGrid(), nr_, nc_), grid);
  return peak && peak->cell.isOnEdge(nr_, nc_);
}

void XOVImageView::setMaxPointXY(float x, float y) {
  xZmax_ = x;
  yZmax_ = y;
}

void XOVImageView::setMinPointXY(float x, float y) {
  xZmin_ = x;
  yZmin_ = y;
}

void XOVImageView::computeRects() {
  const QRectF b = bounds();
  pRect_ = {kPlotMargin, kPlotMargin, b.width() - 2 * kPlotMargin, b.height() - 2 * kPlotMargin};
  iRect_ = {kFrameLeft, kFrameBottom, pRect_.width() - kFrameNarrower, pRect_.height() - kFrameLower};
  if (!showAxes_) iRect_ = pRect_;
  leaveRoomForColorBar();
}

void XOVImageView::leaveRoomForColorBar() {
  if (hasColorBar()) iRect_.setWidth(iRect_.width() - kColorBarRoom);
}

void XOVImageView::drawRect(const QRectF&) {
  computeRects();
  if (inLiveResize()) {
    drawViewSize();
    return;
  }
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::white);
  drawContents();
  // A window shows the rest; no file is to be taken for the whole.
  if (lacksPicture_ && anImage_.isNull()) throw std::bad_alloc();
}

void XOVImageView::drawContents() {
  drawImage();
  drawAxes();
  drawColorBar();
}

void XOVImageView::drawImage() {
  if (nr_ <= 0 || nc_ <= 0) return;
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::white);
  context.fillRect(iRect_);
  const auto [cells, held] = shownCells();
  if (const auto place = placeImage(cells, held, anImage_.size(), iRect_))
    context.drawImage(anImage_, place->target, place->source, 1, imageKind());
}

XOVImageView::ShownCells XOVImageView::shownCells() const {
  const PlotLimits whole = drawnLimits({xminImage_, xmaxImage_, yminImage_, ymaxImage_}, logAxes());
  const ImageExtent extent{whole.xmin, whole.xmax, whole.ymin, whole.ymax, dxImage_, dyImage_};
  // A picture of a grid that is not all there lacks the lower rows, or the end of its only row.
  const QSize size = showsBitmap() ? anImage_.size() : QSize(nc_, nr_);
  const QRectF held(0, nr_ - size.height(), size.width(), size.height());
  const PlotLimits shown = drawnLimits(limits(), logAxes());
  const bool exactly = placesCellsExactly_ || logAxes() != LogAxes() || shownPart();
  return {exactly ? exactCells(shown, extent, nr_, nc_) : selectedCells(shown, extent, nr_, nc_), held};
}

std::optional<float> XOVImageView::cellValueAt(QPointF point) const {
  if (!imageFloats_ || !showsBitmap() || nr_ <= 0 || nc_ <= 0) return {};
  const auto [cells, held] = shownCells();
  const auto cell = cellAt(point, cells, held, nr_, iRect_);
  const GridValues grid = GridValues::held(*imageFloats_, nr_, nc_);
  if (!cell || cell->row < 0 || cell->row >= grid.rows || cell->column < 0 || cell->column >= grid.columns) return {};
  const float value = grid.values[std::size_t(cell->row) * std::size_t(grid.columns) + std::size_t(cell->column)];
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

void XOVImageView::addCellValue(PlotReadout& readout, QPointF point) const {
  const auto value = cellValueAt(point);
  if (!value) return;
  const bool isHeight = gridColoring().meaning == CellMeaning::Elevation;
  const NamedUnit named(colorBarTitle_);
  if (isHeight)
    readout.add(QLatin1String("height"), double(*value), QStringLiteral("m"));
  else
    readout.add(QLatin1String("value"), double(*value), named.unit, 0, named.name);
}

PlotReadout XOVImageView::readout(QPointF point) const {
  PlotReadout readout;
  if (nr_ <= 0 || nc_ <= 0 || anImage_.isNull() || !isInFrame(point)) return readout;
  addAxisValue(readout, QLatin1String("x"), Qt::XAxis, point);
  addAxisValue(readout, QLatin1String("y"), Qt::YAxis, point);
  addCellValue(readout, point);
  return readout;
}

void XOVImageView::beginFramedAxes(const std::shared_ptr<const TextAttributes>& tickLabels) {
  GraphicsContext& context = GraphicsContext::current();
  context.setColor(colors::black);
  Path frame = Path::rect(iRect_);
  frame.setLineWidth(kFrameLineWidth);
  context.strokePath(frame);
  beginAxes(iRect_);
  ASetTickLabelAttributes(tickLabels);
}

void XOVImageView::addAxes(const QString& label, float xInterval, float yInterval) {
  addAxis(AxisSide::Bottom, label, xmin_, xmax_, xInterval);
  // A buffer of its own: xLabel() keeps the label of the X axis.
  std::array<char, kLabelBufferSize> yLabel{};
  ADrawAxis(yLabel, AxisSide::Left, AxisDetail::Labels, ymin_, ymax_, yInterval);
}

void XOVImageView::drawAxes() {
  if (!showAxes_) return;
  const auto tickLabels = std::make_shared<TextAttributes>(TextAttributes::helvetica(kTickLabelSize));
  beginFramedAxes(tickLabels);
  addAxes(QStringLiteral(" "), kAutomaticInterval, kAutomaticInterval);
  drawStringXYHJustVJust(xLabelString_, float(iRect_.x() + 0.5 * iRect_.width()), float(iRect_.y() - kXLabelDrop), 2,
                         3);
  drawRotatedStringXYHJustVJustAngle(yLabelString_, kYLabelLeft, float(iRect_.y() + 0.5 * iRect_.height()), 2, 2, 90);
  strokeAxisPath();
}

void XOVImageView::drawColorBar() {
  if (!hasColorBar() || !(iRect_.width() > 0) || !(iRect_.height() > 0)) return;
  const auto [lowest, highest, fontSize, mayScaleLabels] = colorBarScale();
  const ColorBar bar = layoutColorBar({.picture = iRect_,
                                       .lowest = lowest,
                                       .highest = highest,
                                       .fontSize = fontSize,
                                       .mayScaleLabels = mayScaleLabels});
  std::array<float, kColorBarLevels> values{};
  for (int row = 0; row < kColorBarLevels; ++row) { // from the top
    const float share = (float(kColorBarLevels - row) - 0.5F) / float(kColorBarLevels);
    values[std::size_t(row)] = lowest + share * (highest - lowest);
  }
  QImage levels(1, kColorBarLevels, QImage::Format_RGB32);
  colorGridPixels(values, gridColoring(), {reinterpret_cast<QRgb*>(levels.bits()), values.size()});

  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.drawImage(levels, bar.bar, QRectF(0, 0, 1, kColorBarLevels));
  context.setColor(colors::black);
  context.strokeRect(bar.bar);
  Path ticks;
  for (const AxisSegment& tick : bar.ticks) {
    ticks.moveTo({double(tick.x1), double(tick.y1)});
    ticks.lineTo({double(tick.x2), double(tick.y2)});
  }
  context.strokePath(ticks);
  const TextAttributes attributes = *labelAttributes_;
  setLabelFontSize(float(fontSize));
  for (const AxisLabel& label : bar.labels)
    drawStringXYHJustVJust(QString::fromStdString(label.text), float(label.x), float(label.y), 1, 4);
  // Text that is centred and then turned upright lies a line's height to the left.
  const double titleX = bar.title.x() + labelAttributes_->lineHeight();
  drawRotatedStringXYHJustVJustAngle(colorBarTitle_ + QString::fromStdString(bar.suffix), float(titleX),
                                     float(bar.title.y()), 2, 2, 90);
  *labelAttributes_ = attributes;
}

void XOVImageView::drawMaxLocation() {
  if (!(xmin_ <= xZmax_ && xZmax_ <= xmax_ && ymin_ <= yZmax_ && yZmax_ <= ymax_)) return;
  const QPointF peak = dataToView({xZmax_, yZmax_}, iRect_, limits());
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.setColor(colors::red);
  Path leaders;
  leaders.moveTo({iRect_.x() + kLeaderInset, peak.y()});
  leaders.lineTo(peak);
  leaders.lineTo({peak.x(), iRect_.y() + kLeaderInset});
  context.strokePath(leaders);
  Path circle;
  circle.appendOval({peak.x() - kPeakRadius, peak.y() - kPeakRadius, 2 * kPeakRadius, 2 * kPeakRadius});
  context.strokePath(circle);
}

} // namespace xov
