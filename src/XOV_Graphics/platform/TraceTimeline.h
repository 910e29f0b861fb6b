#pragma once

#include "XOV_Graphics/base/SinglePrecision.h"
#include "XOV_Graphics/platform/Trace.h"

#include <cstdint>
#include <span>
#include <vector>

namespace xov {

/// Consecutive samples whose times lie a constant step apart: t(i) = start + (i - first) · step, for
/// first <= i < first + count.
struct TimePiece {
  std::int64_t first = 0;
  std::int64_t count = 0;
  double start = 0;
  double step = 0;
};

/// The times of a trace's samples, reachable at any index without walking there.
///
/// Adding a constant in single precision moves by the same amount at every step while the sum stays inside one power
/// of two: both ends lie on the same grid, so the rounding is the same each time. An accumulated time is therefore a
/// few straight pieces, at most a handful for each power of two that it crosses, and they are exact.
class TraceTimeline {
public:
  explicit TraceTimeline(const Trace& trace);

  /// The samples that have a finite time are first() <= i < last(); explicit times may have gaps in between.
  std::int64_t first() const { return first_; }
  std::int64_t last() const { return last_; }

  /// The time of sample i, exactly as TraceTime describes it; first() <= i < last().
  double time(std::int64_t i) const {
    return time_.rule == TraceTime::Rule::Uniform ? double(uniformTime(time_, i)) : timeOfOtherRule(i);
  }
  /// time(i) - origin: singleDifference(), but in double precision for even times.
  double since(float origin, std::int64_t i) const {
    const double t = time(i);
    if (time_.rule == TraceTime::Rule::Even) return t - double(origin);
    return double(singleDifference(static_cast<float>(t), origin));
  }

  /// True when some time lies before the time of an earlier sample.
  bool decreases() const { return decreases_; }
  /// True when an explicit time between first() and last() is not finite.
  bool hasGaps() const { return hasGaps_; }

  /// The straight pieces, in order and without gaps between them; none for explicit times. A uniform or even time is
  /// one piece, which its times since an origin follow within pieceError().
  std::span<const TimePiece> pieces() const {
    return hasOnePiece_ ? std::span(&onePiece_, 1) : std::span<const TimePiece>(pieces_);
  }
  /// The index into pieces() of the piece that holds sample i.
  std::size_t pieceAt(std::int64_t i) const;
  /// How far, at most, the times of samples a <= i <= b since an origin are from their pieces. Infinite where one of
  /// the differences may have been beyond single precision.
  double pieceError(float origin, std::int64_t a, std::int64_t b) const;
  /// How far, at most, the straight pieces are from `start + step · (i - origin)` of even times, at any sample of
  /// theirs. Exact but for the rounding of double precision.
  double distanceFrom(const TraceTime& even) const;

private:
  static float uniformTime(const TraceTime& time, std::int64_t i) {
    const float product = time.step * static_cast<float>(i);
    return time.start + product;
  }
  double timeOfOtherRule(std::int64_t i) const;
  void setOnePiece(double start, double step);
  void setUniform();
  void setEven();
  void setAccumulated();
  void setExplicit();

  TraceTime time_;
  std::int64_t first_ = 0;
  std::int64_t last_ = 0;
  bool decreases_ = false;
  bool hasGaps_ = false;
  bool hasOnePiece_ = false;
  TimePiece onePiece_;
  std::vector<TimePiece> pieces_; // more than one
};

} // namespace xov
