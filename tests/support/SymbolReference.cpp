#include "tests/support/SymbolReference.h"

#include <array>
#include <cmath>
#include <vector>

namespace xov::testing {

namespace {

constexpr int kSamples = 48; // a side of a pixel

struct Coverage {
  double fill = 0;
  double line = 0;
};

Coverage coverageOf(int x, int y, QPointF center, double radius, double halfLine) {
  Coverage coverage;
  for (int j = 0; j < kSamples; ++j) {
    for (int i = 0; i < kSamples; ++i) {
      const double distance =
          std::hypot(x + (i + 0.5) / kSamples - center.x(), y + (j + 0.5) / kSamples - center.y());
      if (distance <= radius) coverage.fill += 1;
      if (std::abs(distance - radius) <= halfLine) coverage.line += 1;
    }
  }
  return {coverage.fill / (kSamples * kSamples), coverage.line / (kSamples * kSamples)};
}

// Red, green, blue (each times alpha) and alpha, 0 … 255.
using Pixel = std::array<double, 4>;

void lay(Pixel& pixel, const QColor& color, double coverage) {
  if (!color.isValid()) return;
  const double opacity = coverage * color.alpha() / 255;
  const double levels[] = {double(color.red()), double(color.green()), double(color.blue()), 255.0};
  for (std::size_t i = 0; i < 4; ++i)
    pixel[i] = pixel[i] * (1 - opacity) + levels[i] * opacity;
}

} // namespace

QImage referenceSymbols(const Symbols& symbols, const QTransform& viewToDevice, QSize size) {
  const double scale = std::sqrt(std::abs(viewToDevice.determinant()));
  std::vector<Pixel> pixels(std::size_t(size.width()) * std::size_t(size.height()), Pixel{255, 255, 255, 255});
  for (std::int64_t i = symbols.first; i < symbols.last; ++i) {
    const auto center = symbols.center(i);
    if (!center) continue;
    const QPointF at = viewToDevice.map(*center);
    const SymbolLook& look = symbols.look(i);
    const double radius = look.radius * scale;
    const double halfLine = look.hasOutline() ? look.lineWidth / 2 * scale : 0;
    for (int y = 0; y < size.height(); ++y) {
      for (int x = 0; x < size.width(); ++x) {
        if (std::hypot(x + 0.5 - at.x(), y + 0.5 - at.y()) > radius + halfLine + 1) continue;
        Pixel& pixel = pixels[std::size_t(y) * std::size_t(size.width()) + std::size_t(x)];
        const Coverage coverage = coverageOf(x, y, at, radius, halfLine);
        lay(pixel, look.fill, coverage.fill);
        for (int stroke = 0; look.hasOutline() && stroke < look.strokes; ++stroke)
          lay(pixel, look.stroke, coverage.line);
      }
    }
  }
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x) {
      const Pixel& p = pixels[std::size_t(y) * std::size_t(size.width()) + std::size_t(x)];
      const auto level = [&](std::size_t i) { return int(std::lround(p[i])); };
      reinterpret_cast<QRgb*>(image.scanLine(y))[x] = qRgba(level(0), level(1), level(2), level(3));
    }
  }
  return image;
}

} // namespace xov::testing
