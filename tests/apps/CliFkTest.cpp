#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "tests/apps/CliFixture.h"

#include <QImage>

#include <cmath>
#include <numbers>

namespace xov::cli {
namespace {

// Five stations on a cross of a tenth of a degree, at the equator, where a hundredth of a degree east is 1.113195 km
// and one north 1.105743 km. A wave of 1 Hz from the north-east comes 0.1 s/km earlier to the east and to the north.
class CliFk : public CliTest {
protected:
  static constexpr float kPlaces[5][2] = {{0, 0}, {0.01F, 0}, {-0.01F, 0}, {0, 0.01F}, {0, -0.01F}};

  void writeStation(int number, float latitude, float longitude, float interval = 0.05F, int count = 400) {
    SacHeader header;
    header.delta = interval;
    header.b = 0;
    header.stla = latitude;
    header.stlo = longitude;
    header.knetwk = "XX";
    std::string code(1, 'A');
    code += std::to_string(number);
    header.kstnm = code.c_str();
    std::vector<float> samples;
    const double early = 0.1 * 111.3195 * double(kPlaces[number][1]) + 0.1 * 110.5743 * double(kPlaces[number][0]);
    for (int i = 0; i < count; ++i) {
      const double t = i * 0.05 - 10 + early;
      samples.push_back(float(std::exp(-t * t) * std::cos(2 * std::numbers::pi * t)));
    }
    const SacSeismogram record(header, samples);
    ASSERT_TRUE(writeSac(record, at(QStringLiteral("a%1.sac").arg(number))));
  }
  void writeArray() {
    for (int i = 0; i < 5; ++i)
      writeStation(i, kPlaces[i][0], kPlaces[i][1]);
  }
};

// 0.1 s/km each way are 0.1414 s/km from 45°, or 7.07 km/s.
TEST_F(CliFk, tellsWhereAWaveComesFrom) {
  writeArray();
  const Outcome outcome = xov({"fk", "*.sac", "--band", "0.5", "1.5", "-o", "plot.pdf"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  XOV_REQUIRE_TOOL(text, "pdftotext", {at("plot.pdf"), "-"});
  EXPECT_TRUE(text.contains("back azimuth 45°, 7.07 km/s, power 1.00, 0.5-1.5 Hz")) << qPrintable(text);
  EXPECT_TRUE(text.contains("East Slowness (s/km)"));
}

TEST_F(CliFk, labelsCirclesAndPeak) {
  writeArray();
  const QStringList fk = {"fk", "*.sac", "--band", "0.5", "1.5"};
  XOV_REQUIRE_TEXT(plain, QStringList(fk));
  EXPECT_TRUE(plain.contains("8 km/s") && plain.contains("2 km/s")) << qPrintable(plain);
  XOV_REQUIRE_TEXT(degrees, QStringList(fk) << "--circle-labels"
                                            << "degrees"
                                            << "--decibels"
                                            << "-20");
  EXPECT_TRUE(degrees.contains("13.9 s/°")) << qPrintable(degrees);
  EXPECT_TRUE(degrees.contains(" dB"));
  XOV_REQUIRE_TEXT(bare, QStringList(fk) << "--circle-labels"
                                         << "none"
                                         << "--no-peak-value"
                                         << "--title"
                                         << "");
  EXPECT_FALSE(bare.contains("km/s")) << qPrintable(bare);
  EXPECT_EQ(xov({"fk", "*.sac", "--decibels", "3"}).status, 2);
}

// With a limit of 0.05 s/km the peak, at 0.1 s/km each way, lies beyond the corner.
TEST_F(CliFk, saysWhenThePeakLiesOnTheEdge) {
  writeArray();
  const Outcome outcome = xov({"fk", "*.sac", "--band", "0.5", "1.5", "--limit", "0.05", "-o", "plot.pdf"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: the largest power lies on the edge of the grid; --limit makes it larger\n");
  XOV_REQUIRE_TOOL(text, "pdftotext", {at("plot.pdf"), "-"});
  EXPECT_TRUE(text.contains(" on the edge,")) << qPrintable(text);
}

// 20,000 samples; the wave passes at 10 s.
TEST_F(CliFk, choosesAndNamesTheStrongestPieceOfLongRecordings) {
  for (int i = 0; i < 5; ++i)
    writeStation(i, kPlaces[i][0], kPlaces[i][1], 0.05F, 20000);
  const Outcome outcome = xov({"fk", "*.sac", "--steps", "41", "-o", "plot.pdf"});
  EXPECT_EQ(outcome.status, 0);
  // The first 4096 samples hold all of the wave; four periods in 204.8 s are 0.0195 Hz, half of Nyquist is 5 Hz.
  EXPECT_EQ(outcome.err, "xov: took 0 to 204.8 s, where the recordings are strongest, of 1000 s, and 0.0195 to 5 Hz; "
                         "--window and --band take others\n");
  XOV_REQUIRE_TOOL(text, "pdftotext", {at("plot.pdf"), "-"});
  EXPECT_TRUE(text.contains("back azimuth 45°")) << qPrintable(text);
}

// All of 20 s: four periods are 0.2 Hz, half of Nyquist is 5 Hz.
TEST_F(CliFk, namesTheFrequenciesThatItTakesByItself) {
  writeArray();
  const Outcome outcome = xov({"fk", "*.sac", "--steps", "41", "-o", "plot.pdf"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "xov: took 0.2 to 5 Hz; --band takes others\n");
  XOV_REQUIRE_TOOL(text, "pdftotext", {at("plot.pdf"), "-"});
  EXPECT_TRUE(text.contains(", 0.2-5 Hz")) << qPrintable(text);
}

// Five by five powers of 0.5, the one in the middle left out: the circles of velocity leave its quarters free.
TEST_F(CliFk, leavesMissingPowersToThePaper) {
  QByteArray grid;
  for (int north = 2; north >= -2; --north) {
    for (int east = -2; east <= 2; ++east) {
      const bool isMissing = east == 1 && north == 1;
      grid +=
          QByteArray::number(east * 0.1) + ' ' + QByteArray::number(north * 0.1) + (isMissing ? " nan\n" : " 0.5\n");
    }
  }
  writeFile("beam.txt", grid);
  EXPECT_EQ(xov({"fk", "beam.txt", "-o", "plot.png"}).status, 0);
  const QImage image(at("plot.png"));
  int white = 0;
  // The data frame is 520 by 520 points from (64, 60) on; the fourth column, and row from the south, of five.
  for (int y = 0; y < 104; ++y) {
    for (int x = 0; x < 104; ++x)
      white += image.pixel(64 + 3 * 104 + x, 600 - 60 - 4 * 104 + y) == qRgb(255, 255, 255) ? 1 : 0;
  }
  EXPECT_GT(white, 104 * 104 * 3 / 4);
}

TEST_F(CliFk, takesPlacesFromATable) {
  writeArray();
  // East and west change places, so the wave comes from the north-west.
  writeFile("places.txt", "A0 0 0\nA1 0.01 0\nA2 -0.01 0\nXX.A3 0 -0.01\nA4 0 0.01\n");
  EXPECT_EQ(xov({"fk", "*.sac", "--stations", "places.txt", "--band", "0.5", "1.5", "-o", "plot.pdf"}).status, 0);
  XOV_REQUIRE_TOOL(text, "pdftotext", {at("plot.pdf"), "-"});
  EXPECT_TRUE(text.contains("back azimuth 315°")) << qPrintable(text);
}

TEST_F(CliFk, drawsAGridAndWritesOneThatItCanDraw) {
  writeArray();
  EXPECT_EQ(xov({"fk", "*.sac", "--steps", "21", "--limit", "0.3", "--xyz", "beam.txt", "-o", "plot.png"}).status, 0);
  EXPECT_EQ(contents("beam.txt").count('\n'), 3 + 21 * 21);
  const Outcome outcome = xov({"fk", "beam.txt", "-o", "again.png", "--title", ""});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(QImage(at("again.png")).size(), QSize(608, 600));
  const Outcome refused = xov({"fk", "beam.txt", "--xyz", "none/beam.txt", "-o", "again.png"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_TRUE(refused.err.startsWith("xov: none/beam.txt: ")) << qPrintable(refused.err);
}

TEST_F(CliFk, failsInOneLineAndWritesNothing) {
  writeArray();
  writeFile("words.txt", "0 0 1\n1 zero 2\n");
  writeFile("places.txt", "A0 here\nA1 there\n");
  const auto error = [this](QStringList arguments) {
    const Outcome outcome = xov(QStringList{"fk"} + arguments + QStringList{"-o", "plot.png"});
    EXPECT_EQ(outcome.status, 1);
    return outcome.err;
  };
  EXPECT_EQ(error({"a0.sac"}), "xov: 1 station: an array has at least two\n");
  EXPECT_EQ(error({"*.sac", "--band", "0.5", "30"}),
            "xov: frequencies from 0.5 Hz to 30 Hz: expected a range below half the sampling rate, 10 Hz\n");
  EXPECT_EQ(error({"*.sac", "--window", "5", "50"}),
            "xov: a window from 5 to 50 s: the traces have 0 to 20 s in common\n");
  EXPECT_TRUE(error({"words.txt"}).contains("xov: words.txt: line 2: expected three numbers, x, y and value\n"));
  EXPECT_EQ(error({"*.sac", "--stations", "places.txt"}),
            "xov: places.txt: line 2: expected a station code, its latitude and its longitude\n");
  writeStation(3, 0, 0.01F, 0.1F);
  EXPECT_EQ(error({"a*.sac"}), "xov: a3.sac: a sample interval of 0.1 s, expected 0.05 s as in a0.sac\n");
  writeStation(3, 0, kUndefinedValue);
  EXPECT_EQ(error({"a*.sac"}), "xov: a3.sac: station XX.A3 has no coordinates\n");
  EXPECT_FALSE(files().contains("plot.png"));
}

TEST_F(CliFk, refusesRangesThatAreUpsideDown) {
  for (const char* option : {"--band", "--window"})
    EXPECT_EQ(xov({"fk", "*.sac", option, "3", "1", "-o", "plot.png"}).status, 2);
}

} // namespace
} // namespace xov::cli
