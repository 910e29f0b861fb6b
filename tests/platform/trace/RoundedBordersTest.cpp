#include "XOV_Graphics/platform/trace/RoundedBorders.h"

#include "tests/support/TracePictures.h"
#include "tests/support/TraceSignals.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

using namespace xov;
using xov::testing::forEachVectorWidth;

namespace {

// A sample every hundredth of a second, ten days after the times begin: single precision is 1/16 s fine there.
constexpr std::int32_t kTenDays = 86400000;
const RoundedColumns kLate{0.3F, 0.01F, 863900, 20, -5.25};

double columnOf(const RoundedColumns& columns, std::int64_t sample) {
  const float product = columns.step * float(sample);
  const float time = columns.start + product;
  const float since = time - columns.origin;
  return double(since) * columns.scale + columns.offset;
}

/// Borders every `spacing` columns right of sample `base`.
std::vector<double> bordersOf(const RoundedColumns& columns, std::int32_t base, double spacing, int count) {
  std::vector<double> borders;
  for (int k = 1; k <= count; ++k)
    borders.push_back(columnOf(columns, base) + k * spacing);
  return borders;
}

BorderPlaces placesOf(const RoundedColumns& columns, std::int32_t base, double spacing, std::int32_t samples) {
  BorderPlaces places;
  const double width = double(columns.step) * columns.scale;
  const double left = (double(columns.start) - double(columns.origin)) * columns.scale + columns.offset;
  places.base = base;
  places.guess = (columnOf(columns, base) + spacing - left) / width - base;
  places.step = spacing / width;
  places.reach = 40;
  places.lowest = 1;
  places.highest = samples - 1;
  return places;
}

} // namespace

TEST(RoundedBorders, lieAtTheFirstSampleThatIsNotLeftOfThem) {
  constexpr std::int32_t kBase = kTenDays - 30000, kSamples = 20000;
  for (const double spacing : {0.0625, 0.4, 3.1}) {
    const int count = spacing < 1 ? 700 : 61;
    const std::vector<double> borders = bordersOf(kLate, kBase, spacing, count);
    forEachVectorWidth([&] {
      std::vector<std::int32_t> cuts(borders.size());
      std::vector<float> fractions(borders.size());
      ASSERT_TRUE(cutRounded(kLate, placesOf(kLate, kBase, spacing, kSamples), borders.data(), count, cuts.data(),
                             fractions.data()));
      std::int32_t expected = 1;
      for (std::size_t k = 0; k < borders.size(); ++k) {
        while (expected < kSamples - 1 && columnOf(kLate, kBase + expected) < borders[k])
          ++expected;
        const double before = columnOf(kLate, kBase + expected - 1), at = columnOf(kLate, kBase + expected);
        const double along = at > before ? std::clamp((borders[k] - before) / (at - before), 0.0, 1.0) : 1.0;
        ASSERT_EQ(cuts[k], expected) << spacing << ' ' << k;
        ASSERT_EQ(fractions[k], float(along)) << spacing << ' ' << k;
      }
    });
  }
}

TEST(RoundedBorders, areTheSameWithoutFractions) {
  // Late, and around time 0, where single precision is finer than columns tell.
  const RoundedColumns aroundZero{-2.5F, 1.0F / 128, 0, 20, 333.3};
  constexpr std::int32_t kSamples = 20000;
  for (const auto& [columns, base] : {std::pair(kLate, kTenDays - 30000), std::pair(aroundZero, 10)}) {
    for (const int count : {31, 32, 33, 64, 100, 301}) {
      for (const double beside : {0.0, 1.0, -1.0}) {
        // Columns of samples, and what lies next to them.
        std::vector<double> borders = bordersOf(columns, base, 0.4, count);
        for (double& border : borders) {
          const auto near = std::int64_t(std::round((border - columnOf(columns, base)) / (columns.step * 20.0)));
          border = columnOf(columns, base + near);
          if (beside != 0) border = std::nextafter(border, beside * 1e9);
        }
        forEachVectorWidth([&] {
          std::vector<std::int32_t> cuts(borders.size());
          ASSERT_TRUE(cutRounded(columns, placesOf(columns, base, 0.4, kSamples), borders.data(), count, cuts.data(),
                                 nullptr));
          std::int32_t expected = 1;
          for (std::size_t k = 0; k < borders.size(); ++k) {
            while (expected < kSamples - 1 && columnOf(columns, base + expected) < borders[k])
              ++expected;
            ASSERT_EQ(cuts[k], expected) << count << ' ' << beside << ' ' << k;
          }
        });
      }
    }
  }
}

TEST(RoundedBorders, outOfReachAreToldApart) {
  constexpr std::int32_t kBase = kTenDays - 30000, kSamples = 20000;
  const std::vector<double> borders = bordersOf(kLate, kBase, 0.4, 100);
  BorderPlaces places = placesOf(kLate, kBase, 0.4, kSamples);
  std::vector<std::int32_t> cuts(borders.size());
  EXPECT_TRUE(cutRounded(kLate, places, borders.data(), 100, cuts.data(), nullptr));
  places.guess += 200;
  EXPECT_FALSE(cutRounded(kLate, places, borders.data(), 100, cuts.data(), nullptr));
  places.guess -= 400;
  EXPECT_FALSE(cutRounded(kLate, places, borders.data(), 100, cuts.data(), nullptr));
}

TEST(RoundedBorders, makeThePictureOfTheSameTimesSpelledOut) {
  std::mt19937 random(31);
  constexpr std::int64_t kFirst = kTenDays / 100;
  for (const double perPixel : {3.0, 40.0, 300.0}) {
    const auto count = std::size_t(perPixel * 66);
    std::vector<float> samples(std::size_t(kFirst) + count), times(samples.size());
    const TraceTime uniform = TraceTime::uniform(863900, 1.0F / 256);
    for (std::size_t i = 0; i < samples.size(); ++i) {
      samples[i] = normal(random, 6);
      times[i] = uniform.start + uniform.step * float(i);
    }
    Trace trace = traceOf(samples, 1);
    trace.first = kFirst;
    trace.xScale = 256 / perPixel;
    trace.tOrigin = times[std::size_t(kFirst)];
    trace.time = uniform;
    QImage together = whitePicture(), spelledOut = whitePicture();
    EXPECT_TRUE(strokeTraces(targetOf(together), {&trace, 1}, pictureTransform(), together.rect(), 1, Qt::black));
    trace.time = TraceTime::explicitValues(times.data());
    EXPECT_TRUE(strokeTraces(targetOf(spelledOut), {&trace, 1}, pictureTransform(), together.rect(), 1, Qt::black));
    EXPECT_NE(together, whitePicture());
    EXPECT_EQ(together, spelledOut) << perPixel;
  }
}
