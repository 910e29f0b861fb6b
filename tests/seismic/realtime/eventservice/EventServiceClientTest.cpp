#include "XOV_Graphics/seismic/realtime/eventservice/EventServiceClient.h"

#include "tests/seismic/realtime/EventWords.h"
#include "tests/seismic/realtime/eventservice/WebServer.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>

#include <QNetworkProxy>
#include <QTimer>

#include <algorithm>
#include <cmath>

using namespace xov;
using test::eventText;
using test::eventWords;
using test::waitUntil;
using test::webAnswer;
using test::WebServer;

namespace {

QByteArray eventsAnswer(const char* words) { return webAnswer(200, eventText(words)); }

/// The display shows half past twelve of the day that the events are of.
EventServiceSettings quickSettings(const WebServer& server) {
  QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
  EventServiceSettings settings;
  settings.address = server.address();
  settings.everySeconds = 0.002;
  settings.longestPauseSeconds = 0.004;
  settings.now = [] { return QDateTime(QDate(2020, 9, 13), QTime(12, 30), Qt::UTC); };
  return settings;
}

/// A display that shows the clock's time asks for changes only, of events of any age.
EventServiceSettings settingsForChanges(const WebServer& server) {
  EventServiceSettings settings = quickSettings(server);
  settings.address = server.address("/fdsnws/event/1/query?starttime=2000-01-01");
  settings.now = {};
  settings.wholeEvery = 3;
  return settings;
}

/// What a client tells.
class Asked {
public:
  explicit Asked(EventServiceSettings settings) : client_(std::move(settings)) {
    client_.onEvents([this](const HypocentreArray& events) { changes_.append(eventWords(events)); });
    client_.onMessage([this](const QString& line) { messages_.append(line); });
    client_.start();
  }
  bool becomes(const char* events) {
    return waitUntil([&] { return !changes_.isEmpty() && changes_.back() == QLatin1String(events); });
  }
  EventServiceClient& client() { return client_; }
  const QStringList& changes() const { return changes_; }
  const QStringList& messages() const { return messages_; }

private:
  QStringList changes_;
  QStringList messages_;
  EventServiceClient client_;
};

struct Fault {
  const char* name;
  WebServer::Answer answer;
  const char* line;
  int times = 2;
  double longestSeconds = 10;
};

WebServer::Answer bytes(const QByteArray& answer) {
  return [answer](QTcpSocket& socket) {
    socket.write(answer);
    socket.disconnectFromHost();
  };
}

// Sends blanks for as long as somebody takes them.
void sendWithoutEnd(QTcpSocket& socket) {
  socket.write("HTTP/1.1 200 x\r\nConnection: close\r\n\r\n");
  auto* const timer = new QTimer(&socket);
  QObject::connect(timer, &QTimer::timeout, &socket, [&socket] {
    if (socket.isOpen() && socket.bytesToWrite() < 1 << 20) socket.write(QByteArray(1 << 18, ' '));
  });
  timer->start(0);
}

// A byte now and then.
void sendSlowly(QTcpSocket& socket) {
  socket.write("HTTP/1.1 200 x\r\nConnection: close\r\n\r\n");
  auto* const timer = new QTimer(&socket);
  QObject::connect(timer, &QTimer::timeout, &socket, [&socket] {
    if (socket.isOpen()) socket.write("#");
  });
  timer->start(2);
}

// A connection that ends before there is an answer is made anew before a question has failed.
constexpr int kAttempts = 9;

const Fault kFaults[] = {
    {"badRequest", bytes(webAnswer(400, "no")), "does not understand the question (status 400)"},
    {"unauthorized", bytes(webAnswer(401, "no", "WWW-Authenticate: Basic realm=\"x\"\r\n")), "(status 401)"},
    {"notThere", bytes(webAnswer(404, "no")), "there is no event service (status 404)"},
    {"tooMany", bytes(webAnswer(413, "no")), "more events than it gives (status 413)"},
    {"noTime", bytes(webAnswer(503, "no")), "the service has no time (status 503)"},
    {"failed", bytes(webAnswer(599, "no")), "the service has failed (status 599)"},
    {"garbage", bytes(webAnswer(200, "<html>welcome</html>")), "found <html>, expected <quakeml>"},
    {"noWeb", bytes("\x01\x02\x03 no web server\r\n\r\n"), "the service ", kAttempts},
    {"closed", [](QTcpSocket& socket) { socket.disconnectFromHost(); }, "the service has broken its answer off",
     kAttempts},
    {"cut", bytes(eventsAnswer("a:10:9.0 b:20:9.0").chopped(20)), "the service has broken its answer off"},
    {"endless", sendWithoutEnd, "the answer is longer than 1000000 bytes"},
    {"large", bytes(webAnswer(200, QByteArray(1000001, '#'))), "the answer is longer than 1000000 bytes"},
    {"slow", sendSlowly, "the service takes too long", 1, 0.3},
    {"silent", [](QTcpSocket&) {}, "the service takes too long", 1, 0.3},
    {"circle", bytes(webAnswer(302, "", "Location: /fdsnws/event/1/query\r\n")), "redirects again and again", 7},
    {"file", bytes(webAnswer(302, "", "Location: file:///etc/hostname\r\n")), "redirects to no web address"},
};

class EveryServiceFault : public testing::TestWithParam<Fault> {};

} // namespace

TEST(EventServiceClient, asksForTheEventsOfItsWindow) {
  WebServer server;
  server.then(eventsAnswer("b:20:5.0 a:10:4.0"));
  EventServiceSettings settings = quickSettings(server);
  settings.windowSeconds = 3 * 86400.0;
  Asked asked(settings);
  EXPECT_TRUE(asked.becomes("a:10:4.0 b:20:5.0"));
  EXPECT_EQ(server.path(0), "/fdsnws/event/1/query");
  EXPECT_EQ(server.parameter(0, "starttime"), "2020-09-10T12:30:00");
  EXPECT_EQ(server.parameter(0, "endtime"), "2020-09-13T13:30:00");
  EXPECT_EQ(server.parameter(0, "format"), "text");
  EXPECT_TRUE(asked.messages().isEmpty());
}

TEST(EventServiceClient, tellsOfEventsThatAreNewChangedAndDeleted) {
  WebServer server;
  for (const char* events : {"a:10:4.0", "a:10:4.0", "a:10:4.0 b:20:5.0", "a:11:4.2 b:20:5.0", "b:20:5.0"})
    server.then(eventsAnswer(events));
  server.then(webAnswer(204, ""));
  Asked asked(quickSettings(server));
  EXPECT_TRUE(asked.becomes(""));
  const QStringList expected = {"a:10:4.0", "a:10:4.0 b:20:5.0", "a:11:4.2 b:20:5.0", "b:20:5.0", ""};
  EXPECT_EQ(asked.changes(), expected);
}

TEST(EventServiceClient, asksForChangesInBetween) {
  WebServer server;
  for (const char* events : {"a:10:4.0 b:20:5.0", "a:11:4.2", "c:30:6.0", "a:11:4.2 c:30:6.0"})
    server.then(eventsAnswer(events));
  Asked asked(settingsForChanges(server));
  EXPECT_TRUE(waitUntil([&] { return server.requestCount() > 4; }));
  const QStringList expected = {"a:10:4.0 b:20:5.0", "a:11:4.2 b:20:5.0", "a:11:4.2 b:20:5.0 c:30:6.0",
                                "a:11:4.2 c:30:6.0"};
  EXPECT_EQ(asked.changes(), expected);
  // The first is for all events, then every third one.
  for (const std::size_t request : {0, 3})
    EXPECT_EQ(server.parameter(request, "updatedafter"), "");
  for (const std::size_t request : {1, 2, 4}) {
    const auto after = QDateTime::fromString(server.parameter(request, "updatedafter") + 'Z', Qt::ISODate);
    // Five minutes before the question before, so that nothing slips through.
    EXPECT_NEAR(double(after.secsTo(QDateTime::currentDateTimeUtc())), 300, 30);
  }
}

TEST(EventServiceClient, asksForAllWhereAServiceCannotTellChanges) {
  WebServer server;
  server.then(eventsAnswer("a:10:4.0"));
  server.then(webAnswer(400, "updatedafter is not supported"));
  server.then(eventsAnswer("b:20:5.0"));
  Asked asked(settingsForChanges(server));
  EXPECT_TRUE(asked.becomes("b:20:5.0"));
  EXPECT_TRUE(waitUntil([&] { return server.requestCount() > 4; }));
  EXPECT_NE(server.parameter(1, "updatedafter"), "");
  for (const std::size_t request : {2, 3, 4})
    EXPECT_EQ(server.parameter(request, "updatedafter"), "");
  EXPECT_TRUE(asked.messages().isEmpty()) << asked.messages().join('\n').toStdString();
}

TEST(EventServiceClient, asksForAllWhereEventsHaveNoIdentifiers) {
  WebServer server;
  server.then(webAnswer(200, "time,latitude,longitude,depth,mw\n2020-09-13T12:10:00,1,2,3,4\n"));
  Asked asked(settingsForChanges(server));
  EXPECT_TRUE(asked.becomes(":10:4.0"));
  EXPECT_TRUE(waitUntil([&] { return server.requestCount() > 3; }));
  EXPECT_EQ(server.parameter(2, "updatedafter"), "");
  EXPECT_EQ(server.parameter(3, "updatedafter"), "");
}

INSTANTIATE_TEST_SUITE_P(EventService, EveryServiceFault, testing::ValuesIn(kFaults),
                         [](const auto& fault) { return std::string(fault.param.name); });

TEST_P(EveryServiceFault, isOneLineAndTheEventsStay) {
  const Fault& fault = GetParam();
  WebServer server;
  server.then(eventsAnswer("a:10:4.0"));
  for (int i = 0; i < fault.times; ++i) // a question takes six of a circle
    server.then(fault.answer);
  server.then(eventsAnswer("a:10:4.0 b:20:5.0"));
  EventServiceSettings settings = quickSettings(server);
  settings.mostBytes = 1000000;
  settings.longestAnswerSeconds = fault.longestSeconds;
  Asked asked(settings);
  EXPECT_TRUE(asked.becomes("a:10:4.0 b:20:5.0"));
  EXPECT_EQ(asked.changes().size(), 2);
  const QStringList& said = asked.messages();
  ASSERT_EQ(said.size(), 2) << said.join('\n').toStdString();
  EXPECT_TRUE(said[0].startsWith(server.address().toString())) << said[0].toStdString();
  EXPECT_TRUE(said[0].contains(QLatin1String(fault.line))) << said[0].toStdString();
  EXPECT_FALSE(said[0].contains('\n'));
  EXPECT_EQ(said[1], server.address().toString() + ": answers again");
}

TEST(EventServiceClient, saysThatNobodyAnswers) {
  EventServiceSettings settings;
  {
    const WebServer gone;
    settings = quickSettings(gone);
  }
  Asked asked(settings);
  EXPECT_TRUE(waitUntil([&] { return !asked.messages().isEmpty(); }));
  EXPECT_EQ(asked.messages().front(), settings.address.toString() + ": nobody answers at that address");
}

TEST(EventServiceClient, followsARedirection) {
  WebServer server;
  server.then(webAnswer(301, "", "Location: /other/query?of=theirs\r\n"));
  server.then(eventsAnswer("a:10:4.0"));
  Asked asked(quickSettings(server));
  EXPECT_TRUE(asked.becomes("a:10:4.0"));
  EXPECT_EQ(server.path(1), "/other/query");
}

TEST(EventServiceClient, pausesTwiceAsLongAfterEachFailure) {
  WebServer server;
  server.then(webAnswer(503, ""));
  EventServiceSettings settings = quickSettings(server);
  settings.longestPauseSeconds = 0.02;
  Asked asked(settings);
  std::vector<int> pauses; // in milliseconds; a busy machine may miss some
  EXPECT_TRUE(waitUntil([&] {
    const int pause = int(std::lround(asked.client().pauseSeconds() * 1000));
    if (pause > 0 && (pauses.empty() || pauses.back() != pause)) pauses.push_back(pause);
    return pause == 20;
  }));
  EXPECT_TRUE(std::ranges::is_sorted(pauses));
  for (const int pause : pauses)
    EXPECT_TRUE(pause == 2 || pause == 4 || pause == 8 || pause == 16 || pause == 20) << pause;
  EXPECT_GE(server.requestCount(), 5); // 2, 4, 8, 16, and no longer than 20
}

TEST(EventServiceClient, pausesAsLongAsTheServiceWants) {
  for (const double longest : {900.0, 60.0}) {
    WebServer server;
    server.then(webAnswer(429, "", "Retry-After: 120\r\n"));
    EventServiceSettings settings = quickSettings(server);
    settings.everySeconds = 10;
    settings.longestPauseSeconds = longest;
    Asked asked(settings);
    EXPECT_TRUE(waitUntil([&] { return asked.client().pauseSeconds() > 0; }));
    EXPECT_EQ(asked.client().pauseSeconds(), std::min(longest, 120.0));
  }
}

TEST(EventServiceClient, showsNoUserPasswordOrParameter) {
  WebServer server;
  server.then(webAnswer(500, ""));
  server.then(webAnswer(200, "<html/>"));
  server.then(webAnswer(204, ""));
  EventServiceSettings settings = quickSettings(server);
  settings.address = server.address("/fdsnws/event/1/query?token=hidden");
  settings.address.setUserName("somebody");
  settings.address.setPassword("secret");
  Asked asked(settings);
  EXPECT_TRUE(waitUntil([&] { return asked.messages().size() == 3; }));
  const QString all = asked.messages().join('\n');
  for (const char* hidden : {"somebody", "secret", "token", "hidden"})
    EXPECT_FALSE(all.contains(QLatin1String(hidden))) << all.toStdString();
  EXPECT_EQ(server.parameter(0, "token"), "hidden");
}

TEST(EventServiceClient, keepsTheLatestEvents) {
  WebServer server;
  server.then(eventsAnswer("a:10:4.0 d:40:4.0 b:20:4.0 c:30:4.0"));
  EventServiceSettings settings = quickSettings(server);
  settings.mostEvents = 2;
  Asked asked(settings);
  EXPECT_TRUE(asked.becomes("c:30:4.0 d:40:4.0"));
}

TEST(EventServiceClient, mayBeStoppedByWhatItTells) {
  WebServer server;
  server.then(eventsAnswer("a:10:4.0"));
  EventServiceClient client(quickSettings(server));
  client.onEvents([&](const HypocentreArray&) { client.stop(); });
  client.start();
  EXPECT_TRUE(waitUntil([&] { return client.answerCount() == 1; }));
  int turns = 0;
  EXPECT_TRUE(waitUntil([&] { return ++turns > 20; }));
  EXPECT_EQ(server.requestCount(), 1);
}

TEST(EventServiceClient, mayGoWhileAnAnswerIsAwaited) {
  WebServer server;
  server.then([](QTcpSocket&) {});
  auto client = std::make_unique<EventServiceClient>(quickSettings(server));
  int calls = 0;
  client->onMessage([&](const QString&) { ++calls; });
  client->start();
  EXPECT_TRUE(waitUntil([&] { return server.requestCount() == 1; }));
  client.reset();
  int turns = 0;
  EXPECT_TRUE(waitUntil([&] { return ++turns > 20; }));
  EXPECT_EQ(calls, 0);
}
