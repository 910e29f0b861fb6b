#include "tests/apps/CliFixture.h"

#include <random>

namespace xov::cli {
namespace {

// `xov spectrum` and `xov ppsd`.
class CliSpectrum : public CliTest {
protected:
  // Ten minutes of noise at 10 Hz.
  void writeNoise(const QString& name, const char* station, std::int32_t kind = kSacUndefinedInteger) {
    SacHeader header;
    header.delta = 0.1F;
    header.b = 0;
    header.kstnm = station;
    header.kcmpnm = "BHZ";
    header.knetwk = "XX";
    header.idep = kind;
    std::mt19937 random(3);
    std::vector<float> samples(6000);
    for (float& sample : samples)
      sample = float(random() % 2001) - 1000;
    writeRecord(name, SacSeismogram(header, samples));
  }
  void SetUp() override {
    writeNoise("one.SAC", "ONE");
    writeNoise("velocity.SAC", "VEL", kSacVelocity);
    writeNoise("acceleration.SAC", "ACC", kSacAcceleration);
  }
};

TEST_F(CliSpectrum, theAxisHasTheUnitOfTheRecords) {
  XOV_REQUIRE_TEXT(counts, {"spectrum", "one.SAC"});
  for (const char* piece : {"counts", "XX.ONE..BHZ", "Frequency (Hz)"})
    EXPECT_TRUE(counts.contains(piece)) << piece << " in\n" << qPrintable(counts);
  XOV_REQUIRE_TEXT(velocity, {"spectrum", "velocity.SAC"});
  EXPECT_TRUE(velocity.contains("(nm/s)")) << qPrintable(velocity);
  XOV_REQUIRE_TEXT(acceleration, {"spectrum", "acceleration.SAC"});
  EXPECT_TRUE(acceleration.contains("dB rel. 1 (m/s")) << qPrintable(acceleration);
}

TEST_F(CliSpectrum, severalChannelsHaveALegend) {
  XOV_REQUIRE_TEXT(text, {"spectrum", "one.SAC", "velocity.SAC"});
  EXPECT_TRUE(text.contains("XX.ONE..BHZ") && text.contains("XX.VEL..BHZ")) << qPrintable(text);
}

TEST_F(CliSpectrum, noiseModelsWantGroundMotion) {
  XOV_REQUIRE_TEXT(text, {"spectrum", "velocity.SAC", "--noise-models"});
  EXPECT_TRUE(text.contains("NLNM, NHNM")) << qPrintable(text);
  EXPECT_TRUE(text.contains("Acceleration")) << qPrintable(text);
  const Outcome outcome = xov({"spectrum", "one.SAC", "--noise-models", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: the noise models are of ground motion, which the records are not known to be; "
                         "--remove-response acc makes them so\n");
}

TEST_F(CliSpectrum, eachOptionChangesThePicture) {
  ASSERT_EQ(xov({"spectrum", "one.SAC", "-o", "plain.png"}).status, 0);
  for (const QStringList& options : {QStringList{"--method", "periodogram"},
                                     {"--method", "multitaper"},
                                     {"--method", "multitaper", "--tapers", "3"},
                                     {"--window", "20"},
                                     {"--overlap", "0"},
                                     {"--smooth", "konno-ohmachi"},
                                     {"--smooth", "konno-ohmachi", "--bandwidth", "10"},
                                     {"--band", "0.1", "2"},
                                     {"--decibels"},
                                     {"--linear-frequency"},
                                     {"--filter", "lowpass", "1"}}) {
    const Outcome outcome = xov(QStringList{"spectrum", "one.SAC", "-o", "other.png"} + options);
    EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
    EXPECT_NE(contents("plain.png"), contents("other.png")) << qPrintable(options.join(' '));
  }
}

TEST_F(CliSpectrum, refusesRangesThatAreNone) {
  EXPECT_EQ(xov({"spectrum", "one.SAC", "--band", "2", "1"}).status, 2);
  EXPECT_EQ(xov({"spectrum", "one.SAC", "--band", "0", "1"}).status, 2) << "on a logarithmic axis";
  EXPECT_EQ(xov({"spectrum", "one.SAC", "--band", "0", "1", "--linear-frequency", "-o", "a.png"}).status, 0);
  EXPECT_EQ(xov({"spectrum", "one.SAC", "--smooth", "much"}).status, 2);
  EXPECT_EQ(xov({"ppsd", "one.SAC", "--db-range", "2", "1"}).status, 2);
}

// Ten minutes hold seven segments of 150 s that overlap by half.
TEST_F(CliSpectrum, statisticsCountSegments) {
  XOV_REQUIRE_TEXT(text, {"ppsd", "velocity.SAC", "--segment", "150"});
  for (const char* piece :
       {"XX.VEL..BHZ", "7 segments of 150 s", "Period (s)", "Share of segments (%)", "Acceleration"})
    EXPECT_TRUE(text.contains(piece)) << piece << " in\n" << qPrintable(text);
}

// 6000 samples; day 71 of 2025 is 12 March.
TEST_F(CliSpectrum, statisticsTellTheSpanOfTheRecording) {
  SacHeader header;
  header.delta = 0.1F;
  header.idep = kSacVelocity;
  header.kstnm = "DAY";
  header.nzyear = 2025;
  header.nzjday = 71;
  header.nzhour = 23;
  header.nzmin = 45;
  header.nzsec = 0;
  header.nzmsec = 0;
  header.b = 0;
  std::vector<float> samples(6000);
  std::mt19937 random(5);
  for (float& sample : samples)
    sample = float(random() % 2001) - 1000;
  writeRecord("evening.SAC", SacSeismogram(header, samples));
  XOV_REQUIRE_TEXT(evening, {"ppsd", "evening.SAC", "--segment", "150"});
  EXPECT_TRUE(evening.contains("2025-03-12 23:45") && evening.contains("23:54")) << qPrintable(evening);
  EXPECT_FALSE(evening.contains("2025-03-12 23:54")) << "the date once\n" << qPrintable(evening);
  header.nzmin = 55;
  writeRecord("night.SAC", SacSeismogram(header, samples));
  XOV_REQUIRE_TEXT(night, {"ppsd", "night.SAC", "--segment", "150"});
  EXPECT_TRUE(night.contains("2025-03-13 00:04")) << qPrintable(night);
}

TEST_F(CliSpectrum, statisticsOfCountsHaveNoModels) {
  const Outcome outcome = xov({"ppsd", "one.SAC", "--segment", "150", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: the noise models are left out: they are of ground motion, which --remove-response acc "
                         "makes\n");
  EXPECT_EQ(xov({"ppsd", "one.SAC", "--segment", "150", "--no-noise-models", "-o", "plot.png"}).err, "");
}

TEST_F(CliSpectrum, eachOptionChangesTheStatistics) {
  const QStringList command{"ppsd", "velocity.SAC", "--segment", "150"};
  ASSERT_EQ(xov(command + QStringList{"-o", "plain.png"}).status, 0);
  for (const QStringList& options : {QStringList{"--overlap", "0"},
                                     {"--db-range", "-200", "0"},
                                     {"--no-noise-models"},
                                     {"--no-percentiles"},
                                     {"--palette", "cividis"}}) {
    EXPECT_EQ(xov(command + options + QStringList{"-o", "other.png"}).status, 0);
    EXPECT_NE(contents("plain.png"), contents("other.png")) << qPrintable(options.join(' '));
  }
}

TEST_F(CliSpectrum, statisticsOfShortRecordingsFailInOneLine) {
  const Outcome outcome = xov({"ppsd", "velocity.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: found no segment of 3600 s without a gap; --segment makes them shorter\n");
}

} // namespace
} // namespace xov::cli
