#include "XOV_Graphics/platform/trace/TraceReduction.h"

#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/platform/trace/TraceClip.h"
#include "XOV_Graphics/platform/trace/TraceColumns.h"
#include "XOV_Graphics/platform/trace/TraceLobes.h"
#include "XOV_Graphics/platform/trace/TraceProjection.h"

#include <algorithm>

namespace xov {

namespace {

constexpr int kColumnsTogether = 512; // found by one thread

// A line that is cut at the box no longer tells where its lobes begin.
TraceClip clipFor(Wanted wanted, const QRectF& box) {
  constexpr QRectF kEverything(-kFarAway, -kFarAway, 2 * kFarAway, 2 * kFarAway);
  return {wanted == Wanted::Lobes ? kEverything : box, kPaperTraceGrid,
          wanted == Wanted::Enclosed ? TraceClip::Shape::Polygon : TraceClip::Shape::Line};
}

// Points are found on several threads and cut off at the box in their order.
std::vector<QPolygonF> reduceInside(const Trace& trace, const PageColumns& page, Wanted wanted) {
  if (!(page.columnWidth > 0) || trace.isEmpty() || !(page.box.width() > 0) || !(page.box.height() > 0)) return {};
  const TraceProjection projection(trace, QTransform(), 0, 0);
  if (projection.isEmpty()) return {};
  const std::vector<std::int64_t> borders = TraceColumns(trace, projection, page, wanted).parts(kColumnsTogether);
  std::vector<PointList> parts(borders.size() - 1);
  runTasks(int(parts.size()), TaskStart::FirstAlone, [&](int k) {
    const auto part = std::size_t(k);
    parts[part] = TraceColumns(trace, projection, page, wanted).pointsOf(borders[part], borders[part + 1]);
  });
  TraceClip clip = clipFor(wanted, page.box);
  for (const PointList& part : parts)
    part.passOn(clip);
  return clip.takeLines();
}

} // namespace

std::vector<QPolygonF> reduceTrace(const Trace& trace, double columnWidth, const QRectF& clip, double margin) {
  const QRectF inside = clip.normalized();
  return reduceInside(trace, {columnWidth, inside.left(), inside.adjusted(-margin, -margin, margin, margin)},
                      Wanted::Stroke);
}

std::vector<QPolygonF> traceAreas(const Trace& trace, double columnWidth, const QRectF& clip) {
  const QRectF inside = clip.normalized();
  if (trace.area == TraceArea::Enclosed)
    return reduceInside(trace, {columnWidth, inside.left(), inside}, Wanted::Enclosed);
  const double level = std::clamp(trace.yOf(trace.level), -kFarAway, kFarAway);
  const bool upwards = (trace.area == TraceArea::AboveLevel) == (trace.yScale > 0);
  std::vector<QPolygonF> lobes;
  for (const QPolygonF& line : reduceInside(trace, {columnWidth, inside.left(), inside}, Wanted::Lobes))
    appendLobes(line, level, upwards ? LobeSide::Above : LobeSide::Below, lobes);
  TraceClip visible(inside, kPaperTraceGrid, TraceClip::Shape::Polygon);
  for (const QPolygonF& lobe : lobes) {
    for (const QPointF& point : lobe)
      visible.add(point.x(), point.y());
    visible.endLine();
  }
  return visible.takeLines();
}

} // namespace xov
