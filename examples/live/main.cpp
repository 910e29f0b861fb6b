// A live monitor that a worker thread feeds.
#include "examples/live/LiveMonitor.h"

#include <QApplication>

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  LiveMonitor monitor;
  monitor.setTitle(QStringLiteral("Live"));
  monitor.resize(900, 400);
  monitor.show();
  return QApplication::exec();
}
