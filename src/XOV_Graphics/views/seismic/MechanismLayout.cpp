#include "XOV_Graphics/views/seismic/MechanismLayout.h"

#include "XOV_Graphics/seismic/mechanism/SourceGeometry.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kGap = 16;            // between balls
constexpr double kLeastMomentNm = 1e3; // of a tensor that has a size: magnitude -4
constexpr double kNoteworthyShare = 0.005;

QString angle(double degrees) { return QStringLiteral("%1°").arg(degrees, 0, 'f', 0); }

QString planeLine(const QString& name, const NodalPlane& plane) {
  return QStringLiteral("%1: strike %2, dip %3, rake %4")
      .arg(name, angle(double(plane.strikeDeg)), angle(double(plane.dipDeg)), angle(double(plane.rakeDeg)));
}

QString axisLine(const QString& name, const PrincipalAxis& axis) {
  return QStringLiteral("%1: azimuth %2, plunge %3").arg(name, angle(axis.azimuthDeg), angle(axis.plungeDeg));
}

std::array<NodalPlane, 2> planesOf(const FocalMechanism& mechanism, const MomentTensor& tensor) {
  const auto& [first, second] = mechanism.planes;
  if (isDefined(first)) return {first, isDefined(second) ? second : auxiliaryPlaneOf(first)};
  if (isDefined(second)) return {second, auxiliaryPlaneOf(second)};
  return nodalPlanesOf(tensor);
}

QString percent(double share) { return QStringLiteral("%1 %").arg(std::lround(share * 100)); }

// "5.31e22".
QString momentText(double moment) {
  const double exponent = std::floor(std::log10(moment));
  return QStringLiteral("%1e%2").arg(moment / std::pow(10, exponent), 0, 'f', 2).arg(exponent);
}

} // namespace

BallGrid layOutBalls(const QRectF& room, std::size_t count, double captionHeight) {
  BallGrid grid;
  if (count == 0 || !(room.width() > 0) || !(room.height() > 0)) return grid;
  std::size_t columns = 1;
  for (std::size_t candidate = 1; candidate <= count; ++candidate) {
    const std::size_t rows = (count + candidate - 1) / candidate;
    const double across = (room.width() / double(candidate) - kGap) / 2;
    const double upright = (room.height() / double(rows) - kGap - captionHeight) / 2;
    const double radius = std::min(across, upright);
    if (radius > grid.radius) {
      grid.radius = radius;
      columns = candidate;
    }
    if (across < grid.radius) break; // more columns only make them smaller
  }
  if (!(grid.radius > 0)) return grid;
  const std::size_t rows = (count + columns - 1) / columns;
  const double width = room.width() / double(columns);
  const double height = room.height() / double(rows);
  grid.cellWidth = width;
  for (std::size_t i = 0; i < count; ++i) {
    const auto column = double(i % columns);
    const std::size_t row = i / columns;
    grid.centers.emplace_back(room.left() + (column + 0.5) * width,
                              room.bottom() - (double(row) + 0.5) * height + captionHeight / 2);
  }
  return grid;
}

QStringList mechanismLines(const FocalMechanism& mechanism) {
  const std::optional<MomentTensor> tensor = radiatingTensorOf(mechanism);
  if (!tensor) return {};
  QStringList lines;
  const std::array<NodalPlane, 2> planes = planesOf(mechanism, *tensor);
  if (isDefined(planes[0])) {
    lines << planeLine(QStringLiteral("Plane 1"), planes[0]) << planeLine(QStringLiteral("Plane 2"), planes[1]);
    const PrincipalAxes axes = principalAxesOf(*tensor);
    lines << axisLine(QStringLiteral("T axis"), axes.t) << axisLine(QStringLiteral("N axis"), axes.n)
          << axisLine(QStringLiteral("P axis"), axes.p);
  }
  const SourceShares shares = sourceSharesOf(*tensor);
  if (shares.doubleCouple < 1 - kNoteworthyShare) {
    lines << QStringLiteral("Double couple %1, CLVD %2, isotropic %3")
                 .arg(percent(shares.doubleCouple), percent(shares.clvd), percent(shares.isotropic));
  }
  const double moment = scalarMomentOf(*tensor);
  if (mechanism.tensor && moment >= kLeastMomentNm && std::isfinite(moment)) {
    lines << QStringLiteral("Moment %1 N m, Mw %2")
                 .arg(momentText(moment))
                 .arg(2.0 / 3 * (std::log10(moment) - 9.1), 0, 'f', 1);
  }
  return lines;
}

} // namespace xov
