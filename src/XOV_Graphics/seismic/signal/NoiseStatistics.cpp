#include "XOV_Graphics/seismic/signal/NoiseStatistics.h"

#include "XOV_Graphics/seismic/signal/SegmentPower.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace xov {

namespace {

constexpr double kMostOverlap = 0.95;
constexpr double kFewestSamples = 64;
constexpr double kMostSamples = 1e9;
constexpr std::size_t kPiecesInOne = 4; // of a segment's spectrum
constexpr double kStepsOfOctave = 8;
constexpr double kFewestInOctave = 3; // densities that an average is made of
constexpr double kSlack = 1e-6;       // of a sample
constexpr double kMostSteps = 1e7;    // segments of a recording

/// The densities that lie in an octave of periods.
struct Octave {
  std::size_t first = 0;
  std::size_t count = 0;
};

class Gatherer {
public:
  Gatherer(std::size_t segment, double intervalSeconds)
      : segment_(segment),
        power_(windowOf(WindowShape::CosineTaper, std::bit_floor(segment / kPiecesInOne)), intervalSeconds),
        density_(power_.bins()) {
    const double nyquist = 0.5 / intervalSeconds;
    for (int i = 0;; ++i) {
      const double shortest = std::exp2(double(i) / kStepsOfOctave) / nyquist;
      const double first = 1 / (2 * shortest) / power_.stepHz();
      const double last = std::min(1 / shortest / power_.stepHz(), double(power_.bins() - 1));
      if (!(last / 2 >= kFewestInOctave)) break;
      const auto from = std::size_t(std::ceil(first));
      octaves_.push_back({from, std::size_t(std::floor(last)) - from + 1});
      statistics_.periods.push_back(shortest * std::numbers::sqrt2);
    }
  }

  void add(const SpectrogramPiece& piece, double startSeconds, double stepSeconds) {
    const double interval = piece.intervalSeconds;
    const auto sampleOf = [&](double seconds) { return (seconds - piece.startSeconds) / interval; };
    const double after = std::ceil((piece.startSeconds - startSeconds) / stepSeconds - kSlack);
    FiniteSegments finite(piece.samples);
    for (auto i = std::int64_t(std::clamp(after, 0.0, kMostSteps)); double(i) < kMostSteps; ++i) {
      const double begin = std::max(0.0, std::round(sampleOf(startSeconds + double(i) * stepSeconds)));
      if (!(begin + double(segment_) <= double(piece.samples.size()))) break;
      const HeldSamples held = piece.held(std::size_t(begin), segment_);
      if (finite.isFinite(std::size_t(begin), segment_))
        addSegment(piece.samples.subspan(std::size_t(begin), segment_));
    }
  }

  NoiseStatistics take() { return std::move(statistics_); }

private:
  void addSegment(std::span<const float> samples) {
    std::fill(density_.begin(), density_.end(), 0);
    const std::size_t length = power_.samples();
    int pieces = 0;
    for (std::size_t begin = 0; begin + length <= samples.size(); begin += length / kPiecesInOne) {
      power_.add(samples.subspan(begin, length), SegmentPower::Trend::Line, density_);
      ++pieces;
    }
    for (const Octave& octave : octaves_) {
      double sum = 0;
      for (std::size_t i = 0; i < octave.count; ++i)
        sum += density_[octave.first + i];
      const double mean = sum / double(octave.count) / pieces;
      statistics_.decibels.push_back(mean > 0 ? float(std::max(10 * std::log10(mean), double(kNoPowerDb)))
                                              : kNoPowerDb);
    }
    ++statistics_.segments;
  }

  std::size_t segment_;
  SegmentPower power_;
  std::vector<double> density_;
  std::vector<Octave> octaves_;
  NoiseStatistics statistics_;
};

} // namespace

std::vector<double> NoiseStatistics::percentile(double share) const {
  std::vector<double> result;
  if (segments == 0) return result;
  std::vector<float> values(segments);
  const auto place = std::size_t(std::lround(std::clamp(share, 0.0, 1.0) * double(segments - 1)));
  for (std::size_t period = 0; period < periods.size(); ++period) {
    for (std::size_t segment = 0; segment < segments; ++segment)
      values[segment] = decibels[segment * periods.size() + period];
    std::nth_element(values.begin(), values.begin() + std::ptrdiff_t(place), values.end());
    result.push_back(double(values[place]));
  }
  return result;
}

std::vector<float> NoiseStatistics::shares(double lowestDb, double stepDb, int rows) const {
  if (segments == 0 || rows < 1 || rows > kMostSpectrogramCells || !(stepDb > 0)) return {};
  const std::size_t columns = periods.size();
  std::vector<float> result(std::size_t(rows) * columns);
  const float one = 1 / float(segments);
  for (std::size_t i = 0; i < decibels.size(); ++i) {
    const double step = std::floor((double(decibels[i]) - lowestDb) / stepDb);
    if (!(step >= 0 && step < rows)) continue;
    result[std::size_t(rows - 1 - int(step)) * columns + i % columns] += one;
  }
  return result;
}

NoiseStatistics noiseStatistics(std::span<const SpectrogramPiece> pieces, const NoiseStatisticsSettings& settings) {
  const auto first = std::ranges::find_if(pieces, &SpectrogramPiece::isUsable);
  if (first == pieces.end()) return {};
  const double interval = first->intervalSeconds;
  const double samples = std::round(settings.segmentSeconds / interval);
  if (!(samples >= kFewestSamples && samples <= kMostSamples)) return {};
  const double overlap = settings.overlap >= 0 ? std::min(settings.overlap, kMostOverlap) : 0;
  Gatherer gatherer(std::size_t(samples), interval);
  for (const SpectrogramPiece& piece : pieces) {
    if (piece.isUsable() && piece.intervalSeconds == interval)
      gatherer.add(piece, first->startSeconds, samples * interval * (1 - overlap));
  }
  return gatherer.take();
}

} // namespace xov
