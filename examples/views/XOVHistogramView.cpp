// A histogram of magnitudes with logarithmic counts: a straight flank.
//   XOVHistogramView                opens a window
//   XOVHistogramView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include <QApplication>

#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <XOV_Graphics/views/xy/XOVHistogramView.h>
#include <vector>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  std::vector<float> magnitudes;
  if (const auto file = xov::readEvents(data + "/map/world_catalogue.csv")) {
    for (const auto& event : file->events)
      magnitudes.push_back(event->Mw());
  }

  xov::XOVHistogramView view(QRectF(0, 0, 600, 400));
  view.setValuesNPts(magnitudes.data(), std::int32_t(magnitudes.size()));
  view.setLogY(true);
  view.setNBinsMinMax(40, 4.5F, 8.5F);
  view.binValues();
  view.setBarFillColor(QColor(0x6f, 0x9c, 0xc8));
  view.setTitle("A made-up catalogue");
  view.setXLabelString("Magnitude");
  view.setYLabelString("Earthquakes");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
