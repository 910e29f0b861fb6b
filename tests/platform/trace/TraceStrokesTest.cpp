// Strokes of traces that are drawn together look as if each had been drawn by itself.
#include "XOV_Graphics/platform/TraceStrokes.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/surface/PixelContext.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"
#include "tests/support/ThreadCounts.h"
#include "tests/support/TracePictures.h"
#include "tests/support/TraceSignals.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include <deque>
#include <functional>
#include <limits>
#include <random>
#include <vector>

using namespace xov;
using namespace xov::testing;

namespace {

// Pieces of all kinds and lengths in any place, some of them empty or partly outside, in colours of any opacity.
class RandomPieces {
public:
  RandomPieces(unsigned seed, int count, double lineWidth) : strokes(lineWidth), random_(seed) {
    for (int k = 0; k < count; ++k) {
      strokes.begin(color());
      for (int traces = oneOf({1, 1, 1, 0, 3}); traces > 0; --traces)
        strokes.addTrace(piece());
    }
  }

  TraceStrokes strokes;

private:
  template <class Value>
  Value oneOf(std::initializer_list<Value> values) {
    return values.begin()[random_() % values.size()];
  }
  double between(double low, double high) { return low + (high - low) * double(random_()) / 4294967295.0; }

  QColor color() {
    return QColor(int(random_() % 256), int(random_() % 256), int(random_() % 256), oneOf({255, 255, 255, 90, 0}));
  }

  Trace piece() {
    const double width = oneOf({0.02, 0.7, 2.3, 11.0, 95.0});
    const auto count = std::size_t(oneOf({1, 2, 7, 60, 500, 3000}));
    const Signal& signal = signalKinds()[random_() % signalKinds().size()];
    std::vector<float>& samples = samples_.emplace_back(samplesOf(signal, double(count) / width, width, random_));
    samples.resize(count, 3);
    if (oneOf({false, false, true})) samples[random_() % count] = std::numeric_limits<float>::quiet_NaN();
    Trace trace = traceOf(samples, width / double(count), between(-5, kPictureHeight + 5));
    trace.xOffset = between(-15, kPictureWidth + 5);
    trace.yScale = oneOf({1.0, -0.3, 4.0});
    const auto start = float(between(0, 40));
    trace.tOrigin = oneOf({0.0F, start});
    trace.time = oneOf({TraceTime::uniform(start, 1), TraceTime::accumulated(start, 1), TraceTime::even(start, 1)});
    if (oneOf({true, false, false})) trace.clampHigh = 4.0F;
    return trace;
  }

  std::mt19937 random_;
  std::deque<std::vector<float>> samples_;
};

// A record in short pieces, each where the one before ends and over its end, row after row down the page, in turn in
// two colours.
class NeighbouringPieces {
public:
  // Of a width in points, which grows and falls by up to `uneven` of it.
  NeighbouringPieces(unsigned seed, double width, double uneven, double lineWidth, int alpha) : strokes(lineWidth) {
    std::mt19937 random(seed);
    const auto between = [&random](double low, double high) {
      return low + (high - low) * double(random()) / 4294967295.0;
    };
    const QColor colors[] = {QColor(0, 0, 0, alpha), QColor(200, 30, 0, alpha)};
    for (double y = 1; y < kPictureHeight; y += 17) {
      for (double x = -2 * width; x < kPictureWidth + width; x += samples_.size() % 23 == 0 ? 3 * width : width) {
        const auto count = std::size_t(between(2, 120));
        samples_.push_back(noise(count, between(0, 8), random()));
        if (random() % 12 == 0) samples_.back()[random() % count] = std::numeric_limits<float>::quiet_NaN();
        const double length = width * (1 + between(-uneven, uneven));
        Trace trace = traceOf(samples_.back(), length / double(count), y);
        trace.xOffset = x;
        strokes.begin(colors[strokes.count() % 2]);
        strokes.addTrace(trace);
      }
    }
  }

  TraceStrokes strokes;

private:
  std::deque<std::vector<float>> samples_;
};

// Strokes of a raster drawn together, with any number of threads and vectors of any width, are those drawn one after
// the other.
void expectAsOneByOne(const TraceStrokes& strokes, double ratio, const QRect& clip) {
  QImage alone = whitePicture(ratio);
  for (std::size_t i = 0; i < strokes.count(); ++i) {
    ASSERT_TRUE(strokeTraces(targetOf(alone), strokes.traces(i), pictureTransform(ratio), clip, strokes.lineWidth(),
                             strokes.color(i)));
  }
  ASSERT_NE(alone, whitePicture(ratio));
  std::size_t tried = 0;
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    const HeldVectorWidth held(vectorWidths()[tried++ % vectorWidths().size()]);
    QImage together = whitePicture(ratio);
    strokeTraces(targetOf(together), strokes, pictureTransform(ratio), clip,
                 [](std::size_t stroke) { ADD_FAILURE() << stroke; });
    EXPECT_EQ(together, alone) << "with " << threads << " threads";
  }
}

// A line to and fro.
Trace tangled(const std::vector<float>& samples, const std::vector<float>& times) {
  Trace trace = traceOf(samples, 1);
  trace.time = TraceTime::explicitValues(times.data());
  return trace;
}

// What draws on a picture through a context does so under a clip and a transform of the picture's.
QImage paintedOn(const std::function<void(GraphicsContext&)>& draw) {
  QImage picture = whitePicture(2);
  QPainter painter(&picture);
  {
    PixelContext context(painter, pictureTransform(2), targetOf(picture));
    context.setColor(colors::white);
    context.fillRect({0, 0, kPictureWidth, kPictureHeight});
    draw(context);
  }
  return picture;
}

void strokeOneByOne(GraphicsContext& context, const TraceStrokes& strokes) {
  for (std::size_t i = 0; i < strokes.count(); ++i) {
    context.setStrokeColor(strokes.color(i));
    context.strokePath(strokes.path(i));
  }
}

} // namespace

TEST(TraceStrokes, areDrawnAsOneByOneByTheRaster) {
  std::mt19937 random(7);
  for (unsigned round = 0; round < 18; ++round) {
    const double ratio = std::vector{1.0, 1.37, 4.0}[round % 3], width = std::vector{0.3, 1.0, 3.7}[round / 3 % 3];
    const RandomPieces pieces(round, 80, width);
    const QRect picture = whitePicture(ratio).rect();
    const QRect clip = round % 2 == 0 ? picture : QRect(int(random() % 40), 5, int(20 + random() % 90), 30);
    SCOPED_TRACE(round);
    expectAsOneByOne(pieces.strokes, ratio, clip);
  }
}

TEST(TraceStrokes, sideBySideAreDrawnAsOneByOneByTheRaster) {
  for (unsigned round = 0; round < 16; ++round) {
    // From many over each column of pixels to such that reach over two dozen of them.
    const double ratio = std::vector{1.0, 1.37, 4.0}[round % 3];
    const double width = std::vector{0.3, 0.8, 2.3, 6.0}[round % 4];
    const double lineWidth = std::vector{0.3, 1.0, 2.6}[round / 3 % 3];
    const int alpha = round % 5 == 0 ? 120 : 255;
    const NeighbouringPieces pieces(round, width, round % 2 == 0 ? 0 : 0.5, lineWidth, alpha);
    const QRect picture = whitePicture(ratio).rect();
    const QRect clip = round % 4 < 2 ? picture : QRect(int(round), 3, int(7 + 11 * (round % 7)), int(40 * ratio));
    SCOPED_TRACE(round);
    expectAsOneByOne(pieces.strokes, ratio, clip);
  }
}

TEST(TraceStrokes, ofTheRasterAreHandedOnInTheirTurnWhereTheyDoNotFit) {
  const std::vector<float> samples = noise(60, 9, 1), times = noise(60, 30, 2);
  RandomPieces pieces(5, 70, 1);
  std::vector<std::size_t> misfits;
  for (int k = 0; k < 3; ++k) {
    misfits.push_back(pieces.strokes.count());
    pieces.strokes.begin(colors::blue);
    pieces.strokes.addTrace(tangled(samples, times));
    pieces.strokes.begin(QColor(255, 0, 0, 99));
    pieces.strokes.addTrace(traceOf(samples, 0.3));
  }
  QImage alone = whitePicture();
  std::vector<QImage> expected; // where each of them is handed on
  for (std::size_t i = 0; i < pieces.strokes.count(); ++i) {
    if (!strokeTraces(targetOf(alone), pieces.strokes.traces(i), pictureTransform(), alone.rect(), 1,
                      pieces.strokes.color(i)))
      expected.push_back(alone.copy());
  }
  ASSERT_EQ(expected.size(), misfits.size());
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    QImage together = whitePicture();
    std::vector<std::size_t> handedOn;
    std::vector<QImage> seen;
    strokeTraces(targetOf(together), pieces.strokes, pictureTransform(), together.rect(), [&](std::size_t stroke) {
      handedOn.push_back(stroke);
      seen.push_back(together.copy());
    });
    EXPECT_EQ(handedOn, misfits) << threads;
    EXPECT_EQ(seen, expected) << threads;
    EXPECT_EQ(together, alone) << threads;
  }
}

TEST(TraceStrokes, areDrawnAsPathsUnderAnyClipAndTransform) {
  const std::vector<float> samples = noise(60, 9, 1), times = noise(60, 30, 2);
  RandomPieces pieces(11, 20, 1.3);
  pieces.strokes.begin(QColor(0, 80, 0, 120));
  pieces.strokes.addTrace(tangled(samples, times));
  pieces.strokes.begin(colors::red);
  pieces.strokes.addTrace(traceOf(samples, 0.4));
  const std::function<void(GraphicsContext&)> settings[] = {
      [](GraphicsContext&) {},
      [](GraphicsContext& context) {
        context.clipToRect({10.3, 5, 40, 30});
      },
      [](GraphicsContext& context) {
        context.clipToRect({500, 500, 4, 3});
      },
      [](GraphicsContext& context) {
        Path circle;
        circle.appendOval({10, 5, 40, 30});
        context.clipToPath(circle);
      },
      [](GraphicsContext& context) { context.concat(QTransform::fromScale(0.7, 0.7)); },
      [](GraphicsContext& context) { context.concat(QTransform().rotate(20)); },
  };
  for (const auto& set : settings) {
    const QImage together = paintedOn([&](GraphicsContext& context) {
      set(context);
      context.strokeTraces(pieces.strokes);
    });
    const QImage paths = paintedOn([&](GraphicsContext& context) {
      set(context);
      strokeOneByOne(context, pieces.strokes);
    });
    EXPECT_EQ(together, paths) << &set - settings;
  }
}

TEST(TraceStrokes, withoutAColorHaveThatOfTheContextOrOfTheOneBefore) {
  const std::vector<float> samples = noise(60, 9, 1);
  TraceStrokes strokes, told;
  for (const QColor& color : {QColor(), QColor(colors::green), QColor()}) {
    strokes.begin(color);
    strokes.addTrace(traceOf(samples, 0.3 * double(strokes.count())));
  }
  for (const QColor& color : {colors::red, colors::green, colors::green}) {
    told.begin(color);
    told.addTrace(traceOf(samples, 0.3 * double(told.count())));
  }
  const auto drawn = [](const TraceStrokes& which) {
    return paintedOn([&](GraphicsContext& context) {
      context.setStrokeColor(colors::red);
      context.strokeTraces(which);
      EXPECT_EQ(context.state().strokeColor, colors::red);
    });
  };
  EXPECT_EQ(drawn(strokes), drawn(told));
}

TEST(TraceStrokes, areRecordedAsAStrokeEach) {
  const RandomPieces pieces(3, 12, 0.8);
  RecordingContext together, paths;
  together.setStrokeColor(colors::blue);
  together.strokeTraces(pieces.strokes);
  strokeOneByOne(paths, pieces.strokes);
  EXPECT_EQ(together.toText(), paths.toText());
  EXPECT_EQ(together.items().size(), paths.items().size());
  EXPECT_GT(together.items().size(), 5U);
  EXPECT_EQ(together.state().strokeColor, colors::blue);
}

TEST(TraceStrokes, keepTheirTracesApart) {
  const std::vector<float> samples(5);
  TraceStrokes strokes(std::numeric_limits<double>::infinity());
  EXPECT_EQ(strokes.lineWidth(), 0);
  EXPECT_EQ(TraceStrokes(-1).lineWidth(), 0);
  strokes.addTrace(traceOf(samples, 1)); // before the first stroke
  strokes.begin(colors::red);
  strokes.begin(colors::blue);
  strokes.addTrace(traceOf(samples, 1));
  strokes.addTrace(Trace());
  strokes.addTrace(traceOf(samples, 2));
  ASSERT_EQ(strokes.count(), 2U);
  EXPECT_TRUE(strokes.traces(0).empty());
  ASSERT_EQ(strokes.traces(1).size(), 2U);
  EXPECT_EQ(strokes.traces(1)[1].xScale, 2);
  EXPECT_EQ(strokes.path(1).traces().size(), 2U);
  strokes.clear();
  EXPECT_TRUE(strokes.isEmpty());
}

TEST(TraceStrokes, stayWhereTheyAreWhileThereIsRoomForThem) {
  const std::vector<float> samples(5);
  TraceStrokes strokes;
  strokes.reserve(100);
  EXPECT_TRUE(strokes.isEmpty());
  strokes.begin(colors::red);
  strokes.addTrace(traceOf(samples, 1));
  const Trace* const first = strokes.traces(0).data();
  for (int i = 1; i < 100; ++i) {
    strokes.begin(colors::blue);
    strokes.addTrace(traceOf(samples, 1));
  }
  EXPECT_EQ(strokes.count(), 100U);
  EXPECT_EQ(strokes.traces(0).data(), first);
}
