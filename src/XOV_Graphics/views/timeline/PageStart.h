#pragma once

#include "XOV_Graphics/seismic/SacHeader.h"

#include <QDateTime>

namespace xov {

class SeismogramRecord;

/// What the reference time of its first piece gives to a helicorder page.
struct PageStart {
  QDateTime hour;      ///< the whole hour that contains the reference time, UTC; invalid when the date is not known
  QDateTime reference; ///< the reference time to whole seconds, UTC; invalid when the date is not known
  float offset = 0;    ///< of the reference time into that hour, in seconds, added up in single precision
};

/// Hours, minutes, seconds and milliseconds that are not set count as 0; those beyond their range carry over. Without
/// a header nothing is known and the offset is 0.
PageStart pageStart(const SacHeader* header);
/// That of a record; nothing is known without one.
PageStart recordedStart(const SeismogramRecord* record);

} // namespace xov
