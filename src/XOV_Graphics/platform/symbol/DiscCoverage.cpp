#include "XOV_Graphics/platform/symbol/DiscCoverage.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

// Differences of areas of larger discs than this would lose the digits that a cell needs; their cells are sampled.
constexpr double kLargestExactRadius = 1e5;
constexpr int kSamples = 16; // a side of a cell
// Up to this radius an arcsine that is good to 2e-8 gives areas that are good to 1e-4 of a cell.
constexpr double kLargestQuickRadius = 64;

// The arcsine of 0 … 1 to 2e-8: Abramowitz and Stegun, Handbook of Mathematical Functions (1964), formula 4.4.46.
double quickArcsine(double u) {
  constexpr double kA[] = {1.5707963050, -0.2145988016, 0.0889789874, -0.0501743046,
                           0.0308918810, -0.0170881256, 0.0066700901, -0.0012624911};
  const double low = kA[0] + u * (kA[1] + u * (kA[2] + u * kA[3]));
  const double high = kA[4] + u * (kA[5] + u * (kA[6] + u * kA[7]));
  return std::numbers::pi / 2 - std::sqrt(1 - u) * (low + u * u * u * u * high);
}

} // namespace

DiscChords::DiscChords(double r) : radius(r), squared(r * r), inverse(1 / r), area(std::numbers::pi * r * r) {}

DiscChords::Line DiscChords::lineAt(double distance) const {
  const double t = std::clamp(distance, -radius, radius);
  const double halfChord = std::sqrt(squared - t * t);
  const double angle = radius <= kLargestQuickRadius
                           ? std::copysign(quickArcsine(std::min(1.0, std::abs(t) * inverse)), t)
                           : std::atan2(t, halfChord); // the more accurate of the two
  return {t, (t * halfChord + squared * angle) / 2};
}

// The area of the disc with X <= x and Y <= y. With H the integral of the half chord from 0:
//   corner inside the disc    H(x) + H(y) + x y + a quarter of the disc
//   corner outside            nothing, the part left of x, the part below y, or all but what both cut off.
double DiscChords::areaLeftBelow(const Line& x, const Line& y) const {
  if (x.at * x.at + y.at * y.at <= squared) return x.integral + y.integral + x.at * y.at + area / 4;
  const double left = area / 2 + 2 * x.integral;
  const double below = area / 2 + 2 * y.integral;
  if (x.at < 0) return y.at < 0 ? 0 : left;
  return y.at < 0 ? below : left + below - area;
}

void DiscCoverage::reset(QPointF center, double radius, const QRect& cells) {
  center_ = center;
  chords_ = DiscChords(radius);
  ++disc_;
  firstColumn_ = cells.x();
  firstRow_ = cells.y();
  columns_.resize(std::max(columns_.size(), std::size_t(cells.width()) + 1));
  rows_.resize(std::max(rows_.size(), std::size_t(cells.height()) + 1));
}

const DiscCoverage::Line& DiscCoverage::line(std::vector<Line>& lines, int index, double distance) const {
  Line& line = lines[std::size_t(index)];
  if (line.disc != disc_) line = {chords_.lineAt(distance), disc_};
  return line;
}

double DiscCoverage::of(int column, int row) {
  if (!(chords_.radius > 0)) return 0;
  if (chords_.radius > kLargestExactRadius) return sampled(column, row);
  const Line& left = line(columns_, column - firstColumn_, column - center_.x());
  const Line& right = line(columns_, column + 1 - firstColumn_, column + 1 - center_.x());
  const Line& low = line(rows_, row - firstRow_, row - center_.y());
  const Line& high = line(rows_, row + 1 - firstRow_, row + 1 - center_.y());
  const double area = chords_.areaLeftBelow(right, high) - chords_.areaLeftBelow(left, high) -
                      chords_.areaLeftBelow(right, low) + chords_.areaLeftBelow(left, low);
  return std::clamp(area, 0.0, 1.0);
}

double DiscCoverage::sampled(int column, int row) const {
  int inside = 0;
  for (int j = 0; j < kSamples; ++j) {
    for (int i = 0; i < kSamples; ++i) {
      const double x = column + (i + 0.5) / kSamples - center_.x();
      const double y = row + (j + 0.5) / kSamples - center_.y();
      inside += std::hypot(x, y) <= chords_.radius ? 1 : 0;
    }
  }
  return double(inside) / (kSamples * kSamples);
}

} // namespace xov
