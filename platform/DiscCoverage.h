#pragma once

#include <QPointF>
#include <QRect>

#include <vector>

namespace xov {

/// How much of each cell of a grid a disc covers: the exact area, not samples of it. Cell (column, row) is the unit
/// square from (column, row) to (column + 1, row + 1).
class DiscCoverage {
public:
  /// Prepares the cells of a block; the work grows with its width and height, not with their product.
  void reset(QPointF center, double radius, const QRect& cells);

  /// 0 … 1, for a cell of the block.
  double of(int column, int row) const;

private:
  // A grid line: its distance from the centre, held inside ± the radius, and the integral of the half chord up to it.
  struct Line {
    double at = 0;
    double integral = 0;
  };
  void setLines(std::vector<Line>& lines, double center, int first, int cells) const;
  double areaLeftBelow(const Line& x, const Line& y) const;
  double sampled(int column, int row) const;

  QPointF center_;
  double radius_ = 0;
  double disc_ = 0; // its whole area
  int firstColumn_ = 0;
  int firstRow_ = 0;
  std::vector<Line> columns_;
  std::vector<Line> rows_;
};

} // namespace xov
