#include "XOV_Graphics/platform/trace/TangledTraces.h"

#include "XOV_Graphics/platform/trace/InkBits.h"
#include "tests/support/TraceReference.h"
#include "tests/support/TraceSignals.h"
#include "tests/support/VectorWidths.h"

#include <gtest/gtest.h>

#include <QImage>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <string>
#include <vector>

using namespace xov;

namespace {

const float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr int kWidth = 48, kHeight = 32; // of the pictures, in view points
// Of the reference along a pixel's side: so many leave it about a third of a level off.
constexpr int kPlaces = 53;

/// Points that a trace goes through, x from its times.
struct Line {
  std::string name;
  std::vector<float> x, y;

  void add(double px, double py) {
    x.push_back(float(px));
    y.push_back(float(py));
  }
  Trace trace() const {
    Trace trace;
    trace.samples = y.data();
    trace.last = std::int64_t(y.size());
    trace.time = TraceTime::explicitValues(x.data());
    return trace;
  }
};

Line scribble(int points) {
  Line line{"scribble of " + std::to_string(points), {}, {}};
  std::mt19937 random(4);
  std::uniform_real_distribution<double> along(-5, kWidth + 5), up(-5, kHeight + 5);
  for (int i = 0; i < points; ++i)
    line.add(along(random), up(random));
  return line;
}

Line walk(int points, double step) {
  Line line{"walk in steps of " + std::to_string(step), {}, {}};
  std::mt19937 random(8);
  double x = kWidth / 2.0, y = kHeight / 2.0;
  for (int i = 0; i < points; ++i) {
    x = std::clamp(x + double(normal(random, step)), 2.0, kWidth - 2.0);
    y = std::clamp(y + double(normal(random, step)), 2.0, kHeight - 2.0);
    line.add(x, y);
  }
  return line;
}

Line lissajous(int points) {
  Line line{"Lissajous figure of " + std::to_string(points), {}, {}};
  for (int i = 0; i <= points; ++i) {
    const double turn = 2 * std::numbers::pi * i / points;
    line.add(24 + 22 * std::sin(7 * turn), 16 + 14 * std::sin(5 * turn + 0.3));
  }
  return line;
}

/// Rings with ragged edges, apart from each other.
Line islands() {
  Line line{"islands", {}, {}};
  std::mt19937 random(9);
  for (const double centre : {8.0, 24.0, 40.0}) {
    for (int i = 0; i <= 160; ++i) {
      const double turn = 2 * std::numbers::pi * (i % 160) / 160;
      const double radius = 6 + double(normal(random, 0.4));
      line.add(centre + radius * std::cos(turn), 16 + 2 * radius * std::sin(turn));
    }
    line.add(kNan, 0);
  }
  return line;
}

/// Boxes and crosses of level and upright lines.
Line boxes() {
  Line line{"boxes", {}, {}};
  for (int i = 0; i < 4; ++i) {
    const double left = 3 + 11.13 * i, bottom = 3.07 + 2.21 * i;
    for (const auto& [x, y] : {std::pair(0.0, 0.0), {8.3, 0.0}, {8.3, 20.4}, {0.0, 20.4}, {0.0, 0.0}, {8.3, 20.4}})
      line.add(left + x, bottom + y);
    line.add(kNan, 0);
  }
  return line;
}

QImage whitePicture(double ratio = 1) {
  QImage picture(int(kWidth * ratio), int(kHeight * ratio), QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::white);
  return picture;
}

bool stroke(QImage& picture, std::span<const Trace> traces, const QTransform& viewToDevice, double lineWidth,
            const QColor& color = Qt::black) {
  const PixelTarget target{picture.bits(), picture.bytesPerLine(), picture.width(), picture.height()};
  return strokeTangledTraces(target, traces, viewToDevice, picture.rect(), lineWidth, color);
}

/// Pixels of `ratio` a view point, y upwards.
QTransform upright(double ratio = 1) { return {ratio, 0, 0, -ratio, 0, ratio * kHeight}; }

void expectEqualsReference(const Line& line, const QTransform& viewToDevice, double lineWidth, int scale = 1) {
  SCOPED_TRACE(::testing::Message() << line.name << ", width " << lineWidth);
  const Trace trace = line.trace();
  QImage picture = whitePicture(scale);
  ASSERT_TRUE(stroke(picture, {&trace, 1}, viewToDevice, lineWidth));
  const TraceDifference difference =
      compareWithReference(picture, referenceCoverage({&trace, 1}, viewToDevice, lineWidth, picture.width(),
                                                      picture.height(), kPlaces / scale));
  EXPECT_GT(difference.inked, 50);
  EXPECT_LE(difference.mean, 1.0);
  EXPECT_LE(std::abs(difference.bias), 0.2);
  EXPECT_LE(difference.worst, 16);
}

int inkAt(const QImage& picture, int x, int y) { return 255 - qGreen(picture.pixel(x, y)); }

} // namespace

TEST(TangledTraces, equalTheReference) {
  for (const Line& line : {scribble(12), scribble(100), walk(600, 0.3), lissajous(600), islands(), boxes()})
    expectEqualsReference(line, upright(), 1);
}

TEST(TangledTraces, equalTheReferenceWithThinAndWidePens) {
  for (const Line& line : {scribble(12), walk(300, 1.5), boxes()}) {
    expectEqualsReference(line, upright(), 0.25);
    expectEqualsReference(line, upright(), 5);
  }
}

TEST(TangledTraces, equalTheReferenceOnFinePicturesAndTurnedOnes) {
  expectEqualsReference(islands(), upright(2), 1, 2);
  QTransform turned;
  turned.translate(-2, 10);
  turned.rotate(-14);
  // The reference takes the scale from m11, which is smaller here.
  const Line line = lissajous(90);
  const Trace trace = line.trace();
  QImage picture = whitePicture();
  ASSERT_TRUE(stroke(picture, {&trace, 1}, turned, 1));
  const TraceDifference difference = compareWithReference(
      picture, referenceCoverage({&trace, 1}, turned, 1 / turned.m11(), kWidth, kHeight, kPlaces));
  EXPECT_GT(difference.inked, 100);
  EXPECT_LE(difference.mean, 1.0);
}

TEST(TangledTraces, endInButtsAndJoinInDiscs) {
  // To the right from x = 10 to 40 and half way back, 2 high about the border of rows 15 and 16.
  const std::vector<float> x{10, 40, 25}, y{16, 16, 16};
  const Line line{"bar", x, y};
  const Trace trace = line.trace();
  QImage picture = whitePicture();
  ASSERT_TRUE(stroke(picture, {&trace, 1}, upright(), 2));
  for (const int row : {15, 16}) {
    EXPECT_EQ(inkAt(picture, 9, row), 0);
    EXPECT_EQ(inkAt(picture, 10, row), 255);
    EXPECT_EQ(inkAt(picture, 39, row), 255);
    EXPECT_NEAR(inkAt(picture, 40, row), 200, 3); // a quarter of a disc of radius 1: 255 · π / 4 = 200.3
    EXPECT_EQ(inkAt(picture, 41, row), 0);
  }
  EXPECT_EQ(inkAt(picture, 20, 14), 0);
  EXPECT_EQ(inkAt(picture, 20, 17), 0);
}

TEST(TangledTraces, levelEdgesAreExactAnywhereInAPixel) {
  for (const double down : {0.03, 0.21, 0.5, 0.77}) {
    const std::vector<float> x{2, 46, 3}, y(3, float(16 - down)); // 1 high: rows 15.5 + down to 16.5 + down
    const Line line{"bar", x, y};
    const Trace trace = line.trace();
    QImage picture = whitePicture();
    ASSERT_TRUE(stroke(picture, {&trace, 1}, upright(), 1));
    const double above = std::max(0.5 - down, 0.0), below = std::max(down - 0.5, 0.0);
    EXPECT_NEAR(inkAt(picture, 20, 15), 255 * above, 1.01) << down;
    EXPECT_NEAR(inkAt(picture, 20, 16), 255 * (1 - above - below), 1.01) << down;
    EXPECT_NEAR(inkAt(picture, 20, 17), 255 * below, 1.01) << down;
  }
}

TEST(TangledTraces, inkNeverDoubles) {
  const Line line = scribble(40);
  const Trace trace = line.trace();
  const std::vector<Trace> twice{trace, trace};
  const QColor half(0, 0, 0, 128);
  QImage once = whitePicture(), doubled = whitePicture();
  ASSERT_TRUE(stroke(once, {&trace, 1}, upright(), 3, half));
  ASSERT_TRUE(stroke(doubled, twice, upright(), 3, half));
  EXPECT_EQ(once, doubled);
  int darkest = 0;
  for (int row = 0; row < kHeight; ++row) {
    for (int column = 0; column < kWidth; ++column)
      darkest = std::max(darkest, inkAt(once, column, row));
  }
  EXPECT_EQ(darkest, 128); // of half opaque ink, however many lines cross there
}

TEST(TangledTraces, stayInsideTheClip) {
  const Line line = scribble(100);
  const Trace trace = line.trace();
  QImage whole = whitePicture(), part = whitePicture();
  ASSERT_TRUE(stroke(whole, {&trace, 1}, upright(), 1));
  const QRect clip(5, 7, 37, 11);
  const PixelTarget target{part.bits(), part.bytesPerLine(), kWidth, kHeight};
  ASSERT_TRUE(strokeTangledTraces(target, {&trace, 1}, upright(), clip, 1, Qt::black));
  for (int row = 0; row < kHeight; ++row) {
    for (int column = 0; column < kWidth; ++column) {
      const int expected = clip.contains(column, row) ? inkAt(whole, column, row) : 0;
      ASSERT_NEAR(inkAt(part, column, row), expected, clip.contains(column, row) ? 4 : 0) << column << ' ' << row;
    }
  }
}

// Bars there and back half a pixel beside each edge, four wide: the outermost pixels are inked, those next to them
// half.
TEST(TangledTraces, inkThePictureFromBesideIt) {
  const float end = kWidth, top = kHeight;
  const Line bars{"frame",
                  {4, 44, 4, kNan, 4, 44, 4, kNan, -0.5F, -0.5F, -0.5F, kNan, end + 0.5F, end + 0.5F, end + 0.5F},
                  {-0.5F, -0.5F, -0.5F, 0, top + 0.5F, top + 0.5F, top + 0.5F, 0, 4, 28, 4, 0, 4, 28, 4}};
  for (std::size_t first = 0; first < bars.x.size(); first += 4) {
    Trace trace = bars.trace();
    trace.first = std::int64_t(first);
    trace.last = trace.first + 3;
    QImage picture = whitePicture();
    ASSERT_TRUE(stroke(picture, {&trace, 1}, upright(), 4));
    const auto inkInwards = [&](int distance) {
      const QPoint places[] = {
          {24, kHeight - 1 - distance}, {24, distance}, {distance, 16}, {kWidth - 1 - distance, 16}};
      const QPoint place = places[first / 4];
      return inkAt(picture, place.x(), place.y());
    };
    EXPECT_EQ(inkInwards(0), 255) << first;
    EXPECT_NEAR(inkInwards(1), 127.5, 1) << first;
    EXPECT_EQ(inkInwards(2), 0) << first;
  }
}

TEST(TangledTraces, leadFarOffThePictureAndBack) {
  // A level line and an upright one through the middle, which begin and end beyond all that single precision tells.
  const float far = 1e30F;
  const Line line{
      "cross", {-far, far, kNan, 24, 24, kNan, 5, 5, kNan, far}, {16, 16, 0, -far, far, 0, kNan, 5, 1, 1}};
  const Trace trace = line.trace();
  QImage picture = whitePicture();
  ASSERT_TRUE(stroke(picture, {&trace, 1}, upright(), 2));
  for (int row = 0; row < kHeight; ++row) {
    for (int column = 0; column < kWidth; ++column) {
      const bool inked = row == 15 || row == 16 || column == 23 || column == 24;
      EXPECT_EQ(inkAt(picture, column, row), inked ? 255 : 0) << column << ' ' << row;
    }
  }
}

TEST(TangledTraces, areLeftToOthersWhereThePenIsNoCircle) {
  const Line line = scribble(5);
  const Trace trace = line.trace();
  QImage picture = whitePicture();
  EXPECT_FALSE(stroke(picture, {&trace, 1}, QTransform(1, 0, 0, 2, 0, 0), 1));
  EXPECT_FALSE(stroke(picture, {&trace, 1}, QTransform(1, 0, 0.5, 1, 0, 0), 1));
  EXPECT_EQ(picture, whitePicture());
}

TEST(TangledTraces, areTheSameBytesAtEveryWidthOfVectors) {
  for (const Line& line : {scribble(100), walk(500, 0.7), islands(), boxes()}) {
    const Trace trace = line.trace();
    QImage widest = whitePicture();
    ASSERT_TRUE(stroke(widest, {&trace, 1}, upright(), 1.3));
    xov::testing::forEachVectorWidth([&] {
      QImage picture = whitePicture();
      ASSERT_TRUE(stroke(picture, {&trace, 1}, upright(), 1.3));
      EXPECT_EQ(picture, widest) << line.name;
    });
  }
}

// Every time of a trace by a rule falls: the same line as of times that are told one by one.
TEST(TangledTraces, takeTimesByAnyRule) {
  const Line wave = walk(300, 0.5);
  Trace ruled = wave.trace(), told = ruled;
  ruled.time = TraceTime::even(44, -0.125F);
  std::vector<float> times;
  for (int i = 0; i < 300; ++i)
    times.push_back(44 - 0.125F * float(i));
  told.time = TraceTime::explicitValues(times.data());
  QImage one = whitePicture(), other = whitePicture();
  ASSERT_TRUE(stroke(one, {&ruled, 1}, upright(), 1));
  ASSERT_TRUE(stroke(other, {&told, 1}, upright(), 1));
  EXPECT_EQ(one, other);
  EXPECT_NE(one, whitePicture());
}

TEST(TangledTraces, clampedValuesAndTheFirstValueShow) {
  const std::vector<float> x{4, 40, 6}, y{100, 100, 100};
  const Line line{"bar", x, y};
  Trace trace = line.trace();
  trace.clampHigh = 16;
  trace.firstValue = 16;
  QImage picture = whitePicture();
  ASSERT_TRUE(stroke(picture, {&trace, 1}, upright(), 2));
  EXPECT_EQ(inkAt(picture, 20, 15), 255);
  EXPECT_EQ(inkAt(picture, 4, 16), 255);
  EXPECT_EQ(inkAt(picture, 20, 13), 0);
}

TEST(InkBits, countPlacesOnceAndKnowWhichRowsAreFull) {
  InkBits bits(2); // 2 pixels high
  bits.reset(3);
  EXPECT_EQ(bits.places(), 96);
  bits.touch({0, bits.rows()});
  bits.addSpan(0, 4, 40);  // 28 places of column 0, 8 of column 1
  bits.addSpan(0, 30, 42); // 2 more of column 1
  bits.addSpan(5, 7, 7);   // nothing
  bits.addSpan(17, 0, 96); // all of a row of the second pixels
  bits.addBits(16, 2, 0xF0);
  EXPECT_EQ(bits.firstOpen(16), 16);
  EXPECT_EQ(bits.firstOpen(17), 18);
  EXPECT_FALSE(bits.isFull());
  std::vector<std::int32_t> changes(3 * kInkColumns);
  const RowRange rows = bits.takeChanges(changes.data());
  EXPECT_EQ(rows.first, 0);
  EXPECT_EQ(rows.last, 2);
  const auto sums = [&](int row, int column) {
    std::int32_t sum = 0;
    for (int r = 0; r <= row; ++r)
      sum += changes[std::size_t(r * kInkColumns + column)] / kOneEdge;
    return sum;
  };
  EXPECT_EQ(sums(0, 0), 28);
  EXPECT_EQ(sums(0, 1), 10);
  EXPECT_EQ(sums(0, 2), 0);
  EXPECT_EQ(sums(1, 0), 32);
  EXPECT_EQ(sums(1, 2), 32 + 4);
  for (int column = 0; column < kInkColumns; ++column)
    EXPECT_EQ(sums(2, column), 0);
  bits.reset(3);
  EXPECT_EQ(bits.takeChanges(changes.data()).last, 0) << "taking leaves nothing behind";
}

TEST(InkBits, areFullOnceEveryRowIs) {
  InkBits bits(1);
  bits.reset(kInkColumns);
  bits.touch({0, bits.rows()});
  for (int row = 0; row < InkBits::kBitRows; ++row) {
    EXPECT_FALSE(bits.isFull());
    EXPECT_FALSE(bits.isFull({0, 1}, 3, 5));
    bits.addSpan(row, 0, 500);
    bits.addSpan(row, 500, bits.places());
  }
  EXPECT_TRUE(bits.isFull());
  EXPECT_TRUE(bits.isFull({0, 1}, 3, 5));
}
