#include "XOV_Graphics/platform/trace/TraceInk.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>

namespace xov {

namespace {

constexpr int kFull = 255;
constexpr int kRowsAhead = 16; // whose pixels are asked for: the rows of a picture lie too far apart to be foreseen
constexpr int kEveryOther = 0x00FF00FF; // two of a pixel's four channels

/// value / 255, rounded; exact for value <= 255².
template <class Number>
XOV_INLINE void divideBy255(Number& value) {
  value += 128;
  value = (value + (value >> 8)) >> 8;
}

template <class Vector>
struct Ink {
  using Words = WordsOf<Vector>;
  using Shorts = ShortsOf<Vector>;

  Words solid;
  Shorts even, odd; // channels
  std::uint16_t alpha;

  XOV_INLINE Ink(std::uint32_t color, std::uint32_t alphaOfInk)
      : solid(Words{} + static_cast<std::int32_t>(color)),
        even(XOV_SAME_BITS(Shorts, solid & kEveryOther)),
        odd(XOV_SAME_BITS(Shorts, (solid >> 8) & kEveryOther)),
        alpha(static_cast<std::uint16_t>(alphaOfInk)) {}

  /// What a coverage adds to each channel, and the part of 255 that it leaves of what is there.
  struct Share {
    Shorts even, odd, open;
  };
  /// Coverage is 0 to 255 in each lane.
  XOV_INLINE void share(const Words& coverage, Share& found) const {
    Shorts covered = XOV_SAME_BITS(Shorts, coverage | coverage << 16);
    if (alpha != kFull) {
      covered *= alpha;
      divideBy255(covered);
    }
    found.open = kFull - covered;
    found.even = even * covered;
    found.odd = odd * covered;
  }
  XOV_INLINE static void blend(const Share& share, Words& pixels) {
    Shorts mixedEven = share.even + XOV_SAME_BITS(Shorts, pixels & kEveryOther) * share.open;
    Shorts mixedOdd = share.odd + XOV_SAME_BITS(Shorts, (pixels >> 8) & kEveryOther) * share.open;
    divideBy255(mixedEven);
    divideBy255(mixedOdd);
    pixels = XOV_SAME_BITS(Words, mixedEven) | XOV_SAME_BITS(Words, mixedOdd) << 8;
  }
};

/// The running sums of columns down to some row.
template <class Vector>
struct RunningSums {
  using Words = WordsOf<Vector>;
  Words inked = {};   // in units of a row of a sub-column
  Words carried = {}; // the parts of the row before, which that row did not cover

  /// True where a row changes nothing.
  XOV_INLINE bool isAsBefore(const std::int32_t* changes) const {
    Words row;
    loadVector(changes, row);
    return inNoLane((row | carried) != 0);
  }
  XOV_INLINE void addRow(std::int32_t* changes) {
    constexpr int kAbove = 32 - kEdgeShift;
    Words row;
    loadVector(changes, row);
    storeVector(Words{}, changes);
    const Words part = row << kAbove >> kAbove;
    inked += ((row - part) >> (kEdgeShift - kRowBits)) - part + carried;
    carried = part;
  }
};

/// Lays some vectors of columns, of which `changes` and `pixels` are the first in the first row; `columns` of them
/// are pixels.
template <int parts, class Vector>
XOV_INLINE void layVectors(const Ink<Vector>& ink, std::int32_t* changes, int rows, int perColumn, int columns,
                           std::uint32_t* pixels, std::ptrdiff_t stride) {
  using Words = WordsOf<Vector>;
  const Words full = Words{} + perColumn * kRowUnit;
  const float scale = float(kFull) / float(perColumn * kRowUnit);
  constexpr int kColumns = parts * kLanes<Vector>;
  RunningSums<Vector> sums[parts];
  typename Ink<Vector>::Share share = {};
  for (int row = 0; row < rows; ++row, changes += kInkColumns, pixels += stride) {
    std::uint32_t few[kColumns]; // pixels that are fewer than the lanes
    std::uint32_t* const line = columns < kColumns ? few : pixels;
    if (line == few) std::copy_n(pixels, columns, few);
    XOV_PREFETCH(pixels + kRowsAhead * stride, 1);
    for (int part = 0; part < parts; ++part) {
      const int lane = part * kLanes<Vector>;
      const Words& inked = sums[part].inked;
      // A few columns mostly lie inside a line's ink, where row after row is covered alike.
      const bool isAsBefore = parts == 1 && row > 0 && sums[part].isAsBefore(changes);
      if (!isAsBefore) sums[part].addRow(changes + lane);
      if (inNoLane(inked != 0)) continue;
      if (ink.alpha == kFull && inNoLane(inked != full)) {
        storeVector(ink.solid, line + lane);
        continue;
      }
      Words under;
      loadVector(line + lane, under);
      if (!isAsBefore) ink.share(XOV_CONVERT(Words, XOV_CONVERT(Vector, inked) * scale + 0.5F), share);
      Ink<Vector>::blend(share, under);
      storeVector(under, line + lane);
    }
    if (line == few) std::copy_n(few, columns, pixels);
  }
  std::fill_n(changes, kColumns, 0); // behind the last row
}

template <class Vector>
XOV_INLINE void layInkWith(std::uint32_t color, std::uint32_t alpha, std::int32_t* changes, RowRange rows,
                           int perColumn, const InkedColumns& columns, std::uint32_t* pixels, std::ptrdiff_t stride) {
  constexpr int kParts = kInkColumns / kLanes<Vector>, kWidth = kLanes<Vector>;
  const Ink<Vector> ink(color, alpha);
  const int first = columns.first / kWidth, last = (columns.last + kWidth - 1) / kWidth;
  changes += std::ptrdiff_t(rows.first) * kInkColumns;
  const int count = std::max(rows.last - rows.first, 0);
  if (2 * (last - first) > kParts) {
    layVectors<kParts>(ink, changes, count, perColumn, columns.all, pixels, stride);
    return;
  }
  for (int part = first; part < last; ++part) {
    const int lane = part * kWidth;
    layVectors<1>(ink, changes + lane, count, perColumn, std::min(columns.all - lane, kWidth), pixels + lane, stride);
  }
}

XOV_VECTOR8_FUNCTION(void, layInk,
                     (std::uint32_t color, std::uint32_t alpha, std::int32_t* changes, RowRange rows, int perColumn,
                      const InkedColumns& columns, std::uint32_t* pixels, std::ptrdiff_t stride),
                     (color, alpha, changes, rows, perColumn, columns, pixels, stride))

} // namespace

TraceInk::TraceInk(const QColor& color)
    : color_(color.rgb()),
      alpha_(static_cast<std::uint32_t>(qAlpha(color.rgba()))) {}

void TraceInk::lay(std::int32_t* changes, RowRange rows, int perColumn, const InkedColumns& columns,
                   std::uint32_t* pixels, std::ptrdiff_t stride) const {
  layInk(color_, alpha_, changes, rows, perColumn, columns, pixels, stride);
}

} // namespace xov
