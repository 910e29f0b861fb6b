#include "XOV_Graphics/base/XmlElements.h"

#include "XOV_Graphics/base/TextLines.h"

#include <algorithm>

namespace xov {

namespace {

constexpr int kMostLevels = 100;

bool isSpaceOrZero(char character) { return character == '\0' || QByteArrayView(" \t\r\n").contains(character); }

} // namespace

bool beginsAsXml(QByteArrayView head) {
  const QByteArrayView marks[] = {QByteArrayView("\xFF\xFE"), QByteArrayView("\xFE\xFF"),
                                  QByteArrayView("\xEF\xBB\xBF<")};
  const bool hasMark =
      std::any_of(std::begin(marks), std::end(marks), [&](QByteArrayView mark) { return head.startsWith(mark); });
  return hasMark || head.trimmed().startsWith('<');
}

qint64 XmlInput::readData(char* bytes, qint64 most) {
  if (hasTooManyAttributes()) return -1;
  const qint64 got = device_.read(bytes, most);
  // An attribute is a sign of equality before a quote, also with two bytes a character; no value may hold "<".
  for (qint64 i = 0; i < got; ++i) {
    const char character = bytes[i];
    if (character == '<') attributes_ = 0;
    if (isBehindEquals_ && (character == '"' || character == '\'') && ++attributes_ > kMostAttributes) return i;
    isBehindEquals_ = character == '=' || (isBehindEquals_ && isSpaceOrZero(character));
  }
  return got;
}

qint64 XmlInput::writeData(const char* /*bytes*/, qint64 /*count*/) { return -1; }

XmlElements::XmlElements(QIODevice& device) : input_(device) {
  input_.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  setDevice(&input_);
}

XmlElements::XmlElements(QByteArrayView text)
    : text_(QByteArray::fromRawData(text.data(), text.size())),
      buffer_(&text_),
      input_(buffer_) {
  buffer_.open(QIODevice::ReadOnly);
  input_.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
  setDevice(&input_);
}

XmlElements::TokenType XmlElements::readNext() {
  if (hasError()) return Invalid;
  TokenType token = QXmlStreamReader::readNext();
  if (error() == PrematureEndOfDocumentError) {
    // Qt would go on with what the device may give later.
    raiseError(input_.hasTooManyAttributes() ? QStringLiteral("found a tag of hundreds of attributes")
                                             : errorString());
    return Invalid;
  }
  if (token == StartElement && ++level_ > kMostLevels) {
    raiseError(QStringLiteral("too many elements within each other"));
    token = Invalid;
  }
  if (token == EndElement) --level_;
  return token;
}

bool XmlElements::readNextStartElement() {
  for (TokenType token = readNext(); token != Invalid && token != EndDocument; token = readNext()) {
    if (token == EndElement) return false;
    if (token == StartElement) return true;
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
    const TokenType token = readNext();
    if (token == EndElement) --level;
    if (token == StartElement) ++level;
  }
}

QString XmlElements::faultText() const {
  return QStringLiteral("line %1: %2").arg(lineNumber()).arg(shortened(errorString().simplified()));
}

} // namespace xov
