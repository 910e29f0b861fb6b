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
  /// The rows that it inks at a column of no width; the upper end is below the lower one where there are none.
  std::pair<double, double> rowsAt(double x) const {
    const double px = x - from.x();
    if (length == 0) {
      const double reach = radius * radius - px * px;
      return reach < 0 ? std::pair(1.0, 0.0) : std::pair(from.y() - std::sqrt(reach), from.y() + std::sqrt(reach));
    }
    // Beside the line within the radius, and along it between its ends.
    constexpr double kFar = 1e9;
    double top = -kFar, bottom = kFar;
    const auto keepBetween = [&](double start, double step, double least, double most) {
      if (step == 0) {
        if (start < least || start > most) bottom = -kFar;
        return;
      }
      const double a = (least - start) / step, b = (most - start) / step;
      top = std::max(top, std::min(a, b));
      bottom = std::min(bottom, std::max(a, b));
    };
    keepBetween(-px * direction.y(), direction.x(), -radius, radius);
    keepBetween(px * direction.x(), direction.y(), 0, length);
    return {from.y() + top, from.y() + bottom};
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

/// The unbroken lines of traces, in pixels.
std::vector<std::vector<QPointF>> linesOf(std::span<const Trace> traces, const QTransform& viewToDevice) {
  std::vector<std::vector<QPointF>> lines;
  for (const Trace& trace : traces) {
    lines.emplace_back();
    for (const QPointF& point : trace.points()) {
      if (std::isnan(point.x()) || std::isnan(point.y()))
        lines.emplace_back();
      else
        lines.back().push_back(viewToDevice.map(point));
    }
  }
  return lines;
}

std::vector<InkShape> shapesOf(std::span<const Trace> traces, const QTransform& viewToDevice, double radius) {
  std::vector<InkShape> shapes;
  for (const std::vector<QPointF>& line : linesOf(traces, viewToDevice))
    addLine(line, radius, shapes);
  return shapes;
}

/// Where a side of a polygon crosses a column, and to which side it goes there.
struct Crossing {
  double row = 0;
  int winding = 0;
};

/// Adds `part` of the rows between two to the coverage of a column.
void coverRows(double top, double bottom, double part, double* coverage, int width, int height) {
  for (int row = std::max(int(std::floor(top)), 0); row < height && row < bottom; ++row)
    coverage[std::ptrdiff_t(row) * width] += part * (std::min(bottom, row + 1.0) - std::max(top, double(row)));
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

std::vector<double> columnReference(std::span<const Trace> traces, const QTransform& viewToDevice, double lineWidth,
                                    int width, int height, int places) {
  const int all = width * places;
  std::vector<std::vector<std::pair<double, double>>> inked(static_cast<std::size_t>(all));
  const auto placeOf = [&](double x) { // of the first place at or right of x
    return static_cast<int>(std::ceil(std::clamp(x, -1.0, width + 1.0) * places - 0.5));
  };
  for (const InkShape& shape : shapesOf(traces, viewToDevice, lineWidth * viewToDevice.m11() / 2)) {
    const int end = std::min(placeOf(shape.right()), all);
    for (int place = std::max(placeOf(shape.left()), 0); place < end; ++place) {
      const auto rows = shape.rowsAt((place + 0.5) / places);
      if (rows.first < rows.second) inked[std::size_t(place)].push_back(rows);
    }
  }
  std::vector<double> coverage(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int place = 0; place < all; ++place) {
    std::vector<std::pair<double, double>>& here = inked[std::size_t(place)];
    std::sort(here.begin(), here.end());
    double covered = 0;
    for (const auto& [top, bottom] : here) {
      if (bottom <= covered) continue;
      coverRows(std::max(top, covered), bottom, 1.0 / places, &coverage[std::size_t(place / places)], width, height);
      covered = bottom;
    }
  }
  return coverage;
}

std::vector<double> referenceFill(std::span<const Trace> traces, const QTransform& viewToDevice, bool evenOdd,
                                  int width, int height, int places) {
  const std::vector<std::vector<QPointF>> lines = linesOf(traces, viewToDevice);
  std::vector<std::vector<Crossing>> crossings(static_cast<std::size_t>(width) * static_cast<std::size_t>(places));
  const auto placeOf = [&](double x) { // of the first place at or right of x
    return static_cast<int>(std::ceil(std::clamp(x, -1.0, width + 1.0) * places - 0.5));
  };
  for (const std::vector<QPointF>& line : lines) {
    for (std::size_t i = 0; i < line.size(); ++i) {
      const QPointF from = line[i], to = line[(i + 1) % line.size()];
      const bool right = from.x() < to.x();
      const QPointF first = right ? from : to, last = right ? to : from;
      const int end = std::min(placeOf(last.x()), width * places);
      for (int place = std::max(placeOf(first.x()), 0); place < end; ++place) {
        const double along = ((place + 0.5) / places - first.x()) / (last.x() - first.x());
        crossings[std::size_t(place)].push_back({first.y() + along * (last.y() - first.y()), right ? 1 : -1});
      }
    }
  }
  std::vector<double> coverage(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int place = 0; place < width * places; ++place) {
    std::vector<Crossing>& here = crossings[std::size_t(place)];
    std::sort(here.begin(), here.end(), [](const Crossing& a, const Crossing& b) { return a.row < b.row; });
    int winding = 0;
    for (std::size_t k = 0; k + 1 < here.size(); ++k) {
      winding += here[k].winding;
      const bool inside = evenOdd ? winding % 2 != 0 : winding != 0;
      if (inside)
        coverRows(here[k].row, here[k + 1].row, 1.0 / places, &coverage[std::size_t(place / places)], width, height);
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
