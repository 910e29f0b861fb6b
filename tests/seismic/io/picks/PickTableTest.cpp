#include "XOV_Graphics/seismic/io/picks/PickFiles.h"
#include "tests/seismic/PickSamples.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

using namespace xov;
using test::fullPick;
using test::moment;
using test::TemporaryFiles;
using test::tlyPick;

namespace {

Result<PickFile> parsedTable(const QByteArray& text) { return parsePicks(text, QStringLiteral("in")); }

} // namespace

TEST(PickTable, isWrittenAsDocumentedAndReadBack) {
  const TemporaryFiles files;
  const PickArray picks = {fullPick(), tlyPick("S", "2011-03-11T05:58:00Z", "BHN")};
  const QString path = files.path("picks.csv");
  ASSERT_TRUE(writePicks(picks, path, PickFormat::Table));
  EXPECT_EQ(files.read(path),
            "time,phase,network,station,location,channel,lower_s,upper_s,polarity,onset,mode,comment,id\n"
            "2011-03-11T05:52:31.123456789Z,pP,II,TLY,00,BHZ,0.25,0.5,negative,emergent,manual,"
            "\"weak, \"\"noisy\"\" & small <onset>\",smi:local/pick/pP-BHZ\n"
            "2011-03-11T05:58:00.000000000Z,S,II,TLY,00,BHN,,,,,,,smi:local/pick/S-BHN\n");
  const Result<PickFile> read = readPicks(path);
  ASSERT_TRUE(read) << read.error().toStdString();
  EXPECT_EQ(read->picks, picks);
  EXPECT_TRUE(read->notes.isEmpty());
}

TEST(PickTable, hasColumnsInAnyOrderAndOthersBesides) {
  const Result<PickFile> read = parsedTable("Sta;quality;Phase;Time (UTC);Uncertainty_s\n"
                                            "AAK;4;P;2011-03-11 05:52:31.5;0.2\n");
  ASSERT_TRUE(read) << read.error().toStdString();
  ASSERT_EQ(read->picks.size(), 1U);
  const Pick& pick = read->picks[0];
  EXPECT_EQ(pick.phase, QStringLiteral("P"));
  EXPECT_EQ(pick.channel, (ChannelCodes{"", "AAK", "", ""}));
  EXPECT_EQ(pick.time, moment("2011-03-11T05:52:31.5Z"));
  EXPECT_EQ(pick.lowerSeconds, 0.2);
  EXPECT_EQ(pick.upperSeconds, 0.2);
  EXPECT_FALSE(pick.id.isEmpty());
}

TEST(PickTable, tellsWhichRowsAreLeftOut) {
  const Result<PickFile> read = parsedTable("time,station,phase,lower_s,polarity\n"
                                            "2011-03-11T05:52:31Z,TLY,P,,\n"
                                            "yesterday,TLY,P,,\n"
                                            "2011-03-11T05:52:31Z,,P,,\n"
                                            "2011-03-11T05:52:31Z,TLY,P,-1,\n"
                                            "2011-03-11T05:52:31Z,TLY,P,1e9,\n"
                                            "2011-03-11T05:52:31Z,TLY,P,,sideways\n"
                                            "3011-03-11T05:52:31Z,TLY,P,,\n");
  ASSERT_TRUE(read) << read.error().toStdString();
  EXPECT_EQ(read->picks.size(), 1U);
  ASSERT_EQ(read->notes.size(), 1);
  EXPECT_EQ(read->notes[0],
            QStringLiteral("in: 6 of 7 picks left out, the first on line 3: time: found \"yesterday\", "
                           "expected a time such as 2011-03-11T05:46:24.1Z"));
}

TEST(PickTable, isRefusedInOneLine) {
  EXPECT_EQ(parsedTable("").error(), QStringLiteral("in: the file is empty"));
  EXPECT_EQ(parsedTable("hello\nworld\n").error(),
            QStringLiteral("in: unknown format, expected QuakeML or a table of picks with names of columns"));
  const QString word = parsedTable("time,station,mode\n2011-03-11T05:52:31Z,TLY,guessed\n").error();
  EXPECT_EQ(word, QStringLiteral("in: 1 of 1 pick left out, the first on line 2: mode 'guessed', expected manual or "
                                 "automatic"));
  EXPECT_FALSE(readPicks(QStringLiteral("/nonexistent/picks.csv")));
}

TEST(PickTable, keepsEachPickOnALineOfItsOwn) {
  const TemporaryFiles files;
  Pick pick = fullPick();
  pick.comment = QStringLiteral("first\nsecond\r\n ");
  ASSERT_TRUE(writePicks({pick, fullPick()}, files.path("a.csv"), PickFormat::Table));
  const Result<PickFile> read = readPicks(files.path("a.csv"));
  ASSERT_EQ(read->picks.size(), 2U);
  EXPECT_EQ(read->picks[0].comment.simplified(), QStringLiteral("first second"));
  EXPECT_NE(read->picks[0].id, read->picks[1].id); // which were the same
}

TEST(PickTable, leavesAFileThatStoodThereWhenItCannotBeWritten) {
  QString error;
  const Status status = writePicks({}, QStringLiteral("/nonexistent/picks.csv"), PickFormat::Table);
  EXPECT_FALSE(status);
  EXPECT_TRUE(status.error().startsWith(QStringLiteral("/nonexistent/picks.csv: "))) << status.error().toStdString();
}
