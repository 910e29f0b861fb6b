#include "XOV_Graphics/platform/trace/InkBits.h"

#include "XOV_Graphics/base/Lanes.h"

#include <bit>
#include <numeric>

namespace xov {

namespace {

constexpr int kWordPixels = 64 / InkBits::kBitColumns;
constexpr int kRowWords = kInkColumns / kWordPixels;
static_assert(InkBits::kPlaces < 1 << (31 - kEdgeShift), "the changes of a pixel have room for all of its places");

/// The halves of words lie in memory the way that the processor has them.
XOV_INLINE void orderPixels(Int4& count) {
  if constexpr (std::endian::native == std::endian::big) count = XOV_PICK(count, count, 1, 0, 3, 2);
}
XOV_INLINE void orderPixels(Int8& count) {
  if constexpr (std::endian::native == std::endian::big) count = XOV_PICK(count, count, 1, 0, 3, 2, 5, 4, 7, 6);
}

/// The bits that are set in the rows of as many pixels as there are lanes. They are emptied.
template <class Vector>
XOV_INLINE void countBits(std::uint64_t* words, WordsOf<Vector>& count) {
  using Words = WordsOf<Vector>;
  constexpr int kRowsOfBytes = 8; // whose counts of at most 64 leave a byte's sign alone
  Words halves = {};
  for (int row = 0; row < InkBits::kBitRows; row += kRowsOfBytes) {
    Words bytes = {};
    for (int k = 0; k < kRowsOfBytes; ++k, words += kRowWords) {
      Words bits;
      loadVector(words, bits);
      storeVector(Words{}, words);
      constexpr int kEveryFourth = 0x11111111;
      const Words nibbles = (bits & kEveryFourth) + ((bits >> 1) & kEveryFourth) + ((bits >> 2) & kEveryFourth) +
                            ((bits >> 3) & kEveryFourth);
      bytes += (nibbles & 0x0F0F0F0F) + ((nibbles >> 4) & 0x0F0F0F0F);
    }
    halves += (bytes & 0x00FF00FF) + ((bytes >> 8) & 0x00FF00FF);
  }
  count = (halves & 0xFFFF) + (halves >> 16);
  orderPixels(count);
}

template <class Vector>
XOV_INLINE void takeCountsWith(std::uint64_t* words, RowRange rows, std::int32_t* changes) {
  using Words = WordsOf<Vector>;
  constexpr int kParts = kInkColumns / kLanes<Vector>;
  Words above[kParts] = {};
  for (int row = rows.first; row < rows.last; ++row) {
    for (int part = 0; part < kParts; ++part) {
      const int lane = part * kLanes<Vector>;
      Words count;
      countBits<Vector>(words + std::ptrdiff_t(row) * InkBits::kBitRows * kRowWords + lane / kWordPixels, count);
      storeVector((count - above[part]) * kOneEdge, changes + std::ptrdiff_t(row) * kInkColumns + lane);
      above[part] = count;
    }
  }
  for (int part = 0; part < kParts; ++part) {
    const std::ptrdiff_t behind = std::ptrdiff_t(rows.last) * kInkColumns + part * kLanes<Vector>;
    storeVector(above[part] * -kOneEdge, changes + behind);
  }
}
XOV_VECTOR8_FUNCTION(void, takeCounts, (std::uint64_t * words, RowRange rows, std::int32_t* changes),
                     (words, rows, changes))

} // namespace

InkBits::InkBits(int pixelRows)
    : rows_(pixelRows * kBitRows),
      words_(wordAt(rows_, 0) + 1),
      openWords_(static_cast<std::size_t>(rows_)),
      fullRows_(wordAt(pixelRows, 0)),
      nextOpen_(static_cast<std::size_t>(rows_) + 1) {}

void InkBits::reset(int columns) {
  setBeside(0);
  columns_ = columns;
  setBeside(kAll << kBitColumns);
  touched_ = {rows_, 0};
  std::fill(openWords_.begin(), openWords_.end(), static_cast<std::uint8_t>((columns + kPixels - 1) / kPixels));
  std::fill(fullRows_.begin(), fullRows_.end(), std::uint8_t(0));
  std::iota(nextOpen_.begin(), nextOpen_.end(), 0);
}

/// Where a word reaches beyond the strip, the places there are inked beforehand, so that it can be full.
void InkBits::setBeside(std::uint64_t bits) {
  if (columns_ % kPixels == 0) return;
  for (int row = 0; row < rows_; ++row)
    words_[wordAt(row, columns_ / kPixels)] = bits;
}

int InkBits::findOpen(int row) {
  const auto next = [this](int r) -> std::int32_t& { return nextOpen_[static_cast<std::size_t>(r)]; };
  while (next(row) != row) {
    next(row) = next(next(row)); // halves the way for whoever comes after
    row = next(row);
  }
  return row;
}

void InkBits::noteFull(int row, int word) {
  ++fullRows_[wordAt(row / kBitRows, word)];
  const auto r = static_cast<std::size_t>(row);
  if (--openWords_[r] == 0) nextOpen_[r] = row + 1;
}

void InkBits::addLongSpan(int row, unsigned from, unsigned to) {
  const auto first = static_cast<int>(from / kWordBits), last = static_cast<int>((to - 1) / kWordBits);
  addBits(row, first, kAll << (from % kWordBits), 0);
  for (int word = first + 1; word < last; ++word)
    addBits(row, word, kAll, 0);
  addBits(row, last, kAll >> (kWordBits - 1 - (to - 1) % kWordBits), 0);
}

RowRange InkBits::takeChanges(std::int32_t* changes) {
  if (touched_.last <= touched_.first) return {};
  const RowRange rows{touched_.first / kBitRows, (touched_.last - 1) / kBitRows + 1};
  takeCounts(words_.data(), rows, changes);
  touched_ = {rows_, 0};
  return rows;
}

} // namespace xov
