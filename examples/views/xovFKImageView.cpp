// The power of an array's beam over slowness, for a wave that crosses nine stations.
//   xovFKImageView                opens a window
//   xovFKImageView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/array/BeamPower.h>
#include <XOV_Graphics/seismic/array/RecordArray.h>
#include <XOV_Graphics/views/image/xovFKImageView.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/array", "*.SAC");
  QStringList names;
  for (const auto& record : *records)
    names << record->labelString();
  const auto array = xov::arrayOfRecords(*records, names);
  if (!array) qFatal("%s", qPrintable(array.error()));
  xov::BeamSearch search;
  search.intervalSeconds = array->intervalSeconds;
  search.windowFrom = 12;
  search.windowTo = 24;
  search.lowestHz = 1;
  search.highestHz = 3;
  const auto beam = xov::beamPower(array->traces, search);
  if (!beam) qFatal("%s", qPrintable(beam.error()));

  xov::xovFKImageView view(QRectF(0, 0, 600, 560));
  view.setPalette(xov::XOVImageView::Viridis);
  view.setBeamPower(*beam);
  view.setShowColorBar(true);
  view.setCircleLabels(xov::xovFKImageView::KilometresPerSecond);
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
