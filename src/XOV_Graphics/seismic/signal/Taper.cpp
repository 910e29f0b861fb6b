#include "XOV_Graphics/seismic/signal/Taper.h"

#include "XOV_Graphics/seismic/signal/Stretches.h"

#include <numbers>

namespace xov {

namespace {

double weight(double x, TaperShape shape) {
  using std::numbers::pi;
  return shape == TaperShape::Hann ? (1 - std::cos(pi * x)) / 2 : std::sin(pi * x / 2);
}

void taperStretch(std::span<double> stretch, double length, TaperShape shape) {
  const double intervals = double(stretch.size() - 1);
  length = std::min(length, intervals / 2);
  if (!(length > 0)) return;
  for (std::size_t i = 0; double(i) < length; ++i) {
    const double factor = weight(double(i) / length, shape);
    stretch[i] *= factor;
    stretch[stretch.size() - 1 - i] *= factor;
  }
}

} // namespace

void applyTaper(std::span<double> values, double length, TaperShape shape) {
  forEachStretch(values, [&](std::span<double> stretch) { taperStretch(stretch, length, shape); });
}

void applyTaperShare(std::span<double> values, double share, TaperShape shape) {
  forEachStretch(
      values, [&](std::span<double> stretch) { taperStretch(stretch, share * double(stretch.size() - 1), shape); });
}

} // namespace xov
