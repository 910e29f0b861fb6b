#include "XOV_Graphics/seismic/SampledSignal.h"

#include <algorithm>
#include <limits>

namespace xov {

SampledSignal::SampledSignal(std::vector<float> samples, float deltaSeconds, QString description)
    : samples_(std::move(samples)),
      delta_(deltaSeconds),
      extrema_(finiteExtrema(samples_)),
      description_(std::move(description)) {}

SampledSignal::~SampledSignal() = default;

const float* SampledSignal::dataPointer() const { return samples_.data(); }

int SampledSignal::npts() const {
  return int(std::min(samples_.size(), std::size_t(std::numeric_limits<int>::max())));
}

float SampledSignal::delta() const { return delta_; }

float SampledSignal::min() const { return extrema_.min; }

float SampledSignal::max() const { return extrema_.max; }

QString SampledSignal::description() const { return description_; }

} // namespace xov
