#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QDateTime>
#include <QString>
#include <QTimeZone>

namespace xov {

/// The reference instant of a real-time display as it is written over the plot, months and "AM" in English whatever
/// the locale.
struct XOV_EXPORT ReferenceTexts {
  QString date;      ///< UTC
  QString utcTime;   ///< ends in "UTC"
  QString localTime; ///< in a zone of choice

  bool operator==(const ReferenceTexts&) const = default;
};

/// "11 March, 2011", "05:46:23 UTC" and, twelve-hourly, "02:46:23 PM". All empty for an invalid instant.
XOV_EXPORT ReferenceTexts longReferenceTexts(const QDateTime& instant,
                                             const QTimeZone& zone = QTimeZone::systemTimeZone());

/// "11 Mar, 2011", "05:46:23 UTC" and "14:46:23 JST", the zone abbreviated. All empty for an invalid instant.
XOV_EXPORT ReferenceTexts shortReferenceTexts(const QDateTime& instant,
                                              const QTimeZone& zone = QTimeZone::systemTimeZone());

} // namespace xov
