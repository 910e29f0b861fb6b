#pragma once

#include "XOV_Graphics/seismic/SeisTime.h"

#include <QByteArray>

namespace xov {

/// A fixed moment in UTC, to the millisecond.
class XOV_EXPORT UtcTime : public SeisTime {
public:
  /// An unknown time.
  UtcTime();
  /// The moment `time`, which may be given in any zone. An invalid `time` makes an unknown time.
  explicit UtcTime(const QDateTime& time);
  ~UtcTime() override;

  /// The UTC date as "yyyy-MM-dd", for instance "2011-03-11"; empty when the time is unknown.
  const char* YMDcString() const override;
  /// Does nothing: the moment never changes, so there is nothing to refresh.
  void updateNSDate() override;
  /// The moment in UTC; invalid when the time is unknown.
  QDateTime nsDate() const override;

private:
  QDateTime time_;
  QByteArray ymd_;
};

} // namespace xov
