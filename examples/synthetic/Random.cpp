#include "examples/synthetic/Random.h"

#include <cmath>
#include <numbers>

namespace xov::synthetic {

namespace {
// The upper 53 bits fill a double's mantissa.
constexpr int kUnusedBits = 11;
constexpr double kUnit = 1.0 / 9007199254740992.0; // 2^-53
} // namespace

Random::Random(std::uint64_t seed) : engine_(seed) {}

double Random::uniform() { return (double(engine_() >> kUnusedBits) + 1.0) * kUnit; }

double Random::normal() {
  hasSpare_ = !hasSpare_;
  if (!hasSpare_) return spare_;
  const double radius = std::sqrt(-2.0 * std::log(uniform()));
  const double angle = 2.0 * std::numbers::pi * uniform();
  spare_ = radius * std::sin(angle);
  return radius * std::cos(angle);
}

} // namespace xov::synthetic
