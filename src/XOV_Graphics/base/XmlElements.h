#pragma once

#include <QBuffer>
#include <QByteArrayView>
#include <QXmlStreamReader>

namespace xov {

/// Whether a file that begins so is XML: its first character is that of a tag, in any of the encodings.
bool beginsAsXml(QByteArrayView head);

/// Hands a document on as it is read, up to a start tag of more attributes than any format has: XML parsers compare
/// each with all others, so that a tag of a megabyte would take them hours.
class XmlInput final : public QIODevice {
public:
  explicit XmlInput(QIODevice& device) : device_(device) {}

  bool isSequential() const override { return true; }
  bool hasTooManyAttributes() const { return attributes_ > kMostAttributes; }

protected:
  qint64 readData(char* bytes, qint64 most) override;
  qint64 writeData(const char* bytes, qint64 count) override;

private:
  static constexpr int kMostAttributes = 500;

  QIODevice& device_;
  int attributes_ = 0; // of the tag that is being read
  bool isBehindEquals_ = false;
};

/// Reads an XML document element by element. The position is in a start tag or behind an end tag, as with Qt's
/// readNextStartElement(); a fault of the document, or one that was raised, ends every loop. A hundred elements
/// within each other, hundreds of attributes in one tag, and what a document type declares are faults.
class XmlElements : public QXmlStreamReader {
public:
  /// What is read of `device` from its position on. Whether that is all it holds, readingStatus() tells.
  explicit XmlElements(QIODevice& device);
  /// A document in memory, which must stay there.
  explicit XmlElements(QByteArrayView text);

  /// These three stand before Qt's, which take a device that failed for one that has nothing to say yet.
  TokenType readNext();
  bool readNextStartElement();
  bool atEnd() const { return hasError() || QXmlStreamReader::atEnd(); }

  /// Calls `read` at the root, which must have that name. Elements that a document type declares are refused:
  /// `format` has none.
  template <typename Read>
  void readRoot(const char* root, const char* format, Read read) {
    while (!atEnd()) {
      const TokenType token = readNext();
      if (token == DTD && text().contains(u'[')) {
        raiseError(QStringLiteral("the document declares %1, which %2 has none of")
                       .arg(entityDeclarations().isEmpty() ? "elements" : "entities", QLatin1String(format)));
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

  /// Goes to the end of the current element.
  void skip();

  /// What is wrong with the document, with its line.
  QString faultText() const;

private:
  static constexpr qsizetype kQuotedCharacters = 40;

  QByteArray text_;
  QBuffer buffer_;
  XmlInput input_;
  int level_ = 0;
};

} // namespace xov
