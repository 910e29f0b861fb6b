#include "tests/support/TraceSignals.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

} // namespace

float normal(std::mt19937& random, double deviation) {
  return float(deviation) * std::normal_distribution<float>()(random);
}

const std::vector<Signal>& signalKinds() {
  static const std::vector<Signal> kinds{
      {"noise of 0.05 points", [](double, std::size_t, double, std::mt19937& r) { return normal(r, 0.05); }},
      {"noise of 1 point", [](double, std::size_t, double, std::mt19937& r) { return normal(r, 1); }},
      {"noise of 15 points", [](double, std::size_t, double, std::mt19937& r) { return normal(r, 15); }},
      {"burst", [](double x, std::size_t, double,
                   std::mt19937& r) { return normal(r, 0.1 + 12 * std::exp(-std::pow(x - 35, 2) / 90)); }},
      {"sine", [](double x, std::size_t, double, std::mt19937&) { return float(17 * std::sin(0.4 * x)); }},
      {"steps", [](double x, std::size_t, double, std::mt19937&) { return std::fmod(x, 17.3) < 8 ? 13.3F : -11.1F; }},
      {"single spikes",
       [](double, std::size_t i, double perPoint, std::mt19937&) {
         return i % std::size_t(std::max(3.0, 13.7 * perPoint)) == std::size_t(2 + perPoint) ? 19.0F : 0.37F;
       }},
      {"flat line", [](double, std::size_t, double, std::mt19937&) { return 0.3137F; }},
      {"gaps",
       [](double x, std::size_t i, double, std::mt19937& r) {
         const float value = normal(r, 5);
         return int(1.7 * x) % 9 == 4 || i % 37 == 13 ? kNan : value;
       }},
  };
  return kinds;
}

std::vector<float> samplesOf(const Signal& signal, double perPoint, double points, std::mt19937& random) {
  std::vector<float> samples(std::size_t(std::max(3.0, perPoint * points)));
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = signal.value(double(i) / perPoint, i, perPoint, random);
  return samples;
}

std::vector<float> noise(std::size_t count, float deviation, unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<float> distribution; // which takes no deviation of 0
  std::vector<float> samples(count);
  for (float& sample : samples)
    sample = deviation * distribution(random);
  return samples;
}

} // namespace xov
