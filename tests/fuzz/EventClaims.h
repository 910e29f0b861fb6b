#pragma once

#include "Claims.h"
#include "XOV_Graphics/seismic/io/events/EventReaders.h"
#include "XOV_Graphics/seismic/mechanism/BeachBall.h"
#include "XOV_Graphics/seismic/mechanism/SourceGeometry.h"

#include <cmath>

namespace xov::fuzz {

inline bool isUnsetOrWithin(float value, float lowest, float highest) {
  return value == kUndefinedValue || (value >= lowest && value <= highest);
}

inline void checkMechanism(const FocalMechanism& mechanism) {
  const std::optional<MomentTensor> tensor = radiatingTensorOf(mechanism);
  if (!tensor) return;
  for (const BeachBallLine& patch : beachBallOf(*tensor).patches) {
    for (const QPointF point : patch)
      require(std::hypot(point.x(), point.y()) <= 1 + 1e-6, "a patch lies on its ball");
  }
}

/// Checks what an event reader gave.
inline void checkEvents(const Result<EventFile>& file) {
  if (!file) {
    requireOneLine(file.error());
    return;
  }
  for (const QString& note : file->notes)
    requireOneLine(note);
  for (const auto& event : file->events) {
    const HypocentreValues& values = event->values();
    require(values.originTime.isValid() && event->oDate().isValid(), "an event has a time");
    require(isUnsetOrWithin(values.latitudeDeg, -90, 90), "a latitude is one");
    require(isUnsetOrWithin(values.longitudeDeg, -360, 360), "a longitude is one");
    require(isUnsetOrWithin(values.depthKm, -100, 6371), "a depth is one");
    for (const float magnitude : {values.mb, values.Ms, values.Mw, values.preferredMagnitude, event->magnitude()})
      require(isUnsetOrWithin(magnitude, -10, 15), "a magnitude is one");
    require(values.magnitudes.empty() == (event->magnitude() == kUndefinedValue),
            "an event with magnitudes has one of its own");
    if (values.mechanism) checkMechanism(*values.mechanism);
  }
  require(file->origins().size() == file->events.size(), "every event reaches the views");
}

} // namespace xov::fuzz
