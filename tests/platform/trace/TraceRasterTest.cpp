#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include "tests/support/TracePictures.h"
#include "tests/support/TraceReference.h"
#include "tests/support/TraceSignals.h"

#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace xov;

namespace {

const float kNan = std::numeric_limits<float>::quiet_NaN();
const float kInfinity = std::numeric_limits<float>::infinity();

constexpr int kWidth = kPictureWidth, kHeight = kPictureHeight;

bool stroke(QImage& picture, std::span<const Trace> traces, double ratio, double lineWidth,
            const QColor& color = Qt::black) {
  return strokeTraces(targetOf(picture), traces, pictureTransform(ratio), picture.rect(), lineWidth, color);
}

int inkedPixels(const QImage& picture) {
  int inked = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x)
      inked += picture.pixel(x, y) != qRgb(255, 255, 255);
  }
  return inked;
}

class TraceRasterPicture : public ::testing::TestWithParam<double> {};

} // namespace

// The limits of a picture: the mean over inked pixels at most 1 level of 255, at most 0.1 % of them off by more
// than 16; of a burst, whose pixels are a thousand or so, a few.
TEST_P(TraceRasterPicture, equalsTheReferenceForEverySignalAndDensity) {
  const double ratio = GetParam();
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  for (const double perPixel : {0.3, 0.5, 2.0, 10.0, 50.0, 400.0}) {
    for (const Signal& signal : signalKinds()) {
      SCOPED_TRACE(::testing::Message() << signal.name << ", " << perPixel << " samples a pixel");
      const std::vector<float> samples = samplesOf(signal, perPixel * ratio, kWidth - 3, random);
      const Trace trace = traceOf(samples, 1 / (perPixel * ratio));
      QImage picture = whitePicture(ratio);
      ASSERT_TRUE(stroke(picture, {&trace, 1}, ratio, 1));
      // Exact along the rows, so that what is measured is the picture's error alone.
      constexpr int kPlaces = 96;
      const std::vector<double> expected =
          columnReference({&trace, 1}, pictureTransform(ratio), 1, picture.width(), picture.height(), kPlaces);
      const TraceDifference difference = compareWithReference(picture, expected);
      EXPECT_GT(difference.inked, 20);
      EXPECT_LE(difference.mean, 1.0);
      constexpr double kFew = 6; // noise seldom has four
      EXPECT_LE(difference.over16, std::max(0.001, kFew / double(difference.inked)));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(DevicePixelRatios, TraceRasterPicture, ::testing::Values(1.0, 1.5, 2.0),
                         [](const auto& ratio) { return "ratio" + std::to_string(int(ratio.param * 100)); });

// Errors along a steep edge do not cancel: all of it shows how finely columns are cut. Beside many lines, one begins
// as coarsely as it may.
TEST(TraceRaster, steepSmoothOscillationsEqualTheReference) {
  constexpr int kColumns = 32, kRows = 250, kPlaces = 96;
  constexpr std::size_t kLines = 40;
  constexpr double kPerPixel = 20;
  const QTransform upwards(1, 0, 0, -1, 0, kRows);
  const std::vector<float> farAway(std::size_t(kPerPixel * (kColumns - 3)), 1e6F);
  std::vector<float> samples(farAway.size());
  for (const double period : {2.0, 4.0, 10.0, 25.0, 50.0}) {
    for (const double width : {1.0, 1.3, 2.0, 3.0, 5.0}) {
      SCOPED_TRACE(::testing::Message() << "width " << width << ", period " << period);
      for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = float(110 * std::sin(2 * M_PI * double(i) / kPerPixel / period + 0.3));
      std::vector<Trace> traces(kLines, traceOf(farAway, 1 / kPerPixel));
      traces.front() = traceOf(samples, 1 / kPerPixel, kRows / 2.0);
      QImage picture(kColumns, kRows, QImage::Format_ARGB32_Premultiplied);
      picture.fill(Qt::white);
      ASSERT_TRUE(strokeTraces(targetOf(picture), traces, upwards, picture.rect(), width, Qt::black));
      const TraceDifference difference = compareWithReference(
          picture, columnReference({traces.data(), 1}, upwards, width, kColumns, kRows, kPlaces));
      EXPECT_LE(difference.mean, 1.05);
      EXPECT_LE(difference.worst, 32);
    }
  }
}

// Most of the lines lie outside the picture: what is compared is the work of a large path, which begins coarser.
TEST(TraceRaster, aLineOfManyIsAsExactAsOne) {
  constexpr std::size_t kLines = 40;
  std::mt19937 random(5);
  for (const double perPixel : {0.2, 0.6, 3.0, 30.0, 300.0}) {
    for (const Signal& signal : signalKinds()) {
      SCOPED_TRACE(::testing::Message() << signal.name << ", " << perPixel << " samples a pixel");
      const std::vector<float> samples = samplesOf(signal, perPixel, kWidth - 3, random);
      const std::vector<float> farAway(samples.size(), 1e6F);
      std::vector<Trace> traces(kLines, traceOf(farAway, 1 / perPixel));
      traces.front().samples = samples.data();
      QImage picture = whitePicture(1);
      ASSERT_TRUE(stroke(picture, traces, 1, 1));
      const std::vector<double> expected =
          referenceCoverage({traces.data(), 1}, pictureTransform(1), 1, picture.width(), picture.height(), 37);
      const TraceDifference difference = compareWithReference(picture, expected);
      EXPECT_GT(difference.inked, 20);
      EXPECT_LE(difference.mean, 1.2);
      EXPECT_LE(difference.over16, 0.001);
    }
  }
}

TEST(TraceRaster, linesThinnerThanAPixelAndWidePensEqualTheReference) {
  std::mt19937 random(5);
  for (const double lineWidth : {0.25, 0.6, 3.0, 11.0, 30.0}) {
    for (const double perPixel : {0.4, 3.0, 12.0, 60.0}) {
      for (const Signal& signal : signalKinds()) {
        SCOPED_TRACE(::testing::Message()
                     << signal.name << ", " << perPixel << " samples a pixel, width " << lineWidth);
        const std::vector<float> samples = samplesOf(signal, perPixel, kWidth - 3, random);
        const Trace trace = traceOf(samples, 1 / perPixel);
        QImage picture = whitePicture(1);
        ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, lineWidth));
        const TraceDifference difference = compareWithReference(
            picture, referenceCoverage({&trace, 1}, pictureTransform(1), lineWidth, kWidth, kHeight, 16));
        EXPECT_LE(difference.mean, 3.0); // the reference takes 16 × 16 places a pixel here
        EXPECT_LE(difference.over32, 0.005);
      }
    }
  }
}

TEST(TraceRaster, severalTracesOfOnePathInkTheirUnion) {
  std::mt19937 random(11);
  for (const double perPixel : {0.7, 5.0, 80.0}) {
    for (const double amplitude : {1.0, 6.0, 20.0}) {
      std::vector<std::vector<float>> samples;
      std::vector<Trace> traces;
      for (int k = 0; k < 7; ++k) {
        samples.emplace_back(std::size_t(perPixel * 60));
        for (float& sample : samples.back())
          sample = normal(random, amplitude);
      }
      for (int k = 0; k < 7; ++k)
        traces.push_back(traceOf(samples[std::size_t(k)], 1 / perPixel, (k * 5 % 7) * 6 + 4.3));
      QImage picture = whitePicture(1);
      ASSERT_TRUE(stroke(picture, traces, 1, 1));
      const TraceDifference difference =
          compareWithReference(picture, referenceCoverage(traces, pictureTransform(1), 1, kWidth, kHeight, 32));
      EXPECT_LE(difference.mean, 2.0) << perPixel << ' ' << amplitude;
      EXPECT_LE(difference.over32, 0.005) << perPixel << ' ' << amplitude;
    }
  }
}

// A section that is zoomed in until lines of few samples cross each other.
TEST(TraceRaster, longSegmentsThatCrossInkTheirUnion) {
  constexpr int kPlaces = 64, kLines = 6;
  std::mt19937 random(13);
  for (const double lineWidth : {1.0, 2.0, 3.0}) {
    for (const double perPixel : {0.1, 0.2, 0.5, 0.8}) {
      std::vector<std::vector<float>> samples(kLines, std::vector<float>(std::size_t(perPixel * 70)));
      std::vector<Trace> traces;
      for (std::vector<float>& each : samples) {
        for (float& sample : each)
          sample = normal(random, 7);
        traces.push_back(traceOf(each, 1 / perPixel, 8.3 * double(traces.size()) + 2));
      }
      QImage picture = whitePicture(1);
      ASSERT_TRUE(stroke(picture, traces, 1, lineWidth));
      const TraceDifference difference = compareWithReference(
          picture, columnReference(traces, pictureTransform(1), lineWidth, kWidth, kHeight, kPlaces));
      EXPECT_LE(difference.mean, 1) << perPixel << ' ' << lineWidth;
      EXPECT_LE(difference.over16, 0.001) << perPixel << ' ' << lineWidth;
    }
  }
}

TEST(TraceRaster, hundredsOfTracesInkTheirUnion) {
  std::mt19937 random(12);
  std::vector<std::vector<float>> samples(300, std::vector<float>(40));
  std::vector<Trace> traces;
  for (std::vector<float>& each : samples) {
    for (float& sample : each)
      sample = normal(random, 0.4);
    traces.push_back(traceOf(each, 1.7, std::uniform_real_distribution<double>(-2, kHeight + 2)(random)));
  }
  QImage picture = whitePicture(1);
  ASSERT_TRUE(stroke(picture, traces, 1, 0.05)); // thin lines, so that gaps remain between them
  const TraceDifference difference =
      compareWithReference(picture, referenceCoverage(traces, pictureTransform(1), 0.05, kWidth, kHeight, 32));
  EXPECT_LE(difference.mean, 4.0); // the reference's own places are as far apart as the lines are wide
  EXPECT_LE(std::abs(difference.bias), 0.5);
  EXPECT_LE(difference.over32, 0.005);
}

TEST(TraceRaster, manyShortLinesInOneColumnInkTheirUnion) {
  // Pairs of samples between gaps, 200 of them a pixel.
  std::mt19937 random(2);
  std::vector<float> samples(20 * 600);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = i % 3 == 2 ? kNan : normal(random, 8);
  const Trace trace = traceOf(samples, 1.0 / 600);
  QImage picture = whitePicture(1);
  ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, 0.5));
  const TraceDifference difference =
      compareWithReference(picture, referenceCoverage({&trace, 1}, pictureTransform(1), 0.5, kWidth, kHeight, 24));
  EXPECT_GT(difference.inked, 300);
  EXPECT_LE(difference.mean, 2.0);
  EXPECT_LE(difference.over32, 0.005);
}

TEST(TraceRaster, inkNeverDoublesWhereTracesCoincide) {
  std::mt19937 random(3);
  std::vector<float> samples(3000);
  for (float& sample : samples)
    sample = normal(random, 5);
  const Trace trace = traceOf(samples, 0.02);
  const std::vector<Trace> twice{trace, trace};
  const QColor half(20, 40, 200, 128);
  QImage once = whitePicture(1), doubled = whitePicture(1);
  ASSERT_TRUE(stroke(once, {&trace, 1}, 1, 1, half));
  ASSERT_TRUE(stroke(doubled, twice, 1, 1, half));
  EXPECT_EQ(once, doubled);
}

TEST(TraceRaster, laysTranslucentInkOverPremultipliedPixelsOnce) {
  const std::vector<float> samples(2);
  const Trace trace = traceOf(samples, 60, 24); // 6 pixels wide: rows 21 to 26 are covered whole
  QImage picture(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, 6, QColor(200, 100, 0, 128)));
  // On nothing: the colour itself, premultiplied: 200 · 128 / 255 = 100.4, 100 · 128 / 255 = 50.2.
  const QRgb over = reinterpret_cast<const QRgb*>(picture.constScanLine(23))[30];
  EXPECT_EQ(over, qRgba(100, 50, 0, 128));
  QImage white = whitePicture(1);
  ASSERT_TRUE(stroke(white, {&trace, 1}, 1, 6, QColor(200, 100, 0, 128)));
  // On white: 100.4 + 255 · 127 / 255 = 227.4, 50.2 + 127 = 177.2, 127.
  EXPECT_EQ(white.pixel(30, 23), qRgb(227, 177, 127));
  EXPECT_EQ(white.pixel(30, 10), qRgb(255, 255, 255));
}

TEST(TraceRaster, endsInAButtAtTheExactColumn) {
  // Horizontal from x = 1.37 + 10 to 1.37 + 50, 2 high around y = 24: rows 23 and 24.
  const std::vector<float> samples(2);
  Trace trace = traceOf(samples, 40, 24);
  trace.xOffset = 11.25;
  QImage picture = whitePicture(1);
  ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, 2));
  EXPECT_EQ(qGreen(picture.pixel(10, 23)), 255);
  EXPECT_NEAR(qGreen(picture.pixel(11, 23)), 255 * 0.25, 1); // inked from 11.25 on
  EXPECT_EQ(qGreen(picture.pixel(12, 23)), 0);
  EXPECT_NEAR(qGreen(picture.pixel(51, 24)), 255 * 0.75, 1); // inked up to 51.25
  EXPECT_EQ(qGreen(picture.pixel(52, 24)), 255);
}

TEST(TraceRaster, aSingleSampleDrawsNothing) {
  const std::vector<float> samples{0, kNan, 0, kNan, 0};
  const Trace trace = traceOf(samples, 10);
  QImage picture = whitePicture(1);
  EXPECT_TRUE(stroke(picture, {&trace, 1}, 1, 4));
  EXPECT_EQ(inkedPixels(picture), 0);
}

TEST(TraceRaster, changesOnlyPixelsInsideTheClip) {
  std::mt19937 random(4);
  std::vector<float> samples(5000);
  for (float& sample : samples)
    sample = normal(random, 12);
  const Trace trace = traceOf(samples, 0.0133);
  QImage whole = whitePicture(1);
  ASSERT_TRUE(stroke(whole, {&trace, 1}, 1, 1));
  for (const QRect& clip : {QRect(10, 7, 33, 20), QRect(0, 0, 1, 48), QRect(71, 47, 1, 1), QRect(-50, 20, 500, 3)}) {
    QImage clipped = whitePicture(1);
    ASSERT_TRUE(strokeTraces(targetOf(clipped), {&trace, 1}, pictureTransform(1), clip, 1, Qt::black));
    int worst = 0;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        const int expected = clip.contains(x, y) ? qGreen(whole.pixel(x, y)) : 255;
        worst = std::max(worst, std::abs(qGreen(clipped.pixel(x, y)) - expected));
      }
    }
    EXPECT_LE(worst, 4); // a clip decides which ink counts for the fineness
  }
}

TEST(TraceRaster, aClipOutsideThePictureDrawsNothing) {
  const std::vector<float> samples(100, 1.0F);
  const Trace trace = traceOf(samples, 1);
  QImage picture = whitePicture(1);
  EXPECT_TRUE(strokeTraces(targetOf(picture), {&trace, 1}, pictureTransform(1), QRect(500, 0, 10, 10), 1, Qt::black));
  EXPECT_TRUE(strokeTraces(targetOf(picture), {&trace, 1}, pictureTransform(1), QRect(), 1, Qt::black));
  EXPECT_TRUE(strokeTraces({}, {&trace, 1}, pictureTransform(1), QRect(0, 0, 10, 10), 1, Qt::black));
  EXPECT_TRUE(stroke(picture, {}, 1, 1));
  EXPECT_EQ(inkedPixels(picture), 0);
}

TEST(TraceRaster, readsNoSampleOutsideTheTrace) {
  // What stands around the trace would break it or draw over everything, and guards of its own size let the address
  // sanitizer see a read beyond.
  for (const std::size_t count : {2U, 3U, 5U, 17U, 64U, 1000U, 20'011U}) {
    std::vector<float> alone(count, 0.25F), surrounded(count + 2000, 1e9F);
    std::fill_n(surrounded.begin() + 1000, count, 0.25F);
    Trace exact = traceOf(alone, 60.0 / double(count));
    Trace inner = traceOf(surrounded, 60.0 / double(count));
    inner.first = 1000;
    inner.last = std::int64_t(1000 + count);
    inner.time = TraceTime::accumulated(0, 1);
    exact.time = TraceTime::accumulated(0, 1);
    QImage expected = whitePicture(1), picture = whitePicture(1);
    ASSERT_TRUE(stroke(expected, {&exact, 1}, 1, 1));
    ASSERT_TRUE(stroke(picture, {&inner, 1}, 1, 1));
    EXPECT_EQ(picture, expected);
    EXPECT_GT(inkedPixels(picture), 50);
  }
}

TEST(TraceRaster, infiniteSamplesBreakTheLineAtEveryDensity) {
  for (const double perPixel : {1.0, 20.0, 500.0}) {
    std::vector<float> samples(std::size_t(perPixel * 60));
    for (std::size_t i = samples.size() / 3; i < samples.size() / 2; ++i)
      samples[i] = i % 2 == 0 ? kInfinity : -kInfinity;
    const Trace trace = traceOf(samples, 1 / perPixel);
    QImage picture = whitePicture(1);
    ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, 1));
    // Inked columns: 60 points less the sixth that is missing, on two rows.
    EXPECT_NEAR(inkedPixels(picture), 2 * 50, 8) << perPixel;
    EXPECT_EQ(qGreen(picture.pixel(26, kHeight / 2 - 1)), 255) << perPixel;
  }
}

TEST(TraceRaster, unevenTimesEqualTheReference) {
  std::mt19937 random(8);
  std::exponential_distribution<float> wait(1);
  for (const double perPixel : {0.5, 4.0, 40.0, 200.0}) {
    std::vector<float> samples(std::size_t(perPixel * 60)), times(samples.size());
    float time = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
      samples[i] = normal(random, 4);
      times[i] = time += wait(random) * (i % 50 == 7 ? 20.0F : 0.6F);
    }
    Trace trace = traceOf(samples, 60.0 / double(time));
    trace.time = TraceTime::explicitValues(times.data());
    QImage picture = whitePicture(1);
    ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, 1));
    const TraceDifference difference =
        compareWithReference(picture, referenceCoverage({&trace, 1}, pictureTransform(1), 1, kWidth, kHeight, 32));
    EXPECT_LE(difference.mean, 2.0) << perPixel;
    EXPECT_LE(difference.over32, 0.005) << perPixel;
  }
}

TEST(TraceRaster, timesWithoutThePrecisionForTheirStepFallTogetherAsTheyRound) {
  // Around 2²⁴ times are even: uniform times of a step of 1 come in twos or fours, and the picture must show it.
  std::mt19937 random(9);
  std::vector<float> samples(60);
  for (float& sample : samples)
    sample = normal(random, 6);
  Trace trace = traceOf(samples, 1);
  trace.time = TraceTime::uniform(16777216.0F, 1.0F);
  trace.tOrigin = 16777216.0F;
  QImage picture = whitePicture(1);
  ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, 1));
  const TraceDifference difference =
      compareWithReference(picture, referenceCoverage({&trace, 1}, pictureTransform(1), 1, kWidth, kHeight, 32));
  EXPECT_LE(difference.mean, 2.0);
  EXPECT_LE(difference.over32, 0.005);
}

TEST(TraceRaster, equalTimesAreAVerticalLine) {
  const std::vector<float> samples{-10, 10, 3}, times{5, 5, 5};
  Trace trace = traceOf(samples, 6);
  trace.time = TraceTime::explicitValues(times.data());
  trace.xOffset = 0.5;
  QImage picture = whitePicture(1);
  ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, 1));
  // x = 30.5: column 30 from y = 24.21 - 10 to 24.21 + 10, rows 13.79 to 33.79 from the top.
  EXPECT_EQ(qGreen(picture.pixel(30, 24)), 0);
  EXPECT_NEAR(qGreen(picture.pixel(29, 24)), 255, 5);
  EXPECT_NEAR(qGreen(picture.pixel(30, 33)), 255 * (1 - 0.79), 3); // the butt at the line's first end
  EXPECT_EQ(qGreen(picture.pixel(30, 35)), 255);
}

TEST(TraceRaster, refusesWhatItCannotStroke) {
  const std::vector<float> samples{0, 1, 2}, back{0, 2, 1};
  const Trace trace = traceOf(samples, 10);
  QImage picture = whitePicture(1);
  const auto strokes = [&](const Trace& t, const QTransform& transform, double width) {
    return strokeTraces(targetOf(picture), {&t, 1}, transform, picture.rect(), width, Qt::black);
  };
  EXPECT_FALSE(strokes(trace, QTransform().rotate(10), 1));
  EXPECT_FALSE(strokes(trace, QTransform().rotate(90), 1));
  EXPECT_FALSE(strokes(trace, QTransform(1, 0.1, 0, 1, 0, 0), 1));
  EXPECT_FALSE(strokes(trace, QTransform::fromScale(1, 2), 1));
  EXPECT_FALSE(strokes(trace, QTransform::fromScale(-1, 1), 1));
  EXPECT_FALSE(strokes(trace, QTransform::fromScale(0, 0), 1));
  EXPECT_FALSE(strokes(trace, QTransform(), 1000));
  Trace mirrored = trace;
  mirrored.xScale = -1;
  EXPECT_FALSE(strokes(mirrored, QTransform(), 1));
  Trace backwards = trace;
  backwards.time = TraceTime::uniform(0, -1);
  EXPECT_FALSE(strokes(backwards, QTransform(), 1));
  backwards.time = TraceTime::explicitValues(back.data());
  EXPECT_FALSE(strokes(backwards, QTransform(), 1));
  EXPECT_EQ(inkedPixels(picture), 0);
  EXPECT_TRUE(strokes(trace, QTransform::fromScale(1, 1), 1));
  EXPECT_TRUE(strokes(trace, QTransform::fromScale(1, -1), 1));
}

TEST(TraceRaster, coordinatesFarOutsideLeaveThePictureAsItIs) {
  // From (10, 24) almost straight up: the same as a vertical line.
  const std::vector<float> far{0, 1e38F, 1e38F};
  Trace trace = traceOf(far, 1e-3);
  trace.xOffset = 30.5;
  trace.yScale = 1e30;
  QImage picture = whitePicture(1);
  ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, 1));
  EXPECT_EQ(qGreen(picture.pixel(30, 10)), 0);
  EXPECT_EQ(qGreen(picture.pixel(30, 30)), 255);
  // A flat line that begins and ends a million pictures away.
  const std::vector<float> wide{0, 0};
  Trace flat = traceOf(wide, 1e9, 24);
  flat.xOffset = -4e8;
  picture.fill(Qt::white);
  ASSERT_TRUE(stroke(picture, {&flat, 1}, 1, 2));
  for (int x = 0; x < kWidth; ++x) {
    EXPECT_EQ(qGreen(picture.pixel(x, 23)), 0);
    EXPECT_EQ(qGreen(picture.pixel(x, 25)), 255);
  }
}

// None takes work without end: each would keep the test from ending.
TEST(TraceRaster, absurdDescriptionsEndAndStayWithinTheirClip) {
  const float largest = std::numeric_limits<float>::max();
  std::mt19937 random(6);
  std::vector<float> samples(3000), times(3000);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const float choices[] = {0, 1e38F, -1e38F, largest, -largest, 1e-40F, kNan, kInfinity, 5};
    samples[i] = choices[random() % 9];
    times[i] = float(i) * (i > 2000 ? 1e34F : 1e-3F);
  }
  const double scales[] = {0, 1e-300, 1, 1e30, 1e300, double(kNan), double(kInfinity)};
  const QRect clip(0, 0, 9, 9);
  for (const double xScale : scales) {
    for (const double yScale : scales) {
      for (const TraceTime& time : {TraceTime::uniform(0, 1e-3F), TraceTime::accumulated(-1, largest),
                                    TraceTime::accumulated(1e8F, 1), TraceTime::explicitValues(times.data())}) {
        for (const double width : {0.0, 1e-30, 1.0, -1.0, double(kNan), double(kInfinity), 1e300}) {
          Trace trace = traceOf(samples, xScale);
          trace.yScale = yScale;
          trace.time = time;
          trace.vOrigin = largest;
          QImage picture = whitePicture(1);
          strokeTraces(targetOf(picture), {&trace, 1}, pictureTransform(1), clip, width, Qt::black);
          ASSERT_EQ(inkedPixels(picture), inkedPixels(picture.copy(clip)));
          QImage dot(1, 1, QImage::Format_ARGB32_Premultiplied);
          strokeTraces(targetOf(dot), {&trace, 1}, pictureTransform(1), dot.rect(), width, Qt::black);
        }
      }
    }
  }
}

TEST(TraceRaster, aPenWithoutWidthOrInkDrawsNothing) {
  const std::vector<float> samples(50, 1.0F);
  const Trace trace = traceOf(samples, 1);
  QImage picture = whitePicture(1);
  EXPECT_TRUE(stroke(picture, {&trace, 1}, 1, 0));
  EXPECT_TRUE(stroke(picture, {&trace, 1}, 1, 1, QColor(0, 0, 0, 0)));
  EXPECT_EQ(inkedPixels(picture), 0);
}

TEST(TraceRaster, clampedValuesAndTheFirstValueShow) {
  std::vector<float> samples(6000, 100.0F);
  Trace trace = traceOf(samples, 0.01, 4);
  trace.clampHigh = 10.0F;
  trace.firstValue = 30.0F;
  QImage picture = whitePicture(1);
  ASSERT_TRUE(stroke(picture, {&trace, 1}, 1, 2));
  EXPECT_EQ(qGreen(picture.pixel(40, kHeight - 15)), 0); // y = 14 is the clamp
  EXPECT_EQ(qGreen(picture.pixel(40, kHeight - 17)), 255);
  EXPECT_LT(qGreen(picture.pixel(1, kHeight - 30)), 128); // the first segment comes down from y = 34
}
