#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

using namespace xov;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const std::vector<float> kPieceSamples{3, -7, std::numeric_limits<float>::quiet_NaN(), 11, 2, 2.5F};

SacHeader channelOfPieces() {
  SacHeader header;
  setReferenceTime(header, QDateTime(QDate(2012, 5, 12), QTime(1, 2, 3), Qt::UTC));
  header.knetwk = "XX";
  header.kstnm = "MANY";
  header.kcmpnm = "HHZ";
  header.khole = "00";
  header.kuser0 = "mine";
  header.evla = 10;
  header.evlo = 20;
  header.evdp = 30;
  header.stla = 11;
  header.stlo = 22;
  header.o = 1.5F;
  header.a = 2.5F;
  header.t3 = 3.5F;
  header.kt3 = "pP";
  header.depmen = 4;
  return header;
}

std::shared_ptr<SacSeismogram> pieceOfChannel(double b, double delta) {
  return std::make_shared<SacSeismogram>(std::make_shared<SacChannel>(channelOfPieces(), QStringLiteral("a")), b,
                                         delta, kPieceSamples);
}

/// A trace with a header of its own, as it is made of a file's times.
std::shared_ptr<SacSeismogram> traceOfItsOwn(double b, double delta) {
  SacHeader header = channelOfPieces();
  header.b = toSinglePrecision(b);
  header.delta = toSinglePrecision(delta);
  SacFooter precise = footerFromHeader(header);
  precise.b = b;
  precise.delta = delta;
  return std::make_shared<SacSeismogram>(header, kPieceSamples, QStringLiteral("a"), precise);
}

template <typename Value>
bool sameBytes(const Value& left, const Value& right) {
  return std::memcmp(&left, &right, sizeof left) == 0;
}

/// What does not need a header.
void expectSameTrace(const SacSeismogram& piece, const SacSeismogram& trace) {
  ASSERT_EQ(piece.npts(), trace.npts());
  for (int i = 0; i < piece.npts(); ++i)
    EXPECT_TRUE(sameBytes(piece.GetSacSeis()[i], trace.GetSacSeis()[i])) << i;
  for (const auto value : {&SacSeismogram::b, &SacSeismogram::e, &SacSeismogram::delta, &SacSeismogram::a,
                           &SacSeismogram::smin, &SacSeismogram::smax, &SacSeismogram::absMax, &SacSeismogram::pTime,
                           &SacSeismogram::originTimeOffset, &SacSeismogram::evdp})
    EXPECT_TRUE(sameBytes((piece.*value)(), (trace.*value)()));
  EXPECT_EQ(piece.labelString(), trace.labelString());
  EXPECT_EQ(piece.kuser0(), trace.kuser0());
  EXPECT_EQ(piece.path(), trace.path());
  EXPECT_EQ(piece.timePickKey(3), trace.timePickKey(3));
  EXPECT_EQ(piece.pickLabelWithKey(3), trace.pickLabelWithKey(3));
  EXPECT_EQ(piece.mySeisReferenceTime()->nsDate(), trace.mySeisReferenceTime()->nsDate());
}

/// What is made of one.
void expectSameHeader(const SacSeismogram& piece, const SacSeismogram& trace) {
  EXPECT_TRUE(sameBytes(*piece.GetSacHeader(), *trace.GetSacHeader()));
  EXPECT_TRUE(sameBytes(piece.preciseValues(), trace.preciseValues()));
  EXPECT_EQ(piece.gcarc(), trace.gcarc());
  EXPECT_EQ(piece.azimuth(), trace.azimuth());
  EXPECT_EQ(piece.flinnEngdahlString(), trace.flinnEngdahlString());
  EXPECT_EQ(piece.oTimeString(), trace.oTimeString());
}

TEST(SacSeismogramPieces, areAsTracesWithHeadersOfTheirOwn) {
  for (const double b : {0.0, 1234567.015625, -3.25, -12345.0, 1e39, -1e300, kInfinity}) {
    for (const double delta : {0.01, 1.0 / 3, 0.0, -12345.0, 1e39, 1e300}) {
      const auto piece = pieceOfChannel(b, delta);
      const auto trace = traceOfItsOwn(b, delta);
      SCOPED_TRACE(::testing::Message() << b << ' ' << delta);
      expectSameTrace(*piece, *trace);
      expectSameHeader(*piece, *trace);
      expectSameTrace(*piece, *trace);
    }
  }
}

TEST(SacSeismogramPieces, takeExtremesThatAreKnown) {
  const std::vector<float> samples(300, 5);
  const SacSeismogram piece(std::make_shared<SacChannel>(channelOfPieces()), 0, 1, samples, Extrema{-8, 9});
  EXPECT_EQ(piece.smin(), -8);
  EXPECT_EQ(piece.smax(), 9);
  EXPECT_EQ(piece.GetSacHeader()->depmin, -8);
  EXPECT_EQ(piece.GetSacHeader()->depmax, 9);
  EXPECT_TRUE(piece.sampleIndex()->covers(samples.data(), 0, 300)) << "has an index all the same";
}

TEST(SacSeismogramPieces, changeAsTheyDo) {
  SacHeader other = channelOfPieces();
  other.delta = 2;
  other.b = 5;
  other.kstnm = "OTHER";
  const std::function<void(SacSeismogram&)> changes[] = {
      [](SacSeismogram& trace) { trace.rescaleSamples(1, 2); },
      [](SacSeismogram& trace) { trace.rescaleSamples(0, -1); },
      [](SacSeismogram& trace) { trace.keepSamples(1, 3); },
      [&other](SacSeismogram& trace) { trace.setHeader(other, QStringLiteral("b")); },
      [](SacSeismogram& trace) {
        trace.samples()[1] = 90;
        trace.ComputeExtrema();
      },
      [](SacSeismogram& trace) {
        trace.setSamples({1, 2});
      },
      [](SacSeismogram& trace) { EXPECT_EQ(trace.takeSamples().size(), kPieceSamples.size()); },
  };
  for (const bool isAskedBefore : {false, true}) {
    for (const auto& change : changes) {
      SCOPED_TRACE(::testing::Message() << "change " << &change - changes << (isAskedBefore ? ", asked before" : ""));
      const auto piece = pieceOfChannel(7, 0.5);
      const auto trace = traceOfItsOwn(7, 0.5);
      if (isAskedBefore) {
        EXPECT_EQ(piece->GetSacHeader()->npts, 6);
      }
      change(*piece);
      change(*trace);
      expectSameTrace(*piece, *trace);
      expectSameHeader(*piece, *trace);
    }
  }
  EXPECT_EQ(kPieceSamples[1], -7) << "memory that others share stays as it is";
}

TEST(SacSeismogramPieces, haveOneHeaderWhoeverAsksForItFirst) {
  for (int round = 0; round < 20; ++round) {
    const auto piece = pieceOfChannel(7, 0.5);
    const SacHeader* seen[2] = {};
    std::thread first([&] { seen[0] = piece->GetSacHeader(); });
    std::thread second([&] { seen[1] = piece->GetSacHeader(); });
    first.join();
    second.join();
    EXPECT_EQ(seen[0], seen[1]);
    EXPECT_EQ(seen[0]->npts, 6);
  }
}

TEST(SacSeismogramPieces, haveAnIndexFromOneWholeBlockOfItOn) {
  const std::vector<float> samples(256, 5);
  const auto channel = std::make_shared<SacChannel>(channelOfPieces());
  SacSeismogram shortest(channel, 0, 1, std::span(samples).first(255));
  EXPECT_EQ(shortest.sampleIndex(), nullptr);
  EXPECT_EQ(shortest.borrowedSamples().index, nullptr);
  EXPECT_EQ(shortest.borrowedSamples().samples, samples.data());
  EXPECT_EQ(shortest.knownSum(), std::nullopt);
  const SacSeismogram whole(channel, 0, 1, samples);
  ASSERT_NE(whole.sampleIndex(), nullptr);
  EXPECT_TRUE(whole.sampleIndex()->covers(samples.data(), 0, 256));
  EXPECT_EQ(whole.borrowedSamples().index, whole.sampleIndex());
  shortest.keepSamples(0, 200);
  ASSERT_NE(shortest.sampleIndex(), nullptr) << "as any trace that has been changed";
  EXPECT_TRUE(shortest.sampleIndex()->covers(samples.data(), 0, 200));
}

TEST(SacSeismogramPieces, leaveOthersOfTheirChannelAsTheyAre) {
  const auto channel = std::make_shared<SacChannel>(channelOfPieces(), QStringLiteral("a"));
  SacSeismogram changed(channel, 7, 0.5, kPieceSamples);
  const SacSeismogram other(channel, 9, 0.5, kPieceSamples);
  SacHeader header = channelOfPieces();
  header.kstnm = "ELSE";
  changed.setHeader(header, QStringLiteral("b"));
  changed.rescaleSamples(0, 3);
  EXPECT_EQ(changed.labelString(), "XX.ELSE.00.HHZ");
  EXPECT_EQ(changed.path(), "b");
  EXPECT_EQ(changed.smax(), 33);
  EXPECT_EQ(other.labelString(), "XX.MANY.00.HHZ");
  EXPECT_EQ(other.path(), "a");
  EXPECT_EQ(other.smax(), 11);
  EXPECT_EQ(other.GetSacHeader()->b, 9);
  EXPECT_EQ(other.GetSacHeader()->depmax, 11);
}

TEST(SacSeismogramPieces, keepTheMemoryOfTheirSamplesAsLongAsTheyUseIt) {
  auto memory = std::make_shared<const std::vector<float>>(kPieceSamples);
  const std::weak_ptr<const void> watched = memory;
  auto channel = std::make_shared<SacChannel>(channelOfPieces(), QString(), memory);
  SacSeismogram piece(channel, 0, 1, *memory);
  SacSeismogram cut(std::move(channel), 0, 1, *memory);
  memory.reset();
  EXPECT_EQ(piece.samples().size(), kPieceSamples.size()); // to be changed, of a copy
  EXPECT_FALSE(watched.expired()) << "the other piece has them";
  cut.keepSamples(3, 2);
  EXPECT_FALSE(watched.expired()) << "some of them are left where they were";
  EXPECT_EQ(cut.GetSacSeis()[0], 11);
  cut.setSamples({1});
  EXPECT_TRUE(watched.expired());
}

// Several threads at once let go of pieces that share their channel, ask them for headers and change them.
TEST(SacSeismogramPieces, mayBeUsedByAThreadEach) {
  auto memory = std::make_shared<const std::vector<float>>(kPieceSamples);
  const std::weak_ptr<const void> watched = memory;
  auto channel = std::make_shared<SacChannel>(channelOfPieces(), QStringLiteral("a"), memory);
  constexpr int kThreads = 4, kPieces = 50;
  std::vector<std::vector<std::shared_ptr<SacSeismogram>>> pieces(kThreads);
  for (int i = 0; i < kThreads * kPieces; ++i)
    pieces[std::size_t(i % kThreads)].push_back(std::make_shared<SacSeismogram>(channel, i, 0.5, *memory));
  channel.reset();
  memory.reset();
  std::vector<int> sound(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&own = pieces[t], &count = sound[t]] {
      for (auto& piece : own) {
        const bool isWhole = piece->GetSacHeader()->npts == 6 && piece->path() == "a" && piece->smin() == -7;
        piece->rescaleSamples(0, 2);
        count += isWhole && piece->smin() == -14 && piece->GetSacSeis()[3] == 22 ? 1 : 0;
        piece.reset();
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  EXPECT_EQ(sound, std::vector<int>(kThreads, kPieces));
  EXPECT_TRUE(watched.expired());
}

} // namespace
