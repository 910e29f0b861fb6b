#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <cstdint>

namespace xov {

/// The samples of a record that a view draws: first <= i < last, none where last <= first.
struct XOV_EXPORT TraceWindow {
  std::int64_t first = 0; ///< the first sample
  std::int64_t last = 0;  ///< one past the last sample
  float firstTime = 0;    ///< the time that the first of them is drawn at, in seconds

  bool operator==(const TraceWindow&) const = default;
};

/// Cuts a record at xmin … xmax. A record that begins before xmin starts at sample (xmin − b) / delta, which is drawn
/// at xmin exactly. One that ends after xmax stops after as many samples as the whole window holds, so one that
/// begins inside the window runs past xmax by as much. All in single precision and truncated. `delta` must be
/// positive.
XOV_EXPORT TraceWindow windowStartingAtLimit(const SeismogramRecord& record, float xmin, float xmax);

/// Cuts a record at xmin … xmax and leaves its samples at their own times: from (xmin − b) / delta up to, but not
/// including, (xmax − b) / delta, both in single precision and truncated. Where xmax is the record's own end, its
/// last sample stays out.
XOV_EXPORT TraceWindow windowBetweenLimits(const SeismogramRecord& record, float xmin, float xmax);

} // namespace xov
