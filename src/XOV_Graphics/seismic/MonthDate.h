#pragma once

#include "XOV_Graphics/base/Export.h"

namespace xov {

/// Turns a day of the year (1 = 1 January) into a month (1 to 12) and a day of the month (1 to 31), by the Gregorian
/// calendar. A day outside the year (below 1, above 365 or 366) and a year below 1 have no date: month and day
/// become 0.
XOV_EXPORT void monthdate(int year, int dayOfYear, int& month, int& day);

} // namespace xov
