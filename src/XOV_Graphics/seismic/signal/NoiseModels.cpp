#include "XOV_Graphics/seismic/signal/NoiseModels.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace xov {

namespace {

/// From this period on, A + B log10(period).
struct Section {
  double fromSeconds;
  double a;
  double b;
};

constexpr Section kLow[] = {
    {0.10, -162.36, 5.64},      {0.17, -166.70, 0.00},    {0.40, -170.00, -8.30},   {0.80, -166.40, 28.90},
    {1.24, -168.60, 52.48},     {2.40, -159.98, 29.81},   {4.30, -141.10, 0.00},    {5.00, -71.36, -99.77},
    {6.00, -97.26, -66.49},     {10.00, -132.18, -31.57}, {12.00, -205.27, 36.16},  {15.60, -37.65, -104.33},
    {21.90, -114.37, -47.10},   {31.60, -160.58, -16.28}, {45.00, -187.50, 0.00},   {70.00, -216.47, 15.70},
    {101.00, -185.00, 0.00},    {154.00, -168.34, -7.61}, {328.00, -217.43, 11.90}, {600.00, -258.28, 26.60},
    {10000.00, -346.88, 48.75},
};

constexpr Section kHigh[] = {
    {0.10, -108.73, -17.23}, {0.22, -150.34, -80.50}, {0.32, -122.31, -23.87},  {0.80, -116.85, 32.51},
    {3.80, -108.48, 18.08},  {4.60, -74.66, -32.95},  {6.30, 0.66, -127.18},    {7.90, -93.37, -22.42},
    {15.40, 73.54, -162.98}, {20.00, -151.52, 10.01}, {354.80, -206.66, 31.63},
};

} // namespace

std::optional<double> noiseModelDb(NoiseModel model, double periodSeconds) {
  if (!(periodSeconds >= kShortestNoisePeriod && periodSeconds <= kLongestNoisePeriod)) return {};
  const std::span<const Section> sections = model == NoiseModel::Low ? std::span<const Section>(kLow) : kHigh;
  const auto next = std::ranges::upper_bound(sections, periodSeconds, {},
                                             [](const Section& section) { return section.fromSeconds; });
  const Section& section = *std::prev(next);
  return section.a + section.b * std::log10(periodSeconds);
}

} // namespace xov
