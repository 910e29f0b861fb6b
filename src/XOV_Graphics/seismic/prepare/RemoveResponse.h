#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/StationInventory.h"
#include "XOV_Graphics/seismic/response/ResponseFunction.h"

#include <memory>
#include <optional>

namespace xov {

/// The frequencies in Hz that are left when a response is taken away: none up to a, all from b to c, none from d on,
/// half of a cosine in between.
struct XOV_EXPORT PreFilter {
  double a = 0; ///< nothing is left below it
  double b = 0; ///< all is left from here
  double c = 0; ///< to here
  double d = 0; ///< nothing is left above it
};

/// How a response is taken away.
struct XOV_EXPORT ResponseRemoval {
  /// What the record becomes: nm, nm/s or nm/s², the units that SAC files have.
  GroundMotion motion = GroundMotion::Velocity;
  /// The polynomial that is taken away before, 0 being the mean and 1 the linear trend, or nothing.
  std::optional<int> trendOrder = 0;
  /// The share of the samples, 0 to 0.5, over which they are tapered at either end, before.
  double taperShare = 0.05;
  std::optional<PreFilter> preFilter = {}; ///< none takes everything
  /// Where the response is more than that many dB below its largest value up to the Nyquist frequency, it is taken to
  /// be there, with its own phase, so that noise is not made to look like ground motion. Nothing: no such limit.
  std::optional<double> waterLevelDb = 60;
};

/// The motion of the ground that made a record: another record, whose idep says what it is. The response is divided
/// out of the spectrum of each stretch of finite samples by itself, with as many zeros behind it; where the response
/// is 0, as at 0 Hz, so is the motion. In double precision.
///
/// Refuses, in one line that names the record, a response that ResponseFunction::of() refuses and one that is 0
/// everywhere, a record whose sample interval is not above 0, a taper or water level out of range, and a pre-filter
/// whose frequencies do not rise or lie above the Nyquist frequency.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> removeResponse(const SeismogramRecord& record,
                                                                 const InstrumentResponse& response,
                                                                 const ResponseRemoval& removal = {}) noexcept;

/// The same with the response of the record's channel at its time: stationChannelOf().
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> removeResponse(const SeismogramRecord& record,
                                                                 const StationInventory& inventory,
                                                                 const ResponseRemoval& removal = {}) noexcept;

/// The reverse: the samples that an instrument makes of a record of ground motion in nm, nm/s or nm/s². The samples
/// are taken as they are, as if the ground had been at rest before and after. Refuses what removeResponse() does.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> simulateResponse(const SeismogramRecord& motionRecord,
                                                                   const InstrumentResponse& response,
                                                                   GroundMotion motion) noexcept;

} // namespace xov
