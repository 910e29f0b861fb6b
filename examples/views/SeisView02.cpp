// The components of one station, a band for each.
//   SeisView02                opens a window
//   SeisView02 PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/views/seismic/SeisView02.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/section", "XX.KITE.00.BH[ENZ].SAC");

  xov::SeisView02 view(QRectF(0, 0, 720, 400));
  view.setWvfrmsArray(records);
  view.setplotStyle(xov::SeisView02::Bands);
  view.setTitle("KITE: east, north, up");
  view.setXLabelString("Time since the origin (s)");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
