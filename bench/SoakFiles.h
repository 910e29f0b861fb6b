#pragma once

#include "XOV_Graphics/seismic/SacHeader.h"

#include <QStringList>
#include <QTemporaryDir>

namespace xov::bench {

inline constexpr double kSecondsPerHour = 3600;
inline constexpr double kHoursPerDay = 24;
inline constexpr double kSoakRateHz = 100;
inline constexpr double kSoakStart = 1.6e9; ///< since 1970: 2020-09-13T12:26:40Z
/// Which reaches beyond nearly all samples.
inline constexpr float kSoakAmplitude = 1500;
/// Of each station.
inline constexpr const char* kSoakComponents[] = {"HHZ", "HHN", "HHE"};
inline constexpr const char* kSoakNetwork = "XX";

/// "S00", "S01", …
QString soakStation(int station);

/// Codes and interval of a channel.
SacHeader soakHeader(int station, const char* component);

/// Synthetic noise of sites as miniSEED in `folder`, whole numbers of nm/s: a file an hour, as a recorder that is on
/// the air leaves them.
QStringList writeSoakFiles(const QTemporaryDir& folder, int stations, double hours);

} // namespace xov::bench
