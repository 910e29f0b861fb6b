#include "XOV_Graphics/seismic/signal/SpectrumWindow.h"

#include "XOV_Graphics/seismic/signal/Taper.h"

#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr double kTaperedShare = 0.1;

// a + b cos 2πx + c cos 4πx.
struct CosineSum {
  double a;
  double b;
  double c;
};

CosineSum cosineSumOf(WindowShape shape) {
  switch (shape) {
  case WindowShape::Hann:
    return {0.5, -0.5, 0};
  case WindowShape::Hamming:
    return {0.54, -0.46, 0};
  case WindowShape::Blackman:
    return {0.42, -0.5, 0.08};
  case WindowShape::Rectangular:
  case WindowShape::CosineTaper:
    break;
  }
  return {1, 0, 0};
}

} // namespace

std::vector<double> windowOf(WindowShape shape, std::size_t n) {
  const CosineSum sum = cosineSumOf(shape);
  std::vector<double> window(n);
  for (std::size_t k = 0; k < n; ++k) {
    const double phase = 2 * std::numbers::pi * double(k) / double(n);
    window[k] = sum.a + sum.b * std::cos(phase) + sum.c * std::cos(2 * phase);
  }
  if (shape == WindowShape::CosineTaper) applyTaperShare(window, kTaperedShare);
  return window;
}

} // namespace xov
