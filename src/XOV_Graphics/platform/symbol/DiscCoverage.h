#pragma once

#include <QPointF>
#include <QRect>

#include <cstdint>
#include <vector>

namespace xov {

/// What the lines of a grid cut off of a disc.
struct DiscChords {
  /// A grid line: its distance from the centre, held inside ± the radius, and the integral of the half chord up to
  /// it.
  struct Line {
    double at = 0;
    double integral = 0;
  };

  DiscChords() = default;
  explicit DiscChords(double radius);

  Line lineAt(double distance) const;
  /// The area of the disc left of a line and below another one.
  double areaLeftBelow(const Line& x, const Line& y) const;

  double radius = 0;
  double squared = 0;
  double inverse = 0;
  double area = 0; ///< of the whole disc
};

/// How much of each cell of a grid a disc covers: the exact area, not samples of it. Cell (column, row) is the unit
/// square from (column, row) to (column + 1, row + 1).
class DiscCoverage {
public:
  /// Names a disc and the block of cells that will be asked for. What a grid line contributes is computed when it is
  /// first needed, so that a few cells of a large disc cost little.
  void reset(QPointF center, double radius, const QRect& cells);

  /// 0 … 1, for a cell of the block.
  double of(int column, int row);

private:
  struct Line : DiscChords::Line {
    std::uint64_t disc = 0; // the disc that it was computed for
  };
  const Line& line(std::vector<Line>& lines, int index, double distance) const;
  double sampled(int column, int row) const;

  QPointF center_;
  DiscChords chords_;
  std::uint64_t disc_ = 0;
  int firstColumn_ = 0;
  int firstRow_ = 0;
  std::vector<Line> columns_;
  std::vector<Line> rows_;
};

} // namespace xov
