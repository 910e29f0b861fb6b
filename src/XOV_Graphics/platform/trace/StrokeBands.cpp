#include "XOV_Graphics/platform/trace/StrokeBands.h"

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/base/Threads.h"
#include "XOV_Graphics/platform/trace/StrokeRaster.h"

#include <algorithm>
#include <vector>

namespace xov {

namespace {

constexpr std::size_t kFewestStrokes = 64;
constexpr std::int64_t kPlacedTogether = 256;   // strokes
constexpr std::int64_t kForeseenSamples = 2048; // samples of a stroke that are asked for while another one is drawn

/// Where a stroke lies.
struct StrokePlace {
  StrokeRaster::Strips strips;
  bool fits = false;

  bool isShort(int widest) const {
    return fits && (strips.count == 0 || (strips.width == widest && strips.count <= StrokeRaster::kFewStrips));
  }
};

} // namespace

bool areWorthBands(std::size_t strokes) { return threadCount() > 1 && strokes >= kFewestStrokes; }

void foreseeStroke(std::span<const Trace> traces) {
  if (traces.size() != 1 || traces.front().size() > kForeseenSamples || traces.front().source != nullptr) return;
  const Trace& trace = traces.front();
  for (std::int64_t next = trace.first; next < trace.last; next += kCacheLine)
    XOV_PREFETCH(trace.samples + next, 0, 2);
}

void strokeInBands(const PixelTarget& target, const TraceStrokes& strokes, const QTransform& viewToDevice,
                   const QRect& clip, const std::function<void(std::size_t)>& drawOtherwise) {
  const auto makeRaster = [&] { return StrokeRaster(target, viewToDevice, clip, strokes.lineWidth()); };
  const auto take = [&](StrokeRaster& raster, std::size_t k) {
    return raster.take(strokes.traces(k), strokes.color(k));
  };
  std::vector<StrokePlace> places(strokes.count());
  runParts(std::int64_t(places.size()), kPlacedTogether, [&](std::int64_t first, std::int64_t last) {
    StrokeRaster raster = makeRaster();
    for (auto k = std::size_t(first); k < std::size_t(last); ++k) {
      places[k].fits = take(raster, k);
      places[k].strips = raster.strips();
    }
  });

  StrokeRaster wide = makeRaster();
  const int widest = wide.widestStrip();
  const QRect visible = clip & QRect(0, 0, target.width, target.height);
  std::vector<std::vector<std::size_t>> bands(widest > 0 ? std::size_t((visible.width() - 1) / widest + 1) : 0);
  for (std::size_t next = 0; next < places.size();) {
    if (!places[next].fits) {
      drawOtherwise(next++);
      continue;
    }
    if (!places[next].isShort(widest)) {
      take(wide, next++);
      wide.draw();
      wide.finish();
      continue;
    }
    for (std::vector<std::size_t>& band : bands)
      band.clear();
    for (; next < places.size() && places[next].isShort(widest); ++next) {
      const StrokeRaster::Strips& strips = places[next].strips;
      for (int strip = 0; strip < strips.count; ++strip)
        bands[std::size_t((strips.left - visible.left()) / widest + strip)].push_back(next);
    }
    runTasks(int(bands.size()), TaskStart::FirstAlone, [&](int band) {
      StrokeRaster raster = makeRaster();
      const std::vector<std::size_t>& within = bands[std::size_t(band)];
      for (std::size_t i = 0; i < within.size(); ++i) {
        if (i + 1 < within.size()) foreseeStroke(strokes.traces(within[i + 1]));
        take(raster, within[i]);
        raster.drawStrip(band - (places[within[i]].strips.left - visible.left()) / widest);
      }
      raster.finish();
    });
  }
}

} // namespace xov
