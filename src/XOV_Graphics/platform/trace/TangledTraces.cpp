#include "XOV_Graphics/platform/trace/TangledTraces.h"

#include "XOV_Graphics/base/Spares.h"
#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/platform/trace/InkBits.h"
#include "XOV_Graphics/platform/trace/TangledPoints.h"
#include "XOV_Graphics/platform/trace/TangledStroke.h"
#include "XOV_Graphics/platform/trace/TraceInk.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace xov {

namespace {

constexpr double kScaleTolerance = 1e-6;

/// The scale of a transform that keeps circles round.
std::optional<double> roundScale(const QTransform& transform) {
  const double scale = std::hypot(transform.m11(), transform.m12());
  if (!transform.isAffine() || !(scale > 0) || !std::isfinite(scale)) return std::nullopt;
  const double tolerance = kScaleTolerance * scale;
  const double mirror = transform.determinant() < 0 ? -1 : 1;
  const bool isRound = std::abs(transform.m22() - mirror * transform.m11()) <= tolerance &&
                       std::abs(transform.m21() + mirror * transform.m12()) <= tolerance;
  return isRound ? std::optional(scale) : std::nullopt;
}

// What a strip is drawn with.
struct Desk {
  InkBits bits;
  std::vector<std::int32_t> changes;

  explicit Desk(int rows) : bits(rows), changes((std::size_t(rows) + 1) * kInkColumns) {}
};

} // namespace

bool strokeTangledTraces(const PixelTarget& target, std::span<const Trace> traces, const QTransform& viewToDevice,
                         const QRect& clip, double lineWidth, const QColor& color) {
  const std::optional<double> scale = roundScale(viewToDevice);
  if (!scale) return false;
  const double radius = lineWidth * *scale / 2;
  const QRect visible = clip & QRect(0, 0, target.width, target.height);
  const TraceInk ink(color);
  if (target.bits == nullptr || visible.isEmpty() || !(radius > 0) || ink.isInvisible()) return true;
  std::vector<TangledPoints> lines;
  lines.reserve(traces.size());
  for (const Trace& trace : traces) {
    if (!trace.isEmpty()) lines.emplace_back(trace, viewToDevice, QRectF(visible), radius);
  }

  const std::ptrdiff_t pixelsPerLine = target.bytesPerLine / std::ptrdiff_t(sizeof(std::uint32_t));
  Spares<Desk> desks([&] { return Desk(visible.height()); });
  const int strips = (visible.width() + kInkColumns - 1) / kInkColumns;
  runTasks(strips, TaskStart::FirstAlone, [&](int strip) {
    const auto desk = desks.take();
    InkBits& bits = desk->bits;
    TangledStroke stroke(radius, bits);
    const int left = visible.left() + strip * kInkColumns;
    bits.reset(std::min(kInkColumns, visible.right() + 1 - left));
    const QPointF corner(left, visible.top());
    const auto addSegment = [&](const TangledPoints::Segment& segment) {
      const QPointF from = segment.from - corner, to = segment.to - corner;
      stroke.add({{from.x(), from.y()}, {to.x(), to.y()}, segment.opens, segment.closes});
      return !bits.isFull();
    };
    for (const TangledPoints& line : lines) {
      if (!line.forEachSegment(left, left + bits.columns(), addSegment)) break;
    }
    const RowRange rows = bits.takeChanges(desk->changes.data());
    uchar* const pixels = target.bits + (visible.top() + rows.first) * target.bytesPerLine;
    ink.lay(desk->changes.data(), rows, InkBits::kPlaces, {0, bits.columns(), bits.columns()},
            reinterpret_cast<std::uint32_t*>(pixels) + left, pixelsPerLine);
  });
  return true;
}

} // namespace xov
