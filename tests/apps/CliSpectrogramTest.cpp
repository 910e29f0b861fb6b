#include "tests/apps/CliFixture.h"

#include <QImage>

namespace xov::cli {
namespace {

class CliSpectrogram : public CliTest {
protected:
  void SetUp() override { writeRecord("one.SAC"); }
};

TEST_F(CliSpectrogram, drawsAPictureWithAxesBarAndTitle) {
  XOV_REQUIRE_TEXT(text, {"spectrogram", "one.SAC"});
  for (const char* piece : {"II.TLY", "Frequency (Hz)", "UTC", "counts"})
    EXPECT_TRUE(text.contains(piece)) << piece << " in\n" << qPrintable(text);
}

TEST_F(CliSpectrogram, eachOptionChangesThePicture) {
  ASSERT_EQ(xov({"spectrogram", "one.SAC", "-o", "plain.png"}).status, 0);
  for (const QStringList& options : {QStringList{"--window", "2"},
                                     {"--window", "2", "--overlap", "0.9"},
                                     {"--log-frequency"},
                                     {"--band", "1", "3"},
                                     {"--db-range", "-50", "20"},
                                     {"--no-seismogram"},
                                     {"--palette", "cividis"},
                                     {"--inverted"},
                                     {"--time-axis", "seconds"},
                                     {"--filter", "highpass", "1"},
                                     {"--shades", "4"}}) {
    const Outcome outcome = xov(QStringList{"spectrogram", "one.SAC", "-o", "other.png"} + options);
    EXPECT_EQ(outcome.status, 0) << qPrintable(outcome.err);
    EXPECT_NE(contents("plain.png"), contents("other.png")) << qPrintable(options.join(' '));
  }
}

TEST_F(CliSpectrogram, ofSeveralChannelsIsRefused) {
  writeRecord("two.SAC", RecordSpec{.component = "BHN"});
  const Outcome outcome = xov({"spectrogram", "one.SAC", "two.SAC", "-o", "plot.png"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: found 2 channels (II.TLY..BHZ, II.TLY..BHN), expected one; --channels chooses\n");
  EXPECT_EQ(xov({"spectrogram", "one.SAC", "two.SAC", "--channels", "BHN", "-o", "plot.png"}).status, 0);
}

TEST_F(CliSpectrogram, refusesRangesWithoutAWidth) {
  for (const char* option : {"--band", "--db-range"}) {
    const Outcome outcome = xov({"spectrogram", "one.SAC", option, "3", "3"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.err.startsWith(
        QStringLiteral("xov: spectrogram: %1: expected the second number above the first").arg(option)))
        << qPrintable(outcome.err);
  }
  EXPECT_EQ(xov({"spectrogram", "one.SAC", "--overlap", "1"}).status, 2);
}

} // namespace
} // namespace xov::cli
