#include "XOV_Graphics/seismic/arrivals/GroupVelocity.h"

#include <algorithm>
#include <iterator>

namespace xov {

namespace {

struct Row {
  double periodS;
  double rayleighKmPerS;
  double loveKmPerS;
};

constexpr Row kRows[] = {
    {8, 3.02, 3.32},   {10, 2.96, 3.30},  {12, 2.90, 3.29},  {14, 2.85, 3.29},  {16, 2.82, 3.28}, {18, 2.81, 3.29},
    {20, 2.85, 3.30},  {22, 2.92, 3.32},  {25, 3.07, 3.36},  {30, 3.32, 3.45},  {35, 3.51, 3.57}, {40, 3.63, 3.68},
    {45, 3.71, 3.79},  {50, 3.76, 3.88},  {60, 3.82, 4.01},  {70, 3.85, 4.10},  {80, 3.86, 4.16}, {100, 3.85, 4.23},
    {120, 3.83, 4.27}, {150, 3.77, 4.30}, {200, 3.67, 4.33}, {250, 3.63, 4.35},
};
static_assert(std::begin(kRows)->periodS == kShortestSurfacePeriodS);
static_assert(std::prev(std::end(kRows))->periodS == kLongestSurfacePeriodS);

double column(const Row& row, SurfaceWave wave) {
  return wave == SurfaceWave::Rayleigh ? row.rayleighKmPerS : row.loveKmPerS;
}

} // namespace

double groupVelocity(SurfaceWave wave, double periodS) {
  const double period = std::clamp(periodS, kShortestSurfacePeriodS, kLongestSurfacePeriodS);
  const Row* upper = std::find_if(std::next(std::begin(kRows)), std::prev(std::end(kRows)),
                                  [period](const Row& row) { return row.periodS >= period; });
  const Row* lower = std::prev(upper);
  const double part = (period - lower->periodS) / (upper->periodS - lower->periodS);
  return column(*lower, wave) + part * (column(*upper, wave) - column(*lower, wave));
}

double largestGroupVelocity(SurfaceWave wave) {
  double largest = 0;
  for (const Row& row : kRows)
    largest = std::max(largest, column(row, wave));
  return largest;
}

} // namespace xov
