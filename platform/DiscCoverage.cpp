#include "platform/DiscCoverage.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

// Differences of areas of larger discs than this would lose the digits that a cell needs; their cells are sampled.
constexpr double kLargestExactRadius = 1e5;
constexpr int kSamples = 16; // a side of a cell

} // namespace

void DiscCoverage::reset(QPointF center, double radius, const QRect& cells) {
  center_ = center;
  radius_ = radius;
  disc_ = std::numbers::pi * radius * radius;
  firstColumn_ = cells.x();
  firstRow_ = cells.y();
  if (radius > kLargestExactRadius) return;
  setLines(columns_, center.x(), cells.x(), cells.width());
  setLines(rows_, center.y(), cells.y(), cells.height());
}

void DiscCoverage::setLines(std::vector<Line>& lines, double center, int first, int cells) const {
  lines.resize(std::size_t(cells) + 1);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const double t = std::clamp(double(first) + double(i) - center, -radius_, radius_);
    const double halfChord = std::sqrt(std::max(0.0, radius_ * radius_ - t * t));
    // atan2 holds its accuracy at the ends of the disc, where the arcsine of t / radius would lose it.
    lines[i] = {t, (t * halfChord + radius_ * radius_ * std::atan2(t, halfChord)) / 2};
  }
}

// The area of the disc with X <= x and Y <= y. With H the integral of the half chord from 0:
//   corner inside the disc    H(x) + H(y) + x y + a quarter of the disc
//   corner outside            nothing, the part left of x, the part below y, or all but what both cut off.
double DiscCoverage::areaLeftBelow(const Line& x, const Line& y) const {
  if (x.at * x.at + y.at * y.at <= radius_ * radius_) return x.integral + y.integral + x.at * y.at + disc_ / 4;
  const double left = disc_ / 2 + 2 * x.integral;
  const double below = disc_ / 2 + 2 * y.integral;
  if (x.at < 0) return y.at < 0 ? 0 : left;
  return y.at < 0 ? below : left + below - disc_;
}

double DiscCoverage::of(int column, int row) const {
  if (!(radius_ > 0)) return 0;
  if (radius_ > kLargestExactRadius) return sampled(column, row);
  const Line* x = &columns_[std::size_t(column - firstColumn_)];
  const Line* y = &rows_[std::size_t(row - firstRow_)];
  const double area =
      areaLeftBelow(x[1], y[1]) - areaLeftBelow(x[0], y[1]) - areaLeftBelow(x[1], y[0]) + areaLeftBelow(x[0], y[0]);
  return std::clamp(area, 0.0, 1.0);
}

double DiscCoverage::sampled(int column, int row) const {
  int inside = 0;
  for (int j = 0; j < kSamples; ++j) {
    for (int i = 0; i < kSamples; ++i) {
      const double x = column + (i + 0.5) / kSamples - center_.x();
      const double y = row + (j + 0.5) / kSamples - center_.y();
      inside += std::hypot(x, y) <= radius_ ? 1 : 0;
    }
  }
  return double(inside) / (kSamples * kSamples);
}

} // namespace xov
