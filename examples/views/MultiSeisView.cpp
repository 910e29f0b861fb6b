// A record section: an earthquake at twelve stations, each at its distance.
//   MultiSeisView                opens a window
//   MultiSeisView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/prepare/Conditioning.h>
#include <XOV_Graphics/seismic/signal/Butterworth.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/section", "*.BHZ.SAC");
  for (auto& record : *records) {
    const auto smooth = xov::filtered(*record, xov::ButterworthFilter::bandPass(0.02, 0.1), xov::FilterPhase::Zero);
    if (smooth) record = *smooth;
  }

  xov::MultiSeisView view(QRectF(0, 0, 760, 560));
  view.setWvfrmsArray(records);
  view.setStripPlacement(xov::MultiSeisView::StripPlacement::ByDistanceDegrees);
  view.setAmplitudeScaling(xov::MultiSeisView::AmplitudeScaling::EachTrace);
  view.setPlotGainFactor(2);
  view.setLabelsGiveWay(true);
  view.setTitle("Vertical components, 0.02 to 0.1 Hz");
  view.setXLabelString("Time since the origin (s)");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
