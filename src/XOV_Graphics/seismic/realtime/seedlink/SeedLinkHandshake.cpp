#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkHandshake.h"

#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkPacket.h"

#include <QDateTime>

#include <algorithm>
#include <optional>

namespace xov {

namespace {

constexpr char kLineEnd[] = "\r\n";
constexpr std::uint64_t kSequences3 = std::uint64_t(1) << 24;
constexpr std::int64_t kMicrosecondsPerMillisecond = 1000;

QDateTime timeOf(std::int64_t us) {
  return QDateTime::fromMSecsSinceEpoch(us / kMicrosecondsPerMillisecond, Qt::UTC);
}

// "2026,11,22,10,30,05": whole seconds, of which the earlier one repeats a little.
QByteArray time3(std::int64_t us) { return timeOf(us).toString(QStringLiteral("yyyy,MM,dd,HH,mm,ss")).toLatin1(); }
QByteArray time4(std::int64_t us) { return timeOf(us).toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ")).toLatin1(); }

// The earliest of the last packets of stations that the pattern stands for.
std::optional<std::int64_t> earliestTime(const SeedLinkPlaces& places, const QByteArray& pattern) {
  std::optional<std::int64_t> earliest;
  for (const auto& [id, place] : places) {
    if (matchesWildcards(pattern, id)) earliest = std::min(earliest.value_or(place.timeUs), place.timeUs);
  }
  return earliest;
}

// A user's name or password with a blank or line end would be more than one word of a command.
bool isOneWord(const QByteArray& text) {
  return !text.isEmpty() && std::ranges::none_of(text, [](char c) { return c <= ' ' || c == 127; });
}

} // namespace

SeedLinkHandshake::SeedLinkHandshake(SeedLinkRequest request) : request_(std::move(request)) {}

QByteArray SeedLinkHandshake::begin() const { return QByteArray("HELLO") + kLineEnd; }

Result<QByteArray> SeedLinkHandshake::takeLine(const QByteArray& line) {
  if (step_ == Step::Hello) return takeHello(line);
  if (const Status status = takeAnswer(line); !status) return Error{status.error()};
  return nextCommand();
}

Result<QByteArray> SeedLinkHandshake::takeHello(const QByteArray& line) {
  server_.append(printableLine(line));
  if (server_.size() < kSeedLinkHelloLines) {
    const Result<int> protocol = seedLinkProtocolOf(line);
    if (!protocol) return Error{protocol.error()};
    protocol_ = *protocol;
    return QByteArray();
  }
  if (protocol_ == 4) {
    if (!request_.user.isEmpty() && (!isOneWord(request_.user) || !isOneWord(request_.password)))
      return Error{QStringLiteral("expected a user's name and password without blanks")};
    planProtocol4();
  } else {
    if (!request_.user.isEmpty())
      return Error{QStringLiteral("the server knows no users: it speaks protocol 3 of SeedLink")};
    planProtocol3();
  }
  step_ = Step::Commands;
  return nextCommand();
}

void SeedLinkHandshake::planProtocol3() {
  const bool takesWildcards = server_.front().contains(QLatin1String("NSWILDCARD"));
  for (int i = 0; i < int(request_.stations.size()); ++i) {
    const SeedLinkStation& station = request_.stations[std::size_t(i)];
    if (station.hasWildcards() && !takesWildcards) {
      refused_.append(QString::fromLatin1(station.id()) +
                      QStringLiteral(": the server takes no wildcards in codes of stations"));
      continue;
    }
    addStation(i, station.station + ' ' + station.network, dataCommand(station));
  }
}

void SeedLinkHandshake::planProtocol4() {
  commands_.push_back({"SLPROTO 4.0"});
  if (isOneWord(request_.program)) commands_.push_back({"USERAGENT " + request_.program, -1, true});
  if (!request_.user.isEmpty()) commands_.push_back({"AUTH USERPASS " + request_.user + ' ' + request_.password});
  for (int i = 0; i < int(request_.stations.size()); ++i) {
    const SeedLinkStation& station = request_.stations[std::size_t(i)];
    addStation(i, station.id(), dataCommand(station));
  }
}

void SeedLinkHandshake::addStation(int number, const QByteArray& name, const QByteArray& data) {
  commands_.push_back({"STATION " + name, number});
  for (const QByteArray& selector : selectors(request_.stations[std::size_t(number)]))
    commands_.push_back({"SELECT " + selector, number});
  commands_.push_back({data, number});
}

std::vector<QByteArray> SeedLinkHandshake::selectors(const SeedLinkStation& station) const {
  std::vector<QByteArray> selectors;
  for (const QByteArray& channels : station.channels) {
    if (protocol_ == 4) {
      selectors.push_back(seedLink4Selector(channels));
    } else {
      selectors.push_back(channels == "*" ? "?????" : channels);
    }
  }
  return selectors;
}

QByteArray SeedLinkHandshake::dataCommand(const SeedLinkStation& station) const {
  const auto place = request_.places.find(station.id());
  if (station.hasWildcards() || place == request_.places.end()) {
    std::optional<std::int64_t> time = request_.sinceUs;
    if (station.hasWildcards()) {
      if (const auto earliest = earliestTime(request_.places, station.id())) time = earliest;
    }
    if (!time) return "DATA";
    return protocol_ == 4 ? "DATA ALL " + time4(*time) : "TIME " + time3(*time);
  }
  const std::uint64_t next = place->second.sequence + 1;
  if (protocol_ == 4) return "DATA " + QByteArray::number(qulonglong(next));
  return "DATA " + QByteArray::number(qulonglong(next % kSequences3), 16).toUpper().rightJustified(6, '0') + ' ' +
         time3(place->second.timeUs);
}

// Answers are "OK" and "ERROR", in protocol 4 with a code and words behind it.
Status SeedLinkHandshake::takeAnswer(const QByteArray& line) {
  const Command& sent = commands_[next_ - 1];
  const bool isRefused = line.startsWith("ERROR");
  if (!isRefused && !line.startsWith("OK"))
    return Error{"found '" + printableLine(line).left(60) + "', expected an answer to " +
                 printableLine(sent.text.split(' ').front())};
  if (!isRefused) {
    if (sent.text.startsWith("DATA") || sent.text.startsWith("TIME")) ++accepted_;
    return {};
  }
  if (sent.isOptional) return {};
  const QString reason = printableLine(line.mid(5));
  if (sent.station < 0) {
    const QString what = sent.text.startsWith("AUTH") ? QStringLiteral("the user's name or password")
                                                      : "'" + printableLine(sent.text) + "'";
    return Error{"the server refuses " + what + (reason.isEmpty() ? QString() : ": " + reason)};
  }
  const QString station = QString::fromLatin1(request_.stations[std::size_t(sent.station)].id());
  refused_.append(station + QStringLiteral(": the server refuses '") + printableLine(sent.text) + "'" +
                  (reason.isEmpty() ? QString() : ": " + reason));
  // A refused station leaves the one before in place, whose channels are not to change. Channels that come although
  // nobody asked for them are the client's to drop.
  if (sent.text.startsWith("SELECT")) return {};
  while (next_ < commands_.size() && commands_[next_].station == sent.station)
    ++next_;
  return {};
}

Result<QByteArray> SeedLinkHandshake::nextCommand() {
  if (next_ < commands_.size()) return commands_[next_++].text + kLineEnd;
  if (accepted_ == 0) {
    if (refused_.isEmpty()) return Error{QStringLiteral("no station is asked for")};
    return Error{refused_.join(QStringLiteral("; "))};
  }
  step_ = Step::Done;
  return QByteArray("END") + kLineEnd;
}

} // namespace xov
