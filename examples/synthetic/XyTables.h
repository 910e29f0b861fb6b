#pragma once

#include <QByteArray>

namespace xov::synthetic {

// Texts of two columns under lines that begin with '#', separated by a blank unless noted.

/// Distance in degrees, 2 to 98, and travel time of P in seconds for the depth of the section's event.
QByteArray travelTimeTable();

/// Period in seconds, 8 to 250, and group velocity of Rayleigh waves in km/s.
QByteArray groupVelocityTable();

/// Magnitude, 5.5 to 8.5, and decimal logarithm of the source duration in seconds of 400 earthquakes, as CSV with a
/// heading.
///
/// Magnitudes are drawn from log N = a - b * magnitude (B. Gutenberg, C. F. Richter, Frequency of earthquakes in
/// California, Bull. Seismol. Soc. Am. 34, 185-188 (1944)) with b = 1, cut off at both ends. Durations are those of
/// Source::durationS(), their logarithms spread by a Gaussian of standard deviation 0.1.
QByteArray sourceDurationTable();

} // namespace xov::synthetic
