#include "XOV_Graphics/seismic/signal/Envelope.h"

#include "XOV_Graphics/seismic/signal/Spectrum.h"
#include "XOV_Graphics/seismic/signal/Stretches.h"

namespace xov {

namespace {

/// The Hilbert transform turns every frequency back by a quarter of its period.
std::vector<double> hilbertTransform(std::span<const double> stretch) {
  Spectrum spectrum(stretch);
  for (std::complex<double>& value : spectrum.values())
    value = {value.imag(), -value.real()};
  spectrum.values().front() = 0;
  spectrum.values().back() = 0;
  return spectrum.samples();
}

} // namespace

void applyEnvelope(std::span<double> values) {
  forEachStretch(values, [](std::span<double> stretch) {
    const std::vector<double> turned = hilbertTransform(stretch);
    for (std::size_t i = 0; i < stretch.size(); ++i)
      stretch[i] = std::sqrt(stretch[i] * stretch[i] + turned[i] * turned[i]);
  });
}

} // namespace xov
