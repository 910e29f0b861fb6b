#include "XOV_Graphics/platform/trace/TraceEnclosure.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

// Samples that are looked at together; indices inside such a stretch fit 32 bits.
constexpr std::int64_t kLongestStretch = std::int64_t(1) << 28;
constexpr float kNowhere = kNothingLow;

} // namespace

TraceEnclosure::TraceEnclosure(std::span<const TraceProjection> projections, InsideRule rule)
    : projections_(projections),
      rule_(rule) {
  areaEnds_.reserve(projections.size());
  for (const TraceProjection& projection : projections) {
    addAreas(projection);
    areaEnds_.push_back(areas_.size());
  }
}

/// Lines that hold no middle of a sub-column at any fineness are left out: there are no more than a picture can show.
void TraceEnclosure::addAreas(const TraceProjection& projection) {
  std::int64_t next = projection.first();
  while (next < projection.last()) {
    Area area;
    area.samples = projection.nextLine(next, projection.last());
    next = area.samples.end;
    if (area.samples.size() < 2) continue;
    area.left = projection.column(area.samples.begin);
    area.right = projection.column(area.samples.end - 1);
    constexpr double kMiddles = 2.0 * kFinest; // of all finenesses
    if (std::ceil(area.left * kMiddles) == std::ceil(area.right * kMiddles)) continue;
    if (projection.hasLobes()) {
      area.row = double(projection.levelRow());
    } else {
      area.row = double(projection.row(area.samples.begin));
      area.slope = (double(projection.row(area.samples.end - 1)) - area.row) / (area.right - area.left);
    }
    areas_.push_back(area);
  }
}

TraceEnclosure::Span TraceEnclosure::middlesIn(const Area& area) const {
  const auto subColumn = [this](double column) {
    const double position = std::ceil((column - strip_.left) * strip_.perColumn - 0.5);
    return static_cast<int>(std::clamp(position, 0.0, double(strip_.subColumns())));
  };
  return {subColumn(area.left), subColumn(area.right)};
}

void TraceEnclosure::find(const TraceStrip& strip) {
  strip_ = strip;
  strip_.curveShift = -0.5; // the borders of the curve's sub-columns are the middles of these
  const auto room = static_cast<std::size_t>(strip.subColumns()) + 2;
  borders_.reserve(room);
  before_.resize(room);
  after_.resize(room);
  layers_ = 0;
  for (std::size_t trace = 0; trace < projections_.size(); ++trace)
    findAreas(trace);
  const int stride = strip_.subColumns();
  if (layers_ > 0) pairRows(rows_.data(), layers_, stride, stride, rule_);
  lows_.clear();
  highs_.clear();
  for (int layer = 0; layer < layers_; ++layer) {
    lows_.push_back(rowsOf(2 * layer));
    highs_.push_back(rowsOf(2 * layer + 1));
  }
}

/// Adds the borders of a trace's areas, if some lie in the strip.
void TraceEnclosure::findAreas(std::size_t trace) {
  const auto end = areas_.begin() + std::ptrdiff_t(areaEnds_[trace]);
  const auto begin = areas_.begin() + std::ptrdiff_t(trace > 0 ? areaEnds_[trace - 1] : 0);
  auto area = std::partition_point(begin, end, [this](const Area& a) { return a.right < strip_.left; });
  int done = -1; // sub-columns; none while the trace has no room here yet
  for (; area != end && area->left < strip_.left + strip_.columns; ++area) {
    const Span span = middlesIn(*area);
    if (span.first >= span.last) continue;
    if (done < 0) {
      ++layers_;
      const std::size_t needed =
          2 * static_cast<std::size_t>(layers_) * static_cast<std::size_t>(strip_.subColumns());
      if (rows_.size() < needed) rows_.resize(needed);
      done = 0;
    }
    float* const curve = rowsOf(2 * layers_ - 2);
    float* const side = rowsOf(2 * layers_ - 1);
    std::fill(curve + done, curve + span.first, kNowhere);
    std::fill(side + done, side + span.first, kNowhere);
    findCurve(projections_[trace], *area, span, curve);
    findSide(*area, span, side);
    if (projections_[trace].hasLobes()) keepLobes(projections_[trace].areLobesUpwards(), span, curve, side);
    done = span.last;
  }
  if (done < 0) return;
  std::fill(rowsOf(2 * layers_ - 2) + done, rowsOf(2 * layers_ - 1), kNowhere);
  std::fill(rowsOf(2 * layers_ - 1) + done, rowsOf(2 * layers_), kNowhere);
}

void TraceEnclosure::findCurve(const TraceProjection& projection, const Area& area, Span span, float* rows) {
  TraceCurve curve{projection, {}, span.first - 1, span.last - span.first + 1};
  const std::int64_t inside = projection.firstAtOrAfter(curve.borderColumn(strip_, 1));
  const std::int64_t beyond = projection.firstAtOrAfter(curve.borderColumn(strip_, curve.blocks - 1));
  curve.samples.begin = std::clamp(inside - 1, area.samples.begin, area.samples.end - 2);
  curve.samples.end = std::clamp(beyond + 1, curve.samples.begin + 2, area.samples.end);
  if (curve.samples.size() > kLongestStretch && span.last - span.first > 1) {
    const int middle = span.first + (span.last - span.first) / 2;
    findCurve(projection, area, {span.first, middle}, rows);
    return findCurve(projection, area, {middle, span.last}, rows);
  }
  borders_.find(curve, strip_);
  const std::int32_t* const cuts = borders_.cuts() + 1;
  const auto count = static_cast<std::size_t>(span.last - span.first);
  for (std::size_t k = 0; k < count; ++k) {
    const std::int64_t cut = curve.samples.begin + cuts[k];
    const HeldSamples held = projection.held(cut - 1, cut + 1);
    before_[k] = curve.values()[cuts[k] - 1];
    after_[k] = curve.values()[cuts[k]];
  }
  findRows(before_.data(), int(count), projection.rows(), before_.data());
  findRows(after_.data(), int(count), projection.rows(), after_.data());
  for (std::size_t k = 0; k < count && cuts[k] == 1; ++k)
    before_[k] = projection.row(curve.samples.begin); // which may be overruled
  const float* const fraction = borders_.fraction() + 1;
  for (std::size_t k = 0; k < count; ++k)
    rows[static_cast<std::size_t>(span.first) + k] = before_[k] + fraction[k] * (after_[k] - before_[k]);
}

/// Lets the curve follow its level where it runs on the other side of it. The upper border comes first: all lobes
/// wind the same way.
void TraceEnclosure::keepLobes(bool upwards, Span span, float* curve, float* level) {
  for (int j = span.first; j < span.last; ++j) {
    const float upper = std::min(curve[j], level[j]);
    const float lower = std::max(curve[j], level[j]);
    curve[j] = upwards ? upper : level[j];
    level[j] = upwards ? level[j] : lower;
  }
}

void TraceEnclosure::findSide(const Area& area, Span span, float* rows) const {
  const double start = area.row + (strip_.curveBorder(0) - area.left) * area.slope;
  const double step = strip_.subWidth() * area.slope;
  for (int j = span.first; j < span.last; ++j)
    rows[j] = static_cast<float>(start + j * step);
}

} // namespace xov
