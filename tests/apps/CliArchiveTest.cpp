#include "tests/apps/CliFixture.h"
#include "tests/support/SdsFiles.h"

namespace xov::cli {
namespace {

class CliArchive : public CliTest {
protected:
  CliArchive() {
    for (int day = 0; day < 3; ++day) {
      for (const char* const channel : {"BHZ", "BHN"})
        archive_.addDay("II", "TLY", "00", channel, QDate(2011, 12, 30).addDays(day), 100 * day);
    }
  }

  QStringList with(const QStringList& words) const { return words + QStringList{"--archive", archive_.root()}; }

  test::SdsFiles archive_;
};

TEST_F(CliArchive, drawsTheDaysOfAChannelAsThoseOfOneFile) {
  const QStringList days = {"2011/II/TLY/BHZ.D/II.TLY.00.BHZ.D.2011.364",
                            "2011/II/TLY/BHZ.D/II.TLY.00.BHZ.D.2011.365",
                            "2012/II/TLY/BHZ.D/II.TLY.00.BHZ.D.2012.001"};
  QByteArray all;
  for (const QString& day : days) {
    QFile file(archive_.root() + '/' + day);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    all += file.readAll();
  }
  writeFile("all.mseed", all);
  ASSERT_EQ(xov({"drum", "all.mseed", "--title", "drum", "-o", "one.png"}).status, 0);
  const Outcome outcome = xov(with({"drum", "*.BHZ", "--title", "drum", "-o", "days.png"}));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, QString());
  EXPECT_EQ(contents("days.png"), contents("one.png"));
}

TEST_F(CliArchive, readsWhatLiesBetweenTwoTimes) {
  // Samples of 864 s: noon is the 50th of a day, and both ends count.
  const Outcome outcome =
      xov(with({"convert", "II.TLY.00.BHZ", "--between", "2011-12-31", "2011-12-31T12:00", "-o", "half.mseed"}));
  EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
  const Outcome info = xov({"info", "half.mseed"});
  EXPECT_TRUE(info.out.contains(" 51 ")) << qPrintable(info.out);
}

TEST_F(CliArchive, listsTheFilesOfItsChannels) {
  const Outcome outcome = xov(with({"info", "*", "--between", "2012-01-01", "2012-01-02"}));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out.count("2012.001"), 2) << qPrintable(outcome.out);
  EXPECT_EQ(outcome.out.count("2011.364"), 0);
}

TEST_F(CliArchive, refusesInOneLineWhatItDoesNotHave) {
  const auto err = [&](const QStringList& words) {
    const Outcome outcome = xov(with(words + QStringList{"-o", "plot.png"}));
    EXPECT_NE(outcome.status, 0);
    return outcome.err;
  };
  EXPECT_EQ(err({"section", "LHZ"}), "xov: " + archive_.root() + ": the archive has no channel that is selected\n");
  EXPECT_EQ(err({"section", "BHZ", "--between", "2013-01-01", "2013-01-02"}),
            "xov: " + archive_.root() +
                ": the archive has no samples of II.TLY.00.BHZ from 2013-01-01T00:00:00.000Z to "
                "2013-01-02T00:00:00.000Z\n");
  EXPECT_TRUE(err({"section", "BHZ", "--between", "2013-01-02", "2013-01-01"})
                  .contains("found 2013-01-02 and 2013-01-01, expected a later time behind"));
  EXPECT_NE(xov({"section", "BHZ", "--between", "2013-01-01", "2013-01-02"}).status, 0) << "of no archive";
}

} // namespace
} // namespace xov::cli
