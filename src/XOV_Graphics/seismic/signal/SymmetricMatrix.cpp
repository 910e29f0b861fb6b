#include "XOV_Graphics/seismic/signal/SymmetricMatrix.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Convergence is quadratic: a matrix of three rows takes four or five rounds.
constexpr int kMostRounds = 30;
// Elements beside the diagonal that are this small against it do not change it in double precision.
constexpr double kNegligible = 1e-18;

struct Rotating {
  double m[3][3];
  double axes[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}; // columns

  double scale() const { return std::abs(m[0][0]) + std::abs(m[1][1]) + std::abs(m[2][2]); }
  double beside() const { return std::abs(m[0][1]) + std::abs(m[0][2]) + std::abs(m[1][2]); }

  // Turns rows and columns p and q so that the element that they share becomes 0.
  void clear(int p, int q) {
    if (m[p][q] == 0) return;
    const double cotangent = (m[q][q] - m[p][p]) / (2 * m[p][q]); // of twice the angle
    const double t = std::copysign(1.0, cotangent) / (std::abs(cotangent) + std::hypot(cotangent, 1.0));
    const double c = 1 / std::hypot(t, 1.0);
    const double s = t * c;
    const int other = 3 - p - q;
    const double shared = m[p][q];
    m[p][p] -= t * shared;
    m[q][q] += t * shared;
    m[p][q] = m[q][p] = 0;
    const double atP = m[other][p];
    const double atQ = m[other][q];
    m[other][p] = m[p][other] = c * atP - s * atQ;
    m[other][q] = m[q][other] = s * atP + c * atQ;
    for (auto& row : axes) {
      const double first = row[p];
      row[p] = c * first - s * row[q];
      row[q] = s * first + c * row[q];
    }
  }
};

} // namespace

std::array<EigenPair, 3> eigenPairs(const SymmetricMatrix& matrix) {
  const double largest = std::max({std::abs(matrix.xx), std::abs(matrix.yy), std::abs(matrix.zz), std::abs(matrix.xy),
                                   std::abs(matrix.xz), std::abs(matrix.yz)});
  const double sum = matrix.xx + matrix.yy + matrix.zz + matrix.xy + matrix.xz + matrix.yz;
  std::array<EigenPair, 3> pairs{{{0, {1, 0, 0}}, {0, {0, 1, 0}}, {0, {0, 0, 1}}}};
  // Of numbers up to 1, so that neither squares nor sums leave the range of double precision.
  if (!(largest > 0) || !std::isfinite(largest) || std::isnan(sum)) return pairs;
  const double xy = matrix.xy / largest;
  const double xz = matrix.xz / largest;
  const double yz = matrix.yz / largest;
  Rotating turned{{{matrix.xx / largest, xy, xz}, {xy, matrix.yy / largest, yz}, {xz, yz, matrix.zz / largest}}};
  for (int round = 0; round < kMostRounds && turned.beside() > kNegligible * turned.scale(); ++round) {
    turned.clear(0, 1);
    turned.clear(0, 2);
    turned.clear(1, 2);
  }
  for (std::size_t i = 0; i < 3; ++i)
    pairs[i] = {turned.m[i][i] * largest, {turned.axes[0][i], turned.axes[1][i], turned.axes[2][i]}};
  std::sort(pairs.begin(), pairs.end(), [](const EigenPair& a, const EigenPair& b) { return a.value > b.value; });
  return pairs;
}

} // namespace xov
