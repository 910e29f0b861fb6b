// The destructors of the abstract interfaces are defined here and nowhere else, so that their type information lives
// in the library and a dynamic_cast agrees between the library and its host.
#include "seismic/EventOrigin.h"
#include "seismic/SeisTime.h"
#include "seismic/SeismogramRecord.h"
#include "seismic/ThreeComponentObservation.h"
#include "seismic/UniformSignal.h"

namespace xov {

SeisTime::~SeisTime() = default;
SeismogramRecord::~SeismogramRecord() = default;
EventOrigin::~EventOrigin() = default;
ThreeComponentObservation::~ThreeComponentObservation() = default;
UniformSignal::~UniformSignal() = default;

} // namespace xov
