// Observed and synthetic seismograms in pairs, the synthetic ones in red.
//   wvfrmView                opens a window
//   wvfrmView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/prepare/CommonAxis.h>
#include <XOV_Graphics/seismic/prepare/RecordCopy.h>
#include <XOV_Graphics/views/seismic/wvfrmView.h>
#include <algorithm>
#include <cmath>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  // data and model of each station follow each other by their names
  const auto records =
      std::make_shared<xov::SeismogramArray>(xov::pairsFromOneStart(*recordsIn(data + "/panels", "*.SAC")));
  float largest = 0;
  for (const auto& record : *records) {
    for (const float sample : xov::samplesOf(*record))
      largest = std::max(largest, std::abs(sample));
  }

  xov::wvfrmView view(QRectF(0, 0, 340, 615));
  view.setWvfrmArray(records);
  view.setMaxAmplitude(largest);
  view.setXLimitsMinMax(0, 900);
  view.setXLabelString("Time (s)");
  view.setLabelsGiveWay(true);
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
