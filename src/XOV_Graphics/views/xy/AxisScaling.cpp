#include "XOV_Graphics/views/xy/AxisScaling.h"

#include <cmath>

namespace xov {

namespace {

// Ranges within this many powers of ten of 1 are labelled as they are.
constexpr float kPlainDecades = 2;

} // namespace

ScaledAxis scaledAxis(float lower, float upper, const QString& label) {
  const float range = upper - lower;
  const auto g = float(std::log10(double(range)));
  if (!std::isfinite(g) || !(std::abs(g) > kPlainDecades)) return {lower, upper, label};
  const int e = int(g > 0 ? std::floor(double(kPlainDecades - g)) : std::ceil(double(-g)));
  const double factor = std::pow(10.0, e);
  return {float(lower * factor), float(upper * factor),
          QStringLiteral("%1 (/ 10^%2)").arg(label, QString::number(-e))};
}

} // namespace xov
