#include "XOV_Graphics/seismic/signal/PowerSpectrum.h"

#include "XOV_Graphics/seismic/signal/KonnoOhmachiWindow.h"
#include "XOV_Graphics/seismic/signal/SegmentPower.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr std::size_t kSegmentsWanted = 8;
constexpr std::size_t kShortestSegment = 256;
constexpr double kMostOverlap = 0.95;
constexpr double kCentersPerDecade = 100;

bool canBeTransformed(std::span<const float> samples, double intervalSeconds) {
  return samples.size() >= 2 && intervalSeconds > 0 && std::isfinite(intervalSeconds);
}

std::span<const float> longestStretch(std::span<const float> samples) {
  std::span<const float> longest;
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= samples.size(); ++i) {
    if (i < samples.size() && std::isfinite(samples[i])) continue;
    if (i - begin > longest.size()) longest = samples.subspan(begin, i - begin);
    begin = i + 1;
  }
  return longest;
}

PowerSpectrum spectrumOf(std::vector<double> sums, double divisor, double stepHz, std::size_t segments) {
  PowerSpectrum spectrum;
  spectrum.segments = segments;
  spectrum.hz.resize(sums.size());
  for (std::size_t j = 0; j < sums.size(); ++j) {
    spectrum.hz[j] = double(j) * stepHz;
    sums[j] /= divisor;
  }
  spectrum.density = std::move(sums);
  return spectrum;
}

// The k-th one, k from 1: sqrt(2 / (n+1)) sin(πk (i+1) / (n+1)).
std::vector<double> sineTaper(std::size_t n, int k) {
  std::vector<double> taper(n);
  const double step = std::numbers::pi * k / double(n + 1);
  const double height = std::sqrt(2 / double(n + 1));
  for (std::size_t i = 0; i < n; ++i)
    taper[i] = height * std::sin(step * double(i + 1));
  return taper;
}

// The spectrum's own frequencies above 0 as long as they are farther apart than the steps of a decade, then these up
// to the last one.
std::vector<double> smoothingCenters(const std::vector<double>& hz) {
  const double ratio = std::pow(10.0, 1 / kCentersPerDecade);
  std::vector<double> centers;
  for (std::size_t j = 0; j < hz.size(); ++j) {
    if (!(hz[j] > 0)) continue;
    const bool isLast = j + 1 == hz.size();
    if (!isLast && !centers.empty() && hz[j] < centers.back() * ratio && hz[j + 1] < hz[j] * ratio) break;
    centers.push_back(hz[j]);
  }
  if (centers.empty()) return centers;
  const double first = centers.back();
  const double ratioToLast = hz.back() / first;
  if (!(ratioToLast > 1 && std::isfinite(ratioToLast))) return centers;
  const int intervals = int(std::ceil(std::log10(ratioToLast) * kCentersPerDecade));
  for (int i = 1; i < intervals; ++i)
    centers.push_back(first * std::pow(ratioToLast, double(i) / intervals));
  centers.push_back(hz.back());
  return centers;
}

} // namespace

PowerSpectrum periodogram(std::span<const float> samples, double intervalSeconds, WindowShape window) {
  samples = longestStretch(samples);
  if (!canBeTransformed(samples, intervalSeconds)) return {};
  SegmentPower power(windowOf(window, samples.size()), intervalSeconds);
  std::vector<double> sums(power.bins());
  power.add(samples, sums);
  return spectrumOf(std::move(sums), 1, power.stepHz(), 1);
}

PowerSpectrum welch(std::span<const float> samples, double intervalSeconds, const WelchSettings& settings) {
  const std::size_t longest = longestStretch(samples).size();
  if (!canBeTransformed(samples, intervalSeconds) || longest < 2) return {};
  const std::size_t usual = std::max(samples.size() / kSegmentsWanted, std::min(longest, kShortestSegment));
  const std::size_t segment = std::clamp<std::size_t>(settings.segment == 0 ? usual : settings.segment, 2, longest);
  const double overlap = settings.overlap >= 0 ? std::min(settings.overlap, kMostOverlap) : 0;
  const std::size_t hop = std::max<std::size_t>(1, std::size_t(std::lround(double(segment) * (1 - overlap))));
  SegmentPower power(windowOf(settings.window, segment), intervalSeconds);
  std::vector<double> sums(power.bins());
  FiniteSegments finite(samples);
  std::size_t segments = 0;
  for (std::size_t begin = 0; begin + segment <= samples.size(); begin += hop) {
    if (!finite.isFinite(begin, segment)) continue;
    power.add(samples.subspan(begin, segment), sums);
    ++segments;
  }
  // No hop has met the longest stretch.
  if (segments == 0) {
    power.add(longestStretch(samples).first(segment), sums);
    segments = 1;
  }
  return spectrumOf(std::move(sums), double(segments), power.stepHz(), segments);
}

PowerSpectrum multitaper(std::span<const float> samples, double intervalSeconds, int tapers) {
  samples = longestStretch(samples);
  if (!canBeTransformed(samples, intervalSeconds)) return {};
  tapers = int(std::min<std::size_t>(std::size_t(std::clamp(tapers, 1, kMostTapers)), samples.size()));
  std::vector<double> sums;
  double weights = 0;
  double stepHz = 0;
  for (int k = 1; k <= tapers; ++k) {
    const double below = double(k - 1) / tapers;
    const double weight = 1 - below * below;
    SegmentPower power(sineTaper(samples.size(), k), intervalSeconds);
    std::vector<double> density(power.bins());
    power.add(samples, density);
    sums.resize(density.size());
    for (std::size_t j = 0; j < density.size(); ++j)
      sums[j] += weight * density[j];
    weights += weight;
    stepHz = power.stepHz();
  }
  return spectrumOf(std::move(sums), weights, stepHz, std::size_t(tapers));
}

PowerSpectrum konnoOhmachi(const PowerSpectrum& spectrum, double bandwidth) {
  PowerSpectrum smooth;
  smooth.segments = spectrum.segments;
  if (!(bandwidth > 0) || spectrum.density.size() != spectrum.hz.size()) return smooth;
  smooth.hz = smoothingCenters(spectrum.hz);
  smooth.density.reserve(smooth.hz.size());
  std::vector<double> logs(spectrum.hz.size());
  std::ranges::transform(spectrum.hz, logs.begin(), [](double hz) { return std::log10(hz); });
  const KonnoOhmachiWindow window(bandwidth);
  for (const double center : smooth.hz) {
    const double at = std::log10(center);
    const auto first = std::ranges::lower_bound(logs, at - window.reach());
    double sum = 0;
    double weights = 0;
    for (auto log = first; log != logs.end() && *log <= at + window.reach(); ++log) {
      const double weight = window.at(*log - at);
      sum += weight * spectrum.density[std::size_t(log - logs.begin())];
      weights += weight;
    }
    smooth.density.push_back(sum / weights);
  }
  return smooth;
}

} // namespace xov
