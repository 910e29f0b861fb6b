#pragma once

#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkPacket.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h"
#include "XOV_Graphics/seismic/realtime/seedlink/ServedRecords.h"

#include <optional>
#include <vector>

namespace xov {

/// What a server says to one client: takes its commands, and gives answers and packets. Knows no sockets.
class SeedLinkSession {
public:
  /// Keeps the settings, which must outlive it.
  explicit SeedLinkSession(const SeedLinkServerSettings& settings) : settings_(settings) {}

  /// Answers a command line. `released` records are there so far.
  QByteArray answer(const QByteArray& line, const std::vector<ServedRecord>& records, std::size_t released);

  /// The next packets, as faults have it, up to about that many bytes; empty when no record is left that was asked
  /// for.
  QByteArray packets(const std::vector<ServedRecord>& records, std::size_t released, qsizetype mostBytes);

  /// The connection is to be closed once everything is sent.
  bool isOver() const { return isOver_; }
  /// Whether it has got all of `released` records that it wants.
  bool isAtEnd(std::size_t released) const { return !isStreaming_ || isStalled_ || (next_ >= released && !held_); }

private:
  struct Selection {
    QByteArray id; // may have wildcards
    std::size_t selectorCount = 0;
    std::vector<QByteArray> patterns; // of those selectors that stand for data records
    bool wantsData = false;
    std::size_t from = 0; // index of the first record
    std::int64_t fromUs = INT64_MIN;
    std::int64_t toUs = INT64_MAX;
  };

  static QByteArray ok() { return "OK\r\n"; }
  QByteArray introduce(const QByteArray& command, const std::vector<QByteArray>& words, bool& isTaken);
  QByteArray request(const QByteArray& command, const std::vector<QByteArray>& words,
                     const std::vector<ServedRecord>& records, std::size_t released);
  void begin(std::size_t recordCount);
  QByteArray refuse(const char* code, const char* why) const;
  QByteArray hello() const;
  QByteArray selectStation(const std::vector<QByteArray>& words, const std::vector<ServedRecord>& records);
  QByteArray wantData(const std::vector<QByteArray>& words, std::size_t released);
  QByteArray wantTime(const std::vector<QByteArray>& words);
  QByteArray information(const QByteArray& level, const std::vector<ServedRecord>& records,
                         std::size_t released) const;
  bool wants(const ServedRecord& record, std::size_t index) const;
  bool selects(const Selection& selection, const ServedRecord& record) const;
  void send(const QByteArray& packet, QByteArray& bytes);

  const SeedLinkServerSettings& settings_;
  int protocol_ = 3;
  bool isKnown_ = false; // has given the user's name and password
  bool isStreaming_ = false;
  bool isFetching_ = false;
  bool isStalled_ = false;
  bool isOver_ = false;
  std::vector<Selection> selections_;
  std::size_t next_ = 0; // record
  int sent_ = 0;         // packets of this connection
  std::optional<QByteArray> held_;
};

} // namespace xov
