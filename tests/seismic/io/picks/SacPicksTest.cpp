#include "XOV_Graphics/seismic/io/picks/SacPicks.h"

#include "XOV_Graphics/seismic/io/sac/SacReader.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "tests/seismic/PickSamples.h"
#include "tests/seismic/SacBytes.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

using namespace xov;
using namespace xov::test;

namespace {

/// Three samples of II.TLY.00.BHZ that count from 2011-03-11 05:50 (day 70), with a pick in T3.
SacBytes tlyBytes(Order order, int version = 6) {
  SacBytes sac(order, version);
  sac.integer(SacBytes::kNzyear, 2011).integer(SacBytes::kNzjday, 70).integer(SacBytes::kNzhour, 5);
  sac.integer(SacBytes::kNzmin, 50).integer(SacBytes::kNzsec, 0).integer(SacBytes::kNzmsec, 0);
  sac.text(SacBytes::kStation, 8, "TLY").text(SacBytes::kNetwork, 8, "II").text(SacBytes::kHole, 8, "00");
  sac.text(SacBytes::kComponent, 8, "BHZ").number(SacBytes::kT0 + 3, 400).text(SacBytes::kT0Label + 3 * 8, 8, "S");
  return sac.samples({1, -2, 3});
}

} // namespace

TEST(SacPicks, changeNothingButThePicksOfTheHeader) {
  for (const Order order : {Order::Little, Order::Big}) {
    const TemporaryFiles files;
    const QString source = files.write("a.sac", tlyBytes(order).bytes() + "tail");
    // 05:52:02.5 is 122.5 s after the reference time, 05:58 are 480 s.
    const PickArray picks = {tlyPick("S", "2011-03-11T05:58:00Z"), tlyPick("P", "2011-03-11T05:52:02.5Z"),
                             tlyPick("F", "2011-03-11T06:00:00Z"), tlyPick("PKiKP", "2011-03-11T05:53:00Z"),
                             tlyPick("P", "2011-03-11T05:50:00Z", "BHN")};
    const Result<QStringList> written = writeSacPicks(source, files.path("b.sac"), picks);
    ASSERT_TRUE(written) << written.error().toStdString();
    EXPECT_TRUE(written->isEmpty());
    SacBytes expected = tlyBytes(order);
    expected.number(SacBytes::kA, 122.5F).text(SacBytes::kFirstArrivalLabel, 8, "P");
    expected.number(SacBytes::kF, 600);
    expected.number(SacBytes::kT0 + 3, 480); // where S was
    expected.number(SacBytes::kT0, 180).text(SacBytes::kT0Label, 8, "PKiKP");
    EXPECT_EQ(files.read(files.path("b.sac")), expected.bytes() + "tail");
    EXPECT_EQ(files.read(source), tlyBytes(order).bytes() + "tail");
  }
}

TEST(SacPicks, areInTheFooterInDoublePrecision) {
  for (const Order order : {Order::Little, Order::Big}) {
    const TemporaryFiles files;
    SacBytes sac = tlyBytes(order, 7);
    for (int i = 0; i < 22; ++i)
      sac.footer(i == 0 ? 1.0 : i == 1 ? 0.0 : -12345.0);
    const QString source = files.write("a.sac", sac.bytes());
    ASSERT_TRUE(writeSacPicks(source, source, {tlyPick("P", "2011-03-11T05:52:02.123456789Z")}));
    const auto read = readSac(source);
    ASSERT_TRUE(read) << read.error().toStdString();
    EXPECT_NEAR((*read)->preciseValues().a, 122.123456789, 1e-12);
    EXPECT_EQ((*read)->preciseValues().t3, -12345.0);
    EXPECT_EQ((*read)->timePickKey(3), -12345.0F);
    EXPECT_EQ((*read)->pickLabelWithKey(10), QStringLiteral("P"));
  }
}

// Five numbers a line: A is the fourth of the second line, T0 to T4 are the third line, F the first of the fifth. Of
// the text, three a line, KA is the third of the 24th.
TEST(SacPicks, changeTheLinesOfTheAlphanumericFormThatTheyStandOn) {
  for (const QByteArray& end : {QByteArray("\n"), QByteArray("\r\n")}) {
    const TemporaryFiles files;
    const auto record = readSac(files.write("binary.sac", tlyBytes(Order::Little).bytes()));
    ASSERT_TRUE(record);
    ASSERT_TRUE(writeSac(**record, files.path("text.sac"), {.form = SacWriteOptions::Form::Alphanumeric}));
    const QByteArray text = files.read(files.path("text.sac")).replace("\n", end);
    const QString source = files.write("a.sac", text);
    const QString target = files.path("b.sac");
    const PickArray picks = {tlyPick("P", "2011-03-11T05:52:02.5Z"), tlyPick("F", "2011-03-11T06:00:00Z")};
    const Result<QStringList> written = writeSacPicks(source, target, picks);
    ASSERT_TRUE(written) << written.error().toStdString();
    const auto read = readSac(target);
    ASSERT_TRUE(read) << read.error().toStdString();
    EXPECT_EQ((*read)->timePickKey(10), 122.5F);
    EXPECT_EQ((*read)->pickLabelWithKey(10), QStringLiteral("P"));
    EXPECT_EQ((*read)->timePickKey(11), 600.0F);
    EXPECT_EQ((*read)->timePickKey(3), -12345.0F) << "gone";
    EXPECT_EQ((*read)->pickLabelWithKey(3), QStringLiteral("-12345"));
    const QList<QByteArray> before = text.split('\n');
    const QList<QByteArray> after = files.read(target).split('\n');
    ASSERT_EQ(after.size(), before.size());
    QList<int> changed;
    for (int line = 0; line < before.size(); ++line)
      if (before[line] != after[line]) changed.append(line + 1);
    EXPECT_EQ(changed, (QList<int>{2, 3, 5, 24, 26}));
  }
}

TEST(SacPicks, keepNumbersOfTheAlphanumericFormAsTheyAreWritten) {
  const TemporaryFiles files;
  const auto record = readSac(files.write("binary.sac", tlyBytes(Order::Little).bytes()));
  ASSERT_TRUE(record);
  ASSERT_TRUE(writeSac(**record, files.path("text.sac"), {.form = SacWriteOptions::Form::Alphanumeric}));
  QList<QByteArray> lines = files.read(files.path("text.sac")).split('\n');
  lines[1] = "0.000e0 2.0000 -12345.0 -12345.0 -12345.0"; // between blanks: b, e, o, a
  const QString source = files.write("a.sac", lines.join('\n'));
  ASSERT_TRUE(writeSacPicks(source, source, {tlyPick("P", "2011-03-11T05:52:02.5Z")}));
  EXPECT_EQ(files.read(source).split('\n')[1].simplified(), "0.000e0 2.0000 -12345.0 122.5 -12345.0");
}

TEST(SacPicks, stayInColumnsWhereNumbersTouchEachOther) {
  const TemporaryFiles files;
  const auto record = readSac(files.write("binary.sac", tlyBytes(Order::Little).bytes()));
  ASSERT_TRUE(record);
  ASSERT_TRUE(writeSac(**record, files.path("text.sac"), {.form = SacWriteOptions::Form::Alphanumeric}));
  // The second line begins with B and E: as wide as their columns, they leave no blank between them.
  QList<QByteArray> lines = files.read(files.path("text.sac")).split('\n');
  lines[1] = "0.0000000000000"
             "2.0000000000000" +
             lines[1].sliced(30);
  const QString source = files.write("a.sac", lines.join('\n'));
  ASSERT_TRUE(readSac(source)) << readSac(source).error().toStdString();
  ASSERT_TRUE(writeSacPicks(source, files.path("b.sac"), {tlyPick("P", "2011-03-11T05:52:02.5Z")}));
  const auto read = readSac(files.path("b.sac"));
  ASSERT_TRUE(read) << read.error().toStdString();
  EXPECT_EQ((*read)->b(), 0);
  EXPECT_EQ((*read)->e(), 2);
  EXPECT_EQ((*read)->timePickKey(10), 122.5F);
}

TEST(SacPicks, thatHaveNoRoomAreCounted) {
  const TemporaryFiles files;
  const QString source = files.write("a.sac", tlyBytes(Order::Little).bytes());
  PickArray picks;
  for (const char* name : {"P", "P2", "P3", "P4", "P5", "P6", "P7", "P8", "P9", "P10", "P11", "P12"})
    picks.push_back(tlyPick(name, "2011-03-11T05:52:00Z"));
  const QString target = files.path("b.sac");
  const Result<QStringList> written = writeSacPicks(source, target, picks); // A and ten others
  ASSERT_TRUE(written);
  EXPECT_EQ(*written, QStringList{target + ": 1 picks of 12 have no room in A, F and T0 to T9"});
}

TEST(SacPicks, areRefusedWhereTheyHaveNoPlace) {
  const TemporaryFiles files;
  const QString timeless = files.write("a.sac", tlyBytes(Order::Little).integer(SacBytes::kNzyear, -12345).bytes());
  const QString target = files.path("b.sac");
  EXPECT_EQ(writeSacPicks(timeless, target, {tlyPick("P", "2011-03-11T05:52:00Z")}).error(),
            timeless + ": found no reference time, expected one to count picks from");
  EXPECT_TRUE(writeSacPicks(timeless, target, {})); // takes them out
  EXPECT_EQ((*readSac(target))->timePickKey(3), -12345.0F);
  const QString broken = files.write("c.sac", tlyBytes(Order::Little).bytes().chopped(4));
  EXPECT_FALSE(writeSacPicks(broken, files.path("d.sac"), {}));
  EXPECT_FALSE(QFile::exists(files.path("d.sac")));
  EXPECT_FALSE(writeSacPicks(files.path("none.sac"), target, {}));
}
