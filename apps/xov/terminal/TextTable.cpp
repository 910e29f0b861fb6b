#include "apps/xov/terminal/TextTable.h"

#include "apps/xov/terminal/Messages.h"

#include <algorithm>

namespace xov::cli {

namespace {
const QString kGap = QStringLiteral("  ");
}

void TextTable::addColumn(const QString& heading, Align align) {
  columns_.push_back({heading, align, heading.size()});
}

void TextTable::addRow(const QStringList& cells) {
  QStringList row;
  for (qsizetype i = 0; i < qsizetype(columns_.size()); ++i) {
    const QString cell = printable(cells.value(i));
    row.append(cell.isEmpty() ? QStringLiteral("-") : cell);
    qsizetype& width = columns_[std::size_t(i)].width;
    width = std::max(width, row.last().size());
  }
  rows_.push_back(row);
}

QString TextTable::line(const QStringList& cells) const {
  QStringList padded;
  for (qsizetype i = 0; i < cells.size(); ++i) {
    const Column& column = columns_[std::size_t(i)];
    padded.append(column.align == Align::Left ? cells[i].leftJustified(column.width)
                                              : cells[i].rightJustified(column.width));
  }
  QString joined = padded.join(kGap);
  while (joined.endsWith(QLatin1Char(' ')))
    joined.chop(1);
  return joined + QLatin1Char('\n');
}

QString TextTable::text() const {
  QStringList headings;
  for (const Column& column : columns_)
    headings.append(column.heading);
  QString all = line(headings);
  for (const QStringList& row : rows_)
    all += line(row);
  return all;
}

} // namespace xov::cli
