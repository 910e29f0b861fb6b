// A regular grid of values as colours, with its colour bar: travel-time residuals.
//   XOVImageView                opens a window
//   XOVImageView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include <QApplication>

#include <XOV_Graphics/grid/XyzGrid.h>
#include <XOV_Graphics/views/image/XOVImageView.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  const auto grid = xov::readXyzGrid(data + "/grid_residuals.txt");
  if (!grid) qFatal("%s", qPrintable(grid.error()));

  xov::XOVImageView view(QRectF(0, 0, 600, 480));
  view.setXLimitsMinMax(float(grid->xmin), float(grid->xmax));
  view.setYLimitsMinMax(float(grid->ymin), float(grid->ymax));
  view.setUseTopoValues(false); // values on a scale, not elevations
  view.setPalette(xov::XOVImageView::Dawn);
  view.setupImageDataNROWSNCOLS(std::make_shared<std::vector<float>>(grid->values), grid->rows, grid->columns);
  view.setShowColorBar(true);
  view.setColorBarTitle("Residual (s)");
  view.setXLabelString("Longitude");
  view.setYLabelString("Latitude");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
