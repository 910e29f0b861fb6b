#include "XOV_Graphics/platform/trace/TangledStroke.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace xov {

namespace {

constexpr int kChunk = 64; // rows whose spans are found together
constexpr double kLevel =
    1.0 / 16; // up to this slope a line is level: its edges leave a row of places only now and then
constexpr double kLevelLength = 2;  // pixels; shorter ones are mostly ends
constexpr double kBeside = 4;       // pixels that a segment may reach beyond what its ink can be seen of
constexpr double kFar = 1e6;        // columns
constexpr double kShort = 2;        // pixels; a shorter segment touches so few of them that each is looked at
constexpr float kLeastDrop = 1e-6F; // pixels
constexpr double kLeastPart = 1e-9; // of a direction; less is none

/// A segment with round ends as its rows need it, from its upper end to its lower one.
struct RoundSpans {
  float x = 0, y = 0; // of the upper end
  float width = 0;    // to the lower one
  float drop = 0;
  float perDrop = 0; // 1 / drop
  float lean = 0;    // the disc that reaches farthest left of a row stands this far above it
  float radiusSquared = 0;
  float places = 0; // of the strip
};

/// The place at which an edge lies: columns right of the strip, held inside it.
template <class Vector>
XOV_INLINE void toPlace(const Vector& shifts, float places, Vector& x) {
  x = x * float(InkBits::kBitColumns) + (1.0F - shifts); // the first place right of it
  keepGreater(x, Vector{});
  keepSmaller(x, Vector{} + places);
}

/// How far a disc reaches aside in a row: that of those along the segment which reaches farthest. `height` is the
/// row's, below where that disc would stand beside the upper end.
template <class Vector>
XOV_INLINE void reachAside(const RoundSpans& spans, const Vector& row, const Vector& height, Vector& x,
                           Vector& reach) {
  Vector part = height * spans.perDrop;
  keepGreater(part, Vector{});
  keepSmaller(part, Vector{} + 1.0F);
  x = part * spans.width + spans.x;
  const Vector away = row - (part * spans.drop + spans.y);
  reach = spans.radiusSquared - away * away;
  keepGreater(reach, Vector{});
  takeRoot(reach);
}

/// The places that a segment inks in rows from one on; `shifts` are those of the rows.
template <class Vector>
XOV_INLINE void findSpansWith(const RoundSpans& spans, int firstRow, int rows, const float* shifts,
                              std::int32_t* from, std::int32_t* to) {
  using Words = WordsOf<Vector>;
  constexpr float kRowHeight = 1.0F / InkBits::kBitRows;
  Vector numbers;
  for (int lane = 0; lane < kLanes<Vector>; ++lane)
    numbers[lane] = (float(lane) + 0.5F) * kRowHeight;
  for (int k = 0; k < rows; k += kLanes<Vector>) {
    Vector shift, x, reach;
    loadVector(shifts + k, shift);
    const Vector row = numbers + float(firstRow + k) * kRowHeight;
    const Vector height = row - spans.y;
    reachAside(spans, row, Vector(height - spans.lean), x, reach);
    x -= reach;
    toPlace(shift, spans.places, x);
    storeVector(XOV_CONVERT(Words, x), from + k);
    reachAside(spans, row, Vector(height + spans.lean), x, reach);
    x += reach;
    toPlace(shift, spans.places, x);
    storeVector(XOV_CONVERT(Words, x), to + k);
  }
}
XOV_VECTOR8_FUNCTION(void, findSpans,
                     (const RoundSpans& spans, int firstRow, int rows, const float* shifts, std::int32_t* from,
                      std::int32_t* to),
                     (spans, firstRow, rows, shifts, from, to))

/// The shifts of a chunk of rows from this one on.
const float* shiftsFrom(int row) {
  static const auto shifts = [] {
    std::array<float, InkBits::kBitRows + kChunk> all{};
    for (std::size_t k = 0; k < all.size(); ++k)
      all[k] = InkBits::shift(static_cast<int>(k));
    return all;
  }();
  return shifts.data() + row % InkBits::kBitRows;
}

/// Bits of a row of a pixel that lie above a part of the row's height, 0 <= part <= kBitColumns: that many of them,
/// evenly spread, and each time those of before and others.
std::uint32_t bitsAbove(int part) {
  static const auto all = [] {
    std::array<std::uint32_t, InkBits::kBitColumns + 1> masks{};
    for (std::uint32_t k = 0; k < InkBits::kBitColumns; ++k) {
      std::uint32_t mirrored = 0; // its five bits the other way around: 0, 16, 8, 24, 4, ...
      for (std::uint32_t bit = 1; bit < InkBits::kBitColumns; bit *= 2)
        mirrored = mirrored * 2 + (k / bit % 2);
      masks[k + 1] = masks[k] | std::uint32_t(1) << mirrored;
    }
    return masks;
  }();
  return all[static_cast<std::size_t>(part)];
}

/// The rows of places that may lie between two heights in pixels.
RowRange rowsBetween(double top, double bottom, int rows) {
  return {static_cast<int>(std::clamp(top * InkBits::kBitRows - 0.5, 0.0, double(rows))),
          static_cast<int>(std::clamp(bottom * InkBits::kBitRows + 1.5, 0.0, double(rows)))};
}

} // namespace

/// Cuts a segment at a box around the strip, beyond which nothing of it can be seen. False when it passes the box by.
bool TangledStroke::cut(TangledSegment& segment) const {
  const double margin = radius_ + kBeside / 2;
  const double dx = segment.to.x - segment.from.x, dy = segment.to.y - segment.from.y;
  double enters = 0, leaves = 1;
  const auto keep = [&](double start, double step, double low, double high) {
    if (step == 0) return start >= low && start <= high;
    const double a = (low - start) / step, b = (high - start) / step;
    enters = std::max(enters, std::min(a, b));
    leaves = std::min(leaves, std::max(a, b));
    return enters < leaves;
  };
  const double bottom = double(bits_.rows()) / InkBits::kBitRows + margin;
  if (!keep(segment.from.x, dx, -margin, bits_.columns() + margin)) return false;
  if (!keep(segment.from.y, dy, -margin, bottom)) return false;
  const TracePoint from = segment.from;
  if (enters > 0) {
    segment.from = {from.x + enters * dx, from.y + enters * dy};
    segment.buttFrom = false;
  }
  if (leaves < 1) {
    segment.to = {from.x + leaves * dx, from.y + leaves * dy};
    segment.buttTo = false;
  }
  return true;
}

void TangledStroke::add(TangledSegment segment) {
  if (segment.from.y > segment.to.y) {
    std::swap(segment.from, segment.to);
    std::swap(segment.buttFrom, segment.buttTo);
  }
  const double left = std::min(segment.from.x, segment.to.x), right = std::max(segment.from.x, segment.to.x);
  const double bottom = double(bits_.rows()) / InkBits::kBitRows;
  if (left > bits_.columns() + radius_ || right < -radius_) return;
  if (segment.from.y > bottom + radius_ || segment.to.y < -radius_) return;
  const double beside = radius_ + kBeside;
  const bool leadsAway = left < -beside || right > bits_.columns() + beside || segment.from.y < -beside ||
                         segment.to.y > bottom + beside;
  if (leadsAway && !cut(segment)) return;
  const RowRange rows = rowsBetween(segment.from.y - radius_, segment.to.y + radius_, bits_.rows());
  if (rows.first >= rows.last || bits_.firstOpen(rows.first) >= rows.last) return;
  const double width = segment.to.x - segment.from.x, drop = segment.to.y - segment.from.y;
  const bool isShort = std::abs(width) + drop + radius_ < kShort;
  if (isShort && runsOverFullInk(left, right, rows)) return;
  bits_.touch(rows);
  const bool isLevel = std::abs(width) > kLevelLength && drop <= kLevel * std::abs(width);
  if (!isLevel && !segment.buttFrom && !segment.buttTo) return addRound(segment.from, segment.to, rows);
  if (isLevel)
    addLevel(segment.from, segment.to);
  else
    addRectangle(segment.from, segment.to, std::hypot(width, drop));
  if (!segment.buttFrom) addDisc(segment.from);
  if (!segment.buttTo) addDisc(segment.to);
}

bool TangledStroke::runsOverFullInk(double left, double right, RowRange rows) const {
  const auto column = [this](double x) { return static_cast<int>(std::clamp(x, 0.0, double(bits_.columns() - 1))); };
  return bits_.isFull({rows.first / InkBits::kBitRows, (rows.last - 1) / InkBits::kBitRows + 1},
                      column(left - radius_), column(right + radius_));
}

void TangledStroke::addDisc(TracePoint middle) {
  addRound(middle, middle, rowsBetween(middle.y - radius_, middle.y + radius_, bits_.rows()));
}

/// From an upper end to a lower one.
void TangledStroke::addRound(TracePoint from, TracePoint to, RowRange rows) {
  const double width = to.x - from.x, drop = to.y - from.y;
  const double length = std::sqrt(width * width + drop * drop);
  RoundSpans spans;
  spans.x = static_cast<float>(from.x);
  spans.y = static_cast<float>(from.y);
  spans.width = static_cast<float>(width);
  spans.drop = static_cast<float>(drop);
  spans.perDrop = 1 / std::max(spans.drop, kLeastDrop);
  spans.lean = static_cast<float>(length > 0 ? radius_ * width / length : 0.0);
  spans.radiusSquared = static_cast<float>(radius_ * radius_);
  spans.places = static_cast<float>(bits_.places());
  std::int32_t begins[kChunk], ends[kChunk];
  for (int first = bits_.firstOpen(rows.first); first < rows.last;) {
    const int count = std::min(kChunk, rows.last - first);
    findSpans(spans, first, count, shiftsFrom(first), begins, ends);
    for (int k = 0; k < count; ++k)
      bits_.addSpan(first + k, static_cast<unsigned>(begins[k]), static_cast<unsigned>(ends[k]));
    first = bits_.firstOpen(first + count);
  }
}

/// The part between the ends of a nearly level segment. Along it an edge stays in one row of places for many pixels,
/// so of that row as many places are inked as it covers.
void TangledStroke::addLevel(TracePoint from, TracePoint to) {
  if (from.x > to.x) std::swap(from, to);
  const double slope = (to.y - from.y) / (to.x - from.x);
  const double half = radius_ * std::sqrt(1 + slope * slope);
  const double left = std::max(from.x, 0.0), right = std::min(to.x, double(bits_.columns()));
  constexpr int kParts = InkBits::kBitRows * InkBits::kBitColumns; // of a pixel's height
  const double lowest = double(bits_.rows()) * InkBits::kBitColumns;
  for (int column = static_cast<int>(left); column < right; ++column) {
    const double begin = std::max(left - column, 0.0), end = std::min(right - column, 1.0);
    const double middle = from.y + slope * (column + (begin + end) / 2 - from.x);
    const auto top = static_cast<int>(std::clamp((middle - half) * kParts + 0.5, 0.0, lowest));
    const auto bottom = static_cast<int>(std::clamp((middle + half) * kParts + 0.5, 0.0, lowest));
    const auto firstBit = static_cast<int>(begin * InkBits::kBitColumns + 0.5);
    const auto lastBit = static_cast<int>(end * InkBits::kBitColumns + 0.5);
    if (firstBit >= lastBit || top >= bottom) continue;
    const std::uint32_t inside =
        (~std::uint32_t(0) << firstBit) & (~std::uint32_t(0) >> (InkBits::kBitColumns - lastBit));
    const int firstRow = top / InkBits::kBitColumns, lastRow = (bottom - 1) / InkBits::kBitColumns;
    for (int row = firstRow; row <= lastRow; ++row) {
      const int above = std::min(bottom - row * InkBits::kBitColumns, InkBits::kBitColumns);
      const int notYet = std::max(top - row * InkBits::kBitColumns, 0);
      bits_.addBits(row, column, bitsAbove(above) & ~bitsAbove(notYet) & inside);
    }
  }
}

/// The part between the ends of any other segment.
void TangledStroke::addRectangle(TracePoint from, TracePoint to, double length) {
  if (!(length > 0)) return;
  const double along = (to.x - from.x) / length, down = (to.y - from.y) / length;
  const double rise = radius_ * std::abs(along);
  const RowRange rows = rowsBetween(from.y - rise, to.y + rise, bits_.rows());
  const double places = bits_.places();
  const auto placeOf = [&](double x, int row) {
    return static_cast<unsigned>(
        std::clamp((from.x + x) * InkBits::kBitColumns + 1 - double(InkBits::shift(row)), 0.0, places));
  };
  for (int row = rows.first; row < rows.last; ++row) {
    const double below = (row + 0.5) / InkBits::kBitRows - from.y;
    double low = -kFar, high = kFar;
    if (down > kLeastPart) { // between the two long sides
      low = (below * along - radius_) / down;
      high = (below * along + radius_) / down;
    } else if (std::abs(below * along) > radius_) {
      continue;
    }
    if (std::abs(along) > kLeastPart) { // between the two ends
      const double atFrom = -below * down / along, atTo = (length - below * down) / along;
      low = std::max(low, std::min(atFrom, atTo));
      high = std::min(high, std::max(atFrom, atTo));
    } else if (below * down < 0 || below * down > length) {
      continue;
    }
    bits_.addSpan(row, placeOf(low, row), placeOf(high, row));
  }
}

} // namespace xov
