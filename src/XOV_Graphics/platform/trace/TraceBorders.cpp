#include "XOV_Graphics/platform/trace/TraceBorders.h"

#include "XOV_Graphics/platform/trace/BlockBorders.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace xov {

namespace {

// Rounded times may lie this far from their straight piece, in sub-columns, before each is looked up by itself.
constexpr double kStraightTolerance = 0.125;
// From so many samples around where it should be on, a border is looked up by itself.
constexpr double kLongestReach = 4096;

} // namespace

void TraceBorders::reserve(std::size_t borders) {
  cuts_.resize(borders);
  fraction_.resize(borders);
}

void TraceBorders::find(const TraceCurve& curve, const TraceStrip& strip) {
  const TraceProjection& projection = curve.projection;
  const SampleRange samples = curve.samples;
  cuts_[0] = 0;
  cuts_[static_cast<std::size_t>(curve.blocks)] = curve.count();
  if (!projection.isStraight(samples.begin, samples.end - 1, kStraightTolerance * strip.subWidth())) {
    if (!cutTogether(curve, strip)) cutOneByOne(curve, strip);
    return;
  }
  const std::span<const TimePiece> pieces = projection.pieces();
  int next = 1;
  for (std::size_t p = projection.pieceAt(samples.begin); next < curve.blocks && p < pieces.size(); ++p) {
    const TimePiece& piece = pieces[p];
    // Borders between the last sample of the piece before and the first one of this.
    const double left = projection.columnOfTime(piece.start);
    for (; next < curve.blocks && piece.first > samples.begin && curve.borderColumn(strip, next) <= left; ++next)
      cutBetween(curve, strip, next, std::min(piece.first, samples.end - 1));
    if (piece.count < 2 || !(piece.step * projection.columnsPerTime() > 0)) continue;
    const double right = projection.columnOfTime(piece.start + double(piece.count - 1) * piece.step);
    const bool isLast = piece.first + piece.count >= samples.end;
    const double reach = (right - curve.borderColumn(strip, 1)) / strip.subWidth();
    const int borders = curve.blocks - 1;
    const int covered = isLast ? borders : static_cast<int>(std::floor(std::clamp(reach, -1.0, double(borders)))) + 1;
    const int through = std::min(covered, borders);
    if (through < next) continue;
    cutStraight(curve, strip, next, through - next + 1, piece);
    next = through + 1;
  }
  for (; next < curve.blocks; ++next)
    cutBetween(curve, strip, next, samples.end - 1);
}

/// Looks borders up around where evenly spaced times would have them. False where times are no rounded products, or
/// too far from those.
bool TraceBorders::cutTogether(const TraceCurve& curve, const TraceStrip& strip) {
  const TraceProjection& projection = curve.projection;
  const std::optional<RoundedColumns> rounded = projection.roundedColumns();
  const int borders = curve.blocks - 1;
  if (!rounded || borders < 1 || curve.samples.end > std::numeric_limits<std::int32_t>::max() / 2) return false;
  const TimePiece& piece = projection.pieces().front();
  const double width = piece.step * projection.columnsPerTime();
  if (!(width > 0) || curve.count() < 3) return false;
  constexpr double kSlack = 3; // whole samples around a place, and what double precision rounds
  const double reach = projection.distanceFromPieces(curve.samples.begin, curve.samples.end - 1) / width + kSlack;
  if (!(reach <= kLongestReach)) return false;
  columns_.resize(static_cast<std::size_t>(curve.blocks));
  for (int k = 1; k < curve.blocks; ++k)
    columns_[static_cast<std::size_t>(k)] = curve.borderColumn(strip, k);
  BorderPlaces places;
  places.base = static_cast<std::int32_t>(curve.samples.begin);
  places.guess = (columns_[1] - projection.columnOfTime(piece.start)) / width + double(piece.first) - places.base;
  places.step = strip.subWidth() / width;
  places.reach = static_cast<std::int32_t>(reach);
  places.lowest = 1;
  places.highest = curve.count() - 1;
  return cutRounded(*rounded, places, columns_.data() + 1, borders, cuts_.data() + 1,
                    curve.dense ? nullptr : fraction_.data() + 1);
}

/// Looks every border up in the samples' own columns, in growing steps from the one before.
void TraceBorders::cutOneByOne(const TraceCurve& curve, const TraceStrip& strip) {
  const TraceProjection& projection = curve.projection;
  std::int64_t sample = curve.samples.begin + 1;
  const std::int64_t lastSample = curve.samples.end - 1;
  for (int k = 1; k < curve.blocks; ++k) {
    const double border = curve.borderColumn(strip, k);
    std::int64_t step = 1;
    std::int64_t low = sample;
    while (low + step < lastSample && projection.column(low + step) < border) {
      low += step;
      step *= 2;
    }
    std::int64_t high = std::min(low + step, lastSample);
    while (low < high) {
      const std::int64_t middle = low + (high - low) / 2;
      if (projection.column(middle) < border)
        low = middle + 1;
      else
        high = middle;
    }
    sample = low;
    cutBetween(curve, strip, k, sample);
  }
}

/// Borders that lie right of the first sample of a straight piece and not right of its last one.
void TraceBorders::cutStraight(const TraceCurve& curve, const TraceStrip& strip, int from, int count,
                               const TimePiece& piece) {
  const TraceProjection& projection = curve.projection;
  const double left = projection.columnOfTime(piece.start);
  const double width = piece.step * projection.columnsPerTime();
  const double base = double(piece.first - curve.samples.begin);
  const double start = (curve.borderColumn(strip, from) - left) / width + base;
  const double perBorder = strip.subWidth() / width;
  const auto lowest = static_cast<std::int32_t>(std::max(base, 0.0)) + 1;
  const auto highest =
      static_cast<std::int32_t>(std::min(base + double(piece.count), double(curve.samples.size()))) - 1;
  cutEvenly(start, perBorder, count, lowest, std::max(lowest, highest), cuts_.data() + from,
            curve.dense ? nullptr : fraction_.data() + from);
}

/// A border between a sample and the one before it.
void TraceBorders::cutBetween(const TraceCurve& curve, const TraceStrip& strip, int border, std::int64_t sample) {
  const auto k = static_cast<std::size_t>(border);
  cuts_[k] = static_cast<std::int32_t>(sample - curve.samples.begin);
  if (curve.dense) return;
  const double before = curve.projection.column(sample - 1);
  const double width = curve.projection.column(sample) - before;
  const double along = width > 0 ? (curve.borderColumn(strip, border) - before) / width : 1.0;
  fraction_[k] = static_cast<float>(std::clamp(along, 0.0, 1.0));
}

} // namespace xov
