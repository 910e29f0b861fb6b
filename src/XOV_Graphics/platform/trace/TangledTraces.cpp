#include "XOV_Graphics/platform/trace/TangledTraces.h"

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

  InkBits bits(visible.height());
  TangledStroke stroke(radius, bits);
  std::vector<std::int32_t> changes((std::size_t(visible.height()) + 1) * kInkColumns);
  const std::ptrdiff_t pixelsPerLine = target.bytesPerLine / std::ptrdiff_t(sizeof(std::uint32_t));
  for (int left = visible.left(); left <= visible.right(); left += kInkColumns) {
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
    const RowRange rows = bits.takeChanges(changes.data());
    uchar* const pixels = target.bits + (visible.top() + rows.first) * target.bytesPerLine;
    ink.lay(changes.data(), rows, InkBits::kPlaces, bits.columns(), reinterpret_cast<std::uint32_t*>(pixels) + left,
            pixelsPerLine);
  }
  return true;
}

} // namespace xov
