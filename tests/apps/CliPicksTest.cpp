#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "tests/apps/CliFixture.h"

#include <QRegularExpression>

namespace xov::cli {
namespace {

/// A record of 1500 s of station TLY, 60 degrees from an event 33 km deep that began with it at 05:46:23. There P
/// takes 603.23 s and S 1094.13 s. It has a pick of P, which it calls A, and one of PcP.
class CliPicks : public CliTest {
protected:
  void SetUp() override {
    SacHeader header;
    header.knetwk = "II";
    header.kstnm = "TLY";
    header.kcmpnm = "BHZ";
    header.delta = 1;
    header.b = header.o = 0;
    header.gcarc = 60;
    header.az = 45;
    header.evdp = 33;
    header.a = 610;
    header.ka = "P";
    header.t3 = 700;
    header.kt3 = "PcP";
    setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23), Qt::UTC));
    std::vector<float> samples;
    for (int i = 0; i < 1500; ++i)
      samples.push_back(float(i % 7));
    writeRecord("a.SAC", SacSeismogram(header, samples));
    header.gcarc = header.o = kUndefinedValue;
    header.kstnm = "AAK";
    writeRecord("nowhere.SAC", SacSeismogram(header, samples));
  }

  /// The words of the plot that name picks.
  std::optional<QStringList> picksOfPlot(const QStringList& options) {
    const auto text = textOfPlot(QStringList{"section", "a.SAC", "--title="} + options);
    if (!text) return {};
    QStringList names;
    for (const QString& word : text->simplified().split(' '))
      if (QRegularExpression("^(A|F|T\\d|P|S|PcP|pP|Origin)$").match(word).hasMatch()) names.append(word);
    names.sort();
    return names;
  }
};

TEST_F(CliPicks, arePredictedBesideThoseOfTheRecord) {
  const auto own = picksOfPlot({});
  if (!own) GTEST_SKIP() << "pdftotext is not installed";
  EXPECT_EQ(*own, (QStringList{"A", "Origin", "PcP"}));
  EXPECT_EQ(*picksOfPlot({"--picks", "P,S"}), (QStringList{"A", "Origin", "S"}));
  EXPECT_EQ(*picksOfPlot({"--picks", "pP"}), (QStringList{"Origin", "pP"}));
  EXPECT_EQ(*picksOfPlot({"--picks=PcP", "--picks=S"}), (QStringList{"Origin", "PcP", "S"}));
}

TEST_F(CliPicks, areLeftOut) {
  const auto none = picksOfPlot({"--no-picks"});
  if (!none) GTEST_SKIP() << "pdftotext is not installed";
  EXPECT_EQ(*none, QStringList("Origin"));
}

// 05:57:00 is 637 s after 05:46:23, and S at 06:05:03 is 1120 s.
TEST_F(CliPicks, comeFromAFile) {
  writeFile("picks.csv", "time,phase,network,station,channel\n"
                         "2011-03-11T05:57:00Z,P,II,TLY,BHZ\n"
                         "2011-03-11T06:05:03Z,S,II,TLY,BHZ\n"
                         "2011-03-11T06:05:03Z,S,II,TLY,BHN\n");
  const Outcome outcome = xov({"info", "a.SAC", "nowhere.SAC", "--pick-file", "picks.csv"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: 1 of 3 picks: no record is of that channel\n");
  EXPECT_TRUE(outcome.out.contains("o=0,t0=1120(S),a=637(P) ")) << qPrintable(outcome.out);
  EXPECT_TRUE(outcome.out.contains("t3=700(PcP),a=610(P) ")) << "a record without a pick in the file keeps its own";
  const Outcome missing = xov({"section", "a.SAC", "--pick-file", "none.csv", "-o", "plot.png"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_TRUE(missing.err.contains("none.csv")) << qPrintable(missing.err);
}

TEST_F(CliPicks, oneOptionExcludesTheOther) {
  const Outcome outcome = xov({"section", "a.SAC", "--picks", "P", "--no-picks", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_TRUE(outcome.err.contains("excludes")) << qPrintable(outcome.err);
}

TEST_F(CliPicks, whatIsNotKnownIsSaidAndTheRestIsDrawn) {
  const Outcome outcome = xov({"section", "a.SAC", "nowhere.SAC", "--picks", "S,Quux", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: no record has a pick Quux, nor is that a phase of the travel times\n"
                         "xov: no distance or origin time of II.AAK: arrivals are not known\n");
  EXPECT_TRUE(files().contains("plot.png"));
}

TEST_F(CliPicks, everyCommandThatDrawsPicksTakesTheOptions) {
  for (const char* command : {"section", "three", "panels"}) {
    const QStringList files =
        command == QStringLiteral("panels") ? QStringList{"a.SAC", "a.SAC"} : QStringList{"a.SAC"};
    for (const QStringList& options : {QStringList{"--picks", "P,S"}, QStringList{"--no-picks"}}) {
      const Outcome outcome = xov(QStringList{command, "-o", "plot.png"} + options + files);
      EXPECT_EQ(outcome.status, 0) << command << ": " << qPrintable(outcome.err);
      EXPECT_EQ(outcome.err, "") << command;
    }
  }
}

TEST_F(CliPicks, infoPrintsArrivals) {
  const Outcome outcome = xov({"info", "--arrivals", "a.SAC"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  const QStringList lines = outcome.out.split('\n', Qt::SkipEmptyParts);
  EXPECT_EQ(lines.value(0).simplified(), "net sta loc chan dist evdepth phase time seconds rayp takeoff incid file");
  QStringList phases;
  for (const QString& line : lines.mid(1)) {
    const QStringList cells = line.simplified().split(' ');
    ASSERT_EQ(cells.size(), 13) << qPrintable(line);
    phases.append(cells[6]);
    if (cells[6] != "S") continue;
    EXPECT_EQ(cells.mid(0, 6), (QStringList{"II", "TLY", "-", "BHZ", "60.00", "33"}));
    // 1094.13 s after 05:46:23.
    EXPECT_TRUE(cells[7].startsWith("2011-03-11T06:04:37.1")) << qPrintable(cells[7]);
    EXPECT_NEAR(cells[8].toDouble(), 1094.13, 0.02);
    EXPECT_NEAR(cells[9].toDouble(), 12.855, 0.005);
    EXPECT_NEAR(cells[10].toDouble(), 25.84, 0.1);
    EXPECT_NEAR(cells[11].toDouble(), 22.86, 0.1);
    EXPECT_EQ(cells[12], "a.SAC");
  }
  EXPECT_EQ(phases, (QStringList{"P", "pP", "sP", "PcP", "PP", "PKiKP", "S", "sS", "ScS", "SS", "LQ", "LR"}));
}

TEST_F(CliPicks, infoNamesRecordsWithoutADistanceInOneLine) {
  const Outcome outcome = xov({"info", "--arrivals", "nowhere.SAC", "nowhere.SAC"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "xov: no distance of II.AAK: arrivals are not known\n");
}

} // namespace
} // namespace xov::cli
