#include "XOV_Graphics/platform/trace/TraceEnvelope.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Up to this many samples a sub-column, each segment by itself costs less than widening every sub-column.
constexpr double kSparse = 0.2;
// From this many on, lines between gaps may end within one.
constexpr double kCrowded = 8;
// Samples that are looked at together; indices inside such a stretch fit 32 bits.
constexpr std::int64_t kLongestWindow = std::int64_t(1) << 28;
// Up to so many samples of a trace's next strip are asked for while this one is at hand. More than these the
// processor foresees by itself.
constexpr std::int64_t kForeseen = 2048;

} // namespace

TraceEnvelope::TraceEnvelope(const TraceStrip& strip)
    : strip_(strip),
      smooth_(strip.radius, strip.perColumn, RoundPen::Curve::Smooth),
      tips_(strip.radius, strip.perColumn, RoundPen::Curve::Tips),
      extremes_(strip, smooth_.reach()),
      snippets_(strip, smooth_.reach()) {
  moveTo(strip);
}

void TraceEnvelope::moveTo(const TraceStrip& strip) {
  strip_ = strip;
  strip_.curveShift = smooth_.curveShift();
  extremes_.moveTo(strip_);
  roughness_ = {};
}

void TraceEnvelope::addTrace(const TraceProjection& projection, TraceLayers& layers, bool judged) {
  if (projection.isEmpty()) return;
  judged_ = judged;
  const double reach = strip_.radius + 2 * strip_.subWidth();
  const std::int64_t inside = projection.firstAtOrAfter(strip_.left - reach);
  const std::int64_t beyond = projection.firstAtOrAfter(strip_.left + strip_.columns + reach);
  // One sample more on either side: the segments that lead in and out.
  const SampleRange window{std::max(inside - 1, projection.first()), std::min(beyond + 1, projection.last())};
  if (window.size() <= kForeseen) {
    const std::int64_t end = std::min(window.end + window.size(), projection.last());
    for (std::int64_t next = window.end; next < end; next += kCacheLine)
      XOV_PREFETCH(projection.samples() + next, 0, 2);
  }
  for (std::int64_t begin = window.begin; begin + 1 < window.end; begin += kLongestWindow) {
    addWindow(projection, layers, {begin, std::min(window.end, begin + kLongestWindow + 1)});
  }
}

void TraceEnvelope::addWindow(const TraceProjection& projection, TraceLayers& layers, SampleRange window) {
  const Line whole{window, window.begin == projection.first(), window.end == projection.last()};
  if (!addLine(projection, layers, whole)) addBrokenWindow(projection, layers, window);
}

void TraceEnvelope::addBrokenWindow(const TraceProjection& projection, TraceLayers& layers, SampleRange window) {
  const int firstSub = extremes_.subColumnOf(projection.column(window.begin));
  const int lastSub = extremes_.subColumnOf(projection.column(window.end - 1));
  const bool crowded = double(window.size()) >= kCrowded * (lastSub - firstSub + 1);
  if (crowded) snippets_.reset(strip_);
  const HeldSamples held = projection.held(window.begin, crowded ? window.end : window.begin);
  std::int64_t next = window.begin;
  while (next < window.end) {
    if (crowded && next > window.begin) next = snippets_.take(projection, extremes_, next, window.end);
    if (next == window.end) break;
    Line line;
    line.samples = projection.nextLine(next, window.end);
    next = line.samples.end;
    if (line.samples.size() < 2) continue;
    line.opens = line.samples.begin > window.begin || window.begin == projection.first();
    line.closes = line.samples.end < window.end || window.end == projection.last();
    addLine(projection, layers, line);
  }
  if (!crowded) return;
  snippets_.ink(projection.rows(), smooth_, tips_, layers, [this](const InkRows& ink) {
    roughness_.include(ink.low + ink.begin, ink.high + ink.begin, ink.end - ink.begin, strip_.rows,
                       judgedAs(InkRoughness::Judged::Curve));
  });
}

TracePoint TraceEnvelope::point(const TraceProjection& projection, std::int64_t i) const {
  return {projection.column(i) - strip_.left, double(projection.row(i))};
}

bool TraceEnvelope::addLine(const TraceProjection& projection, TraceLayers& layers, const Line& line) {
  const SampleRange curve{line.samples.begin + line.opens, line.samples.end - line.closes};
  if (line.opens && !projection.isFinite(line.samples.begin)) return false;
  if (line.closes && !projection.isFinite(line.samples.end - 1)) return false;
  const double left = projection.column(line.samples.begin), right = projection.column(line.samples.end - 1);
  const int touched = reach() + 1;
  const int begin = std::clamp(extremes_.subColumnOf(left) - touched, 0, strip_.subColumns());
  const int end = std::clamp(extremes_.subColumnOf(right) + touched + 1, begin, strip_.subColumns());
  if (begin == end) return true;

  const int firstSub = curve.size() > 0 ? extremes_.subColumnOf(projection.column(curve.begin)) : 0;
  const int lastSub = curve.size() > 0 ? extremes_.subColumnOf(projection.column(curve.end - 1)) : 0;
  const bool sparse = double(curve.size()) < kSparse * (lastSub - firstSub + 1);
  if (curve.size() > 0 && sparse) {
    const HeldSamples held = projection.held(curve.begin, curve.end);
    if (rows_.size() < static_cast<std::size_t>(curve.size())) rows_.resize(static_cast<std::size_t>(curve.size()));
    const bool finite =
        findRows(projection.samples() + curve.begin, static_cast<int>(curve.size()), projection.rows(), rows_.data());
    if (!finite) return false;
  } else if (curve.size() > 0 && !extremes_.find(projection, curve, firstSub, lastSub)) {
    return false;
  }

  const InkRows ink = layers.acquire(begin, end);
  const bool widens = curve.size() > 0 && !sparse;
  const int from = widens ? std::clamp(firstSub - reach(), begin, end) : end;
  const int to = widens ? std::clamp(lastSub + reach() + 1, from, end) : end;
  ink.clear(begin, from);
  ink.clear(to, end);
  if (from < to) {
    RoundPen& pen = extremes_.isSmooth() ? smooth_ : tips_;
    pen.widen(extremes_.low(from), extremes_.high(from), to - from, ink.low + from, ink.high + from);
  }
  if (curve.size() > 0 && sparse) addSegments(projection, curve, ink);
  addButts(projection, line, ink);
  roughness_.include(ink.low + begin, ink.high + begin, end - begin, strip_.rows,
                     judgedAs(sparse ? InkRoughness::Judged::Exact : InkRoughness::Judged::Curve));
  layers.commit(ink);
  return true;
}

void TraceEnvelope::addSegments(const TraceProjection& projection, SampleRange curve, const InkRows& ink) const {
  TracePoint before{projection.column(curve.begin) - strip_.left, double(rows_[0])};
  if (curve.size() == 1) addRoundSegment(before, before, strip_, ink);
  for (std::int64_t i = 1; i < curve.size(); ++i) {
    const TracePoint next{projection.column(curve.begin + i) - strip_.left,
                          double(rows_[static_cast<std::size_t>(i)])};
    addRoundSegment(before, next, strip_, ink);
    before = next;
  }
}

void TraceEnvelope::addButts(const TraceProjection& projection, const Line& line, const InkRows& ink) const {
  const SampleRange& samples = line.samples;
  if (line.opens) {
    addButtSegment(point(projection, samples.begin), point(projection, samples.begin + 1), strip_, ink);
  }
  if (line.closes && (samples.size() > 2 || !line.opens)) {
    addButtSegment(point(projection, samples.end - 2), point(projection, samples.end - 1), strip_, ink);
  }
}

} // namespace xov
