#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace xov {

/// Walks through the lines of a text, which end with LF or CR LF.
class XOV_EXPORT TextLines {
public:
  /// Starts before the first line of a text, whose bytes stay where they are while lines are read.
  explicit TextLines(QByteArrayView text) : rest_(text) {}

  /// The next line without its end; nothing after the last one.
  std::optional<QByteArrayView> next();
  /// Number of the line that next() returned last, counted from 1; 0 before the first.
  qint64 number() const { return number_; }
  /// How many bytes follow that line.
  qsizetype remaining() const { return rest_.size(); }

private:
  QByteArrayView rest_;
  qint64 number_ = 0;
};

/// `text` without the mark that some programs put before UTF-8.
XOV_EXPORT QByteArrayView withoutMark(QByteArrayView text);

/// `text` without blanks and tabulators at either end.
XOV_EXPORT QByteArrayView withoutBlanks(QByteArrayView text);

/// Takes the first word off `rest`, and the blanks and tabulators around it; empty when no word is left.
QByteArrayView takeWord(QByteArrayView& rest);

/// Takes the first `columns` characters off `rest`, or what is left of it, and gives them without blanks around them.
QByteArrayView takeColumns(QByteArrayView& rest, qsizetype columns);

/// The columns `first` to `last` of a line, counted from 1 and both included, as descriptions of formats count them,
/// without blanks around what they hold; empty where the line ends before.
QByteArrayView columnsOf(QByteArrayView line, qsizetype first, qsizetype last);

/// What a message quotes of a file: `text`, or so many of its characters and "..." where it has more.
XOV_EXPORT QString shortened(const QString& text, qsizetype characters = 200);

} // namespace xov
