#include "examples/synthetic/WorldCatalogue.h"

#include "examples/synthetic/BoundaryMechanism.h"
#include "examples/synthetic/Random.h"

#include <QDateTime>
#include <QLocale>
#include <QPointF>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace xov::synthetic {

namespace {

constexpr std::uint64_t kSeed = 1935;
constexpr std::uint64_t kMechanismSeed = 1976;
constexpr double kSmallestWithMechanism = 6.0;
constexpr double kKmADegree = 111.19;
constexpr double kEventsADegree = 1.1; // of a belt of rate 1
constexpr double kYears = 10;
constexpr double kSecondsAYear = 365.25 * 86400;

constexpr double kSmallestMagnitude = 4.8;
constexpr double kLargestAtTrenches = 8.8;
constexpr double kLargestInMountains = 7.8;
constexpr double kLargestAtRidges = 6.8;

// Where the slab of a trench goes, seen along its line.
enum class Side { None, Left, Right };

struct Belt {
  std::vector<QPointF> line; // longitude and latitude, degrees; longitudes go on across the date line
  Side slab = Side::None;
  double deepestKm = 20;
  double largestMagnitude = kLargestAtRidges;
  double rate = 1;
  double spreadKm = 12; // to both sides
  Boundary boundary = Boundary::Ridge;
};

Belt trench(std::vector<QPointF> line, Side slab, double deepestKm, double rate) {
  return {std::move(line), slab, deepestKm, kLargestAtTrenches, rate, 15, Boundary::Trench};
}

Belt ridge(std::vector<QPointF> line) { return {std::move(line), Side::None, 15, kLargestAtRidges, 0.6, 12}; }

Belt transform(std::vector<QPointF> line) {
  Belt belt = ridge(std::move(line));
  belt.boundary = Boundary::Transform;
  return belt;
}

Belt mountains(std::vector<QPointF> line, double deepestKm) {
  return {std::move(line), Side::None, deepestKm, kLargestInMountains, 1.2, 130, Boundary::Mountains};
}

std::vector<Belt> belts() {
  return {
      trench({{-80, 1}, {-81.3, -5}, {-79, -12}, {-73, -18}, {-71.5, -25}, {-73, -35}, {-75.5, -45}}, Side::Left, 620,
             3.5),
      trench({{-106, 19.5}, {-100, 16.3}, {-94, 14}, {-88.5, 12.3}, {-84, 8.7}}, Side::Left, 240, 3),
      trench({{-147, 59}, {-154, 56}, {-163, 53.3}, {-172, 51}, {-181, 50.3}, {-189, 52}, {-195, 54.3}}, Side::Right,
             240, 3),
      trench({{163, 55}, {160, 51}, {154, 46}, {147.5, 42}, {144.3, 39.5}, {142.3, 35}}, Side::Right, 620, 4.5),
      trench({{142.3, 34}, {143, 29}, {144.5, 24.5}, {147.8, 18}, {147, 13.5}, {143.5, 11.5}}, Side::Right, 600, 4),
      trench({{132.5, 30.5}, {130, 27}, {126, 24}, {122.5, 23}}, Side::Right, 240, 4),
      trench({{126.8, 14}, {127, 9}, {127.7, 3}}, Side::Right, 600, 5),
      trench(
          {{92, 14}, {92.5, 7}, {97, 0}, {101, -5.5}, {106, -8.5}, {113, -11}, {120, -11.3}, {127, -8.7}, {131, -6}},
          Side::Left, 620, 4.5),
      trench({{147, -6.5}, {152, -6.3}, {155, -8}, {161, -11}}, Side::Left, 450, 6),
      trench({{165.3, -11}, {166.8, -16}, {169, -21}, {172, -23}}, Side::Left, 300, 6),
      trench({{-172.5, -15.2}, {-173, -20}, {-175.5, -27}, {-178, -33}, {-180.5, -37}, {-182.5, -41}}, Side::Right,
             660, 6),
      trench({{-31, -55}, {-25, -56.5}, {-23.8, -58.7}, {-26, -60.6}}, Side::Right, 180, 4),
      trench({{-63, 19.5}, {-59.8, 17}, {-58.5, 13.5}, {-60, 10.5}}, Side::Right, 180, 2),
      trench({{19.5, 37.8}, {21.5, 35.3}, {25, 33.8}, {28.5, 35.5}}, Side::Left, 170, 3.5),
      ridge({{-9, 71},
             {-16, 67},
             {-23, 64},
             {-33, 57},
             {-33, 52},
             {-28, 44},
             {-30, 37},
             {-43, 30},
             {-46, 22},
             {-44, 13},
             {-34, 7},
             {-24, 0},
             {-13, -2},
             {-13, -12},
             {-12, -25},
             {-16, -40},
             {-1, -54}}),
      ridge({{-108, 21},
             {-104, 12},
             {-102, 2},
             {-107, -8},
             {-113, -20},
             {-112, -33},
             {-115, -45},
             {-133, -55},
             {-157, -62},
             {-180, -64},
             {-198, -62}}),
      ridge({{43, 11.7},
             {51, 13.5},
             {58, 12},
             {66, 3},
             {67, -8},
             {70, -25},
             {78, -37},
             {95, -46},
             {115, -50},
             {140, -52},
             {158, -60}}),
      ridge({{70, -25}, {59, -32}, {49, -38}, {36, -44}, {26, -52}, {0, -54.5}}),
      transform({{-124.3, 40.3}, {-122.3, 37.5}, {-119.5, 34.8}, {-116, 33}, {-112, 28}, {-108.5, 23}}),
      mountains({{-8, 36}, {4, 36.5}, {14, 38}, {21, 40}, {30, 40.2}, {40, 39.3}, {48, 33}, {56, 27.7}, {62, 28}},
                40),
      mountains({{66, 31}, {71, 36.5}, {75, 38}}, 220),
      mountains({{76, 33}, {84, 29}, {92, 28}, {96, 24}, {95, 18}}, 90),
  };
}

struct Event {
  double timeS = 0;
  double lat = 0;
  double lon = 0;
  double depthKm = 0;
  double magnitude = 0;
  Boundary boundary = Boundary::Ridge;
  double azimuthDeg = 0; // of the belt, with the slab of a trench at its right
};

// The magnitude that a share `rank` of all earthquakes stays below.
double magnitudeAt(double rank, double largest) {
  const double cutOff = std::pow(10.0, kSmallestMagnitude - largest);
  return kSmallestMagnitude - std::log10(1.0 - rank * (1.0 - cutOff));
}

double degreesBetween(QPointF a, QPointF b) {
  const double middle = (a.y() + b.y()) / 2 * std::numbers::pi / 180;
  return std::hypot((b.x() - a.x()) * std::cos(middle), b.y() - a.y());
}

// The point of a line, of lengths in degrees of arc, and the direction there as east and north parts.
struct Place {
  QPointF at;
  QPointF along;
};

Place placeOn(const std::vector<QPointF>& line, double share) {
  double length = 0;
  for (std::size_t i = 1; i < line.size(); ++i)
    length += degreesBetween(line[i - 1], line[i]);
  double left = share * length;
  std::size_t i = 1;
  for (; i + 1 < line.size() && left > degreesBetween(line[i - 1], line[i]); ++i)
    left -= degreesBetween(line[i - 1], line[i]);
  const double piece = degreesBetween(line[i - 1], line[i]);
  const double narrowing = std::cos((line[i - 1].y() + line[i].y()) / 2 * std::numbers::pi / 180);
  const QPointF step = line[i] - line[i - 1];
  return {line[i - 1] + step * (left / piece), QPointF(step.x() * narrowing, step.y()) / piece};
}

// Most events of a slab are shallow, and few lie between 300 and 500 km.
double slabDepthKm(double deepestKm, Random& random) {
  const double kind = random.uniform();
  if (kind < 0.6) return 8 + 45 * random.uniform();
  if (kind < 0.88 || deepestKm < 500) return 50 + (std::min(deepestKm, 300.0) - 50) * std::pow(random.uniform(), 1.5);
  return deepestKm - 150 * random.uniform();
}

Event eventOf(const Belt& belt, Random& random) {
  Event event;
  event.timeS = kYears * kSecondsAYear * random.uniform();
  event.magnitude = magnitudeAt(random.uniform(), belt.largestMagnitude);
  const Place place = placeOn(belt.line, random.uniform());
  double leftKm = belt.spreadKm * random.normal();
  if (belt.slab == Side::None) {
    event.depthKm = std::min(5 + (belt.deepestKm - 5) * random.uniform(), belt.deepestKm);
  } else {
    event.depthKm = slabDepthKm(belt.deepestKm, random);
    const double fromTrenchKm = 50 + event.depthKm; // a dip of 45 degrees
    leftKm += belt.slab == Side::Left ? fromTrenchKm : -fromTrenchKm;
  }
  event.boundary = belt.boundary;
  event.azimuthDeg = std::atan2(place.along.x(), place.along.y()) * 180 / std::numbers::pi;
  if (belt.slab == Side::Left) event.azimuthDeg += 180;
  const double left = leftKm / kKmADegree;
  event.lat = place.at.y() + left * place.along.x();
  const double narrowing = std::cos(event.lat * std::numbers::pi / 180);
  event.lon = std::remainder(place.at.x() - left * place.along.y() / narrowing, 360.0);
  return event;
}

QByteArray timeOf(const Event& event) {
  const QDateTime start(QDate(2015, 1, 1), QTime(0, 0), Qt::UTC);
  const QDateTime time = start.addMSecs(std::llround(event.timeS * 1000));
  return QLocale::c().toString(time, QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ")).toLatin1();
}

QByteArray rowOf(const Event& event) {
  const QByteArrayList fields = {timeOf(event),
                                 QByteArray::number(event.lat, 'f', 2),
                                 QByteArray::number(event.lon, 'f', 2),
                                 QByteArray::number(event.depthKm, 'f', 0),
                                 QByteArray::number(event.magnitude, 'f', 1),
                                 "mww"};
  return fields.join(',') + '\n';
}

QByteArray valueOf(const char* element, const QByteArray& value) {
  return QByteArray("<") + element + "><value>" + value + "</value></" + element + ">";
}

QByteArray elementOf(const Event& event, const FaultSlip& slip, int number) {
  const QByteArray id = "smi:example/world/" + QByteArray::number(number);
  return "<event publicID=\"" + id + "\">\n<origin publicID=\"" + id + "/origin\">" + valueOf("time", timeOf(event)) +
         valueOf("latitude", QByteArray::number(event.lat, 'f', 2)) +
         valueOf("longitude", QByteArray::number(event.lon, 'f', 2)) +
         valueOf("depth", QByteArray::number(1000 * std::round(event.depthKm), 'f', 0)) + "</origin>\n" +
         "<magnitude publicID=\"" + id + "/magnitude\">" +
         valueOf("mag", QByteArray::number(event.magnitude, 'f', 1)) + "<type>Mww</type></magnitude>\n" +
         "<focalMechanism publicID=\"" + id + "/mechanism\"><nodalPlanes><nodalPlane1>" +
         valueOf("strike", QByteArray::number(slip.strikeDeg, 'f', 0)) +
         valueOf("dip", QByteArray::number(slip.dipDeg, 'f', 0)) +
         valueOf("rake", QByteArray::number(slip.rakeDeg, 'f', 0)) +
         "</nodalPlane1></nodalPlanes></focalMechanism>\n</event>\n";
}

// In the order of time.
std::vector<Event> worldEvents() {
  Random random(kSeed);
  std::vector<Event> events;
  for (const Belt& belt : belts()) {
    double length = 0;
    for (std::size_t i = 1; i < belt.line.size(); ++i)
      length += degreesBetween(belt.line[i - 1], belt.line[i]);
    for (int n = int(length * belt.rate * kEventsADegree); n > 0; --n)
      events.push_back(eventOf(belt, random));
  }
  std::sort(events.begin(), events.end(), [](const Event& a, const Event& b) { return a.timeS < b.timeS; });
  return events;
}

} // namespace

QByteArray worldCatalogue() {
  QByteArray text = "time,latitude,longitude,depth,magnitude,type\n";
  for (const Event& event : worldEvents())
    text += rowOf(event);
  return text;
}

QByteArray worldMechanisms() {
  Random random(kMechanismSeed);
  QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                    "<q:quakeml xmlns:q=\"http://quakeml.org/xmlns/quakeml/1.2\" "
                    "xmlns=\"http://quakeml.org/xmlns/bed/1.2\">\n"
                    "<eventParameters publicID=\"smi:example/world\">\n";
  int number = 0;
  for (const Event& event : worldEvents()) {
    if (event.magnitude < kSmallestWithMechanism) continue;
    const FaultSlip slip = faultSlipAt(event.boundary, event.azimuthDeg, event.depthKm, random);
    text += elementOf(event, slip, ++number);
  }
  return text + "</eventParameters>\n</q:quakeml>\n";
}

} // namespace xov::synthetic
