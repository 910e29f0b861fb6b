#include "XOV_Graphics/seismic/array/BeamWindow.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace xov {

namespace {

constexpr std::size_t kFewestSamples = 8;
constexpr std::size_t kMostSamples = std::size_t(1) << 28;
// Intervals are read from single precision, too.
constexpr double kRounding = 1e-6;
constexpr double kTaperShare = 0.05; // of the window, at either end
// A window may begin this share of a sample before a trace does: times are read from single precision.
constexpr double kStartTolerance = 0.01;

void taper(std::vector<float>& samples) {
  const auto length = std::size_t(double(samples.size()) * kTaperShare);
  for (std::size_t i = 0; i < length; ++i) {
    const auto factor = float(0.5 - 0.5 * std::cos(std::numbers::pi * (double(i) + 0.5) / double(length)));
    samples[i] *= factor;
    samples[samples.size() - 1 - i] *= factor;
  }
}

double endOf(const ArrayTrace& trace, double interval) {
  return trace.startSeconds + double(trace.samples.size()) * interval;
}

} // namespace

Result<BeamWindow> beamWindow(std::span<const ArrayTrace> traces, const BeamSearch& search) {
  if (traces.size() < 2) return Error{QStringLiteral("%1 station: an array has at least two").arg(traces.size())};
  const double interval = search.intervalSeconds;
  if (!(interval > 0) || !std::isfinite(interval))
    return Error{QStringLiteral("a sample interval of %1 s: expected a number above 0").arg(interval)};
  double begin = traces.front().startSeconds;
  double end = endOf(traces.front(), interval);
  for (const ArrayTrace& trace : traces) {
    begin = std::max(begin, trace.startSeconds);
    end = std::min(end, endOf(trace, interval));
  }
  const double common = end - begin;
  if (!(common > 0)) return Error{QStringLiteral("the traces have no time in common")};
  const double from = std::max(0.0, search.windowFrom);
  const double to = search.windowTo > 0 ? search.windowTo : common;
  if (!(from < to && to <= common * (1 + kRounding)))
    return Error{QStringLiteral("a window from %1 to %2 s: the traces have 0 to %3 s in common")
                     .arg(from)
                     .arg(to)
                     .arg(common)};

  BeamWindow window;
  window.samples = std::size_t(std::floor((to - from) / interval + kStartTolerance));
  for (const ArrayTrace& trace : traces) {
    const double place = (begin + from - trace.startSeconds) / interval;
    const double first = std::max(0.0, std::ceil(place - kStartTolerance));
    window.first.push_back(std::size_t(first));
    window.lateBy.push_back((first - place) * interval);
    window.samples =
        std::min(window.samples, trace.samples.size() - std::min(trace.samples.size(), std::size_t(first)));
  }
  if (window.samples < kFewestSamples || window.samples > kMostSamples)
    return Error{QStringLiteral("a window of %1 samples: expected %2 to %3")
                     .arg(window.samples)
                     .arg(kFewestSamples)
                     .arg(kMostSamples)};
  return window;
}

Result<std::vector<float>> windowedSamples(const ArrayTrace& trace, const BeamWindow& window, std::size_t n) {
  const auto piece = trace.samples.subspan(window.first[n], window.samples);
  const auto odd = std::find_if_not(piece.begin(), piece.end(), [](float value) { return std::isfinite(value); });
  if (odd != piece.end())
    return Error{QStringLiteral("%1: sample %2 is not a finite number")
                     .arg(trace.name)
                     .arg(std::size_t(odd - piece.begin()) + window.first[n])};
  const double mean = std::accumulate(piece.begin(), piece.end(), 0.0) / double(piece.size());
  std::vector<float> samples(piece.size());
  std::transform(piece.begin(), piece.end(), samples.begin(), [mean](float value) { return float(value - mean); });
  taper(samples);
  return samples;
}

} // namespace xov
