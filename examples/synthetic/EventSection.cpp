#include "examples/synthetic/EventSection.h"

#include "examples/synthetic/SiteNoise.h"

#include <XOV_Graphics/seismic/Geodesy.h>
#include <cmath>
#include <string_view>

namespace xov::synthetic {

namespace {

constexpr double kMagnitude = 6.9;
constexpr double kDepthKm = 24.0;
constexpr double kStrikeDeg = 215.0; // along the trench
constexpr std::uint64_t kSourceSeed = 69;
constexpr std::uint64_t kModelSeed = 70;

constexpr Station kStations[] = {
    // code, latitude, longitude, counts per nm/s, noise, rotated
    {"TERN", 50.68, 156.12, 0.010, 900, false}, {"WREN", 43.25, 141.60, 0.035, 600, false},
    {"SWAN", 59.58, 150.80, 0.060, 350, false}, {"LARK", 62.00, 129.70, 0.12, 180, false},
    {"KITE", 47.90, 106.90, 0.25, 150, true},   {"GULL", 64.90, -147.90, 0.32, 220, false},
    {"IBIS", 21.50, -158.00, 0.45, 400, false}, {"SKUA", 67.40, 26.60, 0.65, 250, true},
    {"DOVE", 39.70, -105.50, 0.80, 120, false}, {"FINK", 50.20, 12.40, 1.00, 300, false},
    {"RAIL", -37.70, 176.20, 1.20, 350, false}, {"HERN", 35.40, -5.30, 1.35, 280, false},
};

constexpr double kRateHz = 20.0;
constexpr double kStartS = -60.0;
constexpr double kEndS = 3900.0;
constexpr TimeWindow kWindow = {kStartS, kRateHz, std::size_t((kEndS - kStartS) * kRateHz)};

// The part of a record that is compared to a model.
constexpr double kBeforeArrivalS = 60.0;
constexpr double kComparedS = 900.0;

constexpr std::uint64_t kSeedsPerSensor = 16;

// Codes of the SAC format: the dependent variable is of no named kind, the reference time is the origin time.
constexpr std::int32_t kSacUnknown = 5;
constexpr std::int32_t kSacOriginTime = 11;
constexpr std::int32_t kSacEarthquake = 40;

/// A component: its name, the direction it measures and the kind of its sensor.
struct Component {
  const char* name;
  double azimuthDeg;
  double inclinationDeg;   // from upwards
  const char* surfaceWave; // label of the pick t1
};

SacHeader headerOf(const SyntheticEvent& event, const Station& station) {
  const Epicentre epicentre = sectionEpicentre();
  const GreatCircle way =
      greatCircle(epicentre.latitudeDeg, epicentre.longitudeDeg, station.latitudeDeg, station.longitudeDeg);
  SacHeader header;
  header.delta = float(1.0 / kRateHz);
  header.b = float(kStartS);
  header.idep = kSacUnknown;
  header.iztype = kSacOriginTime;
  header.ievtyp = kSacEarthquake;
  header.lpspol = header.lovrok = header.lcalda = 1;
  setReferenceTime(header, epicentre.originTime);
  header.stla = float(station.latitudeDeg);
  header.stlo = float(station.longitudeDeg);
  header.stel = header.stdp = 0;
  header.evla = float(epicentre.latitudeDeg);
  header.evlo = float(epicentre.longitudeDeg);
  header.evdp = float(event.source().depthKm());
  header.mag = float(event.source().magnitude());
  header.gcarc = float(way.distanceDeg);
  header.dist = float(way.distanceDeg * kKmPerDegree);
  header.az = float(way.azimuthDeg);
  header.baz = float(way.backAzimuthDeg);
  header.knetwk = "XX";
  header.kstnm = station.code;
  header.khole = "00";
  header.kevnm = "Invented M 6.9";
  header.kuser0 = "SYNTH";
  return header;
}

void setComponent(SacHeader& header, const Component& component, const ArrivalTimes& arrivals) {
  const bool love = std::string_view(component.surfaceWave) == "LQ";
  header.o = 0;
  header.ko = "O";
  header.a = float(arrivals.p);
  header.ka = "P";
  header.t0 = float(arrivals.s);
  header.kt0 = "S";
  header.t1 = float(love ? arrivals.love : arrivals.rayleigh);
  header.kt1 = component.surfaceWave;
  header.kcmpnm = component.name;
  header.cmpaz = float(component.azimuthDeg);
  header.cmpinc = float(component.inclinationDeg);
}

std::vector<float> counts(const std::vector<double>& motion, double countsPerNmPerS) {
  std::vector<float> samples(motion.size());
  for (std::size_t i = 0; i < motion.size(); ++i)
    samples[i] = float(countsPerNmPerS * motion[i]);
  return samples;
}

void addNoise(std::vector<double>& motion, Sensor sensor, double level, std::uint64_t seed) {
  SiteNoise noise(sensor, level, kRateHz, seed);
  for (double& sample : motion)
    sample += noise.next();
}

} // namespace

std::span<const Station> sectionStations() { return kStations; }

Epicentre sectionEpicentre() { return {QDateTime(QDate(2025, 3, 9), QTime(4, 17, 36, 420), Qt::UTC), 47.35, 153.10}; }

SyntheticEvent sectionEvent() { return SyntheticEvent(Source(kMagnitude, kDepthKm, kStrikeDeg, kSourceSeed)); }

std::vector<std::shared_ptr<SacSeismogram>> stationTraces(const SyntheticEvent& event, const Station& station) {
  SacHeader header = headerOf(event, station);
  const std::optional<ArrivalTimes> arrivals = event.arrivals(header.gcarc);
  if (!arrivals) return {};

  auto [vertical, first, second] = event.groundMotion({header.gcarc, header.az}, kWindow);
  const double propagationDeg = std::fmod(header.baz + 180.0, 360.0);
  rotateHorizontals(first, second, propagationDeg);
  const std::uint64_t seed = pathSeed(event.source(), {header.gcarc, header.az}, RandomPart::SiteNoise);
  addNoise(vertical, Sensor::Vertical, station.noiseNmPerS, seed);
  addNoise(first, Sensor::Horizontal, station.noiseNmPerS, seed + kSeedsPerSensor);
  addNoise(second, Sensor::Horizontal, station.noiseNmPerS, seed + 2 * kSeedsPerSensor);

  std::vector<std::shared_ptr<SacSeismogram>> traces;
  const auto append = [&](const Component& component, const std::vector<double>& motion) {
    setComponent(header, component, *arrivals);
    traces.push_back(std::make_shared<SacSeismogram>(header, counts(motion, station.countsPerNmPerS)));
  };
  append({"BHZ", 0, 0, "LR"}, vertical);
  append({"BHN", 0, 90, "LR"}, first);
  append({"BHE", 90, 90, "LR"}, second);
  if (station.rotated) {
    rotateHorizontals(first, second, -propagationDeg);
    append({"BHR", propagationDeg, 90, "LR"}, first);
    append({"BHT", std::fmod(propagationDeg + 90.0, 360.0), 90, "LQ"}, second);
  }
  return traces;
}

std::optional<ModelComparison> modelComparison(const SyntheticEvent& event, const Station& station) {
  SacHeader header = headerOf(event, station);
  const std::optional<ArrivalTimes> arrivals = event.arrivals(header.gcarc);
  if (!arrivals) return {};
  const Path path = {header.gcarc, header.az};
  const double startS = std::floor((arrivals->p - kBeforeArrivalS) * kRateHz) / kRateHz;
  const TimeWindow window = {startS, kRateHz, std::size_t(kComparedS * kRateHz)};
  header.b = float(startS);
  setComponent(header, {"BHZ", 0, 0, "LR"}, *arrivals);
  header.kuser0 = "P";
  const auto trace = [&](const std::vector<double>& motion) {
    return std::make_shared<SacSeismogram>(header, counts(motion, station.countsPerNmPerS));
  };
  std::vector<double> recorded = event.groundMotion(path, window)[Vertical];
  addNoise(recorded, Sensor::Vertical, station.noiseNmPerS, pathSeed(event.source(), path, RandomPart::SiteNoise));
  const SyntheticEvent model(Source(kMagnitude, kDepthKm, kStrikeDeg, kModelSeed));
  return ModelComparison{trace(recorded), trace(model.groundMotion(path, window)[Vertical])};
}

} // namespace xov::synthetic
