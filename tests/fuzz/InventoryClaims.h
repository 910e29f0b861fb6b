#pragma once

#include "Claims.h"
#include "XOV_Graphics/seismic/Geodesy.h"
#include "XOV_Graphics/seismic/StationInventory.h"
#include "XOV_Graphics/seismic/response/ResponseFunction.h"

#include <cmath>

namespace xov::fuzz {

inline void checkResponse(const InstrumentResponse& response) {
  if (!response.problem.isEmpty()) requireOneLine(response.problem);
  require(!sensitivityProblem(response).contains(QLatin1Char('\n')), "a warning is one line");
  const auto function = ResponseFunction::of(response, GroundMotion::Velocity);
  if (!function) {
    require(!function.error().isEmpty() && !function.error().contains(QLatin1Char('\n')), "an error is one line",
            function.error());
    return;
  }
  for (const double hertz : {0.0, 0.1, 10.0}) {
    const std::complex<double> value = function->at(hertz);
    require(std::isfinite(value.real()) && std::isfinite(value.imag()), "a response is finite");
  }
}

inline void checkInventory(const Result<StationInventory>& inventory) {
  if (!inventory) {
    requireOneLine(inventory.error());
    return;
  }
  for (const QString& note : inventory->notes)
    requireOneLine(note);
  require(inventory->stations.size() + inventory->channels.size() > 0, "an inventory holds something");
  for (const InventoryStation& station : inventory->stations) {
    require(isGeographicPoint(station.latitudeDeg, station.longitudeDeg), "a station is on the globe");
  }
  for (const StationChannel& channel : inventory->channels) {
    require(channel.line > 0, "a channel has a line");
    checkResponse(channel.response);
  }
}

} // namespace xov::fuzz
