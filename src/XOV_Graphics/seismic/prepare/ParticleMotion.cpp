#include "XOV_Graphics/seismic/prepare/ParticleMotion.h"

#include "XOV_Graphics/base/FiniteSum.h"
#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/prepare/CommonPiece.h"
#include "XOV_Graphics/seismic/prepare/RecordSamples.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kFullCircleDeg = 360;
constexpr double kRightAngleDeg = 90;
constexpr double kToleranceDeg = 1;

// The mean of those that are finite is taken away from all.
std::shared_ptr<const std::vector<float>> withoutMean(std::span<const float> samples) {
  FiniteSum sum;
  addFinite(samples, sum);
  const double mean = sum.mean();
  auto found = std::make_shared<std::vector<float>>(samples.size());
  std::ranges::transform(samples, found->begin(), [&](float sample) { return float(double(sample) - mean); });
  return found;
}

} // namespace

Result<ParticleMotion> particleMotionOf(const ThreeComponents& components) noexcept {
  return guarded({}, [&]() -> Result<ParticleMotion> {
    if (const SeismogramArray present = presentComponents(components); present.size() < components.size()) {
      return Error{QStringLiteral("%1found %2 of the components, expected a vertical and two horizontal ones")
                       .arg(present.empty() ? QString() : present.front()->labelString() + QStringLiteral(": "))
                       .arg(present.size())};
    }
    ThreeComponents ordered = components;
    Result<double> first = componentAzimuth(*ordered[1]);
    if (!first) return Error{first.error()};
    const Result<double> second = componentAzimuth(*ordered[2]);
    if (!second) return Error{second.error()};
    const double angle = std::remainder(*second - *first, kFullCircleDeg);
    if (std::abs(std::abs(angle) - kRightAngleDeg) > kToleranceDeg)
      return errorOf(*ordered[1],
                     QStringLiteral("found horizontal components with the azimuths %1 and %2, expected a right angle")
                         .arg(numberText(*first), numberText(*second)));
    if (angle < 0) {
      std::swap(ordered[1], ordered[2]);
      first = second;
    }
    const Result<CommonPiece> piece = commonPiece(ordered);
    if (!piece) return Error{piece.error()};
    ParticleMotion motion;
    motion.firstAzimuthDeg = *first;
    for (std::size_t k = 0; k < ordered.size(); ++k) {
      motion.samples[k] = withoutMean(samplesOf(*ordered[k]).subspan(piece->first[k], piece->count));
      motion.names[k] = ordered[k]->kcmpnm();
    }
    return motion;
  });
}

} // namespace xov
