#include "apps/desk/window/ReadingFailures.h"

#include "apps/desk/window/MainWindow.h"
#include "apps/xov/terminal/Messages.h"

#include <QStatusBar>

#include <XOV_Graphics/seismic/io/archive/Archive.h>

namespace xov::desk {

ReadingFailures::ReadingFailures(MainWindow& window) : QObject(&window), window_(window) {
  // Samples are read in the middle of a drawing, by any thread.
  setSampleFaultHandler([this] { QMetaObject::invokeMethod(this, &ReadingFailures::tell, Qt::QueuedConnection); });
}

ReadingFailures::~ReadingFailures() { setSampleFaultHandler({}); }

void ReadingFailures::tell() {
  const QStringList faults = takeSampleFaults();
  for (const QString& fault : faults)
    cli::complain(fault);
  // Until something else is told: a plot has gaps that are none of the recording.
  if (!faults.isEmpty()) window_.statusBar()->showMessage(cli::printable(faults.last()));
}

} // namespace xov::desk
