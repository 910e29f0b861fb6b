#pragma once

#include <cstdint>
#include <span>

namespace xov::synthetic {

/// A small earthquake near a station.
struct LocalEvent {
  double originS = 0;    ///< on the axis of the samples, whose first is at 0
  double distanceKm = 0; ///< from the hypocentre, 5 to 300
  double localMagnitude = 0;
  std::uint64_t seed = 0; ///< this and the next are used
};

/// Times of P and S after the origin time, by straight rays through a crust of 6.0 and 3.5 km/s.
double localPTimeS(double distanceKm);
double localSTimeS(double distanceKm);

/// Largest ground velocity in nm/s of S at 4 Hz: a Wood-Anderson seismograph magnifies the ground 2080 times (R. A.
/// Uhrhammer, E. R. Collins, Bull. Seism. Soc. Am. 80, 702-716 (1990)) and writes the amplitude A in mm that follows
/// from magnitude = log A + 1.110 log(r/100) + 0.00189 (r - 100) + 3.0 with r in km (L. K. Hutton, D. M. Boore, Bull.
/// Seism. Soc. Am. 77, 2074-2094 (1987)).
double localVelocity(double localMagnitude, double distanceKm);

/// Adds P, S and their coda to vertical ground velocity in nm/s.
void addLocalEvent(std::span<double> samples, double rateHz, const LocalEvent& event);

} // namespace xov::synthetic
