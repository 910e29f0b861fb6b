#include "XOV_Graphics/platform/trace/TraceRaster.h"
#include "XOV_Graphics/platform/trace/TraceReduction.h"
#include "tests/support/TracePictures.h"
#include "tests/support/TraceReference.h"
#include "tests/support/TraceSignals.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <QImage>

#include <random>
#include <vector>

using namespace xov;
using xov::testing::forEachVectorWidth;
using xov::testing::HeldVectorWidth;

namespace {

constexpr int kWidth = kPictureWidth, kHeight = kPictureHeight;

QImage drawn(std::span<const Trace> traces, double lineWidth, const QColor& color = Qt::black) {
  QImage picture = whitePicture();
  EXPECT_TRUE(strokeTraces(targetOf(picture), traces, pictureTransform(), picture.rect(), lineWidth, color));
  return picture;
}

/// The picture at every width of vectors is, byte for byte, that of the widest.
void expectAlike(std::span<const Trace> traces, double lineWidth, const QColor& color = Qt::black) {
  const QImage widest = drawn(traces, lineWidth, color);
  forEachVectorWidth([&] { EXPECT_EQ(drawn(traces, lineWidth, color), widest); });
}

} // namespace

TEST(TraceWidths, drawEverySignalAndDensityToTheSameByte) {
  std::mt19937 random(21);
  for (const double perPixel : {0.1, 0.3, 0.5, 2.0, 3.7, 10.0, 50.0, 400.0}) {
    for (const Signal& signal : signalKinds()) {
      SCOPED_TRACE(::testing::Message() << signal.name << ", " << perPixel << " samples a pixel");
      const std::vector<float> samples = samplesOf(signal, perPixel, kWidth - 3, random);
      const Trace trace = traceOf(samples, 1 / perPixel);
      for (const double lineWidth : {0.25, 1.0, 1.7, 11.0})
        expectAlike({&trace, 1}, lineWidth);
      expectAlike({&trace, 1}, 1, QColor(20, 40, 200, 100));
    }
  }
}

TEST(TraceWidths, drawManyTracesToTheSameByte) {
  std::mt19937 random(22);
  for (const double perPixel : {0.7, 5.0, 80.0}) {
    std::vector<std::vector<float>> samples(40, std::vector<float>(std::size_t(perPixel * 60)));
    std::vector<Trace> traces;
    for (std::vector<float>& each : samples) {
      for (float& sample : each)
        sample = normal(random, 3);
      traces.push_back(traceOf(each, 1 / perPixel, std::uniform_real_distribution<double>(0, kHeight)(random)));
    }
    for (const double lineWidth : {0.1, 1.0})
      expectAlike(traces, lineWidth);
  }
}

TEST(TraceWidths, reduceTracesToTheSamePoints) {
  std::mt19937 random(23);
  for (const Signal& signal : signalKinds()) {
    const std::vector<float> samples = samplesOf(signal, 300, kWidth, random);
    const Trace trace = traceOf(samples, 1.0 / 300);
    const QRectF clip(0, 0, kWidth, kHeight);
    const std::vector<QPolygonF> widest = reduceTrace(trace, kPaperTraceColumn, clip, 0);
    ASSERT_FALSE(widest.empty());
    forEachVectorWidth([&] { EXPECT_EQ(reduceTrace(trace, kPaperTraceColumn, clip, 0), widest) << signal.name; });
  }
}

TEST(TraceWidths, areOnlyThoseThatTheProcessorHas) {
  {
    const HeldVectorWidth held(VectorWidth::Avx512);
    EXPECT_LE(vectorWidth(), widestVectorWidth());
  }
  {
    const HeldVectorWidth held(VectorWidth::Baseline);
    EXPECT_EQ(vectorWidth(), VectorWidth::Baseline);
  }
  EXPECT_EQ(vectorWidth(), widestVectorWidth());
}

// Around 3 · 10⁶ s single precision is 1/4 s fine: 25 samples of 100 Hz share a time, and at 20 of them a pixel the
// picture shows upright lines that stand 5/4 pixels apart.
TEST(TraceWidths, showCoarseTimesAsTheyRound) {
  std::mt19937 random(24);
  std::vector<float> samples(20 * 60);
  for (float& sample : samples)
    sample = normal(random, 5);
  Trace trace = traceOf(samples, 1 / (20 * 0.01));
  trace.time = TraceTime::uniform(3e6F, 0.01F);
  trace.tOrigin = 3e6F;
  const std::vector<double> expected = referenceCoverage({&trace, 1}, pictureTransform(), 1, kWidth, kHeight, 37);
  forEachVectorWidth([&] {
    const TraceDifference difference = compareWithReference(drawn({&trace, 1}, 1), expected);
    EXPECT_GT(difference.inked, 500);
    EXPECT_LE(difference.mean, 2.0);
    EXPECT_LE(difference.over32, 0.005);
  });
}

// Sub-columns of more than 8192 samples each: a spike lies in the pixel that its sample lies in.
TEST(TraceWidths, showASpikeOfHundredsOfThousandsOfSamplesWhereItLies) {
  constexpr int kPixels = 6, kPerPixel = 400'000; // at most 24 sub-columns a pixel where samples are dense
  std::vector<float> samples(std::size_t(kPixels) * kPerPixel);
  for (const int pixel : {1, 3, 4})
    samples[std::size_t(pixel) * kPerPixel + kPerPixel / 2] = 15;
  Trace trace = traceOf(samples, 1.0 / kPerPixel, 24);
  trace.xOffset = 10;
  forEachVectorWidth([&] {
    const QImage picture = drawn({&trace, 1}, 0.5);
    for (int x = 9; x < 17; ++x) {
      const bool spike = x == 11 || x == 13 || x == 14;
      // A pen half a pixel wide about the pixel's middle: half of the pixel is inked.
      EXPECT_NEAR(255 - qGreen(picture.pixel(x, kHeight - 32)), spike ? 255 / 2 : 0, 12) << x;
    }
  });
}
