// A live display: twelve stations as they come, the present at the right.
//   realTimeDisplayView01                opens a window
//   realTimeDisplayView01 PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/realtime/RealTimeFeed.h>
#include <XOV_Graphics/seismic/realtime/Replayer.h>
#include <XOV_Graphics/views/timeline/realTimeDisplayView01.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/section", "*.BHZ.SAC");
  xov::Replayer replayer(*records);
  xov::RealTimeFeed feed(1200);
  replayer.advanceTo(1500, feed); // as a timer of the host would, again and again
  const xov::RealTimeSpan span = feed.show(replayer.now(), 900, xov::Edge::Right);

  xov::realTimeDisplayView01 view(QRectF(0, 0, 760, 480));
  view.setWvfrmsArray(feed.records());
  view.setRefDate(replayer.now());
  view.setOriginOnRight(true);
  view.setXLimitsMinMax(span.xmin, span.xmax);
  view.setYLimitsMinMax(-60000, 60000);
  view.setWaveformGain(2);
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
