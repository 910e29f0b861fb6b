#pragma once

#include <QByteArray>

#include <XOV_Graphics/seismic/SacSeismogram.h>
#include <memory>
#include <vector>

namespace xov::synthetic {

/// A plane wave that crosses a small array of nine stations in two rings around one, 1 km and 3 km away.
struct PlaneWave {
  double backAzimuthDeg = 57;
  double velocityKmS = 8.3;
  double arrivalS = 18; ///< at the middle of the array, after the recordings begin
  double noise = 0;     ///< standard deviation of noise of its own at each station, the wave's amplitude being 1
};

/// The recordings of the wave: 40 s at 40 Hz, a burst of 1 to 3 Hz. The same at every call.
std::vector<std::shared_ptr<SacSeismogram>> arrayTraces(const PlaneWave& wave);

/// The power of the beams that the array forms of the wave between 1 and 3 Hz, as lines of east slowness, north
/// slowness (s/km) and power; empty when that fails, which it does not.
QByteArray beamPowerTable(const PlaneWave& wave);

/// Lines of x, y and value of a made-up quantity of both signs: travel time residuals (s) over longitude and
/// latitude.
QByteArray residualTable();

/// A headerless grid of an island in an ocean: kReliefRows rows of kReliefColumns elevations in metres, 16-bit
/// little-endian integers, from the north.
inline constexpr int kReliefRows = 181;
inline constexpr int kReliefColumns = 241;
QByteArray reliefGrid();

} // namespace xov::synthetic
