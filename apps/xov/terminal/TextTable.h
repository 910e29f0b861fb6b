#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace xov::cli {

/// Rows of text under headings, as wide as they need to be.
class TextTable {
public:
  enum class Align : std::uint8_t { Left, Right };

  void addColumn(const QString& heading, Align align = Align::Left);
  /// A cell for each column; missing and empty cells show as "-", so that every row has as many words as there are
  /// columns. Control characters show as '?'.
  void addRow(const QStringList& cells);

  /// One line for the headings and one for each row, with two spaces between columns and none at the end.
  QString text() const;

private:
  struct Column {
    QString heading;
    Align align;
    qsizetype width;
  };
  QString line(const QStringList& cells) const;

  std::vector<Column> columns_;
  std::vector<QStringList> rows_;
};

} // namespace xov::cli
