#include "apps/xov/prepare/PreparationStep.h"

#include <QRegularExpression>
#include <QStringList>

#include <XOV_Graphics/base/TextLines.h>
#include <XOV_Graphics/base/TimeText.h>
#include <XOV_Graphics/seismic/signal/Resample.h>
#include <XOV_Graphics/seismic/signal/Trend.h>
#include <algorithm>
#include <cmath>
#include <optional>

namespace xov::cli {

namespace {

constexpr double kSteepestDeg = 90; // of a ray, from the vertical
constexpr double kMostSeconds = 1e9;
constexpr double kMostHz = 1e6;
constexpr double kLargestShare = 0.5;
constexpr double kPercent = 100;

QStringList wordsOf(const QString& value) {
  static const QRegularExpression between(QStringLiteral("[\\s,]+"));
  return value.split(between, Qt::SkipEmptyParts);
}

std::optional<double> numberWithin(const QString& word, double lowest, double highest) {
  bool ok = false;
  const double number = word.toDouble(&ok);
  return ok && number >= lowest && number <= highest ? std::optional(number) : std::nullopt;
}

Error unexpected(const QString& value, const char* expected) {
  return {QStringLiteral("found '%1', expected %2").arg(shortened(value), QLatin1String(expected))};
}

std::optional<WrittenTime> parseTime(const QString& value) {
  if (const std::optional<QDateTime> moment = parseUtcTime(value)) return *moment;
  if (const std::optional<double> seconds = numberWithin(value, -kMostSeconds, kMostSeconds)) return *seconds;
  return {};
}

constexpr char kExpectedTime[] = "a time as 2011-03-11T05:46:23 or seconds on the time axis";

QString timeText(const WrittenTime& time) {
  if (const auto* seconds = std::get_if<double>(&time)) return QStringLiteral("%1 s").arg(*seconds);
  const QString text = utcText(std::get<QDateTime>(time));
  return text.endsWith(QLatin1String(".000Z")) ? text.chopped(5) : text.chopped(1);
}

struct Band {
  const char* name;
  FilterBand band;
  qsizetype corners;
};

constexpr Band kBands[] = {
    {"lowpass", FilterBand::LowPass, 1},
    {"highpass", FilterBand::HighPass, 1},
    {"bandpass", FilterBand::BandPass, 2},
    {"bandstop", FilterBand::BandStop, 2},
};

QString bandText(const ButterworthFilter& filter) {
  const auto* const band = std::ranges::find(kBands, filter.band, &Band::band);
  const QString name = QLatin1String(band->name) + QLatin1Char(' ');
  if (filter.band == FilterBand::LowPass) return name + QStringLiteral("%1 Hz").arg(filter.highHz);
  if (filter.band == FilterBand::HighPass) return name + QStringLiteral("%1 Hz").arg(filter.lowHz);
  return name + QStringLiteral("%1-%2 Hz").arg(filter.lowHz).arg(filter.highHz);
}

QString filterText(const FilterStep& step, const StepSettings& settings) {
  QString text = bandText(step.filter);
  if (settings.filterOrder != StepSettings().filterOrder)
    text += (settings.filterOrder == 1 ? QStringLiteral(" with %1 pole") : QStringLiteral(" with %1 poles"))
                .arg(settings.filterOrder);
  return settings.filterPhase == FilterPhase::Zero ? text + QStringLiteral(", zero phase") : text;
}

QString detrendText(int order) {
  if (order == 0) return QStringLiteral("less the mean");
  if (order == 1) return QStringLiteral("less the trend");
  return QStringLiteral("less a polynomial of order %1").arg(order);
}

QString taperText(const TaperStep& step) {
  return step.isSeconds ? QStringLiteral("tapered over %1 s").arg(step.amount)
                        : QStringLiteral("tapered over %1 %").arg(step.amount * kPercent);
}

struct Motion {
  const char* word;
  const char* name;
  GroundMotion motion;
};

constexpr Motion kMotions[] = {
    {"disp", "displacement", GroundMotion::Displacement},
    {"vel", "velocity", GroundMotion::Velocity},
    {"acc", "acceleration", GroundMotion::Acceleration},
};

template <class... Functions>
struct Overloaded : Functions... {
  using Functions::operator()...;
};
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>; // which older compilers do not find by themselves

} // namespace

Result<PreparationStep> parseStart(const QString& value) {
  if (const auto time = parseTime(value)) return PreparationStep(StartStep{*time});
  return unexpected(value, kExpectedTime);
}

Result<PreparationStep> parseEnd(const QString& value) {
  if (const auto time = parseTime(value)) return PreparationStep(EndStep{*time});
  return unexpected(value, kExpectedTime);
}

Result<PreparationStep> parseAround(const QString& value) {
  const QStringList words = wordsOf(value);
  if (words.size() == 3) {
    const std::optional<double> from = numberWithin(words[1], -kMostSeconds, kMostSeconds);
    const std::optional<double> to = numberWithin(words[2], -kMostSeconds, kMostSeconds);
    if (from && to && *from < *to) return PreparationStep(AroundStep{words[0], *from, *to});
  }
  return unexpected(value, "a phase and the seconds from it on and up to it, as 'P -10 60'");
}

Result<PreparationStep> parseFilter(const QString& value) {
  const QStringList words = wordsOf(value);
  const auto* const band = std::ranges::find_if(
      kBands, [&](const Band& known) { return !words.isEmpty() && words[0] == QLatin1String(known.name); });
  constexpr char expected[] = "lowpass F, highpass F, bandpass F1 F2 or bandstop F1 F2 in Hz";
  if (band == std::end(kBands) || words.size() != band->corners + 1) return unexpected(value, expected);
  const std::optional<double> first = numberWithin(words[1], 0, kMostHz);
  const std::optional<double> last = numberWithin(words.back(), 0, kMostHz);
  if (!first || !last || *first <= 0 || (band->corners == 2 && *first >= *last)) return unexpected(value, expected);
  FilterStep step{{.band = band->band}};
  if (band->band != FilterBand::LowPass) step.filter.lowHz = *first;
  if (band->band != FilterBand::HighPass) step.filter.highHz = *last;
  return PreparationStep(step);
}

Result<PreparationStep> parseDetrend(const QString& value) {
  if (value == QLatin1String("mean")) return PreparationStep(DetrendStep{0});
  if (value == QLatin1String("linear")) return PreparationStep(DetrendStep{1});
  bool ok = false;
  const int order = value.toInt(&ok);
  if (ok && order >= 0 && order <= kMostPolynomialOrder) return PreparationStep(DetrendStep{order});
  return unexpected(value, "mean, linear or an order from 0 to 30");
}

Result<PreparationStep> parseTaper(const QString& value) {
  const bool isSeconds = value.endsWith(QLatin1Char('s'));
  const std::optional<double> amount =
      numberWithin(isSeconds ? value.chopped(1) : value, 0, isSeconds ? kMostSeconds : kLargestShare);
  if (amount && *amount > 0) return PreparationStep(TaperStep{*amount, isSeconds});
  return unexpected(value, "a share above 0 and up to 0.5, or seconds as 10s");
}

Result<PreparationStep> parseNormalize(const QString& value) {
  if (value == QLatin1String("record")) return PreparationStep(NormalizeStep{NormalizeBy::Record});
  if (value == QLatin1String("section")) return PreparationStep(NormalizeStep{NormalizeBy::Section});
  return unexpected(value, "record or section");
}

Result<PreparationStep> parseIntegrate(const QString& /*value*/) { return PreparationStep(IntegrateStep{}); }

Result<PreparationStep> parseDifferentiate(const QString& /*value*/) { return PreparationStep(DifferentiateStep{}); }

Result<PreparationStep> parseDecimate(const QString& value) {
  bool ok = false;
  const int factor = value.toInt(&ok);
  if (ok && factor >= 2 && factor <= int(kMostDecimation)) return PreparationStep(DecimateStep{factor});
  return Error{
      QStringLiteral("found '%1', expected a whole number from 2 to %2").arg(shortened(value)).arg(kMostDecimation)};
}

Result<PreparationStep> parseRemoveResponse(const QString& value) {
  const auto* const motion =
      std::ranges::find_if(kMotions, [&](const Motion& known) { return value == QLatin1String(known.word); });
  if (motion != std::end(kMotions)) return PreparationStep(RemoveResponseStep{motion->motion});
  return unexpected(value, "disp, vel or acc");
}

Result<PreparationStep> parseRotate(const QString& value) {
  const QStringList words = wordsOf(value);
  const QString axes = words.isEmpty() ? QString() : words[0].toUpper();
  if (words.size() == 1 && axes == QLatin1String("ZRT")) return PreparationStep(RotateStep{});
  if (words.size() == 1 && axes == QLatin1String("LQT")) return PreparationStep(RotateStep{WaveAxes::LQT, {}});
  if (words.size() == 2 && axes == QLatin1String("LQT")) {
    if (const std::optional<double> incidence = numberWithin(words[1], 0, kSteepestDeg))
      return PreparationStep(RotateStep{WaveAxes::LQT, incidence});
  }
  return unexpected(value, "ZRT, LQT, or LQT and the incidence in degrees from 0 to 90");
}

QString describe(const std::vector<PreparationStep>& steps, const StepSettings& settings) {
  QStringList texts;
  for (const PreparationStep& step : steps) {
    texts.append(std::visit(
        Overloaded{
            [](const StartStep& start) { return QStringLiteral("from ") + timeText(start.at); },
            [](const EndStep& end) { return QStringLiteral("to ") + timeText(end.at); },
            [](const AroundStep& around) {
              return QStringLiteral("%1 to %2 s after %3").arg(around.from).arg(around.to).arg(around.phase);
            },
            [&](const FilterStep& filter) { return filterText(filter, settings); },
            [](const DetrendStep& detrend) { return detrendText(detrend.order); },
            [](const TaperStep& taper) { return taperText(taper); },
            [](const NormalizeStep& normalize) {
              return normalize.by == NormalizeBy::Record ? QStringLiteral("each normalised")
                                                         : QStringLiteral("normalised");
            },
            [](const IntegrateStep&) { return QStringLiteral("integrated"); },
            [](const DifferentiateStep&) { return QStringLiteral("differentiated"); },
            [](const DecimateStep& decimate) { return QStringLiteral("decimated by %1").arg(decimate.factor); },
            [](const RemoveResponseStep& response) {
              return QStringLiteral("response removed to ") +
                     QLatin1String(std::ranges::find(kMotions, response.motion, &Motion::motion)->name);
            },
            [](const RotateStep& rotate) {
              const QString axes = rotate.axes == WaveAxes::ZRT ? QStringLiteral("ZRT") : QStringLiteral("LQT");
              return QStringLiteral("turned to ") + axes +
                     (rotate.incidenceDeg ? QStringLiteral(" at %1°").arg(*rotate.incidenceDeg) : QString());
            },
        },
        step));
  }
  return texts.join(QStringLiteral(", "));
}

} // namespace xov::cli
