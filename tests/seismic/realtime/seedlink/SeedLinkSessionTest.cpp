#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkSession.h"

#include <gtest/gtest.h>

#include <string>

// What a server says to one client, without sockets.

using namespace xov;

namespace {

constexpr std::int64_t kSecondUs = 1000000;

/// A record of ten seconds of a channel, from that second of 1970 on; its bytes are one letter.
ServedRecord record(const char* station, const char* channel, int second, char letter, qsizetype size = 512) {
  return {station, "00", channel, '2', second * kSecondUs, (second + 10) * kSecondUs, QByteArray(size, letter)};
}

/// Two channels of GE.WLF in turn, then one of GE.APE: records 1 to 5.
std::vector<ServedRecord> fiveRecords() {
  return {record("GE_WLF", "BHZ", 10, 'a'), record("GE_WLF", "BHN", 10, 'b'), record("GE_WLF", "BHZ", 20, 'c'),
          record("GE_WLF", "BHN", 20, 'd'), record("GE_APE", "BHZ", 30, 'e')};
}

class SeedLinkSessionTest : public ::testing::Test {
protected:
  QByteArray say(const char* line) { return session.answer(line, records, released); }
  /// Says lines that are all agreed to.
  void agree(std::initializer_list<const char*> lines) {
    for (const char* line : lines)
      EXPECT_EQ(say(line), "OK\r\n") << line;
  }
  QByteArray stream() { return session.packets(records, released, 1 << 20); }
  /// The letters of the records that come once the client has said END.
  std::string sent() {
    EXPECT_EQ(say("END"), "");
    return letters(stream());
  }
  /// Of packets: the letter of each record, in capitals where its number is not that of its place.
  std::string letters(const QByteArray& bytes) const {
    SeedLinkInput input;
    input.append(bytes);
    std::string all;
    for (;;) {
      const auto item = input.takeItem();
      EXPECT_TRUE(item) << item.error().toStdString();
      if (!item || !*item) return all;
      if (!(*item)->packet) {
        all += (*item)->line.toStdString();
        continue;
      }
      const char letter = (*item)->packet->payload.at(0);
      all += (*item)->packet->sequence == std::uint64_t(letter - 'a' + 1) ? letter : char(letter - 'a' + 'A');
    }
  }

  SeedLinkServerSettings settings;
  std::vector<ServedRecord> records = fiveRecords();
  std::size_t released = 5;
  SeedLinkSession session{settings};
};

TEST_F(SeedLinkSessionTest, introducesItselfWithTheProtocolsThatItSpeaks) {
  EXPECT_TRUE(say("hello").startsWith("SeedLink v4.0 (XOV Graphics) :: SLPROTO:4.0 SLPROTO:3.1 "));
  settings.protocol = 3;
  EXPECT_TRUE(say("HELLO").startsWith("SeedLink v3.1 (XOV Graphics) :: SLPROTO:3.1 "));
  EXPECT_EQ(say("SLPROTO 4.0"), "ERROR\r\n");
  settings.protocol = 4;
  EXPECT_EQ(say("SLPROTO 5.0"), "ERROR\r\n");
  EXPECT_EQ(say("SLPROTO"), "ERROR\r\n");
  EXPECT_EQ(say("SLPROTO 4.0"), "OK\r\n");
  EXPECT_EQ(say("SLPROTO 5.0"), "ERROR UNSUPPORTED no such protocol\r\n");
}

TEST_F(SeedLinkSessionTest, namesAReasonInProtocol4Only) {
  for (const char* line : {"SELECT BHZ", "DATA", "END", "USERAGENT x", "nonsense", ""})
    EXPECT_EQ(say(line), "ERROR\r\n") << line;
  agree({"SLPROTO 4.0", "USERAGENT x"});
  for (const char* line : {"SELECT BHZ", "DATA", "END", "nonsense", ""})
    EXPECT_EQ(say(line), "ERROR UNEXPECTED expected STATION first\r\n") << line;
  agree({"STATION GE_WLF"});
  EXPECT_EQ(say("nonsense"), "ERROR UNSUPPORTED no such command\r\n");
  EXPECT_EQ(say("TIME 1970,1,1,0,0,10"), "ERROR UNSUPPORTED no such command\r\n"); // of protocol 3
  EXPECT_FALSE(session.isOver());
}

TEST_F(SeedLinkSessionTest, knowsItsUserByNameAndPassword) {
  settings.user = QStringLiteral("me");
  settings.password = QStringLiteral("secret");
  agree({"SLPROTO 4.0"});
  EXPECT_EQ(say("STATION GE_WLF"), "ERROR UNAUTHORIZED expected AUTH first\r\n");
  for (const char* line : {"AUTH USERPASS me wrong", "AUTH USERPASS you secret", "AUTH JWT me secret", "AUTH"})
    EXPECT_EQ(say(line), "ERROR AUTH user and password are not known\r\n") << line;
  agree({"AUTH USERPASS me secret", "STATION GE_WLF"});
}

TEST_F(SeedLinkSessionTest, refusesStationsThatItHasNothingOf) {
  for (const char* line : {"STATION XXX GE", "STATION WLF XX", "STATION WLF", "STATION"})
    EXPECT_EQ(say(line), "ERROR\r\n") << line;
  agree({"SLPROTO 4.0"});
  for (const char* line : {"STATION GE_XXX", "STATION"})
    EXPECT_EQ(say(line), "ERROR ARGUMENTS no such station\r\n") << line;
  agree({"STATION GE_WLF", "STATION GE_*", "STATION ??_APE"});
}

TEST_F(SeedLinkSessionTest, boundsWhatAClientMaySelect) {
  agree({"SLPROTO 4.0", "STATION GE_WLF"});
  for (int i = 0; i < 1000; ++i)
    ASSERT_EQ(say("SELECT *_B_H_Z"), "OK\r\n") << i;
  EXPECT_EQ(say("SELECT *_B_H_Z"), "ERROR LIMIT too many selectors\r\n");
  for (int i = 1; i < 10000; ++i)
    ASSERT_EQ(say("STATION GE_WLF"), "OK\r\n") << i;
  EXPECT_EQ(say("STATION GE_WLF"), "ERROR LIMIT too many stations\r\n");
}

TEST_F(SeedLinkSessionTest, sendsOnlyWhatComesFromNowOnWhereNothingElseIsWanted) {
  released = 3;
  agree({"SLPROTO 4.0", "STATION GE_*", "DATA"});
  EXPECT_EQ(say("END"), "");
  EXPECT_TRUE(session.isAtEnd(released));
  EXPECT_EQ(stream(), "");
  released = 5;
  EXPECT_FALSE(session.isAtEnd(released));
  EXPECT_EQ(letters(stream()), "de");
  EXPECT_TRUE(session.isAtEnd(released));
}

TEST_F(SeedLinkSessionTest, goesOnAtANumberOfDecimalDigitsInProtocol4) {
  agree({"SLPROTO 4.0", "STATION GE_*"});
  EXPECT_EQ(say("DATA soon"), "ERROR ARGUMENTS expected a sequence number\r\n");
  EXPECT_EQ(say("DATA -2"), "ERROR ARGUMENTS expected a sequence number\r\n");
  agree({"DATA 4"});
  EXPECT_EQ(sent(), "de");
}

TEST_F(SeedLinkSessionTest, goesOnAtANumberOfHexadecimalDigitsInProtocol3) {
  while (records.size() < 12)
    records.push_back(record("GE_WLF", "BHZ", 40, char('a' + records.size())));
  released = records.size();
  EXPECT_EQ(say("STATION WLF GE"), "OK\r\n");
  EXPECT_EQ(say("DATA 00000g"), "ERROR\r\n");
  EXPECT_EQ(say("DATA 00000B"), "OK\r\n");
  EXPECT_EQ(sent(), "kl"); // the eleventh and the twelfth
}

TEST_F(SeedLinkSessionTest, takesNumberZeroAndAllForTheBeginningAndMinusOneForNow) {
  for (const auto& [line, expected] :
       {std::pair("DATA 0", "abcd"), std::pair("DATA all", "abcd"), std::pair("DATA -1", "")}) {
    SeedLinkSession own(settings);
    for (const char* before : {"SLPROTO 4.0", "STATION GE_WLF", line})
      EXPECT_EQ(own.answer(before, records, released), "OK\r\n") << before;
    own.answer("END", records, released);
    EXPECT_EQ(letters(own.packets(records, released, 1 << 20)), expected) << line;
  }
}

TEST_F(SeedLinkSessionTest, sendsRecordsThatReachIntoASpanOfTime) {
  // 10-20, 20-30 and 30-40 s: the first ends before, the last begins behind it.
  agree({"SLPROTO 4.0", "STATION GE_*", "DATA ALL 1970-01-01T00:00:21Z 1970-01-01T00:00:29Z"});
  EXPECT_EQ(sent(), "cd");
}

TEST_F(SeedLinkSessionTest, takesTimesOfProtocol3WithOrWithoutZeros) {
  EXPECT_EQ(say("STATION * GE"), "OK\r\n");
  for (const char* line : {"TIME", "TIME soon", "TIME 1970,1,1,0,0", "TIME 1970,13,1,0,0,0"})
    EXPECT_EQ(say(line), "ERROR\r\n") << line;
  EXPECT_EQ(say("TIME 1970,1,1,0,0,21 1970,01,01,00,00,29"), "OK\r\n");
  EXPECT_EQ(sent(), "cd");
}

TEST_F(SeedLinkSessionTest, selectsChannelsOfProtocol3AndNothingButData) {
  agree({"STATION WLF GE", "SELECT BHZ.D", "DATA ALL", "STATION APE GE", "SELECT 00BHZ.L", "DATA ALL"});
  EXPECT_EQ(sent(), "ac"); // selectors of logs alone select no data
}

TEST_F(SeedLinkSessionTest, selectsAllChannelsWhereEachSignStandsForAny) {
  agree({"STATION WLF GE", "SELECT ?????", "DATA ALL"});
  EXPECT_EQ(sent(), "abcd");
}

TEST_F(SeedLinkSessionTest, leavesOutInProtocol4WhatASelectorExcludes) {
  agree({"SLPROTO 4.0", "STATION GE_WLF", "SELECT !*_B_H_N", "DATA ALL"});
  EXPECT_EQ(sent(), "ac");
  SeedLinkSession both(settings);
  for (const char* line :
       {"SLPROTO 4.0", "STATION GE_WLF", "SELECT 00_B_H_N.2D:native", "SELECT !*_B_H_Z", "DATA ALL"})
    EXPECT_EQ(both.answer(line, records, released), "OK\r\n") << line;
  both.answer("END", records, released);
  EXPECT_EQ(letters(both.packets(records, released, 1 << 20)), "bd");
}

TEST_F(SeedLinkSessionTest, givesProtocol3OnlyRecordsThatFitIntoItsPackets) {
  records[0].format = '3';
  records[2].bytes = QByteArray(4096, 'c');
  agree({"STATION WLF GE", "DATA ALL"});
  EXPECT_EQ(sent(), "bd");
}

TEST_F(SeedLinkSessionTest, endsAfterWhatWasThereWhenItIsToFetch) {
  agree({"SLPROTO 4.0", "STATION GE_APE", "FETCH 1"});
  EXPECT_EQ(sent(), "eEND");
  EXPECT_TRUE(session.isOver());
  SeedLinkSession other(settings);
  for (const char* line : {"STATION APE GE", "DATA ALL"})
    EXPECT_EQ(other.answer(line, records, released), "OK\r\n") << line;
  EXPECT_EQ(other.answer("ENDFETCH", records, released), "");
  EXPECT_EQ(letters(other.packets(records, released, 1 << 20)), "eEND");
}

TEST_F(SeedLinkSessionTest, answersNothingButQuestionsAmongPackets) {
  agree({"SLPROTO 4.0", "STATION GE_WLF", "DATA ALL"});
  EXPECT_EQ(say("END"), "");
  for (const char* line : {"STATION GE_APE", "DATA ALL", "nonsense"})
    EXPECT_EQ(say(line), "") << line;
  EXPECT_TRUE(say("HELLO").startsWith("SeedLink v4.0"));
  EXPECT_TRUE(say("INFO ID").startsWith("SEJI"));
  EXPECT_EQ(letters(stream()), "abcd");
  EXPECT_EQ(say("BYE"), "");
  EXPECT_TRUE(session.isOver());
}

TEST_F(SeedLinkSessionTest, sendsNoMoreAtOnceThanItIsAskedFor) {
  agree({"STATION WLF GE", "DATA ALL"});
  EXPECT_EQ(say("END"), "");
  EXPECT_EQ(session.packets(records, released, 1).size(), 520); // it stops when it has as much
  EXPECT_EQ(session.packets(records, released, 521).size(), 2 * 520);
  EXPECT_EQ(letters(stream()), "d");
}

/// What a client gets of four records with faults of a kind in every third packet.
class SeedLinkSessionFaults : public SeedLinkSessionTest {
protected:
  QByteArray received(int SeedLinkFaults::*fault) {
    settings.faults.*fault = 3;
    agree({"STATION WLF GE", "DATA ALL"});
    EXPECT_EQ(say("END"), "");
    return stream();
  }
};

TEST_F(SeedLinkSessionFaults, mayRepeatAPacket) {
  EXPECT_EQ(letters(received(&SeedLinkFaults::duplicateEvery)), "abccd");
}

TEST_F(SeedLinkSessionFaults, maySendAPacketBehindTheNext) {
  EXPECT_EQ(letters(received(&SeedLinkFaults::reorderEvery)), "abdc");
}

TEST_F(SeedLinkSessionFaults, maySendTheLastOneLateWithoutANext) {
  released = 3;
  EXPECT_EQ(letters(received(&SeedLinkFaults::reorderEvery)), "abc");
}

TEST_F(SeedLinkSessionFaults, mayCloseInPlaceOfAPacketOrWithinIt) {
  EXPECT_EQ(letters(received(&SeedLinkFaults::dropEvery)), "ab");
  EXPECT_TRUE(session.isOver());
  settings.faults.dropEvery = 0;
  settings.faults.cutEvery = 3;
  SeedLinkSession other(settings);
  for (const char* line : {"STATION WLF GE", "DATA ALL", "END"})
    other.answer(line, records, released);
  EXPECT_EQ(other.packets(records, released, 1 << 20).size(), 2 * 520 + 260);
  EXPECT_TRUE(other.isOver());
}

TEST_F(SeedLinkSessionFaults, mayFallSilent) {
  EXPECT_EQ(letters(received(&SeedLinkFaults::stallEvery)), "ab");
  EXPECT_FALSE(session.isOver());
  EXPECT_TRUE(session.isAtEnd(released));
  EXPECT_EQ(say("HELLO"), "");
  EXPECT_EQ(stream(), "");
}

TEST_F(SeedLinkSessionFaults, maySendWhatIsNoPacket) {
  const QByteArray bytes = received(&SeedLinkFaults::garbageEvery);
  EXPECT_EQ(letters(bytes.first(2 * 520)), "ab");
  SeedLinkInput input;
  input.append(bytes.sliced(2 * 520));
  EXPECT_FALSE(input.takeItem());
}

} // namespace
