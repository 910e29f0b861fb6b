#pragma once

#include "XOV_Graphics/base/Edge.h"
#include "XOV_Graphics/platform/Trace.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"

#include <QDateTime>
#include <QPointF>
#include <QRectF>

#include <optional>

namespace xov {

/// The plotting rectangle of a real-time display: margins of 60 points at the left and top, 80 at the right and 84
/// below.
QRectF realTimeRect(const QRectF& bounds);

/// The bands of a real-time display: equal shares of the plotting rectangle, the first at the bottom.
struct RealTimeBands {
  QRectF rect;
  std::size_t count = 1;

  double height() const { return rect.height() / double(count); }
  double zeroLine(std::size_t k) const {
    return rect.y() + rect.height() / (2 * double(count)) + double(k) * height();
  }
};

/// Record k in its band: every sample from the one at or before xmin on, times added up in single precision; the
/// first point has that sample's time and the value of sample 0. Samples past xmax are left to the clip. Empty for a
/// record without samples from xmin on and for one whose interval is negative or not a number.
Trace realTimeTrace(const RealTimeBands& bands, std::size_t k, const SeismogramRecord& record,
                    const PlotLimits& limits, float gain);

/// Where the texts of the reference instant stand, each on its lower edge: the date over the other edge, the times
/// over `edge`, on which the reference lies.
///
///     date         title         local time
///                                UTC
///     +------------------------------+  top
///     |                              :
struct ReferencePlaces {
  QPointF date;
  int dateHJust = 1; ///< 1 left, 2 centred; the times are centred
  QPointF utcTime;
  QPointF localTime;
  double lineTop = 0; ///< the dotted line runs down from here, at the x of the times
  double lineBottom = 0;
};
ReferencePlaces referencePlaces(const QRectF& rect, Edge edge);

/// The instants that the edges of the plotting rectangle stand for.
struct RealTimeWindow {
  double start = 0; ///< seconds since 1970
  double end = 0;
};

/// `seconds` up to the reference instant when it lies on the right edge, else from it on.
RealTimeWindow realTimeWindow(const QDateTime& reference, float seconds, Edge edge);

/// The x of an instant on the plotting rectangle, whose width stands for `seconds` from the window's start on.
/// Nothing outside the window, whose both ends count, and for an invalid instant.
std::optional<double> instantX(const QRectF& rect, const RealTimeWindow& window, float seconds,
                               const QDateTime& instant);

/// How many seconds the record's last sample lies before `now` on its time axis, less than 0 where it lies behind it.
/// Nothing for a record without samples or with a time that is not known.
std::optional<double> channelLatency(const SeismogramRecord& record, float now);

/// The upper and lower end of event markers.
double markerTop(const QRectF& rect);
double markerBottom(const QRectF& rect);

} // namespace xov
