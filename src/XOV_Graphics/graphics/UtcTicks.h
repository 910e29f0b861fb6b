#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <vector>

namespace xov {

/// What the ticks of an axis that shows UTC follow from.
struct XOV_EXPORT UtcTickRequest {
  QDateTime reference;                             ///< the moment that the axis counts from
  double lower = 0;                                ///< first moment on the axis, in seconds since the reference
  double upper = 0;                                ///< last one
  double length = 0;                               ///< of the axis, in points
  double gap = 0;                                  ///< least distance of two labels, in points
  std::function<double(const QString&)> textWidth; ///< of a label, in points
};

/// A tick of an axis that shows UTC.
struct XOV_EXPORT UtcTick {
  double seconds = 0; ///< since the reference
  QString label;      ///< empty for none
  bool operator==(const UtcTick&) const = default;
};

/// Ticks at round moments of UTC.
struct XOV_EXPORT UtcTicks {
  /// The ticks with labels, from left to right.
  std::vector<UtcTick> major;
  std::vector<double> minor; ///< in seconds since the reference
  QString firstDate;         ///< of the lower limit: "2011-03-11"
  QString lastDate;          ///< of the upper limit
};

/// The ticks between two moments, both included. They lie a round time apart, from one millisecond to 1,000 years:
/// the shortest one at which labels do not touch. Labels show as much as differs, "05:46:24.12" or "05:46"; at
/// midnight stands the day, "2011-03-11", or "03-11" where there is no room, but for a midnight that is the lower
/// limit, whose day is `firstDate`; ticks days apart show days, then months "2011-03", then years.
///
/// Times run on in seconds, as the samples of a record do, so that a leap second has room of its own and, where ticks
/// lie a second apart or less, its label "23:59:60". Nothing where the reference is invalid, a limit or length is
/// no number, the limits are equal or inverted, or a moment lies outside the years 1 to 9999.
XOV_EXPORT UtcTicks utcTicks(const UtcTickRequest& request);

} // namespace xov
