#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkPacket.h"

#include "XOV_Graphics/seismic/realtime/TimerMilliseconds.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace xov;

namespace {

const QByteArray kRecord(512, 'r');

std::optional<SeedLinkInput::Item> next(SeedLinkInput& input) {
  Result<std::optional<SeedLinkInput::Item>> item = input.takeItem();
  EXPECT_TRUE(item) << item.error().toStdString();
  return *item;
}

QString problemOf(const QByteArray& bytes) {
  SeedLinkInput input;
  input.append(bytes);
  return input.takeItem().error();
}

// "SE", miniSEED 3, data, 5 bytes of payload, sequence number 0x0102030405060708, station GE_WLF.
const QByteArray kPacket4 = QByteArray("SE3D\x05\0\0\0\x08\x07\x06\x05\x04\x03\x02\x01\x06GE_WLFhello", 28);

} // namespace

TEST(SeedLinkPacket, ofProtocol3HasSixHexadecimalDigitsAndARecord) {
  SeedLinkInput input;
  input.append("SL00FFa1" + kRecord);
  const auto item = next(input);
  ASSERT_TRUE(item && item->packet);
  EXPECT_EQ(item->packet->kind, SeedLinkPacket::Kind::Record);
  EXPECT_EQ(item->packet->sequence, 65441u); // 0xffa1 = 15·4096 + 15·256 + 10·16 + 1
  EXPECT_EQ(item->packet->payload, kRecord);
  EXPECT_FALSE(next(input));
}

TEST(SeedLinkPacket, ofProtocol4HasLittleEndianNumbersAndAStation) {
  SeedLinkInput input;
  input.append(kPacket4);
  const auto item = next(input);
  ASSERT_TRUE(item && item->packet);
  EXPECT_EQ(item->packet->kind, SeedLinkPacket::Kind::Record);
  EXPECT_EQ(item->packet->format, '3');
  EXPECT_EQ(item->packet->sequence, 72623859790382856u); // 0x0102030405060708
  EXPECT_EQ(item->packet->station, "GE_WLF");
  EXPECT_EQ(item->packet->payload, "hello");
}

TEST(SeedLinkPacket, isWrittenAsItIsRead) {
  SeedLinkInput input;
  input.append(kPacket4);
  EXPECT_EQ(seedLinkBytes(*next(input)->packet, 4), kPacket4);
  const QByteArray packet3 = "SL00FFA1" + kRecord;
  input.append(packet3);
  EXPECT_EQ(seedLinkBytes(*next(input)->packet, 3), packet3);
  const QByteArray information3 = "SLINFO *" + kRecord;
  input.append(information3);
  EXPECT_EQ(seedLinkBytes(*next(input)->packet, 3), information3);
}

TEST(SeedLinkPacket, mayArriveByteByByte) {
  const QByteArray all = "SL000001" + kRecord + kPacket4 + "SLINFO  " + kRecord + "END";
  SeedLinkInput input;
  std::vector<char> formats;
  QByteArray line;
  for (const char byte : all) {
    input.append(QByteArrayView(&byte, 1));
    if (const auto item = next(input)) {
      if (item->packet) formats.push_back(item->packet->format);
      line = item->line;
    }
  }
  EXPECT_EQ(formats, (std::vector<char>{'2', '3', '2'}));
  EXPECT_EQ(line, "END");
}

TEST(SeedLinkPacket, ofInformationSaysWhetherMoreFollows) {
  SeedLinkInput input;
  input.append("SLINFO *" + kRecord + "SLINFO  " + kRecord);
  const auto first = next(input);
  const auto second = next(input);
  EXPECT_EQ(first->packet->kind, SeedLinkPacket::Kind::Information);
  EXPECT_FALSE(first->packet->isLast);
  EXPECT_TRUE(second->packet->isLast);
}

TEST(SeedLinkPacket, isNoneWhereItsNumberIsNone) {
  EXPECT_EQ(problemOf("SL00000G" + kRecord), "found 'SL00000Grrrrrrrrrrrr', expected a SeedLink packet");
  EXPECT_NE(problemOf("SL  0001" + kRecord), "");
  EXPECT_NE(problemOf("SL0x0001" + kRecord), "");
  EXPECT_NE(problemOf("SL+00001" + kRecord), "");
}

TEST(SeedLinkPacket, isNoneOfOtherBytesWhichAreQuotedWithoutControls) {
  EXPECT_EQ(problemOf("\x1b[31mHTTP"), "found '?[31mHTTP', expected a SeedLink packet");
}

TEST(SeedLinkPacket, ofMoreThanSixteenMegabytesIsRefusedBeforeItArrives) {
  QByteArray header = kPacket4.first(17);
  header.replace(4, 4, QByteArray("\x01\0\0\x01", 4)); // 2^24 + 1
  EXPECT_EQ(problemOf(header), "found a packet of 16777217 bytes, expected at most 16777216");
}

TEST(SeedLinkHello, saysWhichProtocolToSpeak) {
  const auto protocol = [](const char* line) { return seedLinkProtocolOf(line).value(); };
  EXPECT_EQ(protocol("SeedLink v3.1 (2020.075) :: SLPROTO:3.1"), 3);
  EXPECT_EQ(protocol("SeedLink v3.1 RingServer/4 :: SLPROTO:4.0 SLPROTO:3.1 CAP"), 4);
  EXPECT_EQ(protocol("SeedLink v4.0 (new)"), 4);
  EXPECT_EQ(protocol("SeedLink"), 3);
  EXPECT_EQ(seedLinkProtocolOf("HTTP/1.1 400\x07").error(), "found 'HTTP/1.1 400?', expected a SeedLink server");
}

TEST(SeedLinkTimers, takeAnySeconds) {
  EXPECT_EQ(timerMilliseconds(0.25), 250);
  EXPECT_EQ(timerMilliseconds(0), 1);
  EXPECT_EQ(timerMilliseconds(-1e300), 1);
  EXPECT_EQ(timerMilliseconds(1e300), 86400000);
  EXPECT_EQ(timerMilliseconds(std::nan("")), 86400000);
  EXPECT_EQ(timerMilliseconds(-std::numeric_limits<double>::infinity()), 1);
}

TEST(SeedLinkInput, givesLinesWithoutTheirEnds) {
  SeedLinkInput input;
  input.append("OK\r\nERROR\nhalf");
  EXPECT_EQ(**input.takeLine(), "OK");
  EXPECT_EQ(**input.takeLine(), "ERROR");
  EXPECT_FALSE(*input.takeLine());
  input.append(" a line\r\n");
  EXPECT_EQ(**input.takeLine(), "half a line");
}

TEST(SeedLinkInput, refusesALineWithoutEnd) {
  SeedLinkInput input;
  input.append(QByteArray(4096, 'x'));
  EXPECT_TRUE(input.takeLine());
  input.append("x");
  EXPECT_EQ(input.takeLine().error(), "found a line of more than 4096 bytes");
}
