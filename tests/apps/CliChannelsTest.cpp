#include "tests/apps/CliFixture.h"
#include "tests/seismic/MiniSeedBytes.h"

namespace xov::cli {
namespace {

using test::joined;
using test::MiniSeedBytes;

class CliChannels : public CliTest {
protected:
  // Two channels of one station, ten samples each, and one of another station.
  static QByteArray threeChannels() {
    const std::vector<std::int32_t> samples(10, 7);
    return joined({MiniSeedBytes().integers(samples),
                   MiniSeedBytes().codes("XX", "TEST", "00", "BHN").integers(samples),
                   MiniSeedBytes().codes("YY", "FAR", "", "LHZ").integers(samples)});
  }

  QStringList channelsOf(const QStringList& arguments) {
    const Outcome outcome = xov(QStringList{"info"} + arguments);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    QStringList channels;
    for (const QString& line : outcome.out.split('\n', Qt::SkipEmptyParts).mid(1)) {
      const QStringList words = line.split(' ', Qt::SkipEmptyParts);
      channels.append(words.mid(0, 4).join('.'));
    }
    return channels;
  }
};

TEST_F(CliChannels, listsTheChannelsOfAMiniSeedFile) {
  writeFile("three.mseed", threeChannels());
  EXPECT_EQ(channelsOf({"three.mseed"}), (QStringList{"XX.TEST.00.BHZ", "XX.TEST.00.BHN", "YY.FAR.-.LHZ"}));
}

TEST_F(CliChannels, listsThePiecesOfAChannelWithAGap) {
  const std::vector<std::int32_t> samples(10, 7);
  writeFile("gap.mseed", joined({MiniSeedBytes().integers(samples),
                                 MiniSeedBytes().time(2012, 133, 0, 1, 0, 0).integers(samples)}));
  const Outcome outcome = xov({"info", "gap.mseed"});
  EXPECT_EQ(outcome.out.count("BHZ"), 2);
  EXPECT_TRUE(outcome.out.contains("2012-05-12T00:00:00.000Z")) << qPrintable(outcome.out);
  EXPECT_TRUE(outcome.out.contains("2012-05-12T00:01:00.000Z")) << qPrintable(outcome.out);
}

TEST_F(CliChannels, readsThoseThatAPatternSelects) {
  writeFile("three.mseed", threeChannels());
  EXPECT_EQ(channelsOf({"three.mseed", "--channels", "BH?"}), (QStringList{"XX.TEST.00.BHZ", "XX.TEST.00.BHN"}));
  EXPECT_EQ(channelsOf({"three.mseed", "--channels", "[LM]H[ZNE]"}), QStringList{"YY.FAR.-.LHZ"});
  EXPECT_EQ(channelsOf({"three.mseed", "--channels", "*.FAR.--.*"}), QStringList{"YY.FAR.-.LHZ"});
  EXPECT_EQ(channelsOf({"three.mseed", "--channels", "bhn"}), QStringList{"XX.TEST.00.BHN"});
}

TEST_F(CliChannels, takesSeveralPatterns) {
  writeFile("three.mseed", threeChannels());
  const QStringList both = {"XX.TEST.00.BHN", "YY.FAR.-.LHZ"};
  EXPECT_EQ(channelsOf({"three.mseed", "--channels", "BHN,LHZ"}), both);
  EXPECT_EQ(channelsOf({"--channels", "BHN", "--channels", "LHZ", "three.mseed"}), both);
}

TEST_F(CliChannels, saysNothingOfFilesWithoutASelectedChannelWhileOthersHaveOne) {
  writeRecord("z.SAC");
  writeRecord("n.SAC", RecordSpec{.component = "BHN"});
  EXPECT_EQ(channelsOf({"n.SAC", "z.SAC", "--channels", "BHZ"}), QStringList{"II.TLY.-.BHZ"});
}

TEST_F(CliChannels, namesWhatThereIsWhenNothingIsSelected) {
  writeFile("three.mseed", threeChannels());
  const Outcome outcome = xov({"info", "three.mseed", "--channels", "HHZ"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "xov: three.mseed: no channel is selected of XX.TEST.00.BHZ, XX.TEST.00.BHN, YY.FAR..LHZ\n");
}

TEST_F(CliChannels, countsFilesWithoutASelectedChannelAfterAFewNotes) {
  for (int i = 0; i < 8; ++i)
    writeRecord(QStringLiteral("data/%1.SAC").arg(i));
  const Outcome outcome = xov({"section", "data", "--channels", "HHZ", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  const QStringList notes = outcome.err.split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(notes.size(), 6) << qPrintable(outcome.err);
  EXPECT_EQ(notes[0], "xov: data/0.SAC: no channel is selected of II.TLY..BHZ");
  EXPECT_EQ(notes[5], "xov: 3 more files hold no channel that is selected");
  EXPECT_FALSE(files().contains("plot.png"));
}

TEST_F(CliChannels, saysOnceWhatTheReaderLeftOut) {
  // The second record claims more samples than 384 bytes of 32-bit integers hold.
  const std::vector<std::int32_t> samples(10, 7);
  writeFile("damaged.mseed",
            joined({MiniSeedBytes().integers(samples), MiniSeedBytes().integers(samples).sampleCount(97)}));
  for (const char* command : {"info", "section", "drum", "monitor", "stack"}) {
    QStringList arguments = {command, "damaged.mseed"};
    if (arguments[0] != "info") arguments += {"-o", "plot.png"};
    const Outcome outcome = xov(arguments);
    EXPECT_EQ(outcome.status, 0) << command;
    EXPECT_EQ(outcome.err, "xov: damaged.mseed: 1 of 2 records left out, the first at byte 512: number of samples: "
                           "found 97, but 512 bytes have room for 96 as 32-bit integers\n")
        << command;
  }
}

TEST_F(CliChannels, refusesAPatternThatIsNone) {
  writeRecord("a.SAC");
  for (const char* pattern : {"A.B.C.D.E", "BH[Z"}) {
    const Outcome outcome = xov({"info", "a.SAC", "--channels", pattern});
    EXPECT_EQ(outcome.status, 2) << pattern;
    EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
    EXPECT_TRUE(outcome.err.contains(pattern)) << qPrintable(outcome.err);
  }
}

} // namespace
} // namespace xov::cli
