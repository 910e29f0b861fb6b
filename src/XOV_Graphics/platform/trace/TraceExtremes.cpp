#include "XOV_Graphics/platform/trace/TraceExtremes.h"

#include "XOV_Graphics/platform/trace/BlockBorders.h"
#include "XOV_Graphics/platform/trace/BlockExtremes.h"
#include "XOV_Graphics/platform/trace/RoundPen.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// From this many samples a sub-column on, its extremes are those of its samples: where the curve crosses the borders
// makes no difference any more.
constexpr double kDense = 4;
// Up to this many samples a sub-column, on average, the row of each is kept.
constexpr double kFew = 8;
// Where neighbouring sub-columns share less than this part of their extent, the curve is smooth.
constexpr float kSmoothOverlap = 0.25F;
// Rounded times may lie this far from their straight piece, in sub-columns, before each is looked up by itself.
constexpr double kStraightTolerance = 0.125;

} // namespace

TraceExtremes::TraceExtremes(const TraceStrip& strip, int reach) : strip_(strip), reach_(reach), padding_(reach + 2) {
  const auto size = static_cast<std::size_t>(strip.subColumns() + 2 * padding_ + 2);
  low_.resize(size + static_cast<std::size_t>(4 * reach_ + RoundPen::kSlack));
  high_.resize(low_.size());
  for (std::vector<float>* values : {&fraction_, &before_, &after_, &borders_})
    values->resize(size);
  cuts_.resize(size);
}

int TraceExtremes::subColumnOf(double column) const {
  const double position = std::floor((column - strip_.left) * strip_.perColumn + strip_.curveShift);
  return static_cast<int>(std::clamp(position, double(-padding_), double(strip_.subColumns() + padding_ - 1)));
}

bool TraceExtremes::find(const TraceProjection& projection, SampleRange samples, int firstSub, int lastSub) {
  Curve curve{projection, samples, firstSub, lastSub - firstSub + 1};
  curve.dense = double(samples.size()) >= kDense * curve.blocks &&
                projection.isDense(samples.begin, samples.end - 1, strip_.subWidth() / kDense * 2);
  cut(curve);

  const std::size_t from = slot(firstSub), past = slot(lastSub) + 1;
  const auto clear = static_cast<std::size_t>(2 * reach_);
  std::fill_n(&low_[from - clear], clear, kNothingLow);
  std::fill_n(&high_[from - clear], clear, kNothingHigh);
  std::fill_n(&low_[past], clear, kNothingLow);
  std::fill_n(&high_[past], clear, kNothingHigh);

  float* const low = &low_[from];
  float* const high = &high_[from];
  bool finite = false;
  if (curve.dense)
    finite = findDense(curve, low, high);
  else if (double(samples.size()) <= kFew * curve.blocks)
    finite = findCut(curve, low, high);
  else
    finite = findUneven(curve, low, high);
  if (finite) isSmooth_ = findOverlap(low, high, curve.blocks) < kSmoothOverlap;
  return finite;
}

/// The extremes of the samples alone.
bool TraceExtremes::findDense(const Curve& curve, float* low, float* high) const {
  if (!findBlockExtremes(curve.values(), cuts_.data(), curve.blocks, low, high)) return false;
  orderRows(curve.projection.rows(), low, high, curve.blocks);
  return true;
}

/// The extremes of a curve that is cut at the borders between sub-columns.
bool TraceExtremes::findCut(const Curve& curve, float* low, float* high) {
  const std::int32_t count = curve.count();
  const int blocks = curve.blocks;
  if (rows_.size() < static_cast<std::size_t>(count)) rows_.resize(static_cast<std::size_t>(count));
  if (!findRows(curve.values(), count, curve.projection.rows(), rows_.data())) return false;
  const std::int32_t* const cuts = cuts_.data();
  findBorderRows(rows_.data(), cuts, fraction_.data(), blocks, before_.data(), after_.data(), borders_.data());
  if (blocks > 2 && largestBlock(cuts, blocks) <= 2) {
    findShortBlocks(cuts, before_.data(), after_.data(), borders_.data(), blocks, low, high);
    findBlockExtremes(rows_.data(), cuts, 1, low, high);
    findBlockExtremes(rows_.data(), cuts + blocks - 1, 1, low + blocks - 1, high + blocks - 1);
    includeBorderRows(borders_.data(), 2, low, high);
    includeBorderRows(borders_.data() + blocks - 2, 2, low + blocks - 2, high + blocks - 2);
  } else {
    findBlockExtremes(rows_.data(), cuts, blocks, low, high);
    includeBorderRows(borders_.data(), blocks, low, high);
  }
  return true;
}

/// The same for times so uneven that some sub-columns hold very many samples and others none.
bool TraceExtremes::findUneven(const Curve& curve, float* low, float* high) {
  const RowMap& toRow = curve.projection.rows();
  if (!findDense(curve, low, high)) return false;
  for (int k = 1; k < curve.blocks; ++k) {
    const auto border = static_cast<std::size_t>(k);
    const float before = toRow(curve.values()[cuts_[border] - 1]), after = toRow(curve.values()[cuts_[border]]);
    borders_[border] = before + fraction_[border] * (after - before);
  }
  includeBorderRows(borders_.data(), curve.blocks, low, high);
  return true;
}

/// Finds the sample at which the segment ends that crosses each border, counted from the curve's first one (so it is
/// at least 1), and, unless the curve is dense, how far along that segment the border lies.
void TraceExtremes::cut(const Curve& curve) {
  const TraceProjection& projection = curve.projection;
  const SampleRange samples = curve.samples;
  cuts_[0] = 0;
  cuts_[static_cast<std::size_t>(curve.blocks)] = curve.count();
  if (!projection.isStraight(samples.begin, samples.end - 1, kStraightTolerance * strip_.subWidth())) {
    return cutOneByOne(curve);
  }
  const std::vector<TimePiece>& pieces = projection.pieces();
  int next = 1;
  for (std::size_t p = projection.pieceAt(samples.begin); next < curve.blocks && p < pieces.size(); ++p) {
    const TimePiece& piece = pieces[p];
    // Borders between the last sample of the piece before and the first one of this.
    const double left = projection.columnOfTime(piece.start);
    for (; next < curve.blocks && piece.first > samples.begin && columnOf(curve, next) <= left; ++next)
      cutBetween(curve, next, std::min(piece.first, samples.end - 1));
    if (piece.count < 2 || !(piece.step * projection.columnsPerTime() > 0)) continue;
    const double right = projection.columnOfTime(piece.start + double(piece.count - 1) * piece.step);
    const bool isLast = piece.first + piece.count >= samples.end;
    const double reach = (right - columnOf(curve, 1)) / strip_.subWidth();
    const int borders = curve.blocks - 1;
    const int covered = isLast ? borders : static_cast<int>(std::floor(std::clamp(reach, -1.0, double(borders)))) + 1;
    const int through = std::min(covered, borders);
    if (through < next) continue;
    cutStraight(curve, next, through - next + 1, piece);
    next = through + 1;
  }
  for (; next < curve.blocks; ++next)
    cutBetween(curve, next, samples.end - 1);
}

/// Looks every border up in the samples' own columns, in growing steps from the one before.
void TraceExtremes::cutOneByOne(const Curve& curve) {
  const TraceProjection& projection = curve.projection;
  std::int64_t sample = curve.samples.begin + 1;
  const std::int64_t lastSample = curve.samples.end - 1;
  for (int k = 1; k < curve.blocks; ++k) {
    const double border = columnOf(curve, k);
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
    cutBetween(curve, k, sample);
  }
}

/// Borders that lie right of the first sample of a straight piece and not right of its last one.
void TraceExtremes::cutStraight(const Curve& curve, int from, int count, const TimePiece& piece) {
  const TraceProjection& projection = curve.projection;
  const double left = projection.columnOfTime(piece.start);
  const double width = piece.step * projection.columnsPerTime();
  const double base = double(piece.first - curve.samples.begin);
  const double start = (columnOf(curve, from) - left) / width + base;
  const double perBorder = strip_.subWidth() / width;
  const auto lowest = static_cast<std::int32_t>(std::max(base, 0.0)) + 1;
  const auto highest =
      static_cast<std::int32_t>(std::min(base + double(piece.count), double(curve.samples.size()))) - 1;
  cutEvenly(start, perBorder, count, lowest, std::max(lowest, highest), cuts_.data() + from,
            curve.dense ? nullptr : fraction_.data() + from);
}

/// A border between a sample and the one before it.
void TraceExtremes::cutBetween(const Curve& curve, int border, std::int64_t sample) {
  const auto k = static_cast<std::size_t>(border);
  cuts_[k] = static_cast<std::int32_t>(sample - curve.samples.begin);
  if (curve.dense) return;
  const double before = curve.projection.column(sample - 1);
  const double width = curve.projection.column(sample) - before;
  const double along = width > 0 ? (columnOf(curve, border) - before) / width : 1.0;
  fraction_[k] = static_cast<float>(std::clamp(along, 0.0, 1.0));
}

} // namespace xov
