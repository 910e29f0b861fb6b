#pragma once

#include <array>

namespace xov {

/// A symmetric matrix of three rows.
struct SymmetricMatrix {
  double xx = 0;
  double yy = 0;
  double zz = 0;
  double xy = 0;
  double xz = 0;
  double yz = 0;
};

using Vector3 = std::array<double, 3>;

inline double dot(const Vector3& a, const Vector3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

/// One of three directions that a matrix keeps, and how it stretches what lies along it.
struct EigenPair {
  double value = 0;
  Vector3 vector = {}; ///< of length 1, at right angles to the other two
};

/// The three of them, the largest value first (Jacobi's rotations: G. H. Golub and C. F. Van Loan, Matrix
/// Computations (2013), section 8.5). A matrix with an element that is not finite gives zeros along the axes.
std::array<EigenPair, 3> eigenPairs(const SymmetricMatrix& matrix);

} // namespace xov
