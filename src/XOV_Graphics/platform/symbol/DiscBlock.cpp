#include "XOV_Graphics/platform/symbol/DiscBlock.h"

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/platform/symbol/DiscCoverage.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace xov {

namespace {

constexpr int kMost = DiscBlock::kMostCells;
// Vectors reach beyond the last grid line.
constexpr int kMostLines = kMost + 1 + kWidestVector / 2;
using Numbers = std::array<double, kMostLines>;

/// The grid lines along one direction, and how near and far from the centre the cells between them are, squared. What
/// vectors read behind the last line is that line again.
struct Axis {
  Axis(double center, int first, int count, const DiscChords& chords) {
    for (int i = 0; i <= count; ++i) {
      const DiscChords::Line line = chords.lineAt(first + i - center);
      const double distance = std::abs(first + i + 0.5 - center);
      const double inner = std::max(0.0, distance - 0.5);
      set(i, line, inner * inner, (distance + 0.5) * (distance + 0.5));
    }
    const auto last = std::size_t(count);
    for (int i = count + 1; i < count + kWidestVector / 2; ++i)
      set(i, {at[last], integral[last]}, near[last], far[last]);
  }

  void set(int i, const DiscChords::Line& line, double nearest, double farthest) {
    const auto place = std::size_t(i);
    at[place] = line.at;
    integral[place] = line.integral;
    near[place] = nearest;
    far[place] = farthest;
  }

  Numbers at;
  Numbers integral;
  Numbers near;
  Numbers far;
};

struct ChordBlock {
  const DiscChords& chords;
  const Axis& x;
  const Axis& y;
  int columns;
  int rows;
  double* coverage;
};

template <class Vector>
using Doubles = typename LanesWith<double, kLanes<Vector> / 2>::Vector;

/// DiscChords::areaLeftBelow() of one row line and each column line.
template <class Vector>
XOV_INLINE void findCorners(const ChordBlock& block, std::size_t row, double* corners) {
  const double squared = block.chords.squared;
  const double area = block.chords.area;
  const double yAt = block.y.at[row], yIntegral = block.y.integral[row];
  const double below = area / 2 + 2 * yIntegral;
  for (int column = 0; column <= block.columns; column += kLanes<Vector> / 2) {
    Doubles<Vector> at, integral;
    loadVector(&block.x.at[std::size_t(column)], at);
    loadVector(&block.x.integral[std::size_t(column)], integral);
    const Doubles<Vector> inside = integral + yIntegral + at * yAt + area / 4;
    const Doubles<Vector> left = area / 2 + 2.0 * integral;
    const Doubles<Vector> none{};
    const Doubles<Vector> outsideLeft = yAt < 0 ? none : left;
    const Doubles<Vector> outsideRight = yAt < 0 ? none + below : left + below - area;
    const Doubles<Vector> outside = XOV_CHOOSE(at < 0.0, outsideLeft, outsideRight);
    const Doubles<Vector> result = XOV_CHOOSE(at * at + yAt * yAt <= squared, inside, outside);
    storeVector(result, corners + column);
  }
}

template <class Vector>
XOV_INLINE void coverBlockWith(const ChordBlock& block) {
  const double squared = block.chords.squared;
  Numbers first{}, second{};
  double* low = first.data();
  double* high = second.data();
  findCorners<Vector>(block, 0, low);
  for (int row = 0; row < block.rows; ++row) {
    const auto below = std::size_t(row);
    findCorners<Vector>(block, below + 1, high);
    for (int column = 0; column < block.columns; column += kLanes<Vector> / 2) {
      Doubles<Vector> leftLow, rightLow, leftHigh, rightHigh, near, far;
      loadVector(low + column, leftLow);
      loadVector(low + column + 1, rightLow);
      loadVector(high + column, leftHigh);
      loadVector(high + column + 1, rightHigh);
      loadVector(&block.x.near[std::size_t(column)], near);
      loadVector(&block.x.far[std::size_t(column)], far);
      const Doubles<Vector> none{};
      const Doubles<Vector> all = none + 1.0;
      Doubles<Vector> area = rightHigh - leftHigh - rightLow + leftLow;
      area = XOV_CHOOSE(area < 0.0, none, area);
      area = XOV_CHOOSE(area > 1.0, all, area);
      area = XOV_CHOOSE(near + block.y.near[below] >= squared, none, area);
      area = XOV_CHOOSE(far + block.y.far[below] <= squared, all, area);
      storeVector(area, block.coverage + row * kMost + column);
    }
    std::swap(low, high);
  }
}
XOV_VECTOR_FUNCTION(void, coverBlock, (const ChordBlock& block), (block))

} // namespace

void DiscBlock::cover(QPointF center, double radius, const QRect& cells) {
  if (!(radius > 0)) return coverage_.fill(0);
  const DiscChords chords(radius);
  const Axis x(center.x(), cells.x(), cells.width(), chords);
  const Axis y(center.y(), cells.y(), cells.height(), chords);
  coverBlock({chords, x, y, cells.width(), cells.height(), coverage_.data()});
}

} // namespace xov
