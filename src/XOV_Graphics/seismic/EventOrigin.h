#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeisTime.h"

#include <QDateTime>

#include <memory>
#include <vector>

namespace xov {

/// One event, as the plot views read it. A magnitude that is not set is kUndefinedValue (-12345), which lies below
/// every threshold.
class XOV_EXPORT EventOrigin {
public:
  EventOrigin() = default;
  EventOrigin(const EventOrigin&) = delete;
  EventOrigin& operator=(const EventOrigin&) = delete;
  virtual ~EventOrigin();

  /// The origin time; send updateNSDate() to it before nsDate().
  virtual std::shared_ptr<SeisTime> _origin_time() const = 0;
  /// The origin time as a date; invalid when it is not known.
  virtual QDateTime oDate() const = 0;
  /// The magnitude that colours the event's marker.
  virtual float magnitude() const = 0;
  /// Body-wave magnitude.
  virtual float mb() const = 0;
  /// Surface-wave magnitude.
  virtual float Ms() const = 0;
  /// Moment magnitude.
  virtual float Mw() const = 0;
};

/// Several events, as readers return them and views take them.
using EventOriginArray = std::vector<std::shared_ptr<EventOrigin>>;

} // namespace xov
