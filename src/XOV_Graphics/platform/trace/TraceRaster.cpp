#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include "XOV_Graphics/platform/trace/StripRuns.h"
#include "XOV_Graphics/platform/trace/StrokeBands.h"
#include "XOV_Graphics/platform/trace/StrokeRaster.h"
#include "XOV_Graphics/platform/trace/TraceEnclosure.h"
#include "XOV_Graphics/platform/trace/TraceStrips.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <memory>
#include <vector>

namespace xov {

namespace {

constexpr double kFillRadius = 1;        // areas are as fine as the ink of a pen of this many pixels
constexpr std::size_t kJudgedAreas = 16; // by and large, whose ink decides about the fineness of a strip
// Where a pixel holds more samples than this, a fill stays as coarse as it begins: the curve runs up and down so
// often that what it encloses is seen outside of a stroke's ink alone.
constexpr double kDenseFill = 12;

/// True when x goes right and y down or up, whatever the scales.
bool isUpright(const QTransform& transform) {
  return transform.isAffine() && transform.m12() == 0 && transform.m21() == 0 && transform.m11() > 0 &&
         std::isfinite(transform.m11()) && std::isfinite(transform.m22());
}

} // namespace

bool strokeTraces(const PixelTarget& target, std::span<const Trace> traces, const QTransform& viewToDevice,
                  const QRect& clip, double lineWidth, const QColor& color) {
  StrokeRaster raster(target, viewToDevice, clip, lineWidth);
  if (!raster.take(traces, color)) return false;
  raster.draw();
  raster.finish();
  return true;
}

void strokeTraces(const PixelTarget& target, const TraceStrokes& strokes, const QTransform& viewToDevice,
                  const QRect& clip, const std::function<void(std::size_t)>& drawOtherwise) {
  if (areWorthBands(strokes.count())) return strokeInBands(target, strokes, viewToDevice, clip, drawOtherwise);
  StrokeRaster raster(target, viewToDevice, clip, strokes.lineWidth());
  for (std::size_t k = 0; k < strokes.count(); ++k) {
    if (k + 1 < strokes.count()) foreseeStroke(strokes.traces(k + 1));
    if (raster.take(strokes.traces(k), strokes.color(k))) {
      raster.draw();
      continue;
    }
    raster.finish();
    drawOtherwise(k);
  }
  raster.finish();
}

bool fillTraces(const PixelTarget& target, std::span<const Trace> traces, const QTransform& viewToDevice,
                const QRect& clip, InsideRule rule, const QColor& color) {
  if (!isUpright(viewToDevice)) return false;
  const QRect visible = clip & QRect(0, 0, target.width, target.height);
  std::vector<TraceProjection> projections;
  if (!projectTraces(traces, viewToDevice, visible, projections)) return false;
  const TraceInk ink(color);
  if (target.bits == nullptr || visible.isEmpty() || projections.empty() || ink.isInvisible()) return true;

  const TraceEnclosure areas(projections, rule);
  const double density = samplesPerPixel(projections);
  const TraceFineness fineness(kFillRadius);
  TraceStrip first{visible.left(), 0, 0, visible.height()};
  first.columns = std::min(stripColumns(fineness.subColumns(), projections.size(), 0), visible.width());
  const InkExtent extent(projections, 0);
  drawStrips(first, extent.beginAt(visible, first), fineness, [&] {
    return [&, enclosure = areas,
            coverage = std::make_shared<TraceCoverage>(first.rows)](TraceStrip& strip, TraceFineness& fine) mutable {
      const auto looks = [&] {
        InkRoughness roughness;
        const std::size_t layers = enclosure.lows().size();
        for (std::size_t layer = 0; layer < layers; ++layer) {
          const bool isJudged = layer % (layers / kJudgedAreas + 1) == 0;
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
