#include "platform/TraceCoverage.h"

#include <algorithm>

namespace xov {

namespace {

constexpr int kRowBits = 12; // of a row's height: a 4096th of a pixel
constexpr std::int32_t kRowUnit = 1 << kRowBits;

} // namespace

TraceCoverage::TraceCoverage(int columns, int rows)
    : columns_(columns), rows_(rows), pixels_(std::size_t(columns) * std::size_t(rows)),
      changes_(std::size_t(rows) + 2) {}

void TraceCoverage::cover(const TraceStrip& strip, const TraceLayers& layers) {
  std::fill(pixels_.begin() + std::ptrdiff_t(firstRow_) * columns_, pixels_.begin() + std::ptrdiff_t(lastRow_) * columns_,
            std::uint8_t(0));
  firstRow_ = rows_;
  lastRow_ = 0;
  intervals_.resize(static_cast<std::size_t>(layers.count()));
  for (int column = 0; column < strip.columns; ++column) addColumn(strip, layers, column);
  if (lastRow_ <= firstRow_) firstRow_ = lastRow_ = 0;
}

void TraceCoverage::addColumn(const TraceStrip& strip, const TraceLayers& layers, int column) {
  columnTop_ = rows_;
  columnBottom_ = 0;
  const auto bottom = static_cast<float>(rows_);
  const int begin = column * strip.perColumn;
  for (int j = begin; j < begin + strip.perColumn; ++j) {
    int found = 0;
    for (int layer = 0; layer < layers.count(); ++layer) {
      const float low = layers.low(layer)[j], high = layers.high(layer)[j];
      if (low < high && high > 0 && low < bottom) intervals_[static_cast<std::size_t>(found++)] = {low, high};
    }
    const int united = uniteIntervals(intervals_.data(), found, 0);
    for (int k = 0; k < united; ++k) {
      const RowInterval& interval = intervals_[static_cast<std::size_t>(k)];
      addInterval(std::max(interval.low, 0.0F), std::min(interval.high, bottom));
    }
  }
  if (columnBottom_ > columnTop_) finishColumn(column, strip.perColumn);
}

void TraceCoverage::addInterval(float low, float high) {
  const auto from = static_cast<std::int32_t>(low * kRowUnit + 0.5F);
  const auto to = static_cast<std::int32_t>(high * kRowUnit + 0.5F);
  const std::int32_t top = from >> kRowBits, bottom = to >> kRowBits;
  const std::int32_t below = from & (kRowUnit - 1), past = to & (kRowUnit - 1);
  std::int32_t* const change = changes_.data();
  change[top] += kRowUnit - below;
  change[top + 1] += below;
  change[bottom] -= kRowUnit - past;
  change[bottom + 1] -= past;
  columnTop_ = std::min(columnTop_, top);
  columnBottom_ = std::max(columnBottom_, bottom + 1);
}

void TraceCoverage::finishColumn(int column, int perColumn) {
  const int bottom = std::min(columnBottom_, rows_);
  const std::int32_t full = perColumn * kRowUnit;
  std::int32_t inked = 0;
  for (int row = columnTop_; row < bottom; ++row) {
    inked += changes_[static_cast<std::size_t>(row)];
    pixels_[std::size_t(row) * std::size_t(columns_) + std::size_t(column)] =
        static_cast<std::uint8_t>((inked * 255 + full / 2) / full);
  }
  std::fill(changes_.begin() + columnTop_, changes_.begin() + columnBottom_ + 1, 0);
  firstRow_ = std::min(firstRow_, columnTop_);
  lastRow_ = std::max(lastRow_, bottom);
}

} // namespace xov
