#include "XOV_Graphics/seismic/array/BeamPower.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace xov {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kInterval = 0.05; // s

// A pulse of 1 Hz about 5 s, one and a half seconds long.
float pulse(double t) {
  const double x = kPi * (t - 5);
  return float((1 - 2 * x * x) * std::exp(-x * x));
}

/// Nine stations, 2 km apart, on a wave that comes from where the slowness points to: stations further that way get
/// it earlier.
class Array {
public:
  Array(double eastSlowness, double northSlowness, int samples = 200) {
    for (int i = 0; i < 9; ++i) {
      const StationOffset offset{2.0 * (i % 3 - 1), 2.0 * (i / 3 - 1)};
      std::vector<float> trace;
      for (int k = 0; k < samples; ++k)
        trace.push_back(pulse(k * kInterval + eastSlowness * offset.eastKm + northSlowness * offset.northKm));
      data.push_back(trace);
      traces.push_back({QStringLiteral("S%1").arg(i), {}, 0, offset});
    }
  }
  Result<BeamPower> beam() {
    for (std::size_t i = 0; i < traces.size(); ++i)
      traces[i].samples = data[i];
    return beamPower(traces, search);
  }
  QString error() { return beam().error(); }

  std::vector<std::vector<float>> data;
  std::vector<ArrayTrace> traces;
  BeamSearch search{kInterval, 0, 0, 0.5, 2, 0.4, 41};
};

struct Peak {
  double east;
  double north;
  float power;
};

Peak peakOf(const BeamPower& beam) {
  const auto largest = std::max_element(beam.power.begin(), beam.power.end());
  const auto index = std::int32_t(largest - beam.power.begin());
  return {beam.slowness(index % beam.steps), beam.slowness(beam.steps - 1 - index / beam.steps), *largest};
}

// 0.12 and 0.16 s/km are on the grid of 0.02 s/km: all stations add up there.
TEST(BeamPower, findsTheSlownessOfAPlaneWave) {
  for (const auto& [east, north] : {std::pair(0.12, 0.16), {-0.2, 0.06}, {0.1, -0.3}, {0.0, 0.0}}) {
    const auto beam = Array(east, north).beam();
    ASSERT_TRUE(beam) << qPrintable(beam.error());
    const Peak peak = peakOf(*beam);
    EXPECT_NEAR(peak.east, east, 1e-9);
    EXPECT_NEAR(peak.north, north, 1e-9);
    EXPECT_NEAR(peak.power, 1, 1e-3);
  }
}

TEST(BeamPower, findsASlownessBetweenGridPointsToTheirSpacing) {
  const auto beam = Array(0.113, -0.087).beam();
  const Peak peak = peakOf(*beam);
  EXPECT_NEAR(peak.east, 0.113, 0.02);
  EXPECT_NEAR(peak.north, -0.087, 0.02);
}

// Two stations 1 km apart, east and west, with the same trace, at 1 Hz alone:
// |1/2 (exp(iπs) + exp(−iπs))|² = cos²(πs): 1 at 0, 1/2 at 1/4 and 0 at 1/2 s/km, whatever the north slowness is.
TEST(BeamPower, ofTwoStationsIsASquaredCosine) {
  Array array(0, 0);
  array.data.resize(2);
  array.traces.resize(2);
  array.traces[0].offset = {-0.5, 0};
  array.traces[1].offset = {0.5, 0};
  array.search = {kInterval, 0, 0, 1, 1, 0.5, 5}; // 200 samples are 10 s: frequencies by 0.1 Hz
  const auto beam = array.beam();
  ASSERT_TRUE(beam) << qPrintable(beam.error());
  EXPECT_EQ(beam->frequencies, 1);
  EXPECT_NEAR(beam->lowestHz, 1, 1e-12);
  const float expected[] = {0, 0.5F, 1, 0.5F, 0};
  for (std::size_t i = 0; i < 25; ++i)
    EXPECT_NEAR(beam->power[i], expected[i % 5], 1e-6);
}

// One of two stations is silent: |X/2|² over (|X|² + 0)/2 is 1/2 everywhere.
TEST(BeamPower, ofOneLoudStationOfTwoIsAHalf) {
  Array array(0, 0);
  array.data.resize(2);
  array.traces.resize(2);
  std::fill(array.data[1].begin(), array.data[1].end(), 0.0F);
  const auto beam = array.beam();
  ASSERT_TRUE(beam) << qPrintable(beam.error());
  for (const float power : beam->power)
    ASSERT_NEAR(power, 0.5, 1e-6);
}

// Noise that differs from station to station gives 1/N on average over frequencies and slownesses.
TEST(BeamPower, ofNoiseIsOneOverTheNumberOfStations) {
  Array array(0, 0, 4000);
  std::mt19937 random(7);
  std::normal_distribution<float> noise;
  for (auto& trace : array.data)
    std::generate(trace.begin(), trace.end(), [&] { return noise(random); });
  array.search.lowestHz = 1;
  array.search.highestHz = 5;
  const auto beam = array.beam();
  double mean = 0;
  for (const float power : beam->power)
    mean += power / double(beam->power.size());
  EXPECT_NEAR(mean, 1.0 / 9, 0.01);
}

TEST(BeamPower, doesNotDependOnAmplitudesOrOffsets) {
  Array array(0.12, 0.16);
  const auto beam = array.beam();
  for (auto& trace : array.data)
    std::transform(trace.begin(), trace.end(), trace.begin(), [](float value) { return 1000 * value + 77; });
  const auto louder = array.beam();
  for (std::size_t i = 0; i < beam->power.size(); ++i)
    ASSERT_NEAR(louder->power[i], beam->power[i], 1e-4);
}

// The first trace starts 0.4 samples late and 7 samples early: its samples are those of other moments.
TEST(BeamPower, takesStartsBetweenSamplesIntoAccount) {
  for (const double shift : {0.4, -7.0, -6.6, 0.97}) {
    Array array(0.12, 0.16);
    const StationOffset& offset = array.traces[0].offset;
    for (int k = 0; k < 200; ++k)
      array.data[0][std::size_t(k)] = pulse((k + shift) * kInterval + 0.12 * offset.eastKm + 0.16 * offset.northKm);
    array.traces[0].startSeconds = shift * kInterval;
    const auto beam = array.beam();
    ASSERT_TRUE(beam) << qPrintable(beam.error());
    const Peak peak = peakOf(*beam);
    EXPECT_NEAR(peak.east, 0.12, 1e-9);
    EXPECT_NEAR(peak.north, 0.16, 1e-9);
    EXPECT_NEAR(peak.power, 1, 2e-3) << shift;
  }
}

// A second wave from the west, 20 s after the first: each window has one wave.
TEST(BeamPower, looksAtTheWindowOnly) {
  Array array(0.12, 0.16, 600);
  for (std::size_t i = 0; i < 9; ++i) {
    for (int k = 0; k < 600; ++k)
      array.data[i][std::size_t(k)] += 3 * pulse(k * kInterval - 20 - 0.2 * array.traces[i].offset.eastKm);
  }
  array.search.windowTo = 12;
  EXPECT_NEAR(peakOf(*array.beam()).east, 0.12, 1e-9);
  array.search.windowFrom = 20;
  array.search.windowTo = 30;
  EXPECT_NEAR(peakOf(*array.beam()).east, -0.2, 1e-9);
  array.search.windowTo = 0;
  EXPECT_NEAR(peakOf(*array.beam()).east, -0.2, 1e-9) << "to the end";
}

TEST(BeamPower, rowsGoFromNorthToSouthAndColumnsFromWestToEast) {
  const auto beam = Array(0.4, 0.4).beam();
  const auto largest = std::max_element(beam->power.begin(), beam->power.end()) - beam->power.begin();
  EXPECT_EQ(largest, 40) << "the last of the first row";
  EXPECT_EQ(beam->slowness(0), -0.4);
  EXPECT_EQ(beam->slowness(40), 0.4);
}

// 200 samples of 0.05 s: four periods in 10 s are 0.4 Hz, half of Nyquist is 5 Hz.
TEST(BeamPower, takesASensibleBandUnlessOneIsGiven) {
  Array array(0, 0);
  array.search.lowestHz = array.search.highestHz = 0;
  const auto beam = array.beam();
  EXPECT_NEAR(beam->lowestHz, 0.4, 1e-9);
  EXPECT_NEAR(beam->highestHz, 5, 1e-9);
  EXPECT_EQ(beam->frequencies, 47);
}

TEST(BeamPower, refusesAnArrayOfOneStation) {
  Array array(0, 0);
  array.data.resize(1);
  array.traces.resize(1);
  EXPECT_EQ(array.error(), QStringLiteral("1 station: an array has at least two"));
}

TEST(BeamPower, refusesSamplesThatAreNoNumbers) {
  Array array(0, 0);
  array.data[3][17] = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(array.error(), QStringLiteral("S3: sample 17 is not a finite number"));
  array.search.windowFrom = 2;
  EXPECT_TRUE(array.beam()) << "outside the window it does no harm";
}

TEST(BeamPower, refusesTracesWithoutCommonTime) {
  Array array(0, 0);
  array.traces[8].startSeconds = 20;
  EXPECT_EQ(array.error(), QStringLiteral("the traces have no time in common"));
}

TEST(BeamPower, refusesWindowsThatTheTracesDoNotFill) {
  Array array(0, 0);
  array.search.windowTo = 11;
  EXPECT_EQ(array.error(), QStringLiteral("a window from 0 to 11 s: the traces have 0 to 10 s in common"));
  array.search.windowFrom = 5;
  array.search.windowTo = 5.2;
  EXPECT_TRUE(array.error().startsWith(QStringLiteral("a window of 4 samples"))) << qPrintable(array.error());
}

TEST(BeamPower, refusesBandsThatHoldNoFrequency) {
  Array array(0, 0);
  array.search.lowestHz = 1.01;
  array.search.highestHz = 1.09;
  EXPECT_EQ(array.error(), QStringLiteral("no frequency from 1.01 Hz to 1.09 Hz in a window of 10 s; the frequencies "
                                          "are 0.1 Hz apart"));
  array.search.highestHz = 10.5;
  EXPECT_EQ(array.error(), QStringLiteral("frequencies from 1.01 Hz to 10.5 Hz: expected a range below half the "
                                          "sampling rate, 10 Hz"));
}

TEST(BeamPower, refusesSilence) {
  Array array(0, 0);
  for (auto& trace : array.data)
    std::fill(trace.begin(), trace.end(), 3.0F);
  EXPECT_EQ(array.error(), QStringLiteral("the traces have no power from 0.5 Hz to 2 Hz"));
}

TEST(BeamPower, refusesAbsurdGridsAndIntervals) {
  Array array(0, 0);
  for (const int steps : {1, 0, -5, 2002, std::numeric_limits<int>::max()}) {
    array.search.steps = steps;
    EXPECT_FALSE(array.beam());
  }
  array.search.steps = 3;
  for (const double limit : {0.0, -1.0, HUGE_VAL, std::nan("")}) {
    array.search.slownessLimit = limit;
    EXPECT_FALSE(array.beam());
  }
  array.search.slownessLimit = 1;
  for (const double interval : {0.0, -1.0, HUGE_VAL, std::nan("")}) {
    array.search.intervalSeconds = interval;
    EXPECT_FALSE(array.beam());
  }
}

TEST(BeamPower, tellsHowFarItIs) {
  Array array(0, 0);
  ASSERT_TRUE(array.beam());
  std::vector<std::int64_t> done;
  const auto beam = beamPower(array.traces, array.search, [&](std::int64_t now, std::int64_t total) {
    done.push_back(now);
    EXPECT_EQ(total, 16); // 0.5 … 2 Hz by 0.1 Hz
  });
  EXPECT_EQ(done.size(), 16u);
  EXPECT_EQ(done.back(), 16);
}

} // namespace
} // namespace xov
