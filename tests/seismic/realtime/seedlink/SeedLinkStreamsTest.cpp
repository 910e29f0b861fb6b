#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStreams.h"

#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h"
#include "XOV_Graphics/seismic/realtime/seedlink/ServedRecords.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>

using namespace xov;
using test::MiniSeedBytes;
using test::TemporaryFiles;

namespace {

QString textOf(const std::vector<SeedLinkStream>& streams) {
  QStringList lines;
  for (const SeedLinkStream& stream : streams)
    lines.append(channelName(stream.codes) + stream.start.toString(" yyyy-MM-ddTHH:mm:ss.zzz") +
                 stream.end.toString(" yyyy-MM-ddTHH:mm:ss.zzz"));
  return lines.join('|');
}

Result<std::vector<SeedLinkStream>> inquire(quint16 port, double seconds = 20) {
  Result<std::vector<SeedLinkStream>> answer = Error{"none"};
  QEventLoop loop;
  const SeedLinkInquiry inquiry({"127.0.0.1", port, false}, seconds, [&](const auto& streams) {
    answer = streams;
    loop.quit();
  });
  loop.exec();
  return answer;
}

} // namespace

TEST(SeedLinkStreams, ofProtocol3AreXml) {
  const auto streams = parseStreamsXml(R"(<?xml version="1.0"?>
<seedlink software="SeedLink v3.1" organization="X" started="2020/09/13 12:26:40.0000">
<station name="WLF" network="GE" description="Walferdange" begin_seq="000001" end_seq="0000FF" stream_check="enabled">
<stream location="  " seedname="BHZ" type="D" begin_time="2020/09/13 12:26:40.1234" end_time="2020-09-13 13:00:00"/>
<stream location="00" seedname="LOG" type="L" begin_time="" end_time=""/></station>
<station name="GRA1" network="GR"><stream location="10" seedname="HHZ" type="D"/></station></seedlink>)");
  ASSERT_TRUE(streams) << streams.error().toStdString();
  EXPECT_EQ(textOf(*streams), "GE.WLF..BHZ 2020-09-13T12:26:40.123 2020-09-13T13:00:00.000|GR.GRA1.10.HHZ");
}

TEST(SeedLinkStreams, ofProtocol4AreJson) {
  const auto streams = parseStreamsJson(R"({"software":"x","station":[{"id":"GE_WLF","stream":[
{"id":"_B_H_Z","format":"2","subformat":"D","start_time":"2020-09-13T12:26:40Z","end_time":"2020-09-13T13:00:00Z"},
{"id":"00_L_O_G","subformat":"L"},{"id":"odd"}]},{"id":"GR_GRA1","stream":[{"id":"10_H_H_Z"}]}]})");
  ASSERT_TRUE(streams) << streams.error().toStdString();
  EXPECT_EQ(textOf(*streams), "GE.WLF..BHZ 2020-09-13T12:26:40.000 2020-09-13T13:00:00.000|GR.GRA1.10.HHZ");
}

TEST(SeedLinkStreams, ofStationsWithoutAnIdentifierAreLeftOut) {
  const auto streams = parseStreamsJson(R"({"station":[{"stream":[{"id":"00_B_H_Z"}]},
                                                       {"id":"WLF","stream":[{"id":"00_B_H_N"}]}]})");
  ASSERT_EQ(streams->size(), 1u);
  EXPECT_EQ(channelName(streams->front().codes), channelName({"", "WLF", "00", "BHN"}));
}

TEST(SeedLinkStreams, thatAreDamagedAreRefused) {
  EXPECT_TRUE(parseStreamsJson("{]").error().startsWith("byte 2 of the answer: "));
  EXPECT_EQ(parseStreamsJson(R"({"error":{"code":"LIMIT","message":"too  much"}})").error(),
            "the server says too much");
  EXPECT_NE(parseStreamsXml("<seedlink><station></seedlink>").error(), "");
  EXPECT_NE(parseStreamsXml("<html/>").error(), "");
}

TEST(SeedLinkStreams, areToldByAServerOfBothProtocols) {
  const TemporaryFiles files;
  for (const int protocol : {3, 4}) {
    SeedLinkServerSettings settings;
    settings.speed = 0;
    settings.protocol = protocol;
    SeedLinkServer server(settings);
    const auto record = [](const char* station, int minute) {
      return MiniSeedBytes()
          .codes("GE", station, "00", "BHZ")
          .time(2020, 257, 12, minute, 0, 0)
          .integers(std::vector<std::int32_t>(80, 1)); // 2 s
    };
    QByteArray bytes = record("WLF", 0).bytes() + record("WLF", 9).bytes();
    // More than one record of text.
    for (const char* station : {"A", "B", "C", "D", "E"})
      bytes += record(station, 1).bytes();
    ASSERT_TRUE(server.addFile(files.write("a.mseed", bytes)));
    ASSERT_TRUE(server.listen());
    const auto streams = inquire(server.port());
    ASSERT_TRUE(streams) << streams.error().toStdString();
    ASSERT_EQ(streams->size(), 6u);
    EXPECT_EQ(textOf({streams->back()}), "GE.WLF.00.BHZ 2020-09-13T12:00:00.000 2020-09-13T12:09:02.000");
  }
}

TEST(SeedLinkInquiry, givesUpWhereNobodyAnswers) {
  QTcpServer silent;
  ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
  EXPECT_EQ(inquire(silent.serverPort(), 0.01).error(),
            QStringLiteral("127.0.0.1:%1: the server does not answer").arg(silent.serverPort()));
}

TEST(SeedLinkInquiry, givesUpWhereAnotherServerAnswers) {
  QTcpServer web;
  ASSERT_TRUE(web.listen(QHostAddress::LocalHost));
  QObject::connect(&web, &QTcpServer::newConnection, &web,
                   [&] { web.nextPendingConnection()->write("HTTP/1.1 400 Bad Request\r\n"); });
  EXPECT_EQ(inquire(web.serverPort()).error(),
            QStringLiteral("127.0.0.1:%1: found 'HTTP/1.1 400 Bad Request', expected a SeedLink server")
                .arg(web.serverPort()));
}

TEST(ServedRecords, ofTextSayItAgain) {
  const QByteArray text = QByteArray("0123456789").repeated(100); // 1,000 bytes: 448 + 448 + 104
  const auto records = textRecords(text);
  ASSERT_EQ(records.size(), 3u);
  QByteArray back;
  for (const QByteArray& record : records) {
    EXPECT_EQ(record.size(), 512);
    back += recordText(record);
  }
  EXPECT_EQ(back, text);
  EXPECT_EQ(recordText(MiniSeedBytes().integers({1}).bytes()), "");
}
