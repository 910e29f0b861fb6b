#include "XOV_Graphics/seismic/response/StageFilter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

using Complex = std::complex<double>;

constexpr double kPi = std::numbers::pi;
constexpr std::size_t kBlock = 256; // frequencies that a filter's coefficients are gone through for at once

/// s or z at a frequency.
Complex variableAt(TransferVariable variable, double rateHz, double frequencyHz) {
  switch (variable) {
  case TransferVariable::LaplaceRadians:
    return {0, 2 * kPi * frequencyHz};
  case TransferVariable::LaplaceHertz:
    return {0, frequencyHz};
  case TransferVariable::Digital:
    break;
  }
  return std::polar(1.0, 2 * kPi * frequencyHz / rateHz);
}

Complex polesAndZerosAt(const PolesAndZeros& filter, Complex variable) {
  // Zeros and poles by turns, so that a product of many stays within reach.
  Complex value = filter.normalization;
  const std::size_t count = std::max(filter.zeros.size(), filter.poles.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (i < filter.zeros.size()) value *= variable - filter.zeros[i];
    if (i < filter.poles.size()) value /= variable - filter.poles[i];
  }
  return value;
}

/// Numbers of a block with their real and imaginary parts apart, which the compiler makes vectors of.
struct Block {
  std::array<double, kBlock> real;
  std::array<double, kBlock> imaginary;
};

/// Σ c[k] xᵏ for the first `count` x of a block; 1 for no coefficients.
void evaluatePolynomial(const std::vector<double>& coefficients, const Block& x, std::size_t count, Block& sum) {
  sum.real.fill(coefficients.empty() ? 1 : coefficients.back());
  sum.imaginary.fill(0);
  for (std::size_t k = coefficients.empty() ? 0 : coefficients.size() - 1; k > 0; --k) {
    const double coefficient = coefficients[k - 1];
    for (std::size_t i = 0; i < count; ++i) {
      const double real = sum.real[i] * x.real[i] - sum.imaginary[i] * x.imaginary[i] + coefficient;
      sum.imaginary[i] = sum.real[i] * x.imaginary[i] + sum.imaginary[i] * x.real[i];
      sum.real[i] = real;
    }
  }
}

void evaluateCoefficients(const FilterCoefficients& filter, double rateHz, std::span<const double> frequenciesHz,
                          std::span<Complex> values) {
  Block x;
  Block above;
  Block below;
  for (std::size_t first = 0; first < values.size(); first += kBlock) {
    const std::size_t count = std::min(kBlock, values.size() - first);
    for (std::size_t i = 0; i < count; ++i) {
      const Complex variable = variableAt(filter.variable, rateHz, frequenciesHz[first + i]);
      x.real[i] = variable.real();
      // A delay of one sample is 1/z, which lies as far below the axis.
      x.imaginary[i] = filter.variable == TransferVariable::Digital ? -variable.imag() : variable.imag();
    }
    evaluatePolynomial(filter.numerators, x, count, above);
    evaluatePolynomial(filter.denominators, x, count, below);
    for (std::size_t i = 0; i < count; ++i)
      values[first + i] = Complex(above.real[i], above.imaginary[i]) / Complex(below.real[i], below.imaginary[i]);
  }
}

Complex between(const ResponseList::Point& from, const ResponseList::Point& to, double frequencyHz) {
  const auto mixed = [](double a, double b, double share) { return a + share * (b - a); };
  const bool isPositive = from.frequencyHz > 0 && from.amplitude > 0 && to.amplitude > 0;
  const double share = isPositive
                           ? std::log(frequencyHz / from.frequencyHz) / std::log(to.frequencyHz / from.frequencyHz)
                           : (frequencyHz - from.frequencyHz) / (to.frequencyHz - from.frequencyHz);
  const double amplitude = isPositive ? std::exp(mixed(std::log(from.amplitude), std::log(to.amplitude), share))
                                      : mixed(from.amplitude, to.amplitude, share);
  // Phases are written within one turn: from one to the next it is the shorter way.
  const double turn = std::remainder(to.phaseDeg - from.phaseDeg, 360);
  const double phase = (from.phaseDeg + share * turn) * kPi / 180;
  return amplitude * Complex(std::cos(phase), std::sin(phase));
}

Complex listAt(const ResponseList& list, double frequencyHz) {
  const std::vector<ResponseList::Point>& points = list.points;
  const auto above = std::ranges::lower_bound(points, frequencyHz, {}, &ResponseList::Point::frequencyHz);
  if (above == points.end()) return 0;
  if (above->frequencyHz == frequencyHz)
    return between(*above, {2 * frequencyHz + 1, 0, above->phaseDeg}, frequencyHz);
  return above == points.begin() ? 0 : between(*(above - 1), *above, frequencyHz);
}

} // namespace

bool isDigital(const ResponseStage& stage) {
  if (const auto* const filter = std::get_if<PolesAndZeros>(&stage.filter))
    return filter->variable == TransferVariable::Digital;
  if (const auto* const filter = std::get_if<FilterCoefficients>(&stage.filter))
    return filter->variable == TransferVariable::Digital &&
           filter->numerators.size() + filter->denominators.size() > 0;
  return false;
}

void evaluateFilter(const ResponseStage& stage, double rateHz, std::span<const double> frequenciesHz,
                    std::span<std::complex<double>> values) {
  if (const auto* const roots = std::get_if<PolesAndZeros>(&stage.filter)) {
    std::ranges::transform(frequenciesHz, values.begin(), [&](double frequencyHz) {
      return polesAndZerosAt(*roots, variableAt(roots->variable, rateHz, frequencyHz));
    });
  } else if (const auto* const coefficients = std::get_if<FilterCoefficients>(&stage.filter)) {
    evaluateCoefficients(*coefficients, rateHz, frequenciesHz, values);
  } else if (const auto* const list = std::get_if<ResponseList>(&stage.filter)) {
    std::ranges::transform(frequenciesHz, values.begin(),
                           [&](double frequencyHz) { return listAt(*list, frequencyHz); });
  } else {
    std::ranges::fill(values, 1);
  }
}

} // namespace xov
