#include "XOV_Graphics/views/image/SpectrogramView.h"

#include "XOV_Graphics/colour/ColorValues.h"
#include "tests/support/FakeRecord.h"
#include "tests/support/GuardedSamples.h"
#include "tests/views/image/ImageDrawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace xov {
namespace {

// The picture's frame: 76 points from the left, 60 from the bottom; the colour bar takes 88 and the margin 24 at the
// right: 512 by 232, which is 0.8 of 308 less a gap of 12, and a small rest.
const QRectF kFrame(0, 0, 700, 420);

// Of 10 Hz at 100 Hz, from `start` on.
std::shared_ptr<testing::FakeRecord> sine(std::size_t count, float start = 0) {
  std::vector<float> samples(count);
  for (std::size_t k = 0; k < count; ++k)
    samples[k] = float(3 * std::sin(2 * std::numbers::pi * 10 * double(k) / 100));
  return std::make_shared<testing::FakeRecord>(samples, 0.01F, start);
}

// Whoever asks such a record for all of its samples brings them into memory.
class RecordOfASource : public testing::FakeRecord {
public:
  explicit RecordOfASource(const FakeRecord& record) : FakeRecord(record.samples, record.deltaSeconds) {}
  BorrowedSamples borrowedSamples() const override { return {guarded.data(), nullptr, &guarded}; }
  const float* GetSacSeis() const override {
    ADD_FAILURE() << "asked for all samples";
    return samples.data();
  }
  mutable testing::GuardedSamples guarded{samples};
};

class SpectrogramViewTest : public ::testing::Test {
protected:
  void show(SeismogramArray records) {
    view.setWindowSeconds(1);
    view.setRecords(std::make_shared<const SeismogramArray>(std::move(records)));
  }
  QImage draw() { return view.pictureOfRect(view.bounds()); }
  // A pixel of the picture at data coordinates.
  QColor at(const QImage& picture, double seconds, double hz) {
    const QPointF point = dataToView({seconds, hz}, view.iRect(), view.limits(), view.logAxes());
    return picture.pixelColor(int(point.x()), int(kFrame.height() - point.y()));
  }

  SpectrogramView view{kFrame};
};

TEST_F(SpectrogramViewTest, showsTheWholeRecordingUpToNyquist) {
  show({sine(3000)});
  draw();
  EXPECT_EQ(view.limits(), (PlotLimits{0, 30, 0, 50}));
  EXPECT_EQ(view.picture().columns, int(std::ceil(2 * view.iRect().width())));
}

// Two cells a point in both directions were 60 million of the 15 million points of its frame; kept twice, half a
// gigabyte.
TEST_F(SpectrogramViewTest, isNoFinerThanAScreenOfFourThousandColumnsIs) {
  view.resize(5000, 4000);
  show({sine(300)});
  view.pictureOfRect({0, 0, 1, 1});
  const double columns = view.picture().columns, rows = view.picture().rows;
  EXPECT_NEAR(columns * rows, 1 << 25, columns + rows + 1); // 2 a point of 3840 by 2160 are 1 % fewer
  EXPECT_NEAR(columns / rows, view.iRect().width() / view.iRect().height(), 1e-3);
  EXPECT_EQ(view.imageFloats().get(), &view.picture().decibels) << "kept twice";
}

TEST_F(SpectrogramViewTest, readsThroughTheSourceOfARecord) {
  const auto record = sine(3000);
  show({record});
  const QImage expected = draw();
  show({std::make_shared<RecordOfASource>(*record)});
  EXPECT_EQ(draw(), expected);
}

TEST_F(SpectrogramViewTest, aSineIsABrightLine) {
  show({sine(3000)});
  view.setLowestDecibel(-100);
  view.setHighestDecibel(10);
  const QImage picture = draw();
  // Density 3 at 10 Hz, 4.8 dB: near the yellow end. 30 Hz is silent but for rounding, below -100 dB: dark violet.
  EXPECT_GT(at(picture, 15, 10.5).green(), 180);
  EXPECT_LT(at(picture, 15, 30).green(), 40);
  EXPECT_EQ(view.decibelRange(), (DecibelRange{-100, 10}));
}

// 110 dB are 256 shades: each cell has the one at its share of them.
TEST_F(SpectrogramViewTest, decibelsHaveTheirShareOfTheColors) {
  show({sine(3000)});
  view.setLowestDecibel(-100);
  view.setHighestDecibel(10);
  draw();
  const Spectrogram& picture = view.picture();
  const QImage image = view.anImage();
  ASSERT_EQ(image.size(), QSize(picture.columns, picture.rows));
  const int column = picture.columns / 2;
  int between = 0;
  for (int row = 0; row < picture.rows; ++row) {
    const float decibel = picture.decibels[std::size_t(row) * std::size_t(picture.columns) + std::size_t(column)];
    if (!(decibel > -99 && decibel < 9)) continue;
    ++between;
    std::uint32_t red = 0, green = 0, blue = 0;
    getColorValues(256, kViridisPalette, &red, &green, &blue, nullptr, (decibel + 100) / 110);
    EXPECT_EQ(image.pixel(column, row), qRgb(int(red), int(green), int(blue))) << row;
  }
  EXPECT_GT(between, 5);
}

TEST_F(SpectrogramViewTest, thePaperShowsInAGap) {
  show({sine(1000), sine(1000, 20)});
  const QImage picture = draw();
  EXPECT_EQ(view.xmax(), 30);
  EXPECT_EQ(at(picture, 15, 10), QColor(Qt::white));
  EXPECT_NE(at(picture, 5, 10), QColor(Qt::white));
  EXPECT_NE(at(picture, 25, 10), QColor(Qt::white));
}

TEST_F(SpectrogramViewTest, clicksAreTimeAndFrequency) {
  show({sine(3000)});
  view.setLogFrequency(true);
  view.setLowestHz(0.5);
  draw();
  std::vector<QPointF> clicks;
  QObject::connect(&view, &XOVView::clicked, [&clicks](QPointF position) { clicks.push_back(position); });
  const QPointF middle = view.iRect().center();
  view.mouseDown({{middle.x(), kFrame.height() - middle.y()}, {}, 1});
  ASSERT_EQ(clicks.size(), 1u);
  EXPECT_NEAR(clicks[0].x(), 15, 1e-4);
  EXPECT_NEAR(clicks[0].y(), 5, 1e-4); // in the middle of two decades
}

TEST_F(SpectrogramViewTest, aLogarithmicAxisHasTheLineAtItsPlace) {
  show({sine(3000)});
  view.setLogFrequency(true);
  view.setLowestHz(0.5);
  view.setLowestDecibel(-100);
  view.setHighestDecibel(10);
  const QImage picture = draw();
  EXPECT_GT(at(picture, 15, 10).green(), 180);
  EXPECT_LT(at(picture, 15, 30).green(), 60);
}

TEST_F(SpectrogramViewTest, theColorsFollowThePictureUnlessTold) {
  show({sine(3000)});
  draw();
  EXPECT_EQ(view.decibelRange(), robustRange(view.picture().decibels));
  EXPECT_EQ(view.minValue(), float(view.decibelRange().lowest));
}

TEST_F(SpectrogramViewTest, anOffsetIsAddedToAllDecibels) {
  show({sine(3000)});
  draw();
  const float before = view.picture().decibels[std::size_t(view.picture().columns) / 2];
  view.setDecibelOffset(-180);
  draw();
  EXPECT_NEAR(view.picture().decibels[std::size_t(view.picture().columns) / 2], before - 180, 1e-3);
}

TEST_F(SpectrogramViewTest, theSeismogramStandsAboveOnTheSameAxis) {
  show({sine(3000)});
  draw();
  const double withSeismogram = view.iRect().height();
  view.setShowSeismogram(false);
  draw();
  EXPECT_NEAR(view.iRect().height() * 0.8 - 12, withSeismogram, 1e-9);
}

// Ten samples a period reach 3 sin 72° = 2.85: of the multiples of 5 only 0 lies there,
// of those of 2 -2, 0 and 2.
TEST_F(SpectrogramViewTest, theSeismogramHasAnAxisOfAmplitudes) {
  show({sine(3000)});
  const QStringList texts = testing::recorded(view).strings();
  EXPECT_TRUE(texts.contains(QStringLiteral("-2"))) << qPrintable(texts.join(QStringLiteral(", ")));
  EXPECT_TRUE(texts.contains(QStringLiteral("2")));
  EXPECT_TRUE(texts.contains(QStringLiteral("counts")));
  view.setShowSeismogram(false);
  EXPECT_FALSE(testing::recorded(view).strings().contains(QStringLiteral("counts")));
}

// Ticks are 4 points long, and the labels end 2 points beside them.
TEST_F(SpectrogramViewTest, amplitudesStandLeftOfTheirTicks) {
  show({sine(3000)});
  const auto recording = testing::recorded(view);
  const auto label = recording.textReading(QStringLiteral("-2"));
  ASSERT_TRUE(label);
  EXPECT_NEAR(label->position.x() + label->attributes.size(label->text).width(), 76 - 4 - 2, 1e-9);
}

TEST_F(SpectrogramViewTest, timesAreUtcWhereTheReferenceIsKnown) {
  show({sine(3000)});
  EXPECT_TRUE(testing::recorded(view).strings().contains(QStringLiteral("Time (s)")));
  view.setTimeReference(QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23), Qt::UTC));
  EXPECT_FALSE(testing::recorded(view).strings().contains(QStringLiteral("Time (s)")));
  EXPECT_TRUE(testing::recorded(view).strings().contains(QStringLiteral("2011-03-11")));
}

TEST_F(SpectrogramViewTest, hostsMayKeepTheirLimits) {
  show({sine(3000)});
  view.setXLimitsMinMax(10, 20);
  view.set_fixedXAxisRange(true);
  draw();
  EXPECT_EQ(view.limits(), (PlotLimits{10, 20, 0, 50}));
}

TEST_F(SpectrogramViewTest, withoutRecordsThePaperIsEmpty) {
  EXPECT_EQ(draw().pixelColor(300, 200), QColor(Qt::white));
  show({nullptr, std::make_shared<testing::FakeRecord>(std::vector<float>(), 0.01F)});
  EXPECT_EQ(draw().pixelColor(300, 200), QColor(Qt::white));
  EXPECT_TRUE(view.picture().isEmpty());
}

TEST_F(SpectrogramViewTest, movesInTimeOverTheSeismogramAsOverThePicture) {
  show({sine(3000)});
  view.setShowSeismogram(true);
  draw();
  // The frame's upper fifth is the seismogram's, as wide as the picture.
  const QRectF picture = view.iRect();
  const QPointF above(picture.center().x(), picture.bottom() + 30);
  const QRectF seismogram = view.partFrame(above);
  EXPECT_EQ(seismogram.left(), picture.left());
  EXPECT_EQ(seismogram.width(), picture.width());
  EXPECT_GT(seismogram.top(), picture.bottom());
  EXPECT_EQ(view.partFrame(picture.center()), picture);
  EXPECT_TRUE(view.partFrame({picture.center().x(), (picture.bottom() + seismogram.top()) / 2}).isEmpty());
}

} // namespace
} // namespace xov
