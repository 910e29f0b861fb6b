#include "bench/Engines.h"

#include "platform/Colors.h"
#include "platform/View.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>

namespace xov::bench {

namespace {

// Keeps the compiler from leaving the scan out.
volatile float scanResult = 0;

QImage scan(const Work& work) {
  constexpr std::size_t kLanes = 32;
  std::array<float, kLanes> low;
  std::array<float, kLanes> high;
  low.fill(1e30f);
  high.fill(-1e30f);
  for (const Trace& trace : work.traces) {
    const float* sample = trace.samples + trace.first;
    const float* end = trace.samples + trace.last;
    for (; end - sample >= std::ptrdiff_t(kLanes); sample += kLanes) {
      for (std::size_t i = 0; i < kLanes; ++i)
        low[i] = sample[i] < low[i] ? sample[i] : low[i];
      for (std::size_t i = 0; i < kLanes; ++i)
        high[i] = sample[i] > high[i] ? sample[i] : high[i];
    }
  }
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
    context.setColor(colors::black);
    Path path;
    for (const Trace& trace : work_.traces)
      path.appendTrace(trace);
    context.strokePath(path);
  }

private:
  const Work& work_;
};

QImage drawWithXov(const Work& work) {
  WorkView view(work);
  return view.pictureOfRect(view.bounds());
}

// What a Qt program does that knows nothing better: every sample a point.
QImage drawWithQPainter(const Work& work, const QPen& pen) {
  QImage image(work.size * work.ratio, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(work.ratio, work.ratio);
  painter.setPen(pen);
  for (const Trace& trace : work.traces) {
    QPolygonF points;
    points.reserve(trace.last - trace.first);
    trace.forEachPoint([&](QPointF point) { points << QPointF(point.x(), work.size.height() - point.y()); });
    painter.drawPolyline(points);
  }
  return image;
}

QImage drawPolyline(const Work& work) {
  QPen pen(Qt::black, 1);
  pen.setCosmetic(true);
  return drawWithQPainter(work, pen);
}

// A pen of more than one device pixel takes the true stroker, with joins.
QImage drawStroke(const Work& work) {
  const double width = work.ratio > 1 ? 1 : 1.001;
  return drawWithQPainter(work, QPen(Qt::black, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
}

} // namespace

const std::vector<Engine>& engines() {
  static const std::vector<Engine> all = {
      {"scan", "one pass over the samples for their extremes", false, scan},
      {"xov", "XOV Graphics", false, drawWithXov},
      {"qpainter-hairline", "QPainter::drawPolyline, pen of one device pixel without joins", true, drawPolyline},
      {"qpainter-stroke", "QPainter::drawPolyline, pen of one point with joins", true, drawStroke},
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
