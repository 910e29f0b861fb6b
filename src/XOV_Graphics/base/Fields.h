#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

namespace xov {

/// The separator that stands for any number of blanks and tabulators.
inline constexpr char kBlankSeparator = ' ';

/// Takes the fields off a line of a table, one after the other. A field in double quotes may hold the separator, and
/// two quotes in a row for one; a quote that is never closed is a character like others. A separator at the end of
/// the line opens one more, empty field; blanks there open none.
class XOV_EXPORT FieldReader {
public:
  /// Starts before the first field of a line, whose bytes stay where they are while fields are read.
  FieldReader(QByteArrayView line, char separator) : rest_(line), separator_(separator) {}

  /// The next field as it stands there, without the blanks around it; nothing after the last one.
  std::optional<QByteArrayView> next();

private:
  qsizetype fieldEnd() const;

  QByteArrayView rest_;
  char separator_;
  bool more_ = true;
};

/// All fields of a line, as FieldReader gives them.
XOV_EXPORT std::vector<QByteArrayView> fieldsOf(QByteArrayView line, char separator);

/// A field without the quotes around it, and without blanks around what is left.
XOV_EXPORT QByteArrayView bareField(QByteArrayView field);

/// What a field says: bareField() as UTF-8, with one quote for two in a row where the field is in quotes.
XOV_EXPORT QString fieldText(QByteArrayView field);

/// What a heading is told by, however it is written: its letters and digits in lower case, "latitudedeg" for
/// "Latitude (deg)".
XOV_EXPORT QString headingKey(QByteArrayView field);

} // namespace xov
