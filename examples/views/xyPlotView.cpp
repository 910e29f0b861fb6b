// A line through pairs of numbers: group velocity of Rayleigh waves over a logarithmic period.
//   xyPlotView           opens a window
//   xyPlotView PICTURE   writes a picture
#include <QApplication>

#include <XOV_Graphics/seismic/arrivals/GroupVelocity.h>
#include <XOV_Graphics/views/xy/xyPlotView.h>
#include <vector>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  std::vector<float> periods, velocities;
  for (double period = 10; period <= 250; period *= 1.02) {
    periods.push_back(float(period));
    velocities.push_back(float(xov::groupVelocity(xov::SurfaceWave::Rayleigh, period)));
  }

  xov::xyPlotView view(QRectF(0, 0, 600, 420));
  view.setDataPointersXY(periods, velocities);
  view.setNpts(int(periods.size()));
  view.setLogX(true);
  view.setXLimitsMinMax(8, 300);
  view.setYLimitsMinMax(2.8F, 4.2F);
  view.set_fixedXAxisRange(true);
  view.set_fixedYAxisRange(true);
  view.setLineWidth(1.5);
  view.setTitle("Rayleigh waves, fundamental mode");
  view.setXLabelString("Period (s)");
  view.setYLabelString("Group velocity (km/s)");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
