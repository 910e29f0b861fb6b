#include "XOV_Graphics/base/XmlElements.h"

#include <algorithm>

namespace xov {

namespace {

constexpr int kMostLevels = 100;
constexpr int kMostAttributes = 500;

bool isSpaceOrZero(char character) { return character == '\0' || QByteArrayView(" \t\r\n").contains(character); }

} // namespace

bool beginsAsXml(QByteArrayView head) {
  const QByteArrayView marks[] = {QByteArrayView("\xFF\xFE"), QByteArrayView("\xFE\xFF"),
                                  QByteArrayView("\xEF\xBB\xBF<")};
  const bool hasMark =
      std::any_of(std::begin(marks), std::end(marks), [&](QByteArrayView mark) { return head.startsWith(mark); });
  return hasMark || head.trimmed().startsWith('<');
}

bool hasTooManyAttributes(QByteArrayView text) {
  // An attribute is a sign of equality before a quote, also with two bytes a character; no value may hold "<".
  int attributes = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == '<') attributes = 0;
    if (text[i] != '=') continue;
    while (i + 1 < text.size() && isSpaceOrZero(text[i + 1]))
      ++i;
    const bool isQuoted = i + 1 < text.size() && (text[i + 1] == '"' || text[i + 1] == '\'');
    if (isQuoted && ++attributes > kMostAttributes) return true;
  }
  return false;
}

QString XmlElements::elementText() {
  QString written;
  while (!atEnd() && readNext() != EndElement) {
    if (isStartElement()) {
      skip();
    } else if (isCharacters() || isEntityReference()) {
      written += text();
    }
  }
  return written.trimmed();
}

void XmlElements::skip() {
  int level = 1;
  while (level > 0 && !atEnd()) {
    readNext();
    if (isEndElement()) --level;
    if (isStartElement() && ++level > kMostLevels) raiseError(QStringLiteral("too many elements within each other"));
  }
}

QString XmlElements::faultText() const {
  return QStringLiteral("line %1: %2").arg(lineNumber()).arg(errorString().simplified());
}

} // namespace xov
