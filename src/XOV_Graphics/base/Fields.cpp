#include "XOV_Graphics/base/Fields.h"

#include "XOV_Graphics/base/TextLines.h"

namespace xov {

namespace {

bool isQuoted(QByteArrayView field) { return field.size() > 1 && field.startsWith('"') && field.endsWith('"'); }

/// Where the quote that opens at the start of `text` is closed: at the first one that is not two in a row; -1 when it
/// is not.
qsizetype closingQuote(QByteArrayView text) {
  qsizetype close = text.indexOf('"', 1);
  while (close >= 0 && close + 1 < text.size() && text[close + 1] == '"')
    close = text.indexOf('"', close + 2);
  return close;
}

QByteArrayView withoutLeading(QByteArrayView text, char c) {
  while (text.startsWith(c))
    text = text.sliced(1);
  return text;
}

} // namespace

std::optional<QByteArrayView> FieldReader::next() {
  if (separator_ == kBlankSeparator) {
    rest_ = withoutBlanks(rest_);
    more_ = !rest_.isEmpty();
  }
  if (!more_) return {};
  const qsizetype end = fieldEnd();
  const QByteArrayView field = end < 0 ? rest_ : rest_.first(end);
  more_ = end >= 0;
  rest_ = end < 0 ? QByteArrayView() : rest_.sliced(end + 1);
  return withoutBlanks(field);
}

/// Where the field at the start of the rest ends: at the first separator outside of quotes; -1 at the end.
qsizetype FieldReader::fieldEnd() const {
  // Not past tabulators, which may be separators.
  const qsizetype start = rest_.size() - withoutLeading(rest_, ' ').size();
  const QByteArrayView text = rest_.sliced(start);
  const qsizetype close = text.startsWith('"') ? closingQuote(text) : -1;
  qsizetype from = close < 0 ? 0 : start + close;
  if (separator_ != kBlankSeparator) return rest_.indexOf(separator_, from);
  while (from < rest_.size() && rest_[from] != ' ' && rest_[from] != '\t')
    ++from;
  return from < rest_.size() ? from : -1;
}

std::vector<QByteArrayView> fieldsOf(QByteArrayView line, char separator) {
  std::vector<QByteArrayView> fields;
  FieldReader reader(line, separator);
  while (const auto field = reader.next())
    fields.push_back(*field);
  return fields;
}

QByteArrayView bareField(QByteArrayView field) {
  const QByteArrayView bare = withoutBlanks(field);
  return isQuoted(bare) ? withoutBlanks(bare.sliced(1, bare.size() - 2)) : bare;
}

QString fieldText(QByteArrayView field) {
  QString text = QString::fromUtf8(bareField(field)).trimmed();
  if (isQuoted(withoutBlanks(field))) text.replace(QLatin1String("\"\""), QLatin1String("\""));
  return text;
}

QString headingKey(QByteArrayView field) {
  QString key = fieldText(field).toLower();
  key.removeIf([](QChar c) { return !c.isLetterOrNumber(); });
  return key;
}

} // namespace xov
