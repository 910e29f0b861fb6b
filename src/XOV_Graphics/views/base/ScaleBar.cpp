#include "XOV_Graphics/views/base/ScaleBar.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kMantissas[] = {1, 2, 5, 10};
constexpr double kRounding = 1e-9; // of a value; 0.1 · 10 points may be a little more than 1
constexpr int kDigits = 6;         // before a number gets an exponent

QString numberText(double value) {
  QString text = QString::number(value, 'g', kDigits);
  return text.replace(QLatin1String("e+0"), QLatin1String("e")).replace(QLatin1String("e-0"), QLatin1String("e-"));
}

} // namespace

std::optional<ScaleBar> scaleBar(double pointsPerUnit, double most, const QString& unit) {
  const double largest = most / pointsPerUnit * (1 + kRounding);
  if (!(pointsPerUnit > 0) || !(most > 0) || !std::isnormal(largest)) return {};
  const double power = std::pow(10.0, std::floor(std::log10(largest)));
  if (!std::isnormal(power)) return {};
  ScaleBar bar;
  for (const double mantissa : kMantissas) {
    if (mantissa * power <= largest) bar.value = mantissa * power;
  }
  if (!(bar.value > 0)) return {};
  bar.length = bar.value * pointsPerUnit;
  bar.text = unit.isEmpty() ? numberText(bar.value) : numberText(bar.value) + QLatin1Char(' ') + unit;
  return bar;
}

} // namespace xov
