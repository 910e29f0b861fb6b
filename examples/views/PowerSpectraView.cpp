// The power of a day's noise over frequency, by two methods.
//   PowerSpectraView                opens a window
//   PowerSpectraView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/prepare/SpectrumPieces.h>
#include <XOV_Graphics/seismic/signal/PowerSpectrum.h>
#include <XOV_Graphics/views/xy/PowerSpectraView.h>

xov::SpectrumCurve curve(const QString& name, const xov::PowerSpectrum& spectrum) {
  return {name, {spectrum.hz.begin(), spectrum.hz.end()}, {spectrum.density.begin(), spectrum.density.end()}, {}};
}

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/day", "*.1.SAC");
  const auto pieces = xov::spectrogramPieces(*records);
  const auto samples = xov::joinedSamples(pieces);
  const double interval = pieces.empty() ? 0 : pieces.front().intervalSeconds;

  const auto curves = std::make_shared<xov::SpectrumCurves>();
  curves->push_back(curve("Welch, 200 s", xov::welch(samples, interval, {.segment = 4000})));
  curves->push_back(
      curve("Welch, 819 s, smoothed", xov::konnoOhmachi(xov::welch(samples, interval, {.segment = 16384}))));

  xov::PowerSpectraView view(QRectF(0, 0, 640, 460));
  view.setCurves(curves);
  view.setTitle("XX.DRUM..BHZ until 09:31");
  view.setXLabelString("Frequency (Hz)");
  view.setYLabelString("(nm/s)²/Hz");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
