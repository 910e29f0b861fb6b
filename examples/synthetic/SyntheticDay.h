#pragma once

#include <QByteArray>
#include <QDateTime>

#include <XOV_Graphics/seismic/SacSeismogram.h>
#include <span>

namespace xov::synthetic {

/// An earthquake in the catalogue of the day. Types of magnitude as in public catalogues: "ml", "mb", "mww".
struct DayEvent {
  double timeS; ///< after midnight
  double latitudeDeg, longitudeDeg, depthKm;
  double magnitude;
  const char* magnitudeType;
};

/// Local earthquakes around one station, and a distant one of magnitude 7.1.
std::span<const DayEvent> dayEvents();

/// 00:00 UTC of the day.
QDateTime dayMidnight();

/// One day of XX.DRUM..BHZ in nm/s at 20 Hz in two pieces, between which the station was silent for 12 min 20 s. Both
/// headers have midnight as reference time, so that b places the second piece within the day.
std::vector<std::shared_ptr<SacSeismogram>> dayTraces();

/// The events as lines of comma-separated values under the line "time,latitude,longitude,depth,magnitude,type".
QByteArray dayCatalogue();

} // namespace xov::synthetic
