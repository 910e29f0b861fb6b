#include "XOV_Graphics/seismic/UtcTime.h"

#include <QLocale>

namespace xov {

UtcTime::UtcTime() = default;

UtcTime::UtcTime(const QDateTime& time) {
  if (!time.isValid()) return;
  time_ = time.toUTC();
  ymd_ = QLocale::c().toString(time_.date(), QStringLiteral("yyyy-MM-dd")).toLatin1();
}

UtcTime::~UtcTime() = default;

const char* UtcTime::YMDcString() const { return ymd_.constData(); }

void UtcTime::updateNSDate() {}

QDateTime UtcTime::nsDate() const { return time_; }

} // namespace xov
