#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QtGlobal>

namespace xov {

/// By how many seconds International Atomic Time (TAI) is ahead of UTC at a moment, given in milliseconds since 1970
/// (UTC, days of 86,400 seconds): 10 in January 1972, 37 since 2017. Before 1972, when UTC had seconds of another
/// length, 10. The leap seconds are those of Bulletin C of the International Earth Rotation and Reference Systems
/// Service, up to the last one so far at the end of 2016.
XOV_EXPORT int secondsOfTaiAheadOfUtc(qint64 utcMilliseconds);

/// How much time passes between two moments (milliseconds since 1970, UTC), in seconds: leap seconds count.
XOV_EXPORT double secondsBetween(qint64 fromUtcMilliseconds, qint64 toUtcMilliseconds);

/// The midnight (milliseconds since 1970, UTC) before which the last leap second up to `utcMilliseconds` was put in;
/// the lowest number where there was none.
XOV_EXPORT qint64 lastLeapUpTo(qint64 utcMilliseconds);

} // namespace xov
