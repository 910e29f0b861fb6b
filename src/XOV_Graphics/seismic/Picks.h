#pragma once

#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/Undefined.h"

namespace xov {

/// Keys of timePickKey() and pickLabelWithKey(); 0 to 9 are T0 to T9.
inline constexpr int kTimePickCount = 10;
inline constexpr int kFirstArrivalKey = 10; ///< the pick A
inline constexpr int kEndOfSignalKey = 11;  ///< the end F

/// Whether a view with that time span draws a pick: the time is set and lies within the span, both ends included.
inline bool isPickDrawn(float time, float xmin, float xmax) {
  return time != kUndefinedValue && xmin <= time && time <= xmax;
}

/// The label stored for a pick, or `fallback` when it has none.
inline QString pickLabelOr(const SeismogramRecord& record, int key, const QString& fallback) {
  const QString label = record.pickLabelWithKey(key);
  return label == QLatin1String(kUndefinedLabel) ? fallback : label;
}

} // namespace xov
