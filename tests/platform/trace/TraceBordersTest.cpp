#include "XOV_Graphics/platform/trace/TraceBorders.h"

#include <gtest/gtest.h>

#include <vector>

using namespace xov;

namespace {

/// Where borders at 1, 2, … columns lie, in samples from the first one on, of a trace that ends right of them.
std::vector<double> placesOfBorders(const Trace& trace, int borders) {
  const TraceProjection projection(trace, QTransform(), 0, 10);
  const TraceStrip strip{.columns = borders + 1, .rows = 10};
  const TraceCurve curve{projection, {projection.first(), projection.last()}, 0, borders + 1};
  TraceBorders found;
  found.reserve(std::size_t(borders) + 2);
  found.find(curve, strip);
  std::vector<double> places;
  for (int k = 1; k <= borders; ++k)
    places.push_back(found.cuts()[k] - 1 + double(found.fraction()[k]));
  return places;
}

Trace traceThrough(const std::vector<float>& samples) {
  Trace trace;
  trace.samples = samples.data();
  trace.last = std::int64_t(samples.size());
  return trace;
}

} // namespace

// Just below 2¹⁶ sums of 1/100 s grow by 3/256 s, beyond by 2/256: at 256 columns a second the samples lie at these.
TEST(TraceBorders, lieOnTheSegmentsOfPiecesWithStepsOfTheirOwn) {
  const std::vector<double> columns{0, 3, 6, 9, 12, 14, 16, 18};
  const std::vector<float> samples(columns.size());
  Trace trace = traceThrough(samples);
  trace.tOrigin = 65536 - 12.0F / 256;
  trace.time = TraceTime::accumulated(trace.tOrigin, 0.01F);
  trace.xScale = 256;
  std::vector<double> expected;
  for (std::size_t i = 1; i < columns.size(); ++i) {
    const double width = columns[i] - columns[i - 1];
    for (double along = 1; along <= width; ++along)
      expected.push_back(double(i - 1) + along / width);
  }
  const std::vector<double> places = placesOfBorders(trace, 17);
  for (std::size_t k = 0; k < places.size(); ++k)
    EXPECT_NEAR(places[k], expected[k], 1e-5) << "at column " << k + 1;
}

// Samples 3/256 s apart, the last at 2¹⁶ s in a piece of its own: 65536.005 s after the origin, which single
// precision rounds up to 65536 + 2/256. At 30 columns a second and with the 16th border 0.2 columns right of 2¹⁶ s,
// its piece lies at 15.95 and the sample at 16.034. The one before is 3/256 - 1/256 s left of 2¹⁶ s, at 15.566.
TEST(TraceBorders, mayLieBetweenTheEndOfThePiecesAndTheLastSample) {
  const std::vector<float> samples(44);
  Trace trace = traceThrough(samples);
  trace.tOrigin = -0.005F;
  trace.time = TraceTime::accumulated(65536 - 43 * 3.0F / 256, 0.01F);
  trace.xScale = 30;
  trace.xOffset = 16 - 0.2 - 65536 * 30;
  const double before = 15.8 - 60.0 / 256, last = 15.8 + 60.0 / 256;
  EXPECT_NEAR(placesOfBorders(trace, 16).back(), 42 + (16 - before) / (last - before), 1e-5);
}

// Samples 3 to 5 lie at column 4: what is left of that border ends at the first of them.
TEST(TraceBorders, ofSamplesAtOneTimeLieAtTheFirst) {
  const std::vector<float> samples(8), times{0, 1, 2, 4, 4, 4, 5, 6};
  Trace trace = traceThrough(samples);
  trace.time = TraceTime::explicitValues(times.data());
  EXPECT_EQ(placesOfBorders(trace, 5), (std::vector<double>{1, 2, 2.5, 3, 6}));
}
