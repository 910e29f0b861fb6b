#pragma once

#include <QByteArray>

namespace xov::synthetic {

// Texts of two columns under lines that begin with '#'.

/// Distance in degrees, 2 to 98, and travel time of P in seconds for the depth of the section's event.
QByteArray travelTimeTable();

/// Period in seconds, 8 to 250, and group velocity of Rayleigh waves in km/s.
QByteArray groupVelocityTable();

} // namespace xov::synthetic
