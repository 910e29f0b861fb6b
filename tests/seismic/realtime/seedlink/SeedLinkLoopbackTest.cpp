#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/realtime/RealTimeFeed.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkClient.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTcpServer>
#include <QTcpSocket>

#include <bit>
#include <map>

// Clients and servers in one process, over the loopback device.

using namespace xov;
using test::MiniSeedBytes;
using test::TemporaryFiles;
using test::waitUntil;

namespace {

constexpr int kSamplesPerRecord = 96;

/// Records of 96 integers at 40 Hz, one behind the other, of two channels in turn.
QByteArray recording(int recordsPerChannel) {
  QByteArray bytes;
  for (int i = 0; i < recordsPerChannel; ++i) {
    const int tenths = i * kSamplesPerRecord * 10 / 40; // 2.4 s a record
    for (const char* channel : {"BHZ", "BHN"}) {
      std::vector<std::int32_t> values(kSamplesPerRecord);
      for (int k = 0; k < kSamplesPerRecord; ++k)
        values[std::size_t(k)] = (i * kSamplesPerRecord + k) * (channel[2] == 'Z' ? 7 : -3);
      bytes += MiniSeedBytes()
                   .codes("GE", "WLF", "00", channel)
                   .time(2020, 257, 12, tenths / 600, tenths / 10 % 60, tenths % 10 * 1000)
                   .integers(values)
                   .bytes();
    }
  }
  return bytes;
}

/// The bits of samples, so that NaN is itself.
using Samples = std::map<QString, std::vector<std::uint32_t>>;

Samples samplesOfRecords(const SeismogramArray& records) {
  Samples all;
  for (const auto& record : records) {
    auto& bits = all[channelName({record->knetwk(), record->kstnm(), record->khole(), record->kcmpnm()})];
    for (const float sample : samplesOf(*record))
      bits.push_back(std::bit_cast<std::uint32_t>(sample));
  }
  return all;
}

/// What a client with a feed has got; gaps are NaN.
class Display {
public:
  explicit Display(SeedLinkSettings settings) : client_(std::move(settings)) {
    client_.onRecord([this](const LiveRecord& record) {
      ++records_;
      feed_.append(record.header(), record.startSeconds(), record.deltaSeconds(), record.samples);
    });
    client_.onMessage([this](const QString& line) { messages_.append(line); });
    client_.start();
  }
  int records() const { return records_; }
  const QStringList& messages() const { return messages_; }
  SeedLinkClient& client() { return client_; }

  Samples samples() const { return samplesOfRecords(*feed_.records()); }

private:
  RealTimeFeed feed_{1e5};
  int records_ = 0;
  QStringList messages_;
  SeedLinkClient client_;
};

Samples samplesOfFile(const QString& path) {
  const auto file = readSeismogramFile(path);
  EXPECT_TRUE(file) << file.error().toStdString();
  return samplesOfRecords(file->records);
}

struct Served {
  explicit Served(SeedLinkServerSettings settings, const QByteArray& bytes = recording(40)) : server(settings) {
    path = files.write("served.mseed", bytes);
    const Status added = server.addFile(path);
    EXPECT_TRUE(added) << added.error().toStdString();
    const Status listening = server.listen();
    EXPECT_TRUE(listening) << listening.error().toStdString();
  }
  SeedLinkSettings client(const char* stations = "GE_WLF") const {
    SeedLinkSettings settings;
    settings.server = {"127.0.0.1", server.port(), false};
    settings.stations = parseSeedLinkStations(QString::fromLatin1(stations)).value();
    settings.shortestPauseSeconds = 0.001;
    settings.longestPauseSeconds = 0.002;
    return settings;
  }
  TemporaryFiles files;
  QString path;
  SeedLinkServer server;
};

// Far ago, so that a server gives everything that it has.
void beginAtTheStart(SeedLinkSettings& settings, const Served& served) {
  settings.stateFile = served.files.write("state", "GE_WLF 0 0\n");
}

SeedLinkServerSettings everythingAtOnce(int protocol) {
  SeedLinkServerSettings settings;
  settings.speed = 0;
  settings.protocol = protocol;
  return settings;
}

class BothProtocols : public ::testing::TestWithParam<int> {};
class EveryFault : public ::testing::TestWithParam<std::pair<int, SeedLinkFaults>> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(SeedLink, BothProtocols, ::testing::Values(3, 4));

TEST_P(BothProtocols, bringEverySampleAsTheFileHasIt) {
  const Served served(everythingAtOnce(GetParam()));
  SeedLinkSettings settings = served.client();
  beginAtTheStart(settings, served);
  Display display(settings);
  EXPECT_TRUE(waitUntil([&] { return display.records() == 80; }));
  const Samples expected = samplesOfFile(served.path);
  EXPECT_EQ(expected.size(), 2u);
  EXPECT_EQ(expected.at("GE.WLF.00.BHZ").size(), std::size_t(40 * kSamplesPerRecord));
  EXPECT_EQ(display.samples(), expected);
  EXPECT_EQ(display.messages().size(), 1) << display.messages().join('\n').toStdString();
  EXPECT_TRUE(display.messages().front().endsWith(QStringLiteral(": connected, SeedLink %1").arg(GetParam())));
}

TEST_P(BothProtocols, bringTheChannelsThatWereAskedForOnly) {
  const Served served(everythingAtOnce(GetParam()));
  for (const char* stations : {"GE_WLF:BHZ", "GE_W?F:00BHZ", "*_*:!BHN"}) {
    SeedLinkSettings settings = served.client(stations);
    beginAtTheStart(settings, served);
    Display display(settings);
    EXPECT_TRUE(waitUntil([&] { return display.records() == 40; })) << stations;
    const Samples got = display.samples();
    EXPECT_EQ(got.size(), 1u);
    EXPECT_TRUE(got.contains("GE.WLF.00.BHZ"));
  }
}

TEST_P(BothProtocols, goOnWhereTheClientStopped) {
  const Served served(everythingAtOnce(GetParam()));
  SeedLinkSettings settings = served.client();
  // Records number 1 to 60 have arrived: those of 12:00:00 to 12:01:09.6 of both channels.
  settings.stateFile = served.files.write("state", "GE_WLF 60 1599998469600000\n");
  {
    Display display(settings);
    EXPECT_TRUE(waitUntil([&] { return display.records() == 20; }));
    EXPECT_EQ(display.samples().at("GE.WLF.00.BHN").size(), std::size_t(10 * kSamplesPerRecord));
  }
  // The last record begins 39 · 2.4 s after 12:00:00.
  EXPECT_EQ(served.files.read(settings.stateFile), "GE_WLF 80 1599998493600000\n");
}

TEST_P(BothProtocols, beginWithWhatTheServerHasSinceThen) {
  const Served served(everythingAtOnce(GetParam()));
  SeedLinkSettings settings = served.client("GE_WLF:BHZ");
  settings.since = QDateTime(QDate(2020, 9, 13), QTime(12, 1, 0), Qt::UTC);
  Display display(settings);
  // Of 40 records of 2.4 s from 12:00:00 on the first 24 end before 12:01:00, and the 25th begins there; the one
  // whose last sample is followed by one of that time may come, too.
  EXPECT_TRUE(waitUntil([&] { return display.records() >= 16; }));
  EXPECT_LE(display.records(), 17);
}

TEST_P(BothProtocols, beginWithTheDayOfTheStateForDisplaysOfDays) {
  const Served served(everythingAtOnce(GetParam()));
  SeedLinkSettings settings = served.client();
  settings.stateFile = served.files.write("state", "GE_OTHER 3 1599998400000000\nGE_WLF 60 1599998469600000\n");
  settings.beginsWithDay = true;
  {
    Display display(settings);
    EXPECT_TRUE(waitUntil([&] { return display.records() == 80; })) << "all of the day, not 20 behind packet 60";
    EXPECT_EQ(display.samples(), samplesOfFile(served.path));
  }
  EXPECT_EQ(served.files.read(settings.stateFile), "GE_OTHER 3 1599998400000000\nGE_WLF 80 1599998493600000\n");
}

TEST_P(BothProtocols, sayWhichStationIsUnknownAndShowTheOthers) {
  const Served served(everythingAtOnce(GetParam()));
  SeedLinkSettings settings = served.client("XX_NONE,GE_WLF");
  beginAtTheStart(settings, served);
  Display display(settings);
  EXPECT_TRUE(waitUntil([&] { return display.records() == 80; }));
  EXPECT_TRUE(display.messages().front().contains("XX_NONE: the server refuses 'STATION "))
      << display.messages().front().toStdString();
}

TEST_P(BothProtocols, playAtTheSpeedThatIsAskedFor) {
  SeedLinkServerSettings fast = everythingAtOnce(GetParam());
  fast.speed = 500; // 96 s in 0.2 s
  Served served(fast);
  SeedLinkSettings settings = served.client();
  beginAtTheStart(settings, served);
  Display display(settings);
  EXPECT_TRUE(waitUntil([&] { return display.client().isStreaming(); }));
  EXPECT_FALSE(served.server.isAtEnd());
  EXPECT_TRUE(waitUntil([&] { return display.records() == 80; }));
  EXPECT_TRUE(waitUntil([&] { return served.server.isAtEnd(); }));
  EXPECT_EQ(display.samples(), samplesOfFile(served.path));
}

INSTANTIATE_TEST_SUITE_P(
    SeedLink, EveryFault,
    ::testing::Values(std::pair(3, SeedLinkFaults{.dropEvery = 7}), std::pair(4, SeedLinkFaults{.dropEvery = 7}),
                      std::pair(3, SeedLinkFaults{.cutEvery = 9}), std::pair(4, SeedLinkFaults{.cutEvery = 9}),
                      std::pair(3, SeedLinkFaults{.garbageEvery = 5}),
                      std::pair(4, SeedLinkFaults{.garbageEvery = 5}),
                      std::pair(3, SeedLinkFaults{.duplicateEvery = 3}),
                      std::pair(4, SeedLinkFaults{.duplicateEvery = 3}),
                      std::pair(4, SeedLinkFaults{.stallEvery = 20}), std::pair(3, SeedLinkFaults{.bytesAtOnce = 97}),
                      std::pair(4, SeedLinkFaults{.bytesAtOnce = 97})));

TEST_P(EveryFault, losesAndDoublesNoSample) {
  SeedLinkServerSettings faulty = everythingAtOnce(GetParam().first);
  faulty.faults = GetParam().second;
  const Served served(faulty);
  SeedLinkSettings settings = served.client();
  beginAtTheStart(settings, served);
  settings.keepAliveSeconds = 0.02;
  settings.stalledSeconds = 0.2;
  Display display(settings);
  const Samples expected = samplesOfFile(served.path);
  EXPECT_TRUE(waitUntil([&] { return display.records() >= 80 && display.samples() == expected; }))
      << display.messages().join('\n').toStdString();
}

TEST(SeedLinkClient, putsPacketsThatComeOutOfOrderWhereTheirTimesSay) {
  SeedLinkServerSettings faulty = everythingAtOnce(4);
  faulty.faults.reorderEvery = 4;
  const Served served(faulty);
  SeedLinkSettings settings = served.client();
  beginAtTheStart(settings, served);
  Display display(settings);
  EXPECT_TRUE(waitUntil([&] { return display.records() == 80; }));
  EXPECT_EQ(display.samples(), samplesOfFile(served.path));
}

TEST(SeedLinkClient, knowsHowFarAChannelHasComeAndWhen) {
  const Served served(everythingAtOnce(4));
  SeedLinkSettings settings = served.client("GE_WLF:BHZ");
  beginAtTheStart(settings, served);
  const double before = double(QDateTime::currentMSecsSinceEpoch()) / 1000;
  Display display(settings);
  EXPECT_FALSE(display.client().arrival({"GE", "WLF", "00", "BHZ"}));
  EXPECT_TRUE(waitUntil([&] { return display.records() == 40; }));
  const auto arrival = display.client().arrival({"GE", "WLF", "00", "BHZ"});
  ASSERT_TRUE(arrival);
  // 40 records of 2.4 s from 12:00:00 on, 2020-09-13; the last sample is one interval before their end.
  EXPECT_NEAR(arrival->sampleSeconds, 1599998400 + 40 * 2.4 - 0.025, 1e-6);
  EXPECT_GE(arrival->packetSeconds, before);
  EXPECT_LE(arrival->packetSeconds, double(QDateTime::currentMSecsSinceEpoch()) / 1000);
  EXPECT_FALSE(display.client().arrival({"GE", "WLF", "00", "BHN"})) << "which was not asked for";
}

TEST(SeedLinkClient, saysOnceThatNobodyAnswersAndConnectsWhenSomebodyDoes) {
  QTcpServer free;
  ASSERT_TRUE(free.listen(QHostAddress::LocalHost));
  const quint16 port = free.serverPort();
  free.close();
  SeedLinkServerSettings late = everythingAtOnce(4);
  late.port = port;
  TemporaryFiles files;
  SeedLinkServer server(late);
  ASSERT_TRUE(server.addFile(files.write("a.mseed", recording(1))));
  SeedLinkSettings settings;
  settings.server = {"127.0.0.1", port, false};
  settings.stations = parseSeedLinkStations("GE_WLF").value();
  settings.shortestPauseSeconds = settings.longestPauseSeconds = 0.001;
  settings.stateFile = files.write("state", "GE_WLF 0 0\n");
  Display display(settings);
  int turns = 0;
  EXPECT_TRUE(waitUntil([&] { return ++turns > 50 && !display.messages().isEmpty(); }));
  EXPECT_EQ(display.messages().size(), 1) << display.messages().join('\n').toStdString();
  ASSERT_TRUE(server.listen());
  EXPECT_TRUE(waitUntil([&] { return display.records() == 2; }));
}

TEST(SeedLinkClient, givesUserAndPasswordToAServerThatAsksForThem) {
  SeedLinkServerSettings guarded = everythingAtOnce(4);
  guarded.user = "me";
  guarded.password = "secret";
  const Served served(guarded);
  SeedLinkSettings settings = served.client();
  beginAtTheStart(settings, served);
  Display stranger(settings);
  EXPECT_TRUE(waitUntil([&] { return !stranger.messages().isEmpty(); }));
  EXPECT_TRUE(stranger.messages().front().contains("UNAUTHORIZED")) << stranger.messages().front().toStdString();
  stranger.client().stop();
  settings.user = "me";
  settings.password = "secret";
  beginAtTheStart(settings, served);
  Display known(settings);
  EXPECT_TRUE(waitUntil([&] { return known.records() == 80; }));
}

TEST(SeedLinkClient, takesNoMoreThanOnePacketFromAServerThatSendsAnything) {
  QTcpServer hostile;
  ASSERT_TRUE(hostile.listen(QHostAddress::LocalHost));
  QObject::connect(&hostile, &QTcpServer::newConnection, &hostile, [&] {
    QTcpSocket* const socket = hostile.nextPendingConnection();
    socket->write(QByteArray(1 << 16, 'x'));
  });
  SeedLinkSettings settings;
  settings.server = {"127.0.0.1", hostile.serverPort(), false};
  settings.stations = parseSeedLinkStations("GE_WLF").value();
  settings.shortestPauseSeconds = settings.longestPauseSeconds = 60;
  Display display(settings);
  EXPECT_TRUE(waitUntil([&] { return !display.messages().isEmpty(); }));
  EXPECT_TRUE(display.messages().front().endsWith("found a line of more than 4096 bytes"));
}

TEST(SeedLinkClient, saysWhatAServerSaysInPlaceOfPackets) {
  for (const auto& [said, heard] :
       {std::pair("END\r\n", "the server has no more to send"), std::pair("ERROR\tfull\x07\r\n", "ERROR")}) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&server, said = QByteArray(said)] {
      // It agrees to HELLO's two lines, STATION and DATA before anybody has asked.
      server.nextPendingConnection()->write("SeedLink v3.1 (small)\r\nhere\r\nOK\r\nOK\r\n" + said);
    });
    SeedLinkSettings settings;
    settings.server = {"127.0.0.1", server.serverPort(), false};
    settings.stations = parseSeedLinkStations("GE_WLF").value();
    settings.shortestPauseSeconds = settings.longestPauseSeconds = 60;
    Display display(settings);
    EXPECT_TRUE(waitUntil([&] { return display.messages().size() == 2; }));
    ASSERT_EQ(display.messages().size(), 2) << display.messages().join('\n').toStdString();
    EXPECT_TRUE(display.messages().front().endsWith("connected, SeedLink 3"));
    EXPECT_TRUE(display.messages().back().contains(heard)) << display.messages().back().toStdString();
    EXPECT_FALSE(display.messages().back().contains('\x07'));
    EXPECT_FALSE(display.client().isStreaming());
    EXPECT_EQ(display.client().connectionCount(), 1);
  }
}

TEST(SeedLinkClient, saysOnceThatRecordsAreDamagedAndGoesOn) {
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
  const QByteArray damaged(512, 'x');
  QByteArray sound = recording(1).first(512); // of BHZ
  ASSERT_EQ(sound.size(), 512);
  QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
    server.nextPendingConnection()->write("SeedLink v3.1 (small)\r\nhere\r\nOK\r\nOK\r\nSL000001" + damaged +
                                          "SL000002" + damaged + "SL000003" + sound);
  });
  SeedLinkSettings settings;
  settings.server = {"127.0.0.1", server.serverPort(), false};
  settings.stations = parseSeedLinkStations("GE_WLF").value();
  Display display(settings);
  EXPECT_TRUE(waitUntil([&] { return display.records() == 1; }));
  EXPECT_EQ(display.messages().size(), 2) << display.messages().join('\n').toStdString(); // that it is connected
  EXPECT_EQ(display.samples().size(), 1U);
}

TEST(SeedLinkClient, mayBeStoppedByARecord) {
  const Served served(everythingAtOnce(4));
  SeedLinkSettings settings = served.client();
  beginAtTheStart(settings, served);
  SeedLinkClient client(settings);
  int records = 0;
  client.onRecord([&](const LiveRecord&) {
    ++records;
    client.stop();
  });
  client.start();
  EXPECT_TRUE(waitUntil([&] { return records > 0; }));
  EXPECT_FALSE(client.isStreaming());
  int turns = 0;
  EXPECT_TRUE(waitUntil([&] { return ++turns > 20; }));
  EXPECT_EQ(records, 1);
}

TEST(SeedLinkClient, decodesEveryEncodingAsTheReaderDoes) {
  int files = 0;
  for (const char* name :
       {"cdsn.mseed", "dwwssn.mseed", "floats-32.mseed", "floats-64-little-data.mseed", "geoscope-16-3.mseed",
        "geoscope-16-4.mseed", "geoscope-24.mseed", "integers-16-little.mseed", "integers-32-big.mseed", "sro.mseed",
        "steim1.mseed", "steim2.mseed", "v3-floats-64.mseed3", "v3-integers-16.mseed3", "v3-integers-32.mseed3",
        "v3-steim1.mseed3", "v3-steim2-extra-headers.mseed3"}) {
    QFile corpus(QStringLiteral(XOV_MINISEED_CORPUS "/") + name);
    ASSERT_TRUE(corpus.open(QIODevice::ReadOnly)) << name;
    const Served served(everythingAtOnce(4), corpus.readAll());
    SeedLinkSettings settings = served.client("*_*");
    settings.stateFile = served.files.write("state", "A_B 0 0\n");
    Display display(settings);
    const Samples expected = samplesOfFile(served.path);
    std::size_t count = 0;
    for (const auto& [channel, samples] : expected)
      count += samples.size();
    ASSERT_GT(count, 0u) << name;
    EXPECT_TRUE(waitUntil([&] { return display.samples() == expected; }))
        << name << ": " << display.messages().join('\n').toStdString();
    ++files;
  }
  EXPECT_EQ(files, 17);
}

TEST(SeedLinkServer, refusesWhatIsNoMiniSeedFile) {
  const TemporaryFiles files;
  SeedLinkServer server({});
  const QString path = files.write("text", "no records\n");
  EXPECT_EQ(server.addFile(path).error(), path + ": found no miniSEED records with samples");
  EXPECT_NE(server.addFile(files.path("nothing")).error(), "");
}

TEST(SeedLinkServer, refusesAPortThatIsTaken) {
  QTcpServer taken;
  ASSERT_TRUE(taken.listen(QHostAddress::LocalHost));
  SeedLinkServerSettings settings;
  settings.port = taken.serverPort();
  SeedLinkServer server(settings);
  EXPECT_TRUE(server.listen().error().startsWith(QStringLiteral("port %1: ").arg(taken.serverPort())));
}

TEST(SeedLinkAddress, hasAHostAndMaybeAPort) {
  const auto read = [](const char* text) { return parseSeedLinkAddress(QString::fromLatin1(text)).value(); };
  EXPECT_EQ(read("geofon.example").host, "geofon.example");
  EXPECT_EQ(read("geofon.example").port, 18000);
  EXPECT_EQ(read("localhost:18001").port, 18001);
  EXPECT_EQ(read("tls://a.example").port, 18500);
  EXPECT_TRUE(read("tls://a.example:18501").isEncrypted);
  EXPECT_EQ(read("[::1]:18002").host, "::1");
  EXPECT_EQ(read("[::1]:18002").port, 18002);
  for (const char* bad : {"", ":18000", "a:0", "a:65536", "a:b", "a b", "[::1", "a/b", "a:1:2"})
    EXPECT_EQ(parseSeedLinkAddress(QString::fromLatin1(bad)).error(),
              QStringLiteral("found '%1', expected a server as host or host:port").arg(QString::fromLatin1(bad)));
}
