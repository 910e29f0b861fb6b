#include "XOV_Graphics/seismic/io/mseed/MiniSeedSamples.h"

#include "XOV_Graphics/seismic/io/mseed/SteimFrames.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include <bit>
#include <cmath>
#include <numeric>
#include <random>

using namespace xov;

namespace {

constexpr int kFrameBytes = 64;

QByteArray randomBytes(std::mt19937& random, int count) {
  QByteArray bytes;
  for (int i = 0; i < count; ++i)
    bytes += char(random());
  return bytes;
}

/// The samples in bits, so that those that are no numbers compare, too; what else the decoder says behind them.
struct Outcome {
  std::vector<std::uint32_t> bits;
  QString problem;
  QString doubt;
  bool operator==(const Outcome&) const = default;
};

using Decode = Status (MiniSeedSamples::*)(const SampleFormat&, QByteArrayView, std::span<float>, QString&);

Outcome outcome(Decode decode, const SampleFormat& format, const QByteArray& bytes, std::size_t count) {
  MiniSeedSamples decoder;
  std::vector<float> samples(count);
  Outcome found;
  const Status status = (decoder.*decode)(format, bytes, samples, found.doubt);
  found.problem = status.error();
  if (!status) return found;
  for (const float sample : samples)
    found.bits.push_back(std::isnan(sample) ? 0x7FC00000U : std::bit_cast<std::uint32_t>(sample));
  return found;
}

/// Marks that stand for differences, so that frames of chance do not end at their first word.
void settle(QByteArray& bytes, std::mt19937& random) {
  for (int frame = 0; frame + kFrameBytes <= bytes.size(); frame += kFrameBytes) {
    for (int i = 0; i < 4; ++i)
      bytes[frame + i] = char(random() % 4 * 0x55 ^ (random() % 3 == 0 ? random() & 0xFF : 0));
  }
}

} // namespace

TEST(MiniSeedSamples, areThoseOfLibmseedInEveryEncodingAndOrder) {
  std::mt19937 random(5);
  int whole = 0;
  for (const MiniSeedEncoding encoding :
       {MiniSeedEncoding::Int16, MiniSeedEncoding::Int32, MiniSeedEncoding::Float32, MiniSeedEncoding::Float64,
        MiniSeedEncoding::Steim1, MiniSeedEncoding::Steim2, MiniSeedEncoding::Geoscope24,
        MiniSeedEncoding::Geoscope16Gain3, MiniSeedEncoding::Geoscope16Gain4, MiniSeedEncoding::Cdsn,
        MiniSeedEncoding::Sro, MiniSeedEncoding::Dwwssn}) {
    for (int round = 0; round < 200; ++round) {
      SampleFormat format{64 + kFrameBytes * int(1 + random() % 4), 64, encoding, random() % 2 == 0, true};
      QByteArray bytes = randomBytes(random, format.length);
      settle(bytes, random);
      const std::size_t most = std::size_t(format.length - 64) / 8;
      const std::size_t count = 1 + random() % most;
      const Outcome libmseeds = outcome(&MiniSeedSamples::decodeByLibrary, format, bytes, count);
      xov::testing::forEachVectorWidth([&] {
        EXPECT_EQ(outcome(&MiniSeedSamples::decode, format, bytes, count), libmseeds)
            << int(encoding) << ' ' << round << ' ' << libmseeds.problem.toStdString();
      });
      whole += libmseeds.problem.isEmpty() ? 1 : 0;
    }
  }
  EXPECT_GT(whole, 12 * 200 / 2) << "most can be decoded";
}

TEST(SteimFrames, endWithTheLastSampleAsked) {
  // Word 3 has four differences of 8 bits, of which the third would be the last; word 4 is of no kind.
  QByteArray frame(kFrameBytes, '\0');
  frame.replace(0, 4, QByteArray::fromHex("01 80 00 00"));
  frame.replace(4, 4, QByteArray::fromHex("00 00 00 0A"));
  frame.replace(12, 4, QByteArray::fromHex("63 01 02 FD"));
  std::vector<float> samples(3);
  EXPECT_EQ(decodeSteim(SteimVersion::Steim2, true, frame, samples), 13);
  EXPECT_EQ(samples, (std::vector<float>{10, 11, 13}));
  samples.resize(5);
  EXPECT_EQ(decodeSteim(SteimVersion::Steim2, true, frame, samples), std::nullopt) << "the fifth needs word 4";
}

namespace {

// Marks of 3 and then 2: seven differences of 4 bits, of 1 each; the first frame has 13 such words, the second 15. So
// the samples are 1 to 13 · 7 + 15 · 7 = 196.
QByteArray framesOfSevens(bool isBigEndian) {
  constexpr std::uint32_t kSevenOnes = 2U << 30 | 0x1111111;
  QByteArray frames;
  const auto append = [&](std::uint32_t word) {
    const std::uint32_t stored = isBigEndian ? qToBigEndian(word) : qToLittleEndian(word);
    frames.append(reinterpret_cast<const char*>(&stored), sizeof stored);
  };
  append(0x03FFFFFF);
  append(1);   // the first sample
  append(196); // the last one
  for (int word = 3; word < 16; ++word)
    append(kSevenOnes);
  append(0x3FFFFFFF);
  for (int word = 1; word < 16; ++word)
    append(kSevenOnes);
  return frames;
}

} // namespace

TEST(SteimFrames, fullOfTheNarrowestDifferencesHoldSevenAWord) {
  for (const bool isBigEndian : {true, false}) {
    std::vector<float> expected(196);
    std::iota(expected.begin(), expected.end(), 1.0F);
    std::vector<float> samples(196);
    EXPECT_EQ(decodeSteim(SteimVersion::Steim2, isBigEndian, framesOfSevens(isBigEndian), samples), 196)
        << isBigEndian;
    EXPECT_EQ(samples, expected) << isBigEndian;
  }
}

TEST(SteimFrames, giveAsManySamplesAsAreAskedAndTouchNoneBehind) {
  const QByteArray frames = framesOfSevens(true);
  xov::testing::forEachVectorWidth([&] {
    for (std::size_t count = 1; count <= 196; ++count) {
      std::vector<float> expected(count + 8, -1.0F);
      std::iota(expected.begin(), expected.end() - 8, 1.0F);
      std::vector<float> samples(count + 8, -1.0F);
      EXPECT_EQ(decodeSteim(SteimVersion::Steim2, true, frames, std::span(samples).first(count)), int(count));
      EXPECT_EQ(samples, expected) << count;
    }
    std::vector<float> more(197);
    EXPECT_EQ(decodeSteim(SteimVersion::Steim2, true, frames, more), std::nullopt);
  });
}

TEST(SteimFrames, goRoundAt32Bits) {
  QByteArray frame(kFrameBytes, '\0');
  frame.replace(0, 4, QByteArray::fromHex("03 C0 00 00"));
  frame.replace(4, 4, QByteArray::fromHex("7F FF FF FF"));
  frame.replace(16, 4, QByteArray::fromHex("00 00 00 01"));
  std::vector<float> samples(2);
  EXPECT_EQ(decodeSteim(SteimVersion::Steim1, true, frame, samples), std::int32_t(-2147483648LL));
  EXPECT_EQ(samples[1], -2147483648.0F);
}

TEST(SteimFrames, ofWhichNoneIsWholeHoldNoSample) {
  std::vector<float> samples(1);
  EXPECT_EQ(decodeSteim(SteimVersion::Steim1, true, QByteArray(63, '\xFF'), samples), std::nullopt);
}
