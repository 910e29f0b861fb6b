#include "apps/xov/live/Interrupt.h"

#ifdef Q_OS_UNIX
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace xov::cli {

#ifdef Q_OS_UNIX

namespace {

// A handler may do little more than write to a pipe, which wakes the event loop up.
int pipeEnds[2] = {-1, -1};

extern "C" void wakeUp(int signal) {
  const char byte = 1;
  if (::write(pipeEnds[1], &byte, 1) < 0) ::_exit(128 + signal);
  std::signal(signal, SIG_DFL);
}

} // namespace

Interrupt::Interrupt(std::function<void()> leave) {
  if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) return;
  auto* const notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, [notifier, leave = std::move(leave)] {
    notifier->setEnabled(false);
    leave();
  });
  for (const int signal : {SIGINT, SIGTERM, SIGHUP})
    std::signal(signal, wakeUp);
}

Interrupt::~Interrupt() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP})
    std::signal(signal, SIG_DFL);
  for (int& end : pipeEnds) {
    if (end >= 0) ::close(end);
    end = -1;
  }
}

#else

Interrupt::Interrupt(std::function<void()> /*leave*/) {}
Interrupt::~Interrupt() = default;

#endif

} // namespace xov::cli
