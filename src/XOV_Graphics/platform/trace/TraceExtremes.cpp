#include "XOV_Graphics/platform/trace/TraceExtremes.h"

#include "XOV_Graphics/base/BlockExtremes.h"
#include "XOV_Graphics/platform/trace/BlockBorders.h"
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

} // namespace

TraceExtremes::TraceExtremes(const TraceStrip& strip, int reach) : strip_(strip), reach_(reach), padding_(reach + 2) {
  const auto size = static_cast<std::size_t>(strip.subColumns() + 2 * padding_ + 2);
  low_.resize(size + static_cast<std::size_t>(4 * reach_ + RoundPen::kSlack));
  high_.resize(low_.size());
  for (std::vector<float>* values : {&before_, &after_, &borders_})
    values->resize(size);
  cut_.reserve(size);
}

bool TraceExtremes::areSmooth(const float* low, const float* high, int count) {
  return findOverlap(low, high, count) < kSmoothOverlap;
}

bool TraceExtremes::find(const TraceProjection& projection, SampleRange samples, int firstSub, int lastSub) {
  TraceCurve curve{projection, samples, firstSub, lastSub - firstSub + 1};
  curve.dense = double(samples.size()) >= kDense * curve.blocks &&
                projection.isDense(samples.begin, samples.end - 1, strip_.subWidth() / kDense * 2);
  cut_.find(curve, strip_);

  const std::size_t from = slot(firstSub), past = slot(lastSub) + 1;
  const auto clear = static_cast<std::size_t>(2 * reach_);
  std::fill_n(&low_[from - clear], clear, kNothingLow);
  std::fill_n(&high_[from - clear], clear, kNothingHigh);
  std::fill_n(&low_[past], clear, kNothingLow);
  std::fill_n(&high_[past], clear, kNothingHigh);

  float* const low = &low_[from];
  float* const high = &high_[from];
  bool finite = false;
  const HeldSamples held = projection.held(samples.begin, curve.dense ? samples.begin : samples.end);
  if (curve.dense)
    finite = findDense(curve, low, high);
  else if (double(samples.size()) <= kFew * curve.blocks)
    finite = findCut(curve, low, high);
  else
    finite = findUneven(curve, low, high);
  if (finite) isSmooth_ = areSmooth(low, high, curve.blocks);
  return finite;
}

/// The extremes of the samples alone.
bool TraceExtremes::findDense(const TraceCurve& curve, float* low, float* high) const {
  if (!curve.projection.indexed().findBlockExtremes(curve.samples.begin, cut_.cuts(), curve.blocks, low, high))
    return false;
  orderRows(curve.projection.rows(), low, high, curve.blocks);
  return true;
}

/// The extremes of a curve that is cut at the borders between sub-columns.
bool TraceExtremes::findCut(const TraceCurve& curve, float* low, float* high) {
  const std::int32_t count = curve.count();
  const int blocks = curve.blocks;
  if (rows_.size() < static_cast<std::size_t>(count)) rows_.resize(static_cast<std::size_t>(count));
  if (!findRows(curve.values(), count, curve.projection.rows(), rows_.data())) return false;
  const std::int32_t* const cuts = cut_.cuts();
  findBorderRows(rows_.data(), cuts, cut_.fraction(), blocks, before_.data(), after_.data(), borders_.data());
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
bool TraceExtremes::findUneven(const TraceCurve& curve, float* low, float* high) {
  const RowMap& toRow = curve.projection.rows();
  if (!findDense(curve, low, high)) return false;
  const auto blocks = static_cast<std::size_t>(curve.blocks);
  for (std::size_t k = 1; k < blocks; ++k) {
    before_[k] = curve.values()[cut_.cuts()[k] - 1];
    after_[k] = curve.values()[cut_.cuts()[k]];
  }
  for (std::vector<float>* values : {&before_, &after_}) // numbers all, as the blocks are
    findRows(values->data() + 1, curve.blocks - 1, toRow, values->data() + 1);
  for (std::size_t k = 1; k < blocks; ++k)
    borders_[k] = before_[k] + cut_.fraction()[k] * (after_[k] - before_[k]);
  includeBorderRows(borders_.data(), curve.blocks, low, high);
  return true;
}

} // namespace xov
