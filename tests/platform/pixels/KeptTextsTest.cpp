#include "XOV_Graphics/platform/TextAttributes.h"
#include "XOV_Graphics/platform/pixels/KeptPixels.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <random>

namespace xov {
namespace {

constexpr QSize kPicture(100, 50);
const TextPlace kPlace{
    QStringLiteral("BHZ"), QStringLiteral("Helvetica"), {1, 0, 0, 1, 20, 30}, qRgba64(0, 0, 0, 0xFFFF)};

// 12 by 6 pixels at (20, 30).
QPainterPath bar() {
  QPainterPath path;
  path.addRect(0, 0, 12, 6);
  return path;
}

const KeptTexts::Ink* inkIn(KeptTexts& texts, const TextPlace& place = kPlace) {
  return texts.inkOf(place, kPicture, bar);
}

TEST(KeptTexts, aLineIsKeptFromItsSecondPictureOn) {
  KeptTexts texts;
  EXPECT_EQ(inkIn(texts), nullptr);
  EXPECT_EQ(inkIn(texts), nullptr) << "twice in one picture";
  texts.endPicture();
  const KeptTexts::Ink* const ink = inkIn(texts);
  ASSERT_NE(ink, nullptr);
  const auto at = [ink](int x, int y) {
    return testing::pixelAt(ink->image, x - ink->topLeft.x(), y - ink->topLeft.y());
  };
  EXPECT_EQ(at(20, 30), qRgb(0, 0, 0));
  EXPECT_EQ(at(31, 35), qRgb(0, 0, 0));
  EXPECT_EQ(at(19, 30), 0U);
  EXPECT_EQ(at(32, 35), 0U);
  texts.endPicture();
  const qint64 key = ink->image.cacheKey();
  ASSERT_NE(inkIn(texts), nullptr);
  EXPECT_EQ(inkIn(texts)->image.cacheKey(), key) << "made anew";
}

TEST(KeptTexts, anotherTextFontPlaceSizeOrColorIsAnotherLine) {
  const auto isAnother = [](const auto& change) {
    KeptTexts texts;
    inkIn(texts);
    texts.endPicture();
    TextPlace other = kPlace;
    change(other);
    return inkIn(texts, other) == nullptr;
  };
  EXPECT_FALSE(isAnother([](TextPlace&) {}));
  EXPECT_TRUE(isAnother([](TextPlace& other) { other.line = QStringLiteral("BHN"); }));
  EXPECT_TRUE(isAnother([](TextPlace& other) { other.family = QStringLiteral("Courier"); }));
  EXPECT_TRUE(isAnother([](TextPlace& other) { other.matrix.translate(1e-9, 0); }));
  EXPECT_TRUE(isAnother([](TextPlace& other) { other.matrix.scale(1, 1.001); }));
  EXPECT_TRUE(isAnother([](TextPlace& other) { other.color = qRgba64(1, 0, 0, 0xFFFF); }));
}

TEST(KeptTexts, whatPicturesDoWithoutIsForgotten) {
  for (const int without : {3, 4}) {
    KeptTexts texts;
    inkIn(texts);
    texts.endPicture();
    for (int i = 0; i < without; ++i)
      texts.endPicture();
    EXPECT_EQ(inkIn(texts) == nullptr, without == 4) << without;
  }
}

TEST(KeptTexts, whatReachesOutOfThePictureIsNotKept) {
  KeptTexts texts;
  TextPlace outside = kPlace;
  outside.matrix = QTransform::fromTranslate(89, 30);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(inkIn(texts, outside), nullptr);
    texts.endPicture();
  }
  inkIn(texts);
  texts.endPicture();
  ASSERT_NE(inkIn(texts), nullptr);
  EXPECT_EQ(texts.inkOf(kPlace, {30, 50}, bar), nullptr) << "in a narrower picture";
}

// With a pixel around it the bar has 14 by 8, 448 bytes. A line may take a sixteenth of all room: with 16 times as
// many bytes 16 lines are kept, with one less none is. Room is there again when they are forgotten.
TEST(KeptTexts, noMoreBytesAreKeptThanTold) {
  const auto kept = [](KeptTexts& texts, int lines, int first = 0) {
    int count = 0;
    for (int line = first; line < first + lines; ++line) {
      TextPlace place = kPlace;
      place.line = QString::number(line);
      count += inkIn(texts, place) != nullptr ? 1 : 0;
    }
    texts.endPicture();
    return count;
  };
  KeptTexts tooSmall(16 * 448 - 1), texts(16 * 448);
  kept(tooSmall, 20);
  EXPECT_EQ(kept(tooSmall, 20), 0);
  kept(texts, 20);
  EXPECT_EQ(kept(texts, 20), 16);
  EXPECT_EQ(kept(texts, 20), 16) << "others in their place";
  for (int i = 0; i < 5; ++i)
    kept(texts, 3, 100);
  EXPECT_EQ(kept(texts, 13, 100), 3);
  EXPECT_EQ(kept(texts, 13, 100), 13);
}

// Those that reach out of the picture, and those that there is no room for: 16 of 448 bytes take it all.
TEST(KeptTexts, theOutlineOfALineThatIsNotKeptIsMadeOnce) {
  KeptTexts texts(16 * 448);
  int outlines = 0;
  const auto draw = [&] {
    for (int line = 0; line < 20; ++line) {
      TextPlace place = kPlace;
      place.line = QString::number(line);
      if (line < 3) place.matrix = QTransform::fromTranslate(95, 30);
      texts.inkOf(place, kPicture, [&] {
        ++outlines;
        return bar();
      });
    }
    texts.endPicture();
  };
  draw();
  EXPECT_EQ(outlines, 0);
  draw();
  EXPECT_EQ(outlines, 20);
  for (int i = 0; i < 3; ++i)
    draw();
  EXPECT_EQ(outlines, 20);
}

struct RandomTexts {
  explicit RandomTexts(unsigned seed) : seed(seed) {}
  // The same texts at each call, over and outside of a picture of 200 by 150, some of them turned or clipped.
  void operator()(GraphicsContext& context) const {
    std::mt19937 random(seed);
    const auto upTo = [&random](double most) { return std::uniform_real_distribution<double>(0, most)(random); };
    context.setColor(QColor::fromRgbF(upTo(1), upTo(1), upTo(1)));
    context.fillRect({0, 0, upTo(400), 150});
    for (int i = 0; i < 30; ++i) {
      const SavedState saved(context);
      if (upTo(1) < 0.2) context.clipToRect({upTo(100), upTo(80), upTo(100), upTo(80)});
      if (upTo(1) < 0.1) {
        Path oval;
        oval.appendOval({upTo(100), upTo(80), 100, 70});
        context.clipToPath(oval);
      }
      context.concat(QTransform::fromTranslate(upTo(200), upTo(150)));
      if (upTo(1) < 0.3) context.concat(QTransform().rotate(upTo(1) < 0.5 ? 90 : upTo(360)));
      TextAttributes attributes = TextAttributes::helvetica(upTo(20));
      attributes.setColor(QColor::fromRgbF(upTo(1), upTo(1), upTo(1), upTo(1) < 0.5 ? 1 : upTo(1)));
      context.drawText(QStringLiteral("Label %1\nBHZ").arg(i), {0, 0}, attributes);
    }
  }
  unsigned seed;
};

TEST(KeptTexts, picturesHaveTheSamePixelsAsWithoutThem) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    const double ratio = 1 + 0.25 * (seed % 5);
    const RandomTexts draw(seed);
    KeptPixels kept;
    const QImage plain = picture({0, 0, 200, 150}, ratio, draw);
    for (int i = 0; i < 3; ++i)
      EXPECT_EQ(picture({0, 0, 200, 150}, ratio, draw, &kept), plain) << "picture " << i << " of seed " << seed;
  }
}

} // namespace
} // namespace xov
