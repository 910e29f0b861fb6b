#include "XOV_Graphics/seismic/signal/Resample.h"

#include "XOV_Graphics/seismic/signal/Butterworth.h"
#include "XOV_Graphics/seismic/signal/Stretches.h"

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <numbers>

namespace xov {

namespace {

constexpr double kZeroCrossings = 32; // on either side

// Kaiser's formula for 80 dB: J. F. Kaiser (1974), Nonrecursive digital filter design using the I0-sinh window
// function, Proc. IEEE Int. Symp. Circuits and Systems, 20-23. The transition takes 0.157 of the new Nyquist
// frequency.
constexpr double kKaiserBeta = 0.1102 * (80 - 8.7);
constexpr double kTransition = 0.157;

constexpr double kSamePlace = 1e-7;           // intervals
constexpr std::size_t kMostPhases = 512;      // for which weights are kept
constexpr std::size_t kMostWeights = 1 << 21; // of all phases together
constexpr std::size_t kTablePerCrossing = 4096;

/// The modified Bessel function of order 0, by its series.
double besselI0(double x) {
  double sum = 1;
  double term = 1;
  for (int k = 1; term > sum * std::numeric_limits<double>::epsilon(); ++k) {
    term *= (x / 2 / k) * (x / 2 / k);
    sum += term;
  }
  return sum;
}

/// sin(πx)/(πx); 0 at whole numbers to the last bit.
double sinc(double x) {
  if (x == 0) return 1;
  const double nearest = std::nearbyint(x);
  const double sine = std::sin(std::numbers::pi * (x - nearest)) * (std::fmod(nearest, 2) == 0 ? 1 : -1);
  return sine / (std::numbers::pi * x);
}

/// The weight of a sample at some distance, up to a factor, in zero crossings of the new sampling.
class Kernel {
public:
  /// `pass` is the cut-off beside the Nyquist frequency of the new sampling.
  explicit Kernel(double pass) : pass_(pass) {}

  double at(double distance) const {
    const double x = distance / kZeroCrossings;
    if (!(std::abs(x) < 1)) return 0;
    return sinc(pass_ * distance) * besselI0(kKaiserBeta * std::sqrt(1 - x * x));
  }

private:
  double pass_;
};

/// Kernel values between which a straight line is off by less than 1e-7.
class KernelTable {
public:
  explicit KernelTable(const Kernel& kernel) {
    const std::size_t count = std::size_t(kZeroCrossings) * kTablePerCrossing;
    for (std::size_t i = 0; i <= count + 1; ++i)
      values_.push_back(kernel.at(double(i) / double(kTablePerCrossing)));
  }

  double at(double distance) const {
    const double place = std::min(std::abs(distance), kZeroCrossings) * double(kTablePerCrossing);
    const auto index = std::size_t(place);
    return values_[index] + (place - double(index)) * (values_[index + 1] - values_[index]);
  }

private:
  std::vector<double> values_;
};

double weightedSum(std::span<const double> weights, const double* values) {
  // Independent sums, which the compiler may keep in vector registers.
  constexpr std::size_t kSums = 8;
  std::array<double, kSums> sums{};
  std::size_t i = 0;
  for (; i + kSums <= weights.size(); i += kSums) {
    for (std::size_t k = 0; k < kSums; ++k)
      sums[k] += weights[i + k] * values[i + k];
  }
  double sum = 0;
  for (; i < weights.size(); ++i)
    sum += weights[i] * values[i];
  for (const double part : sums)
    sum += part;
  return sum;
}

/// The smallest number of steps that is a whole number of intervals; 0 where that is not found.
std::size_t phasesOf(double step) {
  for (std::size_t count = 1; count <= kMostPhases; ++count) {
    const double intervals = step * double(count);
    if (intervals > 0.5 && std::abs(intervals - std::nearbyint(intervals)) <= 1e-12 * intervals) return count;
  }
  return 0;
}

/// A place between samples.
struct Place {
  std::int64_t index = 0; ///< of the sample at or before it
  double phase = 0;       ///< from there on, 0 to 1
};

Place placeAt(double at) {
  const double nearest = std::nearbyint(at);
  if (std::abs(at - nearest) <= kSamePlace) return {std::int64_t(nearest), 0};
  return {std::int64_t(std::floor(at)), at - std::floor(at)};
}

class Resampler {
public:
  explicit Resampler(const SamplePlaces& places)
      : places_(places),
        scale_(std::max(places.step, 1.0)),
        kernel_(places.step > 1 ? 1 - kTransition / 2 : 1),
        reach_(std::size_t(std::ceil(kZeroCrossings * scale_))),
        rows_(phasesOf(places.step)),
        cycle_(std::llround(places.step * double(rows_.size()))) {
    if (rows_.size() * 2 * reach_ > kMostWeights && rows_.size() > 1) rows_.clear();
    if (rows_.empty()) table_ = std::make_unique<KernelTable>(kernel_);
    if (rows_.empty()) row_.resize(2 * reach_);
  }

  /// Sets the values at the places within a stretch that begins at `offset`.
  void take(std::span<const double> stretch, std::size_t offset, std::span<double> taken) {
    const double begin = double(offset) - places_.first - kSamePlace / 2;
    const double end = begin + double(stretch.size() - 1) + kSamePlace;
    const double count = double(taken.size());
    const auto first = std::size_t(std::clamp(std::ceil(begin / places_.step), 0.0, count));
    const auto last = std::size_t(std::clamp(std::floor(end / places_.step) + 1, 0.0, count));
    if (first >= last) return;
    const std::vector<double> continued = continuedAtBothEnds(stretch);
    for (std::size_t j = first; j < last; ++j) {
      const Place place = placeOf(j);
      taken[j] = weightedSum(weightsFor(j, place.phase), &continued[std::size_t(place.index + 1) - offset]);
    }
  }

private:
  Place placeOf(std::size_t j) const {
    if (rows_.empty()) return placeAt(places_.first + double(j) * places_.step);
    // A cycle of all phases is a whole number of values: no place drifts, however far it is.
    Place place = placeAt(places_.first + double(j % rows_.size()) * places_.step);
    place.index += std::int64_t(j / rows_.size()) * cycle_;
    return place;
  }

  std::vector<double> continuedAtBothEnds(std::span<const double> stretch) const {
    std::vector<double> continued(stretch.size() + 2 * reach_);
    std::ranges::copy(stretch, continued.begin() + std::ptrdiff_t(reach_));
    for (std::size_t i = 1; i <= reach_; ++i) {
      const std::size_t inside = std::min(i, stretch.size() - 1);
      continued[reach_ - i] = 2 * stretch.front() - stretch[inside];
      continued[reach_ + stretch.size() - 1 + i] = 2 * stretch.back() - stretch[stretch.size() - 1 - inside];
    }
    return continued;
  }

  /// The weights of the values around a place, from `reach_` - 1 before the one at or before it on.
  std::span<const double> weightsFor(std::size_t j, double phase) {
    if (rows_.empty()) {
      fill(row_, phase, *table_);
      return row_;
    }
    std::vector<double>& row = rows_[j % rows_.size()];
    if (row.empty()) {
      row.resize(2 * reach_);
      fill(row, phase, kernel_);
    }
    return row;
  }

  template <class Shape>
  void fill(std::vector<double>& row, double phase, const Shape& shape) const {
    double sum = 0;
    for (std::size_t i = 0; i < row.size(); ++i) {
      row[i] = shape.at((double(i) + 1 - double(reach_) - phase) / scale_);
      sum += row[i];
    }
    for (double& weight : row)
      weight /= sum;
  }

  SamplePlaces places_;
  double scale_;
  Kernel kernel_;
  std::size_t reach_;
  std::vector<std::vector<double>> rows_; // of each phase; none where there are too many
  std::int64_t cycle_;                    // values in as many steps as there are phases
  std::unique_ptr<const KernelTable> table_;
  std::vector<double> row_;
};

} // namespace

std::vector<double> resample(std::span<const double> values, const SamplePlaces& places) {
  std::vector<double> taken(places.count, std::numeric_limits<double>::quiet_NaN());
  if (!(places.step > 0) || !(places.step <= double(kMostDecimation)) || !std::isfinite(places.first)) return taken;
  Resampler resampler(places);
  forEachStretch(values, [&](std::span<const double> stretch) {
    resampler.take(stretch, std::size_t(stretch.data() - values.data()), taken);
  });
  return taken;
}

std::vector<double> decimate(std::span<const double> values, std::size_t factor, FilterPhase phase) {
  constexpr double kCorner = 0.75;
  constexpr int kOrder = 16;
  factor = std::clamp<std::size_t>(factor, 1, kMostDecimation);
  const std::size_t count = (values.size() + factor - 1) / factor;
  if (phase == FilterPhase::Zero || factor == 1) return resample(values, {0, double(factor), count});
  std::vector<double> filtered(values.begin(), values.end());
  applyFilter(filtered, *designButterworth(ButterworthFilter::lowPass(kCorner * 0.5 / double(factor), kOrder), 1),
              FilterPhase::Causal);
  for (std::size_t i = 0; i < count; ++i)
    filtered[i] = filtered[i * factor];
  filtered.resize(count);
  return filtered;
}

} // namespace xov
