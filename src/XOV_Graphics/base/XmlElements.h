#pragma once

#include <QByteArrayView>
#include <QXmlStreamReader>

namespace xov {

/// Whether a file that begins so is XML: its first character is that of a tag, in any of the encodings.
bool beginsAsXml(QByteArrayView head);

/// Whether a start tag in `text` has more attributes than a reader of ours looks at: some hundreds. XML parsers
/// compare each with all others, so that a tag of a megabyte takes them hours.
bool hasTooManyAttributes(QByteArrayView text);

/// Reads an XML document element by element. The position is in a start tag or behind an end tag, as with Qt's
/// readNextStartElement(); a fault of the document, or one that was raised, ends every loop.
class XmlElements : public QXmlStreamReader {
public:
  using QXmlStreamReader::QXmlStreamReader;

  /// Calls `read` at the root, which must have that name. Elements that a document type declares are refused:
  /// `format` has none.
  template <typename Read>
  void readRoot(const char* root, const char* format, Read read) {
    while (!atEnd()) {
      const TokenType token = readNext();
      if (token == DTD && !entityDeclarations().isEmpty()) {
        raiseError(QStringLiteral("the document declares entities, which %1 has none of").arg(QLatin1String(format)));
      } else if (token == StartElement) {
        if (name() == QLatin1String(root)) {
          read();
        } else {
          raiseError("found <" + name().left(kQuotedCharacters).toString() + ">, expected <" + QLatin1String(root) +
                     ">");
        }
      }
    }
  }

  /// Calls `read` with the name of each child element. It reads the child to its end and says so, or leaves it to be
  /// skipped.
  template <typename Read>
  void readEach(Read read) {
    while (readNextStartElement()) {
      if (!read(name())) skip();
    }
  }

  /// Calls `read` at each child element of that name, which it must read to its end, and skips the others.
  template <typename Read>
  void readChildren(const char* child, Read read) {
    readEach([&](QStringView found) {
      const bool isIt = found == QLatin1String(child);
      if (isIt) read();
      return isIt;
    });
  }

  /// The text of the current element without blanks at its ends and without that of its children.
  QString elementText();

  /// The text of an attribute of the current element; empty when it has none.
  QString attribute(const char* name) const { return attributes().value(QLatin1String(name)).toString(); }

  /// Goes to the end of the current element. A hundred elements within each other are refused.
  void skip();

  /// What is wrong with the document, with its line.
  QString faultText() const;

private:
  static constexpr qsizetype kQuotedCharacters = 40;
};

} // namespace xov
