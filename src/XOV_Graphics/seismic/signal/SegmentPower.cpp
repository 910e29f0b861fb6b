#include "XOV_Graphics/seismic/signal/SegmentPower.h"

#include "XOV_Graphics/seismic/signal/Spectrum.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

double sumOfSquares(std::span<const double> values) {
  double sum = 0;
  for (const double value : values)
    sum += value * value;
  return sum;
}

} // namespace

SegmentPower::SegmentPower(std::vector<double> window, double intervalSeconds)
    : window_(std::move(window)),
      stepHz_(1 / (double(Spectrum::sizeFor(window_.size())) * intervalSeconds)),
      factor_(intervalSeconds / sumOfSquares(window_)),
      transform_(Spectrum::sizeFor(window_.size())),
      tapered_(window_.size()),
      spectrum_(transform_.size() / 2 + 1) {}

// A line over the index is fitted about the middle, where it has the height of the mean.
void SegmentPower::add(std::span<const float> segment, Trend trend, std::span<double> sums) {
  const std::size_t n = window_.size();
  double mean = 0;
  for (const float sample : segment)
    mean += double(sample);
  mean /= double(n);
  const double middle = double(n - 1) / 2;
  double slope = 0;
  if (trend == Trend::Line && n > 1) {
    for (std::size_t k = 0; k < n; ++k)
      slope += (double(k) - middle) * (double(segment[k]) - mean);
    slope *= 12 / (double(n) * (double(n) * double(n) - 1));
  }
  const double start = mean - slope * middle;
  for (std::size_t k = 0; k < n; ++k)
    tapered_[k] = (double(segment[k]) - (start + slope * double(k))) * window_[k];
  transform_.run(tapered_, spectrum_);
  sums.front() += factor_ * std::norm(spectrum_.front());
  const double twice = 2 * factor_;
  for (std::size_t j = 1; j + 1 < spectrum_.size(); ++j)
    sums[j] += twice * std::norm(spectrum_[j]);
  sums.back() += factor_ * std::norm(spectrum_.back());
}

bool FiniteSegments::isFinite(std::size_t begin, std::size_t count) {
  if (count > samples_.size() || begin > samples_.size() - count) return false;
  for (seen_ = std::max(seen_, begin); seen_ < begin + count; ++seen_)
    if (!std::isfinite(samples_[seen_])) clean_ = seen_ + 1;
  return clean_ <= begin;
}

} // namespace xov
