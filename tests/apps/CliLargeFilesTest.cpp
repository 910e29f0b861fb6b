#include "tests/apps/CliFixture.h"
#include "tests/support/TestRecords.h"

#include <QFile>

namespace xov::cli {
namespace {

class CliLargeFiles : public CliTest {
protected:
  // Fifty minutes, more than a megabyte.
  void writeLong(const QString& name) {
    auto record = makeRecord({.interval = 0.01F, .count = 300000});
    std::vector<float> samples;
    for (int i = 0; i < 300000; ++i)
      samples.push_back(float(i * 7919LL % 2003) - 1000);
    record->setSamples(std::move(samples));
    writeRecord(name, *record);
  }
};

TEST_F(CliLargeFiles, looksTheSameReadAsItIsDrawnWithAnIndexAndWithout) {
  writeLong("a.SAC");
  writeLong("b.SAC");
  for (const QStringList& command :
       {QStringList{"section", "a.SAC", "b.SAC"}, QStringList{"drum", "a.SAC", "--row-duration", "600"},
        QStringList{"panels", "a.SAC", "b.SAC"}, QStringList{"spectrogram", "a.SAC"},
        QStringList{"ppsd", "a.SAC", "--segment", "600", "--no-noise-models"},
        QStringList{"section", "a.SAC", "--start", "100", "--end", "103"}}) {
    EXPECT_EQ(xov(command + QStringList{"-o", "read.png"}).status, 0);
    for (const char* name : {"first.png", "second.png"}) {
      const Outcome outcome = xov(command + QStringList{"--index-cache", "kept", "-o", name});
      EXPECT_EQ(outcome.status, 0);
      EXPECT_EQ(outcome.err, QString());
      EXPECT_EQ(contents(name), contents("read.png")) << qPrintable(command.join(' ')) << ' ' << name;
    }
  }
  EXPECT_EQ(QDir(at("kept")).entryList(QDir::Files).size(), 2) << "one for each file";
}

TEST_F(CliLargeFiles, keepsIndexesBesideFilesWhereFoldersDoNotShowThem) {
  writeFile("day/x", {});
  QFile::remove(at("day/x"));
  writeLong("day/a.SAC");
  EXPECT_EQ(xov({"section", "day", "--index-cache", "beside", "-o", "first.png"}).err, QString());
  EXPECT_TRUE(QFile::exists(at("day/.a.SAC.xovindex")));
  const Outcome again = xov({"section", "day", "--index-cache", "beside", "-o", "second.png"});
  EXPECT_EQ(again.err, QString()) << "nothing of a file that is no seismogram";
  EXPECT_EQ(contents("second.png"), contents("first.png"));
}

TEST_F(CliLargeFiles, readsAsItDrawsWhatIsLargerThanTheMemory) {
  auto record = makeRecord({.interval = 0.01F, .count = 10});
  std::vector<float> samples(5'000'000);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(i * 7919 % 2003) - 1000;
  record->setSamples(std::move(samples));
  writeRecord("long.SAC", *record); // 20 MB
  EXPECT_EQ(xov({"drum", "long.SAC", "-o", "read.png"}).status, 0);
  EXPECT_EQ(xov({"drum", "long.SAC", "--sample-memory", "16", "-o", "drawn.png"}).status, 0);
  EXPECT_EQ(contents("drawn.png"), contents("read.png"));
}

TEST_F(CliLargeFiles, refusesAMemoryThatIsTooSmall) {
  writeLong("a.SAC");
  for (const char* megabytes : {"0", "15", "-1", "much"})
    EXPECT_NE(xov({"section", "a.SAC", "--sample-memory", megabytes, "-o", "a.png"}).status, 0) << megabytes;
}

} // namespace
} // namespace xov::cli
