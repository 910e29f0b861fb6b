#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <memory>

namespace xov {

/// One station's three rotated components of one event. A component that is missing is null.
class XOV_EXPORT ThreeComponentObservation {
public:
  ThreeComponentObservation() = default;
  ThreeComponentObservation(const ThreeComponentObservation&) = delete;
  ThreeComponentObservation& operator=(const ThreeComponentObservation&) = delete;
  virtual ~ThreeComponentObservation();

  /// Ground motion upwards.
  virtual std::shared_ptr<SeismogramRecord> vertical() const = 0;
  /// Ground motion along the direction away from the event.
  virtual std::shared_ptr<SeismogramRecord> radial() const = 0;
  /// Ground motion across that direction.
  virtual std::shared_ptr<SeismogramRecord> transverse() const = 0;
};

} // namespace xov
