#include "XOV_Graphics/views/map/geoMapView.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/map/MapColors.h"
#include "XOV_Graphics/views/map/MapLayout.h"
#include "XOV_Graphics/views/map/MapPoints.h"
#include "XOV_Graphics/views/map/MapProjection.h"

namespace xov {

namespace {

constexpr float kBoundaryAlpha = 0.5F;
constexpr int kTickLabelSize = 18;
constexpr double kMargin = 40;

template <typename T>
std::shared_ptr<T> orEmpty(std::shared_ptr<T> array) {
  return array ? std::move(array) : std::make_shared<T>();
}

} // namespace

geoMapView::geoMapView(const QRectF& frame, QWidget* parent)
    : XOVImageView(frame, parent),
      thePoints_(std::make_shared<GeoMapPointArray>()),
      theColors_(std::make_shared<MapColorArray>()),
      theVectors_(std::make_shared<GeoMapVectorArray>()),
      plateBoundaryColor_(QColor::fromRgbF(0, 0, 0, kBoundaryAlpha)) {}

geoMapView::~geoMapView() = default;

QString geoMapView::usualAxisName(Qt::Axis axis) const {
  return axis == Qt::XAxis ? QStringLiteral("longitude (degrees)") : QStringLiteral("latitude (degrees)");
}

void geoMapView::setThePoints(std::shared_ptr<GeoMapPointArray> points) { thePoints_ = orEmpty(std::move(points)); }

void geoMapView::setTheVectors(std::shared_ptr<GeoMapVectorArray> vectors) {
  theVectors_ = orEmpty(std::move(vectors));
}

void geoMapView::addTheVector(const std::shared_ptr<geoMapVector>& vector) {
  if (vector) theVectors_->push_back(vector);
}

void geoMapView::removeTheVector(const std::shared_ptr<geoMapVector>& vector) { std::erase(*theVectors_, vector); }

void geoMapView::addAPolygonSet(std::shared_ptr<XOVPolygonArray> polygons) {
  if (polygons) thePolygonSets_.push_back(std::move(polygons));
}

void geoMapView::setTheColors(std::shared_ptr<MapColorArray> colors) { theColors_ = orEmpty(std::move(colors)); }

void geoMapView::buildGrayScaleColorsNLevels(std::int32_t n) {
  setTheColors(std::make_shared<MapColorArray>(redToWhiteColors(n)));
}

void geoMapView::buildNoGreenColorTable() { setTheColors(std::make_shared<MapColorArray>(noGreenColors())); }

void geoMapView::buildSeisColorTable() { setTheColors(std::make_shared<MapColorArray>(seisColors())); }

void geoMapView::buildPolarColorTable() { setTheColors(std::make_shared<MapColorArray>(polarColors())); }

void geoMapView::computeRects() {
  const QRectF b = bounds();
  pRect_ = {kMargin, kMargin, b.width() - 2 * kMargin, b.height() - 2 * kMargin};
  iRect_ = pRect_;
  XOVImageView::computeRects();
  iRect_ = mapRectangle(iRect_, limits(), MapAlign(vAlignPlot_));
}

void geoMapView::drawContents() {
  fillBounds();
  if (!hideImage_) drawImage();
  drawAxes();
  if (showPlates_) drawPolygons();
  drawPoints();
  drawVectors();
  drawTitleTopCentered();
  if (_timeStamp()) drawTimeStamp();
}

ImageKind geoMapView::imageKind() const {
  if (showsBitmap() && gridColoring().meaning != CellMeaning::Elevation) return ImageKind::Cells;
  return placesCellsExactly() ? ImageKind::ExactPicture : ImageKind::Picture;
}

void geoMapView::drawAxes() {
  if (!showAxes_) return;
  const auto tickLabels = std::make_shared<TextAttributes>(TextAttributes::helvetica(kTickLabelSize));
  tickLabels->setColor(colors::darkGray);
  beginFramedAxes(tickLabels);
  ASetFontSize(kTickLabelSize);
  const float interval = mapTickInterval(xmax_ - xmin_);
  addAxes(QStringLiteral(" "), interval, interval);
  strokeAxisPath();
}

void geoMapView::drawPolygons() {
  if (thePolygonSets_.empty()) return;
  const MapProjection projection(iRect_, limits());
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(iRect_);
  context.setColor(plateBoundaryColor_);
  for (const std::shared_ptr<XOVPolygonArray>& set : thePolygonSets_) {
    for (const std::shared_ptr<XOVPolygon>& polygon : *set) {
      if (polygon) context.strokePath(projection.line(*polygon));
    }
  }
}

void geoMapView::drawPoints() {
  if (thePoints_->empty()) return;
  const MapProjection projection(iRect_, limits());
  const MapPoints points(*thePoints_, *theColors_, outlinePointsWithNoData_, projection);
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(iRect_);
  context.drawSymbols(points.symbols(projection));
}

void geoMapView::drawVectors() {
  if (theVectors_->empty()) return;
  const MapProjection projection(iRect_, limits());
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(iRect_);
  context.setColor(colors::black);
  for (const std::shared_ptr<geoMapVector>& vector : *theVectors_) {
    if (!vector) continue;
    const QPointF foot = projection.place(projection.symbolLongitude(vector->lon()), vector->lat());
    Path path;
    path.moveTo(foot);
    path.lineTo(foot + QPointF(vector->eastValue(), vector->northValue()) * double(vector->scaleFactor()));
    context.strokePath(path);
  }
}

QImage geoMapView::getImageOfView() { return snapshot(); }

} // namespace xov
