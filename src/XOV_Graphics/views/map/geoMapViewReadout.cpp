#include "XOV_Graphics/seismic/Geodesy.h"
#include "XOV_Graphics/seismic/arrivals/EarthModel.h"
#include "XOV_Graphics/views/map/DiscPlaces.h"
#include "XOV_Graphics/views/map/MapPoints.h"
#include "XOV_Graphics/views/map/MapProjection.h"
#include "XOV_Graphics/views/map/geoMapView.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kFullTurnDeg = 360;
constexpr double kHitReach = 4; // points
constexpr double kPoleDeg = 90;

// The part of a box that lies in the map; empty beside it.
QRectF boxOnMap(const QRectF& box, const QRectF& map) { return box.normalized().intersected(map.normalized()); }

} // namespace

bool MapBox::contains(const MapPlace& place) const {
  if (!(place.latitudeDeg >= southDeg && place.latitudeDeg <= northDeg) || !std::isfinite(place.longitudeDeg))
    return false;
  const double eastwards = std::fmod(place.longitudeDeg - westDeg, kFullTurnDeg);
  const double width = eastDeg - westDeg;
  return (eastwards < 0 ? eastwards + kFullTurnDeg : eastwards) <= width;
}

PlotReadout geoMapView::readout(QPointF point) const {
  PlotReadout readout;
  if (!isInFrame(point)) return readout;
  const QPointF at = viewToData(point, iRect_, limits());
  const QString degree = QStringLiteral("°");
  const double xStep = std::abs(double(xmax_ - xmin_)) / iRect_.width();
  const double yStep = std::abs(double(ymax_ - ymin_)) / iRect_.height();
  readout.add(QLatin1String("longitude"), at.x(), degree, xStep);
  readout.add(QLatin1String("latitude"), at.y(), degree, yStep);
  if (!hideImage_) addCellValue(readout, point);
  const bool isOnGlobe = std::abs(at.y()) <= kPoleDeg && std::isfinite(at.x());
  if (!referencePlace_ || !isOnGlobe ||
      !isGeographicPoint(referencePlace_->latitudeDeg, referencePlace_->longitudeDeg))
    return readout;
  const GreatCircle way = greatCircle(referencePlace_->latitudeDeg, referencePlace_->longitudeDeg, at.y(), at.x());
  readout.add(QLatin1String("distance"), way.distanceDeg, degree, yStep);
  readout.add(QLatin1String("distanceKm"), way.distanceDeg * kKmPerDegree, QStringLiteral("km"), yStep * kKmPerDegree,
              QStringLiteral("or"));
  readout.add(QLatin1String("azimuth"), way.azimuthDeg, degree, 0.1);
  return readout;
}

std::optional<std::size_t> geoMapView::pointAt(QPointF point) const {
  if (!isInFrame(point)) return {};
  const MapProjection projection(iRect_, limits());
  for (std::size_t i = thePoints_->size(); i-- > 0;) {
    const auto& candidate = (*thePoints_)[i];
    if (!candidate) continue;
    const QPointF away = projection.place(projection.symbolLongitude(candidate->lon()), candidate->lat()) - point;
    const double radius = mapPointLook(*candidate, *theColors_, outlinePointsWithNoData_).radius;
    if (std::hypot(away.x(), away.y()) <= std::max(radius, kHitReach)) return i;
  }
  return {};
}

std::vector<std::size_t> geoMapView::pointsIn(const QRectF& box) const {
  std::vector<std::size_t> held;
  const QRectF area = boxOnMap(box, iRect_);
  if (area.isEmpty()) return held;
  const MapProjection projection(iRect_, limits());
  for (std::size_t i = 0; i < thePoints_->size(); ++i) {
    const auto& candidate = (*thePoints_)[i];
    if (!candidate) continue;
    if (containsPoint(area, projection.place(projection.symbolLongitude(candidate->lon()), candidate->lat())))
      held.push_back(i);
  }
  return held;
}

std::vector<std::size_t> geoMapView::mechanismsIn(const QRectF& box) const {
  std::vector<std::size_t> held;
  const QRectF area = boxOnMap(box, iRect_);
  if (area.isEmpty()) return held;
  const std::vector<PlacedDisc> discs = placeMechanisms();
  for (std::size_t i = 0; i < discs.size(); ++i)
    if (containsPoint(area, discs[i].anchor)) held.push_back(i);
  return held;
}

std::optional<MapBox> geoMapView::mapBoxOf(const QRectF& box) const {
  const QRectF area = boxOnMap(box, iRect_);
  if (area.isEmpty()) return {};
  const QPointF from = viewToData(area.topLeft(), iRect_, limits());
  const QPointF to = viewToData(area.bottomRight(), iRect_, limits());
  const MapBox found{std::min(from.x(), to.x()), std::max(from.x(), to.x()), std::min(from.y(), to.y()),
                     std::max(from.y(), to.y())};
  const bool isFinite = std::isfinite(found.westDeg) && std::isfinite(found.eastDeg) &&
                        std::isfinite(found.southDeg) && std::isfinite(found.northDeg);
  return isFinite ? std::optional(found) : std::nullopt;
}

} // namespace xov
