#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace xov {

/// A PDF file of one page as Qt writes it, whose page can be given another content: the operators that paint it.
class PdfFile {
public:
  /// Nothing when the file is built in a way that this class does not know.
  static std::optional<PdfFile> parse(const QByteArray& file);

  /// The operators of the page, unpacked.
  const QByteArray& content() const { return content_; }

  /// The file with other operators on its page; every other object stays as it is. Empty when memory does not allow
  /// it.
  QByteArray withContent(const QByteArray& content) const;

private:
  /// Bytes of the file, begin <= i < end.
  struct Range {
    qsizetype begin = 0;
    qsizetype end = 0;
    qsizetype size() const { return end - begin; }
  };

  bool readTable();
  bool readContent();
  std::optional<qsizetype> numberAfter(const QByteArray& words, qsizetype at, Range* digits = nullptr) const;
  std::optional<qsizetype> placeOf(qsizetype object) const;

  QByteArray file_;
  QByteArray content_;
  std::vector<qsizetype> objects_; ///< where each starts; the first is not one
  qsizetype table_ = 0;            ///< where the table of objects starts
  Range rows_;                     ///< its rows
  Range tablePlace_;               ///< the digits near the file's end that say where the table starts
  Range stream_;                   ///< the packed content
  Range length_;                   ///< the digits that say how long it is
};

} // namespace xov
