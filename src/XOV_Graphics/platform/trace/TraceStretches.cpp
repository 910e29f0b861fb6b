#include "XOV_Graphics/platform/trace/TraceStretches.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// A line may turn this often, and once in so many samples.
constexpr std::int64_t kFreeTurns = 32;
constexpr std::int64_t kSamplesPerTurn = 512;

} // namespace

std::optional<TraceStretches> TraceStretches::of(std::span<const Trace> traces) {
  TraceStretches stretches;
  for (const Trace& trace : traces) {
    if (trace.isEmpty()) continue;
    if (trace.time.rule != TraceTime::Rule::Explicit || trace.firstValue || !stretches.cut(trace))
      return std::nullopt;
  }
  return stretches;
}

bool TraceStretches::cut(const Trace& trace) {
  const float* const times = trace.time.values;
  std::int64_t turnsLeft = kFreeTurns + trace.size() / kSamplesPerTurn;
  std::int64_t begin = trace.first;
  while (begin < trace.last) {
    if (!std::isfinite(times[begin])) {
      ++begin;
      continue;
    }
    bool forwards = false, backwards = false;
    std::int64_t end = begin + 1;
    for (; end < trace.last && std::isfinite(times[end]); ++end) {
      const bool grows = times[end] > times[end - 1], falls = times[end] < times[end - 1];
      if ((forwards && falls) || (backwards && grows)) break;
      forwards = forwards || grows;
      backwards = backwards || falls;
    }
    const bool turns = end < trace.last && std::isfinite(times[end]);
    if (--turnsLeft < 0) return false;
    if (end - begin > 1) add(trace, begin, end, backwards != (trace.xScale < 0), turns && trace.valueAt(end));
    begin = turns ? end - 1 : end;
  }
  return true;
}

/// `leftwards` says that x falls along the stretch, `joins` that the line goes on at its end.
void TraceStretches::add(const Trace& trace, std::int64_t begin, std::int64_t end, bool leftwards, bool joins) {
  std::vector<float>& times = values_.emplace_back(trace.time.values + begin, trace.time.values + end);
  const HeldSamples held = trace.held(begin, end);
  std::vector<float>& samples = values_.emplace_back(trace.samples + begin, trace.samples + end);
  for (std::vector<float>* values : {&times, &samples}) {
    if (joins) values->push_back(values->back());
    if (leftwards) std::reverse(values->begin(), values->end());
  }
  Trace stretch = trace;
  stretch.borrow({samples.data()});
  stretch.first = 0;
  stretch.last = std::ssize(samples);
  if (trace.xScale < 0) {
    std::ranges::transform(times, times.begin(), std::negate<>());
    stretch.tOrigin = -trace.tOrigin;
    stretch.xScale = -trace.xScale;
  }
  stretch.time = TraceTime::explicitValues(times.data());
  stretches_.push_back(stretch);
}

} // namespace xov
