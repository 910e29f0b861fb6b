#include "XOV_Graphics/platform/trace/TraceEdges.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Rounded times may lie this far from their straight piece, in sub-columns, before each is looked up by itself.
constexpr double kStraightTolerance = 0.125;

// Up to here positions counted from a vector's first one keep a thousandth of a sample in single precision.
constexpr double kLongestSingle = 8192;

/// The numbers 0, 1, 2, ...
template <class Vector>
XOV_INLINE void countUp(Vector& numbers) {
  for (int lane = 0; lane < kLanes<Vector>; ++lane)
    numbers[lane] = float(lane);
}

/// Splits positions start + k · step, 0 <= k < count, into the whole number above, held between two bounds, and how
/// far the position has come towards it.
template <class Vector>
XOV_INLINE void writePositionsWith(double start, double step, int count, std::int32_t lowest, std::int32_t highest,
                                   std::int32_t* index, float* fraction) {
  constexpr int kWidth = kLanes<Vector>;
  using Words = WordsOf<Vector>;
  Vector steps;
  countUp(steps);
  steps *= float(step);
  const bool isShort = step * kWidth < kLongestSingle;
  int k = 0;
  while (k < count) {
    const double first = start + k * step;
    if (isShort && k + kWidth <= count && first >= lowest - 1 && first + kWidth * step < highest) {
      const auto whole = static_cast<std::int32_t>(first);
      const Vector position = steps + float(first - whole);
      const Words before = __builtin_convertvector(position, Words);
      storeVector(before + (whole + 1), index + k);
      if (fraction != nullptr) storeVector(position - __builtin_convertvector(before, Vector), fraction + k);
      k += kWidth;
      continue;
    }
    const double position = std::clamp(first, double(lowest - 1), double(highest));
    const std::int32_t sample = std::min(static_cast<std::int32_t>(position) + 1, highest);
    index[k] = sample;
    if (fraction != nullptr) fraction[k] = static_cast<float>(position - double(sample - 1));
    ++k;
  }
}
XOV_VECTOR_FUNCTION(void, writePositions,
                    (double start, double step, int count, std::int32_t lowest, std::int32_t highest,
                     std::int32_t* index, float* fraction),
                    (start, step, count, lowest, highest, index, fraction))

struct EdgeWriter {
  const TraceProjection& projection;
  const TraceStrip& strip;
  SampleRange range;
  std::int32_t* index;
  float* fraction;

  double edge(int j) const { return strip.curveEdge(j); }

  void writeBetween(int slot, int j, std::int64_t sample) const {
    index[slot] = static_cast<std::int32_t>(sample - range.begin);
    if (fraction == nullptr) return;
    const double before = projection.column(sample - 1);
    const double width = projection.column(sample) - before;
    const double along = width > 0 ? (edge(j) - before) / width : 1.0;
    fraction[slot] = static_cast<float>(std::clamp(along, 0.0, 1.0));
  }

  /// Edges that lie right of the first sample of a straight piece and not right of its last one.
  void writeStraight(int slot, int firstEdge, int count, const TimePiece& piece) const {
    const double left = projection.columnOfTime(piece.start);
    const double width = piece.step * projection.columnsPerTime();
    const double base = double(piece.first - range.begin);
    const double start = (edge(firstEdge) - left) / width + base;
    const double perEdge = strip.subWidth() / width;
    const auto lowest = static_cast<std::int32_t>(std::max(base, 0.0)) + 1;
    const auto highest = static_cast<std::int32_t>(std::min(base + double(piece.count), double(range.size()))) - 1;
    writePositions(start, perEdge, count, lowest, std::max(lowest, highest), index + slot,
                   fraction == nullptr ? nullptr : fraction + slot);
  }
};

/// Looks every edge up in the samples' own columns, in growing steps from the one before.
void findOneByOne(const EdgeWriter& write, int firstEdge, int count) {
  std::int64_t sample = write.range.begin + 1;
  const std::int64_t lastSample = write.range.end - 1;
  for (int k = 0; k < count; ++k) {
    const double edge = write.edge(firstEdge + k);
    std::int64_t step = 1;
    std::int64_t low = sample;
    while (low + step < lastSample && write.projection.column(low + step) < edge) {
      low += step;
      step *= 2;
    }
    std::int64_t high = std::min(low + step, lastSample);
    while (low < high) {
      const std::int64_t middle = low + (high - low) / 2;
      if (write.projection.column(middle) < edge)
        low = middle + 1;
      else
        high = middle;
    }
    sample = low;
    write.writeBetween(k, firstEdge + k, sample);
  }
}

} // namespace

void findEdges(const TraceProjection& projection, const TraceStrip& strip, SampleRange range, int firstEdge,
               int count, std::int32_t* index, float* fraction) {
  const EdgeWriter write{projection, strip, range, index, fraction};
  if (!projection.isStraight(range.begin, range.end - 1, kStraightTolerance * strip.subWidth())) {
    return findOneByOne(write, firstEdge, count);
  }
  const std::vector<TimePiece>& pieces = projection.pieces();
  int done = 0;
  for (std::size_t p = projection.pieceAt(range.begin); done < count && p < pieces.size(); ++p) {
    const TimePiece& piece = pieces[p];
    // Edges between the last sample of the piece before and the first one of this.
    const double left = projection.columnOfTime(piece.start);
    while (done < count && piece.first > range.begin && write.edge(firstEdge + done) <= left) {
      write.writeBetween(done, firstEdge + done, std::min(piece.first, range.end - 1));
      ++done;
    }
    if (piece.count < 2 || !(piece.step * projection.columnsPerTime() > 0)) continue;
    const double right = projection.columnOfTime(piece.start + double(piece.count - 1) * piece.step);
    const bool isLast = piece.first + piece.count >= range.end;
    const double reach = (right - strip.curveEdge(firstEdge)) / strip.subWidth();
    const int covered = isLast ? count : static_cast<int>(std::floor(std::clamp(reach, -1.0, double(count)))) + 1;
    const int through = std::min(covered, count);
    if (through <= done) continue;
    write.writeStraight(done, firstEdge + done, through - done, piece);
    done = through;
  }
  for (; done < count; ++done)
    write.writeBetween(done, firstEdge + done, range.end - 1);
}

} // namespace xov
