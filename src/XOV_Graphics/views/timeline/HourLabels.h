#pragma once

#include "XOV_Graphics/base/Edge.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/views/timeline/HelicorderPage.h"

#include <QDateTime>
#include <QPointF>
#include <QString>
#include <QTimeZone>

#include <cstdint>
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
/// its minutes: " month/day hour:minute". One stands beside every `step`-th row. Without a reference date there are
/// no labels.
std::vector<HourLabel> hourLabels(const HelicorderPage& page, const QDateTime& reference, const QDateTime& startTime,
                                  std::int32_t step = 1);

/// When a row begins on a page that starts at `start`; invalid when that lies too far off.
QDateTime rowBegin(const HelicorderPage& page, const QDateTime& start, double row);

/// The time in a zone at which every `step`-th marked row of a page begins that starts at `start`, beside it at the
/// left ("middle of the right edge") or the right (middle of the left edge): "month/day hour", with minutes in all of
/// them where a row does not begin with an hour.
std::vector<HourLabel> rowTimeLabels(const HelicorderPage& page, const QDateTime& start, const QTimeZone& zone,
                                     Edge side, std::int32_t step = 1);

/// How a zone is called on a page, such as "CET"; "CET/CEST" where rows of it begin in both.
QString zoneText(const HelicorderPage& page, const QDateTime& start, const QTimeZone& zone);

/// Whether labels tell minutes, for which they need more room: rows hold no whole hours.
bool labelsTellMinutes(const HelicorderPage& page);

/// Every so many-th row is labelled: the fewest rows on which a label of `height` points has room. Labels begin round
/// parts of an hour, or hours, apart where the rows divide it, and parts of a day, or days, where they hold whole
/// hours that divide it.
std::int32_t rowsOfLabel(const HelicorderPage& page, double height);

/// "date - network station location component"; a missing text is an empty text.
QString pageTitle(const SeismogramRecord& record);

} // namespace xov
