#include "apps/xov/live/Redraw.h"

#include <QEventLoop>

namespace xov::cli {

namespace {

constexpr double kMillisecondsPerSecond = 1000;

} // namespace

QTimer* redrawEvery(int milliseconds, XOVView& view, std::function<void()> show) {
  auto* const timer = new QTimer(&view);
  timer->setTimerType(Qt::PreciseTimer);
  QObject::connect(timer, &QTimer::timeout, &view, [show = std::move(show), &view] {
    show();
    view.update();
  });
  timer->start(milliseconds);
  return timer;
}

void receiveFor(double seconds) {
  QEventLoop loop;
  QTimer::singleShot(int(seconds * kMillisecondsPerSecond), &loop, &QEventLoop::quit);
  loop.exec();
}

} // namespace xov::cli
