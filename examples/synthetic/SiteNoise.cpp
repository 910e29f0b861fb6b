#include "examples/synthetic/SiteNoise.h"

namespace xov::synthetic {

namespace {

struct Band {
  double centreHz;
  double q;
  double share; // of the microseisms' level
};

constexpr Band kDoubleFrequency = {0.17, 2.0, 1.0};
constexpr Band kSingleFrequency = {0.07, 3.0, 0.10};
constexpr Band kSlow = {0.012, 0.8, 0.08};
constexpr Band kTraffic = {3.5, 0.5, 0.08};
constexpr double kTiltOnHorizontals = 3.0;

BandNoise bandNoise(const Band& band, double rateHz, std::uint64_t seed) {
  return BandNoise(band.centreHz, band.q, rateHz, seed);
}

} // namespace

SiteNoise::SiteNoise(Sensor sensor, double level, double rateHz, std::uint64_t seed)
    : level_(level),
      tilt_(sensor == Sensor::Horizontal ? kTiltOnHorizontals : 1.0),
      doubleFrequency_(bandNoise(kDoubleFrequency, rateHz, seed)),
      singleFrequency_(bandNoise(kSingleFrequency, rateHz, seed + 1)),
      slow_(bandNoise(kSlow, rateHz, seed + 2)),
      traffic_(bandNoise(kTraffic, rateHz, seed + 3)) {}

double SiteNoise::next(double activity) {
  return level_ *
         (kDoubleFrequency.share * doubleFrequency_.next() + kSingleFrequency.share * singleFrequency_.next() +
          tilt_ * kSlow.share * slow_.next() + activity * kTraffic.share * traffic_.next());
}

} // namespace xov::synthetic
