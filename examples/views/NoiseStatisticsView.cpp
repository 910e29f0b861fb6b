// How often the noise of a day has which power, by period.
//   NoiseStatisticsView                opens a window
//   NoiseStatisticsView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/prepare/SpectrumPieces.h>
#include <XOV_Graphics/seismic/signal/NoiseStatistics.h>
#include <XOV_Graphics/views/image/NoiseStatisticsView.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/day", "*.SAC");
  const auto statistics = std::make_shared<xov::NoiseStatistics>(
      xov::noiseStatistics(xov::spectrogramPieces(*records), {.segmentSeconds = 1800}));
  const xov::SpectralUnit unit = xov::spectralUnitOf(*records);
  for (std::size_t i = 0; i < statistics->decibels.size(); ++i) {
    const double hz = 1 / statistics->periods[i % statistics->periods.size()];
    const double more = unit.motion ? *xov::decibelsToAcceleration(*unit.motion, hz) : 0;
    statistics->decibels[i] += float(unit.decibelOffset + more);
  }

  xov::NoiseStatisticsView view(QRectF(0, 0, 720, 500));
  view.setStatistics(statistics);
  view.setShowNoiseModels(true);
  view.setShowPercentiles(true);
  view.setTitle("XX.DRUM..BHZ, segments of half an hour");
  view.setXLabelString("Period (s)");
  view.setYLabelString("Acceleration, dB rel. 1 (m/s²)²/Hz");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
