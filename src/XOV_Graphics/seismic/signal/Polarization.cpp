#include "XOV_Graphics/seismic/signal/Polarization.h"

#include "XOV_Graphics/seismic/signal/SymmetricMatrix.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr double kDegreesPerRadian = 180 / std::numbers::pi;
constexpr double kFullCircleDeg = 360;
constexpr std::size_t kFewestSamples = 2;

using Components = std::array<std::span<const float>, 3>;

template <typename Use>
std::size_t forEachSample(const Components& components, Use use) {
  const std::size_t count = std::min({components[0].size(), components[1].size(), components[2].size()});
  std::size_t used = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const Vector3 ground = {double(components[0][i]), double(components[1][i]), double(components[2][i])};
    if (!std::isfinite(ground[0] + ground[1] + ground[2])) continue;
    use(ground);
    ++used;
  }
  return used;
}

} // namespace

std::optional<Polarization> polarizationOf(std::span<const float> vertical, std::span<const float> first,
                                           std::span<const float> second) {
  const Components components = {vertical, first, second};
  Vector3 mean{};
  const std::size_t count = forEachSample(components, [&](const Vector3& ground) {
    for (std::size_t k = 0; k < 3; ++k)
      mean[k] += ground[k];
  });
  if (count < kFewestSamples) return {};
  for (double& sum : mean)
    sum /= double(count);
  SymmetricMatrix sums;
  forEachSample(components, [&](const Vector3& ground) {
    const double x = ground[0] - mean[0];
    const double y = ground[1] - mean[1];
    const double z = ground[2] - mean[2];
    sums.xx += x * x;
    sums.yy += y * y;
    sums.zz += z * z;
    sums.xy += x * y;
    sums.xz += x * z;
    sums.yz += y * z;
  });
  const auto axes = eigenPairs(sums);
  if (!(axes[0].value > 0)) return {};

  Polarization found;
  // Rounding may leave a little below 0 where there is no motion.
  for (std::size_t k = 0; k < 3; ++k)
    found.variances[k] = std::max(axes[k].value, 0.0) / double(count);
  const auto& [largest, middle, smallest] = found.variances;
  found.rectilinearity = 1 - (middle + smallest) / (2 * largest);
  found.planarity = 1 - 2 * smallest / (largest + middle);
  found.direction = axes[0].vector;
  if (found.direction[0] < 0) {
    for (double& part : found.direction)
      part = -part;
  }
  const double azimuth = std::atan2(found.direction[2], found.direction[1]) * kDegreesPerRadian;
  found.azimuthDeg = azimuth < 0 ? azimuth + kFullCircleDeg : azimuth;
  if (found.azimuthDeg >= kFullCircleDeg) found.azimuthDeg = 0;
  found.incidenceDeg = std::acos(std::min(found.direction[0], 1.0)) * kDegreesPerRadian;
  return found;
}

} // namespace xov
