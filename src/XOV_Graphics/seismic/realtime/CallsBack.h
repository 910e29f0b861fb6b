#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace xov {

/// The inside of a client that calls its host back, and so outlives a callback in which the host destroys the client:
/// then it hears of nothing more, and goes when the event loop comes round.
class CallsBack : public QObject {
public:
  /// Ends what it does for good.
  virtual void stop() = 0;

  /// For the destructor of the client.
  template <typename Inside>
  static void leave(std::unique_ptr<Inside>& inside) {
    inside->isLeft_ = inside->calls_ > 0;
    inside->stop();
    if (inside->isLeft_) inside.release()->deleteLater();
  }

protected:
  template <typename... Values>
  void call(const std::function<void(const Values&...)>& host, const Values&... values) {
    if (!host || isLeft_) return;
    ++calls_;
    host(values...);
    --calls_;
  }

private:
  int calls_ = 0;
  bool isLeft_ = false;
};

} // namespace xov
