#include "XOV_Graphics/seismic/signal/SegmentPower.h"

#include "XOV_Graphics/seismic/signal/Spectrum.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace xov {

namespace {

double sumOfSquares(std::span<const double> values) {
  double sum = 0;
  for (const double value : values)
    sum += value * value;
  return sum;
}

// In several sums, so that additions need not wait for each other.
double meanOf(std::span<const float> values) {
  constexpr std::size_t kSums = 8;
  std::array<double, kSums> sums{};
  std::size_t i = 0;
  for (; i + kSums <= values.size(); i += kSums) {
    for (std::size_t j = 0; j < kSums; ++j)
      sums[j] += double(values[i + j]);
  }
  for (; i < values.size(); ++i)
    sums[0] += double(values[i]);
  return std::accumulate(sums.begin(), sums.end(), 0.0) / double(values.size());
}

} // namespace

SegmentPower::SegmentPower(std::vector<double> window, double intervalSeconds)
    : window_(std::move(window)),
      stepHz_(1 / (double(Spectrum::sizeFor(window_.size())) * intervalSeconds)),
      factor_(intervalSeconds / sumOfSquares(window_)),
      transform_(Spectrum::sizeFor(window_.size())),
      tapered_(window_.size()),
      spectrum_(transform_.size() / 2 + 1) {}

void SegmentPower::add(std::span<const float> segment, Trend trend, std::span<double> sums) {
  const double mean = meanOf(segment);
  if (trend == Trend::Line) {
    taperWithoutLine(segment, mean);
  } else {
    for (std::size_t k = 0; k < tapered_.size(); ++k)
      tapered_[k] = (double(segment[k]) - mean) * window_[k];
  }
  transform_.run(tapered_, spectrum_);
  sums.front() += factor_ * std::norm(spectrum_.front());
  const double twice = 2 * factor_;
  for (std::size_t j = 1; j + 1 < spectrum_.size(); ++j)
    sums[j] += twice * std::norm(spectrum_[j]);
  sums.back() += factor_ * std::norm(spectrum_.back());
}

// The line is fitted over the index about the middle, where it has the height of the mean.
void SegmentPower::taperWithoutLine(std::span<const float> segment, double mean) {
  const auto n = double(segment.size());
  const double middle = (n - 1) / 2;
  double slope = 0;
  for (std::size_t k = 0; k < segment.size(); ++k)
    slope += (double(k) - middle) * (double(segment[k]) - mean);
  slope = segment.size() > 1 ? slope * 12 / (n * (n * n - 1)) : 0;
  for (std::size_t k = 0; k < segment.size(); ++k)
    tapered_[k] = (double(segment[k]) - mean - slope * (double(k) - middle)) * window_[k];
}

bool FiniteSegments::isFinite(std::size_t begin, std::size_t count) {
  if (count > samples_.size() || begin > samples_.size() - count) return false;
  for (seen_ = std::max(seen_, begin); seen_ < begin + count; ++seen_)
    if (!std::isfinite(samples_[seen_])) clean_ = seen_ + 1;
  return clean_ <= begin;
}

} // namespace xov
