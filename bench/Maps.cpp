#include "bench/Maps.h"

#include "XOV_Graphics/seismic/mechanism/BeachBall.h"
#include "XOV_Graphics/views/image/XOVImageView.h"
#include "XOV_Graphics/views/map/geoMapView.h"
#include "XOV_Graphics/views/xy/XOV2DScatterPlotView.h"
#include "bench/Contest.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <vector>

namespace xov::bench {

namespace {

constexpr QSize kSize(900, 600);
constexpr int kCells = 8192; // a side
constexpr int kPalette = 3;
constexpr int kMapPoints = 200000;
constexpr int kBeachBalls = 10000;
constexpr double kBallRadius = 8;
constexpr int kSymbols = 1000000;
constexpr float kPointsOfSize1 = 24; // the width of a map's point

QImage whitePaper() {
  QImage paper(kSize, QImage::Format_ARGB32_Premultiplied);
  paper.fill(Qt::white);
  return paper;
}

GridFloats noise() {
  std::mt19937 random(2009);
  std::vector<float> cells(std::size_t(kCells) * kCells);
  std::generate(cells.begin(), cells.end(), [&] { return float(random() % 4096) - 1000; });
  return std::make_shared<const std::vector<float>>(std::move(cells));
}

// What a program would do without a library: the range, and a table of colours.
QImage coloredByTable(const std::vector<float>& cells) {
  const auto [low, high] = std::minmax_element(cells.begin(), cells.end());
  std::array<QRgb, 256> table{};
  for (int level = 0; level < 256; ++level)
    table[std::size_t(level)] = QColor::fromHsv(240 - level * 240 / 256, 255, 255).rgb();
  const float scale = 255 / (*high - *low);
  QImage image(kCells, kCells, QImage::Format_RGB32);
  auto cell = cells.begin();
  for (int y = 0; y < kCells; ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < kCells; ++x)
      line[x] = table[std::size_t((*cell++ - *low) * scale)];
  }
  return image;
}

std::shared_ptr<GeoMapPointArray> translucentPoints() {
  auto points = std::make_shared<GeoMapPointArray>();
  std::mt19937 random(5);
  for (int i = 0; i < kMapPoints; ++i) {
    const auto point = std::make_shared<geoMapPoint>();
    point->setLon(float(random() % 36000) / 100);
    point->setLat(float(random() % 18000) / 100 - 90);
    point->setColorIndex(int(random() % 21));
    point->setAlpha(0.5F);
    point->setSymbolSize(0.25F);
    points->push_back(point);
  }
  return points;
}

void paintPoints(const geoMapView& map) {
  QImage paper = whitePaper();
  QPainter painter(&paper);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QColor(0, 0, 0, 128));
  const QRectF frame = map.mapRect();
  for (const auto& point : *map.thePoints()) {
    QColor color = (*map.theColors())[std::size_t(point->colorIndex())];
    color.setAlphaF(point->alpha());
    painter.setBrush(color);
    const double radius = double(kPointsOfSize1 * point->symbolSize()) / 2;
    painter.drawEllipse(QPointF(frame.x() + double(point->lon()) * frame.width() / 360,
                                frame.y() + double(90 - point->lat()) * frame.height() / 180),
                        radius, radius);
  }
}

MapMechanismArray mechanisms() {
  MapMechanismArray balls(kBeachBalls);
  std::mt19937 random(13);
  std::normal_distribution<double> element;
  for (MapMechanism& ball : balls) {
    ball.longitudeDeg = float(random() % 36000) / 100;
    ball.latitudeDeg = float(random() % 18000) / 100 - 90;
    ball.tensor = {element(random), element(random), element(random),
                   element(random), element(random), element(random)};
    ball.radius = kBallRadius;
    ball.color = QColor::fromHsv(int(random() % 360), 255, 200);
  }
  return balls;
}

// What a program would do that has the polygons.
void paintMechanisms(const geoMapView& map) {
  QImage paper = whitePaper();
  QPainter painter(&paper);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF frame = map.mapRect();
  for (const MapMechanism& mechanism : map.mechanisms()) {
    const BeachBall ball = beachBallOf(mechanism.tensor, 64);
    painter.resetTransform();
    painter.translate(frame.x() + double(mechanism.longitudeDeg) * frame.width() / 360,
                      frame.y() + double(90 - mechanism.latitudeDeg) * frame.height() / 180);
    painter.scale(mechanism.radius, -mechanism.radius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ball.groundIsCompressional ? mechanism.color : QColor(Qt::white));
    painter.drawEllipse(QPointF(), 1, 1);
    painter.setPen(QPen(Qt::black, 0));
    painter.setBrush(ball.groundIsCompressional ? QColor(Qt::white) : mechanism.color);
    for (const BeachBallLine& patch : ball.patches)
      painter.drawPolygon(patch.data(), int(patch.size()));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QPointF(), 1, 1);
  }
}

struct Places {
  XOV2DScatterPlotView::Buffer x = std::make_shared<std::vector<float>>();
  XOV2DScatterPlotView::Buffer y = std::make_shared<std::vector<float>>();

  Places() {
    std::mt19937 random(7);
    for (int i = 0; i < kSymbols; ++i) {
      x->push_back(float(random() % 90000) / 100);
      y->push_back(float(random() % 60000) / 100);
    }
  }
};

std::unique_ptr<XOV2DScatterPlotView> scatterOf(const Places& places, float size) {
  auto view = std::make_unique<XOV2DScatterPlotView>(QRectF(QPointF(), QSizeF(kSize)));
  view->setXpYpNpts(places.x, places.y, kSymbols);
  view->setSymbolDiameter(size);
  view->computePlotLimits();
  return view;
}

void paintSymbols(const Places& places, float size) {
  QImage paper = whitePaper();
  QPainter painter(&paper);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::black);
  for (std::size_t i = 0; i < places.x->size(); ++i)
    painter.drawEllipse(QPointF((*places.x)[i], (*places.y)[i]), double(size) / 2, double(size) / 2);
}

} // namespace

QString mapTable(int rounds) {
  QImage drawn;
  const auto draw = [&drawn](XOVView& view) { drawn = view.pictureOfRect(view.bounds()); };

  const GridFloats cells = noise();
  const QRectF frame(QPointF(0, 0), QSizeF(kSize));
  XOVImageView image(frame);
  image.setUseTopoValues(false);
  image.setPalette(kPalette);
  image.setShowAxes(false);
  const auto setUp = [&cells](XOVImageView& view) {
    view.setXLimitsMinMax(0, kCells);
    view.setYLimitsMinMax(0, kCells);
    view.setupImageDataNROWSNCOLS(cells, kCells, kCells);
  };
  setUp(image);
  draw(image);
  XOVImageView live(frame);
  setUp(live);
  const QImage scaled = drawn;

  geoMapView map(frame);
  map.buildSeisColorTable();
  map.setThePoints(translucentPoints());
  draw(map);

  geoMapView balls(frame);
  balls.setMechanisms(mechanisms());
  draw(balls);

  const Places places;
  std::vector<Contest> contests = {
      {"8192 × 8192 cells, redraw", [&] { draw(image); }},
      {"",
       [&] {
         QImage paper = whitePaper();
         QPainter(&paper).drawImage(0, 0, scaled);
       }},
      {"8192 × 8192 cells, new view", [&] { setUp(*std::make_unique<XOVImageView>(frame)); }},
      {"", [&] { coloredByTable(*cells); }},
      {"8192 × 8192 cells, new grid", [&] { setUp(live); }},
      {"", [&] { coloredByTable(*cells); }},
      {"200,000 translucent points on a map", [&] { draw(map); }},
      {"", [&] { paintPoints(map); }},
      {"10,000 beach balls on a map, limit 100 ms", [&] { draw(balls); }},
      {"", [&] { paintMechanisms(balls); }},
  };
  const std::pair<const char*, float> sizes[] = {{"a million symbols of 3 points", 3.0F},
                                                 {"a million symbols of 12 points", 12.0F},
                                                 {"a million symbols of 30 points", 30.0F}};
  std::vector<std::unique_ptr<XOV2DScatterPlotView>> views;
  for (const auto& [name, size] : sizes) {
    XOV2DScatterPlotView& view = *views.emplace_back(scatterOf(places, size));
    contests.push_back({name, [&draw, &view] { draw(view); }});
    contests.push_back({"", [&places, size = size] { paintSymbols(places, size); }});
  }
  runInTurn(contests, rounds);
  return QStringLiteral("| 900 × 600 points | CPU ms | QPainter, a plain loop: CPU ms | ratio | ms | its ms |\n"
                        "|---|---:|---:|---:|---:|---:|\n") +
         pairedRows(contests);
}

} // namespace xov::bench
