// One station in three panels, turned to the directions of the wave, with predicted arrivals.
//   ThreeCompView                opens a window
//   ThreeCompView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/prepare/Components.h>
#include <XOV_Graphics/seismic/prepare/RecordPicks.h>
#include <XOV_Graphics/seismic/prepare/Rotation.h>
#include <XOV_Graphics/views/seismic/ThreeCompView.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/section", "XX.KITE.00.BH[ENZ].SAC");
  const auto components = xov::pickComponents(*records);
  if (!components) qFatal("%s", qPrintable(components.error()));
  const auto turned = xov::rotated(*components, xov::WaveAxes::ZRT);
  if (!turned) qFatal("%s", qPrintable(turned.error()));
  const auto picked = xov::withPicksOrPredictions(xov::presentComponents(*turned), {"P", "S"});

  // The view refers to the observation: keep it while it is shown.
  const std::shared_ptr<xov::ThreeComponentObservation> observation = xov::observationOf(*turned, picked.records);
  xov::ThreeCompView view(QRectF(0, 0, 720, 540));
  view.setObservation(observation);
  view.setShowMaxAmplitude(true);
  view.setXLabelString("Time since the origin (s)");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
