#include "XOV_Graphics/platform/trace/TraceEnvelope.h"

#include "XOV_Graphics/base/Lanes.h"
#include "XOV_Graphics/platform/trace/TraceCurve.h"
#include "XOV_Graphics/platform/trace/TraceScan.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Up to this many samples a sub-column, each segment by itself costs less than widening every sub-column.
constexpr double kSparse = 0.2;
// From this many samples a sub-column on, its extremes are those of its samples: where the curve crosses the borders
// makes no difference any more.
constexpr double kDense = 4;
// Where neighbouring sub-columns share less than this part of their extent, the curve is smooth.
constexpr float kSmoothOverlap = 0.25F;
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
      padding_(reach() + 2) {
  const auto size = static_cast<std::size_t>(strip.subColumns() + 2 * padding_ + 2);
  curveLow_.resize(size + static_cast<std::size_t>(4 * reach() + RoundPen::kSlack));
  curveHigh_.resize(curveLow_.size());
  for (std::vector<float>* values : {&fraction_, &before_, &after_, &edges_})
    values->resize(size);
  cuts_.resize(size);
  moveTo(strip);
}

void TraceEnvelope::moveTo(const TraceStrip& strip) {
  strip_ = strip;
  strip_.curveShift = smooth_.curveShift();
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
      __builtin_prefetch(projection.samples() + next, 0, 2);
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
    if (rows_.size() < static_cast<std::size_t>(curve.size())) rows_.resize(static_cast<std::size_t>(curve.size()));
    const bool finite =
        findRows(projection.samples() + curve.begin, static_cast<int>(curve.size()), projection.rows(), rows_.data());
    if (!finite) return false;
  } else if (curve.size() > 0 && !curveExtremes(projection, curve, firstSub, lastSub)) {
    return false;
  }

  const InkRows ink = layers.acquire(begin, end);
  const bool widens = curve.size() > 0 && !sparse;
  const int from = widens ? std::clamp(firstSub - reach(), begin, end) : end;
  const int to = widens ? std::clamp(lastSub + reach() + 1, from, end) : end;
  ink.clear(begin, from);
  ink.clear(to, end);
  if (from < to) {
    disc_->widen(&curveLow_[slot(from)], &curveHigh_[slot(from)], to - from, ink.low + from, ink.high + from);
  }
  if (curve.size() > 0 && sparse) addSegments(projection, curve, ink);
  addButts(projection, line, ink);
  roughness_.include(ink.low + begin, ink.high + begin, end - begin, strip_.rows, judged_);
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

/// Fills the curve's extremes for sub-columns firstSub to lastSub, and with nothing as far as the disc reaches
/// beyond.
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
  bool finite = false;
  if (dense) {
    finite = findBlockExtremes(samples, cuts_.data(), blocks, low, high);
    if (finite) orderRows(projection.rows(), low, high, blocks);
  } else if (curve.size() <= kDense * 2 * blocks) {
    finite = cutExtremes(projection.rows(), samples, static_cast<int>(curve.size()), blocks, low, high);
  } else {
    finite = unevenExtremes(projection.rows(), samples, blocks, low, high);
  }
  if (!finite) return false;
  disc_ = findOverlap(low, high, blocks) < kSmoothOverlap ? &smooth_ : &tips_;
  return true;
}

/// The extremes of a curve that is cut at the edges between sub-columns.
bool TraceEnvelope::cutExtremes(const RowMap& toRow, const float* samples, int count, int blocks, float* low,
                                float* high) {
  if (rows_.size() < static_cast<std::size_t>(count)) rows_.resize(static_cast<std::size_t>(count));
  if (!findRows(samples, count, toRow, rows_.data())) return false;
  const std::int32_t* const cuts = cuts_.data();
  findEdgeRows(rows_.data(), cuts, fraction_.data(), blocks, before_.data(), after_.data(), edges_.data());
  if (blocks > 2 && largestBlock(cuts, blocks) <= 2) {
    findShortBlocks(cuts, before_.data(), after_.data(), edges_.data(), blocks, low, high);
    findBlockExtremes(rows_.data(), cuts, 1, low, high);
    findBlockExtremes(rows_.data(), cuts + blocks - 1, 1, low + blocks - 1, high + blocks - 1);
    includeEdgeRows(edges_.data(), 2, low, high);
    includeEdgeRows(edges_.data() + blocks - 2, 2, low + blocks - 2, high + blocks - 2);
  } else {
    findBlockExtremes(rows_.data(), cuts, blocks, low, high);
    includeEdgeRows(edges_.data(), blocks, low, high);
  }
  return true;
}

/// The same for times so uneven that some sub-columns hold very many samples and others none.
bool TraceEnvelope::unevenExtremes(const RowMap& toRow, const float* samples, int blocks, float* low, float* high) {
  if (!findBlockExtremes(samples, cuts_.data(), blocks, low, high)) return false;
  orderRows(toRow, low, high, blocks);
  for (int k = 1; k < blocks; ++k) {
    const auto e = static_cast<std::size_t>(k);
    const float before = toRow(samples[cuts_[e] - 1]), after = toRow(samples[cuts_[e]]);
    edges_[e] = before + fraction_[e] * (after - before);
  }
  includeEdgeRows(edges_.data(), blocks, low, high);
  return true;
}

} // namespace xov
