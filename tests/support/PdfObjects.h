#pragma once

#include <QByteArray>
#include <QList>
#include <QRegularExpression>

namespace xov::testing {

/// The objects of a PDF file, as its table leads to them. Whatever is not found is empty.
class PdfObjects {
public:
  explicit PdfObjects(const QByteArray& file);

  /// Objects are numbered from 1 to this.
  qsizetype count() const { return places_.size(); }

  /// The object of that number, from "12 0 obj" on up to "endobj".
  QByteArray object(qsizetype number) const;

  /// The objects of the pages, in their order.
  QList<QByteArray> pages() const;

  /// The object that a key of another one refers to.
  QByteArray objectBehind(const QByteArray& object, const QRegularExpression& key) const;
  QByteArray objectBehind(const QByteArray& object, const char* key) const;

  /// What is packed in that object.
  QByteArray streamBehind(const QByteArray& object, const char* key) const;

private:
  QByteArray file_;
  QList<qsizetype> places_;
};

} // namespace xov::testing
