// The destructors of the abstract interfaces are defined here and nowhere else, so that their type information lives
// in the library and a dynamic_cast agrees between the library and its host.
#include "XOV_Graphics/seismic/EventOrigin.h"
#include "XOV_Graphics/seismic/SeisTime.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/ThreeComponentObservation.h"
#include "XOV_Graphics/seismic/UniformSignal.h"

namespace xov {

SeisTime::~SeisTime() = default;
SeismogramRecord::~SeismogramRecord() = default;
EventOrigin::~EventOrigin() = default;
ThreeComponentObservation::~ThreeComponentObservation() = default;
UniformSignal::~UniformSignal() = default;

} // namespace xov
