#include "XOV_Graphics/seismic/signal/Trend.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace xov {

namespace {

/// One of the polynomials that are orthogonal over the finite values, at every index.
using Polynomial = std::vector<double>;

/// What recurrence and fit need of a polynomial p: sums over the finite values.
struct Sums {
  double square = 0;  // of p²
  double withX = 0;   // of x p²
  double product = 0; // of p and the values
};

class Fit {
public:
  explicit Fit(std::span<const double> values)
      : middle_(double(values.size() - 1) / 2),
        scale_(values.size() > 1 ? 1 / middle_ : 1) {}

  /// The index on a scale from -1 to 1.
  double x(std::size_t i) const { return (double(i) - middle_) * scale_; }

  Sums sumsOf(const Polynomial& polynomial, std::span<const double> values) const {
    Sums sums;
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (!std::isfinite(values[i])) continue;
      const double square = polynomial[i] * polynomial[i];
      sums.square += square;
      sums.withX += x(i) * square;
      sums.product += polynomial[i] * values[i];
    }
    return sums;
  }

private:
  double middle_;
  double scale_;
};

void subtract(std::span<double> values, const Polynomial& polynomial, double factor) {
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] -= factor * polynomial[i];
}

} // namespace

// Forsythe, G. E. (1957), Generation and use of orthogonal polynomials for data-fitting with a digital computer,
// J. Soc. Indust. Appl. Math. 5, 74-88. Taking each polynomial away from what the last ones left over keeps high
// orders exact, and nothing but sums over the values is ever inverted.
void removePolynomial(std::span<double> values, int order) {
  const auto count = std::size_t(std::ranges::count_if(values, [](double value) { return std::isfinite(value); }));
  if (count == 0) return;
  const Fit fit(values);
  Polynomial last(values.size(), 0);
  Polynomial polynomial(values.size(), 1);
  double lastSquare = 1;
  const auto terms = std::min(std::size_t(std::clamp(order, 0, kMostPolynomialOrder)) + 1, count);
  for (std::size_t term = 0; term < terms; ++term) {
    const Sums sums = fit.sumsOf(polynomial, values);
    if (!(sums.square > 0)) return;
    subtract(values, polynomial, sums.product / sums.square);
    const double shift = sums.withX / sums.square;
    const double share = term == 0 ? 0 : sums.square / lastSquare;
    for (std::size_t i = 0; i < values.size(); ++i)
      last[i] = (fit.x(i) - shift) * polynomial[i] - share * last[i];
    std::swap(last, polynomial);
    lastSquare = sums.square;
  }
}

} // namespace xov
