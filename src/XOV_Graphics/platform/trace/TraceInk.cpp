#include "XOV_Graphics/platform/trace/TraceInk.h"

#include "XOV_Graphics/base/Lanes.h"

#include <algorithm>
#include <utility>

namespace xov {

namespace {

constexpr int kFull = 255;
constexpr int kRowsAhead = 16; // whose pixels are asked for: the rows of a picture lie too far apart to be foreseen
constexpr int kEveryOther = 0x00FF00FF; // two of a pixel's four channels

/// (value - kHalf) / 255, rounded; exact for value - kHalf <= 255².
constexpr int kHalf = 128;
template <class Number>
XOV_INLINE void divideBy255(Number& value) {
  value = (value + (value >> 8)) >> 8;
}

template <class Vector>
struct Ink {
  using Words = WordsOf<Vector>;
  using Shorts = ShortsOf<Vector>;

  Words solid;
  Shorts even, odd; // channels
  Words full;       // what full coverage sums up to
  Vector scale;     // from such sums to 255
  std::uint16_t alpha;

  XOV_INLINE Ink(const Words& colors, const Words& fullSums, std::uint32_t alphaOfInk)
      : solid(colors),
        even(XOV_SAME_BITS(Shorts, solid & kEveryOther)),
        odd(XOV_SAME_BITS(Shorts, (solid >> 8) & kEveryOther)),
        full(fullSums),
        scale((Vector{} + float(kFull)) / XOV_CONVERT(Vector, fullSums)),
        alpha(static_cast<std::uint16_t>(alphaOfInk)) {}

  /// What a coverage adds to each channel, and kHalf, and the part of 255 that it leaves of what is there.
  struct Share {
    Shorts even, odd, open;
  };
  /// Coverage is 0 to 255 in each lane.
  XOV_INLINE void share(const Words& coverage, Share& found) const {
    Shorts covered = XOV_SAME_BITS(Shorts, coverage | coverage << 16);
    if (alpha != kFull) {
      covered = covered * alpha + kHalf;
      divideBy255(covered);
    }
    found.open = kFull - covered;
    found.even = even * covered + kHalf;
    found.odd = odd * covered + kHalf;
  }
  XOV_INLINE static void blend(const Share& share, Words& pixels) {
    Shorts mixedEven = share.even + XOV_SAME_BITS(Shorts, pixels & kEveryOther) * share.open;
    Shorts mixedOdd = share.odd + XOV_SAME_BITS(Shorts, (pixels >> 8) & kEveryOther) * share.open;
    divideBy255(mixedEven);
    divideBy255(mixedOdd);
    pixels = XOV_SAME_BITS(Words, mixedEven) | XOV_SAME_BITS(Words, mixedOdd) << 8;
  }
};

/// A vector of columns down to some row. Rows that change nothing are as the one before, which most are inside a
/// line's ink and beside it.
template <class Vector>
struct InkedLanes {
  using Words = WordsOf<Vector>;
  enum class Look { Clear, Mixed, Solid };

  Words inked = {};   // in units of a row of a sub-column
  Words carried = {}; // the parts of the row before, which that row did not cover
  Look look = Look::Clear;
  typename Ink<Vector>::Share share = {}; // of a mixed look

  XOV_INLINE void takeRow(const Ink<Vector>& ink, std::int32_t* changes) {
    constexpr int kAbove = 32 - kEdgeShift;
    Words row;
    loadVector(changes, row);
    if (areZero(row | carried)) return;
    storeVector(Words{}, changes);
    const Words part = row << kAbove >> kAbove;
    inked += ((row - part) >> (kEdgeShift - kRowBits)) - part + carried;
    carried = part;
    if (areZero(inked)) {
      look = Look::Clear;
    } else if (ink.alpha == kFull && areZero(inked - ink.full)) {
      look = Look::Solid;
    } else {
      look = Look::Mixed;
      ink.share(XOV_CONVERT(Words, XOV_CONVERT(Vector, inked) * ink.scale + 0.5F), share);
    }
  }
  XOV_INLINE void lay(const Ink<Vector>& ink, std::uint32_t* pixels) const {
    if (look == Look::Solid) {
      storeVector(ink.solid, pixels);
    } else if (look == Look::Mixed) {
      Words under;
      loadVector(pixels, under);
      Ink<Vector>::blend(share, under);
      storeVector(under, pixels);
    }
  }
};

/// The ink of all columns.
template <class Vector>
struct SameInk {
  Ink<Vector> ink;

  template <int parts>
  XOV_INLINE const SameInk& from(int) const {
    return *this;
  }
  XOV_INLINE const Ink<Vector>& of(int) const { return ink; }
};

/// Some vectors of inks.
template <class Vector, int parts>
struct VectorInks {
  Ink<Vector> inks[parts];

  XOV_INLINE const Ink<Vector>& of(int part) const { return inks[part]; }
};

/// The inks of columns that have one each.
template <class Vector>
struct OwnInks {
  const ColumnInks& columns;

  template <int parts>
  XOV_INLINE VectorInks<Vector, parts> from(int column) const {
    return vectors<parts>(std::size_t(column), std::make_integer_sequence<int, parts>());
  }

private:
  template <int parts, int... part>
  XOV_INLINE VectorInks<Vector, parts> vectors(std::size_t column, std::integer_sequence<int, part...>) const {
    return {{one(column + std::size_t(part * kLanes<Vector>))...}};
  }
  XOV_INLINE Ink<Vector> one(std::size_t column) const {
    WordsOf<Vector> colors, full;
    loadVector(columns.colors.data() + column, colors);
    loadVector(columns.full.data() + column, full);
    return {colors, full, columns.alpha};
  }
};

/// Lays some vectors of columns, of which `changes` and `pixels` are the first in the first row; `columns` of them
/// are pixels, which are all of them unless it `isCut`.
template <class Vector, int parts, bool isCut, class Inks>
XOV_INLINE void layRows(const Inks& inks, std::int32_t* changes, int rows, int columns, std::uint32_t* pixels,
                        std::ptrdiff_t stride) {
  constexpr int kColumns = parts * kLanes<Vector>;
  InkedLanes<Vector> lanes[parts];
  for (int row = 0; row < rows; ++row, changes += kInkColumns, pixels += stride) {
    std::uint32_t few[kColumns]; // pixels that are fewer than the lanes
    std::uint32_t* const line = isCut ? few : pixels;
    if constexpr (isCut) std::copy_n(pixels, columns, few);
    XOV_PREFETCH(pixels + kRowsAhead * stride, 1);
    for (int part = 0; part < parts; ++part) {
      lanes[part].takeRow(inks.of(part), changes + part * kLanes<Vector>);
      lanes[part].lay(inks.of(part), line + part * kLanes<Vector>);
    }
    if constexpr (isCut) std::copy_n(few, columns, pixels);
  }
  std::fill_n(changes, kColumns, 0); // behind the last row
}

template <class Vector, int parts, class Inks>
XOV_INLINE void layVectors(const Inks& inks, std::int32_t* changes, int rows, int columns, std::uint32_t* pixels,
                           std::ptrdiff_t stride) {
  if (columns < parts * kLanes<Vector>)
    return layRows<Vector, parts, true>(inks, changes, rows, columns, pixels, stride);
  layRows<Vector, parts, false>(inks, changes, rows, columns, pixels, stride);
}

template <class Vector, class Inks>
XOV_INLINE void layColumns(const Inks& inks, std::int32_t* changes, RowRange rows, const InkedColumns& columns,
                           std::uint32_t* pixels, std::ptrdiff_t stride) {
  constexpr int kWidth = kLanes<Vector>, kAll = kInkColumns / kWidth;
  changes += std::ptrdiff_t(rows.first) * kInkColumns;
  const int count = std::max(rows.last - rows.first, 0);
  if (2 * (columns.last - columns.first) > kInkColumns) {
    layVectors<Vector, kAll>(inks.template from<kAll>(0), changes, count, columns.all, pixels, stride);
    return;
  }
  // From the first one with ink on, so that a few lie in one vector.
  for (int first = columns.first; first < columns.last; first += kWidth) {
    const int lane = std::min(first, kInkColumns - kWidth);
    layVectors<Vector, 1>(inks.template from<1>(lane), changes + lane, count, std::min(columns.all - lane, kWidth),
                          pixels + lane, stride);
  }
}

template <class Vector>
XOV_INLINE void layInkWith(std::uint32_t color, std::uint32_t alpha, std::int32_t* changes, RowRange rows,
                           int perColumn, const InkedColumns& columns, std::uint32_t* pixels, std::ptrdiff_t stride) {
  using Words = WordsOf<Vector>;
  const SameInk<Vector> ink{{Words{} + static_cast<std::int32_t>(color), Words{} + perColumn * kRowUnit, alpha}};
  layColumns<Vector>(ink, changes, rows, columns, pixels, stride);
}

XOV_VECTOR_FUNCTION(void, layInk,
                    (std::uint32_t color, std::uint32_t alpha, std::int32_t* changes, RowRange rows, int perColumn,
                     const InkedColumns& columns, std::uint32_t* pixels, std::ptrdiff_t stride),
                    (color, alpha, changes, rows, perColumn, columns, pixels, stride))

template <class Vector>
XOV_INLINE void layInksWith(const ColumnInks& inks, std::int32_t* changes, RowRange rows, const InkedColumns& columns,
                            std::uint32_t* pixels, std::ptrdiff_t stride) {
  layColumns<Vector>(OwnInks<Vector>{inks}, changes, rows, columns, pixels, stride);
}

XOV_VECTOR_FUNCTION(void, layInks,
                    (const ColumnInks& inks, std::int32_t* changes, RowRange rows, const InkedColumns& columns,
                     std::uint32_t* pixels, std::ptrdiff_t stride),
                    (inks, changes, rows, columns, pixels, stride))

} // namespace

TraceInk::TraceInk(const QColor& color)
    : color_(color.rgb()),
      alpha_(static_cast<std::uint32_t>(qAlpha(color.rgba()))) {}

void TraceInk::lay(std::int32_t* changes, RowRange rows, int perColumn, const InkedColumns& columns,
                   std::uint32_t* pixels, std::ptrdiff_t stride) const {
  layInk(color_, alpha_, changes, rows, perColumn, columns, pixels, stride);
}

void ColumnInks::lay(std::int32_t* changes, RowRange rows, const InkedColumns& columns, std::uint32_t* pixels,
                     std::ptrdiff_t stride) const {
  layInks(*this, changes, rows, columns, pixels, stride);
}

} // namespace xov
