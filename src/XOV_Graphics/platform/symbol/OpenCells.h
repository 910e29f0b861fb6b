#pragma once

#include <bit>
#include <cstdint>
#include <vector>

namespace xov {

/// Cells first … last − 1 of a row or column of a grid.
struct CellSpan {
  int first = 0;
  int last = 0;

  bool isEmpty() const { return last <= first; }
  bool contains(int cell) const { return cell >= first && cell < last; }
};

/// A disc on a grid whose cells are unit squares. All spans are held inside the grid.
struct CellDisc {
  double x = 0;
  double y = 0;
  double radius = 0;

  CellSpan touchedRows(int rows) const;
  CellSpan touchedColumns(int columns) const;
  /// The cells of a row that the disc reaches into.
  CellSpan touchedIn(int row, int columns) const;
  /// The cells of a row that lie wholly inside the disc.
  CellSpan coveredIn(int row, int columns) const;
};

/// A grid of cells that are open until they are closed, one bit each. It answers whether any cell of a stretch is
/// still open, many cells at a time: what is drawn front to back asks this to leave out what nothing shows of.
class OpenCells {
public:
  OpenCells(int columns, int rows);

  int columns() const { return columns_; }
  int rows() const { return rows_; }
  std::int64_t openCount() const { return openCount_; }
  bool anyOpen(int row, CellSpan columns) const;
  int countOpen(int row, CellSpan columns) const;
  /// Whether a disc reaches into an open cell.
  bool anyOpenUnder(const CellDisc& disc) const;
  void close(int row, CellSpan columns);

  /// Calls `visit` with the column of each open cell of the stretch; the cell is closed when it returns true.
  template <typename Visit>
  void visitOpen(int row, CellSpan columns, Visit visit);

private:
  using Word = std::uint64_t;
  static constexpr int kBits = 64;
  // The bits of word `word` that belong to the stretch.
  static Word mask(int word, CellSpan columns);
  std::size_t wordIndex(int row, int word) const {
    return std::size_t(row) * std::size_t(wordsPerRow_) + std::size_t(word);
  }

  int columns_;
  int rows_;
  int wordsPerRow_;
  std::int64_t openCount_;
  std::vector<Word> words_;
};

inline OpenCells::Word OpenCells::mask(int word, CellSpan columns) {
  const int low = columns.first - word * kBits;
  const int high = columns.last - word * kBits;
  Word bits = ~Word(0);
  if (low > 0) bits &= ~Word(0) << low;
  if (high < kBits) bits &= ~(~Word(0) << high);
  return bits;
}

inline bool OpenCells::anyOpen(int row, CellSpan columns) const {
  if (columns.isEmpty()) return false;
  const int lastWord = (columns.last - 1) / kBits;
  for (int word = columns.first / kBits; word <= lastWord; ++word) {
    if ((words_[wordIndex(row, word)] & mask(word, columns)) != 0) return true;
  }
  return false;
}

inline int OpenCells::countOpen(int row, CellSpan columns) const {
  int count = 0;
  if (columns.isEmpty()) return count;
  const int lastWord = (columns.last - 1) / kBits;
  for (int word = columns.first / kBits; word <= lastWord; ++word)
    count += std::popcount(words_[wordIndex(row, word)] & mask(word, columns));
  return count;
}

template <typename Visit>
void OpenCells::visitOpen(int row, CellSpan columns, Visit visit) {
  if (columns.isEmpty()) return;
  const int lastWord = (columns.last - 1) / kBits;
  for (int word = columns.first / kBits; word <= lastWord; ++word) {
    Word& cells = words_[wordIndex(row, word)];
    for (Word open = cells & mask(word, columns); open != 0; open &= open - 1) {
      const int bit = std::countr_zero(open);
      if (!visit(word * kBits + bit)) continue;
      cells &= ~(Word(1) << bit);
      --openCount_;
    }
  }
}

} // namespace xov
