#include "XOV_Graphics/platform/trace/TraceColumns.h"

#include "XOV_Graphics/platform/trace/TraceReduction.h"
#include "tests/support/TracePictures.h"
#include "tests/support/TraceSignals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace xov;

namespace {

constexpr int kColumns = 7;
constexpr int kAllColumns = 1 << 20;

struct Found {
  std::size_t parts = 0;
  std::vector<QPolygonF> lines;
};

Found foundInParts(const Trace& trace, const PageColumns& page, Wanted wanted, int columns) {
  const TraceProjection projection(trace, QTransform(), 0, 0);
  const std::vector<std::int64_t> borders = TraceColumns(trace, projection, page, wanted).parts(columns);
  TraceClip clip(page.box, kPaperTraceGrid,
                 wanted == Wanted::Enclosed ? TraceClip::Shape::Polygon : TraceClip::Shape::Line);
  for (std::size_t k = 0; k + 1 < borders.size(); ++k)
    TraceColumns(trace, projection, page, wanted).pointsOf(borders[k], borders[k + 1]).passOn(clip);
  return {borders.size() - 1, clip.takeLines()};
}

/// The same points come of parts of a few columns each as of all columns at once.
void expectSamePoints(const Trace& trace, const PageColumns& page) {
  for (const Wanted wanted : {Wanted::Stroke, Wanted::Enclosed, Wanted::Lobes}) {
    const Found few = foundInParts(trace, page, wanted, kColumns),
                all = foundInParts(trace, page, wanted, kAllColumns);
    const auto differ = std::ranges::mismatch(few.lines, all.lines);
    EXPECT_TRUE(few.lines == all.lines) << "from line " << differ.in1 - few.lines.begin() << " of "
                                        << few.lines.size();
    EXPECT_GT(few.parts, 10U);
    EXPECT_LE(all.parts, 2U);
  }
}

} // namespace

TEST(TraceColumns, giveTheSamePointsInPartsAsAtOnce) {
  std::mt19937 random(31);
  for (const double perPoint : {0.4, 5.0, 90.0, 700.0}) {
    for (const Signal& signal : signalKinds()) {
      SCOPED_TRACE(::testing::Message() << signal.name << ", " << perPoint << " samples a point");
      const std::vector<float> samples = samplesOf(signal, perPoint, 60, random);
      Trace trace = traceOf(samples, 1 / perPoint);
      expectSamePoints(trace, {kPaperTraceColumn, 0, QRectF(-5, -1000, 100, 2000)});
      trace.clampLow = -0.5F;
      // A page that begins and ends within the trace, of columns that no binary fraction holds.
      expectSamePoints(trace, {0.3, 10, QRectF(10.1, -1, 40, 2)});
    }
  }
}

TEST(TraceColumns, areOnePartWhereTimesGoBack) {
  const std::vector<float> samples{1, 2, 3, 4}, times{0, 30, 20, 90};
  Trace trace;
  trace.samples = samples.data();
  trace.last = 4;
  trace.time = TraceTime::explicitValues(times.data());
  const TraceProjection projection(trace, QTransform(), 0, 0);
  const PageColumns page{1, 0, QRectF(0, 0, 100, 100)};
  EXPECT_EQ(TraceColumns(trace, projection, page, Wanted::Stroke).parts(2), (std::vector<std::int64_t>{0, 4}));
}
