// Two recordings of an earthquake over each other, on one scale of time and amplitude.
//   SeisView01                opens a window
//   SeisView01 PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/views/seismic/SeisView01.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/section", "XX.[HK]*.BHZ.SAC");

  xov::SeisView01 view(QRectF(0, 0, 720, 360));
  view.setWvfrmsArray(records);
  view.setTraceColors({QColor(0x1f, 0x5f, 0xa8), QColor(0xc8, 0x5a, 0x12)});
  std::vector<xov::LegendEntry> legend;
  for (std::size_t i = 0; i < records->size(); ++i)
    legend.push_back({(*records)[i]->labelString(), view.traceColors()[i % 2]});
  view.setLegend(legend);
  view.setTitle("Two stations");
  view.setXLabelString("Time since the origin (s)");
  view.setYLabelString("Velocity (nm/s)");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
