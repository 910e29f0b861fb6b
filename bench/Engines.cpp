#include "bench/Engines.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/View.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <array>

namespace xov::bench {

namespace {

constexpr std::size_t kLanes = 32;
constexpr int kPointsPerInch = 72;

// Keeps the compiler from leaving the scan out.
volatile float scanResult = 0;

void scanInto(const float* sample, const float* end, std::array<float, kLanes>& low,
              std::array<float, kLanes>& high) {
  for (; end - sample >= std::ptrdiff_t(kLanes); sample += kLanes) {
    for (std::size_t i = 0; i < kLanes; ++i)
      low[i] = sample[i] < low[i] ? sample[i] : low[i];
    for (std::size_t i = 0; i < kLanes; ++i)
      high[i] = sample[i] > high[i] ? sample[i] : high[i];
  }
}

Drawn scan(const Work& work) {
  std::array<float, kLanes> low;
  std::array<float, kLanes> high;
  low.fill(1e30f);
  high.fill(-1e30f);
  for (const Trace& trace : work.traces)
    scanInto(trace.samples + trace.first, trace.samples + trace.last, low, high);
  scanInto(work.xs.data(), work.xs.data() + work.xs.size(), low, high);
  scanInto(work.ys.data(), work.ys.data() + work.ys.size(), low, high);
  scanResult = *std::min_element(low.begin(), low.end()) + *std::max_element(high.begin(), high.end());
  return {};
}

// A view as a host has it: white paper, one path.
class WorkView : public View {
public:
  explicit WorkView(const Work& work) : View(QRectF(QPointF(0, 0), QSizeF(work.size))), work_(work) {
    setExportPixelRatio(work.ratio);
  }
  void drawRect(const QRectF&) override {
    GraphicsContext& context = GraphicsContext::current();
    context.setColor(colors::white);
    context.fillRect(bounds());
    if (!work_.xs.empty()) return drawSymbols(context);
    context.setColor(colors::black);
    Path path;
    for (const Trace& trace : work_.traces)
      path.appendTrace(trace);
    context.strokePath(path);
  }

private:
  void drawSymbols(GraphicsContext& context) const {
    Symbols symbols;
    symbols.x = work_.xs.data();
    symbols.y = work_.ys.data();
    symbols.last = std::int64_t(work_.xs.size());
    symbols.radius = double(work_.diameter) / 2;
    symbols.fill = colors::gray;
    symbols.stroke = colors::black;
    context.drawSymbols(symbols);
  }

  const Work& work_;
};

Drawn drawWithXov(const Work& work) {
  WorkView view(work);
  if (work.isPage) return {QImage(), view.dataWithPDFInsideRect(view.bounds())};
  return {view.pictureOfRect(view.bounds()), {}};
}

// What a Qt program does that knows nothing better: every sample a point.
void paintWithQPainter(const Work& work, QPainter& painter, const QPen& pen) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(pen);
  painter.setBrush(QColor(Qt::gray));
  for (std::size_t i = 0; i < work.xs.size(); ++i) {
    const double radius = double(work.diameter) / 2;
    painter.drawEllipse(QPointF(work.xs[i], work.size.height() - double(work.ys[i])), radius, radius);
  }
  for (const Trace& trace : work.traces) {
    QPolygonF points;
    points.reserve(trace.last - trace.first);
    trace.forEachPoint([&](QPointF point) { points << QPointF(point.x(), work.size.height() - point.y()); });
    painter.drawPolyline(points);
  }
}

Drawn drawPageWithQPainter(const Work& work, const QPen& pen) {
  Drawn drawn;
  QBuffer buffer(&drawn.file);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setResolution(kPointsPerInch);
  writer.setPageLayout(
      QPageLayout(QPageSize(QSizeF(work.size), QPageSize::Point), QPageLayout::Portrait, QMarginsF()));
  QPainter painter(&writer);
  paintWithQPainter(work, painter, pen);
  painter.end();
  return drawn;
}

Drawn drawWithQPainter(const Work& work, const QPen& pen) {
  if (work.isPage) return drawPageWithQPainter(work, pen);
  QImage image(work.size * work.ratio, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.scale(work.ratio, work.ratio);
  paintWithQPainter(work, painter, pen);
  painter.end();
  return {image, {}};
}

Drawn drawPolyline(const Work& work) {
  QPen pen(Qt::black, 1);
  pen.setCosmetic(true);
  return drawWithQPainter(work, pen);
}

// A pen of more than one device pixel takes the true stroker, with joins.
Drawn drawStroke(const Work& work) {
  const double width = work.ratio > 1 ? 1 : 1.001;
  return drawWithQPainter(work, QPen(Qt::black, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
}

} // namespace

const std::vector<Engine>& engines() {
  static const std::vector<Engine> all = {
      {"scan", "one pass over the samples for their extremes", false, true, scan},
      {"xov", "XOV Graphics", false, true, drawWithXov},
      {"qpainter-hairline", "QPainter, pen of one device pixel without joins", true, false, drawPolyline},
      {"qpainter-stroke", "QPainter, pen of one point with joins", true, true, drawStroke},
  };
  return all;
}

const Engine* engineNamed(const std::string& name) {
  for (const Engine& engine : engines()) {
    if (engine.name == name) return &engine;
  }
  return nullptr;
}

} // namespace xov::bench
