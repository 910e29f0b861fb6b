#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/response/InstrumentResponse.h"

#include <span>

namespace xov {

/// What of the ground's motion a signal is.
enum class GroundMotion : std::uint8_t {
  Displacement, ///< m
  Velocity,     ///< m/s
  Acceleration, ///< m/s²
};

/// The transfer function of a response: the amplitude and phase that a harmonic motion of the ground, exp(2πift), has
/// in the samples, per unit of the motion.
///
/// It is the product of the stages. Each is its gain times its filter, and the filter is scaled to 1 at the frequency
/// that the gain is given for, as SEED defines the gain of a stage (SEED Reference Manual, version 2.4, appendix C);
/// where none is given, or the filter is 0 there, or it is a list, the filter is as its own normalisation makes it. A
/// list is interpolated between its points, in the logarithms of frequency and amplitude where these are positive,
/// and is 0 outside of them.
///
/// A digital filter has its whole phase, delay included, and the correction of its decimation turns that back. Where
/// none is stated, a filter of linear phase has no delay: most who leave the correction away have made it, and
/// evalresp, by which responses are commonly computed, takes it so. Where a stage has a decimation and no filter, the
/// delay that it states counts.
class XOV_EXPORT ResponseFunction {
public:
  /// The function that is 0 everywhere.
  ResponseFunction() = default;

  /// The function for ground motion of that kind, whichever of the three the instrument measures. The line of error
  /// says what is wrong with the response, without a name: it has no stages, takes anything but ground motion, has a
  /// polynomial, or a digital stage of unknown sample rate.
  static Result<ResponseFunction> of(const InstrumentResponse& response, GroundMotion motion);

  /// The value at a frequency in Hz; 0 where it is not a finite number.
  std::complex<double> at(double frequencyHz) const;

  /// The values at many frequencies: the same as at(), in less time.
  std::vector<std::complex<double>> at(std::span<const double> frequenciesHz) const;

private:
  struct Stage {
    ResponseStage stage;
    double rateHz = 0;         ///< of the samples that come in; 0 where it is not known
    double scale = 1;          ///< of the filter: the gain, and what makes the filter 1 where the gain is given
    double advanceSeconds = 0; ///< of what comes out
  };

  /// Multiplies at most a chunk of values by those of the stages.
  void multiply(std::span<const double> frequenciesHz, std::span<std::complex<double>> values) const;

  std::vector<Stage> stages_;
  int derivatives_ = 0; ///< of the wanted motion that the instrument measures; negative: integrals
  double unit_ = 0;
};

/// The line that says that the stated sensitivity of a response differs from that of its stages by more than a
/// twentieth, without a name; empty when it does not, or when there is none or it cannot be compared.
XOV_EXPORT QString sensitivityProblem(const InstrumentResponse& response);

} // namespace xov
