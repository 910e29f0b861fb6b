#include "XOV_Graphics/seismic/prepare/RemoveResponse.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/prepare/RecordSamples.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "XOV_Graphics/seismic/signal/Spectrum.h"
#include "XOV_Graphics/seismic/signal/Stretches.h"
#include "XOV_Graphics/seismic/signal/Taper.h"
#include "XOV_Graphics/seismic/signal/Trend.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

using Complex = std::complex<double>;

constexpr double kNanometresPerMetre = 1e9;
constexpr double kMostWaterLevelDb = 1000;

std::int32_t kindOf(GroundMotion motion) {
  switch (motion) {
  case GroundMotion::Displacement:
    return kSacDisplacement;
  case GroundMotion::Velocity:
    return kSacVelocity;
  case GroundMotion::Acceleration:
    break;
  }
  return kSacAcceleration;
}

/// Half of a cosine from 0 at `low` to 1 at `high`.
double rise(double low, double high, double at) {
  if (at <= low) return 0;
  return at >= high ? 1 : (1 - std::cos(std::numbers::pi * (at - low) / (high - low))) / 2;
}

double shareAt(const PreFilter& filter, double frequencyHz) {
  return rise(filter.a, filter.b, frequencyHz) * (1 - rise(filter.c, filter.d, frequencyHz));
}

/// What is wrong with the way that is asked for, for samples that many seconds apart; empty when nothing is.
QString problemOf(const ResponseRemoval& removal, double intervalSeconds) {
  if (!(removal.taperShare >= 0 && removal.taperShare <= 0.5))
    return QStringLiteral("found a taper of %1 of the record, expected 0 to 0.5").arg(numberText(removal.taperShare));
  if (removal.waterLevelDb && !(*removal.waterLevelDb >= 0 && *removal.waterLevelDb <= kMostWaterLevelDb))
    return QStringLiteral("found a water level of %1 dB, expected 0 to %2")
        .arg(numberText(*removal.waterLevelDb), numberText(kMostWaterLevelDb));
  if (!removal.preFilter) return {};
  const PreFilter& filter = *removal.preFilter;
  const double nyquist = 1 / (2 * intervalSeconds);
  const bool rises = filter.a >= 0 && filter.b > filter.a && filter.c >= filter.b && filter.d > filter.c;
  // Most intervals come in single precision, which the frequency that follows from them has, too.
  constexpr double kRounding = 1e-6;
  if (rises && filter.d <= nyquist * (1 + kRounding)) return {};
  return QStringLiteral("found a pre-filter of %1, %2, %3, %4 Hz, expected rising frequencies up to %5 Hz")
      .arg(numberText(filter.a), numberText(filter.b), numberText(filter.c), numberText(filter.d),
           numberText(double(float(nyquist))));
}

/// The response at the frequencies of a spectrum.
std::vector<Complex> responseAt(const ResponseFunction& function, const Spectrum& spectrum, double intervalSeconds) {
  std::vector<double> frequencies(spectrum.values().size());
  for (std::size_t j = 0; j < frequencies.size(); ++j)
    frequencies[j] = spectrum.frequencyHz(j, intervalSeconds);
  return function.at(frequencies);
}

/// What a spectrum is multiplied by to take a response away: 1 over it, kept above the water level, and 0 where it is
/// 0. All 0 when it is 0 everywhere.
void invert(std::vector<Complex>& response, const std::optional<double>& waterLevelDb) {
  double largest = 0;
  for (const Complex& value : response)
    largest = std::max(largest, std::abs(value));
  const double level = waterLevelDb ? largest * std::pow(10, -*waterLevelDb / 20) : 0;
  for (Complex& value : response) {
    const double size = std::abs(value);
    if (size > 0) value = std::conj(value) / (size * std::max(size, level));
  }
}

/// Puts the first samples of which `spectrum` is the transform into `stretch`.
void putBack(const Spectrum& spectrum, double factor, std::span<double> stretch) {
  const std::vector<double> samples = spectrum.samples();
  std::transform(stretch.begin(), stretch.end(), samples.begin(), stretch.begin(),
                 [&](double, double sample) { return sample * factor; });
}

/// Divides a spectrum by the response as it is asked for; false when the response is 0 everywhere.
bool divide(Spectrum& spectrum, const ResponseFunction& function, const ResponseRemoval& removal,
            double intervalSeconds) {
  std::vector<Complex> factors = responseAt(function, spectrum, intervalSeconds);
  if (std::ranges::all_of(factors, [](const Complex& value) { return value == 0.0; })) return false;
  invert(factors, removal.waterLevelDb);
  for (std::size_t j = 0; j < factors.size(); ++j) {
    const double share =
        removal.preFilter ? shareAt(*removal.preFilter, spectrum.frequencyHz(j, intervalSeconds)) : 1;
    spectrum.values()[j] *= factors[j] * share;
  }
  return true;
}

/// Takes the response away from one stretch; false when it is 0 everywhere.
bool removeFrom(std::span<double> stretch, const ResponseFunction& function, const ResponseRemoval& removal,
                double intervalSeconds) {
  if (removal.trendOrder) removePolynomial(stretch, *removal.trendOrder);
  applyTaperShare(stretch, removal.taperShare);
  Spectrum spectrum(stretch, 2 * stretch.size());
  if (!divide(spectrum, function, removal, intervalSeconds)) return false;
  putBack(spectrum, kNanometresPerMetre, stretch);
  return true;
}

std::shared_ptr<SacSeismogram> copyOfKind(const SeismogramRecord& record, std::span<const double> samples,
                                          std::int32_t idep) {
  SacHeader header = headerOf(record);
  header.idep = idep;
  return copyWithSamples(record, samples, {.header = header});
}

} // namespace

Result<std::shared_ptr<SacSeismogram>> removeResponse(const SeismogramRecord& record,
                                                      const InstrumentResponse& response,
                                                      const ResponseRemoval& removal) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    if (const Status status = checkInterval(record); !status) return Error{status.error()};
    const double interval = intervalSeconds(record);
    if (const QString problem = problemOf(removal, interval); !problem.isEmpty()) return errorOf(record, problem);
    const Result<ResponseFunction> function = ResponseFunction::of(response, removal.motion);
    if (!function) return errorOf(record, function.error());
    std::vector<double> samples = doublesOf(record);
    bool isKnown = true;
    forEachStretch(samples, [&](std::span<double> stretch) {
      isKnown = isKnown && removeFrom(stretch, *function, removal, interval);
    });
    if (!isKnown) return errorOf(record, QStringLiteral("the response is 0 at all frequencies"));
    return copyOfKind(record, samples, kindOf(removal.motion));
  });
}

Result<std::shared_ptr<SacSeismogram>> removeResponse(const SeismogramRecord& record,
                                                      const StationInventory& inventory,
                                                      const ResponseRemoval& removal) noexcept {
  const Result<const StationChannel*> channel = stationChannelOf(inventory, record);
  if (!channel) return Error{channel.error()};
  return removeResponse(record, (*channel)->response, removal);
}

Result<std::shared_ptr<SacSeismogram>> simulateResponse(const SeismogramRecord& motionRecord,
                                                        const InstrumentResponse& response,
                                                        GroundMotion motion) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    if (const Status status = checkInterval(motionRecord); !status) return Error{status.error()};
    const Result<ResponseFunction> function = ResponseFunction::of(response, motion);
    if (!function) return errorOf(motionRecord, function.error());
    std::vector<double> samples = doublesOf(motionRecord);
    forEachStretch(samples, [&](std::span<double> stretch) {
      Spectrum spectrum(stretch, 2 * stretch.size());
      const std::vector<Complex> factors = responseAt(*function, spectrum, intervalSeconds(motionRecord));
      std::transform(factors.begin(), factors.end(), spectrum.values().begin(), spectrum.values().begin(),
                     std::multiplies<>());
      putBack(spectrum, 1 / kNanometresPerMetre, stretch);
    });
    return copyOfKind(motionRecord, samples, kSacUnknownKind);
  });
}

} // namespace xov
