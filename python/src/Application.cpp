#include "python/src/Application.h"

#include "apps/xov/output/Desktop.h"

#include <QApplication>
#include <QThread>
#include <QTimer>

#include <stdexcept>

namespace py = pybind11;

namespace xov::python {

namespace {

constexpr int kMillisecondsBetweenLooks = 100;

} // namespace

void needApplication() {
  if (QCoreApplication::instance() == nullptr) {
    // Never destroyed: views may outlive whatever the interpreter takes apart at its end.
    static auto* const desktop =
        new cli::Desktop(cli::displayPresent() ? cli::DesktopUse::Window : cli::DesktopUse::Files);
    (void)desktop;
  }
  if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
    throw std::runtime_error("found a QCoreApplication without widgets, expected a QApplication");
  if (QThread::currentThread() != QCoreApplication::instance()->thread())
    throw std::runtime_error("plots are drawn in the thread that drew the first one (that of the QApplication), "
                             "not in several; use several processes");
}

bool hasWindows() { return QGuiApplication::platformName() != QLatin1String("offscreen"); }

void runUntilWindowsAreClosed() {
  bool interrupted = false;
  {
    const py::gil_scoped_release unlocked;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
      const py::gil_scoped_acquire lock;
      interrupted = PyErr_CheckSignals() != 0;
      if (interrupted) QApplication::closeAllWindows();
      if (interrupted) QApplication::quit();
    });
    timer.start(kMillisecondsBetweenLooks);
    QApplication::exec();
  }
  if (interrupted) throw py::error_already_set();
}

} // namespace xov::python
