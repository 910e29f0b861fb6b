// A scatter plot of the host's own buffers: distance and depth of made-up aftershocks.
//   XOV2DScatterPlotView           opens a window
//   XOV2DScatterPlotView PICTURE   writes a picture
#include <QApplication>

#include <XOV_Graphics/views/xy/XOV2DScatterPlotView.h>
#include <random>
#include <vector>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const auto distances = std::make_shared<std::vector<float>>(1, 0.0F); // the first pair is not drawn
  const auto depths = std::make_shared<std::vector<float>>(1, 0.0F);
  std::mt19937 chance(1); // gives the same numbers everywhere, as its distributions do not
  const auto share = [&chance] { return float(double(chance()) / double(std::mt19937::max())); };
  for (int i = 0; i < 300; ++i) {
    const float along = 60 * share();
    distances->push_back(along);
    depths->push_back(5 + along / 4 + 4 * (share() + share() - 1));
  }

  xov::XOV2DScatterPlotView view(QRectF(0, 0, 600, 400));
  view.setXpYpNpts(distances, depths, std::int32_t(depths->size()));
  view.setSymbolDiameter(7);
  view.setXLimitsMinMax(0, 60);
  view.setYLimitsMinMax(0, 30);
  view.set_fixedXAxisRange(true);
  view.set_fixedYAxisRange(true);
  view.setTitle("300 made-up aftershocks");
  view.setXLabelString("Distance along the fault (km)");
  view.setYLabelString("Depth (km)");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
