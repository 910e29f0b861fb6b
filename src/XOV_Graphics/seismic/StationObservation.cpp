#include "XOV_Graphics/seismic/StationObservation.h"

namespace xov {

StationObservation::StationObservation(std::shared_ptr<SeismogramRecord> vertical,
                                       std::shared_ptr<SeismogramRecord> radial,
                                       std::shared_ptr<SeismogramRecord> transverse)
    : vertical_(std::move(vertical)),
      radial_(std::move(radial)),
      transverse_(std::move(transverse)) {}

StationObservation::~StationObservation() = default;

std::shared_ptr<SeismogramRecord> StationObservation::vertical() const { return vertical_; }

std::shared_ptr<SeismogramRecord> StationObservation::radial() const { return radial_; }

std::shared_ptr<SeismogramRecord> StationObservation::transverse() const { return transverse_; }

} // namespace xov
