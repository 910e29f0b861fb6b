#include "XOV_Graphics/platform/trace/StripRuns.h"

#include "XOV_Graphics/base/Spares.h"
#include "XOV_Graphics/base/TaskPool.h"

#include <algorithm>

namespace xov {

namespace {

// A strip that begins with a fineness which does not suit it is drawn twice: in longer runs fewer do.
constexpr int kLongestRun = 4;
constexpr int kShareOfRest = 6;

} // namespace

std::vector<int> runLengths(int strips) {
  std::vector<int> lengths;
  for (int rest = strips; rest > 0; rest -= lengths.back())
    lengths.push_back(std::min((rest + kShareOfRest - 1) / kShareOfRest, kLongestRun));
  return lengths;
}

void drawStrips(TraceStrip strip, int columns, const TraceFineness& start,
                const std::function<StripDrawing()>& makeDrawing) {
  if (columns < 1) return;
  if (columns <= strip.columns) {
    strip.columns = columns;
    TraceFineness fineness = start;
    makeDrawing()(strip, fineness);
    return;
  }
  const int left = strip.left, width = strip.columns, end = left + columns;
  std::vector<int> firsts{0, 1}; // strips that runs begin with, and the number of all
  for (const int length : runLengths((columns + width - 1) / width - 1))
    firsts.push_back(firsts.back() + length);

  TraceFineness settled = start;
  Spares<StripDrawing> drawings(makeDrawing);
  runTasks(int(firsts.size()) - 1, TaskStart::FirstAlone, [&](int run) {
    auto drawing = drawings.take();
    TraceFineness fineness = settled;
    for (int k = firsts[std::size_t(run)]; k < firsts[std::size_t(run) + 1]; ++k) {
      TraceStrip at = strip;
      at.left = left + k * width;
      at.columns = std::min(width, end - at.left);
      (*drawing)(at, fineness);
    }
    if (run == 0) settled = fineness;
  });
}

} // namespace xov
