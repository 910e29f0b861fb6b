#include "XOV_Graphics/base/TextLines.h"

#include <algorithm>

namespace xov {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

} // namespace

std::optional<QByteArrayView> TextLines::next() {
  if (rest_.isEmpty()) return {};
  ++number_;
  const qsizetype end = rest_.indexOf('\n');
  QByteArrayView line = end < 0 ? rest_ : rest_.first(end);
  rest_ = end < 0 ? QByteArrayView() : rest_.sliced(end + 1);
  // More than one where a text was converted twice.
  while (line.endsWith('\r'))
    line.chop(1);
  return line;
}

QByteArrayView withoutMark(QByteArrayView text) {
  const QByteArrayView mark("\xEF\xBB\xBF");
  return text.startsWith(mark) ? text.sliced(mark.size()) : text;
}

QByteArrayView withoutBlanks(QByteArrayView text) {
  while (!text.isEmpty() && isBlank(text.front()))
    text = text.sliced(1);
  while (!text.isEmpty() && isBlank(text.back()))
    text.chop(1);
  return text;
}

QByteArrayView takeWord(QByteArrayView& rest) {
  const char* const end = rest.data() + rest.size();
  const char* const start = std::find_if_not(rest.data(), end, isBlank);
  const char* const stop = std::find_if(start, end, isBlank);
  rest = QByteArrayView(std::find_if_not(stop, end, isBlank), end);
  return QByteArrayView(start, stop);
}

QByteArrayView takeColumns(QByteArrayView& rest, qsizetype columns) {
  const qsizetype width = std::min(columns, rest.size());
  const QByteArrayView field = rest.first(width);
  rest = rest.sliced(width);
  return withoutBlanks(field);
}

QByteArrayView columnsOf(QByteArrayView line, qsizetype first, qsizetype last) {
  if (line.size() < first) return {};
  QByteArrayView rest = line.sliced(first - 1);
  return takeColumns(rest, last - first + 1);
}

QString shortened(const QString& text, qsizetype characters) {
  return text.size() > characters ? text.left(characters) + QStringLiteral("...") : text;
}

} // namespace xov
