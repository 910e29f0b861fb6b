// Two evenly sampled series that are no seismograms: a swinging mass with and without damping.
//   uniformTimeSeriesView           opens a window
//   uniformTimeSeriesView PICTURE   writes a picture
#include <QApplication>

#include <XOV_Graphics/seismic/SampledSignal.h>
#include <XOV_Graphics/views/seismic/uniformTimeSeriesView.h>
#include <cmath>

/// A minute at ten samples a second of a mass that is let go, about a height of 1.1.
std::shared_ptr<xov::UniformSignal> swing(float damping) {
  std::vector<float> heights(601);
  for (std::size_t i = 0; i < heights.size(); ++i) {
    const float time = float(i) / 10;
    heights[i] = 1.1F + std::exp(-damping * time) * std::cos(1.2F * time);
  }
  return std::make_shared<xov::SampledSignal>(std::move(heights), 0.1F, "A swinging mass");
}

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const auto series = std::make_shared<xov::UniformSignalArray>();
  series->push_back(swing(0));
  series->push_back(swing(0.08F));

  xov::uniformTimeSeriesView view(QRectF(0, 0, 640, 320));
  view.setWvfrmArray(series);
  view.setXLimitsMinMax(0, 60);
  view.setYLimitsMinMax(0, 2.2F); // 0 lies on the bottom edge
  view.setXLabelString("Time (s)");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
