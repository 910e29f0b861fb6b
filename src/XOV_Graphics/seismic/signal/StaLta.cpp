#include "XOV_Graphics/seismic/signal/StaLta.h"

#include "XOV_Graphics/seismic/signal/Stretches.h"

#include <vector>

namespace xov {

namespace {

double ratio(double shortTerm, double longTerm) { return longTerm > 0 ? shortTerm / longTerm : 0; }

/// The sum of the last `count` squares. It is summed up anew once in as many values, so that nothing is left over of
/// large ones that have gone.
class MovingSum {
public:
  MovingSum(std::span<const double> squares, std::size_t count) : squares_(squares), count_(count) {}

  double upTo(std::size_t last) {
    sum_ += squares_[last];
    if (last >= count_) sum_ -= squares_[last - count_];
    if (last % count_ == 0) {
      sum_ = 0;
      for (std::size_t i = last + 1 - std::min(count_, last + 1); i <= last; ++i)
        sum_ += squares_[i];
    }
    return sum_;
  }

private:
  std::span<const double> squares_;
  std::size_t count_;
  double sum_ = 0;
};

void classicRatios(std::span<double> stretch, std::size_t shortCount, std::size_t longCount) {
  std::vector<double> squares;
  squares.reserve(stretch.size());
  for (const double value : stretch)
    squares.push_back(value * value);
  MovingSum shortTerm(squares, shortCount);
  MovingSum longTerm(squares, longCount);
  for (std::size_t i = 0; i < stretch.size(); ++i) {
    const double recent = shortTerm.upTo(i) / double(shortCount);
    const double usual = longTerm.upTo(i) / double(longCount);
    stretch[i] = i + 1 < longCount ? 0 : ratio(recent, usual);
  }
}

void recursiveRatios(std::span<double> stretch, std::size_t shortCount, std::size_t longCount) {
  double shortTerm = 0;
  double longTerm = 0;
  for (std::size_t i = 0; i < stretch.size(); ++i) {
    const double square = stretch[i] * stretch[i];
    shortTerm += (square - shortTerm) / double(shortCount);
    longTerm += (square - longTerm) / double(longCount);
    stretch[i] = i + 1 < longCount ? 0 : ratio(shortTerm, longTerm);
  }
}

} // namespace

void applyStaLta(std::span<double> values, std::size_t shortCount, std::size_t longCount, StaLtaKind kind) {
  shortCount = std::max<std::size_t>(shortCount, 1);
  longCount = std::max<std::size_t>(longCount, 1);
  forEachStretch(values, [&](std::span<double> stretch) {
    if (kind == StaLtaKind::Recursive)
      recursiveRatios(stretch, shortCount, longCount);
    else
      classicRatios(stretch, shortCount, longCount);
  });
}

} // namespace xov
