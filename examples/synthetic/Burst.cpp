#include "examples/synthetic/Burst.h"

#include "examples/synthetic/BandNoise.h"

#include <algorithm>
#include <cmath>

namespace xov::synthetic {

namespace {
// Below this share of its level a burst has drowned in any noise.
constexpr double kInaudible = 1e-4;
} // namespace

double envelope(const Burst& burst, double timeS) {
  if (timeS < 0) return 0;
  const double decay = (1.0 - burst.tailShare) * std::exp(-timeS / burst.decayS) +
                       burst.tailShare * std::exp(-timeS / burst.tailDecayS);
  return (1.0 - std::exp(-timeS / burst.riseS)) * decay;
}

void addBurst(std::span<double> samples, double rateHz, const Burst& burst) {
  BandNoise noise(burst.centreHz, burst.q, rateHz, burst.seed);
  const double lastingS = -std::log(kInaudible) * std::max(burst.decayS, burst.tailDecayS);
  const double first = std::max(0.0, std::ceil(burst.startS * rateHz));
  const double end = std::min(double(samples.size()), (burst.startS + lastingS) * rateHz);
  for (auto i = std::size_t(first); double(i) < end; ++i)
    samples[i] += burst.level * envelope(burst, double(i) / rateHz - burst.startS) * noise.next();
}

} // namespace xov::synthetic
