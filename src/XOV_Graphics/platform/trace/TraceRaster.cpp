#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include "XOV_Graphics/platform/trace/StripRuns.h"
#include "XOV_Graphics/platform/trace/TraceCoverage.h"
#include "XOV_Graphics/platform/trace/TraceEnclosure.h"
#include "XOV_Graphics/platform/trace/TraceEnvelope.h"
#include "XOV_Graphics/platform/trace/TraceFineness.h"
#include "XOV_Graphics/platform/trace/TraceInk.h"
#include "XOV_Graphics/platform/trace/TraceLayers.h"
#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace xov {

namespace {

constexpr double kLargestRadius = 64; // pixels; the work for a sub-column grows with the radius
constexpr double kBeyondPen = 2;      // pixels that the ink of a sub-column may lie further away
constexpr double kScaleTolerance = 1e-6;
constexpr int kWidestStrip = 64;    // columns
constexpr std::size_t kJudged = 16; // traces, by and large, whose ink decides about the fineness of a strip
constexpr double kFillRadius = 1;   // areas are as fine as the ink of a pen of this many pixels
// Where a pixel holds more samples than this, a fill stays as coarse as it begins: the curve runs up and down so
// often that what it encloses is seen outside of a stroke's ink alone.
constexpr double kDenseFill = 12;
constexpr int kLayerBudget = 1 << 17; // intervals of a strip that stay in a fast cache

/// The scale of a transform that keeps x rightwards, may mirror y and scales both alike.
std::optional<double> uniformScale(const QTransform& transform) {
  const double scale = transform.m11();
  if (!transform.isAffine() || !(scale > 0) || !std::isfinite(scale)) return std::nullopt;
  const double tolerance = kScaleTolerance * scale;
  const bool turned = std::abs(transform.m12()) > tolerance || std::abs(transform.m21()) > tolerance;
  if (turned || !(std::abs(std::abs(transform.m22()) - scale) <= tolerance)) return std::nullopt;
  return scale;
}

double samplesPerPixel(const std::vector<TraceProjection>& projections) {
  double samples = 0, pixels = 0;
  for (const TraceProjection& projection : projections) {
    samples += double(projection.last() - projection.first());
    pixels += projection.column(projection.last() - 1) - projection.column(projection.first());
  }
  return samples / std::max(pixels, 1.0);
}

/// The traces as they lie on the picture, without those that show nothing; nothing when the columns of one do not
/// grow.
std::optional<std::vector<TraceProjection>> projectionsOf(std::span<const Trace> traces,
                                                          const QTransform& viewToDevice, const QRect& visible) {
  std::vector<TraceProjection> projections;
  projections.reserve(traces.size());
  for (const Trace& trace : traces) {
    if (trace.isEmpty()) continue;
    projections.emplace_back(trace, viewToDevice, visible.top(), visible.height());
    if (!projections.back().grows()) return std::nullopt;
    if (projections.back().isEmpty()) projections.pop_back();
  }
  return projections;
}

/// Strips become narrower as the number of lines grows, so that all of a strip's ink stays at hand.
int stripColumns(int perColumn, std::size_t traces, double radius) {
  const auto lines = static_cast<int>(std::min<std::size_t>(traces, kLayerBudget));
  const int wished = kLayerBudget / (perColumn * std::max(lines, 1));
  const int narrowest = std::max(kInkColumns, static_cast<int>(2 * radius)); // else most work is done twice
  return std::clamp(wished, narrowest, std::max(narrowest, kWidestStrip)) / kInkColumns * kInkColumns;
}

/// Envelopes of one pen by their fineness. Those of a thread's last stroke are kept for its next one, which is mostly
/// of the same pen.
class Envelopes {
public:
  TraceEnvelope& of(const TraceStrip& strip) {
    if (strip.radius != radius_ || strip.columns > columns_) {
      byFineness_.clear();
      radius_ = strip.radius;
      columns_ = strip.columns;
    }
    TraceStrip widest = strip;
    widest.columns = columns_;
    TraceEnvelope& envelope = byFineness_.try_emplace(strip.perColumn, widest).first->second;
    envelope.moveTo(strip);
    return envelope;
  }

private:
  double radius_ = 0;
  int columns_ = 0;
  std::map<int, TraceEnvelope> byFineness_;
};

/// The columns that traces may ink.
struct Extent {
  double left = std::numeric_limits<double>::infinity();
  double right = -left;

  Extent(const std::vector<TraceProjection>& projections, double reach) {
    for (const TraceProjection& projection : projections) {
      left = std::min(left, projection.column(projection.first()) - reach);
      right = std::max(right, projection.column(projection.last() - 1) + reach);
    }
  }
  bool touches(int column, int columns) const { return right >= column && left <= column + columns; }

  /// Marks the columns of a strip that may have ink.
  void markUsed(TraceStrip& strip) const {
    const auto clamped = [&](double column) {
      return static_cast<int>(std::clamp(column, 0.0, double(strip.columns)));
    };
    strip.firstUsed = clamped(std::floor(left) - strip.left - 1);
    strip.lastUsed = clamped(std::floor(right) - strip.left + 2);
  }

  /// Moves a picture's first strip on to the first one with ink, and returns the columns from there to the last one.
  int beginAt(const QRect& visible, TraceStrip& first) const {
    int end = visible.left();
    bool isFound = false;
    for (int at = visible.left(); at <= visible.right(); at += first.columns) {
      if (!touches(at, std::min(first.columns, visible.right() + 1 - at))) continue;
      if (!std::exchange(isFound, true)) first.left = at;
      end = std::min(at + first.columns, visible.right() + 1);
    }
    return end - first.left;
  }
};

/// Lays the ink of a strip over its pixels.
void layStrip(TraceCoverage& coverage, const TraceStrip& strip, const TraceInk& ink, const PixelTarget& target,
              int top) {
  const std::ptrdiff_t pixelsPerLine = target.bytesPerLine / std::ptrdiff_t(sizeof(std::uint32_t));
  const int firstGroup = strip.firstUsed / kInkColumns * kInkColumns;
  for (int column = firstGroup; column < strip.lastUsed; column += kInkColumns) {
    const RowRange rows = coverage.unite(strip, column);
    uchar* const line = target.bits + (top + rows.first) * target.bytesPerLine;
    const InkedColumns columns{std::max(strip.firstUsed - column, 0), std::min(strip.lastUsed - column, kInkColumns),
                               std::min(strip.columns - column, kInkColumns)};
    ink.lay(coverage.changes(), rows, strip.perColumn, columns,
            reinterpret_cast<std::uint32_t*>(line) + strip.left + column, pixelsPerLine);
  }
}

/// True when x goes right and y down or up, whatever the scales.
bool isUpright(const QTransform& transform) {
  return transform.isAffine() && transform.m12() == 0 && transform.m21() == 0 && transform.m11() > 0 &&
         std::isfinite(transform.m11()) && std::isfinite(transform.m22());
}

} // namespace

bool strokeTraces(const PixelTarget& target, std::span<const Trace> traces, const QTransform& viewToDevice,
                  const QRect& clip, double lineWidth, const QColor& color) {
  const std::optional<double> scale = uniformScale(viewToDevice);
  if (!scale) return false;
  const double radius = lineWidth * *scale / 2;
  if (radius > kLargestRadius) return false;
  const QRect visible = clip & QRect(0, 0, target.width, target.height);
  const auto projections = projectionsOf(traces, viewToDevice, visible);
  if (!projections) return false;
  const TraceInk ink(color);
  if (target.bits == nullptr || visible.isEmpty() || projections->empty() || !(radius > 0) || ink.isInvisible()) {
    return true;
  }

  const TraceFineness fineness(radius, projections->size(), samplesPerPixel(*projections));
  TraceStrip first{visible.left(), 0, 0, visible.height(), radius};
  first.columns = std::min(stripColumns(fineness.subColumns(), projections->size(), radius), visible.width());
  const std::size_t judgedEvery = projections->size() / kJudged + 1;
  const Extent extent(*projections, radius + kBeyondPen);
  drawStrips(first, extent.beginAt(visible, first), fineness, [&] {
    return [&, layers = std::make_shared<TraceLayers>(),
            coverage = std::make_shared<TraceCoverage>(first.rows)](TraceStrip& strip, TraceFineness& fine) {
      static thread_local Envelopes envelopes;
      TraceEnvelope* envelope = nullptr;
      extent.markUsed(strip);
      do {
        strip.perColumn = fine.subColumns();
        envelope = &envelopes.of(strip);
        layers->reset(strip);
        for (std::size_t i = 0; i < projections->size(); ++i)
          envelope->addTrace((*projections)[i], *layers, i % judgedEvery == 0);
      } while (fine.refine(envelope->roughness(), double(strip.subColumns()) * strip.rows));
      layers->narrowUsed(strip);
      coverage->take(*layers);
      layStrip(*coverage, strip, ink, target, visible.top());
    };
  });
  return true;
}

bool fillTraces(const PixelTarget& target, std::span<const Trace> traces, const QTransform& viewToDevice,
                const QRect& clip, InsideRule rule, const QColor& color) {
  if (!isUpright(viewToDevice)) return false;
  const QRect visible = clip & QRect(0, 0, target.width, target.height);
  const auto projections = projectionsOf(traces, viewToDevice, visible);
  if (!projections) return false;
  const TraceInk ink(color);
  if (target.bits == nullptr || visible.isEmpty() || projections->empty() || ink.isInvisible()) return true;

  const TraceEnclosure areas(*projections, rule);
  const double density = samplesPerPixel(*projections);
  const TraceFineness fineness(kFillRadius);
  TraceStrip first{visible.left(), 0, 0, visible.height()};
  first.columns = std::min(stripColumns(fineness.subColumns(), projections->size(), 0), visible.width());
  const Extent extent(*projections, 0);
  drawStrips(first, extent.beginAt(visible, first), fineness, [&] {
    return [&, enclosure = areas,
            coverage = std::make_shared<TraceCoverage>(first.rows)](TraceStrip& strip, TraceFineness& fine) mutable {
      const auto looks = [&] {
        InkRoughness roughness;
        const std::size_t layers = enclosure.lows().size();
        for (std::size_t layer = 0; layer < layers; ++layer) {
          const bool isJudged = layer % (layers / kJudged + 1) == 0;
          roughness.include(enclosure.lows()[layer], enclosure.highs()[layer], strip.subColumns(), strip.rows,
                            isJudged ? InkRoughness::Judged::Exact : InkRoughness::Judged::Not);
        }
        return roughness;
      };
      extent.markUsed(strip);
      do {
        strip.perColumn = static_cast<int>(std::bit_ceil(static_cast<unsigned>(fine.subColumns())));
        enclosure.find(strip);
      } while (density < kDenseFill && fine.refine(looks(), double(strip.subColumns()) * strip.rows));
      coverage->takeInOrder(enclosure.lows(), enclosure.highs());
      layStrip(*coverage, strip, ink, target, visible.top());
    };
  });
  return true;
}

} // namespace xov
