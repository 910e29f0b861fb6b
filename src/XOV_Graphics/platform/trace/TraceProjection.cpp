#include "XOV_Graphics/platform/trace/TraceProjection.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr float kLargest = std::numeric_limits<float>::max();
constexpr double kLargestMiddle = 1e30; // a sample less this cannot overflow single precision

float single(double value) { return static_cast<float>(std::clamp(value, -double(kLargest), double(kLargest))); }

} // namespace

TraceProjection::TraceProjection(const Trace& trace, const QTransform& viewToDevice, double clipTop,
                                 double clipHeight)
    : trace_(trace),
      timeline_(trace),
      columnScale_(trace.xScale * viewToDevice.m11()),
      columnOffset_(trace.xOffset * viewToDevice.m11() + viewToDevice.dx()),
      first_(timeline_.first()),
      last_(timeline_.last()),
      isPlain_(trace.source == nullptr && !trace.firstValue && !trace.clampLow && !trace.clampHigh) {
  const bool drawable = std::isfinite(columnScale_) && std::isfinite(columnOffset_) && std::isfinite(trace.tOrigin) &&
                        std::isfinite(trace.vOrigin) && std::isfinite(trace.yScale * viewToDevice.m22()) &&
                        std::isfinite(trace.yOffset * viewToDevice.m22() + viewToDevice.dy());
  if (!drawable) last_ = first_;
  if (last_ > first_ && !isFinite(first_)) ++first_;
  if (isEmpty()) return;
  indexed_ = IndexedSamples({trace.samples, trace.index, trace.source}, first_, last_);
  grows_ = !timeline_.decreases() && !timeline_.hasGaps() && columnScale_ >= 0;
  setRows(viewToDevice, clipTop, clipHeight);
}

void TraceProjection::setRows(const QTransform& viewToDevice, double clipTop, double clipHeight) {
  const double scale = trace_.yScale * viewToDevice.m22();
  const double offset = trace_.yOffset * viewToDevice.m22() + viewToDevice.dy() - clipTop;
  const double wished = (clipHeight / 2 - offset) / scale;
  const double middle = std::abs(wished) < kLargestMiddle ? double(static_cast<float>(wished)) : 0.0;
  rows_.low = trace_.clampLow.value_or(-kLargest);
  rows_.high = trace_.clampHigh.value_or(kLargest);
  rows_.valueOrigin = trace_.vOrigin;
  rows_.middle = static_cast<float>(middle);
  rows_.scale = single(scale);
  rows_.offset = single(std::clamp(middle * scale + offset, -double(kFarRow), double(kFarRow)));
}

float TraceProjection::row(std::int64_t i) const {
  const HeldSamples there = held(i, i + 1);
  return isOverruled(i) ? rowUnclamped(*trace_.firstValue) : rows_(trace_.samples[i]);
}

float TraceProjection::rowUnclamped(float value) const {
  RowMap unclamped = rows_;
  unclamped.low = -kLargest;
  unclamped.high = kLargest;
  return unclamped(value);
}

SampleRange TraceProjection::nextLine(std::int64_t from, std::int64_t end) const {
  const std::int64_t begin = isFinite(from) ? from : indexed_.findNumber(from + 1, end);
  return {begin, begin < end ? indexed_.findGap(begin + 1, end) : begin};
}

double TraceProjection::columnOfTime(double t) const {
  return std::clamp((t - double(trace_.tOrigin)) * columnScale_ + columnOffset_, -kFarColumn, kFarColumn);
}

std::int64_t TraceProjection::firstAtOrAfter(double wanted) const {
  std::int64_t low = first_, high = last_;
  if (low >= high || column(low) >= wanted) return low;
  if (column(high - 1) < wanted) return high;
  // The straight pieces point close to the place; a few looks left and right of it then bracket it.
  if (!pieces().empty() && columnScale_ > 0 && high > low) {
    const double t = (wanted - columnOffset_) / columnScale_ + double(trace_.tOrigin);
    const auto after = std::partition_point(pieces().begin(), pieces().end(),
                                            [t](const TimePiece& piece) { return piece.start < t; });
    if (after != pieces().begin()) {
      const TimePiece& piece = *(after - 1);
      const double steps = piece.step > 0 ? (t - piece.start) / piece.step : 0.0;
      const auto guess = piece.first + static_cast<std::int64_t>(std::clamp(steps, 0.0, double(piece.count)));
      for (std::int64_t reach = 2; reach < high - low; reach *= 8) {
        const std::int64_t left = std::clamp(guess - reach, low, high - 1);
        const std::int64_t right = std::clamp(guess + reach, low, high - 1);
        const bool leftIsBefore = left == low || column(left) < wanted;
        const bool rightIsAfter = right == high - 1 || column(right) >= wanted;
        if (leftIsBefore && rightIsAfter) {
          low = left;
          if (right != high - 1) high = right;
          break;
        }
      }
    }
  }
  while (low < high) {
    const std::int64_t middle = low + (high - low) / 2;
    if (column(middle) < wanted)
      low = middle + 1;
    else
      high = middle;
  }
  return low;
}

bool TraceProjection::isStraight(std::int64_t a, std::int64_t b, double tolerance) const {
  return !pieces().empty() && distanceFromPieces(a, b) <= tolerance;
}

double TraceProjection::distanceFromPieces(std::int64_t a, std::int64_t b) const {
  return timeline_.pieceError(trace_.tOrigin, a, b) * columnScale_;
}

std::optional<RoundedColumns> TraceProjection::roundedColumns() const {
  if (trace_.time.rule != TraceTime::Rule::Uniform) return std::nullopt;
  return RoundedColumns{trace_.time.start, trace_.time.step, trace_.tOrigin, columnScale_, columnOffset_};
}

bool TraceProjection::isDense(std::int64_t a, std::int64_t b, double spacing) const {
  if (!isStraight(a, b, spacing)) return false;
  for (std::size_t p = pieceAt(a); p < pieces().size() && pieces()[p].first <= b; ++p) {
    if (pieces()[p].count > 1 && pieces()[p].step * columnScale_ > spacing) return false;
  }
  return true;
}

} // namespace xov
