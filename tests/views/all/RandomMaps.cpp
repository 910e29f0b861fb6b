#include "tests/views/all/RandomMaps.h"

namespace xov::testing {

namespace {

float degrees(RandomHost& host) { return host.chance(0.8) ? float(host.count(720) - 360) : host.number(); }

} // namespace

void addFeatures(RandomHost& host, geoMapView& view) {
  for (int n = host.count(200); n > 0; --n) {
    auto point = std::make_shared<geoMapPoint>();
    point->setLatLonDepth(degrees(host), degrees(host), host.number());
    point->setSymbolSize(host.chance(0.8) ? 0.5f : host.number());
    point->setColorIndex(host.count(40) - 5);
    point->setAlpha(host.chance(0.8) ? 1 : host.number());
    view.thePoints()->push_back(host.chance(0.95) ? point : nullptr);
  }
  for (int n = host.count(20); n > 0; --n) {
    auto vector = std::make_shared<geoMapVector>();
    vector->setLatLonDepth(degrees(host), degrees(host), 0);
    vector->setEastValue(host.number());
    vector->setNorthValue(host.number());
    vector->setScaleFactor(host.number());
    view.addTheVector(vector);
  }
  auto lines = std::make_shared<XOVPolygonArray>();
  for (int n = host.count(5); n > 0; --n) {
    auto line = std::make_shared<XOVPolygon>();
    line->setXp(host.samples(300));
    line->setYp(host.samples(300));
    line->setNpts(host.count(400) - 20);
    lines->push_back(line);
  }
  view.addAPolygonSet(lines);
  if (host.chance(0.3)) view.setPolygonSetColor(std::size_t(host.count(2)), Qt::blue);
}

void addMargins(RandomHost& host, geoMapView& view) {
  MapMechanismArray mechanisms;
  for (int n = host.count(60); n > 0; --n) {
    const auto element = [&] { return double(host.number()); };
    const MomentTensor tensor{element(), element(), element(), element(), element(), element()};
    const double radius = host.chance(0.8) ? 12 : double(host.number());
    mechanisms.push_back(
        {degrees(host), degrees(host), tensor, radius, host.chance(0.9) ? QColor(Qt::red) : QColor()});
  }
  view.setMechanisms(std::move(mechanisms));
  view.setMovesMechanismsApart(host.chance(0.5));
  MapLabelArray labels;
  for (int n = host.count(60); n > 0; --n)
    labels.push_back({degrees(host), degrees(host), QString(host.count(9), QLatin1Char('x')), double(host.number())});
  view.setLabels(std::move(labels));
  MapLegend legend;
  for (int n = host.count(5); n > 0; --n) {
    MapLegendSection section{QString(host.count(30), QLatin1Char('t')), {}, {}, {}};
    for (int items = host.count(5); items > 0; --items)
      section.items.push_back({QStringLiteral("item"), Qt::red, double(host.number()), double(host.number())});
    if (host.chance(0.5)) section.colors = {Qt::red, QColor(), Qt::blue};
    section.marks.push_back({double(host.number()), QStringLiteral("mark")});
    legend.push_back(section);
  }
  view.setLegend(std::move(legend));
  view.setShowScaleBar(host.chance(0.5));
  view.setShowDegreeSigns(host.chance(0.5));
  view.setShowColorBar(host.chance(0.5));
}

} // namespace xov::testing
