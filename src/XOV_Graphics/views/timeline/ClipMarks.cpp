#include "XOV_Graphics/views/timeline/ClipMarks.h"

#include "XOV_Graphics/base/SampleIndex.h"

#include <cmath>

namespace xov {

namespace {

constexpr double kGap = 2;
constexpr double kShortest = 3;

// The marks along one limit, from left to right.
class Marks {
public:
  explicit Marks(double y) : y_(y) {}

  void add(double x) {
    if (!lines_.empty() && x - lines_.back().x2() < kGap)
      lines_.back().setP2({x, y_});
    else
      lines_.emplace_back(x, y_, x, y_);
  }

  void appendTo(std::vector<QLineF>& all) const {
    for (const QLineF& line : lines_) {
      const double lacking = std::max(kShortest - line.dx(), 0.0);
      all.emplace_back(line.x1() - lacking / 2, y_, line.x2() + lacking / 2, y_);
    }
  }

private:
  double y_;
  std::vector<QLineF> lines_;
};

} // namespace

std::vector<QLineF> clipMarks(const Trace& trace) {
  std::vector<QLineF> all;
  if (trace.isEmpty() || !trace.clampLow || !trace.clampHigh) return all;
  const float low = *trace.clampLow;
  const float high = *trace.clampHigh;
  Marks below(trace.yOf(low));
  Marks above(trace.yOf(high));
  const auto look = [&](std::int64_t from, std::int64_t to) {
    const HeldSamples held = trace.held(from, to);
    for (std::int64_t i = from; i < to; ++i) {
      const float value = trace.samples[i];
      if ((value >= low && value <= high) || !std::isfinite(value)) continue;
      const float elapsed = trace.time.step * float(i - trace.time.origin);
      (value > high ? above : below).add(trace.xOf(trace.time.start + elapsed));
    }
  };
  std::int64_t next = trace.first;
  if (trace.index != nullptr && trace.index->covers(trace.samples, trace.first, trace.last)) {
    const SampleIndex::Blocks blocks = trace.index->blocksWithin(trace.samples, trace.first, trace.last);
    for (std::int64_t k = 0; k < blocks.count; ++k) {
      if (!(blocks.lowest[k] >= low && blocks.highest[k] <= high)) continue;
      look(next, blocks.begin + k * SampleIndex::kBlock);
      next = blocks.begin + (k + 1) * SampleIndex::kBlock;
    }
  }
  look(next, trace.last);
  above.appendTo(all);
  below.appendTo(all);
  return all;
}

} // namespace xov
