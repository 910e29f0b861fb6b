#pragma once

#include "XOV_Graphics/seismic/ThreeComponentObservation.h"

namespace xov {

/// Three components held in memory; any of them may be null.
class XOV_EXPORT StationObservation : public ThreeComponentObservation {
public:
  /// Keeps the three records.
  StationObservation(std::shared_ptr<SeismogramRecord> vertical, std::shared_ptr<SeismogramRecord> radial,
                     std::shared_ptr<SeismogramRecord> transverse);
  ~StationObservation() override;

  std::shared_ptr<SeismogramRecord> vertical() const override;
  std::shared_ptr<SeismogramRecord> radial() const override;
  std::shared_ptr<SeismogramRecord> transverse() const override;

private:
  std::shared_ptr<SeismogramRecord> vertical_;
  std::shared_ptr<SeismogramRecord> radial_;
  std::shared_ptr<SeismogramRecord> transverse_;
};

} // namespace xov
