#include "apps/resources/BoundaryFiles.h"

#include <XOV_Graphics/base/Fields.h>
#include <XOV_Graphics/base/Numbers.h>
#include <XOV_Graphics/base/TextLines.h>
#include <algorithm>
#include <cmath>
#include <optional>

namespace xov::maker {

namespace {

constexpr char kEndOfSegment[] = "*** end of line segment ***\n";
constexpr qsizetype kLongestName = 100; // with its line end below the 127 bytes that the reader takes as one line
constexpr double kLongestDeg = 360;     // longitudes are published from -180 or from 0 on
constexpr int kDecimals = 5;            // about a metre, as PB2002 is published

QByteArray pointLines(const Segment& segment) {
  QByteArray text;
  for (const QPointF& point : segment)
    text +=
        QByteArray::number(point.x(), 'f', kDecimals) + ' ' + QByteArray::number(point.y(), 'f', kDecimals) + '\n';
  return text;
}

/// "longitude,latitude" in degrees, or with blanks between them; nothing when the line is something else.
std::optional<QPointF> publishedPoint(const QByteArray& line) {
  const std::vector<QByteArrayView> fields = fieldsOf(line, line.contains(',') ? ',' : kBlankSeparator);
  if (fields.size() != 2) return {};
  const auto x = toNumber<double>(fields[0]);
  const auto y = toNumber<double>(fields[1]);
  if (!x || !y || !(std::abs(*x) <= kLongestDeg) || !(std::abs(*y) <= 90)) return {};
  return QPointF(*x > 180 ? *x - 360 : *x < -180 ? *x + 360 : *x, *y);
}

bool isName(const QByteArray& line) {
  return !line.isEmpty() && line.size() <= kLongestName && !line.startsWith('*') &&
         std::all_of(line.begin(), line.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

QString shown(const QByteArray& line) {
  constexpr qsizetype kShown = 40;
  QString text = QString::fromLatin1(line.left(kShown));
  for (QChar& c : text) {
    if (!c.isPrint()) c = u'?';
  }
  return text;
}

QByteArray segmentText(const QByteArray& name, const Segment& segment) {
  QByteArray text;
  for (const Segment& cut : cutAtMeridians(segment)) {
    for (const Segment& piece : inPieces(cut, kMostPointsBySegment))
      text += name + '\n' + pointLines(piece) + kEndOfSegment;
  }
  return text;
}

} // namespace

QByteArray boundariesByType(const QByteArray& title, const QByteArray& name, const Segments& segments) {
  QByteArray text = title + '\n';
  int number = 0;
  for (const Segment& segment : segments) {
    for (const Segment& piece : inPieces(segment, kMostPointsByType))
      text += name + ' ' + QByteArray::number(++number) + '\n' + pointLines(piece) + ">\n";
  }
  return text;
}

QByteArray derivedBoundariesBySegment(const std::vector<NamedSegments>& types) {
  QByteArray text;
  for (const NamedSegments& type : types) {
    int number = 0;
    for (const Segment& segment : type.segments) {
      for (const Segment& piece : inPieces(segment, kMostPointsBySegment))
        text += type.name + ' ' + QByteArray::number(++number) + ' ' + kDerivedMark + '\n' + pointLines(piece) +
                kEndOfSegment;
    }
  }
  return text;
}

bool areDerivedBoundaries(const QByteArray& text) {
  return text.left(text.indexOf('\n')).trimmed().endsWith(kDerivedMark);
}

Result<QByteArray> importedBoundaries(const QByteArray& published) {
  const QString expected = QStringLiteral("line %1: \"%2\" is no %3");
  QByteArray text;
  QByteArray name;
  Segment segment;
  qint64 number = 0;
  TextLines lines(withoutMark(published));
  while (const auto line = lines.next()) {
    const QByteArray words = line->trimmed().toByteArray();
    number = lines.number();
    if (words.startsWith("***")) {
      if (name.isEmpty() || segment.size() < 2)
        return Error{QStringLiteral("line %1: the end of a segment without a name and two points").arg(number)};
      text += segmentText(name, segment);
      name.clear();
      segment.clear();
    } else if (words.isEmpty()) {
      continue;
    } else if (name.isEmpty()) {
      if (!isName(words) || publishedPoint(words))
        return Error{expected.arg(QString::number(number), shown(words), QStringLiteral("name of a segment"))};
      name = words;
    } else {
      const auto point = publishedPoint(words);
      if (!point)
        return Error{expected.arg(QString::number(number), shown(words),
                                  QStringLiteral("\"longitude,latitude\" in degrees nor \"***\""))};
      segment.push_back(*point);
    }
  }
  if (!name.isEmpty())
    return Error{
        QStringLiteral("line %1: the text ends within the segment \"%2\"").arg(QString::number(number), shown(name))};
  if (text.isEmpty()) return Error{QStringLiteral("no boundary segments")};
  // They would be made anew in place of what was imported.
  if (areDerivedBoundaries(text))
    return Error{QStringLiteral("boundaries that stand in for PB2002, not the published ones")};
  return text;
}

} // namespace xov::maker
