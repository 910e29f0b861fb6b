#include "examples/synthetic/ArrayWave.h"

#include "examples/synthetic/Random.h"

#include <QtEndian>

#include <XOV_Graphics/seismic/array/RecordArray.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace xov::synthetic {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kRateHz = 40;
constexpr int kSamples = 1600;
constexpr std::uint64_t kNoiseSeed = 1960;
constexpr double kLatitudeDeg = 61;
constexpr double kLongitudeDeg = 11.5;
constexpr double kKmPerDegree = 111.2;

constexpr int kStations = 9;
constexpr int kInnerRing = 3;
constexpr double kInnerRadiusKm = 1;
constexpr double kOuterRadiusKm = 3;

struct Place {
  double eastKm;
  double northKm;
};

// One in the middle, three around it, five around these.
Place placeOf(int station) {
  if (station == 0) return {0, 0};
  const bool inner = station <= kInnerRing;
  const int onRing = inner ? kInnerRing : kStations - 1 - kInnerRing;
  const int number = inner ? station - 1 : station - 1 - kInnerRing;
  const double azimuth = 2 * kPi * (number + (inner ? 0.0 : 0.25)) / onRing;
  const double radius = inner ? kInnerRadiusKm : kOuterRadiusKm;
  return {radius * std::sin(azimuth), radius * std::cos(azimuth)};
}

// Three notes of a burst of two seconds.
double burst(double t) {
  const double envelope = std::exp(-t * t);
  return envelope *
         (std::cos(2 * kPi * 1.4 * t) + std::cos(2 * kPi * 2.0 * t + 1) + std::cos(2 * kPi * 2.7 * t + 2)) / 3;
}

float degrees(double origin, double km, double kmPerDegree) { return float(origin + km / kmPerDegree); }

double hill(double x, double y, double centreX, double centreY, double width) {
  const double dx = (x - centreX) / width;
  const double dy = (y - centreY) / width;
  return std::exp(-dx * dx - dy * dy);
}

QByteArray line(double x, double y, double value) {
  return QByteArray::number(x, 'f', 6) + ' ' + QByteArray::number(y, 'f', 6) + ' ' +
         QByteArray::number(value, 'f', 6) + '\n';
}

} // namespace

std::vector<std::shared_ptr<SacSeismogram>> arrayTraces(const PlaneWave& wave) {
  const double east = std::sin(wave.backAzimuthDeg * kPi / 180) / wave.velocityKmS;
  const double north = std::cos(wave.backAzimuthDeg * kPi / 180) / wave.velocityKmS;
  std::vector<std::shared_ptr<SacSeismogram>> traces;
  for (int station = 0; station < kStations; ++station) {
    const Place place = placeOf(station);
    // Stations towards the source are reached first.
    const double arrival = wave.arrivalS - place.eastKm * east - place.northKm * north;
    Random random(kNoiseSeed + std::uint64_t(station));
    std::vector<float> samples(kSamples);
    for (int i = 0; i < kSamples; ++i)
      samples[std::size_t(i)] = float(burst(i / kRateHz - arrival) + wave.noise * random.normal());
    SacHeader header;
    header.delta = float(1 / kRateHz);
    header.b = 0;
    header.nzyear = 2025;
    header.nzjday = 68;
    header.nzhour = 4;
    header.nzmin = 30;
    header.nzsec = header.nzmsec = 0;
    header.stla = degrees(kLatitudeDeg, place.northKm, kKmPerDegree);
    header.stlo = degrees(kLongitudeDeg, place.eastKm, kKmPerDegree * std::cos(kLatitudeDeg * kPi / 180));
    header.knetwk = "XX";
    const std::string code = "AR" + std::to_string(station);
    header.kstnm = code.c_str();
    header.kcmpnm = "SHZ";
    traces.push_back(std::make_shared<SacSeismogram>(header, std::move(samples)));
  }
  return traces;
}

QByteArray beamPowerTable(const PlaneWave& wave) {
  const auto traces = arrayTraces(wave);
  const SeismogramArray records(traces.begin(), traces.end());
  const auto array = arrayOfRecords(records, {});
  if (!array) return {};
  BeamSearch search;
  search.intervalSeconds = array->intervalSeconds;
  search.lowestHz = 1;
  search.highestHz = 3;
  const auto beam = beamPower(array->traces, search);
  if (!beam) return {};
  QByteArray text = "# east slowness, north slowness (s/km), beam power of a plane wave from " +
                    QByteArray::number(wave.backAzimuthDeg, 'f', 0) + " degrees at " +
                    QByteArray::number(wave.velocityKmS, 'f', 1) + " km/s\n";
  for (int row = 0; row < beam->steps; ++row) {
    for (int column = 0; column < beam->steps; ++column)
      text += line(beam->slowness(column), beam->slowness(beam->steps - 1 - row),
                   double(beam->power[std::size_t(row * beam->steps + column)]));
  }
  return text;
}

QByteArray residualTable() {
  QByteArray text = "# longitude, latitude (degrees), made-up travel time residual (s)\n";
  constexpr double kStep = 0.25;
  for (int row = 0; row <= 60; ++row) {
    const double y = 45 - kStep * row;
    for (int column = 0; column <= 80; ++column) {
      const double x = -125 + kStep * column;
      text += line(x, y,
                   1.6 * hill(x, y, -119, 41, 3) - 1.2 * hill(x, y, -110, 35, 4) + 0.7 * hill(x, y, -122, 33, 2) +
                       0.15 * std::sin(x) * std::cos(1.3 * y));
    }
  }
  return text;
}

QByteArray reliefGrid() {
  QByteArray bytes(2 * kReliefRows * kReliefColumns, '\0');
  for (int row = 0; row < kReliefRows; ++row) {
    for (int column = 0; column < kReliefColumns; ++column) {
      const double x = column;
      const double y = row;
      const double ridges = std::abs(std::sin(0.09 * x + 0.03 * y)) + std::abs(std::sin(0.05 * x - 0.08 * y + 1));
      const double island = hill(x, y, 125, 90, 52) + 0.5 * hill(x, y, 75, 125, 22);
      const double metres = -4600 + 6400 * island + island * 1900 * (ridges - 0.8) + 900 * hill(x, y, 200, 40, 18) -
                            3200 * std::exp(-std::pow((x + 0.4 * y - 30) / 14, 2));
      qToLittleEndian(std::int16_t(std::lround(std::clamp(metres, -11000.0, 9000.0))),
                      bytes.data() + 2 * (row * kReliefColumns + column));
    }
  }
  return bytes;
}

} // namespace xov::synthetic
