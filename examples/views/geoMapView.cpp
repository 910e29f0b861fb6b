// A map: plate boundaries over a picture of the Earth, and a catalogue coloured by depth.
//   geoMapView                opens a window
//   geoMapView PICTURE DATA   writes a picture, DATA being the folder of the example data
#include <QApplication>

#include <XOV_Graphics/map/plateBoundaryController.h>
#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <XOV_Graphics/views/map/geoMapView.h>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  const QString data = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QStringLiteral("example-data");
  xov::geoMapView view(QRectF(0, 0, 760, 480));
  view.setXLimitsMinMax(100, 200);
  view.setYLimitsMinMax(-20, 55);
  view.loadImageWithIndex(xov::geoMapView::BaseImage::NaturalColors);

  xov::plateBoundaryController boundaries;
  boundaries.loadBirdPlateBoundaries();
  view.addAPolygonSet(boundaries.boundaries());
  view.setShowPlates(true);
  view.setPlateBoundaryColor(QColor(0xf0, 0xc0, 0x30));

  view.buildSeisColorTable();
  const auto file = xov::readEvents(data + "/map/world_catalogue.csv");
  for (std::size_t i = 0; file && i < file->events.size(); ++i) {
    const xov::HypocentreValues& event = file->events[i]->values();
    const auto point = std::make_shared<xov::geoMapPoint>();
    point->setLatLonDepth(event.latitudeDeg, event.longitudeDeg, event.depthKm);
    point->setSymbolSize((event.Mw - 4) / 8);
    point->setColorIndex(int(event.depthKm / 700 * float(view.theColors()->size() - 1)));
    view.thePoints()->push_back(point);
  }
  view.setShowScaleBar(true);
  view.setTitle("Ten made-up years");
  if (argc > 1) return view.writePNGToFile(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
