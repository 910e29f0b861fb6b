#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkHandshake.h"

#include <gtest/gtest.h>

using namespace xov;

namespace {

constexpr char kHello3[] = "SeedLink v3.1 (2020.001) :: SLPROTO:3.1 CAP EXTREPLY NSWILDCARD BATCH";
constexpr char kHello4[] = "SeedLink v4.0 (RingServer/4) :: SLPROTO:4.0 SLPROTO:3.1 TIME";

// 2020-09-13 12:26:40 UTC is 1.6e9 seconds after 1970.
constexpr std::int64_t kTimeUs = 1600000000000000;

SeedLinkRequest request(const QString& stations) {
  SeedLinkRequest request;
  request.stations = parseSeedLinkStations(stations).value();
  request.program = "xov/1";
  return request;
}

/// What a client sends to a server that introduces itself so and agrees to everything.
QByteArray sentTo(const char* hello, const SeedLinkRequest& request) {
  SeedLinkHandshake handshake(request);
  QByteArray sent = handshake.begin();
  sent += *handshake.takeLine(hello);
  QByteArray next = *handshake.takeLine("An institution");
  while (!handshake.isDone()) {
    EXPECT_FALSE(next.isEmpty());
    sent += next;
    next = *handshake.takeLine("OK");
  }
  sent += next;
  return sent.replace("\r\n", "|");
}

/// The same for answers that the test gives behind those to HELLO; the error in their end.
struct Talk {
  QByteArray sent;
  QString error;
  QStringList refused;
  bool isDone = false;
};
Talk talk(const char* hello, const SeedLinkRequest& request, const std::vector<QByteArray>& answers) {
  SeedLinkHandshake handshake(request);
  Talk talk;
  std::vector<QByteArray> lines = {hello, "An institution"};
  lines.insert(lines.end(), answers.begin(), answers.end());
  for (const QByteArray& line : lines) {
    const Result<QByteArray> next = handshake.takeLine(line);
    talk.error = next.error();
    if (!next) break;
    talk.sent += *next;
  }
  talk.sent.replace("\r\n", "|");
  talk.refused = handshake.refused();
  talk.isDone = handshake.isDone();
  return talk;
}

} // namespace

TEST(SeedLinkHandshake, ofProtocol3NamesTheStationFirst) {
  EXPECT_EQ(sentTo(kHello3, request("GE_WLF:BHZ 00HH?,GR_GRA1")),
            "HELLO|STATION WLF GE|SELECT BHZ|SELECT 00HH?|DATA|STATION GRA1 GR|DATA|END|");
}

TEST(SeedLinkHandshake, ofProtocol4AsksForTheProtocolAndGivesItsName) {
  EXPECT_EQ(sentTo(kHello4, request("GE_WLF:BHZ,GR_*:!LOG")),
            "HELLO|SLPROTO 4.0|USERAGENT xov/1|STATION GE_WLF|SELECT *_B_H_Z|DATA|STATION GR_*|SELECT !*_L_O_G|DATA|"
            "END|");
}

TEST(SeedLinkHandshake, asksStationsWithoutAPlaceForWhatCameSince) {
  SeedLinkRequest asked = request("GE_WLF,GE_A*,GE_B*");
  asked.sinceUs = kTimeUs - 400000000; // 400 s before
  EXPECT_EQ(sentTo(kHello3, asked), "HELLO|STATION WLF GE|TIME 2020,09,13,12,20,00|STATION A* GE|TIME "
                                    "2020,09,13,12,20,00|STATION B* GE|TIME 2020,09,13,12,20,00|END|");
  asked.places["GE_WLF"] = {254, kTimeUs};
  asked.places["GE_A1"] = {254, kTimeUs};
  EXPECT_EQ(sentTo(kHello4, asked),
            "HELLO|SLPROTO 4.0|USERAGENT xov/1|STATION GE_WLF|DATA 255|STATION GE_A*|DATA ALL 2020-09-13T12:26:40Z|"
            "STATION GE_B*|DATA ALL 2020-09-13T12:20:00Z|END|");
}

TEST(SeedLinkHandshake, goesOnBehindTheLastPacket) {
  SeedLinkRequest asked = request("GE_WLF");
  asked.places["GE_WLF"] = {0xff, kTimeUs};
  EXPECT_EQ(sentTo(kHello3, asked), "HELLO|STATION WLF GE|DATA 000100 2020,09,13,12,26,40|END|");
  EXPECT_EQ(sentTo(kHello4, asked), "HELLO|SLPROTO 4.0|USERAGENT xov/1|STATION GE_WLF|DATA 256|END|");
}

TEST(SeedLinkHandshake, beginsTheNumbersOfProtocol3AnewBehindTheLargest) {
  SeedLinkRequest asked = request("GE_WLF");
  asked.places["GE_WLF"] = {0xffffff, kTimeUs};
  EXPECT_EQ(sentTo(kHello3, asked), "HELLO|STATION WLF GE|DATA 000000 2020,09,13,12,26,40|END|");
}

TEST(SeedLinkHandshake, goesOnWithWildcardsAtTheEarliestTimeOfTheirStations) {
  SeedLinkRequest asked = request("GR_*");
  asked.places["GR_A"] = {5, kTimeUs + 60000000};
  asked.places["GR_B"] = {9, kTimeUs};
  asked.places["GE_C"] = {2, 0};
  EXPECT_EQ(sentTo(kHello3, asked), "HELLO|STATION * GR|TIME 2020,09,13,12,26,40|END|");
  EXPECT_EQ(sentTo(kHello4, asked),
            "HELLO|SLPROTO 4.0|USERAGENT xov/1|STATION GR_*|DATA ALL 2020-09-13T12:26:40Z|END|");
}

TEST(SeedLinkHandshake, givesUserAndPasswordToProtocol4Only) {
  SeedLinkRequest asked = request("GE_WLF");
  asked.user = "me";
  asked.password = "secret";
  EXPECT_EQ(sentTo(kHello4, asked),
            "HELLO|SLPROTO 4.0|USERAGENT xov/1|AUTH USERPASS me secret|STATION GE_WLF|DATA|END|");
  EXPECT_EQ(talk(kHello3, asked, {}).error, "the server knows no users: it speaks protocol 3 of SeedLink");
  EXPECT_EQ(talk(kHello4, asked, {"OK", "OK", "ERROR AUTH unknown user"}).error,
            "the server refuses the user's name or password: AUTH unknown user");
  asked.password = "two words";
  EXPECT_EQ(talk(kHello4, asked, {}).error, "expected a user's name and password without blanks");
}

TEST(SeedLinkHandshake, leavesOutStationsThatTheServerRefuses) {
  const Talk some =
      talk(kHello4, request("GE_A:BHZ,GE_B"), {"OK", "OK", "ERROR ARGUMENTS no such station", "OK", "OK"});
  EXPECT_EQ(some.sent, "SLPROTO 4.0|USERAGENT xov/1|STATION GE_A|STATION GE_B|DATA|END|");
  EXPECT_TRUE(some.isDone);
  EXPECT_EQ(some.refused, QStringList{"GE_A: the server refuses 'STATION GE_A': ARGUMENTS no such station"});
}

TEST(SeedLinkHandshake, failsWhereAllStationsAreRefused) {
  const Talk none = talk(kHello3, request("GE_A:BHZ"), {"ERROR"});
  EXPECT_EQ(none.error, "GE_A: the server refuses 'STATION A GE'");
  EXPECT_FALSE(none.isDone);
}

TEST(SeedLinkHandshake, needsAServerThatTakesWildcards) {
  EXPECT_EQ(talk("SeedLink v3.0 (old)", request("GR_*"), {}).error,
            "GR_*: the server takes no wildcards in codes of stations");
}

TEST(SeedLinkHandshake, refusesWhatIsNoSeedLinkServer) {
  EXPECT_EQ(talk("SSH-2.0-OpenSSH", request("GE_A"), {}).error,
            "found 'SSH-2.0-OpenSSH', expected a SeedLink server");
  EXPECT_EQ(talk(kHello3, request("GE_A"), {"220 ready"}).error, "found '220 ready', expected an answer to STATION");
}

TEST(SeedLinkHandshake, goesOnWhereTheServerKnowsNoUserAgent) {
  EXPECT_TRUE(talk(kHello4, request("GE_A"), {"OK", "ERROR UNSUPPORTED", "OK", "OK"}).isDone);
}
