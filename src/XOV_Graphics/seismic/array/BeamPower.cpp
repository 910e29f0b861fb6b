#include "XOV_Graphics/seismic/array/BeamPower.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/seismic/array/BeamWindow.h"
#include "XOV_Graphics/seismic/array/RealSpectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace xov {

namespace {

using Complex = std::complex<double>;

constexpr double kPeriodsInWindow = 4;
constexpr double kNyquistShare = 0.5;

// The frequencies of a transform that are used.
struct Band {
  std::size_t first = 0;
  std::size_t last = 0;
  double stepHz = 0;
};

QString hertz(double value) { return QString::number(value, 'g', 6) + QStringLiteral(" Hz"); }

Result<Band> bandOf(const BeamSearch& search, std::size_t samples) {
  const double nyquist = 0.5 / search.intervalSeconds;
  const double windowSeconds = double(samples) * search.intervalSeconds;
  const double lowest = search.lowestHz > 0 ? search.lowestHz : kPeriodsInWindow / windowSeconds;
  const double highest = search.highestHz > 0 ? search.highestHz : std::max(lowest, kNyquistShare * nyquist);
  if (!(lowest <= highest && highest <= nyquist))
    return Error{QStringLiteral("frequencies from %1 to %2: expected a range below half the sampling rate, %3")
                     .arg(hertz(lowest), hertz(highest), hertz(nyquist))};
  Band band;
  band.stepHz = 1 / (double(RealSpectrum::sizeFor(samples)) * search.intervalSeconds);
  // A frequency that lies on an end, up to the rounding of the interval, is in the band.
  constexpr double kRounding = 1e-6;
  band.first = std::size_t(std::max(1.0, std::ceil(lowest / band.stepHz * (1 - kRounding))));
  band.last = std::size_t(std::floor(highest / band.stepHz * (1 + kRounding)));
  if (band.first > band.last)
    return Error{QStringLiteral("no frequency from %1 to %2 in a window of %3 s; the frequencies are %4 apart")
                     .arg(hertz(lowest), hertz(highest))
                     .arg(windowSeconds)
                     .arg(hertz(band.stepHz))};
  return band;
}

// exp(−2πi f s r) for the slownesses of one axis.
std::vector<Complex> phases(double frequencyHz, double offsetKm, const BeamPower& grid) {
  const double turn = -2 * std::numbers::pi * frequencyHz * offsetKm;
  std::vector<Complex> factors(std::size_t(grid.steps));
  for (std::int32_t step = 0; step < grid.steps; ++step)
    factors[std::size_t(step)] = std::polar(1.0, turn * grid.slowness(step));
  return factors;
}

/// The beams of one frequency, and the mean power of the stations at it.
class FrequencyBeams {
public:
  explicit FrequencyBeams(const BeamPower& grid)
      : grid_(grid),
        beams_(std::size_t(grid.steps) * std::size_t(grid.steps)) {}

  void clear() {
    std::fill(beams_.begin(), beams_.end(), Complex());
    stationPower_ = 0;
  }

  void add(Complex value, double frequencyHz, const StationOffset& offset, double weight) {
    const std::vector<Complex> east = phases(frequencyHz, offset.eastKm, grid_);
    const std::vector<Complex> north = phases(frequencyHz, offset.northKm, grid_);
    stationPower_ += weight * std::norm(value);
    Complex* beam = beams_.data();
    for (auto row = north.rbegin(); row != north.rend(); ++row) {
      const Complex factor = value * *row * weight;
      const double re = factor.real();
      const double im = factor.imag();
      for (const Complex& column : east) {
        *beam += Complex(re * column.real() - im * column.imag(), re * column.imag() + im * column.real());
        ++beam;
      }
    }
  }

  void addPower(std::vector<double>& power, double& total) const {
    for (std::size_t i = 0; i < beams_.size(); ++i)
      power[i] += std::norm(beams_[i]);
    total += stationPower_;
  }

private:
  const BeamPower& grid_;
  std::vector<Complex> beams_;
  double stationPower_ = 0;
};

Status checkGrid(const BeamSearch& search) {
  if (search.steps < 2 || search.steps > kMostBeamSteps)
    return Error{QStringLiteral("%1 slownesses: expected 2 to %2").arg(search.steps).arg(kMostBeamSteps)};
  if (!(search.slownessLimit > 0) || !std::isfinite(search.slownessLimit))
    return Error{QStringLiteral("a slowness limit of %1: expected a number above 0").arg(search.slownessLimit)};
  return {};
}

Result<BeamPower> compute(std::span<const ArrayTrace> traces, const BeamSearch& search,
                          const std::function<void(std::int64_t, std::int64_t)>& progress) {
  if (Status status = checkGrid(search); !status) return Error{status.error()};
  const Result<BeamWindow> window = beamWindow(traces, search);
  if (!window) return Error{window.error()};
  const Result<Band> band = bandOf(search, window->samples);
  if (!band) return Error{band.error()};

  std::vector<RealSpectrum> spectra;
  for (std::size_t n = 0; n < traces.size(); ++n) {
    const Result<std::vector<float>> piece = windowedSamples(traces[n], *window, n);
    if (!piece) return Error{piece.error()};
    spectra.emplace_back(*piece);
  }

  BeamPower result;
  result.steps = search.steps;
  result.slownessLimit = search.slownessLimit;
  result.lowestHz = double(band->first) * band->stepHz;
  result.highestHz = double(band->last) * band->stepHz;
  result.frequencies = std::int32_t(band->last - band->first + 1);
  FrequencyBeams beams(result);
  std::vector<double> power(std::size_t(result.steps) * std::size_t(result.steps));
  double total = 0;
  for (std::size_t j = band->first; j <= band->last; ++j) {
    const double frequency = double(j) * band->stepHz;
    beams.clear();
    for (std::size_t n = 0; n < traces.size(); ++n) {
      const Complex shift = std::polar(1.0, -2 * std::numbers::pi * frequency * window->lateBy[n]);
      beams.add(spectra[n].at(j) * shift, frequency, traces[n].offset, 1.0 / double(traces.size()));
    }
    beams.addPower(power, total);
    if (progress) progress(std::int64_t(j - band->first + 1), result.frequencies);
  }
  if (!(total > 0))
    return Error{QStringLiteral("the traces have no power from %1 to %2")
                     .arg(hertz(result.lowestHz), hertz(result.highestHz))};
  result.power.resize(power.size());
  std::transform(power.begin(), power.end(), result.power.begin(), [total](double p) { return float(p / total); });
  return result;
}

} // namespace

Result<BeamPower> beamPower(std::span<const ArrayTrace> traces, const BeamSearch& search,
                            const std::function<void(std::int64_t, std::int64_t)>& progress) noexcept {
  return guarded(QStringLiteral("beam power"), [&] { return compute(traces, search, progress); });
}

} // namespace xov
