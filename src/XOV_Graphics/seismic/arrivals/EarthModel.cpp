#include "XOV_Graphics/seismic/arrivals/EarthModel.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace xov {

namespace {

constexpr EarthLayer kLayers[] = {
    {6351, {5.80, 0, 0, 0}, {3.36, 0, 0, 0}},
    {6336, {6.50, 0, 0, 0}, {3.75, 0, 0, 0}},
    {6251, {8.78541, -0.74953, 0, 0}, {6.706231, -2.248585, 0, 0}},
    {6161, {25.41389, -17.69722, 0, 0}, {5.75020, -1.27420, 0, 0}},
    {5961, {30.78765, -23.25415, 0, 0}, {15.24213, -11.08552, 0, 0}},
    {5711, {29.38896, -21.40656, 0, 0}, {17.70732, -13.50652, 0, 0}},
    {5611, {25.96984, -16.93412, 0, 0}, {20.76890, -16.53147, 0, 0}},
    {3631, {25.1486, -41.1538, 51.9932, -26.6083}, {12.9303, -21.2590, 27.8988, -14.1080}},
    {3482, {14.49470, -1.47089, 0, 0}, {8.16616, -1.58206, 0, 0}},
    {1217.1, {10.03904, 3.75665, -13.67046, 0}, {0, 0, 0, 0}},
    {0, {11.24094, 0, -4.09689, 0}, {3.56454, 0, -3.45241, 0}},
};
constexpr std::size_t kMantleCount = std::size(kLayers) - 2;

} // namespace

std::span<const EarthLayer> mantleLayers() { return {kLayers, kMantleCount}; }

const EarthLayer& outerCore() { return kLayers[kMantleCount]; }

const EarthLayer& innerCore() { return kLayers[kMantleCount + 1]; }

double earthVelocity(const EarthLayer& layer, BodyWave wave, double radiusKm) {
  const double(&c)[4] = wave == BodyWave::P ? layer.p : layer.s;
  const double x = radiusKm / kEarthRadiusKm;
  return c[0] + x * (c[1] + x * (c[2] + x * c[3]));
}

double earthVelocity(BodyWave wave, double depthKm) {
  const double radiusKm = kEarthRadiusKm - depthKm;
  const EarthLayer* layer = std::begin(kLayers);
  while (layer != std::prev(std::end(kLayers)) && radiusKm <= layer->bottomRadiusKm)
    ++layer;
  return earthVelocity(*layer, wave, radiusKm);
}

double incidenceAngle(BodyWave wave, double slownessSPerRad) {
  return std::asin(std::min(1.0, slownessSPerRad * earthVelocity(wave, 0) / kEarthRadiusKm));
}

} // namespace xov
