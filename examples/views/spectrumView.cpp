// A panel that keeps spectra for a class of the host's own, which draws them.
//   spectrumView           opens a window
//   spectrumView PICTURE   writes a picture
#include <QApplication>

#include <XOV_Graphics/platform/GraphicsContext.h>
#include <XOV_Graphics/platform/Path.h>
#include <XOV_Graphics/views/xy/spectrumView.h>
#include <cmath>

/// Draws the spectra of boxes that last as many seconds as the list says.
class LobesView : public xov::spectrumView {
public:
  using spectrumView::spectrumView;

  void drawRect(const QRectF& dirty) override {
    spectrumView::drawRect(dirty);
    for (const QVariant& box : *theSpectra()) {
      xov::Path curve;
      for (int x = 1; x < width(); ++x) {
        const double phase = box.toDouble() * x / 40;
        const QPointF point(x, 20 + 240 * std::abs(std::sin(phase) / phase));
        x == 1 ? curve.moveTo(point) : curve.lineTo(point);
      }
      curve.setLineWidth(1.5);
      xov::GraphicsContext::current().setColor(QColor::fromHsv(int(box.toDouble() * 60), 200, 160));
      xov::GraphicsContext::current().strokePath(curve);
    }
  }
};

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  LobesView view(QRectF(0, 0, 520, 300));
  view.setTheSpectra(std::make_shared<xov::ChartItems>());
  for (const double width : {1.0, 2.0, 4.0})
    view.addToTheSpectra(width);
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
