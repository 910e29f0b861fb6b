#include "SeisDrawing.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/PickMarks.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace xov::testing {
namespace {

/// So many records whose stations are called S0, S1, ..., without picks, a degree apart from `nearest` on.
Records stations(int count, float nearest = 30, float apart = 1) {
  std::vector<std::shared_ptr<FakeRecord>> records;
  for (int i = 0; i < count; ++i) {
    records.push_back(fakeRecord({-1, 1}));
    records.back()->station = QStringLiteral("S%1").arg(i);
    records.back()->distanceDeg = nearest + apart * float(i);
    records.back()->file = QStringLiteral("S%1").arg(i);
  }
  return recordsOf(records);
}

using Drawing = std::unique_ptr<RecordingContext>;

QStringList stationsIn(const Drawing& recording) {
  QStringList stations;
  for (const QString& text : recording->strings())
    if (text.startsWith(QLatin1Char('S'))) stations << text.section(QLatin1Char(' '), 0, 0);
  return stations;
}

template <typename View>
Drawing drawing(View& view, const Records& records) {
  auto recording = std::make_unique<RecordingContext>();
  view.setWvfrmsArray(records);
  view.drawInto(*recording);
  return recording;
}

// 300 points for 60 captions of 11.5 points: slots of 5 hold every third of them.
TEST(GivingWay, captionsOfCrowdedStripsAreThinnedOutEvenly) {
  MultiSeisView view(QRectF(0, 0, 600, 400));
  const Records records = stations(60);
  EXPECT_EQ(stationsIn(drawing(view, records)).size(), 60) << "all unless they are to give way";
  view.setLabelsGiveWay(true);
  QStringList expected;
  for (int i = 0; i < 60; i += 3)
    expected << QStringLiteral("S%1").arg(i);
  const Drawing recording = drawing(view, records);
  EXPECT_EQ(stationsIn(recording), expected);
  EXPECT_NEAR(recording->texts()[1].position.y(), 60 + 2.5 + 15 + 4, 1e-3) << "4 points above the zero line";
}

TEST(GivingWay, captionsThatHaveRoomStayAsTheyAre) {
  MultiSeisView view(QRectF(0, 0, 600, 400));
  const Records records = stations(12);
  const QString before = drawing(view, records)->toText();
  view.setLabelsGiveWay(true);
  EXPECT_EQ(drawing(view, records)->toText(), before);
}

// Two stations at one distance and one far away: both captions of the two show, one box apart.
TEST(GivingWay, captionsAlongAnAxisMoveApart) {
  MultiSeisView view(QRectF(0, 0, 600, 400));
  view.setLabelsGiveWay(true);
  view.setStripPlacement(MultiSeisView::StripPlacement::ByDistanceDegrees);
  const Records records = stations(3, 30, 0);
  (*records)[2] = fakeRecord({-1, 1});
  std::static_pointer_cast<FakeRecord>((*records)[2])->distanceDeg = 60;
  const Drawing recording = drawing(view, records);
  ASSERT_EQ(stationsIn(recording), (QStringList{QStringLiteral("S0"), QStringLiteral("S1")}));
  const auto texts = recording->texts();
  EXPECT_NEAR(texts[1].position.y() - texts[0].position.y(), 11.5, 1e-3);
}

// 300 points for 30 bands are 10 points each, half a line of 18 points: 20.7.
TEST(GivingWay, namesOfCrowdedBandsAreThinnedOutFromTheTop) {
  SeisView02 view(QRectF(0, 0, 600, 400));
  view.setplotStyle(SeisView02::kBands);
  const Records records = stations(30);
  EXPECT_EQ(stationsIn(drawing(view, records)).size(), 30);
  view.setLabelsGiveWay(true);
  QStringList expected;
  for (int i = 0; i < 30; i += 3)
    expected << QStringLiteral("S%1").arg(i);
  EXPECT_EQ(stationsIn(drawing(view, records)), expected);
}

TEST(GivingWay, labelsOfPicksHaveThreePlaces) {
  const PickStyle beside{.labelPlace = PickStyle::LabelPlace::RightOfLine};
  const QRectF panel(0, 0, 100, 50);
  EXPECT_EQ(pickLabelPlaces(panel, 40, {20, 10}, beside), (std::array<QPointF, 3>{{{44, 40}, {44, 40}, {16, 40}}}));
  const PickStyle above{.labelPlace = PickStyle::LabelPlace::CenteredAbove};
  EXPECT_EQ(pickLabelPlaces(panel, 40, {20, 10}, above), (std::array<QPointF, 3>{{{30, 50}, {44, 50}, {16, 50}}}));
}

// Along 560 points of 100 s the labels of picks at 50 s and 50.5 s, 2.8 points apart, would cover each other: the
// second stands left of its line, and the third at the same place is left out.
TEST(GivingWay, labelsOfPicksStandOnTheOtherSideOrAreLeftOut) {
  MultiSeisView view(QRectF(0, 0, 600, 400));
  std::vector<float> samples(101, 0.0F);
  samples[3] = 1;
  const auto record = fakeRecord(samples);
  record->picks = {{0, 50.0F}, {1, 50.5F}, {2, 51.0F}};
  const Records records = recordsOf({record});
  const auto labels = [&] {
    QStringList found;
    const Drawing recording = drawing(view, records);
    for (const RecordedItem& item : recording->texts())
      if (item.text.size() == 2 && item.text[0] == QLatin1Char('T'))
        found << QStringLiteral("%1 %2").arg(item.text).arg(item.position.x(), 0, 'f', 1);
    return found;
  };
  // A label is two characters wide: T (6.11) and a digit (5.56) of Helvetica 10, 11.67 points. 50.5 s lie at 302.8.
  EXPECT_EQ(labels(),
            (QStringList{QStringLiteral("T0 304.0"), QStringLiteral("T1 306.8"), QStringLiteral("T2 309.6")}));
  view.setLabelsGiveWay(true);
  EXPECT_EQ(labels(), (QStringList{QStringLiteral("T0 304.0"), QStringLiteral("T1 287.1")}));
}

// Slots of 300 points, a gain of 1.5 and 241 units: 0.83 points a unit, and 28 points hold 20.
TEST(GivingWay, aBarShowsTheScaleOfASection) {
  MultiSeisView view(QRectF(0, 0, 600, 400));
  const Records records = recordsOf({fakeRecord({220, -200})});
  EXPECT_TRUE(drawing(view, records)->strings().filter(QStringLiteral("nm")).isEmpty());
  view.setShowAmplitudeBar(true);
  view.setAmplitudeUnit(QStringLiteral("nm"));
  const Drawing recording = drawing(view, records);
  EXPECT_TRUE(recording->textReading(QStringLiteral("20 nm")));
  const auto bars = lineStrokes(*recording);
  const auto isBar = [](const RecordedItem& item) {
    const auto segments = item.segments();
    return segments.size() == 3 && std::abs(segments[0].length() - 20 * 300 / 1.5 / 241) < 1e-3 &&
           std::abs(segments[0].x1() - 577) < 1e-3 && std::abs(segments[0].y1() - 366) < 1e-3;
  };
  EXPECT_EQ(std::count_if(bars.begin(), bars.end(), isBar), 1);
  view.setAmplitudeScaling(MultiSeisView::AmplitudeScaling::EachTrace);
  EXPECT_FALSE(drawing(view, records)->textReading(QStringLiteral("20 nm"))) << "each trace has its own";
}

// A title that reaches the corner: the bar stands within the frame, below its upper edge at 360.
TEST(GivingWay, theBarLeavesRoomForTheTitle) {
  MultiSeisView view(QRectF(0, 0, 600, 400));
  view.setShowAmplitudeBar(true);
  view.setTitle(QString(60, QLatin1Char('W')));
  const Records records = recordsOf({fakeRecord({220, -200})});
  const auto text = drawing(view, records)->textReading(QStringLiteral("20"));
  ASSERT_TRUE(text);
  EXPECT_LT(text->position.y(), 354);
}

// A band of 150 points shows 441 + 2 · 22 units: 0.32 points each, and 28 points hold 50.
TEST(GivingWay, aBarShowsTheScaleOfBands) {
  SeisView02 view(QRectF(0, 0, 600, 400));
  view.setShowAmplitudeBar(true);
  const Records records = recordsOf({fakeRecord({220, -221}), fakeRecord({0, 1})});
  EXPECT_FALSE(drawing(view, records)->textReading(QStringLiteral("50"))) << "an overlay has an axis";
  view.setplotStyle(SeisView02::kBands);
  EXPECT_TRUE(drawing(view, records)->textReading(QStringLiteral("50")));
}

} // namespace
} // namespace xov::testing
