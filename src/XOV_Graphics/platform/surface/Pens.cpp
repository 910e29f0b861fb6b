#include "XOV_Graphics/platform/surface/Pens.h"

#include <numeric>

namespace xov {

namespace {

// A dashed line of more pieces than this is drawn unbroken.
constexpr double kMaxDashes = 20000;

Qt::PenCapStyle qtCap(Path::Cap cap) {
  switch (cap) {
  case Path::Cap::Round:
    return Qt::RoundCap;
  case Path::Cap::Square:
    return Qt::SquareCap;
  case Path::Cap::Butt:
    break;
  }
  return Qt::FlatCap;
}

// The SVG mitre falls back to a bevel past its limit, as it does on paper; Qt's own leaves a spur.
Qt::PenJoinStyle qtJoin(Path::Join join) {
  switch (join) {
  case Path::Join::Round:
    return Qt::RoundJoin;
  case Path::Join::Bevel:
    return Qt::BevelJoin;
  case Path::Join::Miter:
    break;
  }
  return Qt::SvgMiterJoin;
}

} // namespace

QList<qreal> dashesAlong(const QPainterPath& shape, const Path& path) {
  const std::size_t size = path.dashes().size();
  if (size == 0) return {};
  const double period = std::accumulate(path.dashes().begin(), path.dashes().end(), 0.0);
  if (!(shape.length() / period < kMaxDashes)) return {};
  QList<qreal> pattern; // as many dashes as gaps
  for (std::size_t i = 0; i < (size % 2 == 0 ? size : 2 * size); ++i)
    pattern << path.dashes()[i % size] / path.lineWidth();
  return pattern;
}

QPen penFor(const Path& path, const QPainterPath& shape, const QColor& color) {
  QPen pen(color, path.lineWidth(), Qt::SolidLine, qtCap(path.lineCap()), qtJoin(path.lineJoin()));
  pen.setMiterLimit(path.miterLimit());
  if (const QList<qreal> dashes = dashesAlong(shape, path); !dashes.isEmpty()) {
    pen.setDashPattern(dashes);
    pen.setDashOffset(path.dashPhase() / path.lineWidth());
  }
  return pen;
}

QPen tracePen(double lineWidth, const QColor& color) {
  return QPen(color, lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
}

} // namespace xov
