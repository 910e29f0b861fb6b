#include "SeisDrawing.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/wvfrmView.h"

#include <gtest/gtest.h>

#include <QTimeZone>

namespace xov::testing {
namespace {

const QDateTime kMorning(QDate(2011, 3, 11), QTime(5, 46, 24), QTimeZone::utc());

QStringList textsOf(const RecordingContext& recording) {
  QStringList texts;
  for (const RecordedItem& item : recording.items()) {
    if (item.kind == RecordedItem::Kind::Text) texts << item.text;
  }
  return texts;
}

Records minuteOfData() { return recordsOf({fakeRecord(std::vector<float>(61, 0.5f), 1, -24)}); }

TEST(UtcTimeAxis, isOffUntilAReferenceIsGiven) {
  MultiSeisView view(QRectF(0, 0, 600, 400));
  EXPECT_FALSE(view.timeReference().isValid());
  const Records records = minuteOfData();
  view.setWvfrmsArray(records);
  view.setXLabelString(QStringLiteral("Time (s)"));
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_TRUE(textsOf(recording).contains(QStringLiteral("Time (s)")));
}

// From 05:46:00 to 05:47:00.
TEST(UtcTimeAxis, showsMomentsWhereARecordSectionShowedSeconds) {
  MultiSeisView view(QRectF(0, 0, 600, 400));
  const Records records = minuteOfData();
  view.setWvfrmsArray(records);
  view.setXLabelString(QStringLiteral("Time (s)"));
  view.setTimeReference(kMorning);
  RecordingContext recording;
  view.drawInto(recording);
  const QStringList texts = textsOf(recording);
  EXPECT_TRUE(texts.contains(QStringLiteral("05:46:00")));
  EXPECT_TRUE(texts.contains(QStringLiteral("05:47:00")));
  EXPECT_TRUE(texts.contains(QStringLiteral("UTC")));
  EXPECT_TRUE(texts.contains(QStringLiteral("2011-03-11")));
  EXPECT_FALSE(texts.contains(QStringLiteral("Time (s)")));
}

TEST(UtcTimeAxis, standsUnderPanels) {
  wvfrmView view(QRectF(0, 0, 600, 400));
  const Records pair = recordsOf({fakeRecord({0.5f, 0.5f}), fakeRecord({0.5f, 0.5f})});
  view.setWvfrmArray(pair);
  view.setXLimitsMinMax(-24, 36);
  view.setTimeReference(kMorning);
  RecordingContext recording;
  view.drawInto(recording);
  EXPECT_TRUE(textsOf(recording).contains(QStringLiteral("05:46:00")));
}

TEST(UtcTimeAxis, isAPropertyThatDraws) {
  MultiSeisView view(QRectF(0, 0, 600, 400));
  int changes = 0;
  QObject::connect(&view, &XOVView::settingsChanged, [&] { ++changes; });
  EXPECT_TRUE(view.setProperty("timeReference", kMorning));
  EXPECT_EQ(view.timeReference(), kMorning);
  EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace xov::testing
