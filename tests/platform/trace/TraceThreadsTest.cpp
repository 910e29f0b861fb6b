// Pictures are the same with any number of threads.
#include "XOV_Graphics/platform/trace/StripRuns.h"
#include "XOV_Graphics/platform/trace/TangledTraces.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"
#include "tests/support/ThreadCounts.h"
#include "tests/support/TracePictures.h"
#include "tests/support/TraceSignals.h"

#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>
#include <functional>
#include <mutex>
#include <numeric>
#include <set>
#include <span>
#include <string>
#include <thread>
#include <vector>

using namespace xov;

namespace {

constexpr QSize kSize(700, 200);

// Traces of noise over the whole picture, one below the other, quiet where they begin.
class Panel {
public:
  Panel(int traces, double perPixel, float deviation) {
    const auto count = std::size_t(perPixel * kSize.width());
    for (int k = 0; k < traces; ++k) {
      std::vector<float>& samples = samples_.emplace_back(noise(count, deviation, unsigned(k) + 1));
      for (std::size_t i = 0; i < count; ++i)
        samples[i] *= float(i) / float(count);
      Trace& trace = traces_.emplace_back(traceOf(samples, 1 / perPixel));
      trace.yOffset = kSize.height() * (k + 0.5) / traces;
    }
  }
  std::span<const Trace> traces() const { return traces_; }

private:
  std::vector<std::vector<float>> samples_;
  std::vector<Trace> traces_;
};

QImage drawn(const std::function<bool(const PixelTarget&, const QTransform&, const QRect&)>& draw) {
  QImage picture(kSize, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::white);
  EXPECT_TRUE(draw(targetOf(picture), QTransform(1, 0, 0, -1, 0, kSize.height()), picture.rect()));
  return picture;
}

void expectSamePictures(const std::string& what, const std::function<QImage()>& draw) {
  setThreadCount(1);
  const QImage alone = draw();
  QImage blank = alone;
  blank.fill(Qt::white);
  ASSERT_NE(alone, blank) << what;
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    EXPECT_EQ(draw(), alone) << what << " with " << threads << " threads";
  }
}

} // namespace

TEST(TraceThreads, strokesAreTheSameWithAnyNumberOfThem) {
  for (const double perPixel : {0.2, 3.0, 60.0}) {
    for (const int traces : {1, 30}) {
      const Panel panel(traces, perPixel, 20);
      expectSamePictures(std::to_string(traces) + " traces, " + std::to_string(perPixel) + " samples a pixel", [&] {
        return drawn([&](const PixelTarget& target, const QTransform& toDevice, const QRect& clip) {
          return strokeTraces(target, panel.traces(), toDevice, clip, 1, QColor(0, 0, 80, 200));
        });
      });
    }
  }
}

TEST(TraceThreads, fillsAreTheSameWithAnyNumberOfThem) {
  for (const double perPixel : {0.2, 3.0, 60.0}) {
    const Panel panel(5, perPixel, 20);
    expectSamePictures(std::to_string(perPixel) + " samples a pixel", [&] {
      return drawn([&](const PixelTarget& target, const QTransform& toDevice, const QRect& clip) {
        return fillTraces(target, panel.traces(), toDevice, clip, InsideRule::NonZero, Qt::darkGreen);
      });
    });
  }
}

TEST(TraceThreads, tangledLinesAreTheSameWithAnyNumberOfThem) {
  const std::size_t points = 3000;
  std::vector<float> x = noise(points, 120, 3);
  for (float& value : x)
    value += 350;
  const std::vector<float> y = noise(points, 40, 4);
  Trace trace;
  trace.samples = y.data();
  trace.last = std::int64_t(points);
  trace.time = TraceTime::explicitValues(x.data());
  trace.yOffset = kSize.height() / 2.0;
  expectSamePictures("a tangled line", [&] {
    return drawn([&](const PixelTarget& target, const QTransform& toDevice, const QRect& clip) {
      return strokeTangledTraces(target, {&trace, 1}, toDevice, clip, 1, Qt::black);
    });
  });
}

// What is drawn where has a strip each; here it is their columns.
TEST(TraceThreads, stripsCoverTheColumnsOnceAndGrowFinerAlongTheirRunsOnly) {
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    std::mutex mutex;
    std::vector<int> covered(1000), finenessAt(1000);
    drawStrips({7, 64}, 900, TraceFineness(1, 100, 1000), [&] {
      return [&](TraceStrip& strip, TraceFineness& fineness) {
        const std::lock_guard lock(mutex);
        for (int column = strip.left; column < strip.left + strip.columns; ++column)
          ++covered[std::size_t(column)];
        finenessAt[std::size_t(strip.left)] = fineness.subColumns();
        // A row of ink that jumps by five from one sub-column to the next is all edges: it wants the finest.
        std::vector<float> low, high;
        for (int j = 0; j < 256; ++j) {
          low.push_back(j % 2 == 0 ? 10 : 15);
          high.push_back(low.back() + 1);
        }
        InkRoughness rough;
        rough.include(low.data(), high.data(), 256, 100);
        fineness.refine(rough, 256 * 100);
      };
    });
    for (int column = 0; column < 1000; ++column)
      ASSERT_EQ(covered[std::size_t(column)], column >= 7 && column < 907 ? 1 : 0) << column;
    // It starts with 16, and every strip behind the first one begins with what that settled.
    EXPECT_EQ(finenessAt[7], 16);
    for (int left = 7 + 64; left < 907; left += 64)
      EXPECT_EQ(finenessAt[std::size_t(left)], 96) << left;
  }
}

TEST(TraceThreads, runsBecomeShorterTowardsTheirEnd) {
  EXPECT_EQ(runLengths(0), std::vector<int>{});
  EXPECT_EQ(runLengths(18), (std::vector<int>{3, 3, 2, 2, 2, 1, 1, 1, 1, 1, 1}));
  const std::vector<int> many = runLengths(1000);
  EXPECT_EQ(std::accumulate(many.begin(), many.end(), 0), 1000);
  EXPECT_TRUE(std::is_sorted(many.rbegin(), many.rend()));
  EXPECT_EQ(many.front(), 4);
}

TEST(TraceThreads, severalThreadsOfAHostMayStrokeAtTheSameTime) {
  const WithThreads with(4);
  const Panel panel(10, 30, 20);
  const auto draw = [&] {
    return drawn([&](const PixelTarget& target, const QTransform& toDevice, const QRect& clip) {
      return strokeTraces(target, panel.traces(), toDevice, clip, 1, Qt::black);
    });
  };
  const QImage alone = draw();
  std::vector<QImage> pictures(4);
  std::vector<std::thread> threads;
  for (QImage& picture : pictures)
    threads.emplace_back([&] { picture = draw(); });
  for (std::thread& thread : threads)
    thread.join();
  for (const QImage& picture : pictures)
    EXPECT_EQ(picture, alone);
}
