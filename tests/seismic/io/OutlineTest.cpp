#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/RecordOutline.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/TestRecords.h"

#include <gtest/gtest.h>

#include <limits>

using namespace xov;
using test::MiniSeedBytes;
using test::TemporaryFiles;

namespace {

SeismogramOutline outlineAt(const QString& path) {
  const Result<SeismogramOutline> outline = outlineSeismogramFile(path);
  EXPECT_TRUE(bool(outline)) << outline.error().toStdString();
  return outline.value();
}

// Four samples of 40 Hz.
MiniSeedBytes fourSamples(const char* channel, int second) {
  return MiniSeedBytes().codes("XX", "TEST", "00", channel).time(2012, 133, 0, 0, second, 0).integers({1, 2, 3, 4});
}

} // namespace

TEST(Outline, ofAChannelCountsItsPiecesAndSamples) {
  const TemporaryFiles files;
  std::vector<float> samples(1000, 7.0F);
  std::fill_n(samples.begin() + 300, 50, std::numeric_limits<float>::quiet_NaN());
  SacHeader header = headerOf(*makeRecord({.interval = 0.1F}));
  const SeismogramArray records = {std::make_shared<SacSeismogram>(header, samples)};
  const QString path = files.path("gap.mseed");
  ASSERT_TRUE(bool(writeMiniSeed(records, path)));
  const SeismogramOutline outline = outlineAt(path);
  EXPECT_EQ(outline.format, QStringLiteral("miniSEED"));
  ASSERT_EQ(outline.channels.size(), 1U);
  const ChannelOutline& channel = outline.channels[0];
  EXPECT_EQ(channelName(channel.codes), QStringLiteral("II.TLY..BHZ"));
  EXPECT_EQ(channel.start, onTheDay(5, 0));
  EXPECT_EQ(channel.end, onTheDay(5, 1, 39, 900)) << "the last of 1000 samples at 10 Hz";
  EXPECT_NEAR(channel.rateHz, 10, 1e-5);
  EXPECT_EQ(channel.sampleCount, 950);
  EXPECT_EQ(channel.pieceCount, 2);
  EXPECT_FALSE(channel.distanceDeg.has_value());
}

TEST(Outline, countsOnceWhatIsThereTwiceAndKeepsChannelsApart) {
  const TemporaryFiles files;
  const QByteArray bytes =
      test::joined({fourSamples("BHZ", 1), fourSamples("BHN", 0), fourSamples("BHZ", 0), fourSamples("BHZ", 1)});
  const SeismogramOutline outline = outlineAt(files.write("f", bytes));
  ASSERT_EQ(outline.channels.size(), 2U);
  EXPECT_EQ(outline.channels[0].codes[3], QStringLiteral("BHZ"));
  EXPECT_EQ(outline.channels[0].sampleCount, 8);
  EXPECT_EQ(outline.channels[0].pieceCount, 2) << "0.1 s each, a second apart";
  EXPECT_EQ(outline.channels[0].end.time(), QTime(0, 0, 1, 75));
  EXPECT_EQ(outline.channels[1].sampleCount, 4);
  EXPECT_EQ(outline.notes.size(), 1);
}

TEST(Outline, ofASacFileIsThatOfItsHeader) {
  const TemporaryFiles files;
  SacHeader header = headerOf(*makeRecord({.begin = 30, .interval = 0.5F}));
  header.gcarc = 42;
  const SacSeismogram record(header, std::vector<float>(11, 1.0F));
  for (const auto form : {SacWriteOptions::Form::BinaryVersion7, SacWriteOptions::Form::Alphanumeric}) {
    const QString path = files.path("f.sac");
    ASSERT_TRUE(bool(writeSac(record, path, {form})));
    const SeismogramOutline outline = outlineAt(path);
    ASSERT_EQ(outline.channels.size(), 1U);
    EXPECT_EQ(outline.channels[0].start, onTheDay(5, 0, 30));
    EXPECT_EQ(outline.channels[0].end, onTheDay(5, 0, 35));
    EXPECT_EQ(outline.channels[0].sampleCount, 11);
    EXPECT_EQ(outline.channels[0].rateHz, 2);
    EXPECT_EQ(outline.channels[0].distanceDeg, 42);
  }
}

TEST(Outline, ofARecordWithAbsurdTimesHasNone) {
  SacHeader header = headerOf(*makeRecord());
  header.delta = 0;
  EXPECT_EQ(outlineOf(SacSeismogram(header, {}), 5).rateHz, 0);
  header.delta = 3e38F;
  EXPECT_FALSE(outlineOf(SacSeismogram(header, {}), std::numeric_limits<std::int64_t>::max()).end.isValid());
  EXPECT_FALSE(outlineOf(*makeRecord({.reference = {}}), 5).start.isValid());
}

TEST(Outline, ofAFileThatIsRefusedIsTheSameError) {
  const TemporaryFiles files;
  for (const QString& path : {files.write("odd", "no seismogram"), files.write("empty", {}), files.path("none"),
                              files.folder(), files.write("cut", fourSamples("BHZ", 0).bytes().first(300))})
    EXPECT_EQ(outlineSeismogramFile(path).error(), readSeismogramFile(path).error()) << path.toStdString();
}

TEST(Outline, knowsTheFormatByTheFirstBytes) {
  const TemporaryFiles files;
  EXPECT_EQ(seismogramFormatOf(files.write("f", fourSamples("BHZ", 0).bytes())), QStringLiteral("miniSEED"));
  for (const QString& path : {files.write("odd", "no seismogram"), files.path("none"), files.folder()})
    EXPECT_TRUE(seismogramFormatOf(path).isEmpty());
}

TEST(Outline, stopsWhenItIsAsked) {
  const TemporaryFiles files;
  const QString path = files.write("f", test::joined({fourSamples("BHZ", 0), fourSamples("BHZ", 1)}));
  std::stop_source stop;
  stop.request_stop();
  EXPECT_EQ(outlineSeismogramFile(path, stop.get_token()).error(), path + QStringLiteral(": reading was stopped"));
}
