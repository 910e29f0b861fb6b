#pragma once

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace xov::test {

/// Runs the event loop until `isTrue`, and says whether it came to be.
template <typename Condition>
bool waitUntil(Condition isTrue) {
  constexpr int kLongest = 20000; // milliseconds until a test gives up
  QEventLoop loop;
  QTimer poll;
  QElapsedTimer clock;
  clock.start();
  QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
    if (isTrue() || clock.elapsed() > kLongest) loop.quit();
  });
  poll.start(1);
  if (!isTrue()) loop.exec();
  return isTrue();
}

} // namespace xov::test
