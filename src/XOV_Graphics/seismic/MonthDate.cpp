#include "XOV_Graphics/seismic/MonthDate.h"

#include <QDate>

namespace xov {

void monthdate(int year, int dayOfYear, int& month, int& day) {
  month = 0;
  day = 0;
  if (year < 1) return;
  const QDate newYear(year, 1, 1);
  if (!newYear.isValid() || dayOfYear < 1 || dayOfYear > newYear.daysInYear()) return;
  const QDate date = newYear.addDays(dayOfYear - 1);
  month = date.month();
  day = date.day();
}

} // namespace xov
