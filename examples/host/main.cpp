// A host program: a record section of the files named on the command line, in a window that reports clicks.
#include <QApplication>

#include <XOV_Graphics/seismic/io/Readers.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>
#include <cstdio>

struct Controller : xov::PlotController {
  void handleClickedMousePosition(QPointF p) override { std::printf("%.2f s, amplitude %g\n", p.x(), p.y()); }
  void handleTrackedMousePosition(QPointF) override {}
};

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const auto records = std::make_shared<xov::SeismogramArray>();
  for (int i = 1; i < argc; ++i) {
    const auto file = xov::readSeismograms(QString::fromLocal8Bit(argv[i]));
    if (file)
      records->insert(records->end(), file.value().begin(), file.value().end());
    else
      std::fprintf(stderr, "%s\n", qPrintable(file.error()));
  }
  Controller controller;
  xov::MultiSeisView view(QRectF(0, 0, 900, 600));
  view.setWvfrmsArray(records); // the view refers to the array: keep it while it is shown
  view.setController(&controller);
  view.setXLabelString("Time (s)");
  view.setShowZeroLine(true);
  view.show();
  return QApplication::exec();
}
