#include "XOV_Graphics/seismic/array/RealSpectrum.h"

#include <algorithm>
#include <kiss_fftr.h>
#include <memory>
#include <new>

namespace xov {

static_assert(sizeof(kiss_fft_cpx) == sizeof(std::complex<float>), "the transform works in single precision");

std::size_t RealSpectrum::sizeFor(std::size_t samples) {
  return 2 * std::size_t(kiss_fft_next_fast_size(int(std::max<std::size_t>(2, (samples + 1) / 2))));
}

RealSpectrum::RealSpectrum(std::span<const float> samples) {
  const std::size_t size = sizeFor(samples.size());
  std::vector<float> padded(size);
  std::copy(samples.begin(), samples.end(), padded.begin());
  const std::unique_ptr<kiss_fftr_state, void (*)(void*)> transform(kiss_fftr_alloc(int(size), 0, nullptr, nullptr),
                                                                    [](void* state) { kiss_fftr_free(state); });
  if (!transform) throw std::bad_alloc();
  values_.resize(size / 2 + 1);
  kiss_fftr(transform.get(), padded.data(), reinterpret_cast<kiss_fft_cpx*>(values_.data()));
}

} // namespace xov
