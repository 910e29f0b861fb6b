// The path of the ground in the P wave, from above and from two sides.
//   ParticleMotionView                opens a window
//   ParticleMotionView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/prepare/Components.h>
#include <XOV_Graphics/seismic/prepare/ParticleMotion.h>
#include <XOV_Graphics/seismic/prepare/PhaseTimes.h>
#include <XOV_Graphics/seismic/prepare/RecordWindow.h>
#include <XOV_Graphics/views/seismic/ParticleMotionView.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/section", "XX.KITE.00.BH[ENZ].SAC");
  for (auto& record : *records) {
    const auto p = xov::phaseSeconds(*record, "P");
    if (!p) continue;
    const auto window = xov::windowOf(record, *p - 1, *p + 19);
    if (window) record = *window;
  }
  const auto components = xov::pickComponents(*records);
  if (!components) qFatal("%s", qPrintable(components.error()));
  const auto motion = xov::particleMotionOf(*components);
  if (!motion) qFatal("%s", qPrintable(motion.error()));

  xov::ParticleMotionView view(QRectF(0, 0, 900, 400));
  view.setMotion(*motion);
  view.setShowPolarization(true);
  view.setPathColor(QColor(0x1f, 0x5f, 0xa8));
  view.setTitle("KITE, the first twenty seconds of P");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
