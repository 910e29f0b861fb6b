#include "tests/apps/CliFixture.h"

namespace xov::cli {
namespace {

using CliConvert = CliTest;

TEST_F(CliConvert, writesWhatWasMadeReady) {
  writeRecord("a.SAC", {.arrival = 5});
  writeRecord("b.SAC", {.component = "BHN", .arrival = 5});
  const Outcome made = xov({"convert", "a.SAC", "b.SAC", "--around", "A", "-1", "2", "-o", "both.mseed"});
  EXPECT_EQ(made.status, 0) << qPrintable(made.err);
  const QString listed = xov({"info", "both.mseed"}).out;
  EXPECT_EQ(listed.count("2011-03-11T05:47:34.033Z    31"), 2) << qPrintable(listed); // 4 s to 7 s at 10 Hz
  EXPECT_TRUE(listed.contains("BHN")) << qPrintable(listed);
}

TEST_F(CliConvert, writesAFileARecordIntoAFolder) {
  writeRecord("a.SAC");
  writeRecord("b.SAC");
  writeRecord("c.SAC", {.station = "A/..", .component = "B Z"});
  EXPECT_EQ(xov({"convert", "a.SAC", "b.SAC", "c.SAC", "-o", "out/"}).status, 0);
  EXPECT_EQ(QDir(at("out")).entryList(QDir::Files, QDir::Name),
            (QStringList{"II.A___..B_Z.2011.070.054730.SAC", "II.TLY..BHZ.2011.070.054730.2.SAC",
                         "II.TLY..BHZ.2011.070.054730.SAC"}));
  EXPECT_EQ(xov({"convert", "a.SAC", "-o", "out", "--format", "mseed"}).status, 0);
  EXPECT_TRUE(QFile::exists(at("out/II.TLY..BHZ.2011.070.054730.mseed")));
}

TEST_F(CliConvert, keepsTheHeaderInSacFiles) {
  writeRecord("a.SAC", {.arrival = 5});
  EXPECT_EQ(xov({"convert", "a.SAC", "-o", "copy.sac"}).status, 0);
  EXPECT_EQ(xov({"info", "copy.sac"}).out.replace("copy.sac", "a.SAC   "),
            xov({"info", "a.SAC"}).out.replace("a.SAC", "a.SAC   "));
}

TEST_F(CliConvert, neverOverwritesItsInputs) {
  writeRecord("a.SAC");
  const QByteArray before = contents("a.SAC");
  for (const char* output : {"a.SAC", "./a.SAC", "data/../a.SAC"}) {
    QDir(at(".")).mkpath("data");
    const Outcome outcome = xov({"convert", "a.SAC", "--integrate", "-o", output});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, QStringLiteral("xov: %1: is one of the inputs; not overwritten\n").arg(output));
  }
  EXPECT_EQ(contents("a.SAC"), before);
}

TEST_F(CliConvert, refusesWhatItCannotWriteInOneLine) {
  writeRecord("a.SAC");
  writeRecord("b.SAC");
  EXPECT_EQ(xov({"convert", "a.SAC", "b.SAC", "-o", "both.SAC"}).err,
            "xov: both.SAC: found 2 records, and a SAC file holds one; name a folder instead\n");
  const Outcome kind = xov({"convert", "a.SAC", "-o", "a.txt"});
  EXPECT_EQ(kind.status, 2);
  EXPECT_EQ(kind.err.count('\n'), 1) << qPrintable(kind.err);
  EXPECT_EQ(xov({"convert", "a.SAC"}).status, 2);
  EXPECT_EQ(files(), (QStringList{"a.SAC", "b.SAC"}));
}

} // namespace
} // namespace xov::cli
