#pragma once

#include "examples/synthetic/SyntheticEvent.h"

#include <QDateTime>

#include <XOV_Graphics/seismic/SacSeismogram.h>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace xov::synthetic {

/// An invented station.
struct Station {
  const char* code;
  double latitudeDeg, longitudeDeg;
  double countsPerNmPerS; ///< sensors near the source run at low gain, so that all stay on one scale
  double noiseNmPerS;     ///< root mean square of the microseisms
  bool rotated;           ///< radial and transverse components are made too
};

/// An invented earthquake.
struct Epicentre {
  QDateTime originTime;
  double latitudeDeg, longitudeDeg;
};

/// Twelve stations between 4 and 95 degrees from the epicentre.
std::span<const Station> sectionStations();

/// A thrust of magnitude 6.9 at 24 km depth under the Kuril Islands.
Epicentre sectionEpicentre();
SyntheticEvent sectionEvent();

/// The components BHZ, BHN and BHE of a station, and BHR and BHT where it has them, in counts at 20 Hz from a minute
/// before the origin time until the slowest surface waves are gone. The header's reference time is the origin time;
/// a, t0 and t1 hold P, S and the long-period surface waves (LR, on BHT LQ).
std::vector<std::shared_ptr<SacSeismogram>> stationTraces(const SyntheticEvent& event, const Station& station);

/// The vertical component of a station in the fifteen minutes from a minute before P on, as recorded and as a model
/// of the same earthquake has it that ruptured otherwise and knows no noise. The user's label is P. None where P does
/// not arrive.
struct ModelComparison {
  std::shared_ptr<SacSeismogram> data;
  std::shared_ptr<SacSeismogram> model;
};
std::optional<ModelComparison> modelComparison(const SyntheticEvent& event, const Station& station);

} // namespace xov::synthetic
