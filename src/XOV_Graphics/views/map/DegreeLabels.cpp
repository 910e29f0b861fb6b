#include "XOV_Graphics/views/map/DegreeLabels.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kTurn = 360;
constexpr int kMostDecimals = 6;
constexpr double kMostLabels = 1000;
// Limits and steps are single-precision numbers: a limit this close to a tick, in steps, is on it.
constexpr double kOnTick = 1e-2;
constexpr double kRounding = 1e-3; // of a step

int decimalsFor(double step) {
  double scaled = step;
  for (int decimals = 0; decimals < kMostDecimals; ++decimals, scaled *= 10) {
    if (std::abs(scaled - std::round(scaled)) < kRounding * scaled) return decimals;
  }
  return kMostDecimals;
}

} // namespace

QString degreeText(Qt::Axis axis, double deg, int decimals) {
  const double turned = axis == Qt::XAxis ? std::remainder(deg, kTurn) : deg;
  const QString number = QString::number(std::abs(turned), 'f', decimals);
  const double shown = number.toDouble();
  QString text = number + QChar(0x00b0);
  if (shown == 0 || (axis == Qt::XAxis && shown == kTurn / 2)) return text;
  if (axis == Qt::XAxis) return text + QLatin1Char(turned < 0 ? 'W' : 'E');
  return text + QLatin1Char(turned < 0 ? 'S' : 'N');
}

std::vector<DegreeLabel> degreeLabels(Qt::Axis axis, float lower, float upper, float step) {
  std::vector<DegreeLabel> labels;
  const double first = std::ceil(double(lower) / double(step) - kOnTick);
  const double last = std::floor(double(upper) / double(step) + kOnTick);
  if (!(step > 0) || !std::isfinite(first) || !(last - first < kMostLabels)) return labels;
  const int decimals = decimalsFor(double(step));
  for (int i = 0; first + i <= last; ++i) {
    const double deg = (first + i) * double(step);
    labels.push_back({float(deg), degreeText(axis, deg, decimals)});
  }
  return labels;
}

} // namespace xov
