// A small host program for the window test: a record section in a window, whose controller prints what it is told.
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QTimer>

#include <cmath>
#include <cstdio>

namespace {

class PrintingController : public xov::PlotController {
public:
  void handleClickedMousePosition(QPointF position) override { print("clicked", position); }
  void handleTrackedMousePosition(QPointF position) override { print("tracked", position); }

private:
  static void print(const char* what, QPointF position) {
    std::printf("%s %.6f %.6f\n", what, position.x(), position.y());
    std::fflush(stdout);
  }
};

// A sine of 100 s at 10 Hz.
std::shared_ptr<xov::SeismogramRecord> sine() {
  xov::SacHeader header;
  header.delta = 0.1f;
  header.b = 0;
  std::vector<float> samples(1001);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(1000 * std::sin(double(i) * 0.05));
  return std::make_shared<xov::SacSeismogram>(header, std::move(samples));
}

} // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const auto records = std::make_shared<const xov::SeismogramArray>(xov::SeismogramArray{sine()});
  PrintingController controller;
  QMainWindow window;
  auto* view = new xov::MultiSeisView({0, 0, 640, 400});
  view->setWvfrmsArray(records);
  view->setController(&controller);
  view->computeRects();
  window.setCentralWidget(view);
  window.setWindowTitle(QStringLiteral("xov window test"));
  window.resize(640, 400);
  window.move(0, 0);
  window.show();
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &window, [&, menuWasOpen = false]() mutable {
    if (view->contextualMenu()->isVisible() != menuWasOpen) {
      menuWasOpen = !menuWasOpen;
      std::printf("menu %s\n", menuWasOpen ? "open" : "closed");
      std::fflush(stdout);
    }
  });
  watch.start(20);
  std::printf("ready\n");
  std::fflush(stdout);
  return QApplication::exec();
}
