#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkServer.h"

#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkSession.h"

#include <QElapsedTimer>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>

namespace xov {

namespace {

constexpr int kMillisecondsPerTick = 20;
constexpr double kMicrosecondsPerMillisecond = 1000;
constexpr qint64 kMostUnsent = qint64(1) << 20; // bytes that a slow client lets pile up
constexpr qint64 kLongestCommand = 1024;
constexpr qint64 kLargestPem = qint64(1) << 20;

// What a server shows of itself to clients that want their connection encrypted.
Result<QSslConfiguration> identityOf(const SeedLinkServerSettings& settings) {
  const Result<QByteArray> certificate = readWholeFile(settings.certificateFile, kLargestPem);
  if (!certificate) return Error{certificate.error()};
  const Result<QByteArray> key = readWholeFile(settings.keyFile, kLargestPem);
  if (!key) return Error{key.error()};
  QSslConfiguration identity = QSslConfiguration::defaultConfiguration();
  const QList<QSslCertificate> chain = QSslCertificate::fromData(*certificate, QSsl::Pem);
  if (chain.isEmpty())
    return Error{settings.certificateFile + QStringLiteral(": found no certificate, expected PEM")};
  identity.setLocalCertificateChain(chain);
  for (const QSsl::KeyAlgorithm algorithm : {QSsl::Ec, QSsl::Rsa}) {
    const QSslKey read(*key, algorithm);
    if (!read.isNull()) identity.setPrivateKey(read);
  }
  if (identity.privateKey().isNull())
    return Error{settings.keyFile + QStringLiteral(": found no key without a password, expected PEM")};
  return identity;
}

// One client's connection.
class Connection : public QObject {
public:
  Connection(QTcpSocket* socket, const SeedLinkServerSettings& settings, QObject* parent)
      : QObject(parent),
        socket_(socket),
        settings_(settings),
        session_(settings) {
    socket->setParent(this);
    drip_.setSingleShot(true);
    connect(&drip_, &QTimer::timeout, this, [this] { drip(); });
    connect(socket, &QAbstractSocket::disconnected, this, &QObject::deleteLater);
  }

  QTcpSocket& socket() { return *socket_; }
  bool isAtEnd(std::size_t released) const { return slow_.isEmpty() && session_.isAtEnd(released); }

  void takeCommands(const std::vector<ServedRecord>& records, std::size_t released) {
    while (socket_->canReadLine() || socket_->bytesAvailable() > 0) {
      // Lines end with LF or CR, or both.
      const QByteArray waiting = socket_->peek(kLongestCommand);
      const auto end = std::ranges::find_if(waiting, [](char c) { return c == '\r' || c == '\n'; });
      if (end == waiting.end()) {
        if (waiting.size() >= kLongestCommand) socket_->abort();
        return;
      }
      const QByteArray line = socket_->read(end - waiting.begin() + 1).trimmed();
      if (!line.isEmpty()) write(session_.answer(line, records, released));
      if (session_.isOver()) return closeWhenSent();
    }
  }

  void sendPackets(const std::vector<ServedRecord>& records, std::size_t released) {
    if (session_.isOver() || !slow_.isEmpty()) return;
    const qint64 room = kMostUnsent - socket_->bytesToWrite();
    if (room <= 0) return;
    write(session_.packets(records, released, room));
    if (session_.isOver()) closeWhenSent();
  }

private:
  void write(const QByteArray& bytes) {
    if (settings_.faults.bytesAtOnce <= 0) {
      socket_->write(bytes);
      return;
    }
    slow_ += bytes;
    if (!drip_.isActive()) drip_.start(0);
  }

  void drip() {
    socket_->write(slow_.first(std::min<qsizetype>(settings_.faults.bytesAtOnce, slow_.size())));
    socket_->flush();
    slow_.remove(0, settings_.faults.bytesAtOnce);
    if (!slow_.isEmpty()) return drip_.start(0);
    if (session_.isOver()) socket_->disconnectFromHost();
  }

  void closeWhenSent() {
    if (slow_.isEmpty()) socket_->disconnectFromHost();
  }

  QTcpSocket* socket_;
  const SeedLinkServerSettings& settings_;
  SeedLinkSession session_;
  QByteArray slow_; // what still drips
  QTimer drip_;
};

} // namespace

class SeedLinkServer::Private : public QObject {
public:
  explicit Private(SeedLinkServerSettings settings) : settings_(std::move(settings)) {
    if (settings_.certificateFile.isEmpty()) {
      tcp_ = std::make_unique<QTcpServer>();
    } else {
      tcp_ = std::make_unique<QSslServer>();
    }
    connect(tcp_.get(), &QTcpServer::pendingConnectionAvailable, this, [this] { greet(); });
    connect(&tick_, &QTimer::timeout, this, [this] { play(); });
  }

  Status listen() {
    if (!settings_.certificateFile.isEmpty()) {
      const Result<QSslConfiguration> identity = identityOf(settings_);
      if (!identity) return Error{identity.error()};
      static_cast<QSslServer&>(*tcp_).setSslConfiguration(*identity);
    }
    const QHostAddress address = settings_.isLocal ? QHostAddress::LocalHost : QHostAddress::Any;
    if (!tcp_->listen(address, settings_.port))
      return Error{QStringLiteral("port %1: %2").arg(settings_.port).arg(tcp_->errorString())};
    clock_.start();
    tick_.start(kMillisecondsPerTick);
    return {};
  }

  void greet() {
    while (QTcpSocket* const socket = tcp_->nextPendingConnection()) {
      auto* const connection = new Connection(socket, settings_, this);
      connections_.push_back(connection);
      connect(connection, &QObject::destroyed, this, [this, connection] { std::erase(connections_, connection); });
      const auto read = [this, connection] {
        release();
        connection->takeCommands(records_, released_);
        connection->sendPackets(records_, released_);
      };
      connect(socket, &QIODevice::readyRead, connection, read);
      // What came with the end of an encrypted handshake is not told of again.
      if (socket->bytesAvailable() > 0) QMetaObject::invokeMethod(connection, read, Qt::QueuedConnection);
      connect(socket, &QIODevice::bytesWritten, connection,
              [this, connection] { connection->sendPackets(records_, released_); });
    }
  }

  // Lets those records be there that were complete by now.
  void release() {
    if (records_.empty()) return;
    const double elapsedUs = double(clock_.elapsed()) * kMicrosecondsPerMillisecond * settings_.speed;
    const double now = double(records_.front().startUs) + elapsedUs;
    while (released_ < records_.size() && (settings_.speed <= 0 || double(records_[released_].endUs) <= now))
      ++released_;
  }

  void play() {
    release();
    for (Connection* const connection : connections_)
      connection->sendPackets(records_, released_);
  }

  SeedLinkServerSettings settings_;
  std::vector<Connection*> connections_;
  std::vector<ServedRecord> records_; // in the order in which they were complete
  std::size_t released_ = 0;
  QElapsedTimer clock_;
  QTimer tick_;
  std::unique_ptr<QTcpServer> tcp_;
};

SeedLinkServer::SeedLinkServer(SeedLinkServerSettings settings)
    : d_(std::make_unique<Private>(std::move(settings))) {}
SeedLinkServer::~SeedLinkServer() = default;

Status SeedLinkServer::addFile(const QString& path) {
  Result<std::vector<ServedRecord>> records = readServedRecords(path);
  if (!records) return Error{records.error()};
  std::vector<ServedRecord>& all = d_->records_;
  std::ranges::move(std::move(records).value(), std::back_inserter(all));
  std::ranges::stable_sort(all, {}, &ServedRecord::endUs);
  return {};
}

Status SeedLinkServer::listen() { return d_->listen(); }

quint16 SeedLinkServer::port() const { return d_->tcp_->serverPort(); }
int SeedLinkServer::clientCount() const { return int(d_->connections_.size()); }

bool SeedLinkServer::isAtEnd() const {
  return d_->released_ == d_->records_.size() &&
         std::ranges::all_of(d_->connections_, [&](const Connection* c) { return c->isAtEnd(d_->released_); });
}

} // namespace xov
