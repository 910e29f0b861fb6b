#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include "tests/seismic/SeismogramTexts.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

using namespace xov;
using test::copiedSamples;
using test::preciseOf;
using test::referenceText;

namespace {

QDateTime utc(int hour, int minute, int second, int millisecond = 0) {
  return QDateTime(QDate(2012, 5, 12), QTime(hour, minute, second, millisecond), Qt::UTC);
}

std::shared_ptr<SacSeismogram> piece(const QDateTime& reference, float b, const char* station = "A") {
  SacHeader header;
  header.delta = 0.5F;
  header.b = b;
  header.kstnm = station;
  setReferenceTime(header, reference);
  return std::make_shared<SacSeismogram>(header, std::vector<float>{1, 2, 3}, QStringLiteral("/a/path"));
}

} // namespace

TEST(TimeAxis, tellsWhenARecordStarts) {
  const QDateTime reference = utc(1, 2, 3, 4);
  EXPECT_DOUBLE_EQ(*startSeconds(*piece(reference, 0.25F)), double(reference.toMSecsSinceEpoch()) / 1000 + 0.25);
  EXPECT_FALSE(startSeconds(SacSeismogram()));
  EXPECT_EQ(intervalSeconds(*piece(reference, 0)), 0.5);
}

TEST(TimeAxis, usesTheDoublePrecisionThatARecordHas) {
  SacHeader header;
  setReferenceTime(header, utc(0, 0, 0));
  SacFooter precise;
  precise.b = 86400.0001;
  precise.delta = 0.0100001;
  const SacSeismogram record(header, {1}, {}, precise);
  EXPECT_DOUBLE_EQ(*startSeconds(record), double(utc(0, 0, 0).toMSecsSinceEpoch()) / 1000 + 86400.0001);
  EXPECT_EQ(intervalSeconds(record), 0.0100001);
}

TEST(TimeAxis, movesAllTimesOfARecord) {
  const auto original = piece(utc(1, 0, 0), 0.25F);
  SacHeader header = *original->GetSacHeader();
  header.o = -10;
  header.a = 5;
  header.t3 = 6.5F;
  header.ka = "P";
  header.e = 1.25F;
  const auto record = std::make_shared<SacSeismogram>(header, copiedSamples(*original), original->path());
  const auto moved = onTimeAxis(record, utc(0, 59, 0));
  EXPECT_EQ(referenceText(*moved), QStringLiteral("2012-05-12T00:59:00.000Z"));
  EXPECT_EQ(moved->b(), 60.25F);
  EXPECT_EQ(moved->e(), 61.25F);
  EXPECT_EQ(moved->originTimeOffset(), 50);
  EXPECT_EQ(moved->pTime(), 65);
  EXPECT_EQ(moved->timePickKey(3), 66.5F);
  EXPECT_EQ(moved->timePickKey(4), kUndefinedValue) << "what is not set stays so";
  EXPECT_EQ(moved->pickLabelWithKey(10), QStringLiteral("P"));
  EXPECT_EQ(copiedSamples(*moved), copiedSamples(*record));
  EXPECT_EQ(moved->path(), record->path());
  EXPECT_DOUBLE_EQ(*startSeconds(*moved), *startSeconds(*record));
}

TEST(TimeAxis, leavesARecordAloneThatIsOnItOrHasNoTime) {
  const auto record = piece(utc(1, 0, 0), 0);
  EXPECT_EQ(onTimeAxis(record, utc(1, 0, 0)), record);
  EXPECT_EQ(onTimeAxis(record, {}), record);
  const auto unknown = piece({}, 0);
  EXPECT_EQ(onTimeAxis(unknown, utc(1, 0, 0)), unknown);
}

// Sixty are more than a sort that may exchange equals leaves in place.
TEST(TimeAxis, keepsTheOrderOfPiecesAtOneTime) {
  SeismogramArray expected;
  SeismogramArray unknown;
  SeismogramArray mixed;
  for (int i = 0; i < 60; ++i) {
    const bool hasTime = i % 3 > 0;
    mixed.push_back(piece(hasTime ? utc(10, 0, 0) : QDateTime(), 2));
    (hasTime ? expected : unknown).push_back(mixed.back());
  }
  expected.insert(expected.end(), unknown.begin(), unknown.end());
  EXPECT_EQ(consecutivePieces(mixed), expected);
}

TEST(TimeAxis, putsThePiecesOfARecordingInOrderFromTheFirst) {
  const auto second = piece(utc(11, 0, 0), 0.125F);
  const auto first = piece(utc(10, 17, 30, 250), 0.5F);
  const auto unknown = piece({}, 0);
  const SeismogramArray pieces = consecutivePieces({unknown, second, nullptr, first});
  ASSERT_EQ(pieces.size(), 3U);
  EXPECT_EQ(pieces[0], first);
  EXPECT_EQ(referenceText(*pieces[1]), QStringLiteral("2012-05-12T10:17:30.250Z"));
  // From 10:17:30.250 to 11:00:00.125 it is 42 minutes and 29.875 s.
  EXPECT_EQ(pieces[1]->b(), 2549.875F);
  EXPECT_EQ(pieces[2], unknown);
  EXPECT_TRUE(consecutivePieces({nullptr}).empty());
}
