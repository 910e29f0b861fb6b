#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStreams.h"

#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/realtime/TimerMilliseconds.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkPacket.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkSocket.h"
#include "XOV_Graphics/seismic/realtime/seedlink/ServedRecords.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <optional>

namespace xov {

namespace {

constexpr qsizetype kLongestAnswer = qsizetype(64) << 20;
constexpr qsizetype kChannelParts = 3;
constexpr qint64 kReadAtOnce = qint64(1) << 16;

QDateTime timeOf(QStringView text) { return parseUtcTime(text.trimmed()).value_or(QDateTime()); }

// "00_B_H_Z" is location 00 and channel BHZ.
std::optional<std::pair<QString, QString>> codesOf(const QString& stream) {
  const QStringList parts = stream.split('_');
  if (parts.size() != kChannelParts + 1) return {};
  return std::pair(parts[0], parts[1] + parts[2] + parts[3]);
}

} // namespace

Result<std::vector<SeedLinkStream>> parseStreamsXml(const QByteArray& text) {
  std::vector<SeedLinkStream> streams;
  XmlElements xml(text);
  xml.readRoot("seedlink", "SeedLink", [&] {
    xml.readChildren("station", [&] {
      const QXmlStreamAttributes station = xml.attributes();
      xml.readChildren("stream", [&] {
        const QXmlStreamAttributes stream = xml.attributes();
        const auto text_of = [](const QXmlStreamAttributes& from, const char* name) {
          return from.value(QLatin1String(name)).trimmed().toString();
        };
        xml.skip();
        if (text_of(stream, "type") != "D" && !text_of(stream, "type").isEmpty()) return;
        streams.push_back({{text_of(station, "network"), text_of(station, "name"), text_of(stream, "location"),
                            text_of(stream, "seedname")},
                           timeOf(text_of(stream, "begin_time")),
                           timeOf(text_of(stream, "end_time"))});
      });
    });
  });
  if (xml.hasError())
    return Error{QStringLiteral("line %1 of the answer: %2").arg(xml.lineNumber()).arg(shortened(xml.errorString()))};
  return streams;
}

Result<std::vector<SeedLinkStream>> parseStreamsJson(const QByteArray& text) {
  QJsonParseError problem;
  const QJsonDocument document = QJsonDocument::fromJson(text, &problem);
  if (problem.error != QJsonParseError::NoError)
    return Error{QStringLiteral("byte %1 of the answer: %2").arg(problem.offset).arg(problem.errorString())};
  if (const QJsonValue error = document.object().value("error"); error.isObject())
    return Error{"the server says " + printableLine(error.toObject().value("message").toString("ERROR").toUtf8())};
  std::vector<SeedLinkStream> streams;
  for (const auto& station : document.object().value("station").toArray()) {
    const QString id = station.toObject().value("id").toString();
    if (id.isEmpty()) continue;
    const qsizetype underscore = id.indexOf('_'); // without one it is a station of no network
    const QString network = id.left(std::max<qsizetype>(underscore, 0));
    for (const auto& value : station.toObject().value("stream").toArray()) {
      const QJsonObject stream = value.toObject();
      const auto codes = codesOf(stream.value("id").toString());
      if (!codes || (stream.contains("subformat") && stream.value("subformat").toString() != "D")) continue;
      streams.push_back({{network, id.sliced(underscore + 1), codes->first, codes->second},
                         timeOf(stream.value("start_time").toString()),
                         timeOf(stream.value("end_time").toString())});
    }
  }
  return streams;
}

class SeedLinkInquiry::Private : public QObject {
public:
  Private(const SeedLinkAddress& server, double longestSeconds, Answer answer)
      : server_(server.text()),
        answer_(std::move(answer)),
        socket_(server) {
    connect(&socket_, &QAbstractSocket::errorOccurred, this, [this] { fail(socket_.errorString()); });
    connect(&socket_, &QIODevice::readyRead, this, [this] { read(); });
    connect(&timer_, &QTimer::timeout, this, [this] { fail(QStringLiteral("the server does not answer")); });
    timer_.setSingleShot(true);
    timer_.start(timerMilliseconds(longestSeconds));
    socket_.open([this] { socket_.write("HELLO\r\n"); });
  }

private:
  // The answer may be what destroys this.
  void finish(const Result<std::vector<SeedLinkStream>>& streams) {
    if (!answer_) return;
    timer_.stop();
    socket_.disconnect(this);
    const Answer answer = std::exchange(answer_, nullptr);
    QMetaObject::invokeMethod(
        this, [answer, streams] { answer(streams); }, Qt::QueuedConnection);
  }
  void fail(const QString& why) { finish(Error{server_ + ": " + why}); }

  void read() {
    while (answer_ && socket_.bytesAvailable() > 0) {
      input_.append(socket_.read(kReadAtOnce));
      while (answer_ && !isAsked_) {
        const auto line = input_.takeLine();
        if (!line) return fail(line.error());
        if (!*line) break;
        takeLine(**line);
      }
      while (answer_ && isAsked_) {
        const auto item = input_.takeItem();
        if (!item) return fail(item.error());
        if (!*item) break;
        takeItem(**item);
      }
    }
  }

  void takeLine(const QByteArray& line) {
    if (lines_++ == 0) {
      const Result<int> protocol = seedLinkProtocolOf(line);
      if (!protocol) return fail(protocol.error());
      isVersion4_ = *protocol == 4;
    }
    if (lines_ < kSeedLinkHelloLines) return;
    if (isVersion4_ && lines_ == kSeedLinkHelloLines) {
      socket_.write("SLPROTO 4.0\r\n");
      return;
    }
    if (lines_ > kSeedLinkHelloLines && !line.startsWith("OK")) return fail(printableLine(line));
    socket_.write("INFO STREAMS\r\n");
    isAsked_ = true;
  }

  void takeItem(const SeedLinkInput::Item& item) {
    if (!item.packet) return fail(printableLine(item.line));
    if (item.packet->kind != SeedLinkPacket::Kind::Information) return;
    text_ += isVersion4_ ? item.packet->payload : recordText(item.packet->payload);
    if (text_.size() > kLongestAnswer) return fail(QStringLiteral("the answer is longer than 64 MiB"));
    if (!item.packet->isLast) return;
    const Result<std::vector<SeedLinkStream>> streams =
        isVersion4_ ? parseStreamsJson(text_) : parseStreamsXml(text_);
    if (!streams) return fail(streams.error());
    finish(streams);
  }

  QString server_;
  Answer answer_;
  SeedLinkSocket socket_;
  QTimer timer_;
  SeedLinkInput input_;
  QByteArray text_;
  int lines_ = 0;
  bool isVersion4_ = false;
  bool isAsked_ = false;
};

SeedLinkInquiry::SeedLinkInquiry(const SeedLinkAddress& server, double longestSeconds, Answer answer)
    : d_(std::make_unique<Private>(server, longestSeconds, std::move(answer))) {}
SeedLinkInquiry::~SeedLinkInquiry() = default;

} // namespace xov
