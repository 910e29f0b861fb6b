#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkSession.h"

#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStations.h"

#include <algorithm>

namespace xov {

namespace {

constexpr std::size_t kMostSelections = 10000;
constexpr std::size_t kMostSelectors = 1000;
constexpr std::int64_t kMicrosecondsPerMillisecond = 1000;
constexpr int kHexadecimal = 16;
constexpr char kGarbage[] = "\x07no packet at all\x07";

std::vector<QByteArray> wordsOf(const QByteArray& line) {
  const QList<QByteArray> words = line.simplified().split(' ');
  return {words.begin(), words.end()};
}

QByteArray wordAt(const std::vector<QByteArray>& words, std::size_t i) {
  return i < words.size() ? words[i] : QByteArray();
}

// "2026,11,22,10,30,05" of protocol 3, or a time as protocol 4 writes it.
std::optional<std::int64_t> microseconds(const QByteArray& text) {
  QList<QByteArray> parts = text.split(',');
  QString written = QString::fromLatin1(text);
  if (parts.size() == 6) {
    for (QByteArray& part : parts)
      part = part.rightJustified(2, '0');
    written = QStringLiteral("%1-%2-%3T%4:%5:%6")
                  .arg(QString::fromLatin1(parts[0]), QString::fromLatin1(parts[1]), QString::fromLatin1(parts[2]),
                       QString::fromLatin1(parts[3]), QString::fromLatin1(parts[4]), QString::fromLatin1(parts[5]));
  }
  const std::optional<QDateTime> time = parseUtcTime(written);
  if (!time) return {};
  return time->toMSecsSinceEpoch() * kMicrosecondsPerMillisecond;
}

bool isExclusion(const QByteArray& pattern) { return pattern.startsWith('!'); }

// The pattern of a selector of protocol 3, as "00BHZ.D"; nothing for one of other than data records.
std::optional<QByteArray> pattern3(const QByteArray& selector) {
  const qsizetype type = selector.indexOf('.');
  if (type >= 0 && selector.sliced(type) != ".D") return {};
  const QByteArray pattern = type >= 0 ? selector.first(type) : selector;
  return pattern == "?????" ? QByteArray("*") : pattern;
}

// That of protocol 4, as "00_B_H_Z.2D:native", with the '!' before what is left out.
QByteArray pattern4(const QByteArray& selector) { return selector.split('.').front().split(':').front(); }

bool isTurn(int every, int packet) { return every > 0 && packet % every == 0; }

} // namespace

QByteArray SeedLinkSession::refuse(const char* code, const char* why) const {
  if (protocol_ < 4) return "ERROR\r\n";
  return QByteArray("ERROR ") + code + ' ' + why + "\r\n";
}

QByteArray SeedLinkSession::hello() const {
  const QByteArray protocols = settings_.protocol >= 4 ? "SLPROTO:4.0 SLPROTO:3.1" : "SLPROTO:3.1";
  return "SeedLink v" + QByteArray(settings_.protocol >= 4 ? "4.0" : "3.1") + " (XOV Graphics) :: " + protocols +
         " CAP EXTREPLY NSWILDCARD\r\nXOV Graphics\r\n";
}

QByteArray SeedLinkSession::answer(const QByteArray& line, const std::vector<ServedRecord>& records,
                                   std::size_t released) {
  if (isStalled_) return {};
  const std::vector<QByteArray> words = wordsOf(line);
  const QByteArray command = words[0].toUpper();
  if (command == "HELLO") return hello();
  if (command == "BYE") {
    isOver_ = true;
    return {};
  }
  if (command == "INFO") return information(wordAt(words, 1).toUpper(), records, released);
  if (isStreaming_) return {}; // in the midst of packets there is no room for answers
  bool isTaken = true;
  const QByteArray introduced = introduce(command, words, isTaken);
  return isTaken ? introduced : request(command, words, records, released);
}

// What comes before anything is asked for: the protocol, the client, its user.
QByteArray SeedLinkSession::introduce(const QByteArray& command, const std::vector<QByteArray>& words,
                                      bool& isTaken) {
  if (command == "SLPROTO") {
    if (settings_.protocol < 4 || wordAt(words, 1) != "4.0") return refuse("UNSUPPORTED", "no such protocol");
    protocol_ = 4;
    return ok();
  }
  if (command == "USERAGENT" && protocol_ == 4) return ok();
  if (command == "AUTH" && protocol_ == 4) {
    isKnown_ = wordAt(words, 1) == "USERPASS" && wordAt(words, 2) == settings_.user.toUtf8() &&
               wordAt(words, 3) == settings_.password.toUtf8();
    return isKnown_ ? ok() : refuse("AUTH", "user and password are not known");
  }
  if (!settings_.user.isEmpty() && !isKnown_) return refuse("UNAUTHORIZED", "expected AUTH first");
  isTaken = false;
  return {};
}

QByteArray SeedLinkSession::request(const QByteArray& command, const std::vector<QByteArray>& words,
                                    const std::vector<ServedRecord>& records, std::size_t released) {
  if (command == "STATION") return selectStation(words, records);
  if (selections_.empty()) return refuse("UNEXPECTED", "expected STATION first");
  if (command == "SELECT") {
    Selection& selection = selections_.back();
    if (selection.selectorCount >= kMostSelectors) return refuse("LIMIT", "too many selectors");
    ++selection.selectorCount;
    const QByteArray selector = wordAt(words, 1);
    const std::optional<QByteArray> pattern = protocol_ == 3 ? pattern3(selector) : pattern4(selector);
    if (pattern) selection.patterns.push_back(*pattern);
    return ok();
  }
  if (command == "DATA" || command == "FETCH") {
    isFetching_ = isFetching_ || command == "FETCH";
    return wantData(words, released);
  }
  if (command == "TIME" && protocol_ == 3) return wantTime(words);
  if (command == "END" || command == "ENDFETCH") {
    isFetching_ = isFetching_ || command == "ENDFETCH";
    begin(records.size());
    return {};
  }
  return refuse("UNSUPPORTED", "no such command");
}

void SeedLinkSession::begin(std::size_t recordCount) {
  isStreaming_ = true;
  next_ = recordCount;
  for (const Selection& selection : selections_) {
    if (selection.wantsData) next_ = std::min(next_, selection.from);
  }
}

QByteArray SeedLinkSession::selectStation(const std::vector<QByteArray>& words,
                                          const std::vector<ServedRecord>& records) {
  if (selections_.size() >= kMostSelections) return refuse("LIMIT", "too many stations");
  Selection selection;
  if (protocol_ == 4 && words.size() > 1) selection.id = words[1];
  if (protocol_ == 3 && words.size() > 2) selection.id = words[2] + '_' + words[1];
  const bool isThere = std::ranges::any_of(
      records, [&](const ServedRecord& record) { return matchesWildcards(selection.id, record.station); });
  if (!isThere) return refuse("ARGUMENTS", "no such station");
  selections_.push_back(selection);
  return ok();
}

// DATA [sequence or ALL [from [to]]]: without, packets that come from now on.
QByteArray SeedLinkSession::wantData(const std::vector<QByteArray>& words, std::size_t released) {
  Selection& selection = selections_.back();
  selection.wantsData = true;
  selection.from = released;
  if (words.size() > 1 && (words[1].toUpper() == "ALL" || words[1] == "-1")) {
    selection.from = words[1] == "-1" ? released : 0;
  } else if (words.size() > 1) {
    bool isNumber = false;
    const qulonglong sequence = words[1].toULongLong(&isNumber, protocol_ == 4 ? 10 : kHexadecimal);
    if (!isNumber) return refuse("ARGUMENTS", "expected a sequence number");
    selection.from = sequence > 0 ? std::size_t(sequence - 1) : 0;
  }
  if (protocol_ == 3) return ok(); // a time beside the number is a check that this server has no need of
  if (words.size() > 2) selection.fromUs = microseconds(words[2]).value_or(INT64_MIN);
  if (words.size() > 3) selection.toUs = microseconds(words[3]).value_or(INT64_MAX);
  return ok();
}

QByteArray SeedLinkSession::wantTime(const std::vector<QByteArray>& words) {
  const std::optional<std::int64_t> from = words.size() > 1 ? microseconds(words[1]) : std::nullopt;
  if (!from) return refuse("ARGUMENTS", "expected a time");
  Selection& selection = selections_.back();
  selection.wantsData = true;
  selection.fromUs = *from;
  if (words.size() > 2) selection.toUs = microseconds(words[2]).value_or(INT64_MAX);
  return ok();
}

QByteArray SeedLinkSession::information(const QByteArray& level, const std::vector<ServedRecord>& records,
                                        std::size_t released) const {
  const bool hasStreams = level == "STREAMS" || level == "STATIONS";
  QByteArray bytes;
  SeedLinkPacket packet;
  packet.kind = SeedLinkPacket::Kind::Information;
  if (protocol_ == 4) {
    packet.format = 'J';
    packet.payload = streamsAsJson(records, hasStreams ? released : 0);
    return seedLinkBytes(packet, protocol_);
  }
  const std::vector<QByteArray> parts = textRecords(streamsAsXml(records, hasStreams ? released : 0));
  for (const QByteArray& part : parts) {
    packet.payload = part;
    packet.isLast = &part == &parts.back();
    bytes += seedLinkBytes(packet, protocol_);
  }
  return bytes;
}

bool SeedLinkSession::selects(const Selection& selection, const ServedRecord& record) const {
  if (selection.selectorCount == 0) return true;
  if (protocol_ == 3)
    return !selection.patterns.empty() && selectsChannel(selection.patterns, record.location, record.channel);
  const QByteArray id = seedLink4StreamId(record.location, record.channel);
  bool isSelected = std::ranges::all_of(selection.patterns, isExclusion);
  for (const QByteArray& pattern : selection.patterns) {
    const QByteArrayView codes = QByteArrayView(pattern).sliced(isExclusion(pattern) ? 1 : 0);
    if (!matchesWildcards(codes, id)) continue;
    if (isExclusion(pattern)) return false;
    isSelected = true;
  }
  return isSelected;
}

bool SeedLinkSession::wants(const ServedRecord& record, std::size_t index) const {
  if (protocol_ == 3 && (record.format != '2' || record.bytes.size() != kSeedLink3RecordBytes)) return false;
  return std::ranges::any_of(selections_, [&](const Selection& selection) {
    return selection.wantsData && index >= selection.from && record.endUs >= selection.fromUs &&
           record.startUs <= selection.toUs && matchesWildcards(selection.id, record.station) &&
           selects(selection, record);
  });
}

// Puts a packet behind `bytes`, with the faults whose turn it is.
void SeedLinkSession::send(const QByteArray& packet, QByteArray& bytes) {
  const SeedLinkFaults& faults = settings_.faults;
  ++sent_;
  if (isTurn(faults.dropEvery, sent_)) {
    isOver_ = true;
  } else if (isTurn(faults.cutEvery, sent_)) {
    bytes += packet.first(packet.size() / 2);
    isOver_ = true;
  } else if (isTurn(faults.stallEvery, sent_)) {
    isStalled_ = true;
  } else if (isTurn(faults.garbageEvery, sent_)) {
    bytes += QByteArray(kGarbage, qsizetype(sizeof kGarbage) - 1);
  } else if (isTurn(faults.reorderEvery, sent_)) {
    held_ = packet;
  } else {
    bytes += packet;
    if (isTurn(faults.duplicateEvery, sent_)) bytes += packet;
    if (held_) bytes += *std::exchange(held_, {});
  }
}

QByteArray SeedLinkSession::packets(const std::vector<ServedRecord>& records, std::size_t released,
                                    qsizetype mostBytes) {
  QByteArray bytes;
  while (isStreaming_ && !isStalled_ && !isOver_ && next_ < released && bytes.size() < mostBytes) {
    const std::size_t index = next_++;
    const ServedRecord& record = records[index];
    if (!wants(record, index)) continue;
    SeedLinkPacket packet;
    packet.kind = SeedLinkPacket::Kind::Record;
    packet.format = record.format;
    packet.sequence = index + 1;
    packet.station = record.station;
    packet.payload = record.bytes;
    send(seedLinkBytes(packet, protocol_), bytes);
  }
  if (next_ < released || !isStreaming_ || isStalled_ || isOver_) return bytes;
  if (held_) bytes += *std::exchange(held_, {});
  if (isFetching_) {
    bytes += "END";
    isOver_ = true;
  }
  return bytes;
}

} // namespace xov
