#include "XOV_Graphics/map/NxyText.h"

#include "XOV_Graphics/base/Numbers.h"

#include <QStringDecoder>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

/// Each coordinate takes a digit and the white space before it.
constexpr qsizetype kLeastCharactersAPoint = 4;
constexpr qsizetype kLongestQuotation = 24;

/// One byte a character: white space of any script as a blank, everything that is no part of a number and cannot be
/// shown in an error as a question mark.
QByteArray plainText(const QString& text) {
  QByteArray plain(text.size(), '?');
  std::transform(text.begin(), text.end(), plain.begin(), [](QChar c) {
    if (c.isSpace()) return ' ';
    return c > QChar(' ') && c <= QChar('~') ? char(c.unicode()) : '?';
  });
  return plain;
}

/// The next word, for an error.
QString found(QByteArrayView rest) {
  skipSpace(rest);
  if (rest.isEmpty()) return QStringLiteral("found the end of the text");
  const qsizetype blank = rest.indexOf(' ');
  const QByteArrayView word = rest.first(blank < 0 ? rest.size() : blank);
  const bool isLong = word.size() > kLongestQuotation;
  return QStringLiteral("found \"%1%2\"")
      .arg(QLatin1StringView(word.first(std::min(word.size(), kLongestQuotation))),
           isLong ? QStringLiteral("...") : QString());
}

/// A number that others follow must end where white space begins.
bool isSeparated(QByteArrayView rest) { return rest.isEmpty() || rest.front() == ' '; }

/// Takes the count; an error when it is none, or when the rest of the text cannot hold as many points.
QString takeCount(QByteArrayView& rest, std::optional<int>& count) {
  const QByteArrayView start = rest;
  skipSpace(rest);
  const auto value = takeNumber<std::int32_t>(rest);
  if (!value || (*value != 0 && !isSeparated(rest)))
    return QStringLiteral("number of points: %1, expected a whole number").arg(found(start));
  count = value;
  if (*value < 0) return QStringLiteral("number of points: found %1, expected at least 0").arg(*value);
  if (*value > rest.size() / kLeastCharactersAPoint)
    return QStringLiteral("number of points: found %1, but only %2 characters follow").arg(*value).arg(rest.size());
  return {};
}

bool takeCoordinate(QByteArrayView& rest, bool isLast, float& value) {
  QByteArrayView after = rest;
  skipSpace(after);
  const auto number = takeNumber<float>(after);
  if (!number || !std::isfinite(*number) || !(isLast || isSeparated(after))) return false;
  value = *number;
  rest = after;
  return true;
}

QString takePoints(QByteArrayView rest, std::size_t count, NxyPoints& points) {
  points.xp.resize(count);
  points.yp.resize(count);
  for (std::size_t i = 0; i < 2 * count; ++i) {
    const bool isX = i % 2 == 0;
    float& value = (isX ? points.xp : points.yp)[i / 2];
    if (!takeCoordinate(rest, i + 1 == 2 * count, value))
      return QStringLiteral("%1 of point %2: %3, expected a number")
          .arg(isX ? QStringLiteral("x") : QStringLiteral("y"))
          .arg(i / 2 + 1)
          .arg(found(rest));
  }
  return {};
}

} // namespace

NxyPoints parseNxy(const QString& text) {
  const QByteArray plain = plainText(text);
  QByteArrayView rest = plain;
  NxyPoints points;
  points.error = takeCount(rest, points.count);
  if (points.error.isEmpty()) points.error = takePoints(rest, std::size_t(*points.count), points);
  if (!points.error.isEmpty()) {
    points.xp.clear();
    points.yp.clear();
  }
  return points;
}

QString decodeNxy(const QByteArray& bytes) {
  const auto marked = QStringConverter::encodingForData(bytes);
  QStringDecoder decoder(marked.value_or(QStringConverter::Utf8), QStringConverter::Flag::Stateless);
  const QString text = decoder(bytes);
  return !marked && decoder.hasError() ? QString::fromLatin1(bytes) : text;
}

QByteArray nxyText(std::span<const float> xp, std::span<const float> yp) {
  QByteArray text = QByteArray::number(qint64(xp.size())) + '\n';
  for (std::size_t i = 0; i < xp.size(); ++i) {
    appendFixed(text, xp[i]);
    text += ' ';
    appendFixed(text, yp[i]);
    text += '\n';
  }
  return text;
}

} // namespace xov
