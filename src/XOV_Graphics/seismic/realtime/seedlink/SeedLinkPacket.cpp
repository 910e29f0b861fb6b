#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkPacket.h"

#include <QtEndian>

namespace xov {

namespace {

constexpr char kInformation3[] = "INFO ";
constexpr qsizetype kSignatureBytes = 2;
constexpr qsizetype kFormatByte = 2;
constexpr qsizetype kSubformatByte = 3;
constexpr qsizetype kLengthByte = 4;
constexpr qsizetype kSequenceByte = 8;
constexpr qsizetype kStationLengthByte = 16;
constexpr qsizetype kSequenceDigits = 6;
constexpr int kHexadecimal = 16;
constexpr std::uint64_t kLargestSequence3 = 0xffffff;
constexpr qsizetype kQuotedBytes = 20;
constexpr qsizetype kLongestMessage = 200;

// What has been taken is cleared away once it is as much as this.
constexpr qsizetype kClearedAtOnce = 1 << 16;

Error isNoPacket(QByteArrayView rest) {
  return {QStringLiteral("found '%1', expected a SeedLink packet")
              .arg(printableLine(rest.first(std::min(rest.size(), kQuotedBytes))))};
}

} // namespace

QString printableLine(QByteArrayView line) {
  QString text = QString::fromUtf8(line.first(std::min(line.size(), kLongestMessage))).simplified();
  for (QChar& c : text) {
    if (!c.isPrint()) c = QLatin1Char('?');
  }
  return text;
}

Result<int> seedLinkProtocolOf(const QByteArray& hello) {
  if (!hello.startsWith("SeedLink"))
    return Error{"found '" + printableLine(hello).left(60) + "', expected a SeedLink server"};
  return hello.contains("SLPROTO:4.0") || hello.startsWith("SeedLink v4.") ? 4 : 3;
}

void SeedLinkInput::append(QByteArrayView bytes) { bytes_.append(bytes); }

void SeedLinkInput::clear() {
  bytes_.clear();
  taken_ = 0;
}

void SeedLinkInput::take(qsizetype count) {
  taken_ += count;
  if (taken_ < kClearedAtOnce && taken_ < bytes_.size()) return;
  bytes_.remove(0, taken_);
  taken_ = 0;
}

Result<std::optional<QByteArray>> SeedLinkInput::takeLine() {
  const qsizetype end = rest().indexOf('\n');
  if (end < 0 && rest().size() <= kLongestSeedLinkLine) return std::optional<QByteArray>();
  if (end < 0 || end > kLongestSeedLinkLine)
    return Error{QStringLiteral("found a line of more than %1 bytes").arg(kLongestSeedLinkLine)};
  const QByteArray line = rest().first(end).trimmed().toByteArray();
  take(end + 1);
  return std::optional(line);
}

Result<std::optional<SeedLinkInput::Item>> SeedLinkInput::takeItem() {
  const QByteArrayView begin = rest();
  if (begin.size() < kSignatureBytes) return std::optional<Item>();
  if (begin.startsWith("SL")) return takePacket3();
  if (begin.startsWith("SE")) return takePacket4();
  if (begin.startsWith("EN") || begin.startsWith("ER")) {
    // A server that closes after "END" may leave the end of the line out.
    if (begin == QByteArrayView("END")) {
      take(begin.size());
      return std::optional(Item{{}, "END"});
    }
    const Result<std::optional<QByteArray>> line = takeLine();
    if (!line) return Error{line.error()};
    if (!*line) return std::optional<Item>();
    return std::optional(Item{{}, **line});
  }
  return isNoPacket(begin);
}

Result<std::optional<SeedLinkInput::Item>> SeedLinkInput::takePacket3() {
  constexpr qsizetype kWhole = kSeedLink3HeaderBytes + kSeedLink3RecordBytes;
  const QByteArrayView bytes = rest();
  if (bytes.size() < kSeedLink3HeaderBytes) return std::optional<Item>();
  const QByteArrayView number = bytes.sliced(kSignatureBytes, kSequenceDigits);
  SeedLinkPacket packet;
  if (number.startsWith(kInformation3)) {
    packet.kind = SeedLinkPacket::Kind::Information;
    packet.isLast = number.back() != '*';
  } else {
    bool isNumber = false;
    packet.kind = SeedLinkPacket::Kind::Record;
    packet.sequence = number.toByteArray().toULongLong(&isNumber, kHexadecimal);
    if (!isNumber || number.contains('+') || number.contains('x') || number.contains('X') || number.contains(' '))
      return isNoPacket(bytes);
  }
  if (bytes.size() < kWhole) return std::optional<Item>();
  packet.payload = bytes.sliced(kSeedLink3HeaderBytes, kSeedLink3RecordBytes).toByteArray();
  take(kWhole);
  return std::optional(Item{std::move(packet), {}});
}

Result<std::optional<SeedLinkInput::Item>> SeedLinkInput::takePacket4() {
  const QByteArrayView bytes = rest();
  if (bytes.size() < kSeedLink4HeaderBytes) return std::optional<Item>();
  const qsizetype length = qsizetype(qFromLittleEndian<quint32>(bytes.data() + kLengthByte));
  if (length > kLargestSeedLinkPayload)
    return Error{
        QStringLiteral("found a packet of %1 bytes, expected at most %2").arg(length).arg(kLargestSeedLinkPayload)};
  const qsizetype stationBytes = quint8(bytes[kStationLengthByte]);
  const qsizetype whole = kSeedLink4HeaderBytes + stationBytes + length;
  if (bytes.size() < whole) return std::optional<Item>();
  SeedLinkPacket packet;
  packet.format = bytes[kFormatByte];
  packet.sequence = qFromLittleEndian<quint64>(bytes.data() + kSequenceByte);
  packet.station = bytes.sliced(kSeedLink4HeaderBytes, stationBytes).toByteArray();
  packet.payload = bytes.sliced(kSeedLink4HeaderBytes + stationBytes, length).toByteArray();
  const char subformat = bytes[kSubformatByte];
  if ((packet.format == '2' || packet.format == '3') && subformat != 'L') {
    packet.kind = SeedLinkPacket::Kind::Record;
  } else if (packet.format == 'J' && (subformat == 'I' || subformat == 'E')) {
    packet.kind = SeedLinkPacket::Kind::Information;
  }
  take(whole);
  return std::optional(Item{std::move(packet), {}});
}

QByteArray seedLinkBytes(const SeedLinkPacket& packet, int protocol) {
  const bool isInformation = packet.kind == SeedLinkPacket::Kind::Information;
  QByteArray bytes;
  if (protocol < 4) {
    bytes = isInformation ? QByteArray("SLINFO ") + (packet.isLast ? ' ' : '*')
                          : "SL" + QByteArray::number(packet.sequence & kLargestSequence3, kHexadecimal)
                                       .toUpper()
                                       .rightJustified(kSequenceDigits, '0');
    return bytes + packet.payload;
  }
  bytes = QByteArray(kSeedLink4HeaderBytes, '\0');
  bytes.replace(0, kSignatureBytes, "SE");
  bytes[kFormatByte] = packet.format;
  bytes[kSubformatByte] = isInformation ? 'I' : 'D';
  qToLittleEndian(quint32(packet.payload.size()), bytes.data() + kLengthByte);
  qToLittleEndian(quint64(packet.sequence), bytes.data() + kSequenceByte);
  bytes[kStationLengthByte] = char(packet.station.size());
  return bytes + packet.station + packet.payload;
}

} // namespace xov
