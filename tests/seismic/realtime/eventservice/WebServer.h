#pragma once

#include <gtest/gtest.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>
#include <QUrlQuery>

#include <deque>
#include <functional>

namespace xov::test {

/// What a web server sends for an answer with a body.
inline QByteArray webAnswer(int status, const QByteArray& body, const QByteArray& moreHeaders = {}) {
  return "HTTP/1.1 " + QByteArray::number(status) + " x\r\n" + moreHeaders +
         "Content-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body;
}

/// A web server on the loopback device that answers in turn as it is told, the last way again and again.
class WebServer {
public:
  /// Answers over the socket, and closes it or not.
  using Answer = std::function<void(QTcpSocket&)>;

  WebServer() {
    EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      while (QTcpSocket* const socket = server_.nextPendingConnection())
        QObject::connect(socket, &QIODevice::readyRead, &server_, [this, socket] { read(*socket); });
    });
  }

  void then(Answer answer) { answers_.push_back(std::move(answer)); }
  void then(const QByteArray& bytes) {
    then([bytes](QTcpSocket& socket) {
      socket.write(bytes);
      socket.disconnectFromHost();
    });
  }

  QUrl address(const char* path = "/fdsnws/event/1/query") const {
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(QLatin1String(path)));
  }
  int requestCount() const { return int(requests_.size()); }
  QString path(std::size_t request) const { return requests_.at(request).path(); }
  /// A parameter of a request; empty where it has none.
  QString parameter(std::size_t request, const char* name) const {
    return QUrlQuery(requests_.at(request)).queryItemValue(QLatin1String(name), QUrl::FullyDecoded);
  }

private:
  void read(QTcpSocket& socket) {
    const QByteArray request = socket.peek(1 << 16);
    if (!request.contains("\r\n\r\n") || answers_.empty()) return;
    socket.readAll();
    requests_.push_back(QUrl(QString::fromLatin1(request.split(' ').value(1))));
    const Answer answer = answers_.front();
    if (answers_.size() > 1) answers_.pop_front();
    answer(socket);
  }

  std::vector<QUrl> requests_;
  std::deque<Answer> answers_;
  QTcpServer server_; // goes first, with its sockets
};

} // namespace xov::test
