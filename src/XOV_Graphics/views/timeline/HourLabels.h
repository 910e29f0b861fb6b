#pragma once

#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/views/timeline/HelicorderPage.h"

#include <QDateTime>
#include <QPointF>
#include <QString>

#include <vector>

namespace xov {

/// The date and hour beside a row of a helicorder page.
struct HourLabel {
  QPointF place; ///< the middle of its right edge
  QString text;
};

/// " month/day hour" for every marked row of whole hours. Month and day are those of `reference` moved on by the rows
/// above; the hour counts on from that of `startTime` by the hours of a row. Rows of other lengths begin within an
/// hour, which a whole one cannot tell: their label is the time that they begin at, counted from `startTime`, with
/// its minutes: " month/day hour:minute". Without a reference date there are no labels.
std::vector<HourLabel> hourLabels(const HelicorderPage& page, const QDateTime& reference, const QDateTime& startTime);

/// "date - network station location component"; a missing text is an empty text.
QString pageTitle(const SeismogramRecord& record);

} // namespace xov
