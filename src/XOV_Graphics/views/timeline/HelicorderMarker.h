#pragma once

#include "XOV_Graphics/seismic/EventOrigin.h"
#include "XOV_Graphics/views/timeline/HelicorderPage.h"

#include <QColor>
#include <QDateTime>
#include <QLineF>

#include <cstdint>
#include <optional>

namespace xov {

/// The line that marks an event in its row.
struct HelicorderMarker {
  QLineF line; ///< upwards
  QColor color;
  double width = 0;
};

/// The time that a page covers.
struct PageTime {
  QDateTime start;
  double duration = 0; ///< seconds
  float offset = 0;    ///< added to all times before they are placed, in seconds
};

/// Whole seconds from `start` to `date`, truncated towards zero.
std::int64_t wholeSecondsSince(const QDateTime& start, const QDateTime& date);

/// The full height of the row that the event's origin time falls into. Nothing for an event before or after the page
/// (both ends inclusive), for one of which no magnitude reaches the threshold, and where a date is not known.
std::optional<HelicorderMarker> helicorderMarker(const HelicorderPage& page, const PageTime& time,
                                                 const EventOrigin& event, float magThreshold);

} // namespace xov
