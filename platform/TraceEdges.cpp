#include "platform/TraceEdges.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Rounded times may lie this far from their straight piece, in sub-columns, before each is looked up by itself.
constexpr double kStraightTolerance = 0.125;

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
    const double perEdge = strip.subWidth() / width;
    const double start = (edge(firstEdge) - left) / width;
    const std::int64_t base = piece.first - range.begin;
    const std::int64_t lowest = std::max<std::int64_t>(base + 1, 1);
    const std::int64_t highest = std::min(base + piece.count - 1, range.size() - 1);
    for (int k = 0; k < count; ++k) {
      const double position = start + k * perEdge;
      auto whole = static_cast<std::int64_t>(position);
      whole += double(whole) < position;
      const std::int64_t sample = std::clamp(whole + base, lowest, highest);
      index[slot + k] = static_cast<std::int32_t>(sample);
      if (fraction == nullptr) continue;
      const double along = position - double(sample - base - 1);
      fraction[slot + k] = static_cast<float>(std::clamp(along, 0.0, 1.0));
    }
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
      if (write.projection.column(middle) < edge) low = middle + 1;
      else high = middle;
    }
    sample = low;
    write.writeBetween(k, firstEdge + k, sample);
  }
}

} // namespace

void findEdges(const TraceProjection& projection, const TraceStrip& strip, SampleRange range, int firstEdge, int count,
               std::int32_t* index, float* fraction) {
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
    if (piece.count < 2 || piece.step <= 0) continue;
    const double right = projection.columnOfTime(piece.start + double(piece.count - 1) * piece.step);
    const bool isLast = piece.first + piece.count >= range.end;
    const double reach = (right - strip.curveEdge(firstEdge)) / strip.subWidth();
    const int covered = isLast ? count : static_cast<int>(std::floor(std::clamp(reach, -1.0, double(count)))) + 1;
    const int through = std::min(covered, count);
    if (through <= done) continue;
    write.writeStraight(done, firstEdge + done, through - done, piece);
    done = through;
  }
  for (; done < count; ++done) write.writeBetween(done, firstEdge + done, range.end - 1);
}

} // namespace xov
