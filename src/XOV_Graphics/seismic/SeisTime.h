#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QDateTime>

namespace xov {

/// A moment in time, such as the reference time of a trace or the origin time of an event.
class XOV_EXPORT SeisTime {
public:
  SeisTime() = default;
  SeisTime(const SeisTime&) = delete;
  SeisTime& operator=(const SeisTime&) = delete;
  virtual ~SeisTime();

  /// The date in year-month-day form, a NUL-terminated ASCII string that stays valid while this object lives. Never
  /// null; empty when the time is unknown.
  virtual const char* YMDcString() const = 0;

  /// Refreshes the date that nsDate() returns, for types that compute it from other values.
  virtual void updateNSDate() = 0;

  /// The moment as refreshed by the last updateNSDate(); an invalid QDateTime when the time is unknown.
  virtual QDateTime nsDate() const = 0;
};

} // namespace xov
