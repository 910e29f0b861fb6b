#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QRectF>

#include <array>
#include <optional>
#include <vector>

namespace xov {

/// Collects polylines or polygons point by point, cut at a box: what lies outside is replaced by the way along the
/// box's border, except at the two ends of a line, which are dropped. A polygon winds about every place inside the
/// box as often as before. (Sutherland and Hodgman, Reentrant polygon clipping, Communications of the ACM 17, 1974,
/// for lines that stay open.)
class TraceClip {
public:
  enum class Shape {
    Line,    ///< open at both ends
    Polygon, ///< closed from its last point to its first
  };
  /// Coordinates are rounded to multiples of `grid`; 0 leaves them as they are.
  TraceClip(const QRectF& box, double grid, Shape shape = Shape::Line);

  void add(double x, double y);
  /// Ends the line: the next point starts another.
  void endLine();

  /// The lines of two points or more so far.
  std::vector<QPolygonF> takeLines();

private:
  /// One of the box's four sides: keeps what lies on the inner side of `bound`.
  struct Side {
    bool vertical = false; ///< compares x
    bool upper = false;    ///< keeps what is not greater
    double bound = 0;
    std::optional<QPointF> before{};
    std::optional<QPointF> first{};

    bool keeps(QPointF point) const;
    QPointF crossing(QPointF a, QPointF b) const;
  };
  /// A point that is kept, in steps of the grid.
  struct Kept {
    double x = 0;
    double y = 0;
  };

  bool contains(double x, double y) const;
  void tellSides();
  void passOn(std::size_t index, QPointF point);
  void keep(double x, double y);
  void close();

  Shape shape_;
  std::array<Side, 4> sides_;
  double grid_ = 1;
  double steps_ = 1; ///< of the grid in a unit
  bool rounds_ = false;
  /// The point before lies in the box and so went past every side; the sides do not know it yet.
  bool inside_ = false;
  double beforeX_ = 0, beforeY_ = 0;
  std::vector<Kept> line_;
  std::vector<QPolygonF> lines_;
};

} // namespace xov
