#include "XOV_Graphics/platform/trace/InkStack.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace xov {

namespace {

constexpr std::size_t kMostPlanes = 8;
constexpr std::size_t kMostKeptChanges = std::size_t(1) << 19; // changes, by and large

} // namespace

std::vector<InkStack::Plane>& InkStack::keptPlanes() {
  static thread_local std::vector<Plane> planes;
  return planes;
}

InkStack::InkStack(const PixelTarget& target, int top, int rows) : target_(target), top_(top), rows_(rows) {}

InkStack::~InkStack() {
  if (used_ > 0 || planes_.empty()) return;
  planes_.resize(std::min(planes_.size(), kMostKeptChanges / (planes_.front().changes.size() + 1)));
  keptPlanes() = std::move(planes_);
}

/// True when a strip's used columns lie in the planes, and whatever is there may be laid with its ink.
bool InkStack::holds(const TraceStrip& strip, const TraceInk& ink, int begin, int end) const {
  return ink.alpha() == alpha_ && begin == begin_ && end == end_ && strip.left + strip.firstUsed >= left_ &&
         strip.left + strip.lastUsed <= left_ + kInkColumns;
}

/// The plane above all ink of a column, which is counted from the first one of the planes.
InkStack::Plane& InkStack::planeOver(int column) {
  const auto place = static_cast<std::size_t>(column);
  if (heights_[place] == kMostPlanes) lay();
  const std::size_t height = heights_[place]++;
  if (height == planes_.size()) planes_.emplace_back();
  Plane& plane = planes_[height];
  if (height == used_) {
    const std::size_t needed = (static_cast<std::size_t>(rows_) + 1) * kInkColumns;
    if (plane.changes.size() < needed) plane.changes.resize(needed);
    plane.rows = {};
    plane.columns = {column, column, std::min(end_ - left_, kInkColumns)};
    plane.inks.alpha = alpha_;
    ++used_;
  }
  plane.columns.first = std::min(plane.columns.first, column);
  plane.columns.last = std::max(plane.columns.last, column + 1);
  return plane;
}

void InkStack::add(TraceCoverage& coverage, const TraceStrip& strip, const TraceInk& ink, int begin, int end) {
  if (!holds(strip, ink, begin, end)) {
    lay();
    left_ = std::max(std::min(strip.left + strip.firstUsed, end - kInkColumns), begin);
    begin_ = begin;
    end_ = end;
    alpha_ = ink.alpha();
    if (planes_.empty()) planes_ = std::exchange(keptPlanes(), {});
  }
  for (int used = strip.firstUsed; used < strip.lastUsed; ++used) {
    const int column = strip.left + used - left_;
    Plane& plane = planeOver(column);
    plane.inks.colors[static_cast<std::size_t>(column)] = ink.color();
    plane.inks.full[static_cast<std::size_t>(column)] = strip.perColumn * kRowUnit;
    coverage.uniteColumn(strip, used, plane.changes.data() + column, plane.rows);
  }
}

void InkStack::lay() {
  const std::ptrdiff_t pixelsPerLine = target_.bytesPerLine / std::ptrdiff_t(sizeof(std::uint32_t));
  for (std::size_t k = 0; k < used_; ++k) {
    Plane& plane = planes_[k];
    uchar* const line = target_.bits + (top_ + plane.rows.first) * target_.bytesPerLine;
    plane.inks.lay(plane.changes.data(), plane.rows, plane.columns, reinterpret_cast<std::uint32_t*>(line) + left_,
                   pixelsPerLine);
  }
  used_ = 0;
  heights_.fill(0);
}

} // namespace xov
