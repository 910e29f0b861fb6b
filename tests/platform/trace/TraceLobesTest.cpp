#include "XOV_Graphics/platform/trace/TraceLobes.h"

#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/trace/TraceReduction.h"
#include "tests/support/TracePictures.h"
#include "tests/support/TraceReference.h"
#include "tests/support/TraceSignals.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace xov;

namespace {

constexpr int kPlaces = 100; // of the reference, a pixel

bool fill(QImage& picture, std::span<const Trace> traces, double ratio = 1, const QColor& color = Qt::black) {
  return fillTraces(targetOf(picture), traces, pictureTransform(ratio), picture.rect(), InsideRule::NonZero, color);
}

/// A trace that goes along its level where it lies on the other side, with a sample at each crossing: what it
/// encloses from end to end are the lobes.
struct SpelledLobes {
  std::vector<float> samples;
  std::vector<float> times;

  SpelledLobes(const std::vector<float>& values, float level, TraceArea area) {
    const auto isIn = [&](float value) { return area == TraceArea::AboveLevel ? value > level : value < level; };
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (i == 0) add(0, level);
      if (i > 0 && isIn(values[i]) != isIn(values[i - 1]))
        add(float(i - 1) + (level - values[i - 1]) / (values[i] - values[i - 1]), level);
      add(float(i), isIn(values[i]) ? values[i] : level);
    }
    add(float(values.size() - 1), level);
  }
  void add(float time, float value) {
    times.push_back(time);
    samples.push_back(value);
  }
  Trace traceLike(const Trace& trace) const {
    Trace spelled = trace;
    spelled.area = TraceArea::Enclosed;
    spelled.samples = samples.data();
    spelled.last = std::int64_t(samples.size());
    spelled.time = TraceTime::explicitValues(times.data());
    return spelled;
  }
};

class TraceLobesPicture : public ::testing::TestWithParam<double> {};

/// Ink of black on white, in pixels.
double inkOf(const QImage& picture) {
  double ink = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      ink += 1 - qGreen(picture.pixel(x, y)) / 255.0;
  return ink;
}

} // namespace

TEST(TraceLobes, areCutWhereTheLineCrossesItsLevel) {
  const QPolygonF line{{0, 0}, {2, 2}, {4, -2}, {6, 2}};
  std::vector<QPolygonF> above, below;
  appendLobes(line, 0, LobeSide::Above, above);
  EXPECT_EQ(above, (std::vector<QPolygonF>{{{{0, 0}, {2, 2}, {3, 0}}}, {{{5, 0}, {6, 2}, {6, 0}}}}));
  appendLobes(line, 0, LobeSide::Below, below);
  EXPECT_EQ(below, (std::vector<QPolygonF>{{{{5, 0}, {4, -2}, {3, 0}}}}));
}

TEST(TraceLobes, beginAndEndWhereTheLineDoes) {
  const QPolygonF line{{1, 5}, {3, 4}};
  std::vector<QPolygonF> lobes;
  appendLobes(line, 2, LobeSide::Above, lobes);
  EXPECT_EQ(lobes, (std::vector<QPolygonF>{{{{1, 2}, {1, 5}, {3, 4}, {3, 2}}}}));
}

TEST(TraceLobes, linesAlongTheirLevelHaveNone) {
  std::vector<QPolygonF> lobes;
  for (const LobeSide side : {LobeSide::Above, LobeSide::Below}) {
    appendLobes({{0, 3}, {5, 3}, {9, 3}}, 3, side, lobes);
    appendLobes({{0, 3}}, 3, side, lobes);
    appendLobes({}, 3, side, lobes);
  }
  EXPECT_TRUE(lobes.empty());
}

TEST_P(TraceLobesPicture, equalThoseThatAreSpelledOut) {
  const double ratio = GetParam();
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  for (const double perPixel : {0.1, 0.7, 4.0}) {
    for (const Signal& signal : signalKinds()) {
      for (const TraceArea area : {TraceArea::AboveLevel, TraceArea::BelowLevel}) {
        for (const double upwards : {1.0, -1.0}) {
          SCOPED_TRACE(::testing::Message() << signal.name << ", " << perPixel << " samples a pixel, " << int(area));
          std::vector<float> samples = samplesOf(signal, perPixel * ratio, kPictureWidth - 3, random);
          for (float& sample : samples)
            if (!std::isfinite(sample)) sample = 0;
          Trace trace = traceOf(samples, 1 / (perPixel * ratio));
          trace.yScale = upwards;
          trace.area = area;
          trace.level = 1.3F;
          QImage picture = whitePicture(ratio);
          ASSERT_TRUE(fill(picture, {&trace, 1}, ratio));
          const SpelledLobes lobes(samples, trace.level, area);
          const Trace spelled = lobes.traceLike(trace);
          const auto expected = referenceFill({&spelled, 1}, pictureTransform(ratio), false, picture.width(),
                                              picture.height(), kPlaces);
          EXPECT_LE(compareWithReference(picture, expected).mean, 1.0);
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(DevicePixelRatios, TraceLobesPicture, ::testing::Values(1.0, 2.0),
                         [](const auto& ratio) { return "ratio" + std::to_string(int(ratio.param * 100)); });

// From -12 to 12 over 60 points the line crosses 0 half way: the lobes are triangles of 30 by 12 points, and about
// the level 6 that above is one of 15 by 6.
TEST(TraceLobes, coverTheAreaBetweenTheirLevelAndTheLine) {
  const std::vector<float> samples{-12, 12};
  Trace trace = traceOf(samples, 60);
  const auto inkAt = [&](TraceArea area, float level) {
    trace.area = area;
    trace.level = level;
    QImage picture = whitePicture();
    EXPECT_TRUE(fill(picture, {&trace, 1}));
    return inkOf(picture);
  };
  EXPECT_NEAR(inkAt(TraceArea::AboveLevel, 0), 30 * 12 / 2.0, 1);
  EXPECT_NEAR(inkAt(TraceArea::BelowLevel, 0), 30 * 12 / 2.0, 1);
  EXPECT_NEAR(inkAt(TraceArea::AboveLevel, 6), 15 * 6 / 2.0, 1);
  EXPECT_EQ(inkAt(TraceArea::AboveLevel, 12), 0);
}

// The level stays where it is when values are held below it, and the origin of values does not move it.
TEST(TraceLobes, haveALevelThatIsNotClampedAndCountsAsValuesDo) {
  const std::vector<float> samples{104, 104};
  Trace trace = traceOf(samples, 60);
  trace.vOrigin = 100;
  trace.level = 98;
  trace.clampLow = 102;
  trace.area = TraceArea::AboveLevel;
  QImage picture = whitePicture();
  ASSERT_TRUE(fill(picture, {&trace, 1}));
  EXPECT_NEAR(inkOf(picture), 60 * 6, 1);
}

// Both reach over the level of the other; between their levels, 20 and 28 points up, both have ink.
TEST(TraceLobes, ofAPathAreUnitedOnWhicheverSideTheyLie) {
  const std::vector<float> up{14, 14}, down{-14, -14};
  std::vector<Trace> traces{traceOf(up, 60, 20), traceOf(down, 60, 28)};
  traces[0].area = TraceArea::AboveLevel;
  traces[1].area = TraceArea::BelowLevel;
  QImage picture = whitePicture();
  ASSERT_TRUE(fill(picture, traces, 1, QColor(0, 0, 0, 51)));
  for (const int row : {15, 17, 23, 25, 27, 29, 32})
    EXPECT_EQ(picture.pixel(30, row), qRgb(204, 204, 204)) << row; // a fifth of black, once
  EXPECT_EQ(picture.pixel(30, 12), qRgb(255, 255, 255));
  EXPECT_EQ(picture.pixel(30, 36), qRgb(255, 255, 255));
}

TEST(TraceLobes, breakAtGaps) {
  const std::vector<float> samples{9, 9, std::numeric_limits<float>::quiet_NaN(), 9, 9};
  Trace trace = traceOf(samples, 15);
  trace.area = TraceArea::AboveLevel;
  QImage picture = whitePicture();
  ASSERT_TRUE(fill(picture, {&trace, 1}));
  EXPECT_NEAR(inkOf(picture), 2 * 15 * 9, 1);
}

TEST(TraceLobes, onPaperAreTheSamplesAndTheCrossings) {
  const std::vector<float> samples{-4, 4, 4, -12, -4};
  Trace trace;
  trace.samples = samples.data();
  trace.last = 5;
  trace.xScale = 8;
  trace.area = TraceArea::AboveLevel;
  const QRectF page(-100, -100, 500, 500);
  EXPECT_EQ(traceAreas(trace, 0.25, page), (std::vector<QPolygonF>{{{{4, 0}, {8, 4}, {16, 4}, {18, 0}}}}));
  trace.yScale = -1; // the same side of values lies below now, and winds as before
  EXPECT_EQ(traceAreas(trace, 0.25, page), (std::vector<QPolygonF>{{{{18, 0}, {16, -4}, {8, -4}, {4, 0}}}}));
  trace.area = TraceArea::BelowLevel;
  trace.yScale = 1;
  EXPECT_EQ(traceAreas(trace, 0.25, page),
            (std::vector<QPolygonF>{{{{4, 0}, {0, -4}, {0, 0}}}, {{{32, 0}, {32, -4}, {24, -12}, {18, 0}}}}));
}

// The piece runs along 10 from 4 to 23 and begins at 3 at the level of 0, so that its last side, from (23, 10) to
// (3, 0), passes 6 at 15. What stands before the gap has no part in it.
TEST(TraceLobes, onPaperAPieceIsClosedToItsFirstSampleBehindAGap) {
  std::vector<float> samples(24, 10);
  samples[0] = samples[1] = 100;
  samples[2] = std::numeric_limits<float>::quiet_NaN();
  samples[3] = 0;
  Trace trace;
  trace.samples = samples.data();
  trace.last = std::int64_t(samples.size());
  const std::vector<QPolygonF> areas = traceAreas(trace, 0.25, QRectF(10, -20, 10, 40));
  ASSERT_EQ(areas.size(), 1U);
  EXPECT_FALSE(areas[0].containsPoint({15, 5.5}, Qt::WindingFill));
  EXPECT_TRUE(areas[0].containsPoint({15, 6.5}, Qt::WindingFill));
  EXPECT_TRUE(areas[0].containsPoint({15, 9.5}, Qt::WindingFill));
  EXPECT_FALSE(areas[0].containsPoint({15, 10.5}, Qt::WindingFill));
}

// A page that shows the middle of the trace alone.
TEST(TraceLobes, onPaperKeepTheirAreaWhereThePageCutsThem) {
  const std::vector<float> samples{20, 10, 10, 30};
  Trace trace;
  trace.samples = samples.data();
  trace.last = 4;
  trace.xScale = 100;
  trace.area = TraceArea::AboveLevel;
  const QRectF page(50, -5, 200, 17); // up to y = 12 and from x = 50 to 250
  const auto areas = traceAreas(trace, 0.25, page);
  ASSERT_EQ(areas.size(), 1U);
  // All of the page above 0 but what lies above the line: it falls to 12 at x = 80, is 10 from 100 to 200, and rises
  // above 12 at 210.
  for (const QPointF corner : {QPointF(50, 0), QPointF(50, 12), QPointF(80, 12), QPointF(100, 10), QPointF(200, 10),
                               QPointF(210, 12), QPointF(250, 12), QPointF(250, 0)})
    EXPECT_TRUE(areas[0].contains(corner)) << corner.x() << ' ' << corner.y();
  EXPECT_EQ(areas[0].boundingRect(), QRectF(50, 0, 200, 12));
}

TEST(TraceLobes, areDrawnAnewFromARecording) {
  const std::vector<float> samples{-9, 9, -9, 9};
  Trace trace;
  trace.samples = samples.data();
  trace.last = 4;
  trace.xScale = 10;
  trace.area = TraceArea::BelowLevel;
  trace.level = 3;
  Path path;
  path.appendTrace(trace);
  RecordingContext recording;
  recording.setColor(Qt::red);
  recording.fillPath(path);
  EXPECT_EQ(recording.toText(), QStringLiteral("fill #ff0000 below=3 (0,-9)-(10,9)-(20,-9)-(30,9)\n"));
  RecordingContext again;
  recording.replay(again);
  EXPECT_EQ(again.toText(), recording.toText());
}

// Turned by a right angle: lines, since a trace goes right. The lobes of -9, 9, -9 over 20 points lie around x = 10,
// from 5 to 15.
TEST(TraceLobes, ofATurnedRecordingAreSpelledOut) {
  const std::vector<float> samples{-9, 9, -9};
  Trace trace;
  trace.samples = samples.data();
  trace.last = 3;
  trace.xScale = 10;
  trace.area = TraceArea::AboveLevel;
  Path path;
  path.appendTrace(trace);
  RecordingContext recording;
  recording.concat(QTransform().rotate(90));
  recording.fillPath(path);
  ASSERT_EQ(recording.items().size(), 1U);
  EXPECT_EQ(recording.items()[0].path.polylines(), (std::vector<QPolygonF>{{{{0, 5}, {-9, 10}, {0, 15}}}}));
}
