#include "tests/apps/CliFixture.h"

#include <QImage>

namespace xov::cli {
namespace {

/// Records of 20 s that begin together, at 10 and 80 degrees, with P 5 s and 8 s after the reference time.
class CliAlignment : public CliTest {
protected:
  void SetUp() override {
    writeRecord("near.SAC", {.station = "NEAR", .distanceDeg = 10, .arrival = 5, .origin = 0});
    writeRecord("far.SAC", {.station = "FAR", .distanceDeg = 80, .arrival = 8, .origin = 0});
    writeRecord("odd.SAC", {.station = "ODD", .distanceDeg = kUndefinedValue});
  }
};

TEST_F(CliAlignment, namesWhatTheAxisCountsFrom) {
  XOV_REQUIRE_TEXT(onP, {"section", "near.SAC", "far.SAC", "--align", "A"});
  EXPECT_TRUE(onP.contains("Time after A (s)")) << qPrintable(onP);
  XOV_REQUIRE_TEXT(reduced, {"stack", "near.SAC", "far.SAC", "--reduce", "8"});
  EXPECT_TRUE(reduced.contains("Time - distance / 8 km/s (s)")) << qPrintable(reduced);
}

// Two spikes, 5 s and 8 s after the reference time, each at a pick of its record: counted from these they look alike.
TEST_F(CliAlignment, putsPicksBelowEachOther) {
  const auto picture = [this](int spike, const QStringList& options) {
    SacHeader header;
    header.delta = 1;
    header.b = 0;
    header.a = float(spike);
    std::vector<float> samples(20);
    samples[std::size_t(spike)] = 1;
    writeRecord("spike.SAC", SacSeismogram(header, samples));
    EXPECT_EQ(xov(QStringList{"stack", "spike.SAC", "--raw", "--title=", "-o", "plot.png"} + options).err, QString());
    return QImage(at("plot.png"));
  };
  const QStringList window{"--start", "-3", "--end", "3"};
  EXPECT_EQ(picture(5, QStringList{"--align", "A"} + window), picture(8, QStringList{"--align", "A"} + window));
  EXPECT_NE(picture(5, {"--end", "12"}), picture(8, {"--end", "12"}));
}

TEST_F(CliAlignment, saysWhichRecordsAreLeftOut) {
  const Outcome aligned = xov({"section", "near.SAC", "odd.SAC", "--align", "S", "-o", "plot.png"});
  EXPECT_EQ(aligned.status, 0);
  EXPECT_EQ(aligned.err, "xov: no pick S, nor distance and origin time to expect it from, in 1 of 2 records; left "
                         "out: II.ODD\n");
  const Outcome reduced = xov({"section", "near.SAC", "odd.SAC", "--reduce", "6", "-o", "plot.png"});
  EXPECT_EQ(reduced.status, 0);
  EXPECT_EQ(reduced.err, "xov: no distance, or no origin time where others have one, in 1 of 2 records; left out: "
                         "II.ODD\n");
  const Outcome none = xov({"section", "odd.SAC", "--align", "P", "-o", "none.png"});
  EXPECT_EQ(none.status, 1);
  EXPECT_FALSE(files().contains("none.png"));
}

TEST_F(CliAlignment, takesOneOfBothAndAVelocity) {
  for (const QStringList& wrong : {QStringList{"--align", "P", "--reduce", "8"}, QStringList{"--reduce", "0"},
                                   QStringList{"--reduce", "fast"}, QStringList{"--align", ""}}) {
    const Outcome outcome = xov(QStringList{"section", "near.SAC", "-o", "plot.png"} + wrong);
    EXPECT_EQ(outcome.status, 2) << qPrintable(wrong.join(' '));
    EXPECT_EQ(outcome.err.count('\n'), 1) << qPrintable(outcome.err);
  }
}

TEST_F(CliAlignment, showsUtcOfOneRecordOnRequest) {
  XOV_REQUIRE_TEXT(utc, {"section", "near.SAC", "--align", "A", "--time-axis", "utc"});
  EXPECT_TRUE(utc.contains("05:47:32")) << qPrintable(utc);
}

} // namespace
} // namespace xov::cli
