#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/signal/BiquadCascade.h"
#include "XOV_Graphics/seismic/signal/Butterworth.h"
#include "XOV_Graphics/seismic/signal/Taper.h"
#include "XOV_Graphics/seismic/signal/Trend.h"

#include <memory>

namespace xov {

// Each makes a new record out of one that stays as it is; sums are in double precision. Samples that are not finite
// separate the others into stretches, which are treated each by itself, and stay.

/// The record without its mean (order 0), its linear trend (1) or the polynomial of that order: see
/// removePolynomial(), one polynomial for all of its stretches.
XOV_EXPORT std::shared_ptr<SacSeismogram> detrended(const SeismogramRecord& record, int order = 1);

/// The record with each stretch rising from 0 and falling to 0 over that share of it, at either end: applyTaper().
/// Refuses a share that is not in 0 ... 0.5.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> taperedByShare(const SeismogramRecord& record, double share,
                                                                 TaperShape shape = TaperShape::Hann) noexcept;
/// The same over that many seconds, at most half of the stretch. Refuses a negative time, and a record without an
/// interval.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>> taperedBySeconds(const SeismogramRecord& record, double seconds,
                                                                   TaperShape shape = TaperShape::Hann) noexcept;

/// The filtered record: applyFilter(). Refuses what designButterworth() refuses.
XOV_EXPORT Result<std::shared_ptr<SacSeismogram>>
filtered(const SeismogramRecord& record, const ButterworthFilter& filter, FilterPhase phase) noexcept;

} // namespace xov
