#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkClient.h"

#include "XOV_Graphics/base/Version.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/seismic/realtime/CallsBack.h"
#include "XOV_Graphics/seismic/realtime/TimerMilliseconds.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkHandshake.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkPacket.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkSocket.h"

#include <QDateTime>
#include <QTimer>

#include <algorithm>
#include <map>
#include <optional>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr std::int64_t kMicrosecondsPerMillisecond = 1000;
constexpr char kQuestion[] = "INFO ID\r\n";
constexpr qint64 kReadAtOnce = qint64(1) << 16;
// A server that makes up channels without end gets no more memory than these take.
constexpr std::size_t kMostChannels = 20000;

} // namespace

class SeedLinkClient::Private : public CallsBack {
public:
  explicit Private(SeedLinkSettings settings) : settings_(std::move(settings)) {
    for (QTimer* timer : {&reconnect_, &silence_})
      timer->setSingleShot(true);
    connect(&reconnect_, &QTimer::timeout, this, [this] { connectNow(); });
    connect(&silence_, &QTimer::timeout, this, [this] { noteSilence(); });
    connect(&save_, &QTimer::timeout, this, [this] { saveState(); });
  }

  void start() {
    if (isStarted_) return;
    isStarted_ = true;
    if (!settings_.stateFile.isEmpty()) {
      Result<SeedLinkPlaces> places = readSeedLinkState(settings_.stateFile);
      if (!places) sayUnreadableState(places.error());
      places_ = std::move(places).value();
      if (settings_.beginsWithDay) goBackToTheDay();
      save_.start(timerMilliseconds(settings_.stateSeconds));
    }
    pauseSeconds_ = settings_.shortestPauseSeconds;
    connectNow();
  }

  void stop() override {
    isStarted_ = false;
    reconnect_.stop();
    silence_.stop();
    save_.stop();
    forgetSocket();
    saveState();
  }

  std::function<void(const LiveRecord&)> take_;
  std::function<void(const QString&)> tell_;
  std::map<QString, std::optional<ChannelArrival>> channels_; // nothing for one without samples
  bool isStreaming_ = false;
  int connections_ = 0;

private:
  // Stations of which nothing comes keep their places in the file.
  void goBackToTheDay() {
    if (places_.empty()) return;
    const auto earliest =
        std::ranges::min_element(places_, {}, [](const auto& station) { return station.second.timeUs; });
    const qint64 time = earliest->second.timeUs / kMicrosecondsPerMillisecond;
    settings_.since = QDateTime(QDateTime::fromMSecsSinceEpoch(time, Qt::UTC).date(), QTime(0, 0), Qt::UTC);
    placesOfFile_ = std::exchange(places_, {});
  }

  // The places of this run are not those of the file.
  void sayUnreadableState(const QString& why) {
    const QString kept = setFileAside(settings_.stateFile);
    say(kept.isEmpty() ? why : why + "; it is kept as " + kept);
  }

  void connectNow() {
    if (!isStarted_) return;
    forgetSocket();
    input_.clear();
    SeedLinkRequest request;
    request.stations = settings_.stations;
    request.places = places_;
    if (settings_.since.isValid())
      request.sinceUs = settings_.since.toMSecsSinceEpoch() * kMicrosecondsPerMillisecond;
    request.user = settings_.user.toUtf8();
    request.password = settings_.password.toUtf8();
    request.program = "XOV_Graphics/" + version().toString().toUtf8();
    handshake_.emplace(std::move(request));
    socket_ = std::make_unique<SeedLinkSocket>(settings_.server);
    connect(socket_.get(), &QAbstractSocket::errorOccurred, this, [this] { lose(socket_->errorString()); });
    connect(socket_.get(), &QIODevice::readyRead, this, [this] { read(); });
    silence_.start(timerMilliseconds(settings_.stalledSeconds));
    isAsked_ = true; // whether it is there shows by itself
    socket_->open([this] { greet(); });
  }

  void greet() {
    ++connections_;
    socket_->write(handshake_->begin());
  }

  // A socket that is in the middle of telling something must outlive that.
  void forgetSocket() {
    isStreaming_ = false;
    if (!socket_) return;
    socket_->disconnect(this);
    socket_->abort();
    socket_.release()->deleteLater();
  }

  // Ends the connection and makes another one after a pause.
  void lose(const QString& why) {
    if (!isStarted_ || !socket_) return;
    if (why != lastFault_) say(server() + ": " + why);
    lastFault_ = why;
    forgetSocket();
    silence_.stop();
    saveState();
    reconnect_.start(timerMilliseconds(pauseSeconds_));
    pauseSeconds_ = std::min(pauseSeconds_ * 2, settings_.longestPauseSeconds);
  }

  void read() {
    isAsked_ = false;
    silence_.start(timerMilliseconds(settings_.keepAliveSeconds));
    while (socket_ && socket_->bytesAvailable() > 0) {
      input_.append(socket_->read(kReadAtOnce));
      if (!handshake_->isDone()) takeAnswers();
      if (socket_ && handshake_->isDone()) takeItems();
    }
  }

  void takeAnswers() {
    while (socket_ && !handshake_->isDone()) {
      const Result<std::optional<QByteArray>> line = input_.takeLine();
      if (!line) return lose(line.error());
      if (!*line) return;
      const Result<QByteArray> next = handshake_->takeLine(**line);
      if (!next) return lose(next.error());
      socket_->write(*next);
    }
    isStreaming_ = true;
    lastFault_.clear();
    for (const QString& refused : handshake_->refused())
      say(server() + ": " + refused);
    say(server() + QStringLiteral(": connected, SeedLink %1").arg(handshake_->protocol()));
  }

  void takeItems() {
    while (socket_) {
      Result<std::optional<SeedLinkInput::Item>> item = input_.takeItem();
      if (!item) return lose(item.error());
      if (!*item) return;
      const SeedLinkInput::Item found = **item;
      if (!found.packet) {
        return lose(found.line.startsWith("END") ? QStringLiteral("the server has no more to send")
                                                 : printableLine(found.line));
      }
      pauseSeconds_ = settings_.shortestPauseSeconds;
      if (found.packet->kind == SeedLinkPacket::Kind::Record) takeRecord(*found.packet);
    }
  }

  void takeRecord(const SeedLinkPacket& packet) {
    Result<LiveRecord> record = reader_.read(packet.payload);
    if (!record) {
      if (record.error() != lastDamage_) say(server() + ": " + record.error());
      lastDamage_ = record.error();
      return;
    }
    const QByteArray station = packet.station.isEmpty() ? record->station() : packet.station;
    if (!isAskedFor(*record, station) || !isKnown(*record)) return;
    places_[station] = {packet.sequence, record->startUs};
    isStateOld_ = true;
    if (record->samples.empty()) return;
    LiveRecord arrived = std::move(record).value();
    arrived.arrivalSeconds = double(QDateTime::currentMSecsSinceEpoch()) / kMillisecondsPerSecond;
    noteArrival(arrived);
    call(take_, arrived);
  }

  void noteArrival(const LiveRecord& record) {
    std::optional<ChannelArrival>& known = channels_.at(channelName(record.codes));
    known = known ? known->joined(record.arrival()) : record.arrival();
  }

  bool isKnown(const LiveRecord& record) {
    const QString channel = channelName(record.codes);
    if (channels_.contains(channel)) return true;
    if (channels_.size() >= kMostChannels) return false;
    channels_.try_emplace(channel);
    if (channels_.size() == kMostChannels)
      say(server() + QStringLiteral(": sends more than %1 channels; the others are left out").arg(kMostChannels));
    return true;
  }

  bool isAskedFor(const LiveRecord& record, const QByteArray& station) const {
    return std::ranges::any_of(settings_.stations, [&](const SeedLinkStation& asked) {
      return matchesWildcards(asked.id(), station) &&
             selectsChannel(asked.channels, record.codes[2].toLatin1(), record.codes[3].toLatin1());
    });
  }

  void noteSilence() {
    if (isAsked_ || !isStreaming_) return lose(QStringLiteral("the server has fallen silent"));
    isAsked_ = true;
    socket_->write(kQuestion);
    silence_.start(timerMilliseconds(settings_.stalledSeconds - settings_.keepAliveSeconds));
  }

  void saveState() {
    if (settings_.stateFile.isEmpty() || !isStateOld_) return;
    SeedLinkPlaces all = places_;
    all.insert(placesOfFile_.begin(), placesOfFile_.end());
    const Status status = writeSeedLinkState(all, settings_.stateFile);
    isStateOld_ = !status;
    if (!status && status.error() != lastStateFault_) say(status.error());
    lastStateFault_ = status.error();
  }

  QString server() const { return settings_.server.text(); }
  void say(const QString& line) { call(tell_, line); }

  SeedLinkSettings settings_;
  SeedLinkPlaces places_;
  SeedLinkPlaces placesOfFile_; // where they are not gone on from
  bool isStateOld_ = false;
  bool isStarted_ = false;
  bool isAsked_ = false; // the server, whether it is there
  double pauseSeconds_ = 1;
  QString lastFault_, lastDamage_, lastStateFault_;
  std::unique_ptr<SeedLinkSocket> socket_;
  std::optional<SeedLinkHandshake> handshake_;
  SeedLinkInput input_;
  LiveRecordReader reader_;
  QTimer reconnect_, silence_, save_;
};

SeedLinkClient::SeedLinkClient(SeedLinkSettings settings) : d_(std::make_unique<Private>(std::move(settings))) {}
SeedLinkClient::~SeedLinkClient() { Private::leave(d_); }

void SeedLinkClient::onRecord(std::function<void(const LiveRecord&)> take) { d_->take_ = std::move(take); }
void SeedLinkClient::onMessage(std::function<void(const QString&)> take) { d_->tell_ = std::move(take); }
void SeedLinkClient::start() { d_->start(); }
void SeedLinkClient::stop() { d_->stop(); }
bool SeedLinkClient::isStreaming() const { return d_->isStreaming_; }
std::optional<ChannelArrival> SeedLinkClient::arrival(const ChannelCodes& channel) const {
  const auto found = d_->channels_.find(channelName(channel));
  return found == d_->channels_.end() ? std::nullopt : found->second;
}
int SeedLinkClient::connectionCount() const { return d_->connections_; }

} // namespace xov
