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

/// " month/day hour" for every marked row. Month and day are those of `reference` moved on by the rows above; the
/// hour counts on from that of `startTime` by the whole hours of a row, so with rows of half an hour it stays.
/// Without a reference date there are no labels.
std::vector<HourLabel> hourLabels(const HelicorderPage& page, const QDateTime& reference, const QDateTime& startTime);

/// "date - network station location component"; a missing text is an empty text.
QString pageTitle(const SeismogramRecord& record);

} // namespace xov
