#include "XOV_Graphics/platform/pixels/StripFill.h"

#include <QPainter>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <vector>

namespace xov {

namespace {

constexpr std::size_t kFewPieces = 64;
constexpr int kStripWidth = 16; // pixels
// Pieces may reach into so many strips, on average.
constexpr std::size_t kStripsPerPiece = 3;
// How far a piece may reach beyond its corners, in pixels, when these are rounded.
constexpr double kRounding = 1;

// The elements first <= i < last of a shape, from a move to the next one, and the pixels between which they lie.
struct Piece {
  int first;
  int last;
  double left;
  double right;
};

std::vector<Piece> piecesOf(const QPainterPath& shape, const QTransform& toPixels) {
  std::vector<Piece> pieces;
  for (int i = 0; i < shape.elementCount(); ++i) {
    const double x = toPixels.map(QPointF(shape.elementAt(i))).x();
    if (pieces.empty() || shape.elementAt(i).isMoveTo()) pieces.push_back({i, i, x, x});
    Piece& piece = pieces.back();
    piece.last = i + 1;
    piece.left = std::min(piece.left, x);
    piece.right = std::max(piece.right, x);
  }
  return pieces;
}

void appendPiece(QPainterPath& path, const QPainterPath& shape, const Piece& piece) {
  for (int i = piece.first; i < piece.last; ++i) {
    const QPainterPath::Element& element = shape.elementAt(i);
    if (element.isMoveTo()) {
      path.moveTo(element);
    } else if (element.isCurveTo()) {
      path.cubicTo(element, shape.elementAt(i + 1), shape.elementAt(i + 2));
      i += 2;
    } else {
      path.lineTo(element);
    }
  }
}

} // namespace

bool fillInStrips(QPainter& painter, const QPainterPath& shape, const QColor& color) {
  const QTransform toPixels = painter.transform();
  const std::vector<Piece> pieces = piecesOf(shape, toPixels);
  if (pieces.size() < kFewPieces) return false;

  const int width = painter.device()->width();
  const auto strips = std::size_t((width + kStripWidth - 1) / kStripWidth);
  std::vector<std::vector<const Piece*>> inStrip(strips);
  std::size_t uses = 0;
  for (const Piece& piece : pieces) {
    const double from = std::floor((piece.left - kRounding) / kStripWidth);
    const double to = std::floor((piece.right + kRounding) / kStripWidth);
    if (!(to >= 0 && from < double(strips))) continue;
    const auto last = std::size_t(std::min(to, double(strips) - 1));
    for (auto strip = std::size_t(std::max(from, 0.0)); strip <= last; ++strip)
      inStrip[strip].push_back(&piece);
    uses += last + 1 - std::size_t(std::max(from, 0.0));
    if (uses > kStripsPerPiece * pieces.size()) return false;
  }

  const int height = painter.device()->height();
  for (std::size_t strip = 0; strip < strips; ++strip) {
    if (inStrip[strip].empty()) continue;
    QPainterPath part;
    part.setFillRule(shape.fillRule());
    for (const Piece* piece : inStrip[strip])
      appendPiece(part, shape, *piece);
    painter.save();
    const auto before = qScopeGuard([&painter] { painter.restore(); });
    painter.resetTransform();
    painter.setClipRect(QRect(int(strip) * kStripWidth, 0, kStripWidth, height), Qt::IntersectClip);
    painter.setTransform(toPixels);
    painter.fillPath(part, color);
  }
  return true;
}

} // namespace xov
