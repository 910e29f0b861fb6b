#include "XOV_Graphics/platform/trace/TraceRaster.h"
#include "tests/support/TraceReference.h"
#include "tests/support/TraceSignals.h"

#include <gtest/gtest.h>

#include <QImage>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

using namespace xov;

namespace {

const float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr int kWidth = 6, kHeight = 24;
constexpr int kPlaces = 29; // of the reference along a pixel's side

/// The picture of samples that fill its width, and the reference's.
TraceDifference differenceOf(const std::vector<float>& samples, double lineWidth) {
  Trace trace;
  trace.samples = samples.data();
  trace.last = std::int64_t(samples.size());
  trace.xScale = double(kWidth) / double(samples.size());
  trace.yOffset = kHeight / 2.0 + 0.21;
  const QTransform viewToDevice(1, 0, 0, -1, 0, kHeight);
  QImage picture(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::white);
  const PixelTarget target{picture.bits(), picture.bytesPerLine(), kWidth, kHeight};
  EXPECT_TRUE(strokeTraces(target, {&trace, 1}, viewToDevice, picture.rect(), lineWidth, Qt::black));
  return compareWithReference(picture,
                              referenceCoverage({&trace, 1}, viewToDevice, lineWidth, kWidth, kHeight, kPlaces));
}

} // namespace

// Hundreds of samples a pixel, and a gap every few of them. The limit is that of the other lines, and the half level
// that the reference is off with so few places.
TEST(TraceSnippets, inkTheirUnion) {
  struct Kind {
    const char* name;
    std::function<double(int i, std::mt19937& random)> value;
  };
  const Kind kinds[] = {
      {"noise", [](int, std::mt19937& random) { return double(normal(random, 3)); }},
      {"two levels", [](int i, std::mt19937& random) { return normal(random, 0.3) + (i / 7 % 2 != 0 ? 5 : -5); }},
      {"slow sine", [](int i, std::mt19937&) { return 8 * std::sin(i * 0.008); }},
      {"spikes", [](int i, std::mt19937&) { return i % 301 == 0 ? 9.0 : -2.0; }},
  };
  for (const Kind& kind : kinds) {
    for (const int every : {4, 23}) {
      const double lineWidth = every == 4 ? 1 : 3.3;
      SCOPED_TRACE(::testing::Message() << kind.name << ", a gap every " << every);
      std::mt19937 random(3);
      std::vector<float> samples(kWidth * 200);
      for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = i % std::size_t(every) == 0 ? kNan : float(kind.value(int(i), random));
      const TraceDifference difference = differenceOf(samples, lineWidth);
      EXPECT_GT(difference.inked, 20);
      EXPECT_LE(difference.mean, 1.6);
      EXPECT_LE(difference.worst, 16);
    }
  }
}

TEST(TraceSnippets, ofTwoSamplesAreUprightBars) {
  // Each pair of samples rises from -4 to 4: together they are one bar over the whole width, without discs above.
  std::vector<float> samples(kWidth * 99);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = i % 3 == 2 ? kNan : (i % 3 == 0 ? -4.F : 4.F);
  const TraceDifference difference = differenceOf(samples, 1);
  EXPECT_GE(difference.inked, 8 * (kWidth - 1));
  EXPECT_LE(difference.inked, 9 * kWidth); // 8 rows, of which two are parts
  EXPECT_LE(difference.mean, 1.0);
}

TEST(TraceSnippets, alternateWithLongLines) {
  std::mt19937 random(5);
  std::vector<float> samples(kWidth * 200);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = i / 150 % 2 == 0 && i % 5 == 0 ? kNan : normal(random, 3);
  const TraceDifference difference = differenceOf(samples, 1);
  EXPECT_LE(difference.mean, 1.6);
  EXPECT_LE(difference.worst, 16);
}
