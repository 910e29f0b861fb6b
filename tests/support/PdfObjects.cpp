#include "tests/support/PdfObjects.h"

namespace xov::testing {

namespace {

constexpr qsizetype kLengthBytes = 4; // before what qUncompress() takes
constexpr qsizetype kLargestStream = 10000000;

// The text between two others.
QByteArray between(const QByteArray& bytes, const QByteArray& before, const QByteArray& behind) {
  const qsizetype begin = bytes.indexOf(before);
  if (begin < 0) return {};
  const qsizetype from = begin + before.size();
  return bytes.mid(from, bytes.indexOf(behind, from) - from);
}

} // namespace

PdfObjects::PdfObjects(const QByteArray& file) : file_(file) {
  const qsizetype table = between(file.mid(file.lastIndexOf("startxref\n")), "\n", "%%EOF").simplified().toLongLong();
  const QList<QByteArray> lines = file.mid(table).split('\n');
  if (lines.size() < 2 || lines[0] != "xref") return;
  const qsizetype rows = lines[1].mid(2).toLongLong(); // "0 19", of which the first is none
  for (qsizetype row = 1; row < rows && row + 2 < lines.size(); ++row)
    places_ << lines[row + 2].left(10).toLongLong();
}

QByteArray PdfObjects::object(qsizetype number) const {
  if (number < 1 || number > count()) return {};
  const qsizetype begin = places_[number - 1];
  return file_.mid(begin, file_.indexOf("endobj\n", begin) - begin);
}

QList<QByteArray> PdfObjects::pages() const {
  const QByteArray trailer = file_.mid(file_.lastIndexOf("trailer\n"));
  const QByteArray list = objectBehind(objectBehind(trailer, "/Root"), "/Pages");
  QList<QByteArray> found;
  const QString kids = QString::fromLatin1(between(list, "[", "]"));
  for (const auto& match : QRegularExpression(QStringLiteral("(\\d+) 0 R")).globalMatch(kids))
    found << object(match.captured(1).toLongLong());
  return found;
}

QByteArray PdfObjects::objectBehind(const QByteArray& object, const QRegularExpression& key) const {
  const QRegularExpression reference(key.pattern() + QStringLiteral("\\s+(\\d+) 0 R"));
  return this->object(reference.match(QString::fromLatin1(object)).captured(1).toLongLong());
}

QByteArray PdfObjects::objectBehind(const QByteArray& object, const char* key) const {
  return objectBehind(object, QRegularExpression(QString::fromLatin1(key)));
}

QByteArray PdfObjects::streamBehind(const QByteArray& object, const char* key) const {
  const QByteArray found = objectBehind(object, key);
  const qsizetype begin = found.indexOf("\nstream\n") + qsizetype(sizeof "\nstream");
  const QByteArray packed = found.mid(begin, found.lastIndexOf("\nendstream") - begin);
  QByteArray length(kLengthBytes, 0);
  for (int i = 0; i < kLengthBytes; ++i)
    length[i] = char(kLargestStream >> (8 * (kLengthBytes - 1 - i)));
  return qUncompress(length + packed);
}

} // namespace xov::testing
