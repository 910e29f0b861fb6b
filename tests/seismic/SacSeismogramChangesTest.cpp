#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace xov;

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

SacHeader header(float delta = 1, float b = 0) {
  SacHeader made;
  made.delta = delta;
  made.b = b;
  return made;
}

// The extremes that the record knows are those of its samples, also in its index.
void expectKnowsItsSamples(const SacSeismogram& trace) {
  const Extrema extrema = finiteExtrema(trace.samples());
  EXPECT_EQ(trace.smin(), extrema.min);
  EXPECT_EQ(trace.smax(), extrema.max);
  EXPECT_EQ(trace.GetSacHeader()->depmin, extrema.min);
  EXPECT_EQ(trace.GetSacHeader()->depmax, extrema.max);
  const auto count = std::int64_t(trace.samples().size());
  ASSERT_TRUE(trace.sampleIndex()->covers(trace.GetSacSeis(), 0, count));
  const SampleIndex::Blocks blocks = trace.sampleIndex()->blocksWithin(trace.GetSacSeis(), 0, count);
  for (std::int64_t k = 0; k < blocks.count; ++k) {
    const Extrema block = finiteExtrema(trace.samples().subspan(std::size_t(blocks.begin + k * 256), 256));
    EXPECT_EQ(blocks.lowest[k], block.min);
    EXPECT_EQ(blocks.highest[k], block.max);
  }
}

// 0, 1, 2, …
std::vector<float> countedUp(std::size_t count) {
  std::vector<float> samples(count);
  for (std::size_t i = 0; i < count; ++i)
    samples[i] = float(i);
  return samples;
}

TEST(SacSeismogram, takesAnotherHeaderAndKeepsItsSamplesWhereTheyAre) {
  SacSeismogram trace(header(1, 5), countedUp(600), QStringLiteral("a"));
  const float* const samples = trace.GetSacSeis();
  const QDateTime reference(QDate(2011, 3, 11), QTime(5, 46, 23), Qt::UTC);
  SacHeader other = header(0.5F);
  setReferenceTime(other, reference);
  other.kstnm = "TLY";
  trace.setHeader(other, QStringLiteral("b"));
  EXPECT_EQ(trace.GetSacSeis(), samples);
  EXPECT_EQ(trace.npts(), 600);
  EXPECT_EQ(trace.kstnm(), QStringLiteral("TLY"));
  EXPECT_EQ(trace.path(), QStringLiteral("b"));
  EXPECT_EQ(trace.b(), 0);
  EXPECT_EQ(trace.e(), 299.5F);
  EXPECT_EQ(trace.mySeisReferenceTime()->nsDate(), reference);
  expectKnowsItsSamples(trace);
  trace.samples()[3] = 9000;
  trace.setHeader(other, QString());
  expectKnowsItsSamples(trace);
}

TEST(SacSeismogram, keepsSamplesBetweenTwoOthers) {
  SacSeismogram trace(header(0.5F, 10), countedUp(2000));
  trace.keepSamples(300, 1000);
  EXPECT_EQ(trace.npts(), 1000);
  EXPECT_EQ(trace.GetSacSeis()[0], 300);
  EXPECT_EQ(trace.GetSacSeis()[999], 1299);
  EXPECT_EQ(trace.b(), 160);
  EXPECT_EQ(trace.e(), 160 + 999 * 0.5F);
  expectKnowsItsSamples(trace);
  trace.keepSamples(990, 1000);
  EXPECT_EQ(trace.npts(), 10) << "as many as there are";
  trace.keepSamples(10, 1);
  EXPECT_EQ(trace.npts(), 0);
  EXPECT_EQ(trace.smax(), 0);
}

TEST(SacSeismogram, rescalesSamplesAndItsExtremesWithThem) {
  std::vector<float> samples = countedUp(600);
  samples[400] = kNaN;
  SacSeismogram trace(header(), samples);
  trace.rescaleSamples(100, 0.5);
  EXPECT_EQ(trace.GetSacSeis()[0], -50);
  EXPECT_EQ(trace.GetSacSeis()[599], 249.5F);
  EXPECT_TRUE(std::isnan(trace.GetSacSeis()[400]));
  EXPECT_EQ(trace.smin(), -50);
  EXPECT_EQ(trace.smax(), 249.5F);
  EXPECT_TRUE(std::isnan(trace.sampleIndex()->blocksWithin(trace.GetSacSeis(), 256, 512).lowest[0]));
  trace.rescaleSamples(0, -1);
  EXPECT_EQ(trace.smin(), -249.5F);
  EXPECT_EQ(trace.smax(), 50);
}

TEST(SacSeismogram, rescalesToInfinityWhatSinglePrecisionCannotHold) {
  SacSeismogram trace(header(), countedUp(300));
  trace.rescaleSamples(0, 2e38); // beyond 3.4e38 from sample 2 on
  EXPECT_EQ(trace.GetSacSeis()[1], 2e38F);
  EXPECT_EQ(trace.GetSacSeis()[2], std::numeric_limits<float>::infinity());
  EXPECT_EQ(trace.smax(), 2e38F);
  EXPECT_TRUE(std::isnan(trace.sampleIndex()->blocksWithin(trace.GetSacSeis(), 0, 256).lowest[0]));
}

// What a host keeps for as long as somebody holds it.
struct HostsMemory {
  std::vector<float> samples = {3, -1, 2, 5};
};

TEST(SacSeismogramOfHostsMemory, drawsFromWhereTheSamplesAreAndKeepsThem) {
  auto host = std::make_shared<HostsMemory>();
  const float* const place = host->samples.data();
  const std::weak_ptr<HostsMemory> there = host;
  SacHeader header;
  header.delta = 0.5F;
  {
    const SacSeismogram trace(header, std::span<const float>(host->samples), host);
    host.reset();
    EXPECT_EQ(trace.GetSacSeis(), place);
    EXPECT_EQ(trace.borrowedSamples().samples, place);
    EXPECT_EQ(trace.npts(), 4);
    EXPECT_EQ(trace.smin(), -1);
    EXPECT_EQ(trace.smax(), 5);
    EXPECT_EQ(trace.e(), 1.5F); // three intervals of 0.5 s after 0
    EXPECT_TRUE(trace.sampleIndex()->covers(place, 0, 4));
    EXPECT_FALSE(there.expired());
  }
  EXPECT_TRUE(there.expired());
}

TEST(SacSeismogramOfHostsMemory, copiesThemBeforeTheyAreChanged) {
  const auto host = std::make_shared<HostsMemory>();
  SacSeismogram trace(SacHeader(), std::span<const float>(host->samples), host);
  trace.keepSamples(1, 2);
  EXPECT_EQ(trace.GetSacSeis(), host->samples.data() + 1) << "fewer of them are where they were";
  trace.rescaleSamples(1, 2);
  EXPECT_EQ(std::vector<float>(trace.GetSacSeis(), trace.GetSacSeis() + 2), (std::vector<float>{-4, 2}));
  trace.samples()[0] = 9;
  trace.ComputeExtrema();
  EXPECT_EQ(trace.smax(), 9);
  EXPECT_EQ(host->samples, (std::vector<float>{3, -1, 2, 5}));
  EXPECT_EQ(host.use_count(), 1) << "and lets go of the host's";
}

TEST(SacSeismogramOfHostsMemory, givesACopyAwayAndTakesOthers) {
  const auto host = std::make_shared<HostsMemory>();
  SacSeismogram trace(SacHeader(), std::span<const float>(host->samples), host);
  EXPECT_EQ(trace.takeSamples(), host->samples);
  EXPECT_EQ(trace.npts(), 0);
  SacSeismogram other(SacHeader(), std::span<const float>(host->samples), host);
  other.setSamples({7});
  EXPECT_EQ(other.npts(), 1);
  EXPECT_EQ(other.smax(), 7);
  EXPECT_EQ(host.use_count(), 1);
}

} // namespace
