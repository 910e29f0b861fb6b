#include "XOV_Graphics/seismic/response/ResponseFunction.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/response/StageFilter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

using Complex = std::complex<double>;

constexpr qsizetype kQuotedCharacters = 40;
constexpr std::size_t kChunk = 1024;        // frequencies at a time, so that no stage needs memory for all
constexpr double kLargestDifference = 0.05; // of a stated sensitivity that is taken as true

/// A unit of ground motion: how many of the SI unit it is, and of which motion.
struct MotionUnit {
  double size;
  GroundMotion motion;
};

std::optional<MotionUnit> motionUnit(const QString& written) {
  constexpr struct {
    const char* name;
    double metres;
  } kLengths[] = {{"M", 1}, {"CM", 1e-2}, {"MM", 1e-3}, {"UM", 1e-6}, {"NM", 1e-9}};
  constexpr struct {
    const char* name;
    GroundMotion motion;
  } kTimes[] = {{"", GroundMotion::Displacement},        {"S", GroundMotion::Velocity},
                {"SEC", GroundMotion::Velocity},         {"S**2", GroundMotion::Acceleration},
                {"SEC**2", GroundMotion::Acceleration},  {"S/S", GroundMotion::Acceleration},
                {"SEC/SEC", GroundMotion::Acceleration}, {"S^2", GroundMotion::Acceleration},
                {"S2", GroundMotion::Acceleration}};
  QString unit = written.toUpper();
  unit.remove(QLatin1Char(' ')).remove(QLatin1Char('(')).remove(QLatin1Char(')'));
  const QString length = unit.section(QLatin1Char('/'), 0, 0);
  const QString time = unit.section(QLatin1Char('/'), 1);
  for (const auto& [lengthName, metres] : kLengths) {
    if (length != QLatin1String(lengthName)) continue;
    for (const auto& [timeName, motion] : kTimes)
      if (time == QLatin1String(timeName)) return MotionUnit{metres, motion};
  }
  return {};
}

int derivativesOf(GroundMotion motion) { return int(motion); }

/// What is wrong with a stage by itself.
QString stageProblem(const ResponseStage& stage, double rateHz) {
  QString what;
  if (std::holds_alternative<PolynomialStage>(stage.filter))
    what = QStringLiteral("is a polynomial, which has no transfer function");
  if (isDigital(stage) && !(rateHz > 0)) what = QStringLiteral("is digital, but its sample rate is not known");
  return what.isEmpty() ? what : QStringLiteral("stage %1 %2").arg(stage.number).arg(what);
}

/// The seconds by which a filter of coefficients that read the same from both ends delays any signal; 0 for others.
double linearPhaseDelay(const ResponseStage& stage, double rateHz) {
  const auto* const filter = std::get_if<FilterCoefficients>(&stage.filter);
  if (!filter || !isDigital(stage) || !filter->denominators.empty()) return 0;
  const std::vector<double>& c = filter->numerators;
  // Files round each coefficient by itself.
  constexpr double kRounding = 1e-6;
  double largest = 0;
  for (const double coefficient : c)
    largest = std::max(largest, std::abs(coefficient));
  for (std::size_t i = 0; i < c.size() / 2; ++i)
    if (std::abs(c[i] - c[c.size() - 1 - i]) > kRounding * largest) return 0;
  return double(c.size() - 1) / 2 / rateHz;
}

/// By how much the samples that a stage puts out come earlier than its filter alone would have it.
double advanceOf(const ResponseStage& stage, double rateHz) {
  const double correction = stage.decimation ? stage.decimation->correctionSeconds : 0;
  if (correction == 0 && isDigital(stage)) return linearPhaseDelay(stage, rateHz);
  const bool hasFilter = !std::holds_alternative<std::monostate>(stage.filter);
  return hasFilter || !stage.decimation ? correction : correction - stage.decimation->delaySeconds;
}

} // namespace

Result<ResponseFunction> ResponseFunction::of(const InstrumentResponse& response, GroundMotion motion) {
  if (!response.problem.isEmpty()) return Error{response.problem};
  if (response.stages.empty()) return Error{QStringLiteral("the response has no stages")};
  const QString& units = response.stages.front().inputUnits;
  const std::optional<MotionUnit> measured = motionUnit(units);
  if (!measured) return Error{"the instrument measures \"" + units.simplified() + "\", expected M, M/S or M/S**2"};
  ResponseFunction function;
  function.unit_ = 1 / measured->size;
  function.derivatives_ = derivativesOf(measured->motion) - derivativesOf(motion);
  double rateHz = 0;
  for (const ResponseStage& described : response.stages) {
    Stage stage{described, rateHz, described.gain, 0};
    const std::optional<Decimation>& decimation = described.decimation;
    if (decimation && decimation->inputRateHz > 0) stage.rateHz = decimation->inputRateHz;
    if (const QString problem = stageProblem(described, stage.rateHz); !problem.isEmpty()) return Error{problem};
    rateHz = decimation && decimation->factor > 0 ? stage.rateHz / decimation->factor : stage.rateHz;
    stage.advanceSeconds = advanceOf(described, stage.rateHz);
    if (auto* const list = std::get_if<ResponseList>(&stage.stage.filter)) {
      std::ranges::stable_sort(list->points, {}, &ResponseList::Point::frequencyHz);
    } else if (described.gainHz) {
      Complex there;
      evaluateFilter(described, stage.rateHz, {&*described.gainHz, 1}, {&there, 1});
      const double size = std::abs(there);
      if (size > 0 && std::isfinite(size)) stage.scale /= size;
    }
    function.stages_.push_back(std::move(stage));
  }
  return function;
}

std::complex<double> ResponseFunction::at(double frequencyHz) const { return at({&frequencyHz, 1}).front(); }

std::vector<std::complex<double>> ResponseFunction::at(std::span<const double> frequenciesHz) const {
  std::vector<Complex> values(frequenciesHz.size(), unit_);
  for (std::size_t first = 0; first < values.size(); first += kChunk) {
    const std::size_t count = std::min(kChunk, values.size() - first);
    multiply(frequenciesHz.subspan(first, count), std::span(values).subspan(first, count));
  }
  return values;
}

void ResponseFunction::multiply(std::span<const double> frequenciesHz, std::span<std::complex<double>> values) const {
  std::array<Complex, kChunk> filter;
  double advance = 0;
  for (const Stage& stage : stages_) {
    evaluateFilter(stage.stage, stage.rateHz, frequenciesHz, std::span(filter).first(values.size()));
    for (std::size_t i = 0; i < values.size(); ++i)
      values[i] *= filter[i] * stage.scale;
    advance += stage.advanceSeconds;
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double omega = 2 * std::numbers::pi * frequenciesHz[i];
    if (advance != 0) values[i] *= std::polar(1.0, omega * advance);
    for (int k = 0; k < derivatives_; ++k)
      values[i] *= Complex(0, omega);
    for (int k = derivatives_; k < 0; ++k)
      values[i] /= Complex(0, omega);
    if (!std::isfinite(values[i].real()) || !std::isfinite(values[i].imag())) values[i] = 0;
  }
}

QString sensitivityProblem(const InstrumentResponse& response) {
  if (!response.sensitivity) return {};
  const Sensitivity& stated = *response.sensitivity;
  const std::optional<MotionUnit> unit = motionUnit(stated.inputUnits);
  if (!unit) return {};
  const Result<ResponseFunction> function = ResponseFunction::of(response, unit->motion);
  if (!function) return {};
  const double made = std::abs(function->at(stated.frequencyHz)) * unit->size;
  if (!(made > 0) || !(stated.value != 0) || std::abs(made / std::abs(stated.value) - 1) <= kLargestDifference)
    return {};
  return "the stated sensitivity of " + numberText(stated.value) + " at " + numberText(stated.frequencyHz) +
         " Hz is not that of the stages, " + numberText(made);
}

} // namespace xov
