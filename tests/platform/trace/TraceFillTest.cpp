#include "XOV_Graphics/platform/trace/TraceRaster.h"
#include "tests/support/TracePictures.h"
#include "tests/support/TraceReference.h"
#include "tests/support/TraceSignals.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace xov;

namespace {

const float kNan = std::numeric_limits<float>::quiet_NaN();

constexpr int kPlaces = 100; // of the reference, a pixel
constexpr int kGrey = 170;   // of fills under a stroke

bool fill(QImage& picture, std::span<const Trace> traces, double ratio = 1, InsideRule rule = InsideRule::NonZero) {
  return fillTraces(targetOf(picture), traces, pictureTransform(ratio), picture.rect(), rule, Qt::black);
}

TraceDifference difference(const QImage& picture, std::span<const Trace> traces, double ratio = 1,
                           bool evenOdd = false) {
  return compareWithReference(
      picture, referenceFill(traces, pictureTransform(ratio), evenOdd, picture.width(), picture.height(), kPlaces));
}

std::vector<std::vector<float>> overlappingNoise(std::size_t lines, std::size_t count, unsigned seed) {
  std::vector<std::vector<float>> samples;
  for (std::size_t k = 0; k < lines; ++k)
    samples.push_back(noise(count, 9, seed + unsigned(k)));
  return samples;
}

class TraceFillPicture : public ::testing::TestWithParam<double> {};

} // namespace

TEST_P(TraceFillPicture, equalsTheReferenceForEverySignal) {
  const double ratio = GetParam();
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  for (const double perPixel : {0.1, 0.5, 2.0, 6.0}) {
    for (const Signal& signal : signalKinds()) {
      SCOPED_TRACE(::testing::Message() << signal.name << ", " << perPixel << " samples a pixel");
      const std::vector<float> samples = samplesOf(signal, perPixel * ratio, kPictureWidth - 3, random);
      const Trace trace = traceOf(samples, 1 / (perPixel * ratio));
      QImage picture = whitePicture(ratio);
      ASSERT_TRUE(fill(picture, {&trace, 1}, ratio));
      EXPECT_LE(difference(picture, {&trace, 1}, ratio).mean, 1.0);
    }
  }
}

// However many samples a pixel holds: a stroke covers what the fill does not look at.
TEST_P(TraceFillPicture, equalsTheReferenceUnderAStroke) {
  const double ratio = GetParam();
  std::mt19937 random(8);
  for (const double perPixel : {0.3, 2.0, 12.0, 60.0, 400.0}) {
    for (const Signal& signal : signalKinds()) {
      SCOPED_TRACE(::testing::Message() << signal.name << ", " << perPixel << " samples a pixel");
      const std::vector<float> samples = samplesOf(signal, perPixel * ratio, kPictureWidth - 3, random);
      const Trace trace = traceOf(samples, 1 / (perPixel * ratio));
      QImage picture = whitePicture(ratio), stroked = whitePicture(ratio);
      ASSERT_TRUE(fillTraces(targetOf(picture), {&trace, 1}, pictureTransform(ratio), picture.rect(),
                             InsideRule::NonZero, QColor(kGrey, kGrey, kGrey)));
      for (QImage* onto : {&picture, &stroked}) {
        ASSERT_TRUE(
            strokeTraces(targetOf(*onto), {&trace, 1}, pictureTransform(ratio), picture.rect(), 1, Qt::black));
      }
      std::vector<double> expected =
          referenceFill({&trace, 1}, pictureTransform(ratio), false, picture.width(), picture.height(), kPlaces);
      for (int i = 0; i < int(expected.size()); ++i) {
        const double open = qGreen(stroked.pixel(i % stroked.width(), i / stroked.width())) / 255.0;
        expected[std::size_t(i)] = 1 - open + open * expected[std::size_t(i)] * (255 - kGrey) / 255;
      }
      EXPECT_LE(compareWithReference(picture, expected).mean, 1.0);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(DevicePixelRatios, TraceFillPicture, ::testing::Values(1.0, 2.0),
                         [](const auto& ratio) { return "ratio" + std::to_string(int(ratio.param * 100)); });

TEST(TraceFill, windingsOfAllTracesAddUp) {
  for (const std::size_t lines : {2U, 3U, 8U, 40U}) {
    for (const bool evenOdd : {false, true}) {
      SCOPED_TRACE(::testing::Message() << lines << " lines, " << (evenOdd ? "odd" : "non-zero"));
      const auto samples = overlappingNoise(lines, 50, 3);
      std::vector<Trace> traces;
      for (std::size_t k = 0; k < lines; ++k)
        traces.push_back(traceOf(samples[k], 1.4, 12 + double(k * 7 % 24)));
      QImage picture = whitePicture();
      ASSERT_TRUE(fill(picture, traces, 1, evenOdd ? InsideRule::Odd : InsideRule::NonZero));
      const TraceDifference found = difference(picture, traces, 1, evenOdd);
      EXPECT_GT(found.inked, 500);
      EXPECT_LE(found.mean, 1.0);
    }
  }
}

// A tent upwards from row 40 and one downwards from row 20 wind about their common part once each way. Left of the
// middle, at x = 19.5, the first reaches up to row 40 - 18 · 24 / 34 = 27.3, the second down to row 20 + 12.7 = 32.7.
TEST(TraceFill, oppositeWindingsLeaveTheirCommonPartOpen) {
  const std::vector<float> up{0, 24, 0}, down{0, -24, 0};
  std::vector<Trace> traces{traceOf(up, 34, 8), traceOf(down, 34, 28)};
  for (Trace& trace : traces)
    trace.xOffset = 1.5;
  for (const InsideRule rule : {InsideRule::NonZero, InsideRule::Odd}) {
    QImage picture = whitePicture();
    ASSERT_TRUE(fill(picture, traces, 1, rule));
    EXPECT_EQ(picture.pixel(19, 22), qRgb(0, 0, 0));       // inside the upper one alone
    EXPECT_EQ(picture.pixel(19, 30), qRgb(255, 255, 255)); // inside both
    EXPECT_EQ(picture.pixel(19, 36), qRgb(0, 0, 0));       // inside the lower one alone
    EXPECT_EQ(picture.pixel(19, 42), qRgb(255, 255, 255));
  }
}

TEST(TraceFill, theSameTraceTwiceIsFilledOnlyByTheRuleThatIsNotOdd) {
  const std::vector<float> tent{0, 30, 0};
  const std::vector<Trace> twice(2, traceOf(tent, 34, 8));
  QImage nonZero = whitePicture(), odd = whitePicture(), once = whitePicture();
  ASSERT_TRUE(fill(nonZero, twice));
  ASSERT_TRUE(fill(odd, twice, 1, InsideRule::Odd));
  ASSERT_TRUE(fill(once, {twice.data(), 1}));
  EXPECT_EQ(nonZero, once);
  EXPECT_EQ(odd, whitePicture());
}

// The side that closes a piece is that of the whole piece, of which the picture shows the middle.
TEST(TraceFill, sidesThatEndFarOutsideStayTheWholeTraces) {
  std::mt19937 random(4);
  std::vector<float> samples;
  for (int i = 0; i < 4000; ++i)
    samples.push_back(0.004F * float(i) - 8 + normal(random, 3));
  samples.front() = -400;
  samples.back() = 500;
  Trace trace = traceOf(samples, 0.3);
  trace.xOffset = -600;
  QImage picture = whitePicture();
  ASSERT_TRUE(fill(picture, {&trace, 1}));
  const TraceDifference found = difference(picture, {&trace, 1});
  EXPECT_GT(found.inked, 500);
  EXPECT_LE(found.mean, 1.0);
}

TEST(TraceFill, everyPieceBetweenGapsIsClosedByItself) {
  std::vector<float> samples = noise(400, 8, 6);
  for (const std::size_t gap : {0U, 1U, 40U, 41U, 43U, 150U, 152U, 399U})
    samples[gap] = kNan;
  Trace trace = traceOf(samples, 0.17);
  QImage picture = whitePicture();
  ASSERT_TRUE(fill(picture, {&trace, 1}));
  EXPECT_LE(difference(picture, {&trace, 1}).mean, 1.0);
  trace.firstValue = 5.0F; // stands for a gap, so that the first sample is a piece of its own
  QImage same = whitePicture();
  ASSERT_TRUE(fill(same, {&trace, 1}));
  EXPECT_EQ(same, picture);
}

TEST(TraceFill, valuesAreClampedAndTheFirstOneMayBeOverruled) {
  const std::vector<float> samples = noise(30, 12, 9);
  Trace trace = traceOf(samples, 2.4);
  trace.clampLow = -4.0F;
  trace.clampHigh = 7.0F;
  trace.firstValue = 19.0F;
  QImage picture = whitePicture();
  ASSERT_TRUE(fill(picture, {&trace, 1}));
  EXPECT_LE(difference(picture, {&trace, 1}).mean, 1.0);
}

TEST(TraceFill, timesMayBeUnevenAndScalesUnlike) {
  std::mt19937 random(12);
  const std::vector<float> samples = noise(200, 8, 11);
  std::vector<float> times{0};
  for (std::size_t i = 1; i < samples.size(); ++i)
    times.push_back(times.back() + (i % 7 == 0 ? 0.0F : std::uniform_real_distribution<float>(0, 0.6F)(random)));
  Trace trace = traceOf(samples, 1);
  trace.time = TraceTime::explicitValues(times.data());
  const QTransform stretched(1.2, 0, 0, -0.7, 0, kPictureHeight * 0.8);
  QImage picture = whitePicture();
  ASSERT_TRUE(fillTraces(targetOf(picture), {&trace, 1}, stretched, picture.rect(), InsideRule::NonZero, Qt::black));
  const TraceDifference found = compareWithReference(
      picture, referenceFill({&trace, 1}, stretched, false, kPictureWidth, kPictureHeight, kPlaces));
  EXPECT_GT(found.inked, 300);
  EXPECT_LE(found.mean, 1.0);
}

TEST(TraceFill, changesOnlyPixelsInsideTheClip) {
  const std::vector<float> samples = noise(500, 9, 2);
  const Trace trace = traceOf(samples, 0.14);
  const QRect clip(11, 7, 40, 29);
  QImage whole = whitePicture(), part = whitePicture();
  ASSERT_TRUE(fill(whole, {&trace, 1}));
  ASSERT_TRUE(fillTraces(targetOf(part), {&trace, 1}, pictureTransform(), clip, InsideRule::NonZero, Qt::black));
  int inked = 0;
  for (int y = 0; y < kPictureHeight; ++y) {
    for (int x = 0; x < kPictureWidth; ++x) {
      const QRgb expected = clip.contains(x, y) ? whole.pixel(x, y) : qRgb(255, 255, 255);
      EXPECT_NEAR(qGreen(part.pixel(x, y)), qGreen(expected), 16) << x << ' ' << y; // strips lie elsewhere
      inked += part.pixel(x, y) != qRgb(255, 255, 255);
      EXPECT_TRUE(clip.contains(x, y) || part.pixel(x, y) == expected) << x << ' ' << y;
    }
  }
  EXPECT_GT(inked, 100);
}

TEST(TraceFill, laysTranslucentColourOnceWhereAreasOverlap) {
  const std::vector<float> tent{0, 30, 0};
  const std::vector<Trace> traces{traceOf(tent, 34, 8), traceOf(tent, 34, 9)};
  QImage picture = whitePicture();
  ASSERT_TRUE(fillTraces(targetOf(picture), traces, pictureTransform(), picture.rect(), InsideRule::NonZero,
                         QColor(0, 0, 0, 51)));
  EXPECT_EQ(picture.pixel(35, 30), qRgb(204, 204, 204)); // a fifth of black
}

TEST(TraceFill, leavesOtherDescriptionsToTheGeneralWay) {
  const std::vector<float> samples{0, 5, 0}, backwards{2, 1, 0};
  Trace trace = traceOf(samples, 10);
  QImage picture = whitePicture();
  QTransform turned;
  turned.rotate(3);
  EXPECT_FALSE(fillTraces(targetOf(picture), {&trace, 1}, turned, picture.rect(), InsideRule::NonZero, Qt::black));
  trace.time = TraceTime::explicitValues(backwards.data());
  EXPECT_FALSE(fill(picture, {&trace, 1}));
  EXPECT_EQ(picture, whitePicture());
}

TEST(TraceFill, everyVectorWidthDrawsTheSameBytes) {
  for (const std::size_t lines : {1U, 2U, 13U}) {
    for (const std::size_t count : {20U, 500U, 20000U}) {
      const auto samples = overlappingNoise(lines, count, 5);
      std::vector<Trace> traces;
      for (std::size_t k = 0; k < lines; ++k)
        traces.push_back(traceOf(samples[k], 70.0 / double(count), 20 + double(k)));
      for (const InsideRule rule : {InsideRule::NonZero, InsideRule::Odd}) {
        QImage widest = whitePicture();
        ASSERT_TRUE(fill(widest, traces, 1, rule));
        xov::testing::forEachVectorWidth([&] {
          QImage picture = whitePicture();
          ASSERT_TRUE(fill(picture, traces, 1, rule));
          EXPECT_EQ(picture, widest);
        });
      }
    }
  }
}
