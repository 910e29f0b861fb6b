#include "XOV_Graphics/views/timeline/RealTimeLayout.h"

#include "XOV_Graphics/base/SinglePrecision.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kLeftMargin = 60;
constexpr double kRightMargin = 80;
constexpr double kBottomMargin = 84;
constexpr double kTopMargin = 60;

constexpr double kTextRise = 18; // of a second line of text above the first
constexpr double kLineInset = 8; // of the reference line under the top
constexpr double kMarkerDrop = 24;
constexpr double kScaleRoom = 32; // above the minute scale
constexpr double kMillisecondsPerSecond = 1000;

double topOf(const QRectF& rect) { return rect.y() + rect.height(); }

double secondsSince1970(const QDateTime& instant) {
  return double(instant.toMSecsSinceEpoch()) / kMillisecondsPerSecond;
}

} // namespace

QRectF realTimeRect(const QRectF& bounds) {
  return {kLeftMargin, kBottomMargin, bounds.width() - (kLeftMargin + kRightMargin),
          bounds.height() - (kBottomMargin + kTopMargin)};
}

Trace realTimeTrace(const RealTimeBands& bands, std::size_t k, const SeismogramRecord& record,
                    const PlotLimits& limits, float gain) {
  const float b = record.b();
  const float delta = record.delta();
  Trace trace;
  trace.borrow(record.borrowedSamples());
  if (!(delta >= 0) || trace.samples == nullptr) return trace;
  trace.first = std::max(0, towardZero((limits.xmin - b) / delta));
  trace.last = record.npts();
  if (trace.isEmpty()) return trace;
  const float sinceBegin = float(trace.first) * delta;
  trace.tOrigin = limits.xmin;
  trace.xScale = bands.rect.width() / double(limits.xmax - limits.xmin);
  trace.settleTimes(b + sinceBegin, TraceTime::even(b, delta));
  trace.xOffset = bands.rect.x();
  trace.yScale = double(gain) * bands.rect.height() / double(limits.ymax - limits.ymin) / double(bands.count);
  trace.yOffset = bands.zeroLine(k);
  const HeldSamples first = trace.held(0, 1);
  trace.firstValue = trace.samples[0];
  return trace;
}

ReferencePlaces referencePlaces(const QRectF& rect, Edge edge) {
  const bool onRight = edge == Edge::Right;
  const double left = rect.x();
  const double right = rect.x() + rect.width();
  const double top = topOf(rect);
  const double x = onRight ? right : left;
  ReferencePlaces places;
  places.date = {onRight ? left : right, top + kTextRise};
  places.dateHJust = onRight ? 1 : 2;
  places.utcTime = {x, top};
  places.localTime = {x, top + kTextRise};
  places.lineTop = top - kLineInset;
  places.lineBottom = rect.y() + kScaleRoom;
  return places;
}

RealTimeWindow realTimeWindow(const QDateTime& reference, float seconds, Edge edge) {
  const double instant = secondsSince1970(reference);
  if (edge == Edge::Right) return {instant - double(seconds), instant};
  return {instant, instant + double(seconds)};
}

std::optional<double> instantX(const QRectF& rect, const RealTimeWindow& window, float seconds,
                               const QDateTime& instant) {
  if (!instant.isValid()) return std::nullopt;
  const double t = secondsSince1970(instant);
  if (!(window.start <= t && t <= window.end)) return std::nullopt;
  return rect.x() + (t - window.start) * (rect.width() / double(seconds));
}

std::optional<double> channelLatency(const SeismogramRecord& record, float now) {
  if (record.npts() < 1) return {};
  const double seconds = double(now) - double(record.e());
  return std::isfinite(seconds) ? std::optional(seconds) : std::nullopt;
}

double markerTop(const QRectF& rect) { return topOf(rect) + kTextRise - kMarkerDrop; }

double markerBottom(const QRectF& rect) { return rect.y() + kScaleRoom; }

} // namespace xov
