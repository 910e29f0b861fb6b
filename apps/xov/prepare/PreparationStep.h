#pragma once

#include <QDateTime>
#include <QString>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/StationInventory.h>
#include <XOV_Graphics/seismic/prepare/Amplitudes.h>
#include <XOV_Graphics/seismic/prepare/RemoveResponse.h>
#include <XOV_Graphics/seismic/prepare/Rotation.h>
#include <XOV_Graphics/seismic/signal/Butterworth.h>
#include <optional>
#include <variant>
#include <vector>

namespace xov::cli {

/// A time that the user wrote: UTC, or seconds on the time axis of the records.
using WrittenTime = std::variant<double, QDateTime>;

/// What begins before or ends after a time is cut off.
struct StartStep {
  WrittenTime at;
};
struct EndStep {
  WrittenTime at;
};

/// What lies about a phase is kept, from so many seconds after it (before it, where negative) to so many.
struct AroundStep {
  QString phase; ///< the label of a pick, the header's name of one, or that of a phase in the tables
  double from = 0;
  double to = 0;
};

/// Order and phase are those of StepSettings.
struct FilterStep {
  ButterworthFilter filter;
};

struct DetrendStep {
  int order = 1; ///< of the polynomial; 0 is the mean, 1 the linear trend
};

struct TaperStep {
  double amount = 0.05; ///< of either end
  bool isSeconds = false;
};

struct NormalizeStep {
  NormalizeBy by = NormalizeBy::Record;
};

struct IntegrateStep {};
struct DifferentiateStep {};

struct DecimateStep {
  int factor = 1;
};

struct RemoveResponseStep {
  GroundMotion motion = GroundMotion::Velocity;
};

/// To the axes of the wave. An incidence that is not given is that of the P wave expected at each station.
struct RotateStep {
  WaveAxes axes = WaveAxes::ZRT;
  std::optional<double> incidenceDeg = {};
};

/// One thing that is done to records before they are shown.
using PreparationStep =
    std::variant<StartStep, EndStep, AroundStep, FilterStep, DetrendStep, TaperStep, NormalizeStep, IntegrateStep,
                 DifferentiateStep, DecimateStep, RemoveResponseStep, RotateStep>;

/// What all steps of a kind have in common.
struct StepSettings {
  int filterOrder = 4;
  FilterPhase filterPhase = FilterPhase::Causal;
  std::optional<PreFilter> preFilter = {}; ///< of responses that are removed
  double waterLevelDb = 60;
  StationInventory inventory = {}; ///< where the responses are
};

// The steps that options stand for, from their values as the user wrote them. Words stand between blanks or commas.
// Errors say what was found and what was expected, without the name of the option.

Result<PreparationStep> parseStart(const QString& value);
Result<PreparationStep> parseEnd(const QString& value);
/// "P -10 60".
Result<PreparationStep> parseAround(const QString& value);
/// "lowpass 1", "highpass 1", "bandpass 1 10" or "bandstop 1 10".
Result<PreparationStep> parseFilter(const QString& value);
/// "mean", "linear", or the order of a polynomial.
Result<PreparationStep> parseDetrend(const QString& value);
/// A share of the record ("0.05"), or seconds ("10s").
Result<PreparationStep> parseTaper(const QString& value);
/// "record" or "section".
Result<PreparationStep> parseNormalize(const QString& value);
Result<PreparationStep> parseIntegrate(const QString& value);
Result<PreparationStep> parseDifferentiate(const QString& value);
/// A whole number.
Result<PreparationStep> parseDecimate(const QString& value);
/// "disp", "vel" or "acc".
Result<PreparationStep> parseRemoveResponse(const QString& value);
/// "ZRT".
Result<PreparationStep> parseRotate(const QString& value);

/// What the steps do, in small words for under a title: "bandpass 0.5-2 Hz, from 10 s before P to 60 s after".
QString describe(const std::vector<PreparationStep>& steps, const StepSettings& settings);

} // namespace xov::cli
