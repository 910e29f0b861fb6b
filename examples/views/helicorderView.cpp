// A day at one station as a drum recorder draws it, with the earthquakes of a catalogue.
//   helicorderView                opens a window
//   helicorderView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <XOV_Graphics/views/timeline/helicorderView.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/day", "*.SAC");
  auto events = std::make_shared<xov::EventOriginArray>();
  if (const auto file = xov::readEvents(data + "/day/catalogue.csv")) *events = file->origins();

  xov::helicorderView view(QRectF(0, 0, 800, 700));
  view.setWvfrmArray(records); // the view refers to records and events: keep them while it is shown
  view.setTheHypoArray(events);
  view.setGainFactor(10);
  view.setMagThreshold(2.5);
  view.setRowColors({Qt::black, QColor(0xb4, 0x2c, 0x1e), QColor(0x1f, 0x5f, 0xa8)});
  view.setShowEventLabels(true);
  view.setClipReach(1.5);
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
