#include "tests/apps/CliFixture.h"

#include <QRegularExpression>

namespace xov::cli {
namespace {

using CliInfo = CliTest;

TEST_F(CliInfo, listsTheHeaderOfARecord) {
  writeRecord("a.SAC", {.arrival = 3.5F, .second = 12.25F});
  const Outcome outcome = xov({"info", "a.SAC"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  // The samples 1000 · sin(0.3 i) come within 0.15 radians of each crest: 1000 · cos(0.15) = 988.8.
  const QStringList cells = outcome.out.split('\n').value(1).simplified().split(' ');
  ASSERT_EQ(cells.size(), 20) << qPrintable(outcome.out);
  EXPECT_EQ(cells.mid(0, 8),
            (QStringList{"II", "TLY", "-", "BHZ", "2011-03-11T05:47:30.033Z", "201", "0.1", "20.000"}));
  EXPECT_NEAR(cells[8].toDouble(), -1000, 11.2);
  EXPECT_NEAR(cells[9].toDouble(), 1000, 11.2);
  EXPECT_EQ(cells.mid(10, 2), (QStringList{"30.00", "45.00"}));
  EXPECT_EQ(cells.mid(18), (QStringList{"t1=12.25(S),a=3.5(P)", "a.SAC"}));
}

TEST_F(CliInfo, reportsAFileThatIsNoRecordAndListsTheOthers) {
  writeRecord("a.SAC");
  writeFile("notes.txt", "hello\n");
  const Outcome outcome = xov({"info", "notes.txt", "a.SAC", "missing.SAC"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.out.contains("a.SAC")) << qPrintable(outcome.out);
  const QStringList errors = outcome.err.split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(errors.size(), 2) << qPrintable(outcome.err);
  EXPECT_TRUE(errors[0].startsWith("xov: notes.txt: ")) << qPrintable(errors[0]);
  EXPECT_EQ(errors[1], "xov: missing.SAC: cannot be opened: No such file or directory");
}

TEST_F(CliInfo, skipsOtherFilesInAFolderWithANote) {
  writeRecord("data/2011/a.SAC");
  writeFile("data/README", "hello\n");
  const Outcome outcome = xov({"info", "data"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.contains("data/2011/a.SAC")) << qPrintable(outcome.out);
  EXPECT_TRUE(QRegularExpression("^xov: data/README: .*; skipped\n$").match(outcome.err).hasMatch())
      << qPrintable(outcome.err);
}

TEST_F(CliInfo, countsWhatItSkipsInAFolderAfterAFewNotes) {
  writeRecord("data/a.SAC");
  for (int i = 0; i < 12; ++i)
    writeFile(QStringLiteral("data/note%1.txt").arg(i), "hello\n");
  const Outcome outcome = xov({"info", "data"});
  EXPECT_EQ(outcome.status, 0);
  const QStringList notes = outcome.err.split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(notes.size(), 6) << qPrintable(outcome.err);
  EXPECT_EQ(notes[5], "xov: data: 7 more files skipped");
}

TEST_F(CliInfo, failsOnAFolderWithoutRecords) {
  writeFile("data/README", "hello\n");
  const Outcome outcome = xov({"info", "data"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_TRUE(outcome.err.endsWith("xov: data: the folder holds no seismogram\n")) << qPrintable(outcome.err);
}

TEST_F(CliInfo, expandsPatternsThatTheShellDidNot) {
  writeRecord("a.SAC");
  writeRecord("b.SAC");
  EXPECT_EQ(xov({"info", "*.SAC"}).out.count('\n'), 3);
  EXPECT_EQ(xov({"info", "[ab].SA[C]"}).out.count('\n'), 3);
  const Outcome none = xov({"info", "*.sac"});
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.err, "xov: *.sac: no file matches\n");
}

TEST_F(CliInfo, keepsAnEvilFileNameOnOneLine) {
  writeRecord("a\n\x1b[2Jb.SAC");
  const Outcome outcome = xov({"info", "a*"});
  EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.out.count('\n'), 2);
  EXPECT_FALSE(outcome.out.contains(QChar(0x1b)));
}

TEST_F(CliInfo, refusesATruncatedRecordInOneLine) {
  writeRecord("whole.SAC");
  writeFile("cut.SAC", contents("whole.SAC").left(700));
  const Outcome outcome = xov({"info", "cut.SAC"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.err.startsWith("xov: cut.SAC: ")) << qPrintable(outcome.err);
  EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
}

} // namespace
} // namespace xov::cli
