#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace xov {

/// Bytes of a file, begin <= i < end.
struct ByteRange {
  qsizetype begin = 0;
  qsizetype end = 0;
  qsizetype size() const { return end - begin; }
};

/// Other bytes in the place of a range.
struct PdfChange {
  ByteRange place;
  QByteArray bytes;
};

/// The number that follows `words` at that place of a PDF file, and where its digits are.
std::optional<qsizetype> numberAfter(QByteArrayView file, const QByteArray& words, qsizetype at,
                                     ByteRange* digits = nullptr);

/// The table at the end of a PDF file as Qt writes it, that says where each object starts.
class PdfTable {
public:
  /// Nothing when the file has no such table.
  static std::optional<PdfTable> parse(const QByteArray& file);

  /// Where the table starts.
  qsizetype begin() const { return begin_; }
  /// Where an object starts; nothing when there is none of that number.
  std::optional<qsizetype> placeOf(qsizetype object) const;

  /// The file that the table is from with changes before the table, and every object found at its new place. A change
  /// that overlaps one before it is left out. Empty when memory does not allow it.
  QByteArray withChanges(const QByteArray& file, std::vector<PdfChange> changes) const;

private:
  std::vector<qsizetype> objects_; // the first is not one
  qsizetype begin_ = 0;
  ByteRange rows_;
  ByteRange beginDigits_; // those near the file's end that say where the table starts
};

} // namespace xov
