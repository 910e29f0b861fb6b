#include "XOV_Graphics/platform/Symbols.h"

#include <cmath>

namespace xov {

bool SymbolLook::hasSize() const { return radius > 0 && std::isfinite(radius); }

double SymbolLook::coveringRadius() const {
  constexpr int kOpaque = 255;
  if (!fill.isValid() || fill.alpha() != kOpaque) return 0;
  return hasOutline() && stroke.alpha() == kOpaque ? outerRadius() : radius;
}

Path SymbolLook::circle(QPointF center) const {
  Path path;
  path.setLineWidth(lineWidth);
  path.moveTo(center);
  path.appendOval(QRectF(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius));
  return path;
}

bool Symbols::isEmpty() const {
  return x == nullptr || y == nullptr || last <= first || (looks == nullptr && !hasSize());
}

QColor Symbols::colorOfPlainDiscs() const {
  const auto opaque = [](const QColor& color) { return color.isValid() && color.alpha() == 255; };
  if (looks != nullptr) return {};
  if (!hasOutline()) return opaque(fill) ? fill : QColor();
  if (!opaque(stroke)) return {};
  return fill == stroke || lineWidth >= 2 * radius ? stroke : QColor();
}

std::optional<QPointF> Symbols::center(std::int64_t i) const {
  const double px = double(x[i] - xOrigin) * xScale + xOffset;
  const double py = double(y[i] - yOrigin) * yScale + yOffset;
  if (!std::isfinite(px) || !std::isfinite(py) || !look(i).hasSize()) return std::nullopt;
  return QPointF(px, py);
}

} // namespace xov
