#pragma once

#include "XOV_Graphics/platform/Trace.h"

#include <deque>
#include <optional>
#include <span>
#include <vector>

namespace xov {

/// Traces whose x steps back, runs leftwards or has gaps, cut into stretches along which it grows: together they are
/// the same line, so that it can be stroked like any other.
///
///     1 ──── 2            1 → 2 → 2    the sample at a turn stands there twice: only the last segment of a trace
///     ends
///       3 ───┘     is     3 → 2        in a butt, so the one before it gets its round join
///       └──── 4           3 → 4
class TraceStretches {
public:
  /// Nothing for traces whose times are not told one by one, and for lines so tangled that there would be a stretch
  /// for every few hundred samples: stroking them segment by segment (see TangledTraces.h) then costs less.
  static std::optional<TraceStretches> of(std::span<const Trace> traces);

  /// They borrow what this object holds.
  std::span<const Trace> traces() const { return stretches_; }

private:
  TraceStretches() = default;
  bool cut(const Trace& trace);
  void add(const Trace& trace, std::int64_t begin, std::int64_t end, bool leftwards, bool joins);

  std::vector<Trace> stretches_;
  std::deque<std::vector<float>> values_;
};

} // namespace xov
