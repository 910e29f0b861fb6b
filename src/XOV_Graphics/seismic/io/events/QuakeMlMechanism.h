#pragma once

#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/FocalMechanism.h"

#include <QString>

namespace xov {

/// A focal mechanism as a QuakeML document has it.
struct QuakeMlMechanism {
  QString id;
  QString derivedOrigin; ///< the identifier of the origin that is the tensor's centroid; empty where there is none
  FocalMechanism mechanism;
  QString problem; ///< the first; empty when the mechanism can be used
};

/// Reads the current element, <focalMechanism>, to its end.
QuakeMlMechanism readQuakeMlMechanism(XmlElements& xml);

} // namespace xov
