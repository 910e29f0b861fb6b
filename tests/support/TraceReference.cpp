#include "tests/support/TraceReference.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <utility>

namespace xov {

namespace {

/// A piece of ink: the rectangle of a segment, or the disc of a join (a segment without length).
struct InkShape {
  InkShape(QPointF a, QPointF b, double r)
      : from(a),
        to(b),
        radius(r),
        length(std::hypot(b.x() - a.x(), b.y() - a.y())) {
    if (length > 0) direction = (b - a) / length;
  }

  QPointF from, to, direction;
  double radius = 0;
  double length = 0;

  double left() const { return std::min(from.x(), to.x()) - radius; }
  double right() const { return std::max(from.x(), to.x()) + radius; }
  double top() const { return std::min(from.y(), to.y()) - radius; }
  double bottom() const { return std::max(from.y(), to.y()) + radius; }

  bool holds(double x, double y) const {
    const double px = x - from.x(), py = y - from.y();
    if (length == 0) return px * px + py * py <= radius * radius;
    const double along = px * direction.x() + py * direction.y();
    const double aside = py * direction.x() - px * direction.y();
    return along >= 0 && along <= length && std::abs(aside) <= radius;
  }
  /// A shape is convex: it holds a pixel when it holds its corners.
  bool holdsPixel(double x, double y) const {
    return holds(x, y) && holds(x + 1, y) && holds(x, y + 1) && holds(x + 1, y + 1);
  }
};

void addLine(const std::vector<QPointF>& line, double radius, std::vector<InkShape>& shapes) {
  for (std::size_t i = 1; i < line.size(); ++i) {
    if (line[i] != line[i - 1]) shapes.emplace_back(line[i - 1], line[i], radius);
    if (i + 1 < line.size()) shapes.emplace_back(line[i], line[i], radius);
  }
}

std::vector<InkShape> shapesOf(std::span<const Trace> traces, const QTransform& viewToDevice, double radius) {
  std::vector<InkShape> shapes;
  for (const Trace& trace : traces) {
    std::vector<QPointF> line;
    for (const QPointF& point : trace.points()) {
      if (std::isnan(point.x()) || std::isnan(point.y())) {
        addLine(line, radius, shapes);
        line.clear();
      } else {
        line.push_back(viewToDevice.map(point));
      }
    }
    addLine(line, radius, shapes);
  }
  return shapes;
}

/// The part of a pixel that the shapes ink.
double pixelCoverage(std::vector<const InkShape*>& near, int column, int row, int grid) {
  if (near.empty()) return 0;
  for (const InkShape* shape : near) {
    if (shape->holdsPixel(column, row)) return 1;
  }
  int inked = 0;
  for (int j = 0; j < grid; ++j) {
    for (int i = 0; i < grid; ++i) {
      const double x = column + (i + (j + 0.5) / grid) / grid;
      const double y = row + (j + (i + 0.5) / grid) / grid;
      for (std::size_t k = 0; k < near.size(); ++k) {
        if (!near[k]->holds(x, y)) continue;
        ++inked;
        std::swap(near[0], near[k]); // its neighbour likely lies in the same shape
        break;
      }
    }
  }
  return double(inked) / (double(grid) * grid);
}

} // namespace

std::vector<double> referenceCoverage(std::span<const Trace> traces, const QTransform& viewToDevice, double lineWidth,
                                      int width, int height, int grid) {
  const double radius = lineWidth * viewToDevice.m11() / 2;
  const std::vector<InkShape> shapes = shapesOf(traces, viewToDevice, radius);
  std::vector<std::vector<const InkShape*>> columns(static_cast<std::size_t>(width));
  for (const InkShape& shape : shapes) {
    const int first = static_cast<int>(std::floor(std::clamp(shape.left(), 0.0, double(width))));
    const int last = static_cast<int>(std::floor(std::clamp(shape.right(), -1.0, double(width - 1))));
    for (int column = first; column <= last; ++column)
      columns[static_cast<std::size_t>(column)].push_back(&shape);
  }
  std::vector<double> coverage(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  std::vector<const InkShape*> near;
  for (int row = 0; row < height; ++row) {
    for (int column = 0; column < width; ++column) {
      near.clear();
      for (const InkShape* shape : columns[static_cast<std::size_t>(column)]) {
        if (shape->bottom() > row && shape->top() < row + 1) near.push_back(shape);
      }
      coverage[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) + static_cast<std::size_t>(column)] =
          pixelCoverage(near, column, row, grid);
    }
  }
  return coverage;
}

TraceDifference compareWithReference(const QImage& blackOnWhite, const std::vector<double>& coverage) {
  TraceDifference result;
  int over16 = 0, over32 = 0;
  for (int row = 0; row < blackOnWhite.height(); ++row) {
    for (int column = 0; column < blackOnWhite.width(); ++column) {
      const double expected = 255 * coverage[static_cast<std::size_t>(row * blackOnWhite.width() + column)];
      const double drawn = 255 - qGreen(blackOnWhite.pixel(column, row));
      if (expected == 0 && drawn == 0) continue;
      ++result.inked;
      const double difference = std::abs(drawn - expected);
      result.mean += difference;
      result.bias += drawn - expected;
      result.worst = std::max(result.worst, difference);
      over16 += difference > 16;
      over32 += difference > 32;
    }
  }
  if (result.inked == 0) return result;
  result.mean /= result.inked;
  result.bias /= result.inked;
  result.over16 = double(over16) / result.inked;
  result.over32 = double(over32) / result.inked;
  return result;
}

} // namespace xov
