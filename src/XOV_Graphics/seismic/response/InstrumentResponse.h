#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QString>

#include <complex>
#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

namespace xov {

/// The variable in which a stage of a response is written.
enum class TransferVariable : std::uint8_t {
  LaplaceRadians, ///< s = 2πif
  LaplaceHertz,   ///< s = if
  Digital,        ///< z = exp(2πif/r), r being the stage's rate of input samples
};

/// A stage as a · Π (s - zero) / Π (s - pole), in s or z.
struct XOV_EXPORT PolesAndZeros {
  /// Whether it is in s or in z.
  TransferVariable variable = TransferVariable::LaplaceRadians;
  double normalization = 1;   ///< a
  double normalizationHz = 0; ///< where a makes the stage 1
  /// In rad/s, in Hz, or of z.
  std::vector<std::complex<double>> zeros = {};
  /// In the unit of the zeros.
  std::vector<std::complex<double>> poles = {};
};

/// A stage as Σ n[k] xᵏ / Σ d[k] xᵏ, where x is s for an analogue stage and 1/z for a digital one, as FIR filters
/// are.
struct XOV_EXPORT FilterCoefficients {
  /// Whether it is in s or in z.
  TransferVariable variable = TransferVariable::Digital;
  std::vector<double> numerators = {};   ///< n; none mean 1
  std::vector<double> denominators = {}; ///< d; none mean 1
};

/// A stage as it was measured at some frequencies.
struct XOV_EXPORT ResponseList {
  /// The response at one frequency.
  struct XOV_EXPORT Point {
    double frequencyHz = 0; ///< in Hz
    double amplitude = 0;   ///< output for each unit of input
    double phaseDeg = 0;    ///< positive where the output is ahead
  };
  std::vector<Point> points = {}; ///< in any order
};

/// A stage whose output is a polynomial of its input: no transfer function.
struct XOV_EXPORT PolynomialStage {};

/// How a digital stage thins out its samples and what it does to their times.
struct XOV_EXPORT Decimation {
  double inputRateHz = 0;       ///< before it
  double factor = 1;            ///< input samples for each one put out
  double offset = 0;            ///< which of them is put out
  double delaySeconds = 0;      ///< by which the stage delays its signal, as estimated by those who wrote it down
  double correctionSeconds = 0; ///< by which the times of the samples were made earlier to make up for it
};

/// One stage of a response: a filter, if any, and a gain.
struct XOV_EXPORT ResponseStage {
  int number = 0;           ///< 1 is the sensor
  QString inputUnits = {};  ///< what goes in, as "M/S"
  QString outputUnits = {}; ///< what comes out, as "V"
  /// None where there is a gain only.
  std::variant<std::monostate, PolesAndZeros, FilterCoefficients, ResponseList, PolynomialStage> filter = {};
  double gain = 1;                   ///< output for each unit of input
  std::optional<double> gainHz = {}; ///< where the stage has that gain; nothing where the filter is taken as it is
  /// Only of digital stages.
  std::optional<Decimation> decimation = {};
};

/// What a channel puts out for each unit of what it measures, at one frequency.
struct XOV_EXPORT Sensitivity {
  double value = 0;        ///< output for each unit of input
  double frequencyHz = 0;  ///< where it holds
  QString inputUnits = {}; ///< what is measured, as "M/S"
};

/// The response of a channel, from the motion of the ground to the counts of its samples.
struct XOV_EXPORT InstrumentResponse {
  std::vector<ResponseStage> stages = {}; ///< in the order in which the signal goes through them
  /// Of all stages together; nothing where the file does not tell.
  std::optional<Sensitivity> sensitivity = {};
  /// Where it was read and could not be understood: the line that says why. Such a response cannot be used.
  QString problem = {};
};

} // namespace xov
