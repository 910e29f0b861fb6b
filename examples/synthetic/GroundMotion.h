#pragma once

#include "examples/synthetic/Source.h"
#include "examples/synthetic/Spectrum.h"

#include <array>
#include <cstdint>
#include <vector>

namespace xov::synthetic {

/// Evenly spaced times.
struct TimeWindow {
  double startS = 0; ///< after the origin time, negative before
  double rateHz = 20;
  std::size_t count = 0;
};

/// Where a receiver stands as seen from the source.
struct Path {
  double distanceDeg = 0;
  double azimuthDeg = 0;
};

/// Directions of ground motion: upwards, away from the source, and 90 degrees clockwise from that.
enum Direction : std::size_t { Vertical, Radial, Transverse, DirectionCount };

/// Ground velocity in nm/s in each Direction.
using GroundMotion = std::array<std::vector<double>, DirectionCount>;
using GroundSpectrum = std::array<Spectrum, DirectionCount>;

/// What is random in a record, so that no two parts share a seed.
enum class RandomPart : std::uint64_t { BodyWaveCoda = 1, SurfaceWaveCoda, Detours, SiteNoise };

/// A seed that differs from path to path; the next 255 belong to the same part.
inline std::uint64_t pathSeed(const Source& source, const Path& path, RandomPart part) {
  constexpr double kStepsPerDegree = 1000.0; // paths that differ by a thousandth of a degree differ
  return (source.seed() << 48) ^ (std::uint64_t(path.distanceDeg * kStepsPerDegree) << 28) ^
         (std::uint64_t(path.azimuthDeg * kStepsPerDegree) << 10) ^ (std::uint64_t(part) << 8);
}

} // namespace xov::synthetic
