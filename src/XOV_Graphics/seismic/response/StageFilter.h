#pragma once

#include "XOV_Graphics/seismic/response/InstrumentResponse.h"

#include <span>

namespace xov {

/// Whether a stage's filter works on samples, so that their rate must be known.
bool isDigital(const ResponseStage& stage);

/// The values of a stage's filter alone, without its gain, at as many frequencies as there are values. `rateHz` is
/// the rate of the samples that come in. The points of a list must be sorted by their frequency. A stage without a
/// filter, and a polynomial, is 1.
void evaluateFilter(const ResponseStage& stage, double rateHz, std::span<const double> frequenciesHz,
                    std::span<std::complex<double>> values);

} // namespace xov
