#pragma once

#include "XOV_Graphics/platform/trace/TraceUnion.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace xov {

/// The ink of a strip of kInkColumns columns as bits: each pixel is sampled at kBitRows × kBitColumns places, and
/// what has been inked stays so. The union of any number of shapes is found without keeping one of them.
///
///     row 0   . . # # # # . .     bit k of row r stands for the place (k + shift(r)) / kBitColumns right of the
///     row 1   . . . # # # . .     pixel's left edge: no two rows share one, so that a steep edge falls between
///     row 2   . . . # # # # .     kBitRows · kBitColumns different ones
class InkBits {
public:
  static constexpr int kBitRows = 16;    ///< of a pixel
  static constexpr int kBitColumns = 32; ///< of a pixel
  static constexpr int kPlaces = kBitRows * kBitColumns;

  explicit InkBits(int pixelRows);

  /// Begins an empty strip of so many columns of pixels.
  void reset(int columns);

  int rows() const { return rows_; }
  int columns() const { return columns_; }
  /// The places inside [0, columns) × kBitColumns.
  int places() const { return columns_ * kBitColumns; }

  /// How far the places of a row lie right of whole ones.
  static float shift(int row) { return (float(row * kShiftStep % kBitRows) + 0.5F) / kBitRows; }

  /// The first row from this one on that still has places without ink; rows() when there is none.
  int firstOpen(int row) { return nextOpen_[static_cast<std::size_t>(row)] == row ? row : findOpen(row); }
  bool isFull() { return firstOpen(0) == rows_; }

  /// True when all pixels of these rows and columns of pixels, and maybe one beside, are inked whole.
  bool isFull(RowRange pixelRows, int firstColumn, int lastColumn) const {
    for (int row = pixelRows.first; row < pixelRows.last; ++row) {
      for (int word = firstColumn / kPixels; word <= lastColumn / kPixels; ++word) {
        if (fullRows_[wordAt(row, word)] < kBitRows) return false;
      }
    }
    return true;
  }

  /// Says that these rows of places may get ink; before they do.
  void touch(RowRange rows) {
    touched_.first = std::min(touched_.first, rows.first);
    touched_.last = std::max(touched_.last, rows.last);
  }
  /// Inks the places from <= k < to of a row, all inside the strip.
  void addSpan(int row, unsigned from, unsigned to) {
    if (from >= to) return;
    if (to - from > kWordBits) return addLongSpan(row, from, to);
    const std::uint64_t bits = kAll >> (kWordBits - (to - from));
    const unsigned along = from % kWordBits;
    // Behind the last word of a row no bits are left.
    addBits(row, int(from / kWordBits), bits << along, bits >> 1 >> (kWordBits - 1 - along));
  }
  /// Inks some places of one pixel in a row: bit k is place k.
  void addBits(int row, int column, std::uint32_t bits) {
    addBits(row, column / kPixels, std::uint64_t(bits) << (column % kPixels * kBitColumns), 0);
  }

  /// Hands over how many places of each pixel are inked, as changes from row to row (see TraceUnion.h) of columns of
  /// kPlaces sub-columns, and empties the strip. Returns the rows that may have some.
  RowRange takeChanges(std::int32_t* changes);

private:
  static constexpr int kShiftStep = 7; // shares no factor with kBitRows

  static constexpr std::uint64_t kAll = ~std::uint64_t(0);
  static constexpr unsigned kWordBits = 64;
  static constexpr int kPixels = int(kWordBits) / kBitColumns; // of a word
  static constexpr int kWords = kInkColumns / kPixels;         // of a row

  static std::size_t wordAt(int row, int word) {
    return static_cast<std::size_t>(row) * kWords + static_cast<std::size_t>(word);
  }
  int findOpen(int row);
  void addLongSpan(int row, unsigned from, unsigned to);
  void noteFull(int row, int word);
  void setBeside(std::uint64_t bits);

  /// Inks places of a word and of the next.
  void addBits(int row, int word, std::uint64_t here, std::uint64_t next) {
    std::uint64_t* const words = words_.data() + wordAt(row, word);
    const std::uint64_t before = words[0], nextBefore = words[1];
    here |= before;
    next |= nextBefore;
    words[0] = here;
    words[1] = next;
    if (here == kAll && before != kAll) noteFull(row, word);
    if (next == kAll && nextBefore != kAll) noteFull(row, word + 1);
  }

  int rows_ = 0; // of places
  int columns_ = 0;
  RowRange touched_;
  std::vector<std::uint64_t> words_;    // kWords a row, and one more
  std::vector<std::uint8_t> openWords_; // of a row: how many have places without ink
  std::vector<std::uint8_t> fullRows_;  // of the pixels of a word: how many of their rows have none
  std::vector<std::int32_t> nextOpen_;  // of a row: itself, or one on the way to the next that is open
};

} // namespace xov
