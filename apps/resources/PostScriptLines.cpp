#include "apps/resources/PostScriptLines.h"

#include <QByteArrayList>

#include <cctype>
#include <cmath>
#include <cstdint>
#include <optional>

namespace xov::maker {

namespace {

constexpr char kUpFilter = 2;
constexpr int kLongestRow = 4096;
constexpr int kPointDepth = 3; // brackets around the numbers of a point

/// The number after a name such as "/Columns", where the text has it.
int numberAfter(const QByteArray& name, const QByteArray& text) {
  const qsizetype at = text.indexOf(name);
  if (at < 0) return 0;
  const QByteArray rest = text.mid(at + name.size()).trimmed();
  qsizetype digits = 0;
  while (digits < rest.size() && std::isdigit(static_cast<unsigned char>(rest[digits])) != 0)
    ++digits;
  return rest.left(digits).toInt();
}

/// Qt wants the length of the result in front. It is a first guess only: Qt makes room for more.
QByteArray inflated(const QByteArray& zlibData) {
  constexpr char kGuess[] = {0, 1, 0, 0};
  return qUncompress(QByteArray(kGuess, sizeof kGuess) + zlibData);
}

/// Takes the prediction back, row by row; nothing where a row has another filter.
std::optional<QByteArray> unpredicted(const QByteArray& rows, int columns) {
  QByteArray text;
  QByteArray above(columns, 0);
  for (qsizetype at = 0; at + columns < rows.size(); at += columns + 1) {
    if (rows[at] != kUpFilter) return {};
    for (int i = 0; i < columns; ++i)
      above[i] = char(static_cast<unsigned char>(above[i]) + static_cast<unsigned char>(rows[at + 1 + i]));
    text += above;
  }
  return text;
}

} // namespace

Result<QByteArray> selfExtractedText(const QByteArray& file) {
  const qsizetype exec = file.indexOf("exec");
  if (exec < 0) return Error{QStringLiteral("no PostScript that extracts itself: \"exec\" is missing")};
  const QByteArray head = file.left(exec);
  const int columns = numberAfter("/Columns", head);
  if (!head.contains("FlateDecode") || columns < 1 || columns > kLongestRow)
    return Error{QStringLiteral("\"FlateDecode\" with \"Columns\" from 1 to %1 is missing").arg(kLongestRow)};
  qsizetype data = exec + 4;
  while (data < file.size() && (file[data] == '\r' || file[data] == '\n'))
    ++data;
  const QByteArray rows = inflated(file.mid(data));
  if (rows.isEmpty() || rows.size() % (columns + 1) != 0)
    return Error{QStringLiteral("byte %1: no zlib data of rows of %2 bytes").arg(data).arg(columns + 1)};
  const auto text = unpredicted(rows, columns);
  if (!text) return Error{QStringLiteral("a row is not predicted from the one above it")};
  return *text;
}

Result<Segments> postScriptLines(const QByteArray& text) {
  Segments lines;
  int depth = 0;
  QByteArray numbers;
  qsizetype at = text.indexOf('[');
  if (at < 0) return Error{QStringLiteral("no array")};
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (c == '[') {
      if (++depth > kPointDepth) return Error{QStringLiteral("byte %1: a bracket too many").arg(at)};
      if (depth == kPointDepth - 1) lines.emplace_back();
      numbers.clear();
    } else if (c == ']') {
      if (depth == kPointDepth) {
        const QByteArrayList pair = numbers.simplified().split(' ');
        bool isX = false;
        bool isY = false;
        const QPointF point(pair.value(0).toDouble(&isX), pair.value(1).toDouble(&isY));
        if (pair.size() != 2 || !isX || !isY || !(std::abs(point.x()) <= 180) || !(std::abs(point.y()) <= 90))
          return Error{QStringLiteral("byte %1: no pair of longitude and latitude").arg(at)};
        lines.back().push_back(point);
      }
      if (--depth == 0) return lines;
    } else if (depth == kPointDepth) {
      numbers += c;
    }
  }
  return Error{QStringLiteral("the array does not end")};
}

} // namespace xov::maker
