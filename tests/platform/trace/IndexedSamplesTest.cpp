#include "XOV_Graphics/platform/trace/IndexedSamples.h"

#include "XOV_Graphics/base/BlockExtremes.h"
#include "XOV_Graphics/platform/trace/TangledTraces.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"
#include "XOV_Graphics/platform/trace/TraceReduction.h"
#include "tests/support/GuardedSamples.h"
#include "tests/support/TracePictures.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

using namespace xov;
using xov::testing::forEachVectorWidth;
using xov::testing::GuardedSamples;

namespace {

const float kNan = std::numeric_limits<float>::quiet_NaN();

int upTo(std::mt19937& random, int most) { return std::uniform_int_distribution<int>(0, most)(random); }

double between(std::mt19937& random, double low, double high) {
  return std::uniform_real_distribution<double>(low, high)(random);
}

// Cheap noise of ±20 points, a walk, steps or a flat line.
std::vector<float> anySignal(std::mt19937& random, std::size_t count) {
  const int kind = upTo(random, 3);
  std::uint32_t state = random();
  float walk = 0;
  std::vector<float> samples(count);
  for (std::size_t i = 0; i < count; ++i) {
    state = state * 1664525U + 1013904223U;
    const float noise = float(std::int32_t(state)) * (20.0F / 2147483648.0F);
    walk = std::clamp(walk + noise * 0.01F, -22.0F, 22.0F);
    samples[i] = kind == 0 ? noise : kind == 1 ? walk : kind == 2 ? float(i / 70001 % 2 * 11) : 3.7F;
  }
  return samples;
}

void addGaps(std::mt19937& random, std::vector<float>& samples) {
  const int kind = upTo(random, 3);
  const int gaps = kind == 0 ? 0 : kind == 1 ? 3 : kind == 2 ? 40 : 1500;
  for (int gap = 0; gap < gaps; ++gap) {
    const auto at = std::size_t(upTo(random, int(samples.size()) - 1));
    const std::size_t length = kind == 3 ? 1 : std::size_t(upTo(random, 3000));
    std::fill(samples.begin() + std::ptrdiff_t(at),
              samples.begin() + std::ptrdiff_t(std::min(at + length, samples.size())), kNan);
  }
}

// A trace that is dense enough for an index, with anything that a trace may have.
Trace anyTrace(std::mt19937& random, const std::vector<float>& samples) {
  Trace trace = traceOf(samples, between(random, 15, 60) / double(samples.size()));
  trace.xOffset = between(random, -30, 20);
  trace.yScale = between(random, 0.3, 1.5);
  if (upTo(random, 2) == 0) trace.first = upTo(random, int(samples.size()) / 2);
  if (upTo(random, 2) == 0) trace.last -= upTo(random, int(samples.size()) / 3);
  if (upTo(random, 3) == 0) trace.clampLow = -7.0F;
  if (upTo(random, 3) == 0) trace.clampHigh = 5.0F;
  if (upTo(random, 3) == 0) trace.firstValue = 12.0F;
  if (upTo(random, 2) == 0) trace.time = TraceTime::even(3, 1);
  return trace;
}

QImage strokeOf(const Trace& trace, double ratio, double pen, const QRect& clip) {
  QImage picture = whitePicture(ratio);
  EXPECT_TRUE(strokeTraces(targetOf(picture), {&trace, 1}, pictureTransform(ratio), clip, pen, Qt::black));
  return picture;
}

QImage fillOf(const Trace& trace, double ratio) {
  QImage picture = whitePicture(ratio);
  EXPECT_TRUE(fillTraces(targetOf(picture), {&trace, 1}, pictureTransform(ratio), picture.rect(), InsideRule::NonZero,
                         Qt::black));
  return picture;
}

// The index of samples that stand at another place.
SampleIndex indexAt(const float* place, const std::vector<float>& samples) {
  const SampleIndex found(samples);
  const SampleIndex::Blocks blocks = found.blocksWithin(samples.data(), 0, std::int64_t(samples.size()));
  SampleIndex index;
  index.adopt({place, samples.size()}, {blocks.lowest, blocks.lowest + blocks.count},
              {blocks.highest, blocks.highest + blocks.count});
  return index;
}

bool isInked(const QImage& picture) { return picture != whitePicture(picture.width() / double(kPictureWidth)); }

} // namespace

TEST(IndexedSamples, giveTheSamePictureForAnySignalPenRatioClipAndGaps) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  int inked = 0;
  for (int turn = 0; turn < 12; ++turn) {
    std::vector<float> samples = anySignal(random, std::size_t(600'000 + upTo(random, 400'000)));
    addGaps(random, samples);
    SampleIndex index;
    index.build(samples, upTo(random, 300));
    const Trace plain = anyTrace(random, samples);
    Trace indexed = plain;
    indexed.index = &index;
    const double ratio = std::vector{1.0, 1.5, 2.0}[std::size_t(upTo(random, 2))];
    const double pen = between(random, 0.25, 5);
    const QRect whole = whitePicture(ratio).rect();
    const QRect clip = upTo(random, 1) == 0 ? whole : whole.adjusted(upTo(random, 20), upTo(random, 20), -7, -9);
    const QImage expected = strokeOf(plain, ratio, pen, clip);
    inked += isInked(expected) ? 1 : 0;
    EXPECT_EQ(strokeOf(indexed, ratio, pen, clip), expected) << "turn " << turn;
    EXPECT_EQ(fillOf(indexed, ratio), fillOf(plain, ratio)) << "turn " << turn;
    GuardedSamples guarded(samples);
    const SampleIndex ownIndex = indexAt(guarded.data(), samples);
    Trace held = plain;
    held.borrow({guarded.data(), turn % 3 == 0 ? nullptr : &ownIndex, &guarded});
    EXPECT_EQ(strokeOf(held, ratio, pen, clip), expected) << "held, turn " << turn;
    EXPECT_EQ(fillOf(held, ratio), fillOf(plain, ratio)) << "held, turn " << turn;
    EXPECT_TRUE(guarded.isEverythingLetGo());
  }
  EXPECT_GT(inked, 6);
}

TEST(IndexedSamples, giveTheSameLinesOnPaper) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE(::testing::Message() << "seed " << seed);
  std::mt19937 random(seed);
  for (int turn = 0; turn < 8; ++turn) {
    std::vector<float> samples = anySignal(random, std::size_t(600'000 + upTo(random, 400'000)));
    addGaps(random, samples);
    const SampleIndex index(samples);
    const Trace plain = anyTrace(random, samples);
    Trace indexed = plain;
    indexed.index = &index;
    const QRectF box(0, 0, kPictureWidth, kPictureHeight);
    const auto expected = reduceTrace(plain, 0.25, box, 1);
    EXPECT_EQ(reduceTrace(indexed, 0.25, box, 1), expected) << "turn " << turn;
    if (turn % 4 != 0) continue;
    GuardedSamples guarded(samples);
    const SampleIndex ownIndex = indexAt(guarded.data(), samples);
    Trace held = plain;
    held.borrow({guarded.data(), turn == 0 ? nullptr : &ownIndex, &guarded});
    EXPECT_EQ(reduceTrace(held, 0.25, box, 1), expected) << "held, turn " << turn;
    EXPECT_TRUE(guarded.isEverythingLetGo());
  }
}

TEST(IndexedSamples, areNotReadWhereTheIndexAnswers) {
  // Blocks of the index that lie within one column are not looked at: here they say otherwise than the samples.
  std::vector<float> samples(2'000'000, 0.0F);
  const SampleIndex index(samples);
  samples[1'000'000] = 20;
  Trace trace = traceOf(samples, 60.0 / double(samples.size()));
  const QRect whole = whitePicture().rect();
  const QImage spike = strokeOf(trace, 1, 1, whole);
  trace.index = &index;
  const QImage flat = strokeOf(trace, 1, 1, whole);
  EXPECT_NE(flat, spike);
  samples[1'000'000] = 0;
  trace.index = nullptr;
  EXPECT_EQ(flat, strokeOf(trace, 1, 1, whole));
}

// Dense noise, and a line of few samples a pixel: what is not looked at need not be there.
TEST(IndexedSamples, areHeldOnlyWhereTheyAreRead) {
  std::vector<float> samples(4'000'000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i * 7919 % 41) - 20;
  GuardedSamples guarded(samples);
  const SampleIndex index = indexAt(guarded.data(), samples);
  Trace trace = traceOf(samples, 60.0 / double(samples.size()));
  trace.borrow({guarded.data(), &index, &guarded});
  EXPECT_TRUE(isInked(strokeOf(trace, 1, 1, whitePicture().rect())));
  EXPECT_LT(guarded.shareHeld(), 0.5);
  EXPECT_GT(guarded.shareHeld(), 0);

  GuardedSamples zoomed(samples);
  trace.borrow({zoomed.data(), nullptr, &zoomed});
  trace.xScale = 1;
  EXPECT_TRUE(isInked(strokeOf(trace, 1, 1, whitePicture().rect())));
  EXPECT_LT(zoomed.shareHeld(), 0.001);
}

// Lines of few samples, with gaps and turned back, go other ways.
TEST(IndexedSamples, areHeldWhereLinesAreSparseBrokenOrTurnBack) {
  std::mt19937 random(12);
  for (int turn = 0; turn < 60; ++turn) {
    std::vector<float> samples = anySignal(random, std::size_t(2 + upTo(random, 3000)));
    for (int gap = upTo(random, 300); gap > 0 && turn % 2 == 0; --gap)
      samples[std::size_t(upTo(random, int(samples.size()) - 1))] = kNan;
    GuardedSamples guarded(samples);
    Trace plain = anyTrace(random, samples);
    std::vector<float> times;
    for (std::size_t i = 0; i < samples.size(); ++i)
      times.push_back(turn % 3 == 0 ? float(upTo(random, 100)) : float(i));
    if (turn % 4 != 0) plain.time = TraceTime::explicitValues(times.data());
    Trace held = plain;
    held.borrow({guarded.data(), nullptr, &guarded});
    QImage expected = whitePicture(), found = whitePicture();
    const QRect whole = expected.rect();
    const bool grows = strokeTraces(targetOf(expected), {&plain, 1}, pictureTransform(), whole, 1.5, Qt::black);
    EXPECT_EQ(strokeTraces(targetOf(found), {&held, 1}, pictureTransform(), whole, 1.5, Qt::black), grows);
    if (!grows) {
      strokeTangledTraces(targetOf(expected), {&plain, 1}, pictureTransform(), whole, 1.5, Qt::black);
      strokeTangledTraces(targetOf(found), {&held, 1}, pictureTransform(), whole, 1.5, Qt::black);
    }
    EXPECT_EQ(found, expected) << "turn " << turn;
    const QRectF box(0, 0, kPictureWidth, kPictureHeight);
    EXPECT_EQ(reduceTrace(held, 0.25, box, 1), reduceTrace(plain, 0.25, box, 1)) << "turn " << turn;
    EXPECT_EQ(traceAreas(held, 0.25, box), traceAreas(plain, 0.25, box)) << "turn " << turn;
    EXPECT_TRUE(guarded.isEverythingLetGo());
  }
}

TEST(IndexedSamples, leaveAStaleIndexAlone) {
  const std::vector<float> before(2'000'000, 5.0F);
  const SampleIndex index(before);
  const std::vector<float> now(2'000'000, -5.0F);
  Trace trace = traceOf(now, 60.0 / double(now.size()));
  const QRect whole = whitePicture().rect();
  const QImage expected = strokeOf(trace, 1, 1, whole);
  trace.index = &index;
  EXPECT_EQ(strokeOf(trace, 1, 1, whole), expected);
}

TEST(IndexedSamples, findExtremesOfBlocksOfAnyLength) {
  forEachVectorWidth([] {
    std::mt19937 random(3);
    const std::vector<float> samples = anySignal(random, 60'000);
    const SampleIndex index(samples);
    const IndexedSamples indexed({samples.data(), &index}, 0, std::int64_t(samples.size()));
    for (int turn = 0; turn < 30; ++turn) {
      const std::int64_t begin = upTo(random, 300);
      std::vector<std::int32_t> cuts{0};
      while (cuts.size() < 9)
        cuts.push_back(cuts.back() + upTo(random, 6000));
      float low[8], high[8], plainLow[8], plainHigh[8];
      ASSERT_TRUE(indexed.findBlockExtremes(begin, cuts.data(), 8, low, high));
      ASSERT_TRUE(findBlockExtremes(samples.data() + begin, cuts.data(), 8, plainLow, plainHigh));
      for (int k = 0; k < 8; ++k) {
        EXPECT_EQ(low[k], plainLow[k]) << k;
        EXPECT_EQ(high[k], plainHigh[k]) << k;
      }
    }
  });
}

TEST(IndexedSamples, tellOfAGapWhereverItLies) {
  forEachVectorWidth([] {
    std::vector<float> samples(20'000, 1.0F);
    const std::vector<std::int32_t> cuts{0, 6000, 12'000};
    float low[2], high[2];
    for (const std::size_t at : {100U, 101U, 300U, 6099U, 6100U, 6101U, 12'098U, 12'099U}) {
      samples[at] = kNan;
      const SampleIndex index(samples);
      const IndexedSamples indexed({samples.data(), &index}, 0, std::int64_t(samples.size()));
      EXPECT_FALSE(indexed.findBlockExtremes(100, cuts.data(), 2, low, high)) << at;
      samples[at] = 1;
    }
    samples[99] = samples[12'100] = kNan;
    const SampleIndex index(samples);
    const IndexedSamples indexed({samples.data(), &index}, 0, std::int64_t(samples.size()));
    EXPECT_TRUE(indexed.findBlockExtremes(100, cuts.data(), 2, low, high)) << "gaps just outside";
  });
}

TEST(IndexedSamples, findGapsAndExtremesWhereTheyAre) {
  std::mt19937 random(5);
  for (int turn = 0; turn < 30; ++turn) {
    std::vector<float> samples = anySignal(random, 20'000);
    if (turn % 3 != 0) samples[std::size_t(upTo(random, 19'999))] = kNan;
    samples[std::size_t(upTo(random, 19'999))] = 1000;
    const SampleIndex index(samples);
    const IndexedSamples indexed({samples.data(), &index}, 0, std::int64_t(samples.size()));
    const std::int64_t begin = upTo(random, 9000), end = begin + upTo(random, 11'000);
    EXPECT_EQ(indexed.findGap(begin, end), findFinite(samples.data(), begin, end, false));
    const auto* const first = samples.data() + begin;
    const auto* const last = samples.data() + end;
    const std::int64_t expected = std::find(first, last, 1000.0F) - samples.data();
    const bool hasGap = findFinite(samples.data(), begin, end, false) < end;
    if (hasGap) continue;
    EXPECT_EQ(indexed.findExtreme(1000, begin, end), expected);
  }
}
