#include "XOV_Graphics/views/map/geoMapView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/views/map/MapColors.h"
#include "XOV_Graphics/views/map/MapLayout.h"
#include "XOV_Graphics/views/map/MapLegendLayout.h"
#include "XOV_Graphics/views/map/MapPoints.h"
#include "XOV_Graphics/views/map/MapProjection.h"

namespace xov {

namespace {

constexpr float kBoundaryAlpha = 0.5F;
constexpr double kMargin = 40;
constexpr double kHalfCircle = 180; // degrees
constexpr double kQuarterCircle = 90;
constexpr double kLegendGap = 8; // above the legend

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

void geoMapView::setPolygonSetColor(std::size_t set, const QColor& color) {
  if (set >= thePolygonSets_.size()) return;
  if (polygonSetColors_.size() <= set) polygonSetColors_.resize(set + 1);
  polygonSetColors_[set] = color;
}

QColor geoMapView::polygonSetColor(std::size_t set) const {
  return set < polygonSetColors_.size() ? polygonSetColors_[set] : QColor();
}

void geoMapView::setTheColors(std::shared_ptr<MapColorArray> colors) { theColors_ = orEmpty(std::move(colors)); }

void geoMapView::buildGrayScaleColorsNLevels(std::int32_t n) {
  setTheColors(std::make_shared<MapColorArray>(redToWhiteColors(n)));
}

void geoMapView::buildNoGreenColorTable() { setTheColors(std::make_shared<MapColorArray>(noGreenColors())); }

void geoMapView::buildSeisColorTable() { setTheColors(std::make_shared<MapColorArray>(seisColors())); }

void geoMapView::buildPolarColorTable() { setTheColors(std::make_shared<MapColorArray>(polarColors())); }

PlotReach geoMapView::reach() const {
  PlotReach reach = XOVImageView::reach();
  const PlotSpan x = reach.whole.x;
  const PlotSpan y = reach.whole.y;
  const PlotSpan globe{x.center() - kHalfCircle, x.center() + kHalfCircle};
  reach.setX(x, united(reach.farthestX, globe), false);
  reach.setY(y, united(reach.farthestY, {-kQuarterCircle, kQuarterCircle}), false);
  reach.together = true;
  return reach;
}

void geoMapView::computeRects() {
  const QRectF b = bounds();
  pRect_ = {kMargin, kMargin, b.width() - 2 * kMargin, b.height() - 2 * kMargin};
  iRect_ = pRect_;
  XOVImageView::computeRects();
  if (!legend_.empty()) {
    const double height = layoutLegend(b.x(), b.width()).height + kLegendGap;
    pRect_.adjust(0, height, 0, 0);
    iRect_.adjust(0, height, 0, 0);
  }
  const QRectF room = iRect_;
  iRect_ = mapRectangle(room, limits(), MapAlign(vAlignPlot_));
  if (showAxes_) leaveRoomForTickLabels(room);
}

void geoMapView::drawContents() {
  fillBounds();
  if (!hideImage_) drawImage();
  drawAxes();
  if (showPlates_) drawPolygons();
  drawPoints();
  drawVectors();
  drawMechanisms();
  drawLabels();
  drawScaleBar();
  drawLegend();
  drawColorBar();
  drawTitleTopCentered();
  if (_timeStamp()) drawTimeStamp();
}

ImageKind geoMapView::imageKind() const {
  if (showsBitmap() && gridColoring().meaning != CellMeaning::Elevation) return ImageKind::Cells;
  return placesCellsExactly() ? ImageKind::ExactPicture : ImageKind::Picture;
}

void geoMapView::drawPolygons() {
  if (thePolygonSets_.empty()) return;
  const MapProjection projection(iRect_, limits());
  GraphicsContext& context = GraphicsContext::current();
  const SavedState saved(context);
  context.clipToRect(iRect_);
  for (std::size_t set = 0; set < thePolygonSets_.size(); ++set) {
    context.setColor(plateBoundaryColor_);
    context.setColor(polygonSetColor(set));
    for (const std::shared_ptr<XOVPolygon>& polygon : *thePolygonSets_[set]) {
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
