#include "XOV_Graphics/platform/trace/TraceReduction.h"

#include "tests/support/TraceReference.h"
#include "tests/support/TraceSignals.h"

#include <gtest/gtest.h>

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <numeric>
#include <random>
#include <set>
#include <vector>

using namespace xov;

namespace {

constexpr int kGrid = 29; // places of the reference along a pixel's side
const float kNan = std::numeric_limits<float>::quiet_NaN();

Trace traceOf(const std::vector<float>& samples, double xScale = 1) {
  Trace trace;
  trace.samples = samples.data();
  trace.last = std::int64_t(samples.size());
  trace.xScale = xScale;
  return trace;
}

QPolygonF onePolyline(const std::vector<QPolygonF>& lines) {
  EXPECT_EQ(lines.size(), 1U);
  return lines.empty() ? QPolygonF() : lines.front();
}

/// The polylines as a trace of its own, for the reference.
std::vector<double> coverageOf(const std::vector<QPolygonF>& lines, double scale, int width, int height) {
  std::vector<float> times, values;
  for (const QPolygonF& line : lines) {
    for (const QPointF& point : line) {
      times.push_back(float(point.x()));
      values.push_back(float(point.y()));
    }
    times.push_back(times.back());
    values.push_back(kNan);
  }
  Trace trace = traceOf(values);
  trace.time = TraceTime::explicitValues(times.data());
  return referenceCoverage({&trace, 1}, QTransform::fromScale(scale, scale), 1, width, height, kGrid);
}

} // namespace

TEST(TraceReduction, keepsEveryPointWhereSamplesAreFew) {
  const std::vector<float> samples{1, 4, 2, 8};
  EXPECT_EQ(onePolyline(reduceTrace(traceOf(samples, 10), 0.25, QRectF(0, 0, 100, 100), 1)),
            (QPolygonF{{0, 1}, {10, 4}, {20, 2}, {30, 8}}));
}

TEST(TraceReduction, keepsFirstLowestHighestAndLastOfEachColumnInTheirOrder) {
  // Two columns of a width of 1 point, eight samples each.
  const std::vector<float> samples{5, 6, 9, 7, 1, 3, 2, 4, 4, 3, 0, 3, 4, 8, 5, 6};
  const QPolygonF line = onePolyline(reduceTrace(traceOf(samples, 0.125), 1, QRectF(0, 0, 100, 100), 1));
  // Indices 0, 2 (highest), 4 (lowest), 7; then 8, 10 (lowest), 13 (highest), 15; x = index / 8 to 1/100.
  EXPECT_EQ(line, (QPolygonF{{0, 5}, {0.25, 9}, {0.5, 1}, {0.88, 4}, {1, 4}, {1.25, 0}, {1.63, 8}, {1.88, 6}}));
}

TEST(TraceReduction, breaksTheLineAtGaps) {
  const std::vector<float> samples{1, 2, kNan, 3, kNan, 4, 5};
  const std::vector<QPolygonF> lines = reduceTrace(traceOf(samples), 0.25, QRectF(-1, -1, 100, 100), 1);
  ASSERT_EQ(lines.size(), 2U); // the single sample between the gaps draws nothing
  EXPECT_EQ(lines[0], (QPolygonF{{0, 1}, {1, 2}}));
  EXPECT_EQ(lines[1], (QPolygonF{{5, 4}, {6, 5}}));
}

TEST(TraceReduction, unitesManyShortLinesOfAColumnWhereTheyOverlap) {
  // Five lines in a column of 10 points. Four overlap: the lowest of their samples is 0, the highest 5; of those with
  // a join, which are neither first nor last in a line, 1 and 4. The fifth has no join.
  const std::vector<float> samples{6, kNan, 0, 4,    1, 2, kNan, 1, 3,    2, 5, kNan, 2,
                                   3, 3,    2, kNan, 3, 2, 1.5F, 2, kNan, 9, 8, kNan, 7};
  const std::vector<QPolygonF> lines = reduceTrace(traceOf(samples, 0.25), 10, QRectF(0, -1, 100, 100), 1);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], (QPolygonF{{0.5, 0}, {0.75, 4}, {1, 1}, {2.5, 5}})); // samples 2, 3, 4 and 10
  EXPECT_EQ(lines[1], (QPolygonF{{5.75, 8}, {5.5, 9}}));                   // 23 and 22
}

TEST(TraceReduction, showsThousandsOfShortLinesAsTheyAre) {
  std::mt19937 random(4);
  std::vector<float> samples(12000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = i % 5 == 0 ? kNan : 12 + 2 * normal(random, 1) + 3 * std::sin(float(i) * 0.002F);
  const Trace trace = traceOf(samples, 0.001);
  const std::vector<QPolygonF> lines = reduceTrace(trace, kPaperTraceColumn, QRectF(0, 0, 12, 24), 1);
  EXPECT_LT(lines.size(), 400U);     // of 2,400, in 48 columns
  const int width = 24, height = 48; // two pixels a point
  const std::vector<double> reduced = coverageOf(lines, 2, width, height);
  const std::vector<double> full =
      referenceCoverage({&trace, 1}, QTransform::fromScale(2, 2), 1, width, height, kGrid);
  double difference = 0, inked = 0;
  for (std::size_t i = 0; i < full.size(); ++i) {
    if (full[i] == 0 && reduced[i] == 0) continue;
    difference += 255 * std::abs(full[i] - reduced[i]);
    ++inked;
  }
  EXPECT_GT(inked, 100);
  EXPECT_LE(difference / inked, 3);
}

TEST(TraceReduction, breaksTheLineAtGapsInsideAColumn) {
  std::vector<float> samples(100);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i);
  samples[40] = kNan;
  const std::vector<QPolygonF> lines = reduceTrace(traceOf(samples, 0.001), 1, QRectF(-1, -1, 200, 200), 1);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], (QPolygonF{{0, 0}, {0.04, 39}}));
  EXPECT_EQ(lines[1], (QPolygonF{{0.04, 41}, {0.1, 99}}));
}

TEST(TraceReduction, cutsLongSegmentsExactlyAtTheBorder) {
  // From (0, 0) to (100, 1e30): the line leaves the box's top at y = 60 with x within 1e-27 of 0.
  const std::vector<float> steep{0, 1e30F};
  EXPECT_EQ(onePolyline(reduceTrace(traceOf(steep, 100), 0.25, QRectF(-10, -10, 120, 60), 10)),
            (QPolygonF{{0, 0}, {0, 60}}));
  // From (0, 10) to (1000, 30): the border x = 110 is crossed at y = 10 + 110 / 50 = 12.2.
  const std::vector<float> flat{10, 30};
  EXPECT_EQ(onePolyline(reduceTrace(traceOf(flat, 1000), 0.25, QRectF(-10, -10, 110, 60), 10)),
            (QPolygonF{{0, 10}, {110, 12.2}}));
}

TEST(TraceReduction, goesAlongTheBorderWhereALineLeavesAndComesBack) {
  const std::vector<float> samples{0, 200, 0};
  // Up along y = 20 x, down along y = 200 - 20 (x - 10); the border is y = 100.
  EXPECT_EQ(onePolyline(reduceTrace(traceOf(samples, 10), 0.25, QRectF(-10, -10, 100, 100), 10)),
            (QPolygonF{{0, 0}, {5, 100}, {15, 100}, {20, 0}}));
}

TEST(TraceReduction, leavesOutWhatLiesOutside) {
  const std::vector<float> samples(1000, 500.0F);
  EXPECT_TRUE(reduceTrace(traceOf(samples), 0.25, QRectF(0, 0, 100, 100), 1).empty());
  Trace away = traceOf(samples);
  away.yOffset = -450;
  away.xOffset = 200;
  EXPECT_TRUE(reduceTrace(away, 0.25, QRectF(0, 0, 100, 100), 1).empty());
}

TEST(TraceReduction, followsTimesThatGoBack) {
  const std::vector<float> samples{0, 1, 2}, times{0, 10, 5};
  Trace trace = traceOf(samples);
  trace.time = TraceTime::explicitValues(times.data());
  EXPECT_EQ(onePolyline(reduceTrace(trace, 0.25, QRectF(-1, -1, 100, 100), 1)), (QPolygonF{{0, 0}, {10, 1}, {5, 2}}));
  Trace mirrored = traceOf(samples, -1);
  mirrored.xOffset = 50;
  EXPECT_EQ(onePolyline(reduceTrace(mirrored, 0.25, QRectF(-1, -1, 100, 100), 1)),
            (QPolygonF{{50, 0}, {49, 1}, {48, 2}}));
}

TEST(TraceReduction, keepsTheFirstValueAndTheClamp) {
  std::vector<float> samples(100, 3.0F);
  samples[50] = 9;
  samples[0] = kNan;
  Trace trace = traceOf(samples, 0.01);
  trace.firstValue = 7.0F;
  trace.clampHigh = 4.0F;
  EXPECT_EQ(onePolyline(reduceTrace(trace, 1, QRectF(-1, -1, 100, 100), 1)),
            (QPolygonF{{0, 7}, {0.01, 3}, {0.49, 3}, {0.5, 4}, {0.51, 3}, {0.99, 3}}));
}

// Without its neighbours the spike would be a triangle from the column's first sample to its last.
TEST(TraceReduction, aSpikeKeepsItsNeighbours) {
  std::vector<float> samples(200, 0.0F);
  samples[30] = 5;
  samples[170] = -5;
  EXPECT_EQ(
      onePolyline(reduceTrace(traceOf(samples, 0.01), 1, QRectF(-1, -10, 100, 20), 1)),
      (QPolygonF{
          {0, 0}, {0.29, 0}, {0.3, 5}, {0.31, 0}, {0.99, 0}, {1, 0}, {1.69, 0}, {1.7, -5}, {1.71, 0}, {1.99, 0}}));
}

// It is a tenth of a point high in a column of one.
TEST(TraceReduction, aSpikeThatIsLowerThanAColumnIsWideDoesNot) {
  std::vector<float> samples(100, 0.0F);
  samples[30] = 0.1F;
  EXPECT_EQ(onePolyline(reduceTrace(traceOf(samples, 0.01), 1, QRectF(-1, -10, 100, 20), 1)),
            (QPolygonF{{0, 0}, {0.3, 0.1}, {0.99, 0}}));
}

// A wave of 100 samples in columns of 50: each holds an extreme, and chords from it to the column's ends would lie up
// to a fifth of the height away: sin 45° - 1/2.
TEST(TraceReduction, aSmoothCurveKeepsItsBend) {
  constexpr double kHeight = 3, kStep = 6.283185307179586 / 100;
  std::vector<float> samples(1000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(kHeight * std::sin(kStep * double(i)));
  const QPolygonF line = onePolyline(reduceTrace(traceOf(samples, 0.01), 0.5, QRectF(-1, -10, 100, 20), 1));
  EXPECT_LE(line.size(), 20 * (4 + 2 * 3));
  double worst = 0;
  qsizetype next = 1;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double x = 0.01 * double(i);
    while (next + 1 < line.size() && line[next].x() < x)
      ++next;
    const QPointF a = line[next - 1], b = line[next];
    const double y = a.y() + (x - a.x()) / (b.x() - a.x()) * (b.y() - a.y());
    worst = std::max(worst, std::abs(y - double(samples[i])));
  }
  // Parts of 25 / 4 samples: at most 1 - cos of half of one, and the rounding to 1/100.
  EXPECT_LE(worst, kHeight * (1 - std::cos(kStep * 3.5)) + 0.01);
}

TEST(TraceReduction, everyColumnKeepsItsExtremes) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  constexpr std::size_t kColumn = 64; // samples of 1/8 point in a column of 8 points
  const std::vector<float> samples = noise(100 * kColumn, 10, seed);
  const QPolygonF line = onePolyline(reduceTrace(traceOf(samples, 0.125), 8, QRectF(0, -100, 800, 200), 1));
  EXPECT_LE(line.size(), 8 * 100); // with the neighbours of extremes that stand alone
  std::vector<double> low(100, 1e9), high(100, -1e9);
  for (const QPointF& point : line) {
    const auto index = std::size_t(std::lround(point.x() / 0.125)); // the rounding to 1/100 is less than half a step
    EXPECT_NEAR(point.y(), double(samples[index]), 0.0051);
    low[index / kColumn] = std::min(low[index / kColumn], point.y());
    high[index / kColumn] = std::max(high[index / kColumn], point.y());
  }
  for (std::size_t column = 0; column < 100; ++column) {
    const auto begin = samples.begin() + std::ptrdiff_t(column * kColumn);
    const auto [least, most] = std::minmax_element(begin, begin + kColumn);
    EXPECT_NEAR(low[column], double(*least), 0.0051);
    EXPECT_NEAR(high[column], double(*most), 0.0051);
  }
}

namespace {

constexpr std::size_t kPaperSamples = 2400;

std::vector<float> spikes() {
  std::vector<float> samples(kPaperSamples, 0.02F);
  for (std::size_t i = 17; i < samples.size(); i += 97)
    samples[i] = i % 2 == 0 ? 3.1F : -2.7F;
  return samples;
}

std::vector<float> wave(double period) {
  std::vector<float> samples(kPaperSamples);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(3.2 * std::sin(6.283185307179586 / period * double(i)));
  return samples;
}

} // namespace

class PaperPicture : public ::testing::TestWithParam<int> {};

TEST_P(PaperPicture, looksLikeAllPointsAt600DotsAnInch) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  constexpr double kDots = 600.0 / 72;
  const std::vector<float> kinds[] = {noise(kPaperSamples, 1.2F, seed), noise(kPaperSamples, 0.1F, seed), spikes(),
                                      wave(160), wave(40)};
  const std::vector<float>& samples = kinds[GetParam()];
  Trace trace = traceOf(samples, 0.012); // 21 samples a quarter point
  trace.yOffset = 4;
  constexpr int kWidth = 200, kHeight = 66;
  const std::vector<double> all =
      referenceCoverage({&trace, 1}, QTransform::fromScale(kDots, kDots), 1, kWidth, kHeight, kGrid);
  const std::vector<double> reduced =
      coverageOf(reduceTrace(trace, 0.25, QRectF(-1, -1, 40, 20), 1), kDots, kWidth, kHeight);
  double difference = 0;
  int inked = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    inked += all[i] > 0 || reduced[i] > 0;
    difference += 255 * std::abs(all[i] - reduced[i]);
  }
  ASSERT_GT(inked, 500);
  EXPECT_LE(difference / inked, 2.0);
}

constexpr const char* kKinds[] = {"noise", "quietNoise", "spikes", "slowWave", "fastWave"};
INSTANTIATE_TEST_SUITE_P(Signals, PaperPicture, ::testing::Range(0, int(std::size(kKinds))),
                         [](const auto& kind) { return std::string(kKinds[kind.param]); });

TEST(TraceReduction, copesWithAbsurdDescriptions) {
  const float largest = std::numeric_limits<float>::max();
  const std::vector<float> samples{largest, -largest, 0, largest, 1, 2, 3, 4, 5};
  const QRectF clip(0, 0, 100, 100);
  for (const double scale : {1e30, 1e300, 0.0, -1e300, double(kNan), double(INFINITY)}) {
    Trace trace = traceOf(samples, scale);
    trace.yScale = scale;
    for (const QPolygonF& line : reduceTrace(trace, 0.25, clip, 1)) {
      for (const QPointF& point : line)
        EXPECT_TRUE(clip.adjusted(-1, -1, 1, 1).contains(point));
    }
  }
  const Trace trace = traceOf(samples);
  EXPECT_TRUE(reduceTrace(trace, 0, clip, 1).empty());
  EXPECT_TRUE(reduceTrace(trace, double(kNan), clip, 1).empty());
  EXPECT_TRUE(reduceTrace(trace, 0.25, QRectF(), 0).empty());
  EXPECT_TRUE(reduceTrace(Trace(), 0.25, clip, 1).empty());
}

namespace {

/// True for an extreme whose neighbours in its column are more than three quarters of the column's range away, which
/// is a quarter point or more.
bool isSpike(const std::vector<QPointF>& points, std::size_t i, std::size_t begin, std::size_t end, double range) {
  const auto isFar = [&](std::size_t other) { return std::abs(points[other].y() - points[i].y()) > 0.75 * range; };
  return range >= 0.25 && (i == begin || isFar(i - 1)) && (i + 1 == end || isFar(i + 1));
}

/// The points on the way between two that are kept: three, where nine looks at the curve only rise or only fall, none
/// of them by more than half of the way, and it bends by more than 1/50 point. Noise looks like that by chance.
std::vector<std::size_t> pointsOfBend(const std::vector<QPointF>& points, std::size_t from, std::size_t to) {
  const std::size_t count = to - from;
  const double rise = points[to].y() - points[from].y();
  if (count < 8) return {};
  for (std::size_t look = 0; look < 8; ++look) {
    const double step = points[from + count * (look + 1) / 8].y() - points[from + count * look / 8].y();
    if (step * rise < 0 || std::abs(step) > std::abs(rise) / 2) return {};
  }
  const std::size_t middle = from + count / 2;
  const double chord = points[from].y() + rise * double(middle - from) / double(count);
  if (std::abs(points[middle].y() - chord) <= 0.02) return {};
  return {from + count / 4, from + count / 2, from + count * 3 / 4};
}

/// The rule spelled out: four points of each column with more than four samples and the neighbours of
/// spikes and what bends between them, all points of the others; to 1/100
/// and without repeats.
QPolygonF reducedByTheRule(const Trace& trace, double width) {
  const std::vector<QPointF> points = trace.points();
  QPolygonF line;
  const auto add = [&line](QPointF point) {
    const QPointF rounded(std::round(point.x() * 100) / 100, std::round(point.y() * 100) / 100);
    if (line.isEmpty() || line.last() != rounded) line << rounded;
  };
  for (std::size_t begin = 0, end = 0; begin < points.size(); begin = end) {
    while (end < points.size() && std::floor(points[end].x() / width) == std::floor(points[begin].x() / width))
      ++end;
    const auto lower = [&points](std::size_t a, std::size_t b) { return points[a].y() < points[b].y(); };
    std::vector<std::size_t> kept(end - begin);
    std::iota(kept.begin(), kept.end(), begin);
    if (kept.size() > 4) {
      const std::size_t lowest = *std::min_element(kept.begin(), kept.end(), lower);
      const std::size_t highest = *std::max_element(kept.begin(), kept.end(), lower);
      const double range = points[highest].y() - points[lowest].y();
      std::set<std::size_t> indices{begin, lowest, highest, end - 1};
      for (const std::size_t extreme : {lowest, highest}) {
        if (!isSpike(points, extreme, begin, end, range)) continue;
        if (extreme > begin) indices.insert(extreme - 1);
        if (extreme + 1 < end) indices.insert(extreme + 1);
      }
      const std::vector<std::size_t> corners(indices.begin(), indices.end());
      for (std::size_t k = 1; k < corners.size(); ++k) {
        for (const std::size_t i : pointsOfBend(points, corners[k - 1], corners[k]))
          indices.insert(i);
      }
      kept.assign(indices.begin(), indices.end());
    }
    for (const std::size_t i : kept)
      add(points[i]);
  }
  return line;
}

} // namespace

TEST(TraceReduction, denseColumnsFollowTheRuleWhateverTheTimes) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  const std::vector<float> samples = noise(60000, 10, seed);
  std::vector<float> stretched(samples.size()); // steps of a sixteenth to an eighth
  for (std::size_t i = 1; i < stretched.size(); ++i)
    stretched[i] = stretched[i - 1] + (i / 100 % 2 == 0 ? 0.0625F : 0.125F);
  const TraceTime times[] = {
      TraceTime::uniform(0, 0.0625F),         // exact
      TraceTime::accumulated(0.01F, 0.0625F), // rounded, by another amount in each power of two
      TraceTime::accumulated(-100, 0.1F),     // through 0
      TraceTime::even(1e7F, 0.0625F),         // where single precision knows whole numbers only
      TraceTime::explicitValues(stretched.data()),
  };
  for (const TraceTime& time : times) {
    Trace trace = traceOf(samples, 0.25); // a column of 0.25 points has 16, 10 or 8 samples
    trace.time = time;
    if (time.rule == TraceTime::Rule::Even) trace.tOrigin = time.start;
    const QPolygonF line = onePolyline(reduceTrace(trace, 0.25, QRectF(-200, -1000, 4000, 2000), 0));
    const QPolygonF expected = reducedByTheRule(trace, 0.25);
    ASSERT_EQ(line.size(), expected.size()) << time.start;
    for (qsizetype i = 0; i < line.size(); ++i) {
      ASSERT_NEAR(line[i].x(), expected[i].x(), 1e-9) << i;
      ASSERT_NEAR(line[i].y(), expected[i].y(), 1e-9) << i;
    }
  }
}

TEST(TraceReduction, aGapAmongDenseColumnsBreaksTheLineThereOnly) {
  const std::vector<float> whole = noise(20000, 10, 7);
  std::vector<float> broken = whole;
  broken[12345] = kNan;
  const QRectF clip(0, -1000, 400, 2000);
  const QPolygonF line = onePolyline(reduceTrace(traceOf(whole, 0.015625), 0.25, clip, 0)); // 16 samples a column
  const std::vector<QPolygonF> pieces = reduceTrace(traceOf(broken, 0.015625), 0.25, clip, 0);
  ASSERT_EQ(pieces.size(), 2U);
  // Sample 12345 lies in column 771, x = 192.75 to 193; the gap is at x = 192.89.
  const auto outside = [](const QPolygonF& all, double from, double to) {
    QPolygonF rest;
    std::copy_if(all.begin(), all.end(), std::back_inserter(rest),
                 [=](QPointF point) { return point.x() >= from && point.x() < to; });
    return rest;
  };
  EXPECT_EQ(outside(pieces[0], 0, 192.75), outside(line, 0, 192.75));
  EXPECT_EQ(outside(pieces[1], 193, 400), outside(line, 193, 400));
  EXPECT_NEAR(pieces[0].last().x(), 12344 * 0.015625, 0.0051);
  EXPECT_NEAR(pieces[1].first().x(), 12346 * 0.015625, 0.0051);
}

TEST(TraceReduction, aClampWithoutNumbersLeavesNothing) {
  const std::vector<float> samples = noise(5000, 10, 7);
  Trace trace = traceOf(samples, 0.01);
  trace.clampLow = std::numeric_limits<float>::infinity();
  EXPECT_TRUE(reduceTrace(trace, 0.25, QRectF(0, -100, 100, 200), 0).empty());
}
