// Watches and clients that their host destroys in the middle of being called back. What reads memory that is gone is
// seen by AddressSanitizer.
#include "XOV_Graphics/seismic/realtime/EventWatch.h"
#include "XOV_Graphics/seismic/realtime/eventservice/EventServiceClient.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkClient.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStreams.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/seismic/realtime/EventWords.h"
#include "tests/seismic/realtime/eventservice/WebServer.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QNetworkProxy>

namespace xov {
namespace {

using test::waitUntil;

// What a host has that lets its client go at the first word; more words would be one too many.
template <typename Client>
struct Leaver {
  std::unique_ptr<Client> client;
  int told = 0;

  void leave() {
    ++told;
    client.reset();
  }
  bool isLeft() const {
    return waitUntil([this] { return !client; });
  }
};

void letGoLater() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST(ClientHosts, mayDestroyAWatchThatTellsOfEvents) {
  const test::TemporaryFiles files;
  files.write("events", test::eventText("a:10:4.0"));
  Leaver<EventWatch> host;
  host.client = std::make_unique<EventWatch>(EventWatchSettings{files.folder()});
  host.client->onEvents([&](const HypocentreArray& events) {
    host.leave();
    EXPECT_EQ(events.size(), 1u) << "what it told is still there";
  });
  host.client->start();
  EXPECT_TRUE(host.isLeft());
  letGoLater();
  EXPECT_EQ(host.told, 1);
}

TEST(ClientHosts, mayDestroyAWatchThatTellsOfFaults) {
  Leaver<EventWatch> host;
  EventWatchSettings settings;
  settings.path = QStringLiteral("/no/such/folder");
  settings.settleSeconds = 0.001;
  settings.pollSeconds = 0.001;
  host.client = std::make_unique<EventWatch>(settings);
  host.client->onMessage([&](const QString& line) {
    host.leave();
    EXPECT_TRUE(line.contains(QStringLiteral("/no/such/folder")));
  });
  host.client->start();
  EXPECT_TRUE(host.isLeft());
  letGoLater();
  EXPECT_EQ(host.told, 1);
}

EventServiceSettings serviceSettings(const test::WebServer& server) {
  QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
  EventServiceSettings settings;
  settings.address = server.address();
  settings.everySeconds = 0.001;
  settings.now = [] { return QDateTime(QDate(2020, 9, 13), QTime(12, 30), Qt::UTC); };
  return settings;
}

TEST(ClientHosts, mayDestroyAServiceClientThatTellsOfEvents) {
  test::WebServer server;
  server.then(test::webAnswer(200, test::eventText("a:10:4.0")));
  Leaver<EventServiceClient> host;
  host.client = std::make_unique<EventServiceClient>(serviceSettings(server));
  host.client->onEvents([&](const HypocentreArray& events) {
    host.leave();
    EXPECT_EQ(events.size(), 1u);
  });
  host.client->start();
  EXPECT_TRUE(host.isLeft());
  letGoLater();
  EXPECT_EQ(host.told, 1);
}

TEST(ClientHosts, mayDestroyAServiceClientThatTellsOfFaults) {
  test::WebServer server;
  server.then(test::webAnswer(500, "no"));
  Leaver<EventServiceClient> host;
  host.client = std::make_unique<EventServiceClient>(serviceSettings(server));
  host.client->onMessage([&](const QString& line) {
    host.leave();
    EXPECT_FALSE(line.isEmpty());
  });
  host.client->start();
  EXPECT_TRUE(host.isLeft());
  letGoLater();
  EXPECT_EQ(host.told, 1);
}

// A server that says what it is told to at once, to anybody.
class Speaker {
public:
  explicit Speaker(QByteArray words) : words_(std::move(words)) {
    EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
    QObject::connect(&server_, &QTcpServer::newConnection, &server_,
                     [this] { server_.nextPendingConnection()->write(words_); });
  }
  SeedLinkSettings settings() const {
    SeedLinkSettings settings;
    settings.server.host = QStringLiteral("127.0.0.1");
    settings.server.port = server_.serverPort();
    settings.stations.resize(1);
    settings.shortestPauseSeconds = 0.001;
    return settings;
  }

private:
  QByteArray words_;
  QTcpServer server_;
};

TEST(ClientHosts, mayDestroyASeedLinkClientThatTellsOfFaults) {
  const Speaker server("no greeting\r\nat all\r\n");
  Leaver<SeedLinkClient> host;
  host.client = std::make_unique<SeedLinkClient>(server.settings());
  host.client->onMessage([&](const QString& line) {
    host.leave();
    EXPECT_TRUE(line.contains(QStringLiteral("127.0.0.1")));
  });
  host.client->start();
  EXPECT_TRUE(host.isLeft());
  letGoLater();
  EXPECT_EQ(host.told, 1);
}

TEST(ClientHosts, mayDestroyAnInquiryThatAnswers) {
  const Speaker server("no greeting\r\nat all\r\n");
  Leaver<SeedLinkInquiry> host;
  host.client = std::make_unique<SeedLinkInquiry>(server.settings().server, 10, [&](const auto& streams) {
    host.leave();
    EXPECT_FALSE(streams);
  });
  EXPECT_TRUE(host.isLeft());
  letGoLater();
  EXPECT_EQ(host.told, 1);
}

} // namespace
} // namespace xov
