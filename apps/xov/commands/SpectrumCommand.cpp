#include "apps/xov/commands/SpectrumCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/RecordNames.h"

#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <algorithm>
#include <cmath>
#include <map>

namespace xov::cli {

namespace {

constexpr char kPeriodogram[] = "periodogram";
constexpr char kWelch[] = "welch";
constexpr char kMultitaper[] = "multitaper";
constexpr char kKonnoOhmachi[] = "konno-ohmachi";

constexpr double kLongestWindow = 1e7; // seconds
constexpr double kMostOverlap = 0.95;
constexpr double kMostHz = 1e6;
constexpr double kMostBandwidth = 1000;

// The records of each channel, in the order in which channels appear.
std::vector<SeismogramArray> byChannel(const SeismogramArray& records) {
  std::vector<SeismogramArray> channels;
  std::map<QString, std::size_t> places;
  for (const auto& record : records) {
    const auto [place, isNew] = places.try_emplace(record->labelString(), channels.size());
    if (isNew) channels.emplace_back();
    channels[place->second].push_back(record);
  }
  return channels;
}

} // namespace

void SpectrumCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  options
      .add("--method", method_,
           "Mean over segments (welch, the default), of the whole at once (periodogram), or of the whole under "
           "several tapers (multitaper)")
      .typeName("METHOD")
      .check(oneOf({kWelch, kPeriodogram, kMultitaper}));
  options.add("--window", window_, "Seconds of a segment, for welch (default: an eighth of the recording)")
      .typeName("S")
      .check(numberFromTo(0, kLongestWindow));
  options.add("--overlap", overlap_, "Share of a segment that the next one has, too, for welch (default 0.5)")
      .typeName("SHARE")
      .check(numberFromTo(0, kMostOverlap));
  options.add("--tapers", tapers_, "Number of tapers, for multitaper (default 7)")
      .typeName("N")
      .check(wholeNumberFromTo(1, kMostTapers));
  options.add("--smooth", smoothing_, "Smooth the spectra: konno-ohmachi, equally on a logarithmic axis")
      .typeName("HOW")
      .check(oneOf({kKonnoOhmachi}));
  options.add("--bandwidth", bandwidth_, "Of --smooth; larger numbers smooth less (default 40)")
      .typeName("B")
      .check(numberFromTo(1, kMostBandwidth));
  options.add("--band", band_, "Ends of the frequency axis in Hz (default: those of the spectra)")
      .typeName("F1 F2")
      .check(numberFromTo(0, kMostHz))
      .takesExactly(2);
  options.addFlag("--noise-models", noiseModels_,
                  "Draw accelerations in dB with the New Low and High Noise Models (Peterson 1993)");
  options.addFlag("--decibels", decibels_, "Show decibels; else a logarithmic axis, but decibels of accelerations");
  options.addFlag("--linear-frequency", linearFrequency_, "Make the frequency axis linear");
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
  options.afterParsing([this] { checkOptions(); });
}

void SpectrumCommand::checkOptions() const {
  expectRising("--band", band_);
  if (!band_.empty() && !linearFrequency_ && !(band_[0] > 0))
    throw UsageError("--band", "expected numbers above 0 on a logarithmic axis");
}

PowerSpectrum SpectrumCommand::estimate(const SeismogramArray& channel) const {
  const std::vector<SpectrogramPiece> pieces = spectrogramPieces(channel);
  if (pieces.empty()) return {};
  const double interval = pieces.front().intervalSeconds;
  const bool isInMemory = pieces.size() == 1 && pieces.front().source == nullptr;
  const std::vector<float> joined = isInMemory ? std::vector<float>() : joinedSamples(pieces);
  const std::span<const float> samples = isInMemory ? pieces.front().samples : std::span(joined);
  PowerSpectrum spectrum;
  if (method_ == kPeriodogram) {
    spectrum = periodogram(samples, interval);
  } else if (method_ == kMultitaper) {
    spectrum = multitaper(samples, interval, tapers_);
  } else {
    const double segment = interval > 0 ? std::min(window_ / interval, double(samples.size())) : 0;
    spectrum = welch(samples, interval, {.segment = std::size_t(std::max(0.0, segment)), .overlap = overlap_});
  }
  return smoothing_.empty() ? spectrum : konnoOhmachi(spectrum, bandwidth_);
}

bool SpectrumCommand::isInDecibels(const SpectralUnit& unit) const {
  return decibels_ || noiseModels_ || unit.motion == GroundMotion::Acceleration;
}

QString SpectrumCommand::unitText(const SpectralUnit& unit) const {
  if (noiseModels_) return QStringLiteral("Acceleration, dB rel. 1 (m/s²)²/Hz");
  return isInDecibels(unit) ? unit.decibels : unit.density;
}

SpectrumCurve SpectrumCommand::curveOf(const SeismogramArray& channel, const PowerSpectrum& spectrum,
                                       const SpectralUnit& unit) const {
  SpectrumCurve curve;
  curve.name = channel.front()->labelString();
  for (std::size_t j = 0; j < spectrum.hz.size(); ++j) {
    double value = spectrum.density[j];
    if (isInDecibels(unit)) {
      const auto more = noiseModels_ ? decibelsToAcceleration(*unit.motion, spectrum.hz[j]) : std::optional(0.0);
      if (!more || !(value > 0)) continue;
      value = 10 * std::log10(value) + unit.decibelOffset + *more;
    }
    curve.hz.push_back(float(spectrum.hz[j]));
    curve.values.push_back(float(value));
  }
  return curve;
}

ExitCode SpectrumCommand::run() {
  Records found = preparation_.apply(inputs_.read());
  if (found.records.empty()) return ExitCode::Failed;
  const SpectralUnit unit = spectralUnitOf(found.records);
  if (noiseModels_ && !unit.motion) {
    complain(QStringLiteral("the noise models are of ground motion, which the records are not known to be; "
                            "--remove-response acc makes them so"));
    return ExitCode::Failed;
  }
  const auto curves = std::make_shared<SpectrumCurves>();
  ExitCode status = found.status;
  for (const SeismogramArray& channel : byChannel(found.records)) {
    const PowerSpectrum spectrum = estimate(channel);
    if (spectrum.density.empty()) {
      complain(
          QStringLiteral("%1: found no two samples in a row that are numbers").arg(channel.front()->labelString()));
      status = ExitCode::Failed;
      continue;
    }
    curves->push_back(curveOf(channel, spectrum, unit));
  }
  if (curves->empty()) return ExitCode::Failed;
  const ExitCode delivered = output_.deliver(nameFieldsOf(found.records), [&](const QRectF& frame) {
    auto view = std::make_unique<PowerSpectraView>(frame);
    view->setCurves(curves);
    view->setLogX(!linearFrequency_);
    view->setLogY(!isInDecibels(unit));
    view->setShowNoiseModels(noiseModels_);
    if (!band_.empty()) {
      view->setXLimitsMinMax(float(band_[0]), float(band_[1]));
      view->set_fixedXAxisRange(true);
    }
    view->setYLabelString(unitText(unit));
    view->setTitle(output_.titleOr(curves->size() == 1 ? curves->front().name : titleOfRecords(found.records)));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max(status, delivered);
}

} // namespace xov::cli
