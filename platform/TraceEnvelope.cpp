#include "platform/TraceEnvelope.h"

#include "platform/TraceScan.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Up to this many samples a sub-column, each segment by itself costs less than widening every sub-column.
constexpr double kSparse = 0.2;
// From this many samples a sub-column on, its extremes are those of its samples: where the curve crosses the borders
// makes no difference any more.
constexpr double kDense = 6;
// Where neighbouring sub-columns share less than this part of their extent, the curve is smooth.
constexpr float kSmoothOverlap = 0.25F;
// Samples that are looked at together; indices inside such a stretch fit 32 bits.
constexpr std::int64_t kLongestWindow = std::int64_t(1) << 28;

/// Turns the extremes of values into those of rows; a block without samples stays empty.
void orderRows(const TraceRows& toRow, float* low, float* high, int count) {
  for (int k = 0; k < count; ++k) {
    if (low[k] > high[k]) {
      low[k] = kNothingLow;
      high[k] = kNothingHigh;
      continue;
    }
    const float a = toRow(low[k]), b = toRow(high[k]);
    low[k] = std::min(a, b);
    high[k] = std::max(a, b);
  }
}

} // namespace

TraceEnvelope::TraceEnvelope(const TraceStrip& strip)
    : strip_(strip), smooth_(strip.radius, strip.perColumn, TraceDisc::Curve::Smooth),
      tips_(strip.radius, strip.perColumn, TraceDisc::Curve::Tips), padding_(reach() + 2) {
  const auto size = static_cast<std::size_t>(strip.subColumns() + 2 * padding_ + 2);
  curveLow_.resize(size + static_cast<std::size_t>(4 * reach()));
  curveHigh_.resize(curveLow_.size());
  fraction_.resize(size);
  cuts_.resize(size);
  moveTo(strip);
}

void TraceEnvelope::moveTo(const TraceStrip& strip) {
  strip_ = strip;
  strip_.curveShift = smooth_.curveShift();
}

void TraceEnvelope::addTrace(const TraceProjection& projection, TraceLayers& layers) {
  if (projection.isEmpty()) return;
  const double reach = strip_.radius + 2 * strip_.subWidth();
  const std::int64_t inside = projection.firstAtOrAfter(strip_.left - reach);
  const std::int64_t beyond = projection.firstAtOrAfter(strip_.left + strip_.columns + reach);
  // One sample more on either side: the segments that lead in and out.
  const SampleRange window{std::max(inside - 1, projection.first()), std::min(beyond + 1, projection.last())};
  for (std::int64_t begin = window.begin; begin + 1 < window.end; begin += kLongestWindow) {
    addWindow(projection, layers, {begin, std::min(window.end, begin + kLongestWindow + 1)});
  }
}

void TraceEnvelope::addWindow(const TraceProjection& projection, TraceLayers& layers, SampleRange window) {
  const Line whole{window, window.begin == projection.first(), window.end == projection.last()};
  if (!addLine(projection, layers, whole)) addBrokenWindow(projection, layers, window);
}

void TraceEnvelope::addBrokenWindow(const TraceProjection& projection, TraceLayers& layers, SampleRange window) {
  const float* const samples = projection.samples();
  std::int64_t next = window.begin;
  while (next < window.end) {
    Line line;
    line.samples.begin = projection.isFinite(next) ? next : findFinite(samples, next + 1, window.end, true);
    line.samples.end = findFinite(samples, line.samples.begin + 1, window.end, false);
    next = line.samples.end;
    if (line.samples.size() < 2) continue;
    line.opens = line.samples.begin > window.begin || window.begin == projection.first();
    line.closes = line.samples.end < window.end || window.end == projection.last();
    addLine(projection, layers, line);
  }
}

int TraceEnvelope::subColumnOf(double column) const {
  const double position = std::floor((column - strip_.left) * strip_.perColumn + strip_.curveShift);
  return static_cast<int>(std::clamp(position, double(-padding_), double(strip_.subColumns() + padding_ - 1)));
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
  const int begin = std::clamp(subColumnOf(left) - touched, 0, strip_.subColumns());
  const int end = std::clamp(subColumnOf(right) + touched + 1, begin, strip_.subColumns());
  if (begin == end) return true;

  const int firstSub = curve.size() > 0 ? subColumnOf(projection.column(curve.begin)) : 0;
  const int lastSub = curve.size() > 0 ? subColumnOf(projection.column(curve.end - 1)) : 0;
  const bool sparse = double(curve.size()) < kSparse * (lastSub - firstSub + 1);
  if (curve.size() > 0 && sparse) {
    rows_.resize(static_cast<std::size_t>(curve.size()));
    const bool finite = findRows(projection.samples() + curve.begin, static_cast<int>(curve.size()),
                                 projection.rows(), rows_.data());
    if (!finite) return false;
  } else if (curve.size() > 0 && !curveExtremes(projection, curve, firstSub, lastSub)) {
    return false;
  }

  const InkRows ink = layers.acquire(begin, end);
  if (curve.size() > 0 && sparse) {
    addSegments(projection, curve, ink);
  } else if (curve.size() > 0) {
    const int from = std::max(begin, firstSub - reach());
    const int count = std::min(end, lastSub + reach() + 1) - from;
    if (count > 0) disc_->widen(&curveLow_[slot(from)], &curveHigh_[slot(from)], count, ink.low + from, ink.high + from);
  }
  addButts(projection, line, ink);
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

/// Fills the curve's extremes for sub-columns firstSub to lastSub, and with nothing as far as the disc reaches beyond.
bool TraceEnvelope::curveExtremes(const TraceProjection& projection, SampleRange curve, int firstSub, int lastSub) {
  const int blocks = lastSub - firstSub + 1;
  const bool dense = double(curve.size()) >= kDense * blocks &&
                     projection.isDense(curve.begin, curve.end - 1, strip_.subWidth() / kDense * 2);
  findEdges(projection, strip_, curve, firstSub + 1, blocks - 1, cuts_.data() + 1,
            dense ? nullptr : fraction_.data() + 1);
  cuts_[0] = 0;
  cuts_[static_cast<std::size_t>(blocks)] = static_cast<std::int32_t>(curve.size());

  const std::size_t from = slot(firstSub), past = slot(lastSub) + 1;
  const auto clear = static_cast<std::size_t>(2 * reach());
  std::fill_n(&curveLow_[from - clear], clear, kNothingLow);
  std::fill_n(&curveHigh_[from - clear], clear, kNothingHigh);
  std::fill_n(&curveLow_[past], clear, kNothingLow);
  std::fill_n(&curveHigh_[past], clear, kNothingHigh);

  const float* const samples = projection.samples() + curve.begin;
  float* const low = &curveLow_[from];
  float* const high = &curveHigh_[from];
  if (!findBlockExtremes(samples, cuts_.data(), blocks, low, high)) return false;
  orderRows(projection.rows(), low, high, blocks);
  if (!dense) includeEdges(projection.rows(), samples, blocks, low, high);
  disc_ = findOverlap(low, high, blocks) < kSmoothOverlap ? &smooth_ : &tips_;
  return true;
}

/// Takes in where the curve crosses the edges between sub-columns.
void TraceEnvelope::includeEdges(const TraceRows& toRow, const float* samples, int blocks, float* low, float* high) {
  for (int k = 1; k < blocks; ++k) {
    const auto e = static_cast<std::size_t>(k);
    const float before = toRow(samples[cuts_[e] - 1]), after = toRow(samples[cuts_[e]]);
    const float row = before + fraction_[e] * (after - before);
    for (const int side : {k - 1, k}) {
      low[side] = std::min(low[side], row);
      high[side] = std::max(high[side], row);
    }
  }
}

} // namespace xov
