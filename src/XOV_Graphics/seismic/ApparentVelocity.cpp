#include "XOV_Graphics/seismic/ApparentVelocity.h"

#include "XOV_Graphics/seismic/arrivals/EarthModel.h"

#include <cmath>
#include <limits>

namespace xov {

std::optional<ApparentVelocity> apparentVelocityOf(double seconds, double degrees) {
  const double slowness = seconds / degrees;
  if (degrees == 0 || !std::isfinite(slowness)) return {};
  const double velocity = slowness == 0 ? std::numeric_limits<double>::infinity() : kKmPerDegree / slowness;
  return ApparentVelocity{slowness, slowness / kKmPerDegree, velocity};
}

} // namespace xov
