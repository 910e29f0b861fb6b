#include "examples/synthetic/RegionalMotion.h"

#include "examples/synthetic/Random.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace xov::synthetic {

namespace {

constexpr double kKmADegree = 111.19;
constexpr double kRateMmA = 35;
constexpr double kLockingKm = 15;
constexpr int kSites = 90;
constexpr std::uint64_t kSeed = 1973;
constexpr double kScatterMmA = 0.7; // of each component

// From the north-west to the south-east.
constexpr QPointF kFault[] = {{-124.6, 40.4}, {-122.5, 37.8}, {-120.6, 35.8},
                              {-119, 34.8},   {-116.6, 33.9}, {-115.3, 32.4}};
constexpr double kWest = -123, kEast = -114.5, kSouth = 32.3, kNorth = 39.5;

double narrowing(double lat) { return std::cos(lat * std::numbers::pi / 180); }

// East and north in km.
QPointF kmBetween(QPointF from, QPointF to) {
  const double middle = (from.y() + to.y()) / 2;
  return QPointF((to.x() - from.x()) * narrowing(middle), to.y() - from.y()) * kKmADegree;
}

// How far a place is from the fault, positive to its north-east, and the fault's direction there.
struct Offset {
  double km = 0;
  QPointF along;
};

Offset offsetOf(QPointF place) {
  Offset nearest;
  double least = 1e9;
  for (std::size_t i = 1; i < std::size(kFault); ++i) {
    const QPointF along = kmBetween(kFault[i - 1], kFault[i]);
    const QPointF from = kmBetween(kFault[i - 1], place);
    const double length = std::hypot(along.x(), along.y());
    const double reached = std::clamp(QPointF::dotProduct(from, along) / (length * length), 0.0, 1.0);
    const QPointF away = from - reached * along;
    const double km = std::hypot(away.x(), away.y());
    if (km >= least) continue;
    least = km;
    const double left = along.x() * from.y() - along.y() * from.x();
    nearest = {left > 0 ? km : -km, along / length};
  }
  return nearest;
}

QByteArray nxy(std::span<const QPointF> points) {
  QByteArray text = QByteArray::number(qsizetype(points.size())) + '\n';
  for (const QPointF& point : points)
    text += QByteArray::number(point.x(), 'f', 3) + ' ' + QByteArray::number(point.y(), 'f', 3) + '\n';
  return text;
}

} // namespace

QPointF regionalVelocity(QPointF place) {
  const Offset offset = offsetOf(place);
  // The south-western side moves to the north-west, against the line.
  const double speed = kRateMmA / 2 - kRateMmA / std::numbers::pi * std::atan(offset.km / kLockingKm);
  return -speed * offset.along;
}

QByteArray regionalVelocityTable() {
  Random random(kSeed);
  QByteArray text = "# made-up velocities: longitude, latitude (degrees), east, north (mm/a)\n";
  for (int site = 0; site < kSites; ++site) {
    const double lon = kWest + (kEast - kWest) * random.uniform();
    const double lat = kSouth + (kNorth - kSouth) * random.uniform();
    const QPointF velocity = regionalVelocity({lon, lat});
    const double east = velocity.x() + kScatterMmA * random.normal();
    const double north = velocity.y() + kScatterMmA * random.normal();
    text += QByteArray::number(lon, 'f', 3) + ' ' + QByteArray::number(lat, 'f', 3) + ' ' +
            QByteArray::number(east, 'f', 1) + ' ' + QByteArray::number(north, 'f', 1) + '\n';
  }
  return text;
}

QByteArray regionalFaultLine() { return nxy(kFault); }

QByteArray regionalNetworkLine() {
  const QPointF corners[] = {{kWest, kSouth}, {kEast, kSouth}, {kEast, kNorth}, {kWest, kNorth}, {kWest, kSouth}};
  return nxy(corners);
}

} // namespace xov::synthetic
