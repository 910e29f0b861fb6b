// Rise time against moment, with the axis titles that this view always has.
//   xyScatterPlot           opens a window
//   xyScatterPlot PICTURE   writes a picture
#include <QApplication>

#include <XOV_Graphics/views/xy/xyScatterPlot.h>
#include <vector>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  // The first pair is not drawn.
  const std::vector<float> moments{0, 1.2F, 2.1F, 2.9F, 4.4F, 5.2F, 6.8F, 7.7F, 8.9F};
  const std::vector<float> riseTimes{0, 0.6F, 0.9F, 0.8F, 1.3F, 1.2F, 1.6F, 1.5F, 1.9F};

  xov::xyScatterPlot view(QRectF(0, 0, 520, 380));
  view.setDataPointersXY(moments, riseTimes);
  view.setNpts(int(moments.size()));
  view.setXLimitsMinMax(0, 10);
  view.setYLimitsMinMax(0, 2.5F);
  view.set_fixedXAxisRange(true);
  view.set_fixedYAxisRange(true);
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
