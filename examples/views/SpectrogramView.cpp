// The spectrogram of a local earthquake, the seismogram above it.
//   SpectrogramView                opens a window
//   SpectrogramView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/prepare/RecordWindow.h>
#include <XOV_Graphics/seismic/prepare/SpectrumPieces.h>
#include <XOV_Graphics/views/image/SpectrogramView.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/day", "*.1.SAC");
  for (auto& record : *records) {
    const auto window = xov::windowOf(record, 4260, 4560); // seconds since midnight
    if (window) record = *window;
  }
  const xov::SpectralUnit unit = xov::spectralUnitOf(*records);

  xov::SpectrogramView view(QRectF(0, 0, 720, 480));
  view.setRecords(records);
  view.setWindowSeconds(6);
  view.setOverlap(0.8);
  view.setDecibelOffset(unit.decibelOffset);
  view.setColorBarTitle(unit.decibels);
  view.setPalette(xov::XOVImageView::Viridis);
  view.setShowSeismogram(true);
  view.setTitle("A local earthquake");
  view.setXLabelString("Time since midnight (s)");
  view.setYLabelString("Frequency (Hz)");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
