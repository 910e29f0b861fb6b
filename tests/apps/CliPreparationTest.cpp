#include "tests/apps/CliFixture.h"

namespace xov::cli {
namespace {

// A record of 201 samples at 10 Hz from 2011-03-11T05:47:30.033 on: RecordSpec.
class CliPreparation : public CliTest {
protected:
  /// The cells of the only record that info lists.
  QStringList cells(const QStringList& options) {
    const Outcome outcome = xov(QStringList{"info", "a.SAC"} + options);
    EXPECT_EQ(outcome.err, "");
    lines_ = outcome.out.split('\n', Qt::SkipEmptyParts);
    return lines_.value(1).simplified().split(' ');
  }

  QStringList lines_; ///< what info printed last
};

constexpr qsizetype kStart = 4;
constexpr qsizetype kCount = 5;
constexpr qsizetype kInterval = 6;

TEST_F(CliPreparation, doesTheStepsInTheirOrderAndSaysSo) {
  writeRecord("a.SAC", {.arrival = 5});
  const QStringList prepared = cells({"--detrend", "--around", "P", "-1", "2", "--decimate", "2"});
  // From 4 s to 7 s are 31 samples, of which every other one makes 16.
  EXPECT_EQ(prepared.value(kStart), "2011-03-11T05:47:34.033Z");
  EXPECT_EQ(prepared.value(kCount), "16");
  EXPECT_EQ(prepared.value(kInterval), "0.2");
  EXPECT_EQ(lines_.last(), "# less the trend, -1 to 2 s after P, decimated by 2");
  cells({"--decimate", "2", "--detrend", "mean", "--decimate=3"});
  EXPECT_EQ(lines_.last(), "# decimated by 2, less the mean, decimated by 3");
}

TEST_F(CliPreparation, writesWhatWasDoneUnderTheTitleOfEveryPicture) {
  writeRecord("a.SAC");
  writeRecord("b.SAC", {.component = "BHN"});
  for (const char* command : {"section", "stack", "panels", "three", "monitor"}) {
    const auto text = textOfPlot({command, "a.SAC", "b.SAC", "--filter", "bandpass", "1", "2", "--zero-phase"});
    if (!text) GTEST_SKIP() << "pdftotext is not installed";
    EXPECT_TRUE(text->contains("bandpass 1-2 Hz, zero phase")) << command << '\n' << qPrintable(*text);
  }
  const auto drum = textOfPlot({"drum", "a.SAC", "--integrate"});
  EXPECT_TRUE(drum->contains("integrated")) << qPrintable(*drum);
}

TEST_F(CliPreparation, namesWhatCannotBeDoneAndDrawsTheRest) {
  writeRecord("a.SAC", {.arrival = 5});
  writeRecord("b.SAC", {.station = "ABC"});
  const Outcome outcome = xov({"section", "a.SAC", "b.SAC", "--around", "T7", "-1", "1", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "xov: II.TLY..BHZ: found no pick T7; left out\nxov: II.ABC..BHZ: found no pick T7; left out\n");
  EXPECT_FALSE(files().contains("plot.png"));
  const Outcome one = xov({"section", "a.SAC", "b.SAC", "--around", "A", "-1", "1", "-o", "plot.png"});
  EXPECT_TRUE(files().contains("plot.png")) << qPrintable(one.err);
  const Outcome corner = xov({"section", "a.SAC", "--filter", "lowpass", "6", "-o", "plot.png"});
  EXPECT_EQ(corner.status, 1);
  EXPECT_EQ(corner.err.count('\n'), 1) << qPrintable(corner.err);
  EXPECT_TRUE(corner.err.contains("half the sampling rate")) << qPrintable(corner.err);
}

TEST_F(CliPreparation, refusesWrongValuesAsUsage) {
  writeRecord("a.SAC");
  for (const QStringList& options :
       {QStringList{"--filter", "bandpass", "2", "1"}, QStringList{"--start", "noon"}, QStringList{"--taper=2"},
        QStringList{"--around", "P"}, QStringList{"--decimate", "1"}, QStringList{"--remove-response"},
        QStringList{"--corners", "0"}, QStringList{"--filter"}}) {
    const Outcome outcome = xov(QStringList{"info", "a.SAC"} + options);
    EXPECT_EQ(outcome.status, 2) << qPrintable(options.join(' '));
    EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
  }
}

TEST_F(CliPreparation, takesPlacesAndTheEventFromFiles) {
  writeRecord("a.SAC");
  writeFile("stations.txt", "TLY 10 20\n");
  writeFile("events.csv", "time,latitude,longitude,depth,mag\n2011-03-11T05:46:30.033Z,10,21,24,6\n");
  const QStringList placed = cells({"--stations", "stations.txt", "--event", "events.csv"});
  EXPECT_EQ(placed.mid(13, 5), (QStringList{"10.0000", "20.0000", "10.0000", "21.0000", "24"}));
  EXPECT_TRUE(placed.value(18).startsWith("o=-60")) << qPrintable(placed.join(' '));
  // A degree of longitude at 10 degrees north is cos 10 degrees = 0.985 of one on the equator.
  EXPECT_NEAR(placed.value(10).toDouble(), 0.985, 0.006);
}

TEST_F(CliPreparation, saysWhichFileOfStationsOrEventsCannotBeRead) {
  writeRecord("a.SAC");
  const Outcome outcome = xov({"info", "a.SAC", "--stations", "none.xml", "--event", "none.csv"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: none.xml: cannot be opened: No such file or directory\n"
                         "xov: none.csv: cannot be opened: No such file or directory\n");
  EXPECT_TRUE(outcome.out.contains("TLY")) << "the rest is shown";
}

// Constant gain: a StationXML that says 1000 counts a m/s from 0 Hz on would need stages; poles and zeros of a flat
// velocity response are one zero at 0 and the factor, since the format counts from displacement in metres.
TEST_F(CliPreparation, removesTheResponseOfTheStations) {
  writeRecord("a.SAC");
  writeFile("flat.pz", "ZEROS 1\nPOLES 0\nCONSTANT 1000\n");
  const QStringList motion = cells({"--stations", "flat.pz", "--taper", "--remove-response"});
  EXPECT_EQ(lines_.last(), "# tapered over 5 %, response removed to velocity");
  // 1000 counts are 1 m/s, 10^9 nm/s; the record is a sine of 1000 counts that is tapered at its ends only.
  EXPECT_NEAR(motion.value(9).toDouble() / 1e9, 1, 0.02);
}

} // namespace
} // namespace xov::cli
