#include "XOV_Graphics/seismic/signal/Calculus.h"

#include "XOV_Graphics/seismic/signal/Stretches.h"

#include <limits>
#include <utility>

namespace xov {

namespace {

void integrateStretch(std::span<double> stretch, double intervalSeconds) {
  double sum = 0;
  double last = std::exchange(stretch.front(), 0);
  for (double& value : stretch.subspan(1)) {
    sum += (last + value) / 2;
    last = std::exchange(value, sum * intervalSeconds);
  }
}

void differentiateStretch(std::span<double> y, double intervalSeconds) {
  const std::size_t last = y.size() - 1;
  if (last == 0) {
    y[0] = std::numeric_limits<double>::quiet_NaN();
    return;
  }
  if (last == 1) {
    y[0] = y[1] = (y[1] - y[0]) / intervalSeconds;
    return;
  }
  const double twice = 2 * intervalSeconds;
  const double atBegin = (-3 * y[0] + 4 * y[1] - y[2]) / twice;
  const double atEnd = (3 * y[last] - 4 * y[last - 1] + y[last - 2]) / twice;
  double before = y[0];
  for (std::size_t i = 1; i < last; ++i)
    before = std::exchange(y[i], (y[i + 1] - before) / twice);
  y[0] = atBegin;
  y[last] = atEnd;
}

} // namespace

void integrate(std::span<double> values, double intervalSeconds) {
  forEachStretch(values, [&](std::span<double> stretch) { integrateStretch(stretch, intervalSeconds); });
}

void differentiate(std::span<double> values, double intervalSeconds) {
  forEachStretch(values, [&](std::span<double> stretch) { differentiateStretch(stretch, intervalSeconds); });
}

} // namespace xov
