#pragma once

#include "XOV_Graphics/base/Result.h"

#include <QByteArray>

#include <cstdint>
#include <optional>

namespace xov {

/// A SeedLink server answers commands with lines of text, and sends packets once it is told to. A packet of protocol
/// 3.1 is 520 bytes:
///
///     0  "SL" and the sequence number, six hexadecimal digits; or "SLINFO *", "SLINFO  " for the last one of a reply
///     8  a miniSEED 2 record of 512 bytes
///
/// and one of protocol 4.0, with numbers in little-endian order:
///
///     0  "SE"                            8  sequence number (8 bytes)
///     2  format: '2' or '3' of miniSEED,   16  length of the station's identifier
///        'J' JSON, 'X' XML                17  the identifier, as "GE_WLF"; then the payload
///     3  subformat: 'D' data, 'I' information, 'E' error, and others
///     4  length of the payload (4 bytes)
///
/// Source: SeedLink protocol, version 4.0 (FDSN, 2023), and its appendix on version 3.
struct SeedLinkPacket {
  enum class Kind : std::uint8_t {
    Record,      ///< a miniSEED record
    Information, ///< the reply to a question, or a part of it
    Other,       ///< of a format that is not read
  };
  Kind kind = Kind::Other;
  char format = '2';
  std::uint64_t sequence = 0; ///< of a record; 24 bits in protocol 3.1
  QByteArray station;         ///< as "GE_WLF"; empty in protocol 3.1, where only the record knows
  bool isLast = true;         ///< of an information
  QByteArray payload;
};

inline constexpr qsizetype kSeedLink3HeaderBytes = 8;
inline constexpr qsizetype kSeedLink3RecordBytes = 512;
inline constexpr qsizetype kSeedLink4HeaderBytes = 17;
/// Lines of more and payloads of more than this are no lines and no payloads.
inline constexpr qsizetype kLongestSeedLinkLine = 4096;
inline constexpr qsizetype kLargestSeedLinkPayload = qsizetype(16) << 20;

/// Cuts what a server sends into lines and packets, however it arrives. Holds no more than one packet and what came
/// with it. What breaks the protocol is an error, and stays one: nothing behind it can be trusted.
class SeedLinkInput {
public:
  /// Adds what arrived.
  void append(QByteArrayView bytes);

  /// The next line without its end, once it is there whole.
  Result<std::optional<QByteArray>> takeLine();

  /// What comes next in a stream of packets: a packet, or a line of text, which a server sends in place of a packet
  /// when it has no more to send ("END") or cannot go on ("ERROR ...").
  struct Item {
    std::optional<SeedLinkPacket> packet;
    QByteArray line;
  };
  /// The next item, once it is there whole.
  Result<std::optional<Item>> takeItem();

  /// Forgets everything, for a new connection.
  void clear();

private:
  QByteArrayView rest() const { return QByteArrayView(bytes_).sliced(taken_); }
  void take(qsizetype count);
  Result<std::optional<Item>> takePacket3();
  Result<std::optional<Item>> takePacket4();

  QByteArray bytes_;
  qsizetype taken_ = 0;
};

/// A line that a server sent, or its beginning, fit for a message: without what a terminal would obey.
QString printableLine(QByteArrayView line);

/// How many lines a server introduces itself with.
inline constexpr int kSeedLinkHelloLines = 2;

/// The protocol to speak with a server that introduces itself with this line: 4, or 3 of one that does not know 4.0.
/// An error where it is no SeedLink server.
Result<int> seedLinkProtocolOf(const QByteArray& hello);

/// The bytes of a packet, as a server sends it: of protocol 4 with the station, of protocol 3.1 without.
QByteArray seedLinkBytes(const SeedLinkPacket& packet, int protocol);

} // namespace xov
