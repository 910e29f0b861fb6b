// A live display in colours of the host's own.
//   XOVRealTimeDisplayView02                opens a window
//   XOVRealTimeDisplayView02 PICTURE DATA   writes a picture, DATA being the folder of the example data
#include "examples/views/ExampleRecords.h"

#include <QApplication>

#include <XOV_Graphics/seismic/realtime/RealTimeFeed.h>
#include <XOV_Graphics/seismic/realtime/Replayer.h>
#include <XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto records = recordsIn(data + "/section", "*.BHZ.SAC");
  xov::Replayer replayer(*records);
  xov::RealTimeFeed feed(1200);
  replayer.advanceTo(1800, feed); // as a timer of the host would, again and again
  const xov::RealTimeSpan span = feed.show(replayer.now(), 900, xov::Edge::Right);

  xov::XOVRealTimeDisplayView02 view(QRectF(0, 0, 760, 480));
  view.setWvfrmsArray(feed.records());
  view.setRefDate(replayer.now());
  view.setOriginOnRight(true);
  view.setXLimitsMinMax(span.xmin, span.xmax);
  view.setYLimitsMinMax(-60000, 60000);
  view.setWaveformGain(2);
  view.setBackGroundColor(QColor(0x10, 0x20, 0x30));
  view.setDrawingColor(QColor(0xa0, 0xd8, 0xa0));
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
