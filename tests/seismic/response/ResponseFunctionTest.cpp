#include "XOV_Graphics/seismic/response/ResponseFunction.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace xov {
namespace {

using Complex = std::complex<double>;

constexpr double kPi = std::numbers::pi;
const Complex kI(0, 1);

ResponseStage stage(decltype(ResponseStage::filter) filter, double gain = 1, std::optional<double> gainHz = {}) {
  ResponseStage made;
  made.number = 1;
  made.inputUnits = QStringLiteral("M/S");
  made.filter = std::move(filter);
  made.gain = gain;
  made.gainHz = gainHz;
  return made;
}

ResponseFunction functionOf(std::vector<ResponseStage> stages, GroundMotion motion = GroundMotion::Velocity) {
  const auto function = ResponseFunction::of({std::move(stages), {}, {}}, motion);
  EXPECT_TRUE(function) << function.error().toStdString();
  return *function;
}

QString errorOf(std::vector<ResponseStage> stages) {
  return ResponseFunction::of({std::move(stages), {}, {}}, GroundMotion::Velocity).error();
}

void expectNear(Complex found, Complex expected, double tolerance, const char* what) {
  EXPECT_NEAR(std::abs(found - expected), 0, tolerance) << what << ": found " << found << ", expected " << expected;
}

/// A pendulum with a coil: two zeros at 0, and poles by its own frequency and its damping.
PolesAndZeros pendulum(double naturalHz, double damping) {
  const double omega = 2 * kPi * naturalHz;
  const double imaginary = omega * std::sqrt(1 - damping * damping);
  PolesAndZeros made;
  made.zeros = {0, 0};
  made.poles = {{-omega * damping, imaginary}, {-omega * damping, -imaginary}};
  return made;
}

TEST(ResponseFunction, ofAPendulumIsThatOfItsFrequencyAndDamping) {
  // s² / (s² + 2 h w s + w²): at its own frequency i/(2h), far above 1, far below the square of the ratio, turned by
  // half a turn.
  const double damping = 0.6;
  const ResponseFunction function = functionOf({stage(pendulum(0.5, damping))});
  expectNear(function.at(0.5), kI / (2 * damping), 1e-12, "own frequency");
  expectNear(function.at(500), 1, 1.3e-3, "far above");
  expectNear(function.at(0.0005) * 1e6, -1, 1.3e-3, "far below");
  // At twice its frequency -4 / (-4 + 2 · 0.6 · 2i + 1) = 4 / (3 - 2.4i).
  expectNear(function.at(1), 4.0 / Complex(3, -2.4), 1e-12, "twice");
  expectNear(function.at(0), 0, 0, "0 Hz");
}

TEST(ResponseFunction, ofAnSts2HasItsPublishedCorner) {
  // Streckeisen's figures for the STS-2 of the first generation: 120 s, damping 0.707.
  PolesAndZeros sts2;
  sts2.normalization = 60077000;
  sts2.zeros = {0, 0};
  sts2.poles = {{-0.037004, 0.037016}, {-0.037004, -0.037016}, -251.33, {-131.04, -467.29}, {-131.04, 467.29}};
  const ResponseFunction function = functionOf({stage(sts2, 1500, 1.0)});
  EXPECT_NEAR(std::abs(function.at(1)), 1500, 1e-9);
  // |p|² = 0.037004² + 0.037016² = 0.00273948 = w², h = 0.037004/w = 0.70699, and 1/(2h) = 0.70722; the poles above
  // make the value 0.02 % higher than it is at 1 Hz.
  const double cornerHz = std::sqrt(0.00273948) / (2 * kPi);
  EXPECT_NEAR(1 / cornerHz, 120, 0.1);
  EXPECT_NEAR(std::abs(function.at(cornerHz)), 1500 * 0.70722 * 1.00017, 0.02);
  EXPECT_NEAR(std::abs(function.at(0.1)), 1500, 1500 * 3e-4);
}

TEST(ResponseFunction, takesPolesInHertz) {
  PolesAndZeros filter;
  filter.variable = TransferVariable::LaplaceHertz;
  filter.normalization = 2;
  filter.poles = {-2};
  // 2 / (if + 2) at 2 Hz is 1 / (1 + i).
  expectNear(functionOf({stage(filter)}).at(2), 1.0 / Complex(1, 1), 1e-15, "corner");
}

ResponseStage digital(decltype(ResponseStage::filter) filter, double correctionSeconds = 0) {
  ResponseStage made = stage(std::move(filter));
  made.decimation = Decimation{40, 2, 0, 0.7, correctionSeconds};
  return made;
}

TEST(ResponseFunction, ofASymmetricFilterHasALinearPhase) {
  // A quarter, a half, a quarter: cos²(πf/r), delayed by a sample of 0.025 s.
  FilterCoefficients filter;
  filter.numerators = {0.25, 0.5, 0.25};
  for (const double hertz : {0.0, 0.3, 5.0, 10.0, 19.0}) {
    const double amplitude = std::pow(std::cos(kPi * hertz / 40), 2);
    // The correction turns the delay back. What the file estimates the delay to be does not count.
    expectNear(functionOf({digital(filter, 0.01)}).at(hertz), std::polar(amplitude, -2 * kPi * hertz * 0.015), 1e-14,
               "corrected in part");
    expectNear(functionOf({digital(filter, 0.025)}).at(hertz), amplitude, 1e-14, "corrected");
    expectNear(functionOf({digital(filter)}).at(hertz), amplitude, 1e-14, "without a correction");
  }
  EXPECT_NEAR(std::abs(functionOf({digital(filter)}).at(20)), 0, 1e-15);
}

TEST(ResponseFunction, ofAnyOtherFilterHasItsOwnPhase) {
  // 0.75 + 0.25/z, at a quarter of the rate, where z is i.
  FilterCoefficients filter;
  filter.numerators = {0.75, 0.25};
  expectNear(functionOf({digital(filter)}).at(10), Complex(0.75, -0.25), 1e-14, "without a correction");
  // An eighth of a period of 0.1 s.
  expectNear(functionOf({digital(filter, 0.0125)}).at(10), Complex(0.75, -0.25) * std::polar(1.0, kPi / 4), 1e-14,
             "corrected");
}

TEST(ResponseFunction, ofARecursiveFilterIsTheSameFromCoefficientsAndRoots) {
  // y[n] = 0.2 x[n] + 0.8 y[n-1]: 0.2 / (1 - 0.8/z) = 0.2 z / (z - 0.8).
  FilterCoefficients coefficients;
  coefficients.numerators = {0.2};
  coefficients.denominators = {1, -0.8};
  PolesAndZeros roots;
  roots.variable = TransferVariable::Digital;
  roots.normalization = 0.2;
  roots.zeros = {0};
  roots.poles = {0.8};
  const ResponseFunction first = functionOf({digital(coefficients)});
  const ResponseFunction second = functionOf({digital(roots)});
  expectNear(first.at(0), 1, 1e-14, "0 Hz");
  expectNear(first.at(20), 0.2 / 1.8, 1e-14, "Nyquist frequency");
  expectNear(first.at(10), 0.2 / (1.0 + 0.8 * kI), 1e-14, "half of it, where z is i");
  for (const double hertz : {0.5, 3.0, 17.0})
    expectNear(second.at(hertz), first.at(hertz), 1e-14, "roots");
}

TEST(ResponseFunction, takesAnalogueCoefficients) {
  FilterCoefficients filter;
  filter.variable = TransferVariable::LaplaceRadians;
  filter.numerators = {3};
  filter.denominators = {1, 1 / (2 * kPi)};
  expectNear(functionOf({stage(filter)}).at(1), 3.0 / Complex(1, 1), 1e-14, "corner of 1 Hz");
}

TEST(ResponseFunction, interpolatesLists) {
  // Not in their order. Twice the frequency is half of the way to four times it.
  const ResponseFunction function =
      functionOf({stage(ResponseList{{{4, 16, 170}, {1, 1, 90}, {16, 16, -170}, {0, 0, 90}}})});
  expectNear(function.at(1), kI, 1e-14, "a point");
  expectNear(function.at(2), std::polar(4.0, 130 * kPi / 180), 1e-13, "between points");
  expectNear(function.at(8), -16, 1e-13, "across half a turn");
  expectNear(function.at(0.25), 0.25 * kI, 1e-14, "from 0");
  expectNear(function.at(16), std::polar(16.0, -170 * kPi / 180), 1e-13, "the last point");
  expectNear(function.at(16.1), 0, 0, "above");
}

TEST(ResponseFunction, hasTheGainAtItsFrequencyWhateverTheFilterIsNormalizedTo) {
  PolesAndZeros filter = pendulum(1, 0.7);
  filter.normalization = 123;
  EXPECT_NEAR(std::abs(functionOf({stage(filter, 1500, 5.0)}).at(5)), 1500, 1e-9);
  // The filter is 0 there, and stays as it is.
  EXPECT_NEAR(std::abs(functionOf({stage(filter, 2, 0.0)}).at(1)), 2 * 123 / 1.4, 1e-9);
  // Of two stages both gains count, a negative one by half a turn.
  const ResponseFunction both = functionOf({stage(filter, -1500, 5.0), stage({}, 400)});
  expectNear(both.at(5) / functionOf({stage(filter, 1500, 5.0)}).at(5), -400, 1e-9, "two stages");
}

TEST(ResponseFunction, isForAnyGroundMotion) {
  // 10 V for each unit.
  const auto at = [](const char* units, GroundMotion motion) {
    ResponseStage flat = stage({}, 10);
    flat.inputUnits = QString::fromLatin1(units);
    return functionOf({flat}, motion).at(1 / kPi); // 2πf = 2
  };
  expectNear(at("M/S", GroundMotion::Velocity), 10, 1e-14, "velocity");
  // A motion of 1 m has a velocity of 2i m/s there; 1 m/s² has 1/(2i).
  expectNear(at("m/s", GroundMotion::Displacement), 20.0 * kI, 1e-14, "from displacement");
  expectNear(at("M/SEC", GroundMotion::Acceleration), 5.0 / kI, 1e-14, "from acceleration");
  expectNear(at("M/S**2", GroundMotion::Displacement), -40, 1e-13, "accelerometer");
  expectNear(at("M/(S**2)", GroundMotion::Acceleration), 10, 1e-13, "accelerometer");
  expectNear(at("M", GroundMotion::Acceleration), -2.5, 1e-14, "displacement meter");
  expectNear(at("NM/S", GroundMotion::Velocity) * 1e-9, 10, 1e-13, "by the nanometre");
}

TEST(ResponseFunction, delaysAStageWithoutAFilterByWhatItStates) {
  ResponseStage digitizer = stage({}, 3);
  digitizer.decimation = Decimation{100, 1, 0, 0.5, 0.1};
  expectNear(functionOf({digitizer}).at(1), std::polar(3.0, -2 * kPi * 0.4), 1e-14, "delay less correction");
}

TEST(ResponseFunction, knowsTheRateBehindADecimation) {
  FilterCoefficients half;
  half.numerators = {0.5, 0.5};
  // The first stage takes 40 samples a second to 20; the second, without a rate of its own, is 0 at 10 Hz.
  const ResponseFunction function = functionOf({digital({}), stage(half)});
  EXPECT_NEAR(std::abs(function.at(10)), 0, 1e-15);
  EXPECT_NEAR(std::abs(function.at(5)), std::cos(kPi / 4), 1e-14);
}

TEST(ResponseFunction, ofManyFrequenciesIsThatOfEach) {
  FilterCoefficients filter;
  for (int i = 0; i < 50; ++i)
    filter.numerators.push_back(std::sin(i) + i % 3);
  const ResponseFunction function = functionOf({stage(pendulum(1, 0.7), 10, 5.0), digital(filter)});
  std::vector<double> frequencies;
  for (int i = 0; i < 700; ++i)
    frequencies.push_back(0.03 * i);
  const std::vector<Complex> values = function.at(frequencies);
  ASSERT_EQ(values.size(), frequencies.size());
  for (std::size_t i = 0; i < values.size(); ++i)
    EXPECT_EQ(values[i], function.at(frequencies[i])) << frequencies[i];
}

TEST(ResponseFunction, refusesWhatHasNoTransferFunctionToGroundMotion) {
  EXPECT_EQ(errorOf({}), QStringLiteral("the response has no stages"));
  EXPECT_EQ(errorOf({stage(PolynomialStage())}),
            QStringLiteral("stage 1 is a polynomial, which has no transfer function"));
  FilterCoefficients filter;
  filter.numerators = {1, 2};
  EXPECT_EQ(errorOf({stage(filter)}), QStringLiteral("stage 1 is digital, but its sample rate is not known"));
  ResponseStage barometer = stage({}, 1);
  barometer.inputUnits = QStringLiteral("PA");
  EXPECT_EQ(errorOf({barometer}), QStringLiteral("the instrument measures \"PA\", expected M, M/S or M/S**2"));
  EXPECT_EQ(
      ResponseFunction::of({{stage({})}, {}, QStringLiteral("in: line 3: bad")}, GroundMotion::Velocity).error(),
      QStringLiteral("in: line 3: bad"));
}

TEST(ResponseFunction, isFiniteWhereAStageIsNot) {
  PolesAndZeros pole;
  pole.poles = {Complex(0, 2 * kPi)};
  expectNear(functionOf({stage(pole)}).at(1), 0, 0, "at the pole");
  expectNear(functionOf({stage({}, 1)}, GroundMotion::Acceleration).at(0), 0, 0, "an integral at 0 Hz");
}

TEST(ResponseFunction, tellsASensitivityThatIsNotThatOfTheStages) {
  const auto problem = [](double value, const char* units) {
    InstrumentResponse response{{stage(pendulum(1, 0.5), 1500, 10.0), stage({}, 400)}, {}, {}};
    response.sensitivity = Sensitivity{value, 10, QString::fromLatin1(units)};
    return sensitivityProblem(response);
  };
  EXPECT_EQ(problem(600'000, "M/S"), QString());
  EXPECT_EQ(problem(-620'000, "M/S"), QString());
  EXPECT_EQ(problem(6e-4, "NM/S"), QString());
  EXPECT_EQ(problem(500'000, "M/S"),
            QStringLiteral("the stated sensitivity of 500000 at 10 Hz is not that of the stages, 600000"));
  EXPECT_EQ(problem(500'000, "PA"), QString()) << "cannot be compared";
  EXPECT_EQ(sensitivityProblem({}), QString());
}

} // namespace
} // namespace xov
