#pragma once

#include "XOV_Graphics/seismic/Extrema.h"
#include "XOV_Graphics/seismic/UniformSignal.h"

#include <vector>

namespace xov {

/// An evenly sampled series held in memory.
class XOV_EXPORT SampledSignal : public UniformSignal {
public:
  /// Takes over the samples; `deltaSeconds` is their interval. At most 2147483647 samples are seen.
  SampledSignal(std::vector<float> samples, float deltaSeconds, QString description = {});
  ~SampledSignal() override;

  const float* dataPointer() const override;
  int npts() const override;
  float delta() const override;
  /// Smallest finite sample; 0 when there is none.
  float min() const override;
  /// Largest finite sample; 0 when there is none.
  float max() const override;
  QString description() const override;

private:
  std::vector<float> samples_;
  float delta_;
  Extrema extrema_;
  QString description_;
};

} // namespace xov
