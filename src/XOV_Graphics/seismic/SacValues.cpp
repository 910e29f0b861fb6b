#include "XOV_Graphics/seismic/SacValues.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

// Programs that add up single-precision intervals miss the end by more than a sample in long files.
constexpr double kEndTolerance = 1e-4;

constexpr double kLargestTime = double(std::numeric_limits<float>::max());

} // namespace

void SacValues::complete() {
  refineHeader(header, precise);
  if (isDefined(header.b)) return;
  header.b = 0;
  precise.b = 0;
}

void SacValues::fitTo(std::size_t samples) {
  header.npts = nptsOf(samples);
  precise.e = endTime(precise.e, precise.b, precise.delta, header.npts);
  header.e = singleTime(precise.e);
}

int nptsOf(std::size_t samples) { return int(std::min(samples, std::size_t(std::numeric_limits<int>::max()))); }

double endTime(double stored, double b, double delta, int npts) {
  if (!(delta > 0) || npts < 1) return b;
  const double duration = double(npts - 1) * delta;
  const double tolerance = std::max(delta, kEndTolerance * duration);
  return isDefined(stored) && std::abs(stored - (b + duration)) <= tolerance ? stored : b + duration;
}

float singleTime(double seconds) { return float(std::clamp(seconds, -kLargestTime, kLargestTime)); }

bool isPlainTime(double seconds) { return isDefined(seconds) && std::abs(seconds) <= kLargestTime; }

} // namespace xov
